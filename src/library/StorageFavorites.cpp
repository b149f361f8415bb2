#include "base/Text.h"
#include "library/AppSettings.h"
#include "library/Storage.h"
#include "platform/SettingsStore.h"

namespace quillary {

namespace fs = std::filesystem;

namespace {

/// Whether a path is already as `lexically_normal` would write it.
bool isNormal(std::string_view folder) {
    return folder.starts_with('/') && folder.find("//") == std::string_view::npos &&
           folder.find("/./") == std::string_view::npos && folder.find("/../") == std::string_view::npos &&
           !folder.ends_with("/.") && !folder.ends_with("/..");
}

} // namespace

QString Storage::favoriteKey(const FileLocation& file, const fs::path& root) {
    const std::string_view below = root.native();
    std::string path;
    if (isNormal(file.folderPath())) {
        path = file.native();
    } else {
        std::error_code failed;
        path = fs::absolute(file.path(), failed).lexically_normal().native();
    }
    if (!below.empty() && path.size() > below.size() + 1 && path.starts_with(below) && path[below.size()] == '/')
        path.erase(0, below.size() + 1);
    return QString::fromStdString(path);
}

QString Storage::favoriteKey(const fs::path& file) {
    const auto root = this->root();
    if (!root) return favoriteKey(file, fs::path());
    const auto own = ownFile(file);
    return favoriteKey(own ? *own : file, *root);
}

QSet<QString> Storage::favorites() const {
    const QStringList keys = m_settings.value(SettingsKey::favouritePaths).toStringList();
    return {keys.begin(), keys.end()};
}

bool Storage::toggleFavorite(const fs::path& file) {
    const QString key = favoriteKey(file);
    bool isFavorite = false;
    m_settings.update(SettingsKey::favouritePaths, [&](const QVariant& stored) -> QVariant {
        QStringList keys = stored.toStringList();
        isFavorite = keys.removeAll(key) == 0;
        if (isFavorite) keys.append(key);
        return keys;
    });
    return isFavorite;
}

void Storage::setFavorites(std::span<const fs::path> files, bool favorite) {
    QStringList changed;
    for (const fs::path& file : files) changed.append(favoriteKey(file));
    m_settings.update(SettingsKey::favouritePaths, [&](const QVariant& stored) -> QVariant {
        QStringList keys = stored.toStringList();
        for (const QString& key : changed) {
            if (!favorite)
                keys.removeAll(key);
            else if (!keys.contains(key))
                keys.append(key);
        }
        return keys;
    });
}

} // namespace quillary
