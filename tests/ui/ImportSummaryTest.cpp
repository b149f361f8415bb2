#include "ui/ShownPanel.h"

namespace quillary::test {

namespace {

using namespace Qt::StringLiterals;

/// What the user sees of a batch once it is filed.
class ImportSummaryTest : public ShownPanel {
protected:
    void save(const std::vector<std::filesystem::path>& files) {
        stage.model.saveToLibrary(files);
        EXPECT_TRUE(comesTrue([this] { return !stage.model.importing(); }));
        wait(50);
    }
    QQuickItem* summary() const { return part<QQuickItem>("importSummary"); }
    /// Shown, whole, and in nobody's way.
    bool isSeen() const {
        const QQuickItem* item = summary();
        const QRectF place = item->mapRectToScene(item->boundingRect());
        return item->isVisible() && place.height() > 20 && stage.view->boundingRect().contains(place);
    }
    std::string line(const char* property) const {
        return part("importSummaryLine")->property(property).toString().toStdString();
    }
    QObject* inSheet(const char* name) const { return part("importProblems")->findChild<QObject*>(QLatin1String(name)); }
};

TEST_F(ImportSummaryTest, IsSeenOnEveryTabAndShelfWithTheReasonBehindAClick) {
    writeFile(stage.folder / "broken.png", "no picture");
    writeFile(stage.folder / "clip.webm", "film");
    save({stage.file("a.png", picture(8, 8)), stage.folder / "broken.png", stage.folder / "clip.webm"});
    for (const auto kind : {PanelModel::LibraryKind::images, PanelModel::LibraryKind::videos,
                            PanelModel::LibraryKind::audio, PanelModel::LibraryKind::blocks}) {
        stage.model.setLibraryKind(kind);
        EXPECT_TRUE(isSeen()) << static_cast<int>(kind);
    }
    stage.model.setTab(PanelModel::Tab::intake);
    EXPECT_TRUE(isSeen());
    EXPECT_EQ(line("text"), "Saved 1 · couldn't read 1");
    EXPECT_EQ(line("advice"), "1 left out: no shelf takes .webm");
    EXPECT_EQ(line("symbol"), "exclamationmark.triangle.fill");

    QMetaObject::invokeMethod(part("importDetails"), "clicked");
    ASSERT_TRUE(comesTrue([this] { return opened(part("importProblems")); }));
    EXPECT_EQ(inSheet("fileList")->property("count").toInt(), 2);
    QMetaObject::invokeMethod(inSheet("copyList"), "clicked");
    EXPECT_TRUE(stage.clipboard.text.endsWith(u"clip.webm: No shelf takes files of the kind “.webm”."_s));
    EXPECT_EQ(stage.clipboard.text.count(u'\n'), 1);
    press(Qt::Key_Escape);

    load(picture(64, 64));
    EXPECT_FALSE(summary()->isVisible()) << "it was told of another moment";
}

TEST_F(ImportSummaryTest, KeepFoldersIsASwitch) {
    const auto one = stage.file("Brand/one.png", picture(8, 8));
    save({one.parent_path()});
    EXPECT_EQ(line("symbol"), "checkmark.circle.fill");
    ASSERT_TRUE(tabTo("Keep folders"));
    press(Qt::Key_Return);
    const auto filed = stage.root() / "Library/Images/Brand/one.png";
    EXPECT_TRUE(comesTrue([&] { return std::filesystem::exists(filed); }));
    EXPECT_TRUE(comesTrue([&] { return stage.model.imagesShelf()->collections() == QStringList{u"Brand"_s}; }));
    EXPECT_TRUE(comesTrue([this] { return part("keepFolders")->property("on").toBool(); }));
    press(Qt::Key_Return);
    EXPECT_TRUE(comesTrue([&] { return !std::filesystem::exists(filed.parent_path()); }));
    EXPECT_TRUE(std::filesystem::exists(stage.root() / "Library/Images/one.png"));
}

} // namespace

} // namespace quillary::test
