#pragma once

#include <deque>
#include <functional>

namespace quillary {

/// A semaphore that nobody blocks on: who has to wait hands over what is to happen then. One thread; waiters are served
/// in the order of their arrival.
class AsyncSemaphore {
public:
    /// Told that it has a permit. False when it has no use for it any more: it passes to the next.
    using Waiter = std::function<bool()>;

    explicit AsyncSemaphore(int permits) : m_permits(permits) {}

    /// Calls `then` at once while there is a permit, else when one comes free.
    void wait(Waiter then) {
        if (m_permits < 1) {
            m_waiters.push_back(std::move(then));
        } else {
            --m_permits;
            if (!then()) signal();
        }
    }

    /// Hands the permit to the one that waits longest, or keeps it for the next.
    void signal() {
        while (!m_waiters.empty()) {
            const Waiter next = std::move(m_waiters.front());
            m_waiters.pop_front();
            if (next()) return;
        }
        ++m_permits;
    }

    int permits() const { return m_permits; }
    std::size_t waiting() const { return m_waiters.size(); }

private:
    int m_permits;
    std::deque<Waiter> m_waiters;
};

} // namespace quillary
