#include "panel/Favorites.h"

#include "library/AppSettings.h"
#include "library/Storage.h"
#include "platform/SettingsStore.h"

namespace quillary {

Favorites::Favorites(Storage& storage, AppSettings& settings, QObject* parent)
    : QObject(parent)
    , m_storage(storage)
    , m_settings(settings)
    , m_keys(storage.favorites())
    , m_only(settings.favouritesOnly())
    , m_watch(settings.store().file(), [this] {
        if (m_storage.favorites() != m_keys) reload();
    }) {}

void Favorites::toggle(const std::filesystem::path& file) {
    m_storage.toggleFavorite(file);
    reload();
}

void Favorites::set(std::span<const std::filesystem::path> files, bool favorite) {
    m_storage.setFavorites(files, favorite);
    reload();
}

void Favorites::setOnly(bool on) {
    m_settings.store().setValue(SettingsKey::favouritesOnly, on);
    m_only = on;
    Q_EMIT onlyChanged();
}

void Favorites::reload() {
    m_keys = m_storage.favorites();
    m_files = {m_keys, m_root};
    Q_EMIT changed();
}

void Favorites::follow(const std::filesystem::path& root) {
    if (m_root == root) return;
    m_root = root;
    m_files = {m_keys, m_root};
    Q_EMIT changed();
}

} // namespace quillary
