#include "media/MediaError.h"

namespace quillary::media {

QString description(MediaError error) {
    switch (error) {
    case MediaError::unreadable:
        return QStringLiteral("The file couldn’t be read.");
    case MediaError::empty:
        return QStringLiteral("The file is empty.");
    case MediaError::unknownKind:
        return QStringLiteral("The file is damaged or of an unknown kind.");
    case MediaError::noAudioTrack:
        return QStringLiteral("The file holds no sound.");
    case MediaError::noVideoTrack:
        return QStringLiteral("The file holds no video.");
    case MediaError::noDecoder:
        return QStringLiteral("There is no decoder for this kind of file.");
    case MediaError::noSamples:
        return QStringLiteral("The file holds nothing to play.");
    case MediaError::noDecoders:
        return QStringLiteral("The decoders are missing; reinstall the program.");
    case MediaError::stopped:
        return QStringLiteral("Stopped.");
    }
    return {};
}

} // namespace quillary::media
