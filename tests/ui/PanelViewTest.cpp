#include "PanelStage.h"
#include "support/Jam.h"

#include <QAccessible>
#include <QDirIterator>
#include <QPainter>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

namespace quillary::test {

namespace {

/// What a QML file says while it is loaded counts as a failure.
class Complaints {
public:
    Complaints() {
        s_said.clear();
        m_before = qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& text) {
            if (type != QtDebugMsg && type != QtInfoMsg) s_said << text;
        });
    }
    ~Complaints() { qInstallMessageHandler(m_before); }
    static const QStringList& said() { return s_said; }

private:
    static inline QStringList s_said;
    QtMessageHandler m_before;
};

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

TEST(QmlTest, ThePanelShowsEveryStateWithoutComplaint) {
    const Complaints complaints;
    PanelStage stage;
    ASSERT_TRUE(stage.show({380, 460})) << stage.errors.toStdString();
    stage.model.refreshShelves();
    EXPECT_TRUE(PanelStage::comesTrue([&] { return stage.model.imagesShelf()->loaded(); }));
    QImage picture(64, 64, QImage::Format_RGBA8888);
    picture.fill(Qt::red);
    stage.model.load(stage.file("red.png", picture));
    EXPECT_TRUE(PanelStage::comesTrue([&] { return stage.model.stage() == PanelModel::Stage::loaded; }));
    stage.model.setTab(PanelModel::Tab::library);
    for (const auto kind : {PanelModel::LibraryKind::videos, PanelModel::LibraryKind::audio,
                            PanelModel::LibraryKind::blocks, PanelModel::LibraryKind::images}) {
        stage.model.setLibraryKind(kind);
        stage.window.grabWindow();
    }
    auto* menu = stage.root->findChild<QObject*>(QStringLiteral("collectionMenu"));
    ASSERT_TRUE(menu);
    QMetaObject::invokeMethod(menu, "open");
    PanelStage::wait(50);
    QMetaObject::invokeMethod(menu, "close");
    EXPECT_EQ(Complaints::said().join(u'\n').toStdString(), "");
}

