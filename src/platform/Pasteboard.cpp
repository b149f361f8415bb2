#include "platform/Pasteboard.h"

#include "platform/SuggestedName.h"

#include <QStringConverter>
#include <QStringDecoder>
#include <algorithm>
#include <array>

namespace quillary::platform {

namespace {

constexpr auto uriListType = u"text/uri-list";
constexpr auto linkType = u"text/x-moz-url";
constexpr auto htmlType = u"text/html";
constexpr auto sourcePageType = u"chromium/x-source-url";
constexpr auto sourceSiteType = u"chromium/x-renderer-taint";
constexpr std::array fileNameTypes{u"application/x-moz-file-promise-dest-filename", u"XdndDirectSave0"};

constexpr std::array plainTextTypes{
    u"text/plain;charset=utf-8",
    u"public.utf8-plain-text",
    u"UTF8_STRING",
    u"text/plain",
};

/// Text that other programs wrote: a byte order mark or a zero in the second byte tells UTF-16, else it is UTF-8.
QString decoded(const QByteArray& bytes) {
    const bool marked = bytes.startsWith("\xFF\xFE") || bytes.startsWith("\xFE\xFF");
    const bool wide = marked || (bytes.size() >= 2 && bytes[0] != '\0' && bytes[1] == '\0');
    QStringDecoder decoder(marked ? QStringConverter::Utf16
                           : wide ? QStringConverter::Utf16LE
                                  : QStringConverter::Utf8);
    QString text = decoder.decode(bytes);
    // Some owners count the terminator among their bytes.
    while (text.endsWith(QChar::Null)) text.chop(1);
    return text;
}

/// One address to a line, as in RFC 2483.
QList<QByteArray> lines(const QByteArray& list) {
    QList<QByteArray> found;
    for (QByteArray line : list.split('\n')) {
        line = line.trimmed();
        while (line.endsWith('\0')) line.chop(1);
        if (!line.isEmpty() && !line.startsWith('#')) found.append(line);
    }
    return found;
}

/// The value of `src` in the first picture's tag; empty when there is none.
QString firstPicture(const QString& html) {
    qsizetype at = html.indexOf(u"<img", 0, Qt::CaseInsensitive);
    if (at < 0) return {};
    const qsizetype end = html.indexOf(u'>', at);
    const QStringView tag = QStringView(html).sliced(at, (end < 0 ? html.size() : end) - at);
    for (at = tag.indexOf(u"src", 0, Qt::CaseInsensitive); at > 0;
         at = tag.indexOf(u"src", at + 1, Qt::CaseInsensitive)) {
        const QStringView rest = tag.sliced(at + 3).trimmed();
        if (!tag[at - 1].isSpace() || !rest.startsWith(u'=')) continue;
        const QStringView value = rest.sliced(1).trimmed();
        if (value.isEmpty()) return {};
        const QChar quote = value[0];
        const bool quoted = quote == u'"' || quote == u'\'';
        const QStringView inside = quoted ? value.sliced(1) : value;
        qsizetype length = 0;
        while (length < inside.size() && !(quoted ? inside[length] == quote : inside[length].isSpace())) ++length;
        return inside.first(length).toString().replace(QStringLiteral("&amp;"), QStringLiteral("&"));
    }
    return {};
}

/// By its name alone.
bool leadsToPicture(const QString& address) {
    static constexpr std::array endings{u".png", u".jpg",  u".jpeg", u".gif", u".webp",
                                        u".svg", u".avif", u".bmp",  u".tiff"};
    const QString path = QUrl(address).path();
    return std::ranges::any_of(endings, [&](QStringView end) { return path.endsWith(end, Qt::CaseInsensitive); });
}

/// What stands for bytes and not for a place.
bool isMadeUp(const QUrl& url) {
    return url.scheme() == u"data" || url.scheme() == u"blob";
}

/// Of the `name` that a type such as "application/octet-stream;name="a.png"" gives its data; empty when it gives none.
QString fileNameIn(const QString& type) {
    const qsizetype at = type.indexOf(u";name=");
    QString name = at < 0 ? QString() : type.sliced(at + 6);
    if (name.size() > 1 && name.startsWith(u'"') && name.endsWith(u'"')) name = name.sliced(1, name.size() - 2);
    return name;
}

/// Adds an absolute address that can be told from data. Nothing is added twice.
void add(QList<QUrl>& urls, const QByteArray& address) {
    const QUrl url = QUrl::fromEncoded(address);
    if (!url.isValid() || url.scheme().isEmpty() || isMadeUp(url)) return;
    if (!urls.contains(url)) urls.append(url);
}

} // namespace

std::optional<QString> Pasteboard::string() {
    const QStringList offered = types();
    for (const QStringView type : plainTextTypes) {
        if (!offered.contains(type)) continue;
        if (const auto bytes = data(type.toString())) return decoded(*bytes);
    }
    return {};
}

QByteArray Pasteboard::offered(QStringView type) {
    return types().contains(type) ? data(type.toString()).value_or(QByteArray()) : QByteArray();
}

QString Pasteboard::link() {
    return decoded(offered(linkType)).section(u'\n', 0, 0).trimmed();
}

QString Pasteboard::pictureInHtml() {
    return firstPicture(decoded(offered(htmlType))).trimmed();
}

QList<QUrl> Pasteboard::urls() {
    QList<QUrl> found;
    // A file manager's own list begins with what to do with the files.
    for (const QByteArray& line : lines(offered(u"x-special/gnome-copied-files")))
        if (line != "copy" && line != "cut") add(found, line);
    for (const QByteArray& line : lines(offered(uriListType))) add(found, line);
    add(found, link().toUtf8());
    add(found, pictureInHtml().toUtf8());
    return found;
}

WebOrigin Pasteboard::webOrigin() {
    WebOrigin origin;
    origin.page = webAddress(decoded(offered(sourcePageType)));
    const QString picture = pictureInHtml();
    if (!picture.isEmpty()) origin.address = webAddress(QUrl(origin.page).resolved(QUrl(picture)));
    QStringList links{webAddress(link())};
    for (const QByteArray& line : lines(offered(uriListType))) links += webAddress(QString::fromUtf8(line));
    for (const QString& address : links) {
        if (address.isEmpty() || address == origin.address) continue;
        QString& unknown = origin.address.isEmpty() && leadsToPicture(address) ? origin.address : origin.page;
        if (unknown.isEmpty()) unknown = address;
    }
    if (origin.page.isEmpty()) origin.page = webAddress(decoded(offered(sourceSiteType)));
    return origin;
}

std::optional<QString> Pasteboard::pictureName() {
    const QUrl picture(pictureInHtml());
    if (const auto name = isMadeUp(picture) ? std::nullopt : suggestedName(picture)) return name;
    QStringList fileNames;
    for (const QStringView type : fileNameTypes) fileNames += decoded(offered(type));
    for (const QString& type : types()) fileNames += fileNameIn(type);
    for (const QString& name : fileNames)
        if (const auto usable = suggestedName(QUrl::fromLocalFile(u'/' + name))) return usable;
    const auto others = urls();
    return others.isEmpty() ? std::nullopt : suggestedName(others.front());
}

} // namespace quillary::platform
