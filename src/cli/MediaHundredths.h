#pragma once

#include "base/BatchProgress.h"
#include "blocks/MediaCopier.h"

namespace quillary::cli {

/// How far a copy of media is, in hundredths.
inline MediaProgress hundredths(BatchProgress& progress) {
    return {[&progress](std::uint64_t done, std::uint64_t total) {
        constexpr int whole = 100;
        progress.total = whole;
        progress.done = total > 0 ? static_cast<int>(done * whole / total) : whole;
    }};
}

} // namespace quillary::cli
