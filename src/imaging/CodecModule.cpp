#include "imaging/CodecModule.h"

#include "imaging/codecs/Codecs.h"

#include <QCoreApplication>
#include <QLibrary>
#include <QLoggingCategory>

namespace quillary {

codecs::Bitmaps* bitmapCodecs() {
    static codecs::Bitmaps* const loaded = []() -> codecs::Bitmaps* {
        QString reason;
        for (const QString& folder : {QStringLiteral("/"), QStringLiteral("/../lib/quillary/")}) {
            QLibrary module(QCoreApplication::applicationDirPath() + folder + QLatin1String(codecs::bitmapModule));
            const auto entry = reinterpret_cast<codecs::BitmapsEntry>(module.resolve(codecs::bitmapsSymbol));
            if (codecs::Bitmaps* bitmaps = entry ? entry() : nullptr) return bitmaps;
            reason += QLatin1Char('\n') + module.errorString();
        }
        qWarning("The picture codecs could not be loaded; only the toolkit's own formats are read.%s",
                 qUtf8Printable(reason));
        return nullptr;
    }();
    return loaded;
}

} // namespace quillary
