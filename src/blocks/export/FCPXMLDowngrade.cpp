#include "blocks/export/FCPXMLDowngrade.h"

#include "base/Translation.h"
#include "base/Try.h"
#include "blocks/export/FCPXMLVocabulary.h"
#include "blocks/export/PlainNames.h"

#include <QSet>

namespace quillary {

namespace {

using Element = FCPXMLVocabulary::Element;

QString text(const std::optional<QByteArray>& value) {
    return QString::fromUtf8(value.value_or(QByteArray()));
}

/// Takes away what the version does not know.
class Cleaner {
public:
    explicit Cleaner(LeftOut& leftOut) : m_leftOut(leftOut) {}

    /// False where the element itself has lost what it needs. Nesting is bounded by the parser.
    bool clean(xml::Node element, const Element& known) {
        for (const QByteArray& name : element.attributeNames()) {
            const auto attribute = known.attributes.constFind(name);
            if (attribute != known.attributes.cend() &&
                (attribute->values.isEmpty() || attribute->values.contains(*element.attribute(name))))
                continue;
            if (attribute != known.attributes.cend() && attribute->isRequired) return false;
            m_leftOut.add(translate("Blocks", "Settings that version 1.10 does not know"), QString::fromUtf8(name));
            element.removeAttribute(name);
        }
        for (xml::Node child = element.firstElement(); child;) {
            xml::Node next = child.nextElement();
            const QByteArray name = child.name();
            const Element* definition = known.children.contains(name) ? m_vocabulary.element(name) : nullptr;
            if (!definition || !clean(child, *definition)) {
                m_leftOut.add(plainName(name), text(child.attribute("name")));
                child.remove();
            }
            child = next;
        }
        return true;
    }

private:
    const FCPXMLVocabulary& m_vocabulary = FCPXMLVocabulary::version110();
    LeftOut& m_leftOut;
};

/// Up to version 1.8 the asset itself names its file.
void giveMediaRepresentation(xml::Node asset) {
    const auto src = asset.attribute("src");
    if (!src || asset.firstElement("media-rep")) return;
    xml::Node representation = asset.appendElement("media-rep");
    representation.setAttribute("kind", "original-media");
    representation.setAttribute("src", *src);
    asset.removeAttribute("src");
    representation.append(asset.firstElement("bookmark"));
    // Metadata stand last.
    asset.append(asset.firstElement("metadata"));
}

/// Styles are known by identifiers that must not come twice.
void renameStyles(xml::Node element) {
    const char* name = element.isNamed("text-style-def") ? "id" : element.isNamed("text-style") ? "ref" : nullptr;
    if (const auto value = name ? element.attribute(name) : std::nullopt)
        element.setAttribute(name, *value + "-project");
    for (xml::Node child = element.firstElement(); child; child = child.nextElement()) renameStyles(child);
}

/// A failure unless there are rules for documents of this version.
std::expected<void, ArrangementFailure> checkVersion(const FCPXMLDocument& document) {
    constexpr int oldest = 2;
    constexpr int newest = 14;
    const QByteArray version = document.root().attribute("version").value_or(QByteArray()).trimmed();
    bool isNumber = false;
    const int minor = version.startsWith("1.") ? version.sliced(2).toInt(&isNumber) : 0;
    if (isNumber && minor >= oldest && minor <= newest) return {};
    if (version.isEmpty())
        return std::unexpected(ArrangementFailure::unreadable(translate(
            "Blocks", "The document does not tell its version of FCPXML, so it cannot be brought to version 1.10.")));
    return std::unexpected(ArrangementFailure::unreadable(
        translate("Blocks", "FCPXML %1 cannot be brought to version 1.10.").arg(QString::fromUtf8(version))));
}

/// Puts what stands behind something in front of it, by moving everything else to the end.
void moveToFront(xml::Node holder, xml::Node first) {
    for (xml::Node element : holder.elements())
        if (element != first && !element.isNamed("import-options")) holder.append(element);
}

/// Up to version 1.2 projects and events have the resources, which from then on stand at the top.
std::expected<void, ArrangementFailure> gatherResources(FCPXMLDocument& document) {
    xml::Node root = document.root();
    xml::Node top = root.firstElement("resources");
    const auto groups = document.resourceGroups();
    QSet<QByteArray> known;
    for (const xml::Node group : groups)
        for (const xml::Node resource : group.elements()) {
            const auto id = resource.attribute("id");
            if (!id || resource.isNamed("projectRef")) continue;
            if (known.contains(*id))
                return std::unexpected(ArrangementFailure::unreadable(
                    translate("Blocks",
                              "Two resources of the document are called “%1”, so it cannot be brought to version 1.10.")
                        .arg(QString::fromUtf8(*id))));
            known.insert(*id);
        }
    for (xml::Node group : groups) {
        if (group == top) continue;
        if (!top) {
            top = root.appendElement("resources");
            moveToFront(root, top);
        }
        for (const xml::Node resource : group.elements()) top.append(resource);
        group.remove();
    }
    return {};
}

/// Up to version 1.2 a project may be what is now an event, or hold several timelines.
void splitProjects(FCPXMLDocument& document) {
    for (xml::Node project : document.elements("project")) {
        xml::Node event;
        int timelines = 0;
        for (xml::Node element : project.elements()) {
            if (element.isNamed("sequence") && ++timelines == 1) continue;
            xml::Node place;
            if (element.isNamed("sequence")) {
                place = project.parent().appendElement("project");
                if (const auto name = project.attribute("name")) place.setAttribute("name", *name);
            } else if (FCPXMLDocument::isLooseClip(element)) {
                if (!event) event = document.root().appendElement("event");
                if (const auto name = project.attribute("name")) event.setAttribute("name", *name);
                place = event;
            }
            if (place) place.append(element);
        }
        if (timelines == 0) project.remove();
    }
}

/// Removes references that lead nowhere, which readers refuse.
class ReferenceCheck {
public:
    ReferenceCheck(const FCPXMLDocument& document, LeftOut& leftOut)
        : m_resources(document.resources()), m_leftOut(leftOut) {}

