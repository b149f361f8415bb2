#include "cutout/BackgroundRemovalError.h"

#include "base/Translation.h"

namespace quillary {

BackgroundRemovalError BackgroundRemovalError::stopped() {
    return failed(translate("Cutout", "The cutout was cancelled."));
}

QString BackgroundRemovalError::description() const {
    switch (kind) {
    case Kind::failed:
        return message;
    case Kind::noImage:
        return translate("Cutout", "Could not read that image.");
    case Kind::noSubjectFound:
        return translate("Cutout", "No subject found to cut out.");
    }
    return {};
}

std::optional<QString> BackgroundRemovalError::recoverySuggestion() const {
    if (kind != Kind::noSubjectFound) return {};
    return translate("Cutout",
                     "This works on a subject against a background — a logo, a product, a person. A flat graphic "
                     "that already fills the frame has nothing to separate.");
}

} // namespace quillary
