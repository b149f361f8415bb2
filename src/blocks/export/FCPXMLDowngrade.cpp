#include "blocks/export/FCPXMLDowngrade.h"

#include "base/Translation.h"
#include "blocks/export/FCPXMLVocabulary.h"
#include "blocks/export/PlainNames.h"

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

void addProject(const FCPXMLDocument& document) {
    const xml::Node clip = document.clip();
    bool isClip = false;
    for (const char* kind : {"clip", "audition", "mc-clip", "ref-clip", "sync-clip", "asset-clip"})
        isClip = isClip || clip.isNamed(kind);
    if (!isClip || document.root().firstElement("project")) return;
    const xml::Node resource = document.resource(clip.attribute("ref").value_or(QByteArray()));
    const xml::Node content = resource.isNamed("asset") ? resource : resource.firstElement();
    auto format = clip.attribute("format");
    if (!format) format = content.attribute("format");
    if (!format || !document.resource(*format).isNamed("format")) return;
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

void bringToVersion110(FCPXMLDocument& document, LeftOut& leftOut) {
    xml::Node root = document.root();
    root.setAttribute("version", "1.10");
    for (const xml::Node asset : document.elements("asset")) giveMediaRepresentation(asset);
    Cleaner(leftOut).clean(root, *FCPXMLVocabulary::version110().element("fcpxml"));
    addProject(document);
}

} // namespace quillary
