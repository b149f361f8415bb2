#include "platform/SettingsStore.h"

#include "platform/PendingFile.h"
#include "platform/linux/Descriptor.h"
#include "platform/linux/HiddenFile.h"

#include <QSettings>
#include <QStandardPaths>
#include <array>
#include <fcntl.h>
#include <mutex>
#include <optional>
#include <sys/stat.h>

namespace quillary::platform {

namespace fs = std::filesystem;

namespace {

struct Stamp {
    qint64 milliseconds;
    off_t size;
};

std::optional<Stamp> stampOf(const fs::path& file) {
    struct stat status {};
    if (::stat(file.c_str(), &status) != 0) return {};
    return Stamp{qint64{status.st_mtim.tv_sec} * 1000 + status.st_mtim.tv_nsec / 1'000'000, status.st_size};
}

/// QSettings tells by size and date (in milliseconds) whether the file changed. Two versions within one tick of the
/// file system's clock could look the same to another process, so every version is dated after the one before.
void keepDistinct(const fs::path& file, const std::optional<Stamp>& before) {
    const auto after = stampOf(file);
    if (!before || !after || after->milliseconds > before->milliseconds) return;
    const qint64 next = before->milliseconds + 1;
    const std::array<timespec, 2> times{timespec{0, UTIME_OMIT}, timespec{next / 1000, (next % 1000) * 1'000'000}};
    ::utimensat(AT_FDCWD, file.c_str(), times.data(), 0);
}

class FileSettings final : public SettingsStore {
public:
    explicit FileSettings(fs::path file)
        : m_file(std::move(file)), m_settings(QString::fromUtf8(m_file.native()), QSettings::IniFormat) {}

    std::filesystem::path file() const override { return m_file; }

    QVariant value(const QString& key) const override {
        const std::scoped_lock lock(m_mutex);
        m_settings.sync();
        return m_settings.value(key);
    }

    void update(const QString& key, const std::function<QVariant(const QVariant&)>& change) override {
        const std::scoped_lock lock(m_mutex);
        const Descriptor othersWait = lockFile();
        m_settings.sync();
        const QVariant before = m_settings.value(key);
        const QVariant after = change(before);
        if (after == before) return;
        const auto stamp = stampOf(m_file);
        if (after.isValid())
            m_settings.setValue(key, after);
        else
            m_settings.remove(key);
        m_settings.sync();
        keepDistinct(m_file, stamp);
    }

private:
    /// Held until the descriptor goes, also when the process is killed.
    Descriptor lockFile() const {
        if (!createFolders(m_file.parent_path())) return {};
        const fs::path path = m_file.parent_path() / (m_file.stem().native() + ".lock");
        Descriptor file(::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
        if (file) lock(file.get());
        return file;
    }

    const fs::path m_file;
    mutable std::mutex m_mutex;
    mutable QSettings m_settings;
};

} // namespace

std::unique_ptr<SettingsStore> userSettings() {
    const QString configuration = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    return settingsIn(fs::path(configuration.toStdString()) / "quillary" / "quillary.conf");
}

std::unique_ptr<SettingsStore> settingsIn(const fs::path& file) {
    return std::make_unique<FileSettings>(file);
}

} // namespace quillary::platform
