#pragma once

#include "blocks/MediaIdentity.h"

#include <QByteArray>
#include <array>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillary {

/// The media that blocks keep in a library: a folder "Final Cut Elements" in the folders of Images, Videos, Audio and
/// Recent, and the mark by which a file is known as the copy of an asset.
///
/// Made for one operation: what the folders hold is read once, when it is first asked for. Any one thread at a time.
class FinalCutElements {
public:
    static constexpr std::string_view folderName = "Final Cut Elements";
    static constexpr std::string_view uidAttribute = "com.quillary.assetUID";

    /// `root` is that of the library.
    explicit FinalCutElements(const std::filesystem::path& root);

    /// The folder for copies of this file, by the shelf of its extension: Recent for extensions of no shelf, Images
    /// when there is no file.
    const std::filesystem::path& folderFor(const std::optional<std::filesystem::path>& file) const;
    /// Whether a path lies directly in a folder of that name, in whatever library.
    static bool holds(const std::filesystem::path& file);

    /// What a copy's name begins with: the first 8 characters of the UID and a hyphen; empty without a UID. Characters
    /// that no file name may hold become "-".
    static std::string prefix(const QByteArray& uid);
    /// Empty when the file bears no mark.
    static QByteArray readUID(const std::filesystem::path& file);
    /// Best effort: a file system without attributes keeps no mark.
    static void writeUID(const QByteArray& uid, const std::filesystem::path& file);

    /// The copy of the asset with this UID: of the files that bear its mark the one named `likelyName`, else the first,
    /// in the order of the folders above; else one without a mark that is named like its copies: `likelyName` first.
    /// Without a UID, and where the document has several files of the asset, only `likelyName` counts, which is the
    /// last component of the reference that leads nowhere.
    std::optional<std::filesystem::path> find(const QByteArray& uid, const std::string& likelyName,
                                              MediaIdentity identity = MediaIdentity::uid);

    /// Every file that bears the UID's mark or, without a UID, that name.
    std::vector<std::filesystem::path> alike(const QByteArray& uid, const std::string& name);

private:
    struct Entry {
        std::filesystem::path path;
        QByteArray uid;
    };
    const std::vector<Entry>& entries();

    std::array<std::filesystem::path, 4> m_folders; ///< of Images, Videos, Audio, Recent
    std::optional<std::vector<Entry>> m_entries;
    std::multimap<QByteArray, std::size_t> m_byUID;   ///< by mark, in the order of the folders
    std::multimap<std::string, std::size_t> m_byName; ///< by file name
};

} // namespace quillary
