#include "blocks/export/OTIOWriter.h"

#include "base/FileUrl.h"
#include "base/Translation.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>
#include <numeric>

namespace quillary {

namespace {

using Medium = FlatTimeline::Medium;

constexpr std::int64_t largestValue = std::int64_t{1} << 53U; ///< up to here every whole number is a double
constexpr std::int64_t largestRate = std::int64_t{1} << 32U;

QString schema() {
    return QStringLiteral("OTIO_SCHEMA");
}

bool isWholeAt(const Rational& rate, std::initializer_list<Rational> times) {
    return std::ranges::all_of(times, [&](const Rational& time) {
        const Rational value = time * rate;
        return value.isValid() && value.isWhole() && value.numerator() <= largestValue &&
               value.numerator() >= -largestValue;
    });
}

class Writer {
public:
    Writer(const FlatTimeline& timeline, const std::optional<std::filesystem::path>& from)
        : m_timeline(timeline), m_from(from) {}

    /// Whether every time found a rate.
    bool isExact() const { return m_isExact; }

    QJsonObject timeline() {
        QJsonArray tracks;
        int video = 0;
        int audio = 0;
        for (const auto& each : m_timeline.tracks) {
            const bool isVideo = each.medium == Medium::video;
            tracks.append(
                track(each, isVideo ? QStringLiteral("V%1").arg(++video) : QStringLiteral("A%1").arg(++audio)));
        }
        QJsonObject stack = composable(QStringLiteral("Stack.1"), QStringLiteral("tracks"));
        stack.insert(QStringLiteral("source_range"), QJsonValue());
        stack.insert(QStringLiteral("children"), tracks);
        stack.insert(QStringLiteral("markers"), markers(m_timeline.markers, m_timeline.rate));
        QJsonObject made = named(QStringLiteral("Timeline.1"), m_timeline.name);
        made.insert(QStringLiteral("global_start_time"),
                    m_timeline.start ? QJsonValue(time(*m_timeline.start, m_timeline.rate)) : QJsonValue());
        made.insert(QStringLiteral("tracks"), stack);
        return made;
    }

private:
    static QJsonObject named(const QString& kind, const QString& name) {
        return {{schema(), kind}, {QStringLiteral("name"), name}, {QStringLiteral("metadata"), QJsonObject()}};
    }
    static QJsonObject composable(const QString& kind, const QString& name, bool isEnabled = true) {
        QJsonObject made = named(kind, name);
        made.insert(QStringLiteral("effects"), QJsonArray());
        made.insert(QStringLiteral("markers"), QJsonArray());
        made.insert(QStringLiteral("enabled"), isEnabled);
        return made;
    }

    /// A rate at which all these times are whole; the ones that are asked for come first.
    std::optional<Rational> rateFor(std::initializer_list<Rational> times,
                                    std::initializer_list<std::optional<Rational>> wanted) const {
        for (const auto& rate : wanted)
            if (rate && isWholeAt(*rate, times)) return rate;
        // Ticks of the frames' own clock, such as 30000 a second where there are 30000/1001 frames.
        if (m_timeline.rate && isWholeAt(m_timeline.rate->numerator(), times)) return m_timeline.rate->numerator();
        std::int64_t common = 1;
        for (const Rational& time : times) {
            const std::int64_t factor = time.denominator() / std::gcd(common, time.denominator());
            if (factor > largestRate / common) return {};
            common *= factor;
        }
        return isWholeAt(common, times) ? std::optional<Rational>(common) : std::nullopt;
    }
    QJsonObject time(const Rational& time, const std::optional<Rational>& wanted) {
        const auto rate = rateFor({time}, {wanted, m_timeline.rate});
        m_isExact = m_isExact && rate;
        const Rational value = rate ? time * *rate : Rational();
        return {{schema(), QStringLiteral("RationalTime.1")},
                {QStringLiteral("rate"), rate.value_or(Rational(1)).toDouble()},
                {QStringLiteral("value"), static_cast<double>(value.numerator())}};
    }
    /// At one rate where there is one for both.
    QJsonObject range(const Rational& start, const Rational& duration, const std::optional<Rational>& wanted) {
        const auto rate = rateFor({start, duration}, {wanted, m_timeline.rate});
        return {{schema(), QStringLiteral("TimeRange.1")},
                {QStringLiteral("start_time"), time(start, rate ? rate : wanted)},
                {QStringLiteral("duration"), time(duration, rate ? rate : wanted)}};
    }

    /// Of something that is only told, and therefore may be rounded to frames.
    QJsonObject roundedRange(const Rational& start, const Rational& duration, const std::optional<Rational>& wanted) {
        if (rateFor({start, duration}, {wanted, m_timeline.rate})) return range(start, duration, wanted);
        const Rational rate = wanted.value_or(m_timeline.rate.value_or(Rational(1000)));
        return range(Rational((start * rate).floor()) / rate, Rational((duration * rate).floor()) / rate, rate);
    }

