#include "ui/ShownPanel.h"

#include <QWheelEvent>

namespace quillary::test {

namespace {

/// All items below one: those of a list are its children on the screen alone.
QList<QQuickItem*> below(QQuickItem* item) {
    QList<QQuickItem*> all = item->childItems();
    for (int at = 0; at < all.size(); ++at) all += all[at]->childItems();
    return all;
}

QRectF placeOf(const QQuickItem* item) {
    return item->mapRectToScene(QRectF(0, 0, item->width(), item->height()));
}

/// The Images shelf with pictures in several collections.
class ShelfViewTest : public ShownPanel {
protected:
    static constexpr int pictures = 40;
    ShelfViewTest() {
        const auto folder = stage.root() / "Library/Images";
        for (int at = 0; at < pictures; ++at)
            stage.file(qPrintable(QStringLiteral("library/Quillary/Library/Images/p%1.png").arg(at)), picture(8, 8));
        const std::vector<const char*> filed{"Logos/Clients/a.png", "Maps/b.png",   "Plates/b.png", "Arrows/b.png",
                                             "Series/b.png",        "Titles/b.png", "Zeta/b.png"};
        for (const char* name : filed) writeFile(folder / name, "no picture");
        stage.model.setTab(PanelModel::Tab::library);
        stage.model.refreshShelves();
        EXPECT_TRUE(comesTrue([this] { return images.visibleModel()->count() == pictures + 7; }));
        EXPECT_TRUE(comesTrue([this] { return folder_("Unfiled") != nullptr; }));
    }
    QQuickItem* tiles() { return part<QQuickItem>("tiles"); }
    QList<QQuickItem*> shownTexts() {
        QList<QQuickItem*> found;
        for (auto* item : below(stage.view.get()))
            if (item->isVisible() && item->property("text").isValid()) found << item;
        return found;
    }
    /// A text that begins so; null when none is seen.
    QQuickItem* text(const QString& start) {
        for (auto* item : shownTexts())
            if (item->property("text").toString().startsWith(start) && item->width() > 0) return item;
        return nullptr;
    }
    /// A row of the folder section.
    QQuickItem* folder_(const char* label) {
        for (auto* item : below(stage.view.get()))
            if (item->isVisible() && item->property("accented").isValid() && item->property("label") == QLatin1String(label))
                return item;
        return nullptr;
    }
    /// The tool tip on the screen.
    QObject* openTip() {
        for (auto* item : below(stage.window.contentItem())) {
            QObject* popup = item->parent();
            if (item->inherits("QQuickPopupItem") && item->isVisible() && popup && popup->objectName() == u"toolTip")
                return popup;
        }
        return nullptr;
    }
    QQuickItem* firstTile() {
        for (auto* item : below(tiles()))
            if (item->property("chosen").isValid() && item->property("index").toInt() == 0) return item;
        return nullptr;
    }
    /// Whether the folder is there, in the part of the page that scrolls.
    bool seesFolder(const char* label) {
        const QQuickItem* row = folder_(label);
        return row && placeOf(tiles()).contains(placeOf(row));
    }
    void scroll(int notches) {
        const QPointF at = placeOf(tiles()).center();
        for (int notch = 0; notch < notches; ++notch) {
            QWheelEvent turn(at, at, {}, {0, -120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
            turn.setTimestamp(m_time += 20);
            QCoreApplication::sendEvent(&stage.window, &turn);
            wait(20);
        }
    }
    /// How many rows of tiles have their whole picture in sight.
    int rowsInSight() {
        const QRectF room = placeOf(tiles());
        std::set<int> rows;
        for (auto* item : below(tiles())) {
            if (!item->property("chosen").isValid()) continue;
            QRectF whole = placeOf(item);
            whole.setHeight(tiles()->property("pictureHeight").toReal());
            if (room.contains(whole)) rows.insert(qRound(whole.y()));
        }
        return static_cast<int>(rows.size());
    }

    ImagesShelf& images = *stage.model.imagesShelf();

private:
    quint64 m_time = 1000;
};

TEST_F(ShelfViewTest, FoldersAreTheHeadOfTheListAndScrollAwayWithIt) {
    ASSERT_TRUE(comesTrue([&] { return firstTile() && seesFolder("Unfiled"); }));
    EXPECT_LT(placeOf(folder_("Unfiled")).bottom(), placeOf(firstTile()).top());
    scroll(6);
    ASSERT_TRUE(comesTrue([&] { return !tiles()->property("moving").toBool(); }));
    EXPECT_FALSE(seesFolder("Unfiled"));
    tiles()->setProperty("contentY", tiles()->property("cellHeight").toReal() * 3);
    EXPECT_EQ(rowsInSight(), 4);

    // Another place begins at its head, and so does the folder section when the keyboard comes to it.
    images.pick(Shelf::Place::Unfiled, {});
    EXPECT_TRUE(comesTrue([&] { return seesFolder("Unfiled"); }));
    scroll(6);
    EXPECT_TRUE(comesTrue([&] { return !seesFolder("Unfiled"); }));
    ASSERT_TRUE(tabTo("Unfiled, 40"));
    EXPECT_TRUE(comesTrue([&] { return seesFolder("Unfiled"); }));
}

TEST_F(ShelfViewTest, ManyFoldersAreCutShortAndOpenedByAClickOrAKey) {
    ASSERT_TRUE(comesTrue([&] { return firstTile() && folder_("4 more"); }));
    EXPECT_FALSE(folder_("Zeta"));
    EXPECT_TRUE(folder_("Logos"));
    const double first = placeOf(firstTile()).top();
    QTest::mouseClick(&stage.window, Qt::LeftButton, {}, placeOf(folder_("4 more")).center().toPoint());
    ASSERT_TRUE(comesTrue([&] { return seesFolder("Zeta"); }));
    EXPECT_TRUE(comesTrue([&] { return placeOf(firstTile()).top() > first + 20; }));
    EXPECT_TRUE(seesFolder("Unfiled")) << "the head stays in sight when it grows";
    EXPECT_FALSE(folder_("4 more"));
    images.pick(Shelf::Place::Collection, QStringLiteral("Logos"));
    images.pick(Shelf::Place::All, {});
    ASSERT_TRUE(comesTrue([&] { return folder_("4 more") != nullptr; }));
    ASSERT_TRUE(tabTo("Unfiled, 40"));
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    press(Qt::Key_Right);
    press(Qt::Key_Right);
    EXPECT_FALSE(folder_("Zeta"));
    press(Qt::Key_Space);
    EXPECT_TRUE(comesTrue([&] { return folder_("Zeta") != nullptr; }));
}

TEST_F(ShelfViewTest, TheNoteStandsAboveTheTilesAndTheBarNamesTheCollection) {
    images.setNote(QStringLiteral("Saved to your library"));
    ASSERT_TRUE(comesTrue([&] { return text(QStringLiteral("Saved to")) != nullptr; }));
    EXPECT_LE(placeOf(text(QStringLiteral("Saved to"))).bottom(), placeOf(tiles()).top());
    images.pick(Shelf::Place::Collection, QStringLiteral("Logos / Clients"));
    images.setSearch(QStringLiteral("a"));
    ASSERT_TRUE(comesTrue([&] { return text(QStringLiteral("1 match")) != nullptr; }));
    EXPECT_EQ(text(QStringLiteral("1 match"))->property("text").toString().toStdString(), "1 match in Clients");
}

TEST_F(ShelfViewTest, HelpNeverCoversWhatItExplains) {
    const QSize size(320, 300);
    stage.resize(size);
    wait(50);
    int seen = 0;
    for (auto* item : below(stage.view.get())) {
        const QString help = item->property("help").toString();
        const bool laterTile = item->property("chosen").isValid() && item->property("index").toInt() > 1;
        const QRectF place = placeOf(item);
        const bool inSight = item->isVisible() && item->isEnabled() && QRectF({}, QSizeF(size)).contains(place.center());
        if (help.isEmpty() || laterTile || !inSight) continue;
        QTest::mouseMove(&stage.window, {1, 1});
        QTest::mouseMove(&stage.window, place.center().toPoint());
        QObject* tip = nullptr;
        ASSERT_TRUE(comesTrue([&] { return (tip = openTip()) != nullptr; })) << help.toStdString();
        const QRectF over = placeOf(tip->property("contentItem").value<QQuickItem*>());
        EXPECT_FALSE(over.intersects(place)) << help.toStdString();
        EXPECT_TRUE(QRectF({}, QSizeF(size)).contains(over)) << help.toStdString();
        ++seen;
    }
    EXPECT_GE(seen, 6);
}

TEST_F(ShelfViewTest, HelpMakesWayForAMenu) {
    stage.resize({320, 460}); // no room for its text
    wait(50);
    auto* button = part<QQuickItem>("importButton");
    const QPoint at = placeOf(button).center().toPoint();
    QTest::mouseMove(&stage.window, at);
    ASSERT_TRUE(comesTrue([&] { return openTip() != nullptr; }));
    QTest::mouseClick(&stage.window, Qt::LeftButton, {}, at);
    ASSERT_TRUE(comesTrue([&] { return openTip() == nullptr; }));
    wait(900); // longer than the pointer must rest
    EXPECT_FALSE(openTip()) << "over the open menu";
}

} // namespace

} // namespace quillary::test
