#pragma once

#include <algorithm>
#include <concepts>
#include <cstddef>
#include <functional>
#include <system_error>
#include <thread>
#include <vector>

namespace quillary {

/// Runs `work` on as many threads as the machine has cores, at most `most`, this one among them, and returns when all
/// are done: it takes pieces of a common task until none is left. Where the system has no more threads to give, fewer
/// do the same.
template <std::invocable Work>
void onAllCores(std::size_t most, const Work& work) {
    const std::size_t threads = std::min<std::size_t>(std::max(1U, std::thread::hardware_concurrency()), most);
    std::vector<std::jthread> others;
    others.reserve(threads);
    try {
        while (others.size() + 1 < threads) others.emplace_back(std::cref(work));
    } catch (const std::system_error&) {
        // The library tells it in no other way.
    }
    work();
}

} // namespace quillary
