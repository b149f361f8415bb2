#include "base/Text.h"
#include "blocks/ArrangementStore.h"

#include <array>
#include <cmath>

namespace quillary {

namespace {

using Kind = Arrangement::Layer::Kind;

constexpr std::array<std::pair<const char*, Kind>, 7> kinds{{{"title", Kind::title},
                                                             {"video", Kind::graphic},
                                                             {"ref-clip", Kind::clip},
                                                             {"asset-clip", Kind::clip},
                                                             {"sync-clip", Kind::clip},
                                                             {"clip", Kind::clip},
                                                             {"mc-clip", Kind::clip}}};

QString text(const std::optional<QByteArray>& attribute) {
    return QString::fromUtf8(attribute.value_or(QByteArray()));
}

Arrangement::Layer layer(xml::Node element) {
    Arrangement::Layer made{text(element.attribute("name")), element.attribute("lane").value_or("0").toInt()};
    for (const auto& [name, kind] : kinds)
        if (element.isNamed(name)) made.kind = kind;
    return made;
}

void addWithConnected(std::vector<Arrangement::Layer>& layers, xml::Node element) {
    layers.push_back(layer(element));
    for (xml::Node child = element.firstElement(); child; child = child.nextElement())
        if (child.attribute("lane")) layers.push_back(layer(child));
}

bool isOfTheFamily(xml::Node effect) {
    static const QString family = foldedForSearch(QStringLiteral("Glidemark"));
    return foldedForSearch(text(effect.attribute("uid"))).contains(family) ||
           foldedForSearch(text(effect.attribute("name"))).contains(family);
}

std::optional<double> number(QByteArrayView text) {
    bool isNumber = false;
    const double value = text.toDouble(&isNumber);
    return isNumber && std::isfinite(value) ? std::optional(value) : std::nullopt;
}

} // namespace

double ArrangementStore::seconds(QByteArrayView text) {
    if (!text.endsWith('s')) return 0;
    const QByteArrayView value = text.chopped(1);
    const auto slash = value.indexOf('/');
    if (slash < 0) return number(value).value_or(0);
    const auto numerator = number(value.first(slash));
    const auto denominator = number(value.sliced(slash + 1));
    if (!numerator || !denominator || *denominator == 0) return 0;
    const double quotient = *numerator / *denominator;
    return std::isfinite(quotient) ? quotient : 0;
}

Arrangement::Summary ArrangementStore::summarize(const FCPXMLDocument& document) {
    Arrangement::Summary summary;
    auto clips = document.clips();
    // A timeline stands for the whole; loose clips all belong to the block.
    if (!clips.empty() && FCPXMLDocument::isTimeline(clips.front())) clips.resize(1);
    const auto resources = document.resources();
    for (const xml::Node clip : clips) {
        const xml::Node spine = FCPXMLDocument::spineOf(clip, resources);
        for (xml::Node element = spine.firstElement(); element; element = element.nextElement())
            addWithConnected(summary.layers, element);
        if (!spine) addWithConnected(summary.layers, clip);
        double length = seconds(clip.attribute("duration").value_or(QByteArray()));
        if (length == 0) length = seconds(spine.parent().attribute("duration").value_or(QByteArray()));
        summary.seconds += length;
    }
    for (const xml::Node effect : document.elements("effect"))
        if (isOfTheFamily(effect)) summary.usesGlidemark = true;
    return summary;
}

} // namespace quillary
