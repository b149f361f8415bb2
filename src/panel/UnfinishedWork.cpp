#include "panel/UnfinishedWork.h"

#include "base/Text.h"
#include "base/Translation.h"
#include "panel/FileJobs.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace quillary {

namespace fs = std::filesystem;

UnfinishedWork::UnfinishedWork(fs::path notes, QThreadPool& work, QObject* parent)
    : QObject(parent), m_folder(std::move(notes)), m_reading(work) {}

void UnfinishedWork::read(const fs::path& root) {
    if (m_folder.empty()) return;
    m_reading.every(
        [folder = m_folder, root](const std::stop_token&) {
            std::vector<Left> left;
            for (platform::HeldFile& notes : platform::HeldFile::takeAll(folder, FileJobs::suffix)) {
                auto record = JobRecord::of(notes.contents());
                if (record && record->root != root) continue;
                // Folders that had not been walked yet count as what is in them.
                if (record) record->files = filesIn(record->files);
                if (record && (!record->files.empty() || record->kind == JobRecord::Kind::libraryCopy))
                    left.push_back({*std::move(record), std::move(notes)});
                else
                    notes.remove();
            }
            return left;
        },
        [this](std::vector<Left> left) {
            if (left.empty()) return;
            std::ranges::move(left, std::back_inserter(m_left));
            Q_EMIT changed();
        });
}

void UnfinishedWork::resume() {
    // Noted anew before the old notes go.
    for (const Left& left : m_left) Q_EMIT resumed(left.record);
    forget();
}

void UnfinishedWork::dismiss() {
    for (const Left& left : m_left) FileJobs::removeKept(left.record.files, m_folder);
    forget();
}

void UnfinishedWork::forget() {
    for (Left& left : m_left) left.notes.remove();
    m_left.clear();
    Q_EMIT changed();
}

QString UnfinishedWork::text() const {
    qsizetype files = 0;
    bool copies = false;
    for (const Left& left : m_left) {
        copies |= left.record.kind == JobRecord::Kind::libraryCopy;
        files += std::ssize(left.record.files);
    }
    QStringList parts;
    if (files > 0) parts += translate("Unfinished", "%n file(s) did not get into your library", nullptr, files);
    if (copies) parts += translate("Unfinished", "the copy of your library is not complete");
    QString text = parts.join(QStringLiteral(" · "));
    if (!text.isEmpty()) text[0] = text[0].toUpper();
    return text;
}

QStringList UnfinishedWork::files() const {
    QStringList files;
    for (const Left& left : m_left) {
        for (const fs::path& file : left.record.files)
            files += shown(file.parent_path() == m_folder ? file.filename() : file);
        if (left.record.kind == JobRecord::Kind::libraryCopy) files += shown(left.record.from);
    }
    return files;
}

} // namespace quillary
