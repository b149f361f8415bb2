#pragma once

#include <QString>

namespace quillary::media {

/// Why a sound or clip gave nothing.
enum class MediaError {
    unreadable,  ///< missing, no permission, no regular file, or a read took too long
    empty,       ///< no byte at all
    unknownKind, ///< no format that can be read, or damaged beyond it
    noAudioTrack,
    noVideoTrack, ///< also when the only picture is a cover
    noDecoder,    ///< the format is known, its codec is not
    noSamples,    ///< a track without content
    noDecoders,   ///< the module of decoders is missing
    stopped       ///< a stop was requested
};

/// One sentence for the user.
QString description(MediaError error);

} // namespace quillary::media
