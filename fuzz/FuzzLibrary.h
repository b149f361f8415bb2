#pragma once

#include "fuzz/Promise.h"
#include "library/Storage.h"
#include "support/FakeBookmarks.h"
#include "support/FakeDesktop.h"
#include "support/FakeSettingsStore.h"
#include "support/TemporaryFolder.h"

#include <filesystem>

namespace quillary::fuzz {

/// Where the media of the seeds lie.
inline std::filesystem::path mediaFolder() {
    return std::filesystem::temp_directory_path() / "quillary-fuzz-media";
}

/// A library in a folder of this process.
class FuzzLibrary {
public:
    FuzzLibrary() { m_root = *storage.root(); }

    const std::filesystem::path& root() const { return m_root; }

private:
    test::TemporaryFolder m_folder;
    test::FakeSettingsStore m_settings;
    test::FakeBookmarks m_bookmarks;
    test::FakeDesktop m_desktop{m_folder.path() / "home"};
    std::filesystem::path m_root;

public:
    Storage storage{m_settings, m_bookmarks, m_desktop};
};

} // namespace quillary::fuzz
