#include "platform/Heap.h"

#include <malloc.h>

namespace quillary::platform {

void giveFreedMemoryBack() {
    // The C library would raise the first bound to 32 MiB as such pieces are freed; setting it keeps it.
    mallopt(M_MMAP_THRESHOLD, 64 << 10);
    mallopt(M_TRIM_THRESHOLD, 128 << 10);
    mallopt(M_TOP_PAD, 64 << 10);
    mallopt(M_ARENA_MAX, 2);
}

} // namespace quillary::platform
