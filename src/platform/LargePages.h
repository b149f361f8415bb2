#pragma once

#include <cstddef>

namespace quillary::platform {

/// Asks for large pages under memory that was just allocated and not yet written: a picture of many megabytes is then
/// there in a fraction of the time. A hint only, of no effect on small pieces and where the system has no such pages.
/// Any thread.
void preferLargePages(void* start, std::size_t bytes);

} // namespace quillary::platform
