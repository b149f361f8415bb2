#include "blocks/export/Retiming.h"

#include <QByteArray>
#include <array>

namespace quillary {

namespace {

std::optional<Rational> time(xml::Node element, const char* attribute) {
    const auto text = element.attribute(attribute);
    return text ? Rational::ofTime(*text) : std::nullopt;
}

/// The rates as they are written are rounded.
std::optional<Rational> rateOf(const std::optional<QByteArray>& text) {
    constexpr std::array rounded{std::pair{"23.98", 24}, std::pair{"23.976", 24}, std::pair{"29.97", 30},
                                 std::pair{"47.95", 48}, std::pair{"59.94", 60},  std::pair{"119.88", 120}};
    if (!text) return {};
    for (const auto& [written, whole] : rounded)
        if (*text == written) return Rational(whole * 1000, 1001);
    const auto rate = Rational::ofTime(*text + 's');
    return rate && *rate > Rational() ? rate : std::nullopt;
}

} // namespace

Retiming::Retiming(xml::Node clip, const std::optional<Rational>& timelineRate,
                   const std::optional<Rational>& mediaRate) {
    const xml::Node map = clip.firstElement("timeMap");
    for (xml::Node point = map.firstElement(); point; point = point.nextElement()) {
        const auto at = time(point, "time");
        const auto value = time(point, "value");
        if (at && value && (m_points.empty() || *at > m_points.back().first)) m_points.emplace_back(*at, *value);
    }
    const xml::Node conforming = clip.firstElement("conform-rate");
    if (!conforming || conforming.attribute("scaleEnabled") == "0") return;
    auto rate = rateOf(conforming.attribute("srcFrameRate"));
    if (!rate) rate = mediaRate;
    if (rate && timelineRate) m_factor = *timelineRate / *rate;
}

Retiming Retiming::conformedAround(const Rational& anchor) const {
    Retiming other = *this;
    other.m_anchor = anchor;
    return other;
}

Retiming Retiming::withoutConforming() const {
    Retiming other = *this;
    other.m_factor = 1;
    return other;
}

Rational Retiming::mapped(const Rational& local) const {
    if (m_points.empty()) return local;
    const std::pair<Rational, Rational>* before = nullptr;
    for (const auto& point : m_points) {
        const auto& [at, value] = point;
        if (local <= at) {
            if (!before) return value;
            return before->second + (local - before->first) * (value - before->second) / (at - before->first);
        }
        before = &point;
    }
    return before->second;
}

Rational Retiming::at(const Rational& local) const {
    const Rational read = mapped(local);
    return m_factor == Rational(1) ? read : m_anchor + (read - m_anchor) * m_factor;
}

bool Retiming::isEven(const Rational& from, const Rational& to) const {
    if (to <= from) return true;
    const Rational speed = (mapped(to) - mapped(from)) / (to - from);
    for (const auto& [at, value] : m_points)
        if (at > from && at < to && value != mapped(from) + (at - from) * speed) return false;
    return true;
}

} // namespace quillary
