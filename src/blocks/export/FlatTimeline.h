#pragma once

#include "blocks/ArrangementFailure.h"
#include "blocks/FCPXMLDocument.h"
#include "blocks/export/LeftOut.h"
#include "blocks/export/Rational.h"

#include <QString>
#include <expected>
#include <filesystem>
#include <map>
#include <optional>
#include <vector>

namespace quillary {

/// A document's clip as other editors understand it: tracks of pieces of media, one after another, and nothing nested.
/// All times are exact, in seconds; positions count from the beginning of the timeline.
struct FlatTimeline {
    enum class Medium { video, audio };

    struct Asset {
        QString name;
        std::optional<std::filesystem::path> file = {}; ///< none where the document names no file of this machine
        std::optional<Rational> start = {};             ///< of the media's own time; both are none for a still
        std::optional<Rational> duration = {};          ///< above 0
        std::optional<Rational> rate = {};              ///< pictures a second, samples of a sound
        bool hasVideo = true;
        bool hasAudio = false;
    };

    /// A marker of a clip or of the timeline.
    struct Marker {
        enum class Kind { plain, toDo, done, chapter };

        Kind kind = Kind::plain;
        QString name;
        QString note;
        Rational start; ///< in the media's own time, or on the timeline
        Rational duration;
    };

    struct Item {
        QString name;
        std::size_t asset = 0;
        Rational position;
        Rational duration;   ///< above 0
        Rational mediaStart; ///< in the media's own time: the earliest moment that is read
        bool isEnabled = true;
        Rational speed = 1; ///< seconds of the media for one of the timeline; below 0 backwards, 0 for a still frame
        QString role = {};  ///< such as "dialogue.dialogue-1"; empty when none is told
        std::vector<Marker> markers = {};

        Rational end() const { return position + duration; }
    };

    /// A dissolve from one item to the next: how far it reaches before and behind the cut.
    struct Transition {
        QString name;
        Rational before;
        Rational after;
    };

    struct Track {
        Medium medium = Medium::video;
        std::vector<Item> items;                            ///< by position, without overlap
        std::map<std::size_t, Transition> transitions = {}; ///< by the item in front of the cut
    };

    QString name;
    std::optional<Rational> start = {}; ///< what the clock of the timeline begins with
    std::optional<Rational> rate = {};  ///< pictures a second
    Rational duration;
    std::vector<Asset> assets;
    std::vector<Marker> markers = {}; ///< of clips that have no media of their own
    std::vector<Track> tracks;        ///< pictures from the lowest to the highest, then sounds
};

/// Lays a document's clip out flat. Connected clips, secondary storylines and what compound, synchronised and multicam
/// clips hold get tracks by their lanes; of auditions the chosen clip counts, of multicam clips the angles in use. A
/// clip with picture and sound stands on a track of each. Items never read beyond their media. What has no media or no
/// place in such a timeline is told in `leftOut`: titles, generators, effects, speeds that change within a clip. Fails
/// where times do not fit into 64-bit fractions, and where clips within clips come to more than `mostItems`.
std::expected<FlatTimeline, ArrangementFailure> flattened(const FCPXMLDocument& document, LeftOut& leftOut);

inline constexpr std::size_t mostItems = 500'000;

} // namespace quillary
