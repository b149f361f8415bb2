#pragma once

#include <cstdio>
#include <cstdlib>

namespace quillary::fuzz {

/// Ends the run as a crash does when the program broke its word.
inline void require(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "broken promise: %s\n", what);
    std::abort();
}

} // namespace quillary::fuzz
