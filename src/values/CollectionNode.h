#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

namespace quillary {

/// A collection path names the folders from the shelf folder down, joined by " / ". Everything here works on such texts
/// alone, never on the disk. Names ascend by code point.

/// A node of a shelf's tree of collections, identified by its path.
struct CollectionNode {
    QString name; ///< last folder name of the path
    QString path;
    std::vector<CollectionNode> children; ///< ascending by name
};

struct FolderEntry {
    QString name;
    QString path;
    bool operator==(const FolderEntry&) const = default;
};

/// One step of the path bar.
struct Crumb {
    QString label;
    QString path;
    bool operator==(const Crumb&) const = default;
};

/// The forest of the given paths: every prefix of a path becomes a node.
std::vector<CollectionNode> collectionTree(const QStringList& collections);

/// The distinct folders directly below `parent` (none: the top level), ascending by name.
std::vector<FolderEntry> childFolders(const std::optional<QString>& parent, const QStringList& collections);

/// The paths of which any folder name contains the query, whatever its case; ascending.
QStringList folderMatches(const QString& query, const QStringList& collections);

QString folderLeaf(const QString& path);
std::vector<Crumb> crumbs(const std::optional<QString>& path);

/// Items per collection path, each counted towards every prefix of its path.
QHash<QString, int> rollUp(const QStringList& paths);

/// Whether an item filed under `collection` shows in the collection `path`, its sub-collections included.
bool liesIn(const std::optional<QString>& collection, const QString& path);

} // namespace quillary
