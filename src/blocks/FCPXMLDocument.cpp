#include "blocks/FCPXMLDocument.h"

#include "base/FileUrl.h"
#include "base/Text.h"
#include "base/Translation.h"
#include "base/Try.h"
#include "platform/OpenFile.h"

#include <QFile>
#include <algorithm>
#include <map>
#include <set>

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

bool isNamedOneOf(xml::Node element, std::initializer_list<const char*> names) {
    return std::ranges::any_of(names, [&](const char* name) { return element.isNamed(name); });
}

bool holdsClips(xml::Node element) {
    return isNamedOneOf(element, {"library", "event"});
}

/// Nesting is bounded by the parser.
void collectClips(xml::Node holder, std::vector<xml::Node>& timelines, std::vector<xml::Node>& loose) {
    for (xml::Node element = holder.firstElement(); element; element = element.nextElement()) {
        if (holdsClips(element)) collectClips(element, timelines, loose);
        // The earliest versions keep clips in projects, too.
        if (element.isNamed("project") && !element.firstElement("sequence")) collectClips(element, timelines, loose);
        if (FCPXMLDocument::isTimeline(element)) timelines.push_back(element);
        if (FCPXMLDocument::isLooseClip(element)) loose.push_back(element);
    }
}

void collectGroups(xml::Node holder, std::vector<xml::Node>& groups) {
    for (xml::Node element = holder.firstElement(); element; element = element.nextElement()) {
        if (element.isNamed("resources")) groups.push_back(element);
        if (holdsClips(element) || element.isNamed("project")) collectGroups(element, groups);
    }
}

std::optional<QString> nameOf(xml::Node element) {
    const auto name = element.attribute("name");
    return name && !name->isEmpty() ? std::optional(QString::fromUtf8(*name)) : std::nullopt;
}

/// Tells references apart that bear one UID.
void identify(std::vector<FCPXMLDocument::MediaReference>& references) {
    std::map<QByteArray, std::set<fs::path>> files;
    for (const auto& reference : references)
        if (!reference.uid.isEmpty()) files[reference.uid].insert(reference.file().value_or(fs::path()));
    for (auto& reference : references) {
        const auto known = files.find(reference.uid);
        if (known == files.end() || known->second.size() < 2) continue;
        const fs::path name = reference.file().value_or(fs::path()).filename();
        const auto namesakes =
            std::ranges::count(known->second, name, [](const fs::path& file) { return file.filename(); });
        reference.identity = namesakes > 1 || name.empty() ? MediaIdentity::nothing : MediaIdentity::name;
    }
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

QString FCPXMLDocument::MediaReference::shownName() const {
    const auto known = file();
    if (known && known->has_filename()) return shown(known->filename());
    const QString src = QString::fromUtf8(holder.attribute("src").value_or(QByteArray())).simplified();
    return src.isEmpty() ? translate("Blocks", "A file without a name") : src;
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
    document.m_fileName = shownStem(file);
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
    const xml::Node clip = this->clip();
    if (auto name = holdsClips(clip) ? std::nullopt : nameOf(clip)) return name;
    const bool isWhole = holdsClips(clip) || isTimeline(clip) || clip.parent() != root();
    if (isWhole && !m_fileName.isEmpty()) return m_fileName;
    for (const xml::Node group : resourceGroups())
        if (const xml::Node media = group.firstElement("media")) return nameOf(media);
    return {};
}

bool FCPXMLDocument::isLooseClip(xml::Node element) {
    return isNamedOneOf(element, {"asset-clip", "clip", "ref-clip", "sync-clip", "mc-clip", "audition", "video",
                                  "audio", "title", "gap", "caption"});
}

bool FCPXMLDocument::isTimeline(xml::Node clip) {
    return clip.isNamed("sequence") || (clip.isNamed("project") && clip.firstElement("sequence"));
}

std::vector<xml::Node> FCPXMLDocument::clips() const {
    std::vector<xml::Node> found;
    std::vector<xml::Node> loose;
    collectClips(root(), found, loose);
    found.insert(found.end(), loose.begin(), loose.end());
    if (!found.empty()) return found;
    xml::Node element = root().firstElement();
    while (isNamedOneOf(element, {"resources", "import-options"})) element = element.nextElement();
    if (element) found.push_back(element);
    return found;
}

xml::Node FCPXMLDocument::clip() const {
    const auto found = clips();
    return found.empty() ? xml::Node() : found.front();
}

std::vector<xml::Node> FCPXMLDocument::resourceGroups() const {
    std::vector<xml::Node> groups;
    collectGroups(root(), groups);
    return groups;
}

FCPXMLDocument::Resources FCPXMLDocument::resources() const {
    Resources found;
    for (const xml::Node group : resourceGroups())
        for (xml::Node element = group.firstElement(); element; element = element.nextElement())
            if (const auto id = element.attribute("id"); id && !found.contains(*id)) found.insert(*id, element);
    return found;
}

xml::Node FCPXMLDocument::spineOf(xml::Node clip, const Resources& resources) {
    if (isTimeline(clip)) return (clip.isNamed("project") ? clip.firstElement("sequence") : clip).firstElement("spine");
    const auto ref = clip.attribute("ref");
    return ref ? resources.value(*ref).firstElement("sequence").firstElement("spine") : xml::Node();
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
                found.push_back({.holder = child,
                                 .assetId = id,
                                 .uid = uid,
                                 .isOriginal = child.attribute("kind").value_or("original-media") == "original-media",
                                 .folder = m_folder});
        if (found.size() == before && asset.attribute("src"))
            found.push_back({.holder = asset, .assetId = id, .uid = uid, .folder = m_folder});
    }
    identify(found);
    return found;
}

std::expected<QByteArray, ArrangementFailure> FCPXMLDocument::serialize() const {
    QByteArray bytes = m_document.serialize(xml::Document::Encoding::utf8);
    if (bytes.isEmpty())
        return std::unexpected(ArrangementFailure::unreadable(translate("Blocks", "Not enough memory")));
    return bytes;
}

} // namespace quillary
