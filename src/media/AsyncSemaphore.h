#pragma once

#include <deque>
#include <functional>

namespace quillary {

/// A semaphore that nobody blocks on: who has to wait hands over what is to happen then. One thread; waiters are served
/// in the order of their arrival.
class AsyncSemaphore {
public:
    using Waiter = std::function<void()>;

    explicit AsyncSemaphore(int permits) : m_permits(permits) {}

    /// Calls `then` at once while there is a permit, else when one comes free.
    void wait(Waiter then) {
        if (m_permits >= 1) {
            --m_permits;
            then();
        } else {
            m_waiters.push_back(std::move(then));
        }
    }

    /// Hands the permit to the one that waits longest, or keeps it for the next.
    void signal() {
        if (m_waiters.empty()) {
            ++m_permits;
            return;
        }
        const Waiter next = std::move(m_waiters.front());
        m_waiters.pop_front();
        next();
    }

    int permits() const { return m_permits; }
    std::size_t waiting() const { return m_waiters.size(); }

private:
    int m_permits;
    std::deque<Waiter> m_waiters;
};

} // namespace quillary
