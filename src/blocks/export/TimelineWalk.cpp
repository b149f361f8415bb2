#include "blocks/export/TimelineWalk.h"

#include "base/Text.h"
#include "base/Translation.h"
#include "blocks/export/PlainNames.h"
#include "library/Storage.h"

#include <algorithm>
#include <array>

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

/// Where a clip with a changed speed reads its media at a time of its own clock.
Rational readAt(xml::Node timeMap, const Rational& local) {
    std::optional<std::pair<Rational, Rational>> before;
    for (xml::Node point = timeMap.firstElement(); point; point = point.nextElement()) {
        const auto at = time(point, "time");
        const auto value = time(point, "value");
        if (!at || !value) continue;
        if (local <= *at) {
            if (!before || *at == before->first) return *value;
            return before->second + (local - before->first) * (*value - before->second) / (*at - before->first);
        }
        before = {*at, *value};
    }
    return before ? before->second : local;
}

} // namespace

TimelineWalk::TimelineWalk(const FCPXMLDocument& document, LeftOut& leftOut)
    : m_document(document), m_leftOut(leftOut) {
    for (xml::Node group = document.root().firstElement(); group; group = group.nextElement())
        for (xml::Node made = group.isNamed("resources") ? group.firstElement() : xml::Node(); made;
             made = made.nextElement())
            if (const auto id = made.attribute("id"); id && !m_resources.contains(*id)) m_resources.insert(*id, made);
    for (const auto& reference : document.media())
        if (const auto file = reference.file(); file && (reference.isOriginal || !m_files.contains(reference.assetId)))
            m_files.insert(reference.assetId, *file);
}

void TimelineWalk::walk() {
    xml::Node clip = m_document.clip();
    while (isNamedOneOf(clip, {"library", "event"})) {
        xml::Node within = clip.firstElement();
        while (within && !isStory(within) && !isNamedOneOf(within, {"event", "project"})) within = within.nextElement();
        for (xml::Node other = within.nextElement(); other; other = other.nextElement())
            if (isStory(other) || isNamedOneOf(other, {"event", "project"}))
                m_leftOut.add(translate("Blocks", "Other clips and projects of the document"), text(other, "name"));
        clip = within;
    }
    m_timeline.name = text(clip, "name");
    if (clip.isNamed("project")) clip = clip.firstElement("sequence");
    if (clip.isNamed("sequence")) return walkSequence(clip);
    if (!clip) return;

    const xml::Node content = resource(clip);
    for (const xml::Node told : {clip, content.firstElement(), content})
        if (!m_timeline.rate) m_timeline.rate = rateOf(told);
    m_timeline.start = storyOf(clip, Rational()).start;
    m_timeline.duration = story(clip, Rational(), {.origin = {}, .from = {}, .to = endless});
}

void TimelineWalk::walkSequence(xml::Node sequence) {
    const Rational start = time(sequence, "tcStart").value_or(Rational());
    m_timeline.rate = rateOf(sequence);
    m_timeline.start = start;
    const Rational end =
        storyline(sequence.firstElement("spine"), {.origin = Rational() - start, .from = {}, .to = endless}, start);
    m_timeline.duration = time(sequence, "duration").value_or(end);
}

Rational TimelineWalk::storyline(xml::Node holder, const Place& place, const Rational& start) {
    Rational end = place.origin + start;
    for (xml::Node element = holder.firstElement(); element && !isTooLarge(); element = element.nextElement()) {
        if (element.isNamed("transition")) {
            transition(element, place, end);
        } else if (isStory(element)) {
            // Elements of a storyline never overlap, whatever they say.
            Rational position = end;
            if (const auto offset = time(element, "offset")) position = std::max(end, place.origin + *offset);
            end = position + story(element, position, place);
        }
    }
    return end;
}

void TimelineWalk::transition(xml::Node element, const Place& place, const Rational& end) {
    const Rational duration = time(element, "duration").value_or(Rational());
    PlacedTransition placed{.lanes = place.lanes, .name = text(element, "name"), .from = {}, .to = {}};
    const auto offset = time(element, "offset");
    placed.from = offset ? place.origin + *offset : end - duration / Rational(2);
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
    const Story story = storyOf(element, position);
    Place within = place;
    within.origin = position - story.start;
    m_isExact = m_isExact && within.origin.isValid() && (position + story.duration).isValid();
    within.from = std::max(place.from, position);
    within.to = std::min(place.to, position + story.duration);
    within.isEnabled = place.isEnabled && element.attribute("enabled") != "0";
    ++within.depth;
    if (within.depth > deepest) {
        m_leftOut.add(translate("Blocks", "Clips nested too deeply"), story.name);
        return story.duration;
    }
    if (element.isNamed("audition")) {
        audition(story, place);
        return story.duration;
    }
    if (!within.isEmpty()) {
        noteSettings(story);
        if (element.isNamed("asset-clip")) assetClip(story, place, within);
        if (element.isNamed("video")) mediaElement(story, within, Medium::video);
        if (element.isNamed("audio")) mediaElement(story, within, Medium::audio);
        if (isNamedOneOf(element, {"clip", "sync-clip"})) contained(story, within);
        if (element.isNamed("ref-clip")) compound(story, within);
        if (element.isNamed("mc-clip")) multicam(story, within);
        if (isNamedOneOf(element, {"title", "caption"})) m_leftOut.add(plainName(element.name()), story.name);
    }
    connected(story, place, within);
    return story.duration;
}

