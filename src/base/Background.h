#pragma once

#include <QObject>
#include <QThreadPool>
#include <concepts>
#include <memory>
#include <mutex>
#include <optional>
#include <stop_token>
#include <type_traits>
#include <utility>

namespace quillary {

/// One line of background work: `run` for requests of which the newest wins, `every` for work that must be done.
///
/// A worker is a plain function that takes a std::stop_token and returns a value. It runs on the pool; its result comes
/// home to the thread of this object and is handed to `done` there, but only if no newer `run`, no `cancel` and no
/// destruction happened meanwhile. Superseded workers are asked to stop through their token and their results are
/// dropped, so a late result can never overwrite a newer one.
///
///     Background m_staging{pool};
///     m_staging.run([bytes](std::stop_token stop) { return decode(bytes, stop); }, [this](auto image) { show(image);
///     });
///
/// Workers must not touch anything that this object's owner may destroy: they take values. The pool outlives this
/// object. All members are called on the thread that this object lives in.
class Background : public QObject {
public:
    explicit Background(QThreadPool& pool, QObject* parent = nullptr)
        : QObject(parent), m_pool(pool), m_link(std::make_shared<Link>(this)) {}
    ~Background() override {
        m_stop.request_stop();
        const std::scoped_lock lock(m_link->mutex);
        m_link->home = nullptr;
    }
    Q_DISABLE_COPY_MOVE(Background)

    /// Starts a request that replaces the one before it.
    template <std::invocable<std::stop_token> Work, typename Done>
    void run(Work work, Done done) {
        cancel();
        m_stop = std::stop_source();
        m_busy = true;
        start(std::move(work), m_stop.get_token(), [this, request = m_request, done = std::move(done)](auto result) {
            if (request != m_request) return;
            m_busy = false;
            done(std::move(result));
        });
    }

    /// Starts work whose result always counts, whatever else is asked: nothing replaces or cancels it. The pool
    /// finishes it even when this object goes; only `done` is then not called.
    template <std::invocable<std::stop_token> Work, typename Done>
    void every(Work work, Done done) {
        start(std::move(work), std::stop_token(), std::move(done));
    }

    /// Makes the running request void. Its worker may run to its end; nobody hears of it.
    void cancel() {
        m_stop.request_stop();
        ++m_request;
        m_busy = false;
    }

    /// True from `run` until its `done` is called or `cancel`.
    bool busy() const { return m_busy; }

private:
    /// What a worker holds of its way home: cleared under the lock when this object goes.
    struct Link {
        explicit Link(Background* receiver) : home(receiver) {}
        std::mutex mutex;
        Background* home;
    };

    template <typename Work, typename Done>
    void start(Work work, std::stop_token stop, Done done) {
        using Result = std::invoke_result_t<Work, std::stop_token>;
        struct Job {
            Work work;
            Done done;
            std::stop_token stop;
            std::shared_ptr<Link> link;
            std::optional<Result> result;
        };
        auto job = std::make_shared<Job>(std::move(work), std::move(done), std::move(stop), m_link);
        m_pool.start([job = std::move(job)] {
            if (job->stop.stop_requested()) return;
            job->result.emplace(job->work(job->stop));
            const std::scoped_lock lock(job->link->mutex);
            if (!job->link->home) return;
            QMetaObject::invokeMethod(
                job->link->home, [job] { job->done(std::move(*job->result)); }, Qt::QueuedConnection);
        });
    }

    QThreadPool& m_pool;
    std::shared_ptr<Link> m_link;
    std::stop_source m_stop;
    quint64 m_request = 0;
    bool m_busy = false;
};

} // namespace quillary
