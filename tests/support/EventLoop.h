#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>

namespace quillary::test {

/// Runs the event loop until the condition holds; false when it does not in this time.
template <typename Condition>
bool comesTrue(Condition condition, int milliseconds = 20'000) {
    const QDeadlineTimer limit(milliseconds);
    while (!condition() && !limit.hasExpired()) QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    return condition();
}

/// Runs the event loop for this long.
inline void wait(int milliseconds) {
    comesTrue([] { return false; }, milliseconds);
}

} // namespace quillary::test
