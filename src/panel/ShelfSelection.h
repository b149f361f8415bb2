#pragma once

#include "values/LibraryItem.h"

#include <QObject>
#include <QStringList>
#include <QtQml/qqml.h>
#include <filesystem>
#include <optional>
#include <span>
#include <unordered_set>
#include <vector>

namespace quillary {

class ItemListModel;

/// Which of a shelf's visible files are selected. Selected are files, not rows: a refresh leaves the selection alone,
/// and what is no longer visible is no longer selected. Main thread.
class ShelfSelection : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("given by the shelf")
    Q_PROPERTY(int count READ count NOTIFY changed FINAL)

public:
    /// The list tells its order and is told what changed; it outlives the selection.
    explicit ShelfSelection(ItemListModel& list, QObject* parent = nullptr);

    int count() const { return static_cast<int>(m_files.size()); }
    bool contains(const FileLocation& file) const { return m_files.contains(file); }
    Q_INVOKABLE bool holds(int row) const;
    /// In the order of the list.
    std::vector<std::filesystem::path> files() const;
    /// The same as file: URLs.
    Q_INVOKABLE QStringList urls() const;

    /// A click on a row with the keyboard modifiers (Qt::KeyboardModifiers) held. Shift adds every row from the anchor
    /// on, the system's command key adds or removes the row, no modifier selects it alone.
    Q_INVOKABLE void toggle(int row, int modifiers);
    /// Shift and an arrow key: what lies between the anchor and the row is selected instead of what the last extension
    /// selected. Without an anchor `from` becomes it.
    Q_INVOKABLE void extend(int from, int row);
    Q_INVOKABLE void selectAll();
    Q_INVOKABLE void clear();

    /// Drops what the list no longer shows.
    void prune();
    struct Relocation {
        std::filesystem::path from;
        std::filesystem::path to;
    };
    /// Files that got another place stay selected.
    void follow(std::span<const Relocation> relocations);

Q_SIGNALS:
    void changed();

private:
    using Files = std::unordered_set<FileLocation>;

    void set(Files files);
    void addRange(Files& files, int from, int to) const;

    ItemListModel& m_list;
    Files m_files;
    Files m_kept; ///< what was selected when the anchor was set, apart from what extensions added
    std::optional<FileLocation> m_anchor;
};

} // namespace quillary
