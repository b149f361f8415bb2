#include "ui/ShownPanel.h"

#include <sstream>

namespace quillary::test {

namespace {

class MenuPlaceTest : public ShownPanel {
protected:
    static QQuickItem* content(const QObject* popup) { return popup->property("contentItem").value<QQuickItem*>(); }
    static QRectF onScreen(const QQuickItem* item) { return item->mapRectToScene({0, 0, item->width(), item->height()}); }
    /// The shown entries of a menu, where they lie.
    static std::vector<QRectF> entries(const QObject* menu) {
        std::vector<QRectF> found;
        const QRectF list = onScreen(content(menu));
        collect(content(menu), list, found);
        return found;
    }
    static void collect(const QQuickItem* item, const QRectF& list, std::vector<QRectF>& found) {
        for (const auto* child : item->childItems()) {
            if (!child->isVisible()) continue;
            const QRectF place = onScreen(child) & list;
            if (child->inherits("QQuickAbstractButton") && !place.isEmpty()) found.push_back(place);
            collect(child, list, found);
        }
    }
    QObject* shownMenu() const {
        for (auto* object : stage.view->findChildren<QObject*>())
            if (object->inherits("QQuickPopup") && !object->inherits("QQuickToolTip") && opened(object)) return object;
        return nullptr;
    }
    /// Opens a menu by this press and looks where it lies.
    void check(QPointF place, Qt::MouseButton button) {
        QTest::mouseClick(&stage.window, button, {}, place.toPoint());
        ASSERT_TRUE(comesTrue([this] { return shownMenu() != nullptr; }, 2'000)) << place.x() << "," << place.y();
        stage.window.grabWindow();
        auto* menu = shownMenu();
        const auto lines = entries(menu);
        std::ostringstream where;
        where << menu->metaObject()->className() << " at " << place.x() << "," << place.y() << " of "
              << stage.window.width() << "x" << stage.window.height();
        EXPECT_GE(lines.size(), 1U) << where.str();
        const QRectF room(0, 0, stage.window.width(), stage.window.height());
        for (const QRectF& line : lines) {
            EXPECT_FALSE(line.contains(place)) << where.str();
            EXPECT_TRUE(room.contains(line)) << where.str();
        }
        QMetaObject::invokeMethod(menu, "close");
        ASSERT_TRUE(comesTrue([this] { return !shownMenu(); }, 2'000));
    }
    static QQuickItem* find(QQuickItem* item, const QString& name) {
        auto* accessible = QAccessible::queryAccessibleInterface(item);
        if (item->isVisible() && accessible && accessible->text(QAccessible::Name).startsWith(name)) return item;
        const auto children = item->childItems();
        for (auto child = children.rbegin(); child != children.rend(); ++child)
            if (auto* found = item->isVisible() ? find(*child, name) : nullptr) return found;
        return nullptr;
    }
    void checkButton(const char* name) {
        // The last of that name: a tab may be called as a button of its page is.
        auto* button = find(stage.window.contentItem(), QLatin1String(name));
        ASSERT_TRUE(button) << name;
        check(onScreen(button).center(), Qt::LeftButton);
    }
};

TEST_F(MenuPlaceTest, NoMenuOpensWithAnEntryUnderThePointer) {
    load(picture(64, 64));
    for (int i = 0; i < 12; ++i)
        stage.file("library/Quillary/Library/Images/" + std::to_string(i) + ".png", picture(64, 64));
    stage.model.setTab(PanelModel::Tab::library);
    stage.model.refreshShelves();
    ASSERT_TRUE(comesTrue([this] { return stage.model.imagesShelf()->visibleModel()->count() == 12; }));
    std::size_t tried = 0;
    for (const QSize size : {QSize(380, 460), QSize(320, 300), QSize(900, 700)}) {
        stage.resize(size);
        stage.model.setTab(PanelModel::Tab::library);
        wait(50);
        // The bar of what can be done with a selection takes its room.
        stage.model.imagesShelf()->selection()->selectAll();
        wait(50);
        const QRectF tiles = onScreen(part<QQuickItem>("tiles"));
        std::vector<QPointF> places;
        for (auto* tile : part<QQuickItem>("tiles")->property("contentItem").value<QQuickItem*>()->childItems()) {
            const QRectF shown = onScreen(tile);
            // One that is cut off would scroll away from under the pointer.
            if (!tile->isVisible() || !tile->property("url").isValid() || !tiles.contains(shown)) continue;
            for (const QPointF place : {shown.topLeft() + QPointF(2, 2), shown.center(), shown.bottomRight() - QPointF(8, 6)})
                places.push_back(place);
        }
        tried += places.size();
        for (const QPointF place : places) check(place, Qt::RightButton);
        for (const char* name : {"Import files", "Collection: ", "More", "Move to"}) checkButton(name);
        stage.model.setTab(PanelModel::Tab::intake);
        wait(50);
        const QRectF picture = onScreen(part<QQuickItem>("stagedPicture"));
        for (const QPointF place : {picture.topLeft(), picture.center(), picture.bottomRight() - QPointF(1, 1)})
            check(place, Qt::RightButton);
        checkButton("Cutout method");
    }
    EXPECT_GE(tried, 20U);
}

} // namespace

} // namespace quillary::test
