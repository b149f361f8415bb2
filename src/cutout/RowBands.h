#pragma once

#include "base/AllCores.h"

#include <algorithm>
#include <atomic>
#include <stop_token>

namespace quillary::cutout {

/// Runs `work(first, end)` over bands of rows 0 … `rows`, on as many threads as the machine has cores, and returns when
/// all are done. Bands have `bandRows` rows, the last may have fewer; they are taken in order, each by one thread. Once
/// a stop is requested, no further band begins.
template <typename Work>
void forRowBands(int rows, int bandRows, const std::stop_token& stop, const Work& work) {
    const int bands = (rows + bandRows - 1) / bandRows;
    std::atomic<int> next = 0;
    onAllCores(static_cast<std::size_t>(bands), [&] {
        for (int band = next++; band < bands && !stop.stop_requested(); band = next++)
            work(band * bandRows, std::min(rows, (band + 1) * bandRows));
    });
}

} // namespace quillary::cutout
