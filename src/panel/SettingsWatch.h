#pragma once

#include "platform/OpenFolder.h"

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>
#include <filesystem>
#include <functional>
#include <memory>

namespace quillary {

/// Tells that the file of the settings may have changed, whoever wrote it, once for a burst of changes. Main thread.
class SettingsWatch : public QObject {
public:
    /// Nothing is told where the file is empty or its folder cannot be watched.
    SettingsWatch(const std::filesystem::path& file, std::function<void()> changed, QObject* parent = nullptr);

private:
    void read();

    const std::string m_name;
    platform::FolderWatch m_folder;
    std::unique_ptr<QSocketNotifier> m_notifier;
    QTimer m_burst;
};

} // namespace quillary
