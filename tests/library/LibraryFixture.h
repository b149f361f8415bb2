#pragma once

#include "library/AppSettings.h"
#include "library/Storage.h"
#include "support/FakeBookmarks.h"
#include "support/FakeDesktop.h"
#include "support/FakeSettingsStore.h"
#include "support/TemporaryFolder.h"

#include <QImage>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>

namespace quillary::test {

namespace fs = std::filesystem;
using Folder = Storage::Folder;

inline PastedImage pasted(const QString& name, QColor color = Qt::red, std::optional<qint64> sourceBytes = {}) {
    QImage image(4, 3, QImage::Format_RGBA8888);
    image.fill(color);
    return {image, image.size(),          true,       PastedImage::Bitmap{QStringLiteral("image/png")},
            name,  QStringLiteral("PNG"), sourceBytes};
}

/// Every path below a folder, links and hidden files included.
inline std::set<std::string> everythingIn(const fs::path& folder) {
    std::set<std::string> found;
    for (const auto& entry : fs::recursive_directory_iterator(folder))
        found.insert(entry.path().lexically_relative(folder).native());
    return found;
}

inline void setDate(const fs::path& file, int seconds) {
    fs::last_write_time(file,
                        std::chrono::file_clock::from_sys(std::chrono::sys_seconds(std::chrono::seconds(seconds))));
}

/// A storage over a library of its own, in the default location.
class LibraryTest : public testing::Test {
protected:
    TemporaryFolder folder;
    FakeSettingsStore settings;
    FakeBookmarks bookmarks;
    FakeDesktop desktop{folder / "home"};
    Storage storage{settings, bookmarks, desktop};
    const fs::path root = *storage.root();
    const fs::path images = root / "Library/Images";
    const fs::path recent = root / "Recent";
};

} // namespace quillary::test
