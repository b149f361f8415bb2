#pragma once

#include <QThreadPool>
#include <memory>
#include <semaphore>

namespace quillary::test {

/// Keeps a pool's work waiting until it goes, so that what is asked for meanwhile stays under way.
class Jam {
public:
    explicit Jam(QThreadPool& pool) : m_pool(pool), m_threads(pool.maxThreadCount()) {
        m_pool.setMaxThreadCount(1);
        m_pool.start([gate = m_gate] { gate->acquire(); });
    }
    ~Jam() {
        m_gate->release();
        m_pool.setMaxThreadCount(m_threads);
    }
    Q_DISABLE_COPY_MOVE(Jam)

private:
    QThreadPool& m_pool;
    int m_threads;
    std::shared_ptr<std::binary_semaphore> m_gate = std::make_shared<std::binary_semaphore>(0);
};

} // namespace quillary::test
