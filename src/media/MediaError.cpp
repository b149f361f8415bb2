#include "media/MediaError.h"

#include "base/Translation.h"

namespace quillary::media {

QString description(MediaError error) {
    switch (error) {
    case MediaError::unreadable:
        return translate("Media", "The file couldn’t be read.");
    case MediaError::empty:
        return translate("Media", "The file is empty.");
    case MediaError::unknownKind:
        return translate("Media", "The file is damaged or of an unknown kind.");
    case MediaError::noAudioTrack:
        return translate("Media", "The file holds no sound.");
    case MediaError::noVideoTrack:
        return translate("Media", "The file holds no video.");
    case MediaError::noDecoder:
        return translate("Media", "There is no decoder for this kind of file.");
    case MediaError::noSamples:
        return translate("Media", "The file holds nothing to play.");
    case MediaError::noDecoders:
        return translate("Media", "The decoders are missing; reinstall the program.");
    case MediaError::stopped:
        return translate("Media", "Stopped.");
    }
    return {};
}

} // namespace quillary::media
