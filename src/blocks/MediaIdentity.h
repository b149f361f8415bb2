#pragma once

namespace quillary {

/// What tells which file of a library is the one that a document's reference means, when it does not lie where the
/// document says.
enum class MediaIdentity {
    uid,     ///< the mark of its asset
    name,    ///< the mark and the very name: the document has several files of this asset
    nothing, ///< not even these: several files of one asset bear the same name
};

} // namespace quillary
