#include "library/ui/FolderListModel.h"

#include "base/Text.h"
#include "values/CollectionNode.h"

#include <algorithm>

namespace quillary {

namespace {

using Row = FolderListModel::Row;
using Place = Shelf::Place;

void appendTree(std::vector<Row>& rows, const std::vector<CollectionNode>& nodes, const QHash<QString, int>& counts,
                int depth) {
    for (const CollectionNode& node : nodes) {
        rows.push_back({Place::Collection, node.name, node.path, depth, counts.value(node.path)});
        appendTree(rows, node.children, counts, depth + 1);
    }
}

QString symbolOf(Place place) {
    switch (place) {
    case Place::All:
        return QStringLiteral("square.grid.2x2");
    case Place::Unfiled:
        return QStringLiteral("tray");
    case Place::Recent:
        return QStringLiteral("clock.arrow.circlepath");
    case Place::Collection:
        return QStringLiteral("folder");
    case Place::BuiltIn:
        return QStringLiteral("shippingbox");
    }
    return {};
}

} // namespace

FolderListModel::FolderListModel(QObject* parent) : RowListModel(parent) {
    m_update.setSingleShot(true);
    m_update.setInterval(0);
    connect(&m_update, &QTimer::timeout, this, &FolderListModel::update);
}

void FolderListModel::setShelf(Shelf* shelf) {
    if (m_shelf == shelf) return;
    if (m_shelf) m_shelf->disconnect(&m_update);
    m_shelf = shelf;
    const auto start = qOverload<>(&QTimer::start);
    if (m_shelf)
        for (const auto changed : {&Shelf::listed, &Shelf::placeChanged, &Shelf::searchChanged}) connect(m_shelf, changed, &m_update, start);
    update();
    Q_EMIT shelfChanged();
}

void FolderListModel::setContent(Content content) {
    if (m_content == content) return;
    m_content = content;
    update();
    Q_EMIT contentChanged();
}

void FolderListModel::setParentPath(const QString& path) {
    if (m_parentPath == path) return;
    m_parentPath = path;
    update();
    Q_EMIT parentPathChanged();
}

void FolderListModel::setActive(bool on) {
    if (m_active == on) return;
    m_active = on;
    update();
    Q_EMIT activeChanged();
}

std::vector<Row> FolderListModel::rows() const {
    if (!m_shelf || !m_active) return {};
    const QHash<QString, int>& counts = m_shelf->counts();
    if (m_content == Content::Targets) return targets();
    if (m_content == Content::Here && !m_shelf->search().trimmed().isEmpty()) return matches();
    const auto extras = m_shelf->extraPlaces();
    std::vector<Row> found;
    const auto add = [&](Place place) {
        for (const Shelf::ExtraPlace& extra : extras)
            if (extra.place == place)
                found.push_back(
                    {place, extra.label, place == Place::BuiltIn ? extra.label : QString(), 0, extra.count});
    };
    if (m_content == Content::Filters) found.push_back({Place::All, tr("All"), {}, 0, m_shelf->count()});
    found.push_back({Place::Unfiled, tr("Unfiled"), {}, 0, m_shelf->unfiledCount()});
    if (m_content == Content::Here) add(Place::Recent);
    if (m_content == Content::Here)
        for (const FolderEntry& folder : childFolders(m_shelf->collectionFilter().collection(), m_shelf->collections()))
            found.push_back({Place::Collection, folder.name, folder.path, 0, counts.value(folder.path), false,
                             m_shelf->missingFolders().contains(folder.path)});
    else
        appendTree(found, collectionTree(m_shelf->collections()), counts, 0);
    add(Place::BuiltIn);
    return found;
}

std::vector<Row> FolderListModel::matches() const {
    const Place place = m_shelf->place();
    if (place != Place::All && place != Place::Collection) return {};
    const QString here = m_shelf->placePath();
    QStringList folders;
    for (const QString& collection : m_shelf->collections())
        for (const Crumb& step : crumbs(collection)) folders.append(step.path);
    folders.removeDuplicates();
    std::vector<Row> found;
    for (const QString& path : folderMatches(m_shelf->search().trimmed(), folders)) {
        if (!here.isEmpty() && (path == here || !liesIn(path, here))) continue;
        found.push_back({Place::Collection, path, path, 0, m_shelf->counts().value(path), false,
                         m_shelf->missingFolders().contains(path)});
    }
    return found;
}

std::vector<Row> FolderListModel::targets() const {
    const QHash<QString, int>& counts = m_shelf->counts();
    const QStringList& folders = m_shelf->collectionFolders();
    std::vector<Row> found;
    if (m_parentPath.isEmpty())
        found.push_back({Place::Unfiled, tr("Unfiled"), {}, 0, m_shelf->unfiledCount()});
    else
        found.push_back({Place::Collection, folderLeaf(m_parentPath), m_parentPath, 0, counts.value(m_parentPath)});
    const auto parent = m_parentPath.isEmpty() ? std::nullopt : std::optional(m_parentPath);
    for (const FolderEntry& folder : childFolders(parent, folders)) {
        // Ascending: what lies in the folder comes first after its path and a separator.
        const QString inside = folder.path + collectionSeparator.toString();
        const auto next = std::ranges::lower_bound(folders, inside);
        const bool nested = next != folders.end() && next->startsWith(inside);
        found.push_back({Place::Collection, folder.name, folder.path, 0, counts.value(folder.path), nested});
    }
    return found;
}

void FolderListModel::update() {
    const auto before = m_rows.size();
    takeOver(m_rows, rows(), &Row::sameFolder);
    if (m_rows.size() != before) Q_EMIT countChanged();
}

int FolderListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : count();
}

QVariant FolderListModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
    const Row& row = m_rows[static_cast<std::size_t>(index.row())];
    switch (role) {
    case PlaceRole:
        return static_cast<int>(row.place);
    case Qt::DisplayRole:
    case LabelRole:
        return row.label;
    case PathRole:
        return row.path;
    case DepthRole:
        return row.depth;
    case CountRole:
        return row.count;
    case NestedRole:
        return row.nested;
    case SymbolRole:
        return row.missing ? QStringLiteral("folder.badge.questionmark") : symbolOf(row.place);
    default:
        return {};
    }
}

QHash<int, QByteArray> FolderListModel::roleNames() const {
    return {{PlaceRole, "place"}, {LabelRole, "label"},   {PathRole, "path"},    {DepthRole, "depth"},
            {CountRole, "total"}, {SymbolRole, "symbol"}, {NestedRole, "nested"}};
}

} // namespace quillary
