#pragma once

#include "base/FileUrl.h"
#include "library/AppSettings.h"
#include "library/BuiltInLibrary.h"
#include "library/Storage.h"
#include "panel/PanelModel.h"
#include "platform/ItemProvider.h"
#include "support/FakeBookmarks.h"
#include "support/FakeDesktop.h"
#include "support/FakeFiles.h"
#include "support/FakePasteboard.h"
#include "support/FakeSettingsStore.h"
#include "support/TemporaryFolder.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QImage>
#include <QThreadPool>
#include <gtest/gtest.h>

namespace quillary::test {

inline QImage picture(int width, int height, QColor color = Qt::red) {
    QImage image(width, height, QImage::Format_RGBA8888);
    image.fill(color);
    return image;
}

/// A model over a real library in a folder of its own.
class PanelModelTest : public testing::Test {
protected:
    PanelModelTest() { make(); }
    ~PanelModelTest() override {
        model.reset();
        saves.waitForDone();
        work.waitForDone();
    }

    void make() {
        model.reset();
        saves.setMaxThreadCount(1);
        model = std::make_unique<PanelModel>(PanelModel::Collaborators{
            storage, settings, builtIns, clipboard, chooser, fileManager, work, saves, nullptr, folder / "cache"});
    }

    /// Runs the event loop until the condition holds.
    template <typename Condition>
    bool comesTrue(Condition condition) {
        const QDeadlineTimer limit(20'000);
        while (!condition() && !limit.hasExpired()) QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        return condition();
    }
    /// Lets everything that is under way come home.
    void settle() {
        for (int i = 0; i < 3; ++i) {
            saves.waitForDone();
            work.waitForDone();
            QCoreApplication::processEvents();
        }
    }

    std::filesystem::path file(const std::string& name, const QImage& image) {
        const auto path = folder / name;
        QByteArray bytes;
        QBuffer buffer(&bytes); // the toolkit writes no file whose name is no text
        EXPECT_TRUE(image.save(&buffer, path.extension().c_str() + 1));
        writeFile(path, bytes.toStdString());
        return path;
    }
    void stage(const std::filesystem::path& path) {
        model->load(path);
        settle();
    }
    std::filesystem::path root() { return *storage.root(); }
    ImagesShelf& images() { return *model->imagesShelf(); }
    static QString url(const LibraryItem& item) { return QString::fromLatin1(fileUrl(item.url)); }
    QString message() const { return model->failureMessage(); }

    TemporaryFolder folder;
    FakeSettingsStore store;
    FakeBookmarks bookmarks;
    FakeDesktop desktop{folder.path()};
    AppSettings settings{store};
    Storage storage{store, bookmarks, desktop, folder / "library"};
    BuiltInLibrary builtIns{folder / "BuiltIn"};
    FakeClipboard clipboard;
    FakeFileChooser chooser;
    FakeFileManager fileManager;
    QThreadPool work;
    QThreadPool saves;
    std::unique_ptr<PanelModel> model;
};

} // namespace quillary::test