TEST(KeyboardTest, TabReachesEveryControlAndEachHasAName) {
    PanelStage stage;
    ASSERT_TRUE(stage.show({380, 460}));
    stage.window.requestActivate();
    PanelStage::comesTrue([&] { return stage.window.isActive(); }, 2'000);
    const auto reached = [&] {
        QStringList names;
        for (int step = 0; step < 12; ++step) {
            QTest::keyClick(&stage.window, Qt::Key_Tab);
            auto* item = stage.window.activeFocusItem();
            auto* accessible = QAccessible::queryAccessibleInterface(item);
            const QString name = accessible ? accessible->text(QAccessible::Name) : QString();
            EXPECT_FALSE(name.isEmpty()) << item->metaObject()->className();
            names << name;
        }
        names.removeDuplicates();
        return names;
    };
    QImage picture(64, 64, QImage::Format_RGBA8888);
    picture.fill(Qt::red);
    stage.model.load(stage.file("red.png", picture));
    EXPECT_TRUE(PanelStage::comesTrue([&] { return stage.model.stage() == PanelModel::Stage::loaded; }));
    const QStringList import = reached();
    for (const char* name :
         {"Import", "Name", "Remove Background", "Cutout method", "Paste", "Clear", "Save to Library"})
        EXPECT_TRUE(import.contains(QString::fromLatin1(name))) << name << " of " << import.join(u'|').toStdString();

    picture.save(QString::fromStdString((*stage.storage.root() / "Library" / "Images" / "red.png").string()));
    stage.model.setTab(PanelModel::Tab::library);
    stage.model.refreshShelves();
    EXPECT_TRUE(PanelStage::comesTrue([&] { return stage.model.imagesShelf()->visibleModel()->count() > 0; }));
    PanelStage::wait(50);
    const QStringList library = reached();
    for (const char* name : {"Library", "Collection: All", "Search", "Show favorites only", "Unfiled, 1", "red"})
        EXPECT_TRUE(library.contains(QString::fromLatin1(name))) << name << " of " << library.join(u'|').toStdString();
}

TEST(KeyboardTest, WhatHasTheKeyboardMayLoseItsTabStop) {
    const Complaints complaints;
    PanelStage stage;
    const auto shelf = *stage.storage.root() / "Library/Images";
    QImage picture(64, 64, QImage::Format_RGB32);
    picture.fill(Qt::red);
    picture.save(QString::fromStdString((shelf / "red.png").string()));
    stage.model.setTab(PanelModel::Tab::library);
    ASSERT_TRUE(stage.show({380, 460}));
    stage.window.requestActivate();
    PanelStage::comesTrue([&] { return stage.window.isActive(); }, 2'000);
    stage.model.refreshShelves();
    ImagesShelf& images = *stage.model.imagesShelf();
    ASSERT_TRUE(PanelStage::comesTrue([&] { return images.visibleModel()->count() == 1; }));
    auto* grid = stage.root->findChild<QQuickItem*>(QStringLiteral("tiles"));
    ASSERT_TRUE(grid);
    grid->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(&stage.window, Qt::Key_Right);
    EXPECT_EQ(images.selection()->count(), 1);
    images.setSearch(QStringLiteral("nothing is called so"));
    PanelStage::wait(50);
    images.setSearch({});
    QTest::keyClick(&stage.window, Qt::Key_Tab, Qt::ShiftModifier);
    // The tabs, whose segments take turns in being the tab stop.
    for (int step = 0; step < 12 && stage.model.tab() == PanelModel::Tab::library; ++step) {
        QTest::keyClick(&stage.window, Qt::Key_Tab);
        QTest::keyClick(&stage.window, Qt::Key_Left);
    }
    EXPECT_EQ(stage.model.tab(), PanelModel::Tab::intake);
    QTest::keyClick(&stage.window, Qt::Key_Right);
    EXPECT_EQ(stage.model.tab(), PanelModel::Tab::library) << "the keyboard stays with the choice";
    EXPECT_EQ(complaints.said().join(u'\n').toStdString(), "");
}

class SettingsSheetTest : public testing::Test {
protected:
    SettingsSheetTest() {
        EXPECT_TRUE(stage.show({380, 460})) << stage.errors.toStdString();
        stage.window.requestActivate();
        PanelStage::comesTrue([this] { return stage.window.isActive(); }, 2'000);
        QMetaObject::invokeMethod(stage.root->findChild<QObject*>(QStringLiteral("settings")), "clicked");
        EXPECT_TRUE(PanelStage::comesTrue([this] { return opened(sheet()); }));
    }
    bool showing() const { return stage.root->property("showingSettings").toBool(); }
    QObject* sheet() const {
        auto* loader = stage.root->findChild<QObject*>(QStringLiteral("settingsSheetLoader"));
        return loader->property("item").value<QObject*>();
    }
    QObject* part(const char* name) const { return sheet()->findChild<QObject*>(QString::fromLatin1(name)); }
    static bool opened(QObject* popup) { return popup && popup->property("opened").toBool(); }
    void press(Qt::Key key) { QTest::keyClick(&stage.window, key); }
    QString focusedName() const {
        auto* accessible = QAccessible::queryAccessibleInterface(stage.window.activeFocusItem());
        return accessible ? accessible->text(QAccessible::Name) : QString();
    }

    const Complaints complaints;
    PanelStage stage;
};

TEST_F(SettingsSheetTest, TabReachesEverySettingAndShowsIt) {
    stage.resize({320, 400});
    auto* groups = qobject_cast<QQuickItem*>(part("settingsGroups"));
    ASSERT_TRUE(groups);
    QStringList names;
    for (int step = 0; step < 10; ++step) {
        press(Qt::Key_Tab);
        const QQuickItem* item = stage.window.activeFocusItem();
        const QRectF place = item->mapRectToItem(groups, QRectF(0, 0, item->width(), item->height()));
        EXPECT_TRUE(!groups->isAncestorOf(item) || groups->boundingRect().contains(place))
            << focusedName().toStdString();
        names << focusedName();
    }
    EXPECT_EQ(names.join(u'|').toStdString(), "Library folder|Choose…|Show in Files|Keep in Recent: Never delete|"
                                              "Rasterize vectors at: 4096|Choose a model|Model that finds subjects|"
                                              "Keep a paste history|Open on the Library|Done")
        << "the default location needs no button";
    EXPECT_EQ(complaints.said().join(u'\n').toStdString(), "");
}

TEST_F(SettingsSheetTest, AsksBeforeALimitAndEscapeKeepsWhatWasStored) {
    const auto choose = [this](int downs) {
        QMetaObject::invokeMethod(part("recentLimit"), "clicked");
        auto* menu = part("choices");
        EXPECT_TRUE(PanelStage::comesTrue([&] { return opened(menu); }));
        for (int step = 0; step < downs; ++step) press(Qt::Key_Down);
        press(Qt::Key_Return);
        EXPECT_TRUE(PanelStage::comesTrue([&] { return !menu->property("visible").toBool(); }));
    };
    choose(2);
    EXPECT_EQ(stage.model.settings()->pendingLimit(), 500);
    EXPECT_TRUE(PanelStage::comesTrue([this] { return focusedName() == QStringLiteral("Keep Never Delete"); }));
    press(Qt::Key_Escape);
    EXPECT_EQ(stage.model.settings()->pendingLimit(), 0);
    EXPECT_EQ(stage.settings.recentLimit(), 0);
    PanelStage::wait(300);
    EXPECT_TRUE(showing()) << "Escape closes the question alone";

    choose(3);
    PanelStage::wait(300);
    QMetaObject::invokeMethod(part("setALimit"), "clicked");
    EXPECT_EQ(stage.settings.recentLimit(), 1000);
    EXPECT_EQ(part("recentLimit")->property("text").toString().toStdString(), "1000 images");
    PanelStage::wait(300);
    press(Qt::Key_Escape);
    EXPECT_TRUE(PanelStage::comesTrue([this] { return !showing() && !sheet(); }));
    EXPECT_EQ(complaints.said().join(u'\n').toStdString(), "");
}

class CutoutViewTest : public testing::Test {
protected:
    CutoutViewTest() {
        EXPECT_TRUE(stage.show({380, 460})) << stage.errors.toStdString();
        stage.window.requestActivate();
        PanelStage::comesTrue([this] { return stage.window.isActive(); }, 2'000);
        QImage logo(600, 400, QImage::Format_RGB888);
        logo.fill(Qt::white);
        QPainter(&logo).fillRect(200, 100, 200, 200, Qt::black);
        stage.model.load(stage.file("logo.png", logo));
        EXPECT_TRUE(PanelStage::comesTrue([this] { return stage.model.stage() == PanelModel::Stage::loaded; }));
    }
    QQuickItem* part(const char* name) const { return stage.root->findChild<QQuickItem*>(QString::fromLatin1(name)); }
    void press(Qt::Key key) { QTest::keyClick(&stage.window, key); }
    /// Tabs on until the control of this name has the keyboard.
    bool tabTo(const QString& name) {
        for (int step = 0; step < 15; ++step) {
            if (focusedName() == name) return true;
            press(Qt::Key_Tab);
        }
        return false;
    }
    QString focusedName() const {
        auto* accessible = QAccessible::queryAccessibleInterface(stage.window.activeFocusItem());
        return accessible ? accessible->text(QAccessible::Name) : QString();
    }
    bool cutsOut() {
        return PanelStage::comesTrue([this] { return progress() == PanelModel::CutoutProgress::ready; });
    }
    PanelModel::CutoutProgress progress() const { return stage.model.cutoutProgress(); }

    const Complaints complaints;
    PanelStage stage;
};

TEST_F(CutoutViewTest, IsMadeChosenAndTrimmedByKeyboard) {
    ASSERT_TRUE(tabTo(QStringLiteral("Remove Background")));
    press(Qt::Key_Space);
    ASSERT_TRUE(cutsOut());
    EXPECT_EQ(focusedName().toStdString(), "Cut Out Again") << "the control that moves keeps the keyboard";
    ASSERT_TRUE(tabTo(QStringLiteral("Edge")));
    for (int step = 0; step < 10; ++step) press(Qt::Key_Left);
    EXPECT_EQ(stage.model.edgeRefine(), 0);
    ASSERT_TRUE(tabTo(QStringLiteral("Cutout")));
    press(Qt::Key_Left);
    EXPECT_FALSE(stage.model.showCutout());

    ASSERT_TRUE(tabTo(QStringLiteral("Cutout method")));
    press(Qt::Key_Return);
    auto* menu = stage.root->findChild<QObject*>(QStringLiteral("cutoutMethods"));
    ASSERT_TRUE(PanelStage::comesTrue([&] { return menu->property("opened").toBool(); }));
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    ASSERT_TRUE(PanelStage::comesTrue([&] { return stage.model.cutoutMethod() == PanelModel::CutoutMethod::subject; }));
    EXPECT_EQ(complaints.said().join(u'\n').toStdString(), "");
}

TEST_F(CutoutViewTest, IsStoppedByItsButtonAndByEscape) {
    const Jam jam(stage.work);
    ASSERT_TRUE(tabTo(QStringLiteral("Remove Background")));
    press(Qt::Key_Return);
    EXPECT_EQ(progress(), PanelModel::CutoutProgress::working);
    ASSERT_TRUE(tabTo(QStringLiteral("Stop cutting out")));
    press(Qt::Key_Space);
    EXPECT_EQ(progress(), PanelModel::CutoutProgress::none);
    EXPECT_EQ(focusedName().toStdString(), "Remove Background");
    press(Qt::Key_Space);
    EXPECT_EQ(progress(), PanelModel::CutoutProgress::working);
    press(Qt::Key_Escape);
    EXPECT_EQ(progress(), PanelModel::CutoutProgress::none);
}

TEST_F(CutoutViewTest, TheEdgeFollowsTheHandBeforeTheWholePictureDoes) {
    stage.model.removeBackground();
    ASSERT_TRUE(cutsOut());
    auto* picture = part("stagedPicture");
    const auto standIn = [&] { return picture->property("standIn").value<QImage>(); };
    ASSERT_TRUE(PanelStage::comesTrue([&] { return picture->property("settled").toBool() && standIn().isNull(); }));
    PanelStage::comesTrue([this] { return stage.work.activeThreadCount() == 0; });
    QThreadPool::globalInstance()->waitForDone();
    QCoreApplication::processEvents();

    // The edge of the square, 8 pixels beside its border at full size, as it stands on the screen.
    auto jam = std::make_optional<Jam>(stage.work);
    const QImage before = stage.model.cutout();
    stage.model.setEdgeRefine(1);
    ASSERT_FALSE(standIn().isNull()) << "shown in the same turn";
    EXPECT_EQ(stage.model.cutout(), before) << "never stored";
    EXPECT_EQ(standIn().size(), picture->property("pixelSize").toSize());
    const double scale = standIn().width() / 600.0;
    const auto alphaAt = [&](double x) { return standIn().pixelColor(qRound(x * scale), qRound(200 * scale)).alpha(); };
    EXPECT_LT(alphaAt(202), 64);
    EXPECT_EQ(alphaAt(210), 255);
    jam.reset();
    ASSERT_TRUE(PanelStage::comesTrue([&] { return standIn().isNull() && picture->property("settled").toBool(); }));
    EXPECT_NE(stage.model.cutout(), before);
}

class NameFieldTest : public testing::Test {
protected:
    NameFieldTest() {
        QQmlComponent component(&stage.engine, QUrl(QStringLiteral("qrc:/qt/qml/Quillary/Panel/IntakeNameField.qml")));
        EXPECT_TRUE(component.isReady()) << component.errorString().toStdString();
        field.reset(qobject_cast<QQuickItem*>(
            component.createWithInitialProperties({{QStringLiteral("name"), QStringLiteral("before")}})));
        field->setParentItem(stage.window.contentItem());
        commits = std::make_unique<QSignalSpy>(field.get(), SIGNAL(commit(QString)));
        stage.window.show();
        stage.window.requestActivate();
        PanelStage::comesTrue([this] { return stage.window.isActive(); }, 2'000);
    }
    ~NameFieldTest() override { field.reset(); }
    QString draft() const { return field->property("draft").toString(); }
    void focusAndType(const QString& text) {
        field->forceActiveFocus();
        for (const QChar letter : text) QTest::keyClick(&stage.window, letter.toLatin1());
    }

    PanelStage stage;
    std::unique_ptr<QQuickItem> field;
    std::unique_ptr<QSignalSpy> commits;
};

TEST_F(NameFieldTest, ReturnAndLosingTheFocusCommit) {
    focusAndType(QStringLiteral("first"));
    EXPECT_EQ(draft().toStdString(), "first") << "the whole name is selected on focus";
    QTest::keyClick(&stage.window, Qt::Key_Return);
    ASSERT_EQ(commits->size(), 1);
    EXPECT_EQ(commits->at(0).at(0).toString().toStdString(), "first");

    focusAndType(QStringLiteral("second"));
    field->setFocus(false);
    ASSERT_FALSE(commits->isEmpty());
    EXPECT_EQ(draft().toStdString(), "before") << "the name is the owner's to change";
}

TEST_F(NameFieldTest, EscapeBringsTheNameBack) {
    focusAndType(QStringLiteral("mistake"));
    QTest::keyClick(&stage.window, Qt::Key_Escape);
    EXPECT_FALSE(field->hasActiveFocus());
    EXPECT_EQ(draft().toStdString(), "before");
    for (const auto& commit : *commits) EXPECT_EQ(commit.at(0).toString().toStdString(), "before");
}

TEST_F(NameFieldTest, FollowsTheNameOnlyWithoutFocus) {
    field->setProperty("name", QStringLiteral("renamed"));
    EXPECT_EQ(draft().toStdString(), "renamed");
    focusAndType(QStringLiteral("typing"));
    field->setProperty("name", QStringLiteral("from outside"));
    EXPECT_EQ(draft().toStdString(), "typing");
}

TEST(EdgeLabelTest, TellsOffFromTighter) {
    PanelStage stage;
    QQmlComponent component(&stage.engine, QUrl(QStringLiteral("qrc:/qt/qml/Quillary/Panel/EdgeLabel.qml")));
    for (const auto& [value, text] : {std::pair(0.0, "off"), {0.01, "off"}, {0.02, "tighter"}, {1.0, "tighter"}}) {
        const std::unique_ptr<QObject> label(component.createWithInitialProperties({{QStringLiteral("value"), value}}));
        ASSERT_TRUE(label) << component.errorString().toStdString();
        EXPECT_EQ(label->property("text").toString().toStdString(), text) << value;
        EXPECT_EQ(label->property("width").toReal(), 42);
    }
}

} // namespace

} // namespace quillary::test
