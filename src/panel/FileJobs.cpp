#include "panel/FileJobs.h"

#include "base/NumberedName.h"
#include "platform/PendingFile.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace quillary {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

namespace {

std::string_view viewed(const QByteArray& text) {
    return {text.constData(), static_cast<std::size_t>(text.size())};
}

} // namespace

void FileJob::list(const std::vector<fs::path>& files) {
    const std::scoped_lock lock(m_mutex);
    if (m_notes) m_notes->append(viewed(JobRecord::listed(files)));
}

void FileJob::done(std::size_t file) {
    part = 0;
    const std::scoped_lock lock(m_mutex);
    if (m_notes) m_notes->append(viewed(JobRecord::done(file)));
}

void FileJob::finish() {
    const std::scoped_lock lock(m_mutex);
    if (m_notes) m_notes->remove();
    m_notes.reset();
}

void FileJob::letGo() {
    const std::scoped_lock lock(m_mutex);
    m_notes.reset();
}

BatchObserver FileJob::observer() {
    return {.listed = [this](const std::vector<fs::path>& files) { list(files); },
            .done = [this](std::size_t file) { done(file); },
            .copying =
                [this](std::uint64_t copied, std::uint64_t total) {
                    part = total > 0 ? static_cast<double>(copied) / static_cast<double>(total) : 0;
                }};
}

fs::path FileJobs::notesIn(const fs::path& cacheFolder) {
    return cacheFolder.empty() ? fs::path() : cacheFolder / "quillary" / "unfinished";
}

FileJobs::FileJobs(fs::path notes, QObject* parent) : QObject(parent), m_folder(std::move(notes)) {
    m_tick.setInterval(50ms);
    connect(&m_tick, &QTimer::timeout, this, &FileJobs::changed);
}

FileJobs::~FileJobs() {
    stop();
}

std::shared_ptr<FileJob> FileJobs::begin(const JobRecord& record) {
    std::optional<platform::HeldFile> notes;
    if (!m_folder.empty())
        if (auto held = platform::HeldFile::create(m_folder, suffix, viewed(record.text()))) notes = *std::move(held);
    auto job = std::make_shared<FileJob>(std::move(notes));
    job->progress.total = static_cast<int>(record.files.size());
    return take(std::move(job));
}

std::shared_ptr<FileJob> FileJobs::begin() {
    return take(std::make_shared<FileJob>());
}

std::shared_ptr<FileJob> FileJobs::take(std::shared_ptr<FileJob> job) {
    if (m_running.empty()) m_problems.clear();
    m_running.push_back(job);
    m_tick.start();
    Q_EMIT changed();
    return job;
}

void FileJobs::end(const std::shared_ptr<FileJob>& job, const QString& problem) {
    if (std::erase(m_running, job) == 0) return;
    job->letGo();
    if (!problem.isEmpty()) m_problems += problem;
    m_ended = m_running.empty() ? 0 : m_ended + job->progress.total;
    if (m_running.empty()) m_tick.stop();
    Q_EMIT changed();
    if (job->stopToken().stop_requested()) Q_EMIT stopped();
}

void FileJobs::stop() {
    for (const auto& job : m_running) job->requestStop();
}

std::optional<fs::path> FileJobs::keep(const QByteArray& contents, const std::string& name) const {
    if (m_folder.empty() || !platform::createFolders(m_folder)) return {};
    auto file = platform::PendingFile::holding(m_folder, contents);
    if (!file) return {};
    const auto kept = file->place(NumberedName::ofFileName(name));
    return kept ? std::optional(*kept) : std::nullopt;
}

void FileJobs::removeKept(const std::vector<fs::path>& files, const fs::path& notes) {
    std::error_code gone;
    for (const fs::path& file : files)
        if (!notes.empty() && file.parent_path() == notes) fs::remove(file, gone);
}

int FileJobs::done() const {
    int files = m_ended;
    for (const auto& job : m_running) files += job->progress.done;
    return files;
}

int FileJobs::total() const {
    int files = m_ended;
    for (const auto& job : m_running) files += job->progress.total;
    return files;
}

double FileJobs::fraction() const {
    double files = done();
    for (const auto& job : m_running) files += job->part;
    return total() > 0 ? std::min(1.0, files / total()) : 0;
}

} // namespace quillary
