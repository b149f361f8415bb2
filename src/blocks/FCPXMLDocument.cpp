#include "blocks/FCPXMLDocument.h"

#include "base/FileUrl.h"
#include "base/Text.h"
#include "base/Translation.h"
#include "base/Try.h"
#include "platform/OpenFile.h"

#include <QFile>

namespace quillary {

namespace fs = std::filesystem;

namespace {

/// Nesting is bounded by the parser.
void collect(xml::Node element, const char* name, std::vector<xml::Node>& found) {
    for (; element; element = element.nextElement()) {
        if (element.isNamed(name))
            found.push_back(element);
        else if (!element.isNamed("asset"))
            collect(element.firstElement(), name, found);
    }
}

std::optional<QString> nameOf(xml::Node element) {
    const auto name = element.attribute("name");
    return name && !name->isEmpty() ? std::optional(QString::fromUtf8(*name)) : std::nullopt;
}

} // namespace

std::optional<fs::path> FCPXMLDocument::MediaReference::file() const {
    const auto src = holder.attribute("src");
    if (!src) return {};
    return folder ? pathOfReference(src->trimmed(), *folder) : pathOfFileUrl(src->trimmed());
}

bool FCPXMLDocument::MediaReference::isRelative() const {
    const auto src = holder.attribute("src");
    return src && file() && !pathOfFileUrl(src->trimmed());
}

void FCPXMLDocument::MediaReference::setFile(const fs::path& file, const std::optional<fs::path>& from) {
    holder.setAttribute("src", from ? relativeReference(file, *from) : fileUrl(file));
    while (xml::Node bookmark = holder.firstElement("bookmark")) bookmark.remove();
}

std::expected<FCPXMLDocument, ArrangementFailure> FCPXMLDocument::parse(QByteArrayView bytes) {
    auto document = xml::Document::parse(bytes, largest);
    if (!document) return std::unexpected(ArrangementFailure::unreadable(document.error().description()));
    if (!document->root().isNamed("fcpxml")) return std::unexpected(ArrangementFailure::notFCPXML());
    return FCPXMLDocument(*std::move(document));
}

std::expected<FCPXMLDocument, ArrangementFailure> FCPXMLDocument::read(const fs::path& file) {
    const QByteArray bytes = TRY(bytesOf(file));
    FCPXMLDocument document = TRY(parse(bytes));
    std::error_code ignored;
    document.m_folder = std::make_shared<const fs::path>(fs::absolute(file, ignored).parent_path());
    return document;
}

std::expected<QByteArray, ArrangementFailure> FCPXMLDocument::bytesOf(const fs::path& file) {
    const auto unreadable = [&](const QString& why) {
        return std::unexpected(ArrangementFailure::unreadable(
            translate("Blocks", "Could not read %1: %2").arg(shown(file.filename()), why)));
    };
    QFile opened;
    if (const auto found = platform::openForReading(opened, file); !found) {
        const bool isOther = found.error().code == EISDIR || found.error().code == EINVAL;
        return unreadable(isOther ? translate("Blocks", "not a file") : found.error().description());
    }
    if (opened.size() > largest) return unreadable(translate("Blocks", "The document is too large."));
    // One byte more tells a file that grows meanwhile.
    return opened.read(opened.size() + 1);
}

std::optional<QString> FCPXMLDocument::derivedName() const {
    if (auto name = nameOf(clip())) return name;
    for (xml::Node group = m_document.root().firstElement(); group; group = group.nextElement())
        if (group.isNamed("resources"))
            if (const xml::Node media = group.firstElement("media")) return nameOf(media);
    return {};
}

xml::Node FCPXMLDocument::clip() const {
    xml::Node element = m_document.root().firstElement();
    while (element && (element.isNamed("resources") || element.isNamed("import-options")))
        element = element.nextElement();
    return element;
}

xml::Node FCPXMLDocument::resource(const QByteArray& id) const {
    const xml::Node resources = m_document.root().firstElement("resources");
    for (xml::Node element = resources.firstElement(); element; element = element.nextElement())
        if (element.attribute("id") == id) return element;
    return {};
}

xml::Node FCPXMLDocument::spine() const {
    const auto ref = clip().attribute("ref");
    return ref ? resource(*ref).firstElement("sequence").firstElement("spine") : xml::Node();
}

std::vector<xml::Node> FCPXMLDocument::elements(const char* name) const {
    std::vector<xml::Node> found;
    collect(m_document.root(), name, found);
    return found;
}

std::vector<FCPXMLDocument::MediaReference> FCPXMLDocument::media() const {
    std::vector<MediaReference> found;
    for (const xml::Node asset : elements("asset")) {
        const QByteArray id = asset.attribute("id").value_or(QByteArray());
        const QByteArray uid = asset.attribute("uid").value_or(QByteArray());
        const std::size_t before = found.size();
        for (xml::Node child = asset.firstElement(); child; child = child.nextElement())
            if (child.isNamed("media-rep"))
                found.push_back(
                    {child, id, uid, child.attribute("kind").value_or("original-media") == "original-media", m_folder});
        if (found.size() == before && asset.attribute("src")) found.push_back({asset, id, uid, true, m_folder});
    }
    return found;
}

std::expected<QByteArray, ArrangementFailure> FCPXMLDocument::serialize() const {
    QByteArray bytes = m_document.serialize(xml::Document::Encoding::utf8);
    if (bytes.isEmpty())
        return std::unexpected(ArrangementFailure::unreadable(translate("Blocks", "Not enough memory")));
    return bytes;
}

} // namespace quillary
