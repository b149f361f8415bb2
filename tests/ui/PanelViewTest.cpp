#include "support/Jam.h"
#include "ui/ShownPanel.h"

#include <QDirIterator>
#include <QPainter>
#include <QSignalSpy>

namespace quillary::test {

namespace {

TEST(QmlTest, EveryFileCanBeMade) {
    PanelStage stage;
    int made = 0;
    QDirIterator files(QStringLiteral(":/qt/qml/Quillary"), {QStringLiteral("*.qml")}, QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString file = files.next();
        QQmlComponent component(&stage.engine, QUrl(QStringLiteral("qrc") + file));
        // Compiling it resolves every type that it names; what it requires of its surroundings is given by its users.
        EXPECT_EQ(component.status(), QQmlComponent::Ready)
            << file.toStdString() << component.errorString().toStdString();
        ++made;
    }
    EXPECT_GT(made, 40);
}

class PanelViewTest : public ShownPanel {};

TEST_F(PanelViewTest, ShowsEveryStateWithoutComplaint) {
    load(picture(64, 64));
    openLibrary();
    for (const auto kind : {PanelModel::LibraryKind::videos, PanelModel::LibraryKind::audio,
                            PanelModel::LibraryKind::blocks, PanelModel::LibraryKind::images}) {
        stage.model.setLibraryKind(kind);
        stage.window.grabWindow();
    }
    QMetaObject::invokeMethod(part("collectionMenu"), "open");
    EXPECT_TRUE(comesTrue([this] { return opened(part("collectionMenu")); }));
}

TEST_F(PanelViewTest, TabReachesEveryControlAndEachHasAName) {
    const auto reached = [this] {
        std::set<std::string> names;
        for (int step = 0; step < 12; ++step) {
            press(Qt::Key_Tab);
            EXPECT_FALSE(focusedName().empty()) << stage.window.activeFocusItem()->metaObject()->className();
            names.insert(focusedName());
        }
        return names;
    };
    load(picture(64, 64));
    const auto import = reached();
    for (const char* name :
         {"Import", "Name", "Remove Background", "Cutout method", "Paste", "Clear", "Save to Library"})
        EXPECT_TRUE(import.contains(name)) << name;
    openLibrary();
    wait(50);
    const auto library = reached();
    for (const char* name : {"Library", "Collection: All", "Search", "Show favorites only", "Unfiled, 1", "red"})
        EXPECT_TRUE(library.contains(name)) << name;
}

TEST_F(PanelViewTest, WhatHasTheKeyboardMayLoseItsTabStop) {
    openLibrary();
    ImagesShelf& images = *stage.model.imagesShelf();
    part<QQuickItem>("tiles")->forceActiveFocus(Qt::TabFocusReason);
    press(Qt::Key_Right);
    EXPECT_EQ(images.selection()->count(), 1);
    images.setSearch(QStringLiteral("nothing is called so"));
    wait(50);
    images.setSearch({});
    press(Qt::Key_Tab, Qt::ShiftModifier);
    // The tabs, whose segments take turns in being the tab stop.
    for (int step = 0; step < 12 && stage.model.tab() == PanelModel::Tab::library; ++step) {
        press(Qt::Key_Tab);
        press(Qt::Key_Left);
    }
    EXPECT_EQ(stage.model.tab(), PanelModel::Tab::intake);
    press(Qt::Key_Right);
    EXPECT_EQ(stage.model.tab(), PanelModel::Tab::library) << "the keyboard stays with the choice";
}

class SettingsSheetTest : public ShownPanel {
protected:
    SettingsSheetTest() {
        QMetaObject::invokeMethod(part("settings"), "clicked");
        EXPECT_TRUE(comesTrue([this] { return opened(sheet()); }));
    }
    bool showing() const { return stage.view->property("showingSettings").toBool(); }
    QObject* sheet() const { return part("settingsSheetLoader")->property("item").value<QObject*>(); }
    QObject* inSheet(const char* name) const { return sheet()->findChild<QObject*>(QString::fromLatin1(name)); }
};

TEST_F(SettingsSheetTest, TabReachesEverySettingAndShowsIt) {
    stage.resize({320, 300});
    auto* groups = qobject_cast<QQuickItem*>(inSheet("settingsGroups"));
    ASSERT_TRUE(groups);
    std::string names;
    for (int step = 0; step < 11; ++step) {
        press(Qt::Key_Tab);
        const QQuickItem* item = stage.window.activeFocusItem();
        const QRectF place = item->mapRectToItem(groups, QRectF(0, 0, item->width(), item->height()));
        EXPECT_TRUE(!groups->isAncestorOf(item) || groups->boundingRect().contains(place)) << focusedName();
        names += focusedName() + "|";
    }
    EXPECT_EQ(names, "Library folder|Show in Files|Keep in Recent: Never delete|Rasterize vectors at: 4096|"
                     "Choose a model|Model that finds subjects|Keep a paste history|Editor: Final Cut|Open on the Library|"
                     "Keep above other windows|Done|")
        << "where the library lies was given at the start, so there is nothing to choose";
}

TEST_F(SettingsSheetTest, TheEditorsNameStandsEverywhereAtOnce) {
    const auto caption = [this] { return part("stagedPicture")->parent()->property("caption").toString(); };
    EXPECT_EQ(caption(), u"Drag into Final Cut");
    const auto choose = [this](int row) {
        auto* picker = inSheet("editorName");
        QMetaObject::invokeMethod(picker, "clicked");
        auto* menu = picker->findChild<QObject*>(QStringLiteral("choices"));
        EXPECT_TRUE(comesTrue([&] { return opened(menu); }));
        for (int step = 0; step <= row; ++step) press(Qt::Key_Down);
        press(Qt::Key_Return);
        EXPECT_TRUE(comesTrue([&] { return !menu->property("visible").toBool(); }));
    };
    choose(1);
    EXPECT_EQ(caption(), u"Drag into Kdenlive");
    EXPECT_EQ(stage.settings.editorName(), u"Kdenlive");

    auto* own = qobject_cast<QQuickItem*>(inSheet("ownEditorName"));
    EXPECT_FALSE(own->isVisible());
    choose(5);
    ASSERT_TRUE(comesTrue([&] { return own->hasActiveFocus(); }));
    for (const char letter : std::string_view("Avid")) QTest::keyClick(&stage.window, letter);
    press(Qt::Key_Return);
    EXPECT_EQ(caption(), u"Drag into Avid");
    EXPECT_TRUE(own->isVisible());
    EXPECT_EQ(inSheet("editorName")->property("text").toString(), u"Avid");
    stage.model.settings()->setEditorName({});
    EXPECT_EQ(caption(), u"Drag into Final Cut");
}

TEST_F(SettingsSheetTest, AsksBeforeALimitAndEscapeKeepsWhatWasStored) {
    const auto choose = [this](int downs) {
        QMetaObject::invokeMethod(inSheet("recentLimit"), "clicked");
        auto* menu = inSheet("choices");
        EXPECT_TRUE(comesTrue([&] { return opened(menu); }));
        for (int step = 0; step < downs; ++step) press(Qt::Key_Down);
        press(Qt::Key_Return);
        EXPECT_TRUE(comesTrue([&] { return !menu->property("visible").toBool(); }));
    };
    const auto asked = [this] { return focusedName() == "Keep Never Delete"; };
    choose(2);
    EXPECT_EQ(stage.model.settings()->pendingLimit(), 500);
    EXPECT_TRUE(comesTrue(asked));
    press(Qt::Key_Escape);
    EXPECT_EQ(stage.model.settings()->pendingLimit(), 0);
    EXPECT_EQ(stage.settings.recentLimit(), 0);
    wait(300);
    EXPECT_TRUE(showing()) << "Escape closes the question alone";

    choose(3);
    EXPECT_TRUE(comesTrue(asked));
    QMetaObject::invokeMethod(inSheet("setALimit"), "clicked");
    EXPECT_EQ(stage.settings.recentLimit(), 1000);
    EXPECT_EQ(inSheet("recentLimit")->property("text").toString().toStdString(), "1000 images");
    wait(300);
    press(Qt::Key_Escape);
    EXPECT_TRUE(comesTrue([this] { return !showing() && !sheet(); }));
}

class CutoutViewTest : public ShownPanel {
protected:
    CutoutViewTest() {
        QImage logo = picture(600, 400, Qt::white);
        QPainter(&logo).fillRect(200, 100, 200, 200, Qt::black);
        load(logo);
    }
    bool cutsOut() {
        return comesTrue([this] { return progress() == PanelModel::CutoutProgress::ready; });
    }
    PanelModel::CutoutProgress progress() const { return stage.model.cutoutProgress(); }
};

/// The Import tab of a panel of several sizes, with everything that can stand below the stage.
TEST_F(PanelViewTest, WhatLiesBelowTheStageMakesRoomForIt) {
    for (const int side : {1200, 1100}) {
        load(picture(side, side));
        EXPECT_TRUE(comesTrue([&] { return !stage.model.staging(); }));
    }
    ASSERT_TRUE(comesTrue([this] { return stage.model.pasteHistory()->rowCount() == 2; }));
    auto* picture = part<QQuickItem>("stagedArea");
    auto* strip = part<QQuickItem>("pasteStrip");
    auto* history = part<QQuickItem>("pasteHistoryButton");
    auto* line = part<QQuickItem>("stagedNotesLine");
    const auto share = [&] {
        wait(50);
        return picture->height() / stage.window.height();
    };
    EXPECT_GT(share(), 0.45);
    EXPECT_TRUE(strip->isVisible());

    // A note in one line beside the strip, a long one cut to a line, and several behind one.
    stage.model.imagesShelf()->setNote(QStringLiteral("Saved to your library"));
    EXPECT_GE(share(), 0.45);
    EXPECT_TRUE(strip->isVisible());
    stage.model.imagesShelf()->setNote(QStringLiteral("Saved 12 · 3 videos to Videos · 2 sounds to Audio · 14 already "
                                                      "in your library · couldn’t read 3"));
    EXPECT_GE(share(), 0.45);
    EXPECT_TRUE(line->isVisible() && line->isEnabled());
    EXPECT_TRUE(strip->isVisible());
    QTest::mouseClick(&stage.window, Qt::LeftButton, {}, line->mapToScene({40, 8}).toPoint());
    EXPECT_TRUE(comesTrue([&] { return opened(part("stagedNotes")); }));
    press(Qt::Key_Escape);
    EXPECT_TRUE(comesTrue([&] { return line->hasActiveFocus(); }));

    // A low window: the strip is a button, and the way to a cut-out stands beside the other actions.
    stage.resize({380, 330});
    EXPECT_GE(share(), 0.45);
    EXPECT_FALSE(strip->isVisible());
    ASSERT_TRUE(history->isVisible());
    QTest::mouseClick(&stage.window, Qt::LeftButton, {}, history->mapToScene({8, 8}).toPoint());
    ASSERT_TRUE(comesTrue([&] { return focusedName() == "Paste history"; })) << focusedName();
    press(Qt::Key_Right);
    press(Qt::Key_Return);
    EXPECT_TRUE(comesTrue([&] { return stage.model.displayImage().width() == 1200; }));
    // A large one shows everything.
    stage.resize({600, 900});
    EXPECT_GT(share(), 0.45);
    EXPECT_TRUE(strip->isVisible());
    EXPECT_FALSE(history->isVisible());
}

TEST_F(CutoutViewTest, IsMadeChosenAndTrimmedByKeyboard) {
    ASSERT_TRUE(tabTo("Remove Background"));
    press(Qt::Key_Space);
    ASSERT_TRUE(cutsOut());
    EXPECT_EQ(focusedName(), "Cut Out Again") << "the control that moves keeps the keyboard";
    ASSERT_TRUE(tabTo("Edge"));
    for (const auto& [key, strength] : {std::pair(Qt::Key_End, 1.0), {Qt::Key_PageDown, 0.8}, {Qt::Key_PageUp, 1.0},
                                        {Qt::Key_Home, 0.0}, {Qt::Key_Right, 0.05}, {Qt::Key_Left, 0.0}}) {
        press(key);
        EXPECT_NEAR(stage.model.edgeRefine(), strength, 1e-9) << key;
    }
    EXPECT_NEAR(part("edge")->property("value").toDouble(), 0, 1e-9);
    stage.model.setEdgeRefine(0.5);
    EXPECT_NEAR(part("edge")->property("value").toDouble(), 0.5, 1e-9) << "goes on following the model";
    stage.model.setEdgeRefine(0);
    ASSERT_TRUE(tabTo("Cutout"));
    press(Qt::Key_Left);
    EXPECT_FALSE(stage.model.showCutout());

    ASSERT_TRUE(tabTo("Cutout method"));
    press(Qt::Key_Return);
    ASSERT_TRUE(comesTrue([&] { return opened(part("cutoutMethods")); }));
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    ASSERT_TRUE(comesTrue([&] { return stage.model.cutoutMethod() == PanelModel::CutoutMethod::subject; }));
}

TEST_F(CutoutViewTest, TheSplitButtonHasOneChevron) {
    auto* button = part<QQuickItem>("removeBackground");
    const auto chevrons = [&] {
        int drawn = 0;
        QList<QQuickItem*> items = button->childItems();
        for (int at = 0; at < items.size(); ++at) {
            items += items[at]->childItems();
            drawn += items[at]->isVisible() && items[at]->property("name") == QLatin1String("chevron.down");
        }
        return drawn;
    };
    EXPECT_EQ(chevrons(), 1);
    auto* opener = part<QQuickItem>("cutoutMethod");
    QTest::mouseMove(&stage.window, opener->mapToScene({opener->width() / 2, 10}).toPoint());
    ASSERT_TRUE(comesTrue([&] { return opener->property("hovered").toBool(); }));
    EXPECT_EQ(chevrons(), 1);
}

TEST_F(CutoutViewTest, IsStoppedByItsButtonAndByEscape) {
    const Jam jam(stage.work);
    ASSERT_TRUE(tabTo("Remove Background"));
    press(Qt::Key_Return);
    EXPECT_EQ(progress(), PanelModel::CutoutProgress::working);
    ASSERT_TRUE(tabTo("Stop cutting out"));
    press(Qt::Key_Space);
    EXPECT_EQ(progress(), PanelModel::CutoutProgress::none);
    EXPECT_EQ(focusedName(), "Remove Background");
    press(Qt::Key_Space);
    EXPECT_EQ(progress(), PanelModel::CutoutProgress::working);
    press(Qt::Key_Escape);
    EXPECT_EQ(progress(), PanelModel::CutoutProgress::none);
}

TEST_F(CutoutViewTest, TheEdgeFollowsTheHandBeforeTheWholePictureDoes) {
    stage.model.removeBackground();
    ASSERT_TRUE(cutsOut());
    auto* shown = part("stagedPicture");
    const auto standIn = [&] { return shown->property("standIn").value<QImage>(); };
    const auto settled = [&] { return standIn().isNull() && shown->property("settled").toBool(); };
    ASSERT_TRUE(comesTrue(settled));
    comesTrue([this] { return stage.work.activeThreadCount() == 0; });
    QThreadPool::globalInstance()->waitForDone();
    QCoreApplication::processEvents();

    // The edge of the square, 8 pixels beside its border at full size, as it stands on the screen.
    auto jam = std::make_optional<Jam>(stage.work);
    const QImage before = stage.model.cutout();
    stage.model.setEdgeRefine(1);
    ASSERT_FALSE(standIn().isNull()) << "shown in the same turn";
    EXPECT_EQ(stage.model.cutout(), before) << "never stored";
    EXPECT_EQ(standIn().size(), shown->property("pixelSize").toSize());
    const double scale = standIn().width() / 600.0;
    const auto alphaAt = [&](double x) { return standIn().pixelColor(qRound(x * scale), qRound(200 * scale)).alpha(); };
    EXPECT_LT(alphaAt(202), 64);
    EXPECT_EQ(alphaAt(210), 255);
    jam.reset();
    ASSERT_TRUE(comesTrue(settled));
    EXPECT_NE(stage.model.cutout(), before);
}

TEST(NameFieldTest, CommitsOnReturnAndOnLosingTheFocusAlone) {
    PanelStage stage;
    const auto field = stage.make("Panel/IntakeNameField", {{QStringLiteral("name"), QStringLiteral("before")}});
    ASSERT_TRUE(field) << stage.errors.toStdString();
    stage.activate();
    const QSignalSpy commits(field.get(), SIGNAL(commit(QString)));
    const auto draft = [&] { return field->property("draft").toString().toStdString(); };
    const auto type = [&](const char* text) {
        field->forceActiveFocus();
        for (const char letter : std::string_view(text)) QTest::keyClick(&stage.window, letter);
    };
    type("first");
    EXPECT_EQ(draft(), "first") << "the whole name is selected on focus";
    QTest::keyClick(&stage.window, Qt::Key_Return);
    ASSERT_EQ(commits.size(), 1);
    EXPECT_EQ(commits[0][0].toString().toStdString(), "first");
    type("second");
    field->setFocus(false);
    ASSERT_EQ(commits.back()[0].toString().toStdString(), "second");
    EXPECT_EQ(draft(), "before") << "the name is the owner's to change";

    type("mistake");
    QTest::keyClick(&stage.window, Qt::Key_Escape);
    EXPECT_FALSE(field->hasActiveFocus());
    EXPECT_EQ(draft(), "before");
    for (const auto& commit : commits) EXPECT_NE(commit[0].toString().toStdString(), "mistake");

    field->setProperty("name", QStringLiteral("renamed"));
    EXPECT_EQ(draft(), "renamed");
    type("typing");
    field->setProperty("name", QStringLiteral("from outside"));
    EXPECT_EQ(draft(), "typing");
}

TEST(LayerStackTest, DrawsABarForEachLayer) {
    PanelStage stage;
    for (const int layers : {1, 4, 6, 10}) {
        const auto stack = stage.make("Blocks/LayerStack", {{QStringLiteral("bars"), QVariant::fromValue(QList<int>(layers, 1))}});
        ASSERT_TRUE(stack) << stage.errors.toStdString();
        stack->setSize({96, 47}); // what a tile of a narrow panel leaves
        EXPECT_TRUE(comesTrue([&] { return stack->property("shown").toInt() == layers; }, 1000)) << layers;
        const QQuickItem* column = stack->childItems().value(0);
        EXPECT_LE(column->height(), 47) << layers;
        EXPECT_EQ(stack->property("barHeight").toInt(), layers < 4 ? 9 : layers < 7 ? 6 : 3) << layers;
    }
}

TEST(EdgeLabelTest, TellsOffFromTighter) {
    PanelStage stage;
    for (const auto& [value, text] : {std::pair(0.0, "off"), {0.01, "off"}, {0.02, "tighter"}, {1.0, "tighter"}}) {
        const auto label = stage.make("Panel/EdgeLabel", {{QStringLiteral("value"), value}});
        ASSERT_TRUE(label) << stage.errors.toStdString();
        EXPECT_EQ(label->property("text").toString().toStdString(), text) << value;
    }
}

} // namespace

} // namespace quillary::test
