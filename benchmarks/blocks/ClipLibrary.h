#pragma once

#include "LargeClip.h"
#include "blocks/ArrangementStore.h"
#include "library/Storage.h"
#include "support/FakeBookmarks.h"
#include "support/FakeDesktop.h"
#include "support/FakeSettingsStore.h"
#include "support/TemporaryFolder.h"

namespace quillary::benchmark {

/// An empty library, and outside it the media of clips of up to `assets` assets.
struct ClipLibrary {
    static constexpr int assets = 12'000;

    test::TemporaryFolder folder;
    test::FakeSettingsStore settings;
    test::FakeBookmarks bookmarks;
    test::FakeDesktop desktop{folder / "home"};
    Storage storage{settings, bookmarks, desktop};
    ArrangementStore store{storage};

    ClipLibrary() {
        for (int n = 1; n <= assets; ++n) test::writeFile(media() / (std::to_string(n) + ".mov"), "media");
    }
    std::filesystem::path media() const { return folder / "media"; }
};

} // namespace quillary::benchmark
