#pragma once

#include "library/StorageError.h"

#include <QString>
#include <QStringList>

namespace quillary {

/// Why a block operation came to nothing. Known to its callers as ArrangementStore::Failure.
struct ArrangementFailure {
    enum class Kind {
        unreadable,   ///< `text` is the message itself
        noMedia,      ///< `text` is the block's name
        alreadySaved, ///< `text` is the block's name
        notFCPXML,
        storage, ///< the library's own error, passed on: `text` is its description
    };

    Kind kind = Kind::notFCPXML;
    QString text = {};
    /// What the system said, where that helps to mend it; empty when it said nothing.
    QString reason = {};

    static ArrangementFailure unreadable(QString message) { return {Kind::unreadable, std::move(message)}; }
    static ArrangementFailure noMedia(QString name, QString reason = {}) {
        return {Kind::noMedia, std::move(name), std::move(reason)};
    }
    static ArrangementFailure alreadySaved(QString name) { return {Kind::alreadySaved, std::move(name)}; }
    static ArrangementFailure notFCPXML() { return {}; }

    /// Names files that are missing, the first few of many, such as "a.mov and b.wav are missing."
    static QString missing(const QStringList& names);

    ArrangementFailure() = default;
    // Not explicit, so that TRY hands the library's errors on.
    ArrangementFailure(const StorageError& error) // NOLINT(google-explicit-constructor)
        : kind(Kind::storage), text(error.description()) {}

    /// The text shown to the user.
    QString description() const;
    /// A second line for the user, empty when there is nothing to add.
    QString recoverySuggestion() const { return reason; }
    /// Both in one line: what failed, and why where that is known.
    QString line() const;

    bool operator==(const ArrangementFailure&) const = default;

private:
    ArrangementFailure(Kind of, QString with, QString because = {})
        : kind(of), text(std::move(with)), reason(std::move(because)) {}
};

} // namespace quillary
