#pragma once

#include <algorithm>
#include <atomic>
#include <stop_token>
#include <thread>
#include <vector>

namespace quillary::cutout {

/// Runs `work(first, end)` over bands of rows 0 … `rows`, on as many threads as the machine has cores, and returns when
/// all are done. Bands have `bandRows` rows, the last may have fewer; they are taken in order, each by one thread. Once
/// a stop is requested, no further band begins.
template <typename Work>
void forRowBands(int rows, int bandRows, const std::stop_token& stop, const Work& work) {
    const int bands = (rows + bandRows - 1) / bandRows;
    std::atomic<int> next = 0;
    const auto take = [&] {
        for (int band = next++; band < bands && !stop.stop_requested(); band = next++)
            work(band * bandRows, std::min(rows, (band + 1) * bandRows));
    };
    const int threads = std::min(static_cast<int>(std::max(1U, std::thread::hardware_concurrency())), bands);
    std::vector<std::jthread> others;
    for (int i = 1; i < threads; ++i) others.emplace_back(take);
    take();
}

} // namespace quillary::cutout
