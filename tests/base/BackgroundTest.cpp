#include "base/Background.h"
#include "support/EventLoop.h"

#include <gtest/gtest.h>
#include <semaphore>
#include <vector>

namespace quillary {

namespace {

class BackgroundTest : public testing::Test {
protected:
    QThreadPool m_pool;
    std::vector<int> m_results;

    auto collect() {
        return [this](int result) { m_results.push_back(result); };
    }
};

} // namespace

TEST_F(BackgroundTest, OnlyTheNewestRequestComesHome) {
    std::binary_semaphore started(0);
    std::binary_semaphore gate(0);
    m_pool.setMaxThreadCount(2);
    bool stopped = false;
    Background line(m_pool);
    line.run(
        [&](const std::stop_token& stop) {
            started.release();
            gate.acquire();
            stopped = stop.stop_requested();
            return 1;
        },
        collect());
    started.acquire();
    line.run([](const std::stop_token&) { return 2; }, collect());
    EXPECT_TRUE(line.busy());
    gate.release();
    ASSERT_TRUE(test::comesTrue([&] { return !m_results.empty(); }));
    m_pool.waitForDone();
    QCoreApplication::processEvents();
    EXPECT_EQ(m_results, std::vector{2});
    EXPECT_TRUE(stopped);
    EXPECT_FALSE(line.busy());
}

TEST_F(BackgroundTest, AResultThatIsAlreadyOnItsWayIsVoidedToo) {
    Background line(m_pool);
    line.run([](const std::stop_token&) { return 1; }, collect());
    m_pool.waitForDone();
    line.cancel();
    QCoreApplication::processEvents();
    EXPECT_TRUE(m_results.empty());
}

TEST_F(BackgroundTest, EveryResultCountsAndWorkOutlivesItsOwner) {
    int finished = 0;
    m_pool.setMaxThreadCount(1);
    {
        Background line(m_pool);
        for (int i = 1; i <= 3; ++i) line.every([i](const std::stop_token&) { return i; }, collect());
        line.cancel();
        ASSERT_TRUE(test::comesTrue([&] { return m_results.size() == 3; }));
        line.every([&](const std::stop_token&) { return ++finished; }, collect());
    }
    m_pool.waitForDone();
    QCoreApplication::processEvents();
    EXPECT_EQ(finished, 1);
    EXPECT_EQ(m_results, (std::vector{1, 2, 3}));
}

} // namespace quillary
