#pragma once

#include <QString>
#include <filesystem>

namespace quillary {

/// Why the library could not be written.
struct StorageError {
    enum class Kind {
        couldNotWrite, ///< `location` and the system's own words in `reason`
        noRoot,        ///< the library folder cannot be opened
        couldNotEncodePNG,
        platform, ///< the system's own error, passed on as it is in `reason`
    };

    Kind kind = Kind::noRoot;
    std::filesystem::path location = {};
    QString reason = {};

    static StorageError couldNotWrite(std::filesystem::path location, QString reason);
    static StorageError noRoot() { return {Kind::noRoot}; }
    static StorageError couldNotEncodePNG() { return {Kind::couldNotEncodePNG}; }
    static StorageError platform(QString reason);

    /// The text shown to the user.
    QString description() const;

    bool operator==(const StorageError&) const = default;
};

} // namespace quillary
