#include "ui/ShownPanel.h"

#include <QPointer>

namespace quillary::test {

namespace {

class KeyboardFocusTest : public ShownPanel {
protected:
    KeyboardFocusTest() {
        stage.container.onPaste = [this] { ++pastes; };
    }
    QQuickItem* focused() const { return stage.window.activeFocusItem(); }
    bool editing() const { return focused() && focused()->inherits("QQuickTextInput"); }
    bool pasteReachesThePanel() {
        const int before = pastes;
        press(Qt::Key_V, Qt::ControlModifier);
        return pastes == before + 1;
    }
    static QQuickItem* spokenBelow(QQuickItem* item, const QString& name) {
        if (!item->isVisible()) return nullptr;
        auto* accessible = QAccessible::queryAccessibleInterface(item);
        if (accessible && accessible->text(QAccessible::Name) == name) return item;
        for (auto* child : item->childItems())
            if (auto* found = spokenBelow(child, name)) return found;
        return nullptr;
    }
    /// The shown item that a screen reader calls so.
    QQuickItem* spoken(const char* name) const {
        auto* item = spokenBelow(stage.window.contentItem(), QLatin1String(name));
        EXPECT_TRUE(item) << "nothing is called " << name;
        return item ? item : stage.window.contentItem();
    }
    void click(QPointF place, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseClick(&stage.window, button, {}, place.toPoint());
    }
    void click(const QQuickItem* item, Qt::MouseButton button = Qt::LeftButton) {
        click(item->mapToScene({item->width() / 2, item->height() / 2}), button);
    }
    /// Every menu, sheet and popover that the panel has made so far.
    std::vector<QPointer<QObject>> popups() const {
        std::vector<QPointer<QObject>> found;
        for (auto* object : stage.view->findChildren<QObject*>())
            if (object->inherits("QQuickPopup") && !object->inherits("QQuickToolTip")) found.emplace_back(object);
        return found;
    }

