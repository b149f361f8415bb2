#include "platform/UniformTypes.h"

#include "base/Text.h"
#include "platform/OpenFile.h"

#include <QFile>
#include <QMimeDatabase>
#include <algorithm>
#include <array>
#include <string_view>

namespace quillary::platform {

namespace {

/// The types that the program meets all day, known without the system's data base.
struct KnownType {
    QStringView mime;
    QStringView identifier;
    std::array<std::string_view, 3> extensions; ///< the usual one first
};

constexpr std::array knownTypes{
    KnownType{u"image/png", u"public.png", {"png"}},
    KnownType{u"image/jpeg", u"public.jpeg", {"jpeg", "jpg", "jpe"}},
    KnownType{u"image/tiff", u"public.tiff", {"tiff", "tif"}},
    KnownType{u"image/svg+xml", u"public.svg-image", {"svg"}},
    KnownType{u"image/svg+xml", u"image/svg+xml-compressed", {"svgz"}},
    KnownType{u"application/pdf", u"com.adobe.pdf", {"pdf"}},
    KnownType{u"image/gif", u"com.compuserve.gif", {"gif"}},
    KnownType{u"image/bmp", u"com.microsoft.bmp", {"bmp"}},
    KnownType{u"image/webp", u"org.webmproject.webp", {"webp"}},
    KnownType{u"image/heic", u"public.heic", {"heic"}},
    KnownType{u"image/heif", u"public.heif", {"heif"}},
    KnownType{u"image/avif", u"public.avif", {"avif"}},
    KnownType{u"video/quicktime", u"com.apple.quicktime-movie", {"mov"}},
    KnownType{u"video/mp4", u"public.mpeg-4", {"mp4"}},
    KnownType{u"video/x-m4v", u"com.apple.m4v-video", {"m4v"}},
    KnownType{u"audio/mpeg", u"public.mp3", {"mp3"}},
    KnownType{u"audio/mp4", u"public.mpeg-4-audio", {"m4a"}},
    KnownType{u"audio/x-wav", u"com.microsoft.waveform-audio", {"wav"}},
    KnownType{u"audio/x-aiff", u"public.aiff-audio", {"aiff", "aif"}},
    KnownType{u"image/*", u"public.image", {}},
    KnownType{u"video/*", u"public.movie", {}},
    KnownType{u"audio/*", u"public.audio", {}},
    KnownType{u"text/uri-list", u"public.file-url", {}},
    KnownType{u"text/uri-list", u"public.url", {}},
    KnownType{u"text/plain", u"public.utf8-plain-text", {}},
    KnownType{u"text/plain", u"public.plain-text", {}},
    KnownType{u"text/html", u"public.html", {}},
    KnownType{u"application/xml", u"public.xml", {}},
    KnownType{u"inode/directory", u"public.folder", {}},
    KnownType{u"application/octet-stream", u"public.data", {}},
};

const QString anything = QStringLiteral("application/octet-stream");
constexpr qint64 enoughToTell = 16384; ///< first bytes of a file

QString withoutParameters(const QString& type) {
    return type.section(u';', 0, 0).trimmed();
}

QString typeOfContents(const std::filesystem::path& file) {
    QFile contents;
    if (!openForReading(contents, file)) return anything;
    return contentType(contents.read(enoughToTell));
}

} // namespace

QString mimeName(const QString& type) {
    const auto* known = std::ranges::find(knownTypes, QStringView(type), &KnownType::identifier);
    return known == knownTypes.end() ? type : known->mime.toString();
}

bool conforms(const QString& type, const QString& ancestor) {
    const QString kind = withoutParameters(mimeName(type));
    const QString wanted = withoutParameters(mimeName(ancestor));
    if (kind == wanted) return true;
    if (wanted.endsWith(u"/*")) return kind.startsWith(QStringView(wanted).chopped(1));
    const QMimeType known = QMimeDatabase().mimeTypeForName(kind);
    return known.isValid() && known.inherits(wanted);
}

QString contentType(const std::filesystem::path& file) {
    const std::string extension = lowercaseExtension(file);
    if (!extension.empty()) {
        for (const KnownType& known : knownTypes)
            if (std::ranges::find(known.extensions, extension) != known.extensions.end()) return known.mime.toString();
        const QString name = QStringLiteral("name.") + QString::fromUtf8(extension);
        const QMimeType told = QMimeDatabase().mimeTypeForFile(name, QMimeDatabase::MatchExtension);
        if (told.isValid() && !told.isDefault()) return told.name();
    }
    return typeOfContents(file);
}

QString contentType(const QByteArray& bytes) {
    const QByteArray head = bytes.first(std::min(bytes.size(), qsizetype(enoughToTell)));
    const QString told = QMimeDatabase().mimeTypeForData(head).name();
    // A drawing that begins with a declaration or a comment passes for plain XML or text.
    const bool drawing = (conforms(told, QStringLiteral("application/xml")) || told == u"text/plain") &&
                         head.contains("<svg") && !head.contains("<html");
    return drawing ? QStringLiteral("image/svg+xml") : told;
}

QString preferredExtension(const QString& type) {
    const QString mime = withoutParameters(mimeName(type));
    const auto* known = std::ranges::find(knownTypes, QStringView(mime), &KnownType::mime);
    if (known != knownTypes.end()) return QString::fromLatin1(known->extensions[0].data());
    return QMimeDatabase().mimeTypeForName(mime).preferredSuffix();
}

} // namespace quillary::platform
