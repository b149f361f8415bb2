#include "base/FileUrl.h"
#include "library/ui/FolderListModel.h"
#include "ui/PanelStage.h"

#include <QQuickTextureFactory>
#include <QSemaphore>
#include <QSignalSpy>
#include <gtest/gtest.h>
#include <mutex>

namespace quillary::test {

namespace {

QImage plain(QSize size, QColor color, QImage::Format format = QImage::Format_RGB32) {
    QImage image(size, format);
    image.fill(color);
    return image;
}

/// Two requests that hold both threads until they are let go, whatever else is asked.
class ThumbnailProviderTest : public testing::Test {
protected:
    std::unique_ptr<QQuickImageResponse> ask(const char* name, QSize size = {}) {
        // As an image item passes it on: partly decoded.
        const QByteArray source = "image://thumbnail/" + fileUrl(std::filesystem::path("/pictures") / name) + "?1";
        const QString id =
            QUrl(QString::fromLatin1(source)).toString(QUrl::RemoveScheme | QUrl::RemoveAuthority).mid(1);
        return std::unique_ptr<QQuickImageResponse>(provider.requestImageResponse(id, size));
    }
    QImage load(const std::filesystem::path& file) {
        if (file.filename() == "hold.png") {
            held.release();
            letGo.acquire();
        }
        const std::scoped_lock lock(mutex);
        loaded.push_back(file.filename().string());
        return file.filename() == "broken.png" ? QImage() : plain({220, 100}, Qt::green);
    }
    static bool finishes(QQuickImageResponse& response) {
        QSignalSpy finished(&response, &QQuickImageResponse::finished);
        return finished.wait(10'000);
    }

    std::mutex mutex;
    std::vector<std::string> loaded;
    QSemaphore held;
    QSemaphore letGo;
    ThumbnailProvider provider{[this](const std::filesystem::path& file, std::stop_token) { return load(file); }};
};

TEST_F(ThumbnailProviderTest, ServesTheNewestFirstAndDropsTheUnwanted) {
    const auto first = ask("hold.png", {1, 1});
    const auto second = ask("hold.png", {2, 2});
    held.acquire(2);
    QSignalSpy firstDone(first.get(), &QQuickImageResponse::finished);
    QSignalSpy secondDone(second.get(), &QQuickImageResponse::finished);
    const auto old = ask("old.png");
    const auto unwanted = ask("unwanted.png");
    const auto young = ask("young.png");
    unwanted->cancel();
    EXPECT_TRUE(finishes(*unwanted)) << "a dropped request ends too";
    letGo.release(1);
    EXPECT_TRUE(finishes(*old));
    letGo.release(1);
    EXPECT_TRUE(comesTrue([&] { return firstDone.size() + secondDone.size() == 2; }));
    const std::scoped_lock lock(mutex);
    EXPECT_EQ(std::ranges::count(loaded, "unwanted.png"), 0);
    EXPECT_LT(std::ranges::find(loaded, "young.png"), std::ranges::find(loaded, "old.png"));
}

TEST_F(ThumbnailProviderTest, DeliversPicturesAndTellsFailures) {
    const auto response = ask("a.png", {110, 99});
    ASSERT_TRUE(finishes(*response));
    const std::unique_ptr<QQuickTextureFactory> factory(response->textureFactory());
    ASSERT_TRUE(factory);
    EXPECT_EQ(factory->textureSize(), QSize(110, 99));
    const auto broken = ask("broken.png");
    ASSERT_TRUE(finishes(*broken));
    EXPECT_FALSE(broken->errorString().isEmpty());
}

TEST_F(ThumbnailProviderTest, FindsFilesWhateverTheirNames) {
    const std::vector<std::string> names{"pièce é.png", "100 %.png", "50%25.png", "a#b?c.png", "\xE8.png", "😀;[1].png"};
    for (const std::string& name : names) ASSERT_TRUE(finishes(*ask(name.c_str()))) << name;
    const std::scoped_lock lock(mutex);
    EXPECT_EQ(loaded, names);
}

TEST(ThumbnailCompositionTest, FillsWithOpaquePicturesAndSetsOthersInAMargin) {
    const QImage photo = ThumbnailProvider::composed(plain({220, 100}, Qt::red), {100, 90});
    EXPECT_EQ(photo.size(), QSize(100, 90));
    EXPECT_EQ(photo.pixelColor(50, 1), QColor(Qt::red)) << "cropped at the sides, filled to the top";
    EXPECT_EQ(photo.pixelColor(0, 0).alpha(), 0) << "round corners";
    const QImage icon =
        ThumbnailProvider::composed(plain({220, 220}, Qt::red, QImage::Format_RGBA8888_Premultiplied), {100, 90});
    EXPECT_EQ(icon.pixelColor(50, 45), QColor(Qt::red));
    EXPECT_EQ(icon.pixelColor(50, 5).alpha(), 0);
    EXPECT_EQ(icon.pixelColor(10, 45).alpha(), 0);
}

TEST(FolderListModelTest, ListsPlacesWithCounts) {
    PanelStage stage;
    const auto shelf = stage.root() / "Library" / "Images";
    for (const char* name : {"a.png", "b.png", "Logos/c.png", "Logos/Clients/d.png"}) writeFile(shelf / name, "x");
    FolderListModel here;
    FolderListModel filters;
    filters.setContent(FolderListModel::Content::Filters);
    here.setShelf(stage.model.imagesShelf());
    filters.setShelf(stage.model.imagesShelf());
    QSignalSpy resets(&here, &QAbstractItemModel::modelReset);
    stage.model.refreshShelves();
    const auto texts = [](const FolderListModel& model) {
        QStringList rows;
        for (int row = 0; row < model.count(); ++row) {
            const QModelIndex index = model.index(row);
            rows << QStringLiteral("%1 %2").arg(index.data(FolderListModel::LabelRole).toString(),
                                                index.data(FolderListModel::CountRole).toString());
        }
        return rows.join(u'|').toStdString();
    };
    EXPECT_TRUE(comesTrue([&] { return texts(here) == "Unfiled 2|Recent 0|Logos 2"; })) << texts(here);
    EXPECT_EQ(texts(filters), "All 4|Unfiled 2|Logos 2|Clients 1");
    stage.model.imagesShelf()->pick(Shelf::Place::Collection, QStringLiteral("Logos"));
    EXPECT_TRUE(comesTrue([&] { return texts(here) == "Unfiled 2|Recent 0|Clients 1"; })) << texts(here);
    EXPECT_EQ(resets.size(), 0);
}

} // namespace

} // namespace quillary::test
