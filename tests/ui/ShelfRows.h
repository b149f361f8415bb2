#pragma once

#include <QQuickItem>

namespace quillary::test {

/// All items below one: those of a list are its children on the screen alone.
inline QList<QQuickItem*> itemsBelow(QQuickItem* item) {
    QList<QQuickItem*> all = item->childItems();
    for (int at = 0; at < all.size(); ++at) all += all[at]->childItems();
    return all;
}

/// The row or tile of this name that the user sees; null when there is none.
inline QQuickItem* shownRow(QQuickItem* view, const QString& name) {
    for (auto* item : itemsBelow(view))
        if (item->isVisible() && item->property("grid").isValid() && item->property("name") == name) return item;
    return nullptr;
}

} // namespace quillary::test
