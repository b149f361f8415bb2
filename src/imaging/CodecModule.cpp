#include "imaging/CodecModule.h"

#include "imaging/codecs/Codecs.h"
#include "platform/ModuleEntry.h"

#include <QLoggingCategory>

namespace quillary {

codecs::Bitmaps* bitmapCodecs() {
    static codecs::Bitmaps* const loaded = []() -> codecs::Bitmaps* {
        QString reason;
        const auto entry =
            reinterpret_cast<codecs::BitmapsEntry>(moduleEntry(codecs::bitmapModule, codecs::bitmapsSymbol, reason));
        if (codecs::Bitmaps* bitmaps = entry ? entry() : nullptr) return bitmaps;
        qWarning("The picture codecs could not be loaded; only the toolkit's own formats are read.\n%s",
                 qUtf8Printable(reason));
        return nullptr;
    }();
    return loaded;
}

} // namespace quillary