    QJsonArray markers(const std::vector<FlatTimeline::Marker>& markers, const std::optional<Rational>& rate) {
        using Kind = FlatTimeline::Marker::Kind;
        QJsonArray made;
        for (const auto& marker : markers) {
            const bool isToDo = marker.kind == Kind::toDo || marker.kind == Kind::done;
            QJsonObject told{{QStringLiteral("kind"), marker.kind == Kind::chapter ? QStringLiteral("chapter-marker")
                                                                                   : QStringLiteral("marker")}};
            if (isToDo) told.insert(QStringLiteral("completed"), marker.kind == Kind::done);
            if (!marker.note.isEmpty()) told.insert(QStringLiteral("note"), marker.note);
            QJsonObject one = named(QStringLiteral("Marker.2"), marker.name);
            one.insert(QStringLiteral("metadata"), QJsonObject{{QStringLiteral("fcpxml"), told}});
            one.insert(QStringLiteral("comment"), marker.note);
            one.insert(QStringLiteral("color"), color(marker.kind));
            one.insert(QStringLiteral("marked_range"), roundedRange(marker.start, marker.duration, rate));
            made.append(one);
        }
        return made;
    }
    static QString color(FlatTimeline::Marker::Kind kind) {
        switch (kind) {
        case FlatTimeline::Marker::Kind::toDo:
            return QStringLiteral("RED");
        case FlatTimeline::Marker::Kind::done:
            return QStringLiteral("GREEN");
        case FlatTimeline::Marker::Kind::chapter:
            return QStringLiteral("ORANGE");
        case FlatTimeline::Marker::Kind::plain:
            break;
        }
        return QStringLiteral("BLUE");
    }

    /// What makes a clip as long as it is where it reads its media faster or slower.
    static QJsonObject timeWarp(const Rational& speed) {
        const bool isStill = speed == Rational();
        QJsonObject made = named(isStill ? QStringLiteral("FreezeFrame.1") : QStringLiteral("LinearTimeWarp.1"), {});
        made.insert(QStringLiteral("effect_name"),
                    isStill ? QStringLiteral("FreezeFrame") : QStringLiteral("LinearTimeWarp"));
        made.insert(QStringLiteral("time_scalar"), speed.toDouble());
        return made;
    }

    QJsonObject gap(const Rational& duration) {
        QJsonObject made = composable(QStringLiteral("Gap.1"), {});
        made.insert(QStringLiteral("source_range"), range(Rational(), duration, m_timeline.rate));
        return made;
    }

    QJsonObject reference(const FlatTimeline::Asset& asset) {
        QJsonObject made = named(
            asset.file ? QStringLiteral("ExternalReference.1") : QStringLiteral("MissingReference.1"), asset.name);
        made.insert(QStringLiteral("available_image_bounds"), QJsonValue());
        made.insert(QStringLiteral("available_range"),
                    asset.duration ? QJsonValue(range(*asset.start, *asset.duration, asset.rate)) : QJsonValue());
        if (asset.file)
            made.insert(QStringLiteral("target_url"),
                        QString::fromLatin1(m_from ? relativeReference(*asset.file, *m_from) : fileUrl(*asset.file)));
        return made;
    }

    QJsonObject clip(const FlatTimeline::Item& item, bool isVideo) {
        const FlatTimeline::Asset& asset = m_timeline.assets[item.asset];
        QJsonObject made = composable(QStringLiteral("Clip.2"), item.name, item.isEnabled);
        made.insert(QStringLiteral("source_range"), range(item.mediaStart, item.duration, asset.rate));
        if (item.speed != Rational(1)) made.insert(QStringLiteral("effects"), QJsonArray{timeWarp(item.speed)});
        made.insert(QStringLiteral("markers"), markers(item.markers, asset.rate));
        if (!item.role.isEmpty()) {
            const QString kind = isVideo ? QStringLiteral("videoRole") : QStringLiteral("audioRole");
            made.insert(QStringLiteral("metadata"),
                        QJsonObject{{QStringLiteral("fcpxml"), QJsonObject{{kind, item.role}}}});
        }
        made.insert(QStringLiteral("media_references"),
                    QJsonObject{{QStringLiteral("DEFAULT_MEDIA"), reference(asset)}});
        made.insert(QStringLiteral("active_media_reference_key"), QStringLiteral("DEFAULT_MEDIA"));
        return made;
    }

    QJsonObject transition(const FlatTimeline::Transition& transition) {
        QJsonObject made = named(QStringLiteral("Transition.1"), transition.name);
        made.insert(QStringLiteral("transition_type"), QStringLiteral("SMPTE_Dissolve"));
        made.insert(QStringLiteral("in_offset"), time(transition.before, m_timeline.rate));
        made.insert(QStringLiteral("out_offset"), time(transition.after, m_timeline.rate));
        return made;
    }

    QJsonObject track(const FlatTimeline::Track& track, const QString& name) {
        QJsonArray children;
        Rational end;
        for (std::size_t i = 0; i < track.items.size(); ++i) {
            const FlatTimeline::Item& item = track.items[i];
            if (item.position > end) children.append(gap(item.position - end));
            children.append(clip(item, track.medium == Medium::video));
            if (const auto found = track.transitions.find(i); found != track.transitions.end())
                children.append(transition(found->second));
            end = item.end();
        }
        // Without it a clip that ends in a title would come out shorter.
        if (end < m_timeline.duration) children.append(gap(m_timeline.duration - end));
        QJsonObject made = composable(QStringLiteral("Track.1"), name);
        made.insert(QStringLiteral("kind"),
                    track.medium == Medium::video ? QStringLiteral("Video") : QStringLiteral("Audio"));
        made.insert(QStringLiteral("source_range"), QJsonValue());
        made.insert(QStringLiteral("children"), children);
        return made;
    }

    const FlatTimeline& m_timeline;
    const std::optional<std::filesystem::path>& m_from;
    bool m_isExact = true;
};

} // namespace

std::expected<QByteArray, ArrangementFailure> otioJson(const FlatTimeline& timeline,
                                                       const std::optional<std::filesystem::path>& from) {
    Writer writer(timeline, from);
    const QJsonObject made = writer.timeline();
    if (!writer.isExact())
        return std::unexpected(ArrangementFailure::unreadable(
            translate("Blocks", "The times in this block are too fine to be kept exactly.")));
    return QJsonDocument(made).toJson(QJsonDocument::Indented);
}

} // namespace quillary
