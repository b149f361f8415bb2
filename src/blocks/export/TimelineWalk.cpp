#include "blocks/export/TimelineWalk.h"

#include "base/Text.h"
#include "base/Translation.h"
#include "blocks/export/PlainNames.h"
#include "blocks/export/Retiming.h"
#include "library/Storage.h"

#include <algorithm>
#include <array>
#include <span>

namespace quillary {

namespace {

using Medium = FlatTimeline::Medium;

const Rational endless(std::int64_t{1} << 40U); ///< seconds; longer than any timeline

std::optional<Rational> time(xml::Node element, const char* attribute) {
    const auto text = element.attribute(attribute);
    return text ? Rational::ofTime(*text) : std::nullopt;
}

QString text(xml::Node element, const char* attribute) {
    return QString::fromUtf8(element.attribute(attribute).value_or(QByteArray()));
}

int laneOf(xml::Node element) {
    constexpr int farthest = 1'000'000;
    return std::clamp(element.attribute("lane").value_or("0").toInt(), -farthest, farthest);
}

bool isNamedOneOf(xml::Node element, std::initializer_list<const char*> names) {
    return std::ranges::any_of(names, [&](const char* name) { return element.isNamed(name); });
}

bool isStory(xml::Node element) {
    return isNamedOneOf(element, {"asset-clip", "clip", "video", "audio", "title", "gap", "ref-clip", "sync-clip",
                                  "mc-clip", "audition", "caption"});
}

QString roleOf(xml::Node element, Medium medium) {
    const QString own = text(element, medium == Medium::video ? "videoRole" : "audioRole");
    return own.isEmpty() ? text(element, "role") : own;
}

} // namespace

TimelineWalk::TimelineWalk(const FCPXMLDocument& document, LeftOut& leftOut)
    : m_document(document), m_leftOut(leftOut), m_resources(document.resources()) {
    for (const auto& reference : document.media())
        if (const auto file = reference.file(); file && (reference.isOriginal || !m_files.contains(reference.assetId)))
            m_files.insert(reference.assetId, *file);
}

void TimelineWalk::walk() {
    const auto clips = m_document.clips();
    if (clips.empty()) return;
    for (const xml::Node other : std::span(clips).subspan(1))
        m_leftOut.add(translate("Blocks", "Other clips and projects of the document"), text(other, "name"));
    xml::Node clip = clips.front();
    m_timeline.name = text(clip, "name");
    if (clip.isNamed("project")) clip = clip.firstElement("sequence");
    if (clip.isNamed("sequence")) return walkSequence(clip);

    const xml::Node content = resource(clip);
    for (const xml::Node told : {clip, content.firstElement(), content})
        if (!m_timeline.rate) m_timeline.rate = rateOf(told);
    m_timeline.start = storyOf(clip, Rational()).start;
    m_timeline.duration =
        story(clip, Rational(), {.origin = {}, .from = {}, .to = endless, .scale = 1, .rate = m_timeline.rate});
}

void TimelineWalk::walkSequence(xml::Node sequence) {
    const Rational start = time(sequence, "tcStart").value_or(Rational());
    m_timeline.rate = rateOf(sequence);
    m_timeline.start = start;
    const Rational end = storyline(
        sequence.firstElement("spine"),
        {.origin = Rational() - start, .from = {}, .to = endless, .scale = 1, .rate = m_timeline.rate}, start);
    m_timeline.duration = time(sequence, "duration").value_or(end);
}

Rational TimelineWalk::storyline(xml::Node holder, const Place& place, const Rational& start) {
    Rational end = place.at(start);
    for (xml::Node element = holder.firstElement(); element && !isTooLarge(); element = element.nextElement()) {
        if (element.isNamed("transition")) {
            transition(element, place, end);
        } else if (isStory(element)) {
            // Elements of a storyline never overlap, whatever they say.
            Rational position = end;
            if (const auto offset = time(element, "offset")) position = std::max(end, place.at(*offset));
            end = position + story(element, position, place);
        }
    }
    return end;
}

void TimelineWalk::transition(xml::Node element, const Place& place, const Rational& end) {
    const Rational duration = time(element, "duration").value_or(Rational()) * place.scale;
    PlacedTransition placed{.lanes = place.lanes, .name = text(element, "name"), .from = {}, .to = {}};
    const auto offset = time(element, "offset");
    placed.from = offset ? place.at(*offset) : end - duration / Rational(2);
    placed.to = placed.from + duration;
    if (placed.to <= place.from || place.to <= placed.from) return;
    const xml::Node filter = element.firstElement("filter-video");
    const QByteArray uid = resource(filter).attribute("uid").value_or(QByteArray());
    const bool bearsItsName = placed.name.isEmpty() || placed.name.contains(u"Dissolve", Qt::CaseInsensitive);
    placed.isDissolve = uid.endsWith("4731E73A-8DAC-4113-9A30-AE85B1761265") || (uid.isEmpty() && bearsItsName);
    placed.withAudio = static_cast<bool>(element.firstElement("filter-audio"));
    m_transitions.push_back(std::move(placed));
}

TimelineWalk::Story TimelineWalk::storyOf(xml::Node element, const Rational& position) const {
    Story made{.element = element, .name = text(element, "name"), .position = position, .start = {}, .duration = {}};
    const xml::Node used = resource(element);
    const xml::Node content = used.isNamed("media") ? used.firstElement() : used;
    if (made.name.isEmpty()) made.name = text(used, "name");
    auto start = time(element, "start");
    if (!start) start = time(element, "tcStart");
    if (!start && isNamedOneOf(content, {"asset", "sequence", "multicam"}))
        start = time(content, content.isNamed("asset") ? "start" : "tcStart");
    made.start = start.value_or(Rational());
    auto duration = time(element, "duration");
    if (!duration) duration = time(content, "duration");
    if (!duration && element.isNamed("audition")) duration = storyOf(element.firstElement(), position).duration;
    made.duration = std::max(duration.value_or(Rational()), Rational());
    return made;
}

Rational TimelineWalk::story(xml::Node element, const Rational& position, const Place& place) {
    if (!element || ++m_steps > mostSteps) return {};
    Story story = storyOf(element, position);
    story.length = story.duration * place.scale;
    Place within = place;
    within.origin = position - story.start * place.scale;
    m_isExact = m_isExact && within.origin.isValid() && (position + story.length).isValid();
    within.from = std::max(place.from, position);
    within.to = std::min(place.to, position + story.length);
    within.isEnabled = place.isEnabled && element.attribute("enabled") != "0";
    ++within.depth;
    if (within.depth > deepest) {
        m_leftOut.add(translate("Blocks", "Clips nested too deeply"), story.name);
        return story.length;
    }
    if (element.isNamed("audition")) {
        audition(story, place);
        return story.length;
    }
    if (!within.isEmpty()) {
        const std::size_t firstItem = m_items.size();
        noteSettings(story);
        if (element.isNamed("asset-clip")) assetClip(story, place, within);
        if (element.isNamed("video")) mediaElement(story, within, Medium::video);
        if (element.isNamed("audio")) mediaElement(story, within, Medium::audio);
        if (isNamedOneOf(element, {"clip", "sync-clip"})) contained(story, within);
        if (element.isNamed("ref-clip")) compound(story, within);
        if (element.isNamed("mc-clip")) multicam(story, within);
        if (isNamedOneOf(element, {"title", "caption"})) m_leftOut.add(plainName(element.name()), story.name);
        markers(story, within, firstItem);
    }
    connected(story, place, within);
    return story.length;
}

void TimelineWalk::connected(const Story& story, const Place& place, const Place& within) {
    // Of clips that hold others, lanes are content, which shows no longer than the clip.
    const bool isContent = isNamedOneOf(story.element, {"clip", "sync-clip"});
    for (xml::Node child = story.element.firstElement(); child; child = child.nextElement()) {
        const int lane = laneOf(child);
        if (lane == 0 || (!isStory(child) && !child.isNamed("spine"))) continue;
        Place beside = isContent ? within : place;
        beside.origin = within.origin;
        beside.scale = within.scale;
        beside.depth = within.depth;
        beside.lanes.push_back(lane);
        if (beside.isEmpty()) continue;
        const Rational position = within.at(time(child, "offset").value_or(story.start));
        if (child.isNamed("spine")) {
            beside.origin = position;
            storyline(child, beside, Rational());
        } else {
            this->story(child, position, beside);
        }
    }
}

void TimelineWalk::contained(const Story& story, const Place& around) {
    const Place within = insideOf(story, around);
    const Rational first = time(story.element, "tcStart").value_or(Rational());
    for (xml::Node child = story.element.firstElement(); child; child = child.nextElement()) {
        if (laneOf(child) != 0) continue;
        const Rational position = within.at(time(child, "offset").value_or(first));
        if (child.isNamed("spine")) {
            Place inner = within;
            inner.origin = position;
            storyline(child, inner, Rational());
        } else if (isStory(child)) {
            this->story(child, position, within);
        }
    }
}

void TimelineWalk::compound(const Story& story, Place within) {
    const xml::Node sequence = resource(story.element).firstElement("sequence");
    if (!sequence) return m_leftOut.add(translate("Blocks", "Clips without content"), story.name);
    const QByteArray shown = story.element.attribute("srcEnable").value_or("all");
    within.showsVideo = within.showsVideo && shown != "audio";
    within.showsAudio = within.showsAudio && shown != "video";
    within = insideOf(story, within);
    within.rate = rateOf(sequence);
    // Lanes within stay between the lanes around it.
    storyline(sequence.firstElement("spine"), within, time(sequence, "tcStart").value_or(Rational()));
}

void TimelineWalk::multicam(const Story& story, const Place& within) {
    const xml::Node angles = resource(story.element).firstElement("multicam");
    if (!angles) return m_leftOut.add(translate("Blocks", "Clips without content"), story.name);
    std::optional<QByteArray> picture;
    std::vector<QByteArray> sounds;
    for (xml::Node source = story.element.firstElement(); source; source = source.nextElement()) {
        if (!source.isNamed("mc-source")) continue;
        noteSettings({source, story.name, {}, {}, {}});
        const QByteArray shown = source.attribute("srcEnable").value_or("all");
        const QByteArray angle = source.attribute("angleID").value_or(QByteArray());
        if (!picture && (shown == "all" || shown == "video")) picture = angle;
        if (shown == "all" || shown == "audio") sounds.push_back(angle);
    }
    const bool isChosen = picture || !sounds.empty();
    bool isFirst = true;
    for (xml::Node angle = angles.firstElement(); angle; angle = angle.nextElement()) {
        if (!angle.isNamed("mc-angle")) continue;
        const QByteArray id = angle.attribute("angleID").value_or(QByteArray());
        Place shown = insideOf(story, within);
        shown.rate = rateOf(angles);
        shown.showsVideo = within.showsVideo && (isChosen ? picture == id : isFirst);
        shown.showsAudio = within.showsAudio && (isChosen ? std::ranges::find(sounds, id) != sounds.end() : isFirst);
        isFirst = false;
        if (shown.showsVideo || shown.showsAudio)
            storyline(angle, shown, time(angles, "tcStart").value_or(Rational()));
        else
            m_leftOut.add(translate("Blocks", "Unused angles of multicam clips"), text(angle, "name"));
    }
}

void TimelineWalk::audition(const Story& story, const Place& place) {
    const xml::Node chosen = story.element.firstElement();
    this->story(chosen, story.position, place);
    for (xml::Node other = chosen.nextElement(); other; other = other.nextElement())
        if (isStory(other)) m_leftOut.add(translate("Blocks", "Alternatives in auditions"), text(other, "name"));
}

void TimelineWalk::assetClip(const Story& story, const Place& place, const Place& within) {
    const auto asset = assetOf(story.element);
    if (!asset) return m_leftOut.add(translate("Blocks", "Clips without media"), story.name);
    const FlatTimeline::Asset& media = m_timeline.assets[*asset];
    const QByteArray shown = story.element.attribute("srcEnable").value_or("all");
    if (media.hasVideo && shown != "audio") item(story, within, Medium::video, *asset);
    if (!media.hasAudio || shown == "video") return;
    // Sound that is cut earlier or later than its picture.
    Story sound = story;
    Place around = within;
    if (const auto start = time(story.element, "audioStart")) {
        sound.start = *start;
        sound.position = within.at(*start);
        sound.length = time(story.element, "audioDuration").value_or(story.duration) * place.scale;
        around.from = std::max(place.from, sound.position);
        around.to = std::min(place.to, sound.position + sound.length);
    }
    item(sound, around, Medium::audio, *asset);
}

void TimelineWalk::mediaElement(const Story& story, const Place& within, Medium medium) {
    if (resource(story.element).isNamed("effect")) return m_leftOut.add(translate("Blocks", "Generators"), story.name);
    const auto asset = assetOf(story.element);
    if (!asset) return m_leftOut.add(translate("Blocks", "Clips without media"), story.name);
    item(story, within, medium, *asset);
}

void TimelineWalk::item(const Story& story, Place within, FlatTimeline::Medium medium, std::size_t asset) {
    if (within.isEmpty() || !(medium == Medium::video ? within.showsVideo : within.showsAudio)) return;
    const FlatTimeline::Asset& media = m_timeline.assets[asset];
    Reading reading = readingOf(story, within, media);
    const Rational wanted = within.to - within.from;
    const bool isThere = fit(reading, within, media);
    if (!isThere || within.to - within.from != wanted)
        m_leftOut.add(translate("Blocks", "Parts of clips beyond the end of their media"), story.name);
    if (!isThere) return;
    const Rational duration = within.to - within.from;
    Rational earliest = std::min(reading.start, reading.start + duration * reading.speed);
    if (reading.speed != Rational(1) && media.rate && earliest.isValid()) {
        // The frame that is seen there.
        const Rational frame = Rational((earliest * *media.rate).floor()) / *media.rate;
        if (!media.start || frame >= *media.start) earliest = frame;
    }
    LanePath lanes = within.lanes;
    while (!lanes.empty() && lanes.back() == 0) lanes.pop_back();
    m_items.push_back({medium,
                       std::move(lanes),
                       {.name = story.name,
                        .asset = asset,
                        .position = within.from,
                        .duration = duration,
                        .mediaStart = earliest,
                        .isEnabled = within.isEnabled,
                        .speed = reading.speed,
                        .role = roleOf(story.element, medium)}});
}

TimelineWalk::Reading TimelineWalk::readingOf(const Story& story, const Place& within,
                                              const FlatTimeline::Asset& asset) {
    const Rational from = within.local(within.from);
    const Rational to = within.local(within.to);
    const Retiming own(story.element, within.rate, asset.rate);
    std::vector candidates{own};
    // Documents differ in where a conformed clock begins; what fits the media is meant.
    if (own.isConformed() && asset.start) candidates.push_back(own.conformedAround(*asset.start));
    if (own.isConformed()) candidates.push_back(own.withoutConforming());
    const Retiming* chosen = nullptr;
    Rational least;
    for (const Retiming& candidate : candidates) {
        Rational beyond;
        if (asset.duration) {
            const auto [first, last] = std::minmax({candidate.at(from), candidate.at(to)});
            beyond = std::max(*asset.start - first, Rational()) +
                     std::max(last - (*asset.start + *asset.duration), Rational());
        }
        if (chosen && beyond >= least) continue;
        chosen = &candidate;
        least = beyond;
    }
    if (!chosen->isEven(from, to)) tellUnevenSpeed(story);
    const Rational start = chosen->at(from);
    return {start, (chosen->at(to) - start) / (within.to - within.from)};
}

bool TimelineWalk::fit(Reading& reading, Place& within, const FlatTimeline::Asset& asset) const {
    if (!asset.duration) return true;
    const Rational begin = *asset.start;
    const Rational end = begin + *asset.duration;
    const Rational duration = within.to - within.from;
    if (reading.speed == Rational()) {
        // A still frame lies before the end, by a frame where its length is known.
        const Rational frame = asset.rate ? Rational(1) / *asset.rate : Rational();
        reading.start = std::max(begin, std::min(reading.start, end - frame));
        return true;
    }
    const bool isForward = reading.speed > Rational();
    Rational first = ((isForward ? begin : end) - reading.start) / reading.speed;
    Rational last = ((isForward ? end : begin) - reading.start) / reading.speed;
    if (first <= Rational() && last >= duration) return true;
    // Whole frames, since editors know no others.
    const Rational rate = m_timeline.rate.value_or(Rational());
    first = std::max(first, Rational());
    last = std::min(last, duration);
    if (rate > Rational() && first > Rational()) first = Rational(-(Rational() - first * rate).floor()) / rate;
    if (rate > Rational() && last < duration) last = Rational((last * rate).floor()) / rate;
    if (last <= first) return false;
    reading.start = reading.start + first * reading.speed;
    within.to = within.from + last;
    within.from = within.from + first;
    return true;
}

TimelineWalk::Place TimelineWalk::insideOf(const Story& story, Place within) {
    const Retiming retiming(story.element, within.rate, {});
    if (retiming.isNone()) return within;
    const Rational from = within.local(within.from);
    const Rational to = within.local(within.to);
    const Rational first = retiming.at(from);
    const Rational speed = (retiming.at(to) - first) / (to - from);
    if (!(speed > Rational()) || !retiming.isEven(from, to)) tellUnevenSpeed(story);
    // Backwards, and standing still, is nothing that clips within a clip could do.
    if (!(speed > Rational())) return within;
    within.scale = within.scale / speed;
    within.origin = within.from - first * within.scale;
    return within;
}

void TimelineWalk::markers(const Story& story, const Place& within, std::size_t firstItem) {
    FlatTimeline::Item* item = nullptr;
    if (isNamedOneOf(story.element, {"asset-clip", "video", "audio"}) && firstItem < m_items.size())
        item = &m_items[firstItem].item;
    for (xml::Node child = story.element.firstElement(); child; child = child.nextElement()) {
        const bool isChapter = child.isNamed("chapter-marker");
        const auto start = time(child, "start");
        if (!isChapter && !child.isNamed("marker")) continue;
        FlatTimeline::Marker marker{
            .name = text(child, "value"), .note = text(child, "note"), .start = {}, .duration = {}};
        const auto completed = child.attribute("completed");
        if (completed)
            marker.kind = *completed == "1" ? FlatTimeline::Marker::Kind::done : FlatTimeline::Marker::Kind::toDo;
        if (isChapter) marker.kind = FlatTimeline::Marker::Kind::chapter;
        const Rational position = within.at(start.value_or(story.start));
        marker.duration = time(child, "duration").value_or(Rational()) * within.scale;
        if (position < within.from || position >= within.to) {
            m_leftOut.add(translate("Blocks", "Markers outside of their clips"), marker.name);
            continue;
        }
        if (!item) {
            marker.start = position;
            m_timeline.markers.push_back(std::move(marker));
            continue;
        }
        // Backwards the earliest moment of the media is the last of the item.
        const bool isBackwards = item->speed < Rational();
        const Rational behind = isBackwards ? item->end() - position : position - item->position;
        const Rational pace = isBackwards ? Rational() - item->speed : item->speed;
        marker.start = item->mediaStart + behind * pace;
        marker.duration = marker.duration * pace;
        item->markers.push_back(std::move(marker));
    }
}

void TimelineWalk::tellUnevenSpeed(const Story& story) {
    m_leftOut.add(plainName("timeMap"), story.name);
}

void TimelineWalk::noteSettings(const Story& story) {
    constexpr std::array counted{
        "filter-video", "filter-video-mask",    "filter-audio",      "object-tracker", "keyword", "rating",
        "note",         "audio-channel-source", "audio-role-source", "sync-source",    "mute"};
    const bool isText = isNamedOneOf(story.element, {"title", "caption"});
    for (xml::Node child = story.element.firstElement(); child; child = child.nextElement()) {
        const bool counts = child.name().startsWith("adjust-") ||
                            std::ranges::any_of(counted, [&](const char* name) { return child.isNamed(name); });
        if (!counts || isText) continue;
        QString name = text(child, "name");
        if (name.isEmpty()) name = text(child, "value");
        if (name.isEmpty()) name = text(resource(child), "name");
        if (name.isEmpty()) name = story.name;
        m_leftOut.add(plainName(child.name()), name);
    }
}

xml::Node TimelineWalk::resource(xml::Node element, const char* attribute) const {
    const auto id = element.attribute(attribute);
    return id ? m_resources.value(*id) : xml::Node();
}

std::optional<Rational> TimelineWalk::rateOf(xml::Node element) const {
    const auto frame = time(resource(element, "format"), "frameDuration");
    return frame && *frame > Rational() ? std::optional(Rational(1) / *frame) : std::nullopt;
}

std::optional<std::size_t> TimelineWalk::assetOf(xml::Node element) {
    const xml::Node used = resource(element);
    if (!used.isNamed("asset")) return {};
    const QByteArray id = *element.attribute("ref");
    if (const auto known = m_assets.constFind(id); known != m_assets.cend()) return *known;
    FlatTimeline::Asset asset{.name = text(used, "name")};
    if (const auto file = m_files.constFind(id); file != m_files.cend()) asset.file = *file;
    asset.duration = time(used, "duration");
    if (asset.duration && *asset.duration > Rational())
        asset.start = time(used, "start").value_or(Rational());
    else
        asset.duration.reset();
    asset.rate = rateOf(used);
    const auto picture = used.attribute("hasVideo");
    const auto sound = used.attribute("hasAudio");
    const bool isSoundFile = asset.file && Storage::shelf(*asset.file) == Storage::Folder::audio;
    asset.hasVideo = picture ? picture == "1" : !isSoundFile && sound != "1";
    asset.hasAudio = sound ? sound == "1" : isSoundFile;
    bool isNumber = false;
    const int samples = used.attribute("audioRate").value_or(QByteArray()).toInt(&isNumber);
    if (!asset.hasVideo && isNumber && samples > 0) asset.rate = Rational(samples);
    m_timeline.assets.push_back(std::move(asset));
    return *m_assets.insert(id, m_timeline.assets.size() - 1);
}

} // namespace quillary
