#pragma once

namespace quillary::platform {

/// Makes freed memory go back to the system, for a program that stays open for days: what is as large as the picture of
/// a tile gets pages of its own, which go back the moment it is freed, instead of leaving holes between what is small
/// and stays, and all threads share two heaps. Costs some page faults for each large piece. Called once, before there
/// are other threads.
void giveFreedMemoryBack();

} // namespace quillary::platform
