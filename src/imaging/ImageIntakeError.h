#pragma once

#include <QString>
#include <filesystem>

namespace quillary {

/// Why something could not become an image.
struct ImageIntakeError {
    enum class Kind { unreadableFile, nothingUsable, emptyImage, lockedFile };

    Kind kind = Kind::nothingUsable;
    std::filesystem::path url = {}; ///< for unreadableFile and lockedFile; empty for data without a file

    static ImageIntakeError unreadableFile(std::filesystem::path url);
    /// A document that asks for a password.
    static ImageIntakeError lockedFile(std::filesystem::path url);
    static ImageIntakeError nothingUsable() { return {Kind::nothingUsable}; }
    static ImageIntakeError emptyImage() { return {Kind::emptyImage}; }

    /// The texts shown to the user.
    QString description() const;
    QString recoverySuggestion() const;

    bool operator==(const ImageIntakeError&) const = default;
};

} // namespace quillary
