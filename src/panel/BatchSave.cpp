#include "panel/BatchSave.h"

#include "base/Text.h"
#include "base/Translation.h"
#include "imaging/ImageIntake.h"
#include "platform/UniformTypes.h"

#include <QStringList>
#include <algorithm>

namespace quillary {

namespace fs = std::filesystem;

namespace {

/// The shelf of a file. Pictures of every readable kind count as images, since they are kept as PNG.
std::optional<Storage::Folder> destination(const fs::path& file) {
    if (const auto shelf = Storage::shelf(file)) return shelf;
    const QString type = platform::contentType(file);
    const bool picture = std::ranges::any_of(
        ImageIntake::acceptedFileTypes(), [&](const QString& accepted) { return platform::conforms(type, accepted); });
    return picture ? std::optional(Storage::Folder::images) : std::nullopt;
}

void walk(const fs::path& folder, std::vector<fs::path>& files, const std::stop_token& stop) {
    std::vector<fs::path> entries;
    std::error_code failed;
    for (fs::directory_iterator at(folder, fs::directory_options::skip_permission_denied, failed), end;
         !failed && at != end && !stop.stop_requested(); at.increment(failed))
        if (!at->path().filename().native().starts_with('.')) entries.push_back(at->path());
    std::ranges::sort(entries);
    for (const fs::path& entry : entries) {
        std::error_code ignored;
        if (fs::is_directory(fs::symlink_status(entry, ignored)))
            walk(entry, files, stop);
        else if (fs::is_regular_file(entry, ignored))
            files.push_back(entry);
    }
}

class Batch {
public:
    Batch(Storage& storage, const BatchTarget& target, int longEdge, std::stop_token stop)
        : m_storage(storage), m_target(target), m_longEdge(longEdge), m_stop(std::move(stop)) {}

    void add(const fs::path& file) {
        std::error_code missing;
        if (!fs::is_regular_file(file, missing)) {
            // Sockets and pipes are never opened, not even to see what they hold.
            if (fs::exists(file, missing) && !Storage::shelf(file))
                m_result.ignored.push_back(file);
            else
                fail(file, ImageIntakeError::unreadableFile(file).description());
            return;
        }
        const auto shelf = destination(file);
        if (!shelf)
            m_result.ignored.push_back(file);
        else if (*shelf == Storage::Folder::images)
            addImage(file);
        else
            addVerbatim(file, *shelf);
    }

    BatchResult take() { return std::move(m_result); }

private:
    void fail(const fs::path& file, const QString& message) { m_result.failures.emplace_back(file, message); }

    void addImage(const fs::path& file) {
        if (m_storage.alreadySaved(file, Storage::Folder::images, m_target.images)) {
            m_result.duplicates.push_back(file);
            return;
        }
        const auto image = ImageIntake::read(file, m_longEdge, m_stop);
        if (!image) return fail(file, image.error().description());
        const auto written = m_storage.write(*image, Storage::Folder::images, m_target.images);
        if (!written) return fail(file, written.error().description());
        ++m_result.images;
        m_result.saved.push_back(*written);
    }

    void addVerbatim(const fs::path& file, Storage::Folder shelf) {
        const bool video = shelf == Storage::Folder::videos;
        const auto stored = m_storage.storeVerbatim(file, shelf, video ? m_target.videos : m_target.audio, {}, m_stop);
        if (!stored) return fail(file, stored.error().description());
        if (stored->wasAlreadyThere) {
            m_result.duplicates.push_back(file);
            return;
        }
        ++(video ? m_result.videos : m_result.sounds);
        m_result.saved.push_back(stored->url);
    }

    Storage& m_storage;
    const BatchTarget& m_target;
    const int m_longEdge;
    const std::stop_token m_stop;
    BatchResult m_result;
};

} // namespace

QString BatchResult::summary() const {
    const auto known = std::ssize(duplicates);
    const auto unread = std::ssize(failures);
    QStringList parts;
    if (images > 0) parts += translate("BatchSave", "Saved %n", "images", images);
    if (videos > 0) parts += translate("BatchSave", "%n video(s) to Videos", nullptr, videos);
    if (sounds > 0) parts += translate("BatchSave", "%n sound(s) to Audio", nullptr, sounds);
    if (known > 0) parts += translate("BatchSave", "%n already in your library", nullptr, known);
    if (unread > 0) parts += translate("BatchSave", "couldn't read %n", nullptr, unread);
    return parts.isEmpty() ? translate("BatchSave", "Nothing to save.") : parts.join(QStringLiteral(" · "));
}

std::vector<fs::path> filesIn(const std::vector<fs::path>& urls, const std::stop_token& stop) {
    std::vector<fs::path> files;
    for (const fs::path& url : urls) {
        std::error_code ignored;
        if (fs::is_directory(url, ignored))
            walk(url, files, stop);
        else
            files.push_back(url);
    }
    return files;
}

BatchResult performSave(const std::vector<fs::path>& urls, Storage& storage, const BatchTarget& target, int longEdge,
                        BatchProgress& progress, const std::stop_token& stop) {
    const auto files = filesIn(urls, stop);
    progress.total = static_cast<int>(files.size());
    Batch batch(storage, target, longEdge, stop);
    for (const fs::path& file : files) {
        if (stop.stop_requested()) break;
        batch.add(file);
        ++progress.done;
    }
    return batch.take();
}

} // namespace quillary
