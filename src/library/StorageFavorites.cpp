#include "base/Text.h"
#include "library/AppSettings.h"
#include "library/Storage.h"
#include "platform/SettingsStore.h"

namespace quillary {

namespace fs = std::filesystem;

namespace {

/// Whether an absolute path holds no ".", ".." or empty component.
bool isNormal(std::string_view folder) {
    if (!folder.starts_with('/')) return false;
    for (std::size_t slash = 0; slash != std::string_view::npos; slash = folder.find('/', slash + 1)) {
        const std::string_view rest = folder.substr(slash + 1);
        if (rest.starts_with('/') || rest == "." || rest == "..") return false;
        if (rest.starts_with("./") || rest.starts_with("../")) return false;
    }
    return true;
}

} // namespace

QString Storage::favoriteKey(const FileLocation& file, const fs::path& root) {
    const std::string_view library = root.native();
    const std::string_view folder = file.folderPath();
    if (!isNormal(folder)) {
        std::error_code failed;
        const fs::path path = fs::absolute(file.path(), failed).lexically_normal();
        if (!isNormal(path.parent_path().native())) return shown(path);
        return favoriteKey(FileLocation(path), root);
    }
    std::string key;
    if (folder.size() > library.size() && folder.starts_with(library) && folder[library.size()] == '/')
        key.append(folder.substr(library.size() + 1)).append(1, '/').append(file.name());
    else if (folder == library)
        key = file.name();
    else
        key = file.native();
    return QString::fromStdString(key);
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
