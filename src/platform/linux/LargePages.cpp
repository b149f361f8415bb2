#include "platform/LargePages.h"

#include <cstdint>
#include <sys/mman.h>

namespace quillary::platform {

void preferLargePages(void* start, std::size_t bytes) {
    constexpr std::uintptr_t large = std::uintptr_t(2) << 20;
    const auto first = reinterpret_cast<std::uintptr_t>(start);
    const std::uintptr_t begin = (first + large - 1) / large * large;
    const std::uintptr_t end = (first + bytes) / large * large;
    if (begin < end) madvise(reinterpret_cast<void*>(begin), end - begin, MADV_HUGEPAGE);
}

} // namespace quillary::platform
