#pragma once

#include <QString>
#include <filesystem>

namespace quillary {

namespace platform {
class SettingsStore;
}

/// The typed reading of the user's settings. Read afresh at every use, so that a change applies at once everywhere.
class AppSettings {
public:
    explicit AppSettings(platform::SettingsStore& store) : m_store(store) {}

    /// How many files Recent keeps; 0 means all.
    int recentLimit() const;
    /// Pixels of a rasterised vector's longer side, 256 to 8192.
    int vectorLongEdge() const;
    /// 0 to 1.
    double previewVolume() const;
    bool openOnLibrary() const;
    bool favouritesOnly() const;
    /// Whether the pictures that were staged last are kept; they are unless the user said no.
    bool pasteHistory() const;
    /// What texts call the editor that files are dragged into: one line, never empty.
    QString editorName() const;
    /// The ONNX file that finds subjects; empty for none. It need not exist.
    std::filesystem::path subjectModel() const;
    /// Whether the panel stays in front of other windows.
    bool keepAbove() const;

    platform::SettingsStore& store() const { return m_store; }

private:
    platform::SettingsStore& m_store;
};

namespace SettingsKey {
inline const QString rootFolderBookmark = QStringLiteral("rootFolderBookmark");
inline const QString extraScopeBookmarks = QStringLiteral("extraScopeBookmarks");
inline const QString blocksLastRootPath = QStringLiteral("blocksLastRootPath");
inline const QString favouritePaths = QStringLiteral("favouritePaths");
inline const QString favouritesOnly = QStringLiteral("favouritesOnly");
inline const QString recentLimit = QStringLiteral("recentLimit");
inline const QString vectorLongEdge = QStringLiteral("vectorLongEdge");
inline const QString previewVolume = QStringLiteral("previewVolume");
inline const QString openOnLibrary = QStringLiteral("openOnLibrary");
inline const QString pasteHistory = QStringLiteral("pasteHistory");
inline const QString editorName = QStringLiteral("editorName");
inline const QString keepAbove = QStringLiteral("keepAbove");
inline const QString subjectModel = QStringLiteral("subjectModel");
} // namespace SettingsKey

} // namespace quillary
