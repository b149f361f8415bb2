#pragma once

#include "library/Storage.h"
#include "support/FakeBookmarks.h"
#include "support/FakeDesktop.h"
#include "support/FakeSettingsStore.h"

#include <filesystem>

namespace quillary::fuzz {

/// Where the media of the seeds lie.
inline std::filesystem::path mediaFolder() {
    return std::filesystem::temp_directory_path() / "quillary-fuzz-media";
}

/// A library in a folder of this process, removed when it ends in order.
class FuzzLibrary {
public:
    FuzzLibrary() { m_root = *storage.root(); }
    ~FuzzLibrary() {
        std::error_code ignored;
        std::filesystem::remove_all(m_folder, ignored);
    }
    FuzzLibrary(const FuzzLibrary&) = delete;
    FuzzLibrary& operator=(const FuzzLibrary&) = delete;

    const std::filesystem::path& root() const { return m_root; }

private:
    static std::filesystem::path made() {
        std::string pattern = (std::filesystem::temp_directory_path() / "quillary-fuzz-XXXXXX").string();
        if (!mkdtemp(pattern.data())) std::abort();
        return std::filesystem::canonical(pattern);
    }

    std::filesystem::path m_folder = made();
    test::FakeSettingsStore m_settings;
    test::FakeBookmarks m_bookmarks;
    test::FakeDesktop m_desktop{m_folder / "home"};
    std::filesystem::path m_root;

public:
    Storage storage{m_settings, m_bookmarks, m_desktop};
};

} // namespace quillary::fuzz
