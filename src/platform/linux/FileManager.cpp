#include "platform/FileManager.h"

#include "base/FileUrl.h"
#include "platform/linux/SessionBus.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDesktopServices>
#include <QObject>
#include <QStringList>
#include <QUrl>

namespace quillary::platform {

namespace {

const QString service = QStringLiteral("org.freedesktop.FileManager1");
const QString path = QStringLiteral("/org/freedesktop/FileManager1");

void openFolder(const std::filesystem::path& folder) {
    QDesktopServices::openUrl(QUrl::fromEncoded(fileUrl(folder)));
}

class BusFileManager final : public FileManager {
public:
    void show(const std::vector<std::filesystem::path>& files) override {
        if (files.empty()) return;
        const std::filesystem::path folder = files.front().parent_path();
        auto bus = sessionBus();
        if (!bus) return openFolder(folder);
        QStringList uris;
        for (const auto& file : files) uris.append(QString::fromLatin1(fileUrl(file)));
        auto call = QDBusMessage::createMethodCall(service, path, service, QStringLiteral("ShowItems"));
        call << uris << QString();
        auto* watcher = new QDBusPendingCallWatcher(bus->asyncCall(call), &m_calls);
        QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher, [watcher, folder] {
            watcher->deleteLater();
            if (watcher->isError()) openFolder(folder);
        });
    }

private:
    QObject m_calls;
};

} // namespace

std::unique_ptr<FileManager> systemFileManager() {
    return std::make_unique<BusFileManager>();
}

} // namespace quillary::platform
