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
    std::error_code failed;
    for (fs::directory_iterator at(m_folder, failed), end; !failed && at != end; at.increment(failed)) {
        const fs::path name = at->path().filename();
        std::error_code gone;
        if (name.native().starts_with('.')) continue;
        if (at->is_directory(gone))
            m_folders.push_back(name);
        else if (picksFiles() && at->is_regular_file(gone))
            m_files.push_back(name);
    }
    std::ranges::sort(m_folders);
    std::ranges::sort(m_files);
    Q_EMIT changed();
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
    const auto index = static_cast<std::size_t>(row);
    if (row < 0) return;
    if (index < m_folders.size())
        enter(m_folder / m_folders[index]);
    else if (index - m_folders.size() < m_files.size())
        finish({m_folder / m_files[index - m_folders.size()]});
}

void FolderChooser::up() {
    enter(m_folder.parent_path());
}

bool FolderChooser::go(const QString& path) {
    std::error_code missing;
    const fs::path wanted = pathOf(path.trimmed());
    if (!wanted.is_absolute() || !fs::is_directory(wanted, missing)) return false;
    enter(wanted);
    return true;
}

void FolderChooser::pickFolder() {
    if (active() && !picksFiles()) finish({m_folder});
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
