#include "library/ui/FolderListModel.h"

#include "values/CollectionNode.h"

#include <algorithm>

namespace quillary {

namespace {

using Row = FolderListModel::Row;
using Kind = FolderListModel::Kind;

void appendTree(std::vector<Row>& rows, const std::vector<CollectionNode>& nodes, const QHash<QString, int>& counts,
                int depth) {
    for (const CollectionNode& node : nodes) {
        rows.push_back({Kind::Collection, node.name, node.path, depth, counts.value(node.path)});
        appendTree(rows, node.children, counts, depth + 1);
    }
}

QString symbolOf(Kind kind) {
    switch (kind) {
    case Kind::All:
        return QStringLiteral("square.grid.2x2");
    case Kind::Unfiled:
        return QStringLiteral("tray");
    case Kind::Recent:
        return QStringLiteral("clock.arrow.circlepath");
    case Kind::Collection:
        return QStringLiteral("folder");
    case Kind::BuiltIn:
        return QStringLiteral("shippingbox");
    }
    return {};
}

} // namespace

FolderListModel::FolderListModel(QObject* parent) : QAbstractListModel(parent) {
    m_update.setSingleShot(true);
    m_update.setInterval(0);
    connect(&m_update, &QTimer::timeout, this, &FolderListModel::update);
}

void FolderListModel::setModel(PanelModel* model) {
    if (m_model == model) return;
    if (m_model) m_model->disconnect(&m_update);
    m_model = model;
    const auto start = qOverload<>(&QTimer::start);
    if (m_model) {
        for (const auto changed : {&PanelModel::libraryChanged, &PanelModel::recentChanged, &PanelModel::builtInChanged,
                                   &PanelModel::collectionsChanged, &PanelModel::collectionFilterChanged})
            connect(m_model, changed, &m_update, start);
    }
    update();
    Q_EMIT modelChanged();
}

void FolderListModel::setContent(Content content) {
    if (m_content == content) return;
    m_content = content;
    update();
    Q_EMIT contentChanged();
}

void FolderListModel::setActive(bool on) {
    if (m_active == on) return;
    m_active = on;
    update();
    Q_EMIT activeChanged();
}

std::vector<Row> FolderListModel::rows() const {
    if (!m_model || !m_active) return {};
    const auto unfiled = static_cast<int>(
        std::ranges::count_if(m_model->library(), [](const LibraryItem& item) { return !item.collection; }));
    const QHash<QString, int> counts = m_model->imageCounts();
    std::vector<Row> found;
    if (m_content == Content::Filters)
        found.push_back({Kind::All, tr("All"), {}, 0, static_cast<int>(m_model->library().size())});
    found.push_back({Kind::Unfiled, tr("Unfiled"), {}, 0, unfiled});
    if (m_content == Content::Here) {
        found.push_back({Kind::Recent, tr("Recent"), {}, 0, static_cast<int>(m_model->recent().size())});
        for (const FolderEntry& folder : childFolders(m_model->collectionFilter().collection(), m_model->collections()))
            found.push_back({Kind::Collection, folder.name, folder.path, 0, counts.value(folder.path)});
    } else {
        appendTree(found, collectionTree(m_model->collections()), counts, 0);
    }
    if (m_content == Content::Targets) return found;
    for (const QString& set : m_model->builtInSets()) {
        const auto icons = std::ranges::count(m_model->builtIn(), std::optional(set), &LibraryItem::collection);
        found.push_back({Kind::BuiltIn, set, set, 0, static_cast<int>(icons)});
    }
    return found;
}

void FolderListModel::update() {
    std::vector<Row> now = rows();
    const auto same = &Row::sameFolder;
    const auto head = std::ranges::mismatch(m_rows, now, same).in1 - m_rows.begin();
    const auto shorter = static_cast<std::ptrdiff_t>(std::min(m_rows.size(), now.size()));
    std::ptrdiff_t tail = 0;
    while (tail < shorter - head && m_rows.end()[-1 - tail].sameFolder(now.end()[-1 - tail])) ++tail;

    const bool otherCount = m_rows.size() != now.size();
    const auto oldEnd = static_cast<int>(m_rows.size()) - static_cast<int>(tail);
    const auto newEnd = static_cast<int>(now.size()) - static_cast<int>(tail);
    const auto first = static_cast<int>(head);
    if (oldEnd > first) {
        beginRemoveRows({}, first, oldEnd - 1);
        m_rows.erase(m_rows.begin() + first, m_rows.begin() + oldEnd);
        endRemoveRows();
    }
    if (newEnd > first) {
        beginInsertRows({}, first, newEnd - 1);
        m_rows.insert(m_rows.begin() + first, now.begin() + first, now.begin() + newEnd);
        endInsertRows();
    }
    for (std::size_t row = 0; row < now.size(); ++row) {
        if (m_rows[row] == now[row]) continue;
        m_rows[row] = std::move(now[row]);
        Q_EMIT dataChanged(index(static_cast<int>(row)), index(static_cast<int>(row)));
    }
    if (otherCount) Q_EMIT countChanged();
}

int FolderListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : count();
}

QVariant FolderListModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
    const Row& row = m_rows[static_cast<std::size_t>(index.row())];
    switch (role) {
    case KindRole:
        return static_cast<int>(row.kind);
    case Qt::DisplayRole:
    case LabelRole:
        return row.label;
    case PathRole:
        return row.path;
    case DepthRole:
        return row.depth;
    case CountRole:
        return row.count;
    case SymbolRole:
        return symbolOf(row.kind);
    default:
        return {};
    }
}

QHash<int, QByteArray> FolderListModel::roleNames() const {
    return {{KindRole, "kind"},   {LabelRole, "label"}, {PathRole, "path"},
            {DepthRole, "depth"}, {CountRole, "total"}, {SymbolRole, "symbol"}};
}

} // namespace quillary
