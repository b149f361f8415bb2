#pragma once

#include "base/BatchProgress.h"
#include "blocks/MediaCopier.h"

namespace quillary::cli {

/// How far media are copied or read, in hundredths.
inline MediaProgress hundredths(BatchProgress& progress) {
    constexpr int whole = 100;
    progress.total = whole;
    return {[&progress](std::uint64_t done, std::uint64_t total) {
        progress.done = total > 0 ? static_cast<int>(done * whole / total) : whole;
    }};
}

} // namespace quillary::cli
