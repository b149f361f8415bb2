#include "blocks/export/FCPXMLVocabulary.h"

namespace quillary {

namespace {

struct Definition {
    const char* names;      ///< elements that share it
    const char* attributes; ///< "!" behind a required one, the values that it may have in parentheses
    const char* content;    ///< what may stand in it, in order, as a content model
};

/// Words that stand for others, in attributes and content alike.
constexpr std::pair<const char*, const char*> shorthands[] = {
    {"@anchorage", "lane offset"},
    {"@story", "@anchorage name start duration! enabled(0|1)"},
    {"@timeline", "format! duration tcStart tcFormat(DF|NDF) renderFormat"},
    {"@timecode", "tcStart tcFormat(DF|NDF)"},
    {"@split", "audioStart audioDuration modDate"},
    {"@sampling", "frameSampling(floor|nearest-neighbor|frame-blending|optical-flow-classic|optical-flow)"},
    {"@fade", "type(linear|easeIn|easeOut|easeInOut) duration!"},
    {"@sides", "left top right bottom"},
    {"@rule", "enabled(0|1) rule(includesAny|includesAll|doesNotIncludeAny|doesNotIncludeAll)"},
    {"@collections", "collection-folder | keyword-collection | smart-collection"},
    {"@events", "clip | audition | mc-clip | ref-clip | sync-clip | asset-clip | @collections | project"},
    {"@timing", "conform-rate?, timeMap?"},
    {"@picture", "object-tracker?, adjust-crop?, adjust-corners?, adjust-conform?, adjust-transform?, adjust-blend?, "
                 "adjust-stabilization?, adjust-rollingShutter?, adjust-360-transform?, adjust-reorient?, "
                 "adjust-orientation?, adjust-cinematic?"},
    {"@sound", "adjust-volume?, adjust-panner?"},
    {"@enhancements", "adjust-loudness?, adjust-noiseReduction?, adjust-humReduction?, (adjust-EQ | adjust-matchEQ)?"},
    {"@anchored", "audio | video | clip | title | caption | mc-clip | ref-clip | sync-clip | asset-clip | audition | "
                  "spine"},
    {"@contained", "audio | video | clip | title | mc-clip | ref-clip | sync-clip | asset-clip | audition | gap"},
    {"@markers", "(marker | chapter-marker | rating | keyword | analysis-marker)*"},
    {"@filters", "(filter-video | filter-video-mask)*"},
    {"@matches", "match-text | match-ratings | match-media | match-clip | match-stabilization | match-keywords | "
                 "match-shot | match-property | match-time | match-timeRange | match-roles | match-usage | "
                 "match-representation | match-markers"},
};

constexpr Definition definitions[] = {
    {"fcpxml", "version!", "(import-options?, resources?, (library | event* | (@events)*))"},
    {"import-options", "", "(option*)"},
    {"option", "key! value!", ""},
    {"library", "location colorProcessing(standard|wide|wide-hdr)", "(event | smart-collection)*"},
    {"event", "name uid", "(@events)*"},
    {"project", "name uid id modDate", "(sequence)"},

    {"resources", "", "(asset | effect | format | media | locator)*"},
    {"media", "id! name uid projectRef modDate", "(multicam | sequence)?"},
    {"format", "id! name frameDuration fieldOrder width height paspH paspV colorSpace projection stereoscopic", ""},
    {"asset",
     "id! name uid start duration hasVideo format hasAudio videoSources audioSources audioChannels audioRate "
     "customLUTOverride colorSpaceOverride projectionOverride stereoscopicOverride auxVideoFlags",
     "(media-rep+, metadata?)"},
    {"media-rep", "kind(original-media|proxy-media) sig src! suggestedFilename", "(bookmark?)"},
    {"metadata", "", "(md*)"},
    {"md", "key! value editable(0|1) type(string|boolean|integer|float|date|timecode) displayName description source",
     "(array?)"},
    {"effect", "id! name uid! src", ""},
    {"locator", "id! url!", "(bookmark?)"},

    {"fadeIn fadeOut", "@fade", ""},
    {"keyframeAnimation", "", "(keyframe*)"},
    {"keyframe", "time! value! interp(linear|ease|easeIn|easeOut) curve(linear|smooth)", ""},
    {"mute", "start duration", "(fadeIn?, fadeOut?)"},
    {"param", "name! key value enabled(0|1)", "(fadeIn?, fadeOut?, keyframeAnimation?, param*)"},
    {"data", "key", "(#PCDATA)"},
    {"crop-rect trim-rect", "@sides", "(param*)"},
    {"pan-rect", "@sides", ""},

    {"adjust-crop", "mode!(trim|crop|pan) enabled(0|1)", "(crop-rect?, trim-rect?, (pan-rect, pan-rect)?)"},
    {"adjust-corners", "enabled(0|1) botLeft topLeft topRight botRight", "(param*)"},
    {"adjust-conform", "type(fit|fill|none)", ""},
    {"adjust-transform", "enabled(0|1) position scale rotation anchor tracking", "(param*)"},
    {"adjust-blend", "amount mode", "(param*, reserved?)"},
    {"adjust-stabilization", "enabled(0|1) type(automatic|inertiaCam|smoothCam)", "(param*)"},
    {"adjust-rollingShutter", "enabled(0|1) amount(none|low|medium|high|extraHigh)", ""},
    {"adjust-360-transform",
     "enabled(0|1) coordinates!(spherical|cartesian) latitude longitude distance xPosition yPosition zPosition "
     "xOrientation yOrientation zOrientation autoOrient(0|1) convergence interaxial scale",
     "(param*)"},
    {"adjust-reorient", "enabled(0|1) tilt pan roll convergence", "(param*)"},
    {"adjust-orientation", "enabled(0|1) tilt pan roll fieldOfView mapping(normal|tinyPlanet)", "(param*)"},
    {"adjust-cinematic", "enabled(0|1) dataLocator aperture", "(param*)"},
    {"adjust-loudness", "amount! uniformity!", ""},
    {"adjust-noiseReduction", "amount!", ""},
    {"adjust-humReduction", "frequency!(50|60)", ""},
    {"adjust-EQ",
     "mode!(flat|voice_enhance|music_enhance|loudness|hum_reduction|bass_boost|bass_reduce|treble_boost|treble_reduce)",
     "(param*)"},
    {"adjust-matchEQ", "", "(data)"},
    {"adjust-volume", "amount", "(param*)"},
    {"adjust-panner",
     "mode amount original_decoded_mix ambient_direct_mix surround_width left_right_mix front_back_mix LFE_balance "
     "rotation stereo_spread attenuate_collapse_mix center_balance",
     "(param*)"},
    {"object-tracker", "", "(tracking-shape+)"},
    {"tracking-shape",
     "id! name offsetEnabled(0|1) analysisMethod(automatic|combined|machineLearning|pointCloud) dataLocator", ""},

    {"audio-channel-source", "srcCh! outCh role start duration enabled(0|1) active(0|1)",
     "(@enhancements, @sound, filter-audio*, mute*)"},
    {"audio-role-source", "role! start duration enabled(0|1) active(0|1)",
     "(@enhancements, @sound, filter-audio*, mute*)"},

    {"audition", "@anchorage modDate", "(audio | video | title | ref-clip | asset-clip | clip | sync-clip)+"},
    {"spine", "@anchorage name format", "(@contained | transition)*"},
    {"sequence", "@timeline audioLayout(mono|stereo|surround) audioRate(32k|44.1k|48k|88.2k|96k|176.4k|192k) keywords",
     "(note?, spine, metadata?)"},
    {"multicam", "@timeline", "(mc-angle*, metadata?)"},
    {"mc-angle", "name angleID!", "(@contained | transition)*"},
    {"mc-clip", "ref! @story srcEnable(all|audio|video) @split",
     "(note?, @timing, @sound, mc-source*, (@anchored)*, @markers, filter-audio*, metadata?)"},
    {"mc-source", "angleID! srcEnable(all|audio|video|none)", "(audio-role-source*, @picture, @filters)"},
    {"clip", "@story format @split @timecode",
     "(note?, @timing, @picture, @sound, (spine | @contained | caption)*, @markers, audio-channel-source*, @filters, "
     "filter-audio*, metadata?)"},
    {"ref-clip", "ref! @story srcEnable(all|audio|video) @split useAudioSubroles(0|1)",
     "(note?, @timing, @picture, @sound, (@anchored)*, @markers, audio-role-source*, @filters, filter-audio*, "
     "metadata?)"},
    {"sync-clip", "@story format @split @timecode",
     "(note?, @timing, @picture, @sound, (spine | @contained | caption)*, @markers, sync-source*, @filters, "
     "filter-audio*, metadata?)"},
    {"sync-source", "sourceID!(storyline|connected)", "(audio-role-source*)"},
    {"asset-clip",
     "ref! @anchorage name start duration enabled(0|1) srcEnable(all|audio|video) @split format @timecode audioRole "
     "videoRole",
     "(note?, @timing, @picture, @sound, (@anchored)*, @markers, audio-channel-source*, @filters, filter-audio*, "
     "metadata?)"},
    {"audio", "ref! @story srcID role srcCh outCh",
     "(note?, @timing, adjust-volume?, (@anchored)*, @markers, filter-audio*)"},
    {"video", "ref! @story srcID role",
     "(param*, note?, @timing, @picture, (@anchored)*, @markers, @filters, reserved?)"},
    {"caption", "@story role", "(text*, text-style-def*, note?)"},
    {"gap", "name offset start duration! enabled(0|1)", "(note?, (@anchored)*, @markers, metadata?)"},
    {"title", "ref! @story role",
     "(param*, text*, text-style-def*, note?, @picture, (@anchored)*, @markers, @filters, metadata?)"},
    {"text",
     "display-style(pop-on|paint-on|roll-up) roll-up-height position placement(left|right|top|bottom) "
     "alignment(left|center|right)",
     "(#PCDATA | text-style)*"},
    {"text-style-def", "id! name", "(text-style)"},
    {"text-style",
     "ref font fontSize fontFace fontColor backgroundColor bold(0|1) italic(0|1) strokeColor strokeWidth baseline "
     "shadowColor shadowOffset shadowBlurRadius kerning alignment(left|center|right|justified) lineSpacing tabStops "
     "baselineOffset underline(0|1)",
     "(#PCDATA | param)*"},
    {"transition", "name offset duration!", "(filter-video?, filter-audio?, @markers, metadata?, reserved?)"},

    {"filter-video", "ref! name enabled(0|1)", "(data*, param*)"},
    {"filter-video-mask", "enabled(0|1) inverted(0|1)",
     "((mask-shape | mask-isolation)+, (filter-video, filter-video?))"},
    {"mask-shape", "name enabled(0|1) blendMode(add|subtract|multiply) tracking", "(param*)"},
    {"mask-isolation", "name enabled(0|1) blendMode(add|subtract|multiply) type(3D|HSL)", "(data, param*)"},
    {"filter-audio", "ref! name enabled(0|1) presetID", "(data?, param*)"},
    {"conform-rate", "scaleEnabled(0|1) srcFrameRate(23.98|24|25|29.97|30|60|47.95|48|50|59.94) @sampling", ""},
    {"timeMap", "@sampling preservesPitch(0|1)", "(timept)*"},
    {"timept", "time! value! interp(smooth2|linear|smooth) inTime outTime", ""},

    {"marker", "start! duration value! completed note", ""},
    {"chapter-marker", "start! duration value! note posterOffset", ""},
    {"rating", "name start duration value!(favorite|reject) note", ""},
    {"keyword", "start duration value! note", ""},
    {"analysis-marker", "start duration", "(shot-type | stabilization-type)+"},
    {"shot-type", "value!(onePerson|twoPersons|group|closeUp|mediumShot|wideShot)", ""},
    {"stabilization-type", "value!(excessiveShake)", ""},
    {"keyword-collection", "name!", ""},
    {"collection-folder", "name!", "(@collections)*"},
    {"smart-collection", "name! match!(any|all)", "(@matches)*"},
    {"match-text", "enabled(0|1) rule(includes|doesNotInclude|is|isNot) value! scope(all|notes|names|markers)", ""},
    {"match-ratings", "enabled(0|1) value!(favorites|rejected)", ""},
    {"match-media", "enabled(0|1) rule(is|isNot) type!(videoWithAudio|videoOnly|audioOnly|stills)", ""},
    {"match-clip", "enabled(0|1) rule(is|isNot) type!(audition|synchronized|compound|multicam|layeredGraphic|project)",
     ""},
    {"match-stabilization", "@rule", "(stabilization-type*)"},
    {"match-keywords", "@rule", "(keyword-name*)"},
    {"keyword-name", "value!", ""},
    {"match-shot", "@rule", "(shot-type*)"},
    {"match-property",
     "enabled(0|1) key!(reel|scene|take|audioOutputChannels|frameSize|videoFrameRate|audioSampleRate|cameraName|"
     "cameraAngle|projection|stereoscopic|cinematic) rule(includes|doesNotInclude|is|isNot|isSet|isNotSet) value",
     ""},
    {"match-time", "enabled(0|1) type!(contentCreated|dateImported) rule!(is|isBefore|isAfter) value!", ""},
    {"match-timeRange",
     "enabled(0|1) type!(contentCreated|dateImported) rule!(isInLast|isNotInLast) value! "
     "units(hour|day|week|month|year)",
     ""},
    {"match-roles", "@rule", "(role*)"},
    {"role", "name!", ""},
    {"match-usage", "enabled(0|1) rule(used|unused)", ""},
    {"match-representation", "enabled(0|1) type!(original|optimized|proxy) rule(isAvailable|isMissing)", ""},
    {"match-markers", "enabled(0|1) type(all|standard|allTodo|complete|incomplete)", ""},

    {"note bookmark reserved string", "", "(#PCDATA)"},
    {"array", "", "(string*)"},
};

QByteArray expanded(QByteArray text) {
    // From the last to the first would miss words that stand in others: twice is as deep as they go.
    for (int round = 0; round < 2; ++round)
        for (const auto& [word, meaning] : shorthands) text.replace(word, meaning);
    return text;
}

FCPXMLVocabulary::Attribute attribute(QByteArray& token) {
    FCPXMLVocabulary::Attribute made;
    if (const auto open = token.indexOf('('); open >= 0) {
        for (const QByteArray& value : token.sliced(open + 1).chopped(1).split('|')) made.values.insert(value);
        token.truncate(open);
    }
    made.isRequired = token.endsWith('!');
    if (made.isRequired) token.chop(1);
    return made;
}

QSet<QByteArray> namesIn(QByteArray content) {
    for (char& c : content)
        if (std::string_view("()|,?*+").contains(c)) c = ' ';
    QSet<QByteArray> names;
    for (const QByteArray& name : content.simplified().split(' '))
        if (!name.isEmpty() && !name.startsWith('#')) names.insert(name);
    return names;
}

} // namespace

const FCPXMLVocabulary& FCPXMLVocabulary::version110() {
    static const FCPXMLVocabulary made = [] {
        FCPXMLVocabulary vocabulary;
        for (const Definition& definition : definitions) {
            Element element{.attributes = {}, .children = namesIn(expanded(definition.content))};
            for (QByteArray token : expanded(definition.attributes).split(' ')) {
                if (token.isEmpty()) continue;
                const Attribute found = attribute(token);
                element.attributes.insert(token, found);
            }
            for (const QByteArray& name : QByteArray(definition.names).split(' '))
                vocabulary.m_elements.insert(name, element);
        }
        return vocabulary;
    }();
    return made;
}

const FCPXMLVocabulary::Element* FCPXMLVocabulary::element(const QByteArray& name) const {
    const auto found = m_elements.constFind(name);
    return found == m_elements.cend() ? nullptr : &*found;
}

} // namespace quillary
