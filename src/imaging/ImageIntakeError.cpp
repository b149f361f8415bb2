#include "imaging/ImageIntakeError.h"

#include "base/Text.h"
#include "base/Translation.h"
#include "platform/UniformTypes.h"

#include <utility>

namespace quillary {

ImageIntakeError ImageIntakeError::unreadableFile(std::filesystem::path url) {
    return {Kind::unreadableFile, std::move(url)};
}

ImageIntakeError ImageIntakeError::lockedFile(std::filesystem::path url) {
    return {Kind::lockedFile, std::move(url)};
}

namespace {

/// Of a file that no picture is expected of, the advice is not to try another kind of picture.
QString adviceFor(const std::filesystem::path& file) {
    const QString type = file.empty() ? QString() : platform::contentType(file);
    if (type.startsWith(u"video/"))
        return translate("ImageIntake", "The video may be damaged, or of a kind that can’t be read here.");
    if (type.startsWith(u"audio/")) return translate("ImageIntake", "It is a sound: there is no picture in it.");
    return translate("ImageIntake", "Try a PNG, TIFF or JPEG.");
}

} // namespace

QString ImageIntakeError::description() const {
    switch (kind) {
    case Kind::unreadableFile:
        return translate("ImageIntake", "Could not read %1.").arg(shown(url.filename()));
    case Kind::nothingUsable:
        return translate("ImageIntake", "No image on the clipboard.");
    case Kind::lockedFile:
        if (url.empty()) return translate("ImageIntake", "The document is locked with a password.");
        return translate("ImageIntake", "%1 is locked with a password.").arg(shown(url.filename()));
    case Kind::emptyImage:
        return translate("ImageIntake", "That image had no pixels.");
    }
    Q_UNREACHABLE();
}

QString ImageIntakeError::recoverySuggestion() const {
    if (kind == Kind::nothingUsable)
        return translate("ImageIntake",
                         "Copy an image — from a browser, a screenshot, Figma, Slack — then paste again.");
    if (kind == Kind::lockedFile)
        return translate("ImageIntake", "Save a copy of it without the password, then use that.");
    return adviceFor(url);
}

} // namespace quillary
