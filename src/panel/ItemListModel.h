#pragma once

#include "values/LibraryItem.h"

#include <QAbstractListModel>
#include <QtQmlIntegration/qqmlintegration.h>
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
    enum Role {
        UrlRole = Qt::UserRole,
        NameRole,
        CollectionRole,
        FormatRole,
        FavoriteRole,
        SelectedRole,
        BuiltInRole,
        StampRole,
        DetailsRole
    };

    /// What the list does not know of its items itself; each may be left out.
    struct Answers {
        std::function<bool(const FileLocation&)> isFavorite = {};
        std::function<bool(const FileLocation&)> isSelected = {};
        std::function<QVariant(const LibraryItem&)> details = {}; ///< of the shelf's own kind
    };
    explicit ItemListModel(Answers answers, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;
    int count() const { return static_cast<int>(m_rows.size()); }

    /// Shows the given rows of the list, in this order.
    void show(std::shared_ptr<const LibraryItems> items, std::vector<quint32> rows);
    /// Shows the whole list.
    void show(std::shared_ptr<const LibraryItems> items);
    /// Every row's star, mark or details may have changed.
    void favoritesChanged() { everyRowChanged(FavoriteRole); }
    void selectionChanged() { everyRowChanged(SelectedRole); }
    void detailsChanged() { everyRowChanged(DetailsRole); }

    const LibraryItem& item(int row) const { return (*m_items)[m_rows[static_cast<std::size_t>(row)]]; }
    /// What views ask of one row without having its item at hand; empty for a row that is not there.
    Q_INVOKABLE QString urlAt(int row) const { return at(row, UrlRole).toString(); }
    Q_INVOKABLE QString nameAt(int row) const { return at(row, NameRole).toString(); }
    Q_INVOKABLE bool starAt(int row) const { return at(row, FavoriteRole).toBool(); }
    Q_INVOKABLE bool builtInAt(int row) const { return at(row, BuiltInRole).toBool(); }

    /// The first row from `from` on, round to the ones before it, whose name begins with the text, whatever its case;
    /// -1 when there is none.
    Q_INVOKABLE int rowNamed(const QString& beginning, int from) const;
    /// -1 when no row shows that file.
    int rowOf(const FileLocation& url) const;
    /// Null when no row shows that file.
    const LibraryItem* find(const std::filesystem::path& url) const;

Q_SIGNALS:
    void countChanged();

private:
    void everyRowChanged(Role role);
    QVariant at(int row, Role role) const { return row < 0 || row >= count() ? QVariant() : data(index(row), role); }

    Answers m_answers;
    std::shared_ptr<const LibraryItems> m_items = std::make_shared<const LibraryItems>();
    std::vector<quint32> m_rows;
};

} // namespace quillary
