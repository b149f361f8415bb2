#include "blocks/export/PlainNames.h"

#include "base/Translation.h"

#include <QHash>

namespace quillary {

namespace {

/// Several elements may share a word.
const QHash<QByteArray, const char*>& words() {
    static const QHash<QByteArray, const char*> all{
        {"title", QT_TRANSLATE_NOOP("Blocks", "Titles")},
        {"caption", QT_TRANSLATE_NOOP("Blocks", "Captions")},
        {"transition", QT_TRANSLATE_NOOP("Blocks", "Transitions")},
        {"timeMap", QT_TRANSLATE_NOOP("Blocks", "Speed changes")},
        {"conform-rate", QT_TRANSLATE_NOOP("Blocks", "Frame rate conforming")},
        {"filter-video", QT_TRANSLATE_NOOP("Blocks", "Video effects")},
        {"filter-video-mask", QT_TRANSLATE_NOOP("Blocks", "Video effects with masks")},
        {"filter-audio", QT_TRANSLATE_NOOP("Blocks", "Audio effects")},
        {"adjust-crop", QT_TRANSLATE_NOOP("Blocks", "Crops")},
        {"adjust-corners", QT_TRANSLATE_NOOP("Blocks", "Distortions")},
        {"adjust-conform", QT_TRANSLATE_NOOP("Blocks", "Fit and fill settings")},
        {"adjust-transform", QT_TRANSLATE_NOOP("Blocks", "Transforms")},
        {"adjust-blend", QT_TRANSLATE_NOOP("Blocks", "Opacity and blending")},
        {"adjust-stabilization", QT_TRANSLATE_NOOP("Blocks", "Stabilization")},
        {"adjust-rollingShutter", QT_TRANSLATE_NOOP("Blocks", "Rolling shutter corrections")},
        {"adjust-360-transform", QT_TRANSLATE_NOOP("Blocks", "360° settings")},
        {"adjust-reorient", QT_TRANSLATE_NOOP("Blocks", "360° settings")},
        {"adjust-orientation", QT_TRANSLATE_NOOP("Blocks", "360° settings")},
        {"adjust-cinematic", QT_TRANSLATE_NOOP("Blocks", "Cinematic settings")},
        {"adjust-colorConform", QT_TRANSLATE_NOOP("Blocks", "Color conforming")},
        {"adjust-stereo-3D", QT_TRANSLATE_NOOP("Blocks", "Stereo 3D settings")},
        {"object-tracker", QT_TRANSLATE_NOOP("Blocks", "Object trackers")},
        {"adjust-volume", QT_TRANSLATE_NOOP("Blocks", "Volume changes")},
        {"adjust-panner", QT_TRANSLATE_NOOP("Blocks", "Panning")},
        {"adjust-loudness", QT_TRANSLATE_NOOP("Blocks", "Audio enhancements")},
        {"adjust-noiseReduction", QT_TRANSLATE_NOOP("Blocks", "Audio enhancements")},
        {"adjust-humReduction", QT_TRANSLATE_NOOP("Blocks", "Audio enhancements")},
        {"adjust-EQ", QT_TRANSLATE_NOOP("Blocks", "Audio enhancements")},
        {"adjust-matchEQ", QT_TRANSLATE_NOOP("Blocks", "Audio enhancements")},
        {"audio-channel-source", QT_TRANSLATE_NOOP("Blocks", "Audio channel settings")},
        {"audio-role-source", QT_TRANSLATE_NOOP("Blocks", "Audio component settings")},
        {"sync-source", QT_TRANSLATE_NOOP("Blocks", "Audio component settings")},
        {"audio-source", QT_TRANSLATE_NOOP("Blocks", "Audio component settings")},
        {"audio-aux-source", QT_TRANSLATE_NOOP("Blocks", "Audio component settings")},
        {"mute", QT_TRANSLATE_NOOP("Blocks", "Silenced ranges")},
        {"marker", QT_TRANSLATE_NOOP("Blocks", "Markers")},
        {"chapter-marker", QT_TRANSLATE_NOOP("Blocks", "Chapter markers")},
        {"analysis-marker", QT_TRANSLATE_NOOP("Blocks", "Analysis markers")},
        {"keyword", QT_TRANSLATE_NOOP("Blocks", "Keywords")},
        {"rating", QT_TRANSLATE_NOOP("Blocks", "Ratings")},
        {"note", QT_TRANSLATE_NOOP("Blocks", "Notes")},
        {"metadata", QT_TRANSLATE_NOOP("Blocks", "Metadata")},
        {"bookmark", QT_TRANSLATE_NOOP("Blocks", "Bookmarks")},
        {"locator", QT_TRANSLATE_NOOP("Blocks", "Locators")},
    };
    return all;
}

} // namespace

QString plainName(const QByteArray& element) {
    if (const char* word = words().value(element)) return translate("Blocks", word);
    return translate("Blocks", "“%1” settings").arg(QString::fromUtf8(element));
}

} // namespace quillary
