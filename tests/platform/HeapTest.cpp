#include "platform/Heap.h"

#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>

namespace quillary::platform {
namespace {

/// In MiB.
double occupied() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("RssAnon:")) return std::stod(line.substr(8)) / 1024;
    return 0;
}

TEST(HeapTest, GivesLargePiecesBackThatLayBetweenSmallOnes) {
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "another allocator stands in";
#endif
    giveFreedMemoryBack();
    using Bytes = std::vector<char>;
    std::vector<Bytes> stays;
    double full = 0;
    const double before = occupied();
    // On threads that come and go, as those of a pool do. A piece of some MiB would raise the C library's own bound.
    for (int round = 0; round < 3; ++round)
        std::thread([&] {
            std::vector<Bytes> goes{Bytes(8 << 20, 'x')};
            for (int i = 0; i < 300; ++i) {
                goes.emplace_back(130'000, 'x');
                stays.emplace_back(500, 'x');
            }
            full = occupied();
        }).join();
    EXPECT_GT(full - before, 40);
    EXPECT_LT(occupied() - before, 4);
}

} // namespace
} // namespace quillary::platform
