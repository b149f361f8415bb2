#include "ui/ShownPanel.h"

#include <QPainter>

namespace quillary::test {

namespace {

/// What the Import tab shows after a paste that failed, and what the Library tells of one that nobody saw.
class StagingViewTest : public ShownPanel {
protected:
    QObject* shown(const char* name) const {
        auto* item = part<QQuickItem>(name);
        return item && item->isVisible() ? item : nullptr;
    }
    void offer(const QImage& image) {
        QBuffer png;
        image.save(&png, "PNG");
        stage.clipboard.board = std::make_shared<FakePasteboard>();
        stage.clipboard.board->put(QStringLiteral("image/png"), png.data());
    }
    /// By the key, until what came of it is there.
    void paste() {
        stage.container.forceActiveFocus();
        press(Qt::Key_V, Qt::ControlModifier);
        ASSERT_TRUE(comesTrue([this] { return !stage.model.staging(); }));
    }
    void click(const char* name) {
        auto* item = qobject_cast<QQuickItem*>(shown(name));
        ASSERT_TRUE(item) << name;
        QTest::mouseClick(&stage.window, Qt::LeftButton, {},
                          item->mapToScene({item->width() / 2, item->height() / 2}).toPoint());
    }
};

TEST_F(StagingViewTest, AFailureLeadsBackToWhatWasStaged) {
    QImage logo = picture(600, 400, Qt::white);
    QPainter(&logo).fillRect(200, 100, 200, 200, Qt::black);
    load(logo);
    stage.model.removeBackground();
    ASSERT_TRUE(comesTrue([this] { return stage.model.cutoutProgress() == PanelModel::CutoutProgress::ready; }));
    stage.model.setEdgeRefine(0.8);
    ASSERT_TRUE(comesTrue([this] { return !stage.model.refining(); }));
    stage.model.renameCurrent(QStringLiteral("my logo"));
    const QImage cutout = stage.model.displayImage();
    const auto dragged = stage.model.fileOnDisk();

    paste();
    EXPECT_EQ(stage.model.failureMessage().toStdString(), "No image on the clipboard.");
    ASSERT_TRUE(shown("goBack"));
    EXPECT_EQ(shown("goBack")->property("text").toString().toStdString(), "Back to “my logo”");
    paste(); // and another failure
    click("goBack");
    EXPECT_EQ(stage.model.stagedName().toStdString(), "my logo");
    EXPECT_EQ(stage.model.displayImage(), cutout);
    EXPECT_EQ(stage.model.stagedBadge().toStdString(), "cutout · flat background");
    EXPECT_EQ(stage.model.edgeRefine(), 0.8);
    EXPECT_TRUE(shown("edge"));
    EXPECT_FALSE(shown("goBack"));
    EXPECT_EQ(stage.model.fileOnDisk(), dragged) << "the file that was dragged before serves again";
    stage.model.setShowCutout(false);
    EXPECT_EQ(stage.model.displayImage().size(), logo.size());

    offer(picture(20, 20));
    paste();
    EXPECT_EQ(stage.model.stagedName().toStdString(), "Pasted Image");
    EXPECT_FALSE(stage.model.hasCutout());
    stage.model.clear();
    stage.clipboard.board = std::make_shared<FakePasteboard>();
    paste();
    EXPECT_FALSE(shown("goBack")) << "nothing was staged";
}

TEST_F(StagingViewTest, TheLibraryTellsOfAPictureThatWasStagedUnseen) {
    openLibrary();
    offer(picture(20, 20));
    paste();
    ASSERT_TRUE(shown("stagedLine"));
    EXPECT_EQ(shown("stagedLine")->property("text").toString().toStdString(), "Staged “Pasted Image” in Import");
    stage.clipboard.board = std::make_shared<FakePasteboard>();
    paste();
    EXPECT_EQ(shown("stagedLine")->property("text").toString().toStdString(), "No image on the clipboard.");
    click("showStaged");
    EXPECT_EQ(stage.model.tab(), PanelModel::Tab::intake);
    EXPECT_TRUE(shown("goBack"));
    stage.model.setTab(PanelModel::Tab::library);
    EXPECT_FALSE(shown("stagedLine")) << "it was seen";
}

} // namespace

} // namespace quillary::test
