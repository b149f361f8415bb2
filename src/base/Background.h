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

/// One line of background work whose newest request wins.
///
/// A worker is a plain function that takes a std::stop_token and returns a value. It runs on the pool; its result comes
/// home to the thread of this object and is handed to `done` there, but only if no newer `run`, no `cancel` and no
/// destruction happened meanwhile. Superseded workers are asked to stop through their token and their results are
/// dropped, so a late result can never overwrite a newer one.
///
///     Background m_staging{pool};
///     m_staging.run([bytes](std::stop_token stop) { return decode(bytes, stop); }, [this](auto image) { show(image); });
///
/// Workers must not touch anything that this object's owner may destroy: they take values. The pool outlives this
/// object. All members are called on the thread that this object lives in.
class Background : public QObject {
public:
    explicit Background(QThreadPool& pool, QObject* parent = nullptr)
        : QObject(parent)
        , m_pool(pool)
        , m_link(std::make_shared<Link>(this)) {}
    ~Background() override {
        m_stop.request_stop();
        const std::scoped_lock lock(m_link->mutex);
        m_link->home = nullptr;
    }
    Q_DISABLE_COPY_MOVE(Background)

    template <std::invocable<std::stop_token> Work, typename Done> void run(Work work, Done done) {
        using Result = std::invoke_result_t<Work, std::stop_token>;
        struct Job {
            Work work;
            Done done;
            std::stop_token stop;
            quint64 request;
            std::shared_ptr<Link> link;
            std::optional<Result> result;
        };
        cancel();
        m_stop = std::stop_source();
        m_busy = true;
        auto job = std::make_shared<Job>(std::move(work), std::move(done), m_stop.get_token(), m_request, m_link);
        m_pool.start([job = std::move(job)] {
            if (job->stop.stop_requested()) return;
            job->result.emplace(job->work(job->stop));
            const std::scoped_lock lock(job->link->mutex);
            Background* home = job->link->home;
            if (!home) return;
            QMetaObject::invokeMethod(
                home,
                [home, job] {
                    if (job->request != home->m_request) return;
                    home->m_busy = false;
                    job->done(std::move(*job->result));
                },
                Qt::QueuedConnection);
        });
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
        explicit Link(Background* receiver)
            : home(receiver) {}
        std::mutex mutex;
        Background* home;
    };

    QThreadPool& m_pool;
    std::shared_ptr<Link> m_link;
    std::stop_source m_stop;
    quint64 m_request = 0;
    bool m_busy = false;
};

} // namespace quillary
