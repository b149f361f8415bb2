#include "platform/HelperProcess.h"

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

namespace quillary::platform {

namespace {

void* memory(std::size_t size, int access) {
    return mmap(nullptr, size, access, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
}

TEST(HelperProcessDeathTest, MayReserveMoreThanItMayWrite) {
    constexpr std::size_t mebibyte = std::size_t(1) << 20;
    EXPECT_EXIT(
        {
            confineThisProcess({std::chrono::seconds(60), 256 * mebibyte});
            const bool reserved = memory(16384 * mebibyte, PROT_NONE) != MAP_FAILED;
            const bool written = memory(512 * mebibyte, PROT_READ | PROT_WRITE) != MAP_FAILED;
            _exit(reserved && !written ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

} // namespace

} // namespace quillary::platform
