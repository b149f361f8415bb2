#pragma once

#include <QString>
#include <optional>

namespace quillary {

/// Why a background could not be removed.
struct BackgroundRemovalError {
    enum class Kind {
        failed,        ///< anything else, told by `message`
        noImage,       ///< the picture has no pixels
        noSubjectFound ///< nothing stands out from its background
    };

    Kind kind = Kind::failed;
    QString message = {}; ///< for failed

    static BackgroundRemovalError failed(QString message) { return {Kind::failed, std::move(message)}; }
    static BackgroundRemovalError noImage() { return {Kind::noImage}; }
    static BackgroundRemovalError noSubjectFound() { return {Kind::noSubjectFound}; }
    /// A stop was requested: nobody waits for the result any more, so nobody reads the text.
    static BackgroundRemovalError stopped();

    /// The texts shown to the user.
    QString description() const;
    std::optional<QString> recoverySuggestion() const;

    bool operator==(const BackgroundRemovalError&) const = default;
};

} // namespace quillary
