#include "imaging/ImageIntakeError.h"

#include "base/Text.h"
#include "base/Translation.h"

#include <utility>

namespace quillary {

ImageIntakeError ImageIntakeError::unreadableFile(std::filesystem::path url) {
    return {Kind::unreadableFile, std::move(url)};
}

QString ImageIntakeError::description() const {
    switch (kind) {
    case Kind::unreadableFile:
        return translate("ImageIntake", "Could not read %1.").arg(shown(url.filename()));
    case Kind::nothingUsable:
        return translate("ImageIntake", "No image on the clipboard.");
    case Kind::emptyImage:
        return translate("ImageIntake", "That image had no pixels.");
    }
    Q_UNREACHABLE();
}

QString ImageIntakeError::recoverySuggestion() const {
    if (kind == Kind::nothingUsable)
        return translate("ImageIntake",
                         "Copy an image — from a browser, a screenshot, Figma, Slack — then paste again.");
    return translate("ImageIntake", "Try a PNG, TIFF or JPEG.");
}

} // namespace quillary