    int pastes = 0;
};

TEST_F(KeyboardFocusTest, AClickBesideAFieldLeavesItAndThePasteKeyWorks) {
    load(picture(64, 64));
    const auto name = spoken("Name");
    const std::vector<QPointF> beside{{200, 20},                                      // the header
                                      spoken("staged")->mapToScene({40, 40}),         // the picture
                                      name->mapToScene({name->width() / 2, 37}),      // the line of facts
                                      {5, 300}};                                      // the margin
    for (const QPointF place : beside) {
        click(name);
        ASSERT_TRUE(editing());
        EXPECT_FALSE(pasteReachesThePanel()) << "it goes into the field";
        click(place);
        EXPECT_FALSE(editing()) << place.x() << "," << place.y();
        EXPECT_TRUE(pasteReachesThePanel()) << place.x() << "," << place.y();
    }
    openLibrary();
    for (const QPointF place : {QPointF(200, 20), QPointF(190, 380), QPointF(5, 450)}) {
        click(spoken("Search"));
        ASSERT_TRUE(editing());
        click(place);
        EXPECT_TRUE(pasteReachesThePanel()) << place.x() << "," << place.y();
    }
}

TEST_F(KeyboardFocusTest, AFieldThatIsHiddenHasNoKeyboard) {
    load(picture(64, 64));
    click(spoken("Name"));
    ASSERT_TRUE(editing());
    stage.model.clear();
    EXPECT_FALSE(editing());
    EXPECT_TRUE(pasteReachesThePanel());
}

TEST_F(KeyboardFocusTest, EveryMenuAndSheetGivesTheKeyboardBack) {
    load(picture(64, 64));
    stage.file("library/Quillary/Library/Images/blue.png", picture(64, 64, Qt::blue));
    stage.file("library/Quillary/Library/Images/red.png", picture(64, 64));
    for (const auto kind : {PanelModel::LibraryKind::videos, PanelModel::LibraryKind::audio,
                            PanelModel::LibraryKind::blocks, PanelModel::LibraryKind::images}) {
        stage.model.setTab(PanelModel::Tab::library);
        stage.model.setLibraryKind(kind);
    }
    stage.model.refreshShelves();
    ASSERT_TRUE(comesTrue([this] { return stage.model.imagesShelf()->visibleModel()->count() == 2; }));
    auto* tiles = part<QQuickItem>("tiles");
    tiles->forceActiveFocus(Qt::TabFocusReason);
    press(Qt::Key_Home);
    int tried = 0;
    for (const auto& popup : popups()) {
        // A submenu has its place once its menu is open.
        const auto* place = popup->property("parent").value<QQuickItem*>();
        if (!place || !place->window()) continue;
        const std::string what = popup->metaObject()->className() + (" " + popup->objectName().toStdString());
        QMetaObject::invokeMethod(popup, "open");
        if (!comesTrue([&] { return opened(popup); }, 1'000)) continue;
        ++tried;
        QMetaObject::invokeMethod(popup, "close");
        ASSERT_TRUE(comesTrue([&] { return !popup || !popup->property("visible").toBool(); }, 2'000)) << what;
        EXPECT_TRUE(pasteReachesThePanel()) << what;
        press(Qt::Key_End);
        EXPECT_EQ(tiles->property("currentIndex").toInt(), 1) << what;
        press(Qt::Key_Home);
        EXPECT_EQ(tiles->property("currentIndex").toInt(), 0) << what;
    }
    EXPECT_GT(tried, 15);
}

TEST_F(KeyboardFocusTest, WhatOpensOverTheSettingsGivesThemTheKeyboardBack) {
    QMetaObject::invokeMethod(part("settings"), "clicked");
    QPointer<QObject> sheet = part("settingsSheetLoader")->property("item").value<QObject*>();
    ASSERT_TRUE(comesTrue([&] { return opened(sheet); }));
    int tried = 0;
    for (const auto& popup : popups()) {
        if (popup == sheet || !sheet->findChildren<QObject*>().contains(popup.data())) continue;
        QMetaObject::invokeMethod(popup, "open");
        ASSERT_TRUE(comesTrue([&] { return opened(popup); }, 1'000)) << popup->objectName().toStdString();
        ++tried;
        press(Qt::Key_Escape);
        ASSERT_TRUE(comesTrue([&] { return !popup->property("visible").toBool(); }, 2'000));
        EXPECT_TRUE(opened(sheet));
        EXPECT_FALSE(pasteReachesThePanel()) << "nothing is staged behind the sheet";
        EXPECT_TRUE(tabTo("Done"));
    }
    EXPECT_GE(tried, 4);
    press(Qt::Key_Escape);
    ASSERT_TRUE(comesTrue([&] { return !sheet; }));
    EXPECT_TRUE(pasteReachesThePanel());
}

TEST_F(KeyboardFocusTest, TheArrowKeysMoveOnAfterAContextMenu) {
    stage.file("library/Quillary/Library/Images/blue.png", picture(64, 64, Qt::blue));
    stage.file("library/Quillary/Library/Images/red.png", picture(64, 64));
    stage.model.setTab(PanelModel::Tab::library);
    stage.model.refreshShelves();
    ASSERT_TRUE(comesTrue([this] { return stage.model.imagesShelf()->visibleModel()->count() == 2; }));
    wait(50);
    // Selected before, and the keyboard in the search field.
    click(spoken("blue"));
    click(spoken("Search"));
    ASSERT_TRUE(editing());
    click(spoken("blue"), Qt::RightButton);
    const auto menuOpen = [this] {
        const auto all = popups();
        return std::ranges::any_of(all, [](const auto& popup) { return popup->property("visible").toBool(); });
    };
    ASSERT_TRUE(comesTrue(menuOpen));
    press(Qt::Key_Escape);
    ASSERT_TRUE(comesTrue([&] { return !menuOpen(); }));
    auto* tiles = part<QQuickItem>("tiles");
    const int before = tiles->property("currentIndex").toInt();
    press(before == 0 ? Qt::Key_Right : Qt::Key_Left);
    EXPECT_NE(tiles->property("currentIndex").toInt(), before);
    EXPECT_TRUE(pasteReachesThePanel());
}

class TypedNameTest : public KeyboardFocusTest {
protected:
    /// Types a name for the staged picture and does not confirm it.
    void type(const char* name) {
        click(spoken("Name"));
        ASSERT_TRUE(editing());
        for (const char letter : std::string_view(name)) QTest::keyClick(&stage.window, letter);
        EXPECT_NE(staged(), name);
    }
    std::string staged() const { return stage.model.stagedName().toStdString(); }
};

TEST_F(TypedNameTest, HoldsForWhateverTheUserDoesNext) {
    load(picture(64, 64));
    type("pressed");
    click(spoken("staged")->mapToScene({40, 40}));
    EXPECT_EQ(staged(), "pressed");
    type("elsewhere");
    click(spoken("Library"));
    EXPECT_EQ(staged(), "elsewhere");
    click(spoken("Import"));

    // As a screen reader presses it, which moves no focus.
    type("saved");
    stage.model.saveCurrentToLibrary();
    EXPECT_TRUE(comesTrue([this] { return exists(stage.root() / "Library/Images/saved.png"); }));
    type("dragged");
    EXPECT_EQ(stage.model.fileOnDisk(), stage.root() / "Recent/dragged.png");
    type("given up");
    press(Qt::Key_Escape);
    EXPECT_EQ(staged(), "dragged");
    type("left");
    stage.window.close();
    EXPECT_EQ(staged(), "left");
}

} // namespace

} // namespace quillary::test
