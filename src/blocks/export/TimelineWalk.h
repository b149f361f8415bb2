#pragma once

#include "blocks/export/FlatTimeline.h"
#include "blocks/export/TrackLayout.h"

#include <QHash>
#include <utility>
#include <vector>

namespace quillary {

/// Goes once through a document's clip and whatever it refers to, and places every piece of media on one clock. Made
/// for one walk; the document and the list outlive it.
class TimelineWalk {
public:
    TimelineWalk(const FCPXMLDocument& document, LeftOut& leftOut);

    void walk();

    /// Whether it was ended early, since there was too much.
    bool isTooLarge() const { return m_steps > mostSteps; }
    /// Whether every time could be calculated.
    bool isExact() const { return m_isExact; }
    /// The timeline without its tracks.
    FlatTimeline takeSettings() { return std::move(m_timeline); }
    std::vector<PlacedItem> takeItems() { return std::move(m_items); }
    const std::vector<PlacedTransition>& transitions() const { return m_transitions; }

private:
    static constexpr std::size_t mostSteps = 2 * mostItems;
    static constexpr int deepest = 40; ///< clips within clips

    /// What surrounds an element.
    struct Place {
        Rational origin; ///< where time 0 of the surrounding clip lies on the timeline
        Rational from;   ///< the part of the timeline in which the element shows
        Rational to;
        Rational scale = 1;                ///< seconds of the timeline for one of the surrounding clip
        std::optional<Rational> rate = {}; ///< frames a second of the sequence around it
        LanePath lanes = {};
        bool showsVideo = true;
        bool showsAudio = true;
        bool isEnabled = true;
        int depth = 0;

        bool isEmpty() const { return to <= from; }
        /// A time of the surrounding clip on the timeline, and the other way round.
        Rational at(const Rational& local) const { return origin + local * scale; }
        Rational local(const Rational& position) const { return (position - origin) / scale; }
    };
    /// An element with its own times.
    struct Story {
        xml::Node element;
        QString name;
        Rational position; ///< on the timeline
        Rational start;    ///< on its own clock
        Rational duration;
        Rational length = {}; ///< on the timeline
    };
    /// What an item reads of its media.
    struct Reading {
        Rational start; ///< at the beginning of the item
        Rational speed;
    };

    void walkSequence(xml::Node sequence);
    /// Elements one after another; `start` is what the clock of the storyline begins with. Returns where they end.
    Rational storyline(xml::Node holder, const Place& place, const Rational& start);
    void transition(xml::Node element, const Place& place, const Rational& end);
    /// Returns its length.
    Rational story(xml::Node element, const Rational& position, const Place& place);
    void connected(const Story& story, const Place& place, const Place& within);
    void contained(const Story& story, const Place& within);
    void compound(const Story& story, Place within);
    void multicam(const Story& story, const Place& within);
    void audition(const Story& story, const Place& place);
    void assetClip(const Story& story, const Place& place, const Place& within);
    void mediaElement(const Story& story, const Place& within, FlatTimeline::Medium medium);
    void item(const Story& story, Place within, FlatTimeline::Medium medium, std::size_t asset);
    Reading readingOf(const Story& story, const Place& within, const FlatTimeline::Asset& asset);
    /// Shortens what is shown to what the media hold; false when they hold nothing of it.
    bool fit(Reading& reading, Place& within, const FlatTimeline::Asset& asset) const;
    /// Where the content of a clip that holds others lies on the timeline.
    Place insideOf(const Story& story, Place within);
    void markers(const Story& story, const Place& within, std::size_t firstItem);

    Story storyOf(xml::Node element, const Rational& position) const;
    void noteSettings(const Story& story);
    void tellUnevenSpeed(const Story& story);
    xml::Node resource(xml::Node element, const char* attribute = "ref") const;
    std::optional<std::size_t> assetOf(xml::Node element);
    std::optional<Rational> rateOf(xml::Node element) const;

    const FCPXMLDocument& m_document;
    LeftOut& m_leftOut;
    QHash<QByteArray, xml::Node> m_resources;
    QHash<QByteArray, std::filesystem::path> m_files; ///< by asset
    QHash<QByteArray, std::size_t> m_assets;          ///< places in the timeline's
    FlatTimeline m_timeline;
    std::vector<PlacedItem> m_items;
    std::vector<PlacedTransition> m_transitions;
    std::size_t m_steps = 0;
    bool m_isExact = true;
};

} // namespace quillary
