#include "values/CollectionNode.h"

#include "base/Text.h"

#include <algorithm>
#include <set>

namespace quillary {

namespace {

QString below(const QString& parent, const QString& name) {
    return parent + collectionSeparator.toString() + name;
}

/// Adds the folders `names[depth…]` below `siblings`, keeping them ascending.
void insert(std::vector<CollectionNode>& siblings, const QStringList& names, qsizetype depth, const QString& parent) {
    if (depth == names.size()) return;
    const QString& name = names[depth];
    const QString path = parent.isEmpty() ? name : below(parent, name);
    auto place = std::ranges::lower_bound(siblings, name, {}, &CollectionNode::name);
    if (place == siblings.end() || place->name != name) place = siblings.insert(place, {name, path, {}});
    insert(place->children, names, depth + 1, path);
}

QStringList folderNames(const QString& path) {
    return path.split(collectionSeparator.toString());
}

} // namespace

std::vector<CollectionNode> collectionTree(const QStringList& collections) {
    std::vector<CollectionNode> roots;
    for (const QString& path : collections) insert(roots, folderNames(path), 0, {});
    return roots;
}

std::vector<FolderEntry> childFolders(const std::optional<QString>& parent, const QStringList& collections) {
    const QString prefix = parent ? below(*parent, {}) : QString();
    std::set<QString> names;
    for (const QString& path : collections) {
        if (!path.startsWith(prefix)) continue;
        const QString name = path.sliced(prefix.size()).section(collectionSeparator.toString(), 0, 0);
        if (!name.isEmpty()) names.insert(name);
    }
    std::vector<FolderEntry> entries;
    for (const QString& name : names) entries.emplace_back(name, prefix + name);
    return entries;
}

QStringList folderMatches(const QString& query, const QStringList& collections) {
    const QString wanted = foldedForSearch(query);
    QStringList matches;
    for (const QString& path : collections) {
        const QStringList names = folderNames(path);
        if (std::ranges::any_of(names, [&](const QString& name) { return foldedForSearch(name).contains(wanted); }))
            matches.append(path);
    }
    matches.sort();
    return matches;
}

QString folderLeaf(const QString& path) {
    return folderNames(path).constLast();
}

std::vector<Crumb> crumbs(const std::optional<QString>& path) {
    if (!path) return {};
    std::vector<Crumb> steps;
    for (const QString& name : folderNames(*path))
        steps.emplace_back(name, steps.empty() ? name : below(steps.back().path, name));
    return steps;
}

QHash<QString, int> rollUp(const QStringList& paths) {
    QHash<QString, int> counts;
    for (const QString& path : paths)
        for (const Crumb& step : crumbs(path)) ++counts[step.path];
    return counts;
}

bool liesIn(const std::optional<QString>& collection, const QString& path) {
    if (!collection || !collection->startsWith(path)) return false;
    return collection->size() == path.size() ||
           QStringView(*collection).sliced(path.size()).startsWith(collectionSeparator);
}

} // namespace quillary