    std::expected<void, ArrangementFailure> check(xml::Node element) {
        if (const auto format = element.attribute("format"); format && !m_resources.contains(*format)) {
            if (element.isNamed("sequence") || element.isNamed("multicam"))
                return std::unexpected(ArrangementFailure::unreadable(
                    translate("Blocks", "A timeline refers to the format “%1”, which the document does not have, so it "
                                        "cannot be brought to version 1.10.")
                        .arg(QString::fromUtf8(*format))));
            m_leftOut.add(translate("Blocks", "References to what the document does not have"),
                          QString::fromUtf8(*format));
            element.removeAttribute("format");
        }
        bool isGone = false;
        for (xml::Node child : element.elements()) {
            const auto ref = child.attribute("ref");
            const bool isLost = ref && !child.isNamed("text-style") && !m_resources.contains(*ref);
            if (!isLost) {
                TRY(check(child));
                if (isGone) element.append(child);
                continue;
            }
            m_leftOut.add(plainName(child.name()), text(child.attribute("name")));
            // What follows keeps its place behind the gap.
            if (isInStoryline(child)) {
                isGone = true;
                leaveGap(child, element);
            }
            child.remove();
        }
        return {};
    }

private:
    static bool isInStoryline(xml::Node element) {
        const xml::Node holder = element.parent();
        return !element.attribute("lane") && element.attribute("duration") &&
               (holder.isNamed("spine") || holder.isNamed("mc-angle"));
    }
    void leaveGap(xml::Node element, xml::Node holder) {
        xml::Node gap = holder.appendElement("gap");
        for (const char* kept : {"name", "offset", "start", "duration", "enabled"})
            if (const auto value = element.attribute(kept)) gap.setAttribute(kept, *value);
    }

    const FCPXMLDocument::Resources m_resources;
    LeftOut& m_leftOut;
};

void addProject(const FCPXMLDocument& document, xml::Node clip) {
    bool isClip = false;
    for (const char* kind : {"clip", "audition", "mc-clip", "ref-clip", "sync-clip", "asset-clip"})
        isClip = isClip || clip.isNamed(kind);
    if (!isClip || clip.parent() != document.root()) return;
    const auto resources = document.resources();
    const xml::Node resource = resources.value(clip.attribute("ref").value_or(QByteArray()));
    const xml::Node content = resource.isNamed("asset") ? resource : resource.firstElement();
    auto format = clip.attribute("format");
    if (!format) format = content.attribute("format");
    if (!format || !resources.value(*format).isNamed("format")) return;
    auto duration = clip.attribute("duration");
    if (!duration) duration = content.attribute("duration");

    xml::Node project = document.root().appendElement("project");
    if (const auto name = clip.attribute("name")) project.setAttribute("name", *name);
    xml::Node sequence = project.appendElement("sequence");
    sequence.setAttribute("format", *format);
    if (duration) sequence.setAttribute("duration", *duration);
    sequence.setAttribute("tcStart", "0s");
    sequence.setAttribute("tcFormat", content.attribute("tcFormat").value_or("NDF"));
    for (const char* sound : {"audioLayout", "audioRate"})
        if (const auto value = content.attribute(sound); value && content.isNamed("sequence"))
            sequence.setAttribute(sound, *value);
    xml::Node copy = sequence.appendElement("spine").appendCopy(clip);
    copy.setAttribute("offset", "0s");
    copy.removeAttribute("lane");
    renameStyles(copy);
}

} // namespace

std::expected<void, ArrangementFailure> bringToVersion110(FCPXMLDocument& document, LeftOut& leftOut) {
    TRY(checkVersion(document));
    TRY(gatherResources(document));
    splitProjects(document);
    xml::Node root = document.root();
    root.setAttribute("version", "1.10");
    for (const xml::Node asset : document.elements("asset")) giveMediaRepresentation(asset);
    Cleaner(leftOut).clean(root, *FCPXMLVocabulary::version110().element("fcpxml"));
    TRY(ReferenceCheck(document, leftOut).check(root));
    // Where there is a timeline, it is what is meant.
    const auto clips = document.clips();
    if (clips.empty() || FCPXMLDocument::isTimeline(clips.front())) return {};
    for (const xml::Node clip : clips) addProject(document, clip);
    return {};
}

} // namespace quillary