void TimelineWalk::connected(const Story& story, const Place& place, const Place& within) {
    // Of clips that hold others, lanes are content, which shows no longer than the clip.
    const bool isContent = isNamedOneOf(story.element, {"clip", "sync-clip"});
    for (xml::Node child = story.element.firstElement(); child; child = child.nextElement()) {
        const int lane = laneOf(child);
        if (lane == 0 || (!isStory(child) && !child.isNamed("spine"))) continue;
        Place beside = isContent ? within : place;
        beside.origin = within.origin;
        beside.depth = within.depth;
        beside.lanes.push_back(lane);
        if (beside.isEmpty()) continue;
        const Rational position = within.origin + time(child, "offset").value_or(story.start);
        if (child.isNamed("spine")) {
            beside.origin = position;
            storyline(child, beside, Rational());
        } else {
            this->story(child, position, beside);
        }
    }
}

void TimelineWalk::contained(const Story& story, const Place& within) {
    const Rational first = time(story.element, "tcStart").value_or(Rational());
    for (xml::Node child = story.element.firstElement(); child; child = child.nextElement()) {
        if (laneOf(child) != 0) continue;
        const Rational position = within.origin + time(child, "offset").value_or(first);
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
        Place shown = within;
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
        sound.position = story.position + (*start - story.start);
        sound.duration = time(story.element, "audioDuration").value_or(story.duration);
        around.from = std::max(place.from, sound.position);
        around.to = std::min(place.to, sound.position + sound.duration);
        around.origin = sound.position - sound.start;
    }
    item(sound, around, Medium::audio, *asset);
}

void TimelineWalk::mediaElement(const Story& story, const Place& within, Medium medium) {
    if (resource(story.element).isNamed("effect")) return m_leftOut.add(translate("Blocks", "Generators"), story.name);
    const auto asset = assetOf(story.element);
    if (!asset) return m_leftOut.add(translate("Blocks", "Clips without media"), story.name);
    item(story, within, medium, *asset);
}

void TimelineWalk::item(const Story& story, const Place& within, Medium medium, std::size_t asset) {
    if (within.isEmpty() || !(medium == Medium::video ? within.showsVideo : within.showsAudio)) return;
    Rational mediaStart = within.from - within.origin;
    if (const xml::Node map = story.element.firstElement("timeMap")) mediaStart = readAt(map, mediaStart);
    LanePath lanes = within.lanes;
    while (!lanes.empty() && lanes.back() == 0) lanes.pop_back();
    m_items.push_back({medium,
                       std::move(lanes),
                       {story.name, asset, within.from, within.to - within.from, mediaStart, within.isEnabled}});
}

void TimelineWalk::noteSettings(const Story& story) {
    constexpr std::array counted{"filter-video",
                                 "filter-video-mask",
                                 "filter-audio",
                                 "timeMap",
                                 "object-tracker",
                                 "marker",
                                 "chapter-marker",
                                 "keyword",
                                 "rating",
                                 "note",
                                 "audio-channel-source",
                                 "audio-role-source",
                                 "sync-source",
                                 "mute"};
    const bool isText = isNamedOneOf(story.element, {"title", "caption"});
    for (xml::Node child = story.element.firstElement(); child; child = child.nextElement()) {
        const bool isConforming = child.isNamed("conform-rate") && child.attribute("scaleEnabled") != "0";
        const bool counts = isConforming || child.name().startsWith("adjust-") ||
                            std::ranges::any_of(counted, [&](const char* name) { return child.isNamed(name); });
        if (!counts || isText) continue;
        QString name = text(child, "name");
        if (name.isEmpty()) name = text(child, "value");
        if (name.isEmpty()) name = text(resource(child), "name");
        if (name.isEmpty()) name = story.name;
        m_leftOut.add(plainName(child.name()), name);
    }
    for (const char* role : {"role", "audioRole", "videoRole"})
        if (const QString name = text(story.element, role); !name.isEmpty() && !isText)
            m_leftOut.add(translate("Blocks", "Roles"), name);
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
