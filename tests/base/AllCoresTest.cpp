#include "base/AllCores.h"

#include <atomic>
#include <gtest/gtest.h>
#include <pthread.h>

namespace quillary {

namespace {

/// While it lives, no thread can be started: none gets a stack of this size.
class NoThreads {
public:
    NoThreads() {
        pthread_getattr_default_np(&m_usual);
        pthread_attr_t endless;
        pthread_getattr_default_np(&endless);
        pthread_attr_setstacksize(&endless, std::size_t(1) << 47);
        pthread_setattr_default_np(&endless);
        pthread_attr_destroy(&endless);
    }
    ~NoThreads() {
        pthread_setattr_default_np(&m_usual);
        pthread_attr_destroy(&m_usual);
    }
    NoThreads(const NoThreads&) = delete;
    NoThreads& operator=(const NoThreads&) = delete;

private:
    pthread_attr_t m_usual;
};

TEST(AllCores, DoesTheWorkWithTheThreadsThatThereAre) {
    const auto doneBy = [](std::size_t most) {
        std::atomic<std::size_t> next = 0;
        std::atomic<std::size_t> sum = 0;
        std::atomic<std::size_t> workers = 0;
        onAllCores(most, [&] {
            ++workers;
            for (std::size_t i = next++; i < 1000; i = next++) sum += i;
        });
        EXPECT_EQ(sum, 499'500U);
        return workers.load();
    };
    EXPECT_EQ(doneBy(1), 1U);
    EXPECT_LE(doneBy(3), 3U);
    const NoThreads none;
    EXPECT_EQ(doneBy(3), 1U);
}

} // namespace

} // namespace quillary
