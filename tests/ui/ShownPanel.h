#pragma once

#include "media/ClipFrames.h"
#include "support/FakeAudioOutput.h"
#include "ui/PanelStage.h"

#include <QAccessible>
#include <QTest>
#include <gtest/gtest.h>

namespace quillary::test {

/// The panel in front of the user, who has a keyboard. What its views complain of while they are shown is a failure.
class ShownPanel : public testing::Test {
protected:
    ShownPanel() {
        s_complaints.clear();
        m_before = qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& text) {
            if (type != QtDebugMsg && type != QtInfoMsg && !text.endsWith(u"There is no picture of this file."))
                s_complaints << text;
        });
        EXPECT_TRUE(stage.show({380, 460})) << stage.errors.toStdString();
    }
    ~ShownPanel() override {
        qInstallMessageHandler(m_before);
        EXPECT_EQ(s_complaints.join(u'\n').toStdString(), "");
    }

    template <typename Part = QObject>
    Part* part(const char* name) const {
        return stage.view->findChild<Part*>(QString::fromLatin1(name));
    }
    static bool opened(const QObject* popup) { return popup && popup->property("opened").toBool(); }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(&stage.window, key, modifiers); }
    std::string focusedName() const {
        auto* accessible = QAccessible::queryAccessibleInterface(stage.window.activeFocusItem());
        return accessible ? accessible->text(QAccessible::Name).toStdString() : std::string();
    }
    /// Tabs on until the control of this name has the keyboard.
    bool tabTo(const std::string& name) {
        for (int step = 0; step < 30; ++step) {
            if (focusedName() == name) return true;
            press(Qt::Key_Tab);
        }
        return false;
    }
    void load(const QImage& image) {
        stage.model.load(stage.file("staged.png", image));
        EXPECT_TRUE(comesTrue([this] { return stage.model.stage() == PanelModel::Stage::loaded; }));
    }
    /// Opens the library on one picture.
    void openLibrary() {
        stage.file("library/Quillary/Library/Images/red.png", picture(64, 64));
        stage.model.setTab(PanelModel::Tab::library);
        stage.model.refreshShelves();
        EXPECT_TRUE(comesTrue([this] { return stage.model.imagesShelf()->visibleModel()->count() == 1; }));
    }

    FakeAudioOutput::Log sound;
    PanelStage stage{{}, [this] { return std::make_unique<FakeAudioOutput>(sound); }, media::clipThumbnail};

private:
    static inline QStringList s_complaints;
    QtMessageHandler m_before;
};

} // namespace quillary::test
