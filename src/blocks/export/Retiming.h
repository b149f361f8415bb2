#pragma once

#include "blocks/export/Rational.h"
#include "xml/Node.h"

#include <optional>
#include <utility>
#include <vector>

namespace quillary {

/// At which time a clip reads what is in it: a changed speed ("timeMap") and a frame rate that is conformed to that of
/// the timeline ("conform-rate"). A value; any thread.
class Retiming {
public:
    /// None: every time is read as it is.
    Retiming() = default;
    /// `timelineRate` is that of the sequence in which the clip stands, `mediaRate` that of its media where the clip
    /// itself does not tell one.
    Retiming(xml::Node clip, const std::optional<Rational>& timelineRate, const std::optional<Rational>& mediaRate);

    bool isNone() const { return m_points.empty() && m_factor == Rational(1); }
    bool isConformed() const { return m_factor != Rational(1); }

    /// The same with conforming that leaves this time where it is, instead of the time 0.
    Retiming conformedAround(const Rational& anchor) const;
    Retiming withoutConforming() const;

    /// The time in the content at a time of the clip's own clock.
    Rational at(const Rational& local) const;
    /// Whether the speed does not change between two times of the clip's own clock.
    bool isEven(const Rational& from, const Rational& to) const;

private:
    Rational mapped(const Rational& local) const;

    std::vector<std::pair<Rational, Rational>> m_points; ///< times of the clip and of what it reads there
    Rational m_factor = 1;                               ///< seconds of the content for one of the timeline
    Rational m_anchor;
};

} // namespace quillary
