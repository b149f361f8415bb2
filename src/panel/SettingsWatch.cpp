#include "panel/SettingsWatch.h"

#include "platform/PendingFile.h"

#include <chrono>

namespace quillary {

using namespace std::chrono_literals;

SettingsWatch::SettingsWatch(const std::filesystem::path& file, std::function<void()> changed, QObject* parent)
    : QObject(parent), m_name(file.filename().native()) {
    if (file.empty() || !platform::createFolders(file.parent_path()) || m_folder.add(file.parent_path()) < 0) return;
    m_burst.setSingleShot(true);
    m_burst.setInterval(100ms);
    connect(&m_burst, &QTimer::timeout, this, std::move(changed));
    m_notifier = std::make_unique<QSocketNotifier>(m_folder.descriptor(), QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &SettingsWatch::read);
}

void SettingsWatch::read() {
    for (const platform::FolderWatch::Change& change : m_folder.read())
        if (change.name == m_name || change.kind == platform::FolderWatch::Change::Kind::lost) m_burst.start();
}

} // namespace quillary
