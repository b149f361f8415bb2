#pragma once

#include "values/LibraryItem.h"

#include <QAbstractListModel>
#include <QtQmlIntegration>
#include <functional>
#include <memory>
#include <vector>

namespace quillary {

/// A shelf's visible items as a list model. A new list is taken over by inserting and removing what differs, so that
/// scroll position, selection and a running drag survive; the model is never reset. Main thread.
class ItemListModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("given by the model")
    Q_PROPERTY(int count READ count NOTIFY countChanged FINAL)

public:
    enum Role { UrlRole = Qt::UserRole, NameRole, CollectionRole, FormatRole, FavoriteRole, BuiltInRole, StampRole };

    using IsFavorite = std::function<bool(const LibraryItem&)>;
    explicit ItemListModel(IsFavorite isFavorite, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;
    int count() const { return static_cast<int>(m_rows.size()); }

    /// Shows the given rows, ascending, of the list.
    void show(std::shared_ptr<const LibraryItems> items, std::vector<quint32> rows);
    /// Shows the whole list.
    void show(std::shared_ptr<const LibraryItems> items);
    /// Every row's star may have changed.
    void favoritesChanged();

    const LibraryItem& item(int row) const { return (*m_items)[m_rows[static_cast<std::size_t>(row)]]; }
    /// Null when no row shows that file.
    const LibraryItem* find(const std::filesystem::path& url) const;

Q_SIGNALS:
    void countChanged();

private:
    IsFavorite m_isFavorite;
    std::shared_ptr<const LibraryItems> m_items = std::make_shared<const LibraryItems>();
    std::vector<quint32> m_rows;
};

} // namespace quillary
