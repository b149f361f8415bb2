#pragma once

#include "base/FileUrl.h"
#include "library/AppSettings.h"
#include "library/BuiltInLibrary.h"
#include "library/Storage.h"
#include "panel/PanelModel.h"
#include "support/EventLoop.h"
#include "support/FakeBookmarks.h"
#include "support/FakeDesktop.h"
#include "support/FakeFiles.h"
#include "support/FakeSettingsStore.h"
#include "support/TemporaryFolder.h"

#include <QBuffer>
#include <QImage>
#include <QThreadPool>

namespace quillary::test {

inline QImage picture(int width, int height, QColor color = Qt::red) {
    QImage image(width, height, QImage::Format_RGBA8888);
    image.fill(color);
    return image;
}

/// A file's address, as the panel spells it.
inline QString urlOf(const std::filesystem::path& file) {
    return QString::fromLatin1(fileUrl(file));
}

/// What a panel's model works with, over a real library in a folder of its own.
struct PanelParts {
    explicit PanelParts(const std::filesystem::path& builtInSets = {})
        : builtIns(builtInSets.empty() ? folder / "BuiltIn" : builtInSets) {
        saves.setMaxThreadCount(1);
    }
    ~PanelParts() {
        saves.waitForDone();
        work.waitForDone();
    }

    PanelModel::Collaborators collaborators() {
        return {storage,     settings, builtIns, clipboard, chooser,
                fileManager, work,     saves,    nullptr,   desktop.cacheFolder()};
    }
    std::filesystem::path root() { return *storage.root(); }
    /// Saves a picture below the folder.
    std::filesystem::path file(const std::filesystem::path& name, const QImage& image) {
        // The toolkit writes no file whose name is no text.
        QBuffer buffer;
        if (!image.save(&buffer, name.extension().c_str() + 1)) qFatal("cannot encode %s", name.c_str());
        return writeFile(folder / name, buffer.data());
    }

    TemporaryFolder folder;
    FakeSettingsStore store;
    FakeBookmarks bookmarks;
    FakeDesktop desktop{folder.path()};
    AppSettings settings{store};
    Storage storage{store, bookmarks, desktop, folder / "library"};
    BuiltInLibrary builtIns;
    FakeClipboard clipboard;
    FakeFileChooser chooser;
    FakeFileManager fileManager;
    QThreadPool work;
    QThreadPool saves;
};

} // namespace quillary::test
