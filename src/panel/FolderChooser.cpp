#include "panel/FolderChooser.h"

#include "base/Text.h"

#include <QDir>
#include <algorithm>
#include <utility>

namespace quillary {

namespace fs = std::filesystem;

void FolderChooser::ask(QObject* context, const Question& question, Answer answer) {
    cancel();
    m_context = context;
    m_question = question;
    m_answer = std::move(answer);
    std::error_code missing;
    enter(fs::is_directory(question.start, missing) ? question.start : pathOf(QDir::homePath()));
}

void FolderChooser::enter(fs::path folder) {
    m_folder = std::move(folder);
    m_folders.clear();
    m_files.clear();
    m_picked.clear();
    std::error_code failed;
    for (fs::directory_iterator at(m_folder, failed), end; !failed && at != end; at.increment(failed)) {
        const fs::path name = at->path().filename();
        std::error_code gone;
        if (name.native().starts_with('.')) continue;
        if (at->is_directory(gone))
            m_folders.push_back(name);
        else if (offers(name) && at->is_regular_file(gone))
            m_files.push_back(name);
    }
    std::ranges::sort(m_folders);
    std::ranges::sort(m_files);
    Q_EMIT changed();
    Q_EMIT pickedChanged();
}

bool FolderChooser::offers(const fs::path& file) const {
    if (!picksFiles()) return false;
    const QStringList& wanted = m_question.extensions;
    return wanted.isEmpty() || wanted.contains(QString::fromStdString(lowercaseExtension(file)));
}

bool FolderChooser::isFile(int row) const {
    return row >= std::ssize(m_folders) && row < std::ssize(m_folders) + std::ssize(m_files);
}

std::vector<fs::path> FolderChooser::pickedFiles() const {
    std::vector<fs::path> files;
    for (const int row : m_picked)
        files.push_back(m_folder / m_files[static_cast<std::size_t>(row) - m_folders.size()]);
    return files;
}

QString FolderChooser::folder() const {
    return shown(m_folder);
}

QStringList FolderChooser::entries() const {
    QStringList names;
    for (const fs::path& name : m_folders) names.append(shown(name) + u'/');
    for (const fs::path& name : m_files) names.append(shown(name));
    return names;
}

void FolderChooser::open(int row) {
    if (!isFile(row) || m_question.kind != Kind::files) return finishWith(row);
    if (!m_picked.removeOne(row)) {
        m_picked.append(row);
        std::ranges::sort(m_picked);
    }
    Q_EMIT pickedChanged();
}

void FolderChooser::finishWith(int row) {
    if (row >= 0 && row < std::ssize(m_folders)) return enter(m_folder / m_folders[static_cast<std::size_t>(row)]);
    if (!isFile(row)) return;
    if (!m_picked.contains(row)) m_picked.append(row);
    std::ranges::sort(m_picked);
    pick();
}

void FolderChooser::up() {
    enter(m_folder.parent_path());
}

bool FolderChooser::go(const QString& path) {
    std::error_code missing;
    const fs::path wanted = pathOf(path.trimmed());
    if (!wanted.is_absolute()) return false;
    if (fs::is_directory(wanted, missing))
        enter(wanted);
    else if (picksFiles() && fs::is_regular_file(wanted, missing))
        finish({wanted});
    else
        return false;
    return true;
}

void FolderChooser::pick() {
    if (!active() || (picksFiles() && m_picked.isEmpty())) return;
    finish(picksFiles() ? pickedFiles() : std::vector{m_folder});
}

void FolderChooser::cancel() {
    if (active()) finish({});
}

void FolderChooser::finish(const std::vector<fs::path>& picked) {
    const Answer answer = std::exchange(m_answer, nullptr);
    Q_EMIT changed();
    if (m_context && answer) answer(picked);
}

} // namespace quillary
