#pragma once

#include "library/LibraryFilter.h"
#include "panel/SettingsWatch.h"

#include <QObject>
#include <QtQml/qqml.h>
#include <filesystem>
#include <span>

namespace quillary {

class AppSettings;
class Storage;

/// The user's favourites, one truth for every shelf, and whether only they are shown. Main thread.
class Favorites : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("given by the model")
    /// Kept in the settings.
    Q_PROPERTY(bool only READ only WRITE setOnly NOTIFY onlyChanged FINAL)

public:
    /// Both outlive the object.
    Favorites(Storage& storage, AppSettings& settings, QObject* parent = nullptr);

    /// As stored: paths relative to the library root.
    const QSet<QString>& keys() const { return m_keys; }
    bool contains(const FileLocation& file) const { return m_files.contains(file); }
    void toggle(const std::filesystem::path& file);
    void set(std::span<const std::filesystem::path> files, bool favorite);

    bool only() const { return m_only; }
    void setOnly(bool on);

    /// Reads the stored keys again. What another process stores is read by itself.
    void reload();
    /// Whose files the keys name from now on.
    void follow(const std::filesystem::path& root);

Q_SIGNALS:
    void changed();
    void onlyChanged();

private:
    Storage& m_storage;
    AppSettings& m_settings;
    std::filesystem::path m_root;
    QSet<QString> m_keys;
    FavoriteFiles m_files; ///< `m_keys` below `m_root`
    bool m_only = false;
    SettingsWatch m_watch;
};

} // namespace quillary
