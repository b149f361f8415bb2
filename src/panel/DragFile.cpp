#include "panel/DragFile.h"

#include <QEventLoop>
#include <QPointer>
#include <QTimer>
#include <algorithm>
#include <utility>

namespace quillary {

namespace fs = std::filesystem;

/// One file on its way. Nobody's any more, it asks its maker to stop.
struct DragFile::Job {
    explicit Job(Maker maker) : make(std::move(maker)) {}
    Q_DISABLE_COPY_MOVE(Job)
    ~Job() { stop.request_stop(); }

    Maker make;
    std::stop_source stop;
    bool making = false;
    bool again = false; ///< it may be made once more before it counts as failed
    std::optional<Storage::Prepared> prepared;
    std::optional<fs::path> file;
    std::vector<std::function<void(const std::optional<fs::path>&)>> waiting; ///< until it is named or has failed
};

DragFile::DragFile(Storage& storage, QThreadPool& work, QObject* parent)
    : QObject(parent), m_storage(storage), m_making(work) {}

DragFile::~DragFile() = default;

DragFile::State DragFile::state() const {
    if (!m_job) return State::idle;
    if (m_job->file) return State::named;
    if (m_job->prepared) return State::ready;
    return m_job->making ? State::encoding : State::idle;
}

std::optional<fs::path> DragFile::file() const {
    return m_job ? m_job->file : std::nullopt;
}

void DragFile::prepare(Maker make, Listener listener) {
    discard();
    m_job = std::make_shared<Job>(std::move(make));
    start(m_job, std::move(listener));
}

void DragFile::discard() {
    const SharedJob before = std::exchange(m_job, {});
    if (before && before->file) Q_EMIT fileChanged();
}

DragFile::Aside DragFile::setAside() {
    SharedJob job = m_job;
    discard();
    return job;
}

void DragFile::bringBack(Aside job) {
    discard();
    m_job = std::move(job);
    if (file()) Q_EMIT fileChanged();
}

void DragFile::start(const SharedJob& job, Listener listener) {
    job->making = true;
    const std::stop_token stop = listener ? std::stop_token() : job->stop.get_token();
    m_making.every([make = job->make, stop](const std::stop_token&) { return make(stop); },
                   [this, weak = std::weak_ptr(job), listener = std::move(listener)](Made made) {
                       if (listener) listener(made ? made->readablePath() : fs::path());
                       if (const SharedJob still = weak.lock()) finish(still, std::move(made));
                   });
}

void DragFile::finish(const SharedJob& job, Made made) {
    job->making = false;
    if (made) job->prepared = std::move(*made);
    // A failure is told when somebody asks.
    if (std::ranges::find(m_wanted, job) == m_wanted.end()) return;
    if (made) return name(job);
    if (std::exchange(job->again, false)) return start(job, {});
    settle(job);
    Q_EMIT failed(made.error().description());
}

void DragFile::name(const SharedJob& job) {
    auto placed = m_storage.place(*std::exchange(job->prepared, {}));
    // Its folder may have gone away since it was written.
    if (!placed && std::exchange(job->again, false)) return start(job, {});
    if (placed) job->file = *placed;
    settle(job);
    if (placed && job == m_job) Q_EMIT fileChanged();
    if (placed)
        Q_EMIT named(*placed);
    else
        Q_EMIT failed(placed.error().description());
}

void DragFile::settle(const SharedJob& job) {
    std::erase(m_wanted, job);
    for (const auto& then : std::exchange(job->waiting, {})) then(job->file);
}

void DragFile::want(const SharedJob& job) {
    std::error_code ignored;
    if (job->file && fs::exists(*job->file, ignored)) return;
    job->file.reset();
    if (std::ranges::find(m_wanted, job) != m_wanted.end()) return;
    m_wanted.push_back(job);
    job->again = true;
    if (job->prepared)
        name(job);
    else if (!job->making)
        start(job, {});
}

DragFile::Files DragFile::offer() {
    const SharedJob job = m_job;
    if (!job) return {};
    want(job);
    return [self = QPointer(this), job] { return self ? self->wait(job) : std::vector<fs::path>(); };
}

void DragFile::whenNamed(std::function<void(const fs::path&)> then) {
    const SharedJob job = m_job;
    if (!job) return;
    want(job);
    if (job->file) return then(*job->file);
    if (std::ranges::find(m_wanted, job) == m_wanted.end()) return;
    job->waiting.emplace_back([then = std::move(then)](const std::optional<fs::path>& file) {
        if (file) then(*file);
    });
}

std::vector<fs::path> DragFile::wait(const SharedJob& job) {
    if (std::ranges::find(m_wanted, job) != m_wanted.end()) {
        QEventLoop loop;
        job->waiting.emplace_back([loop = QPointer(&loop)](const std::optional<fs::path>&) {
            if (loop) loop->quit();
        });
        QTimer::singleShot(longestWait, &loop, &QEventLoop::quit);
        loop.exec();
    }
    return job->file ? std::vector{*job->file} : std::vector<fs::path>();
}

} // namespace quillary
