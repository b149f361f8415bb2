#pragma once

#include <atomic>

namespace quillary {

/// How far a batch is; written by the worker, read by whoever shows it.
struct BatchProgress {
    std::atomic<int> done = 0;
    std::atomic<int> total = 0;
};

} // namespace quillary
