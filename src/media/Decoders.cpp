#include "media/Decoders.h"

#include "platform/ModuleEntry.h"

#include <QLoggingCategory>

namespace quillary::media {

std::expected<MediaModule*, MediaError> decoders() {
    static MediaModule* const loaded = []() -> MediaModule* {
        QString reason;
        const auto entry = reinterpret_cast<MediaModuleEntry>(moduleEntry(mediaModule, mediaModuleSymbol, reason));
        if (!entry) qWarning("The decoders of sounds and clips could not be loaded.\n%s", qUtf8Printable(reason));
        return entry ? entry() : nullptr;
    }();
    if (!loaded) return std::unexpected(MediaError::noDecoders);
    return loaded;
}

} // namespace quillary::media
