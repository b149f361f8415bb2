#pragma once

#include "panel/RowListModel.h"
#include "panel/Shelf.h"

#include <QPointer>
#include <QTimer>

namespace quillary {

/// The places of a shelf that a user can pick, with their counts. A collection counts what lies in its sub-collections
/// too. Main thread.
class FolderListModel : public quillary::RowListModel { // qualified: the QML type system looks it up by this name
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(quillary::Shelf* shelf READ shelf WRITE setShelf NOTIFY shelfChanged REQUIRED FINAL)
    Q_PROPERTY(Content content READ content WRITE setContent NOTIFY contentChanged FINAL)
    Q_PROPERTY(QString parentPath READ parentPath WRITE setParentPath NOTIFY parentPathChanged FINAL)
    /// While it is off the list is empty and follows nothing.
    Q_PROPERTY(bool active READ active WRITE setActive NOTIFY activeChanged FINAL)
    Q_PROPERTY(int count READ count NOTIFY countChanged FINAL)

public:
    enum class Content {
        /// Unfiled, Recent, the folders directly in the selected collection, the built-in sets; while something is
        /// searched, the collections there that match, at any depth
        Here,
        Filters, ///< All, Unfiled, every collection, the built-in sets
        Targets  ///< where a file can go: `parentPath` (Unfiled when it is empty) and the folders directly in it
    };
    Q_ENUM(Content)
    enum Role { PlaceRole = Qt::UserRole, LabelRole, PathRole, DepthRole, CountRole, SymbolRole, NestedRole };

    struct Row {
        Shelf::Place place = Shelf::Place::All;
        QString label;
        QString path;  ///< of the collection, or the set's name
        int depth = 0; ///< of a collection in the whole tree
        int count = 0;
        bool nested = false;  ///< of a target: has folders of its own
        bool missing = false; ///< of a collection: its folder cannot be read

        bool sameFolder(const Row& other) const { return place == other.place && path == other.path; }
        bool operator==(const Row&) const = default;
    };

    explicit FolderListModel(QObject* parent = nullptr);

    Shelf* shelf() const { return m_shelf; }
    void setShelf(Shelf* shelf);
    Content content() const { return m_content; }
    void setContent(Content content);
    const QString& parentPath() const { return m_parentPath; }
    void setParentPath(const QString& path);
    bool active() const { return m_active; }
    void setActive(bool on);
    int count() const { return static_cast<int>(m_rows.size()); }

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void shelfChanged();
    void contentChanged();
    void parentPathChanged();
    void activeChanged();
    void countChanged();

private:
    std::vector<Row> rows() const;
    std::vector<Row> targets() const;
    std::vector<Row> matches() const;
    void update();

    QPointer<Shelf> m_shelf;
    Content m_content = Content::Here;
    QString m_parentPath;
    bool m_active = true;
    std::vector<Row> m_rows;
    QTimer m_update; ///< several changes in one turn of the event loop are one update
};

} // namespace quillary
