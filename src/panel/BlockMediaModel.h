#pragma once

#include "blocks/BlockHealth.h"
#include "panel/RowListModel.h"

namespace quillary {

/// The media of one block as its sheet lists them, those that need care first. Main thread.
class BlockMediaModel : public quillary::RowListModel { // qualified: the QML type system looks it up by this name
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("given by the shelf")
    /// Of the block; empty while none is shown.
    Q_PROPERTY(QString name READ name NOTIFY changed FINAL)
    /// How much there is, such as "6 files · 12.3 MB · FCPXML 1.13".
    Q_PROPERTY(QString summary READ summary NOTIFY changed FINAL)
    /// How many are missing, and how many were found elsewhere.
    Q_PROPERTY(int missing READ missing NOTIFY changed FINAL)
    Q_PROPERTY(int moved READ moved NOTIFY changed FINAL)
    Q_PROPERTY(int count READ count NOTIFY changed FINAL)

public:
    enum class State { Present, Missing, Moved, Duplicate, Incomplete };
    Q_ENUM(State)
    enum Role { NameRole = Qt::UserRole, StateRole, TellingRole };

    using RowListModel::RowListModel;

    /// In place of the block before; of the same block only what differs changes. Folders below `root`, that of the
    /// library, are told from there.
    void show(const BlockHealth& health, const std::filesystem::path& root);
    const BlockHealth& health() const { return m_health; }

    QString name() const;
    QString summary() const;
    int missing() const { return static_cast<int>(m_health.count(BlockHealth::State::missing)); }
    int moved() const { return static_cast<int>(m_health.count(BlockHealth::State::moved)); }
    int count() const { return static_cast<int>(m_rows.size()); }

    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : count(); }
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void changed();

private:
    struct Row {
        std::size_t place; ///< in the document
        BlockHealth::Media media;
        bool operator==(const Row&) const = default;
    };
    static std::vector<Row> rowsOf(const BlockHealth& health);
    QString shownFolder(const std::filesystem::path& file) const;

    BlockHealth m_health;
    std::vector<Row> m_rows;
    std::filesystem::path m_root;
};

} // namespace quillary
