#pragma once

#include "imaging/ImageIntakeError.h"
#include "values/PastedImage.h"

#include <QString>
#include <cstddef>
#include <expected>
#include <filesystem>
#include <stop_token>
#include <vector>

namespace quillary {

/// The pictures that were staged last, each a folder of the cache: the picture as PNG, a small one to be shown, and
/// what was known of it. A convenience beside the library, so nothing here fails aloud: what cannot be kept is not
/// kept.
///
/// An entry appears whole under the name of its content, in one step, and goes in one step, so several processes may
/// keep and clear at the same time. Any thread.
class PasteHistory {
public:
    static constexpr std::size_t most = 12;
    static constexpr int previewSide = 96; ///< pixels of the small picture's longer side

    /// `cacheFolder` is the desktop's folder for caches; an empty one keeps nothing.
    explicit PasteHistory(const std::filesystem::path& cacheFolder);

    struct Entry {
        std::filesystem::path folder;
        QString name;

        std::filesystem::path picture() const { return folder / "picture.png"; }
        std::filesystem::path preview() const { return folder / "preview.png"; }
        bool operator==(const Entry&) const = default;
    };
    /// The newest first, at most `most`.
    std::vector<Entry> entries() const;

    /// Puts the image first; one that is kept already only moves there. `png` is a file with the image as PNG, whose
    /// attributes are kept; an empty path has it encoded here.
    void keep(const PastedImage& image, const std::filesystem::path& png = {}) const;
    /// As it was when it was staged; `unreadableFile` when it has gone.
    std::expected<PastedImage, ImageIntakeError> read(const Entry& entry, std::stop_token stop = {}) const;
    /// Returns how many there were.
    int clear() const;

private:
    void prune() const;
    bool discard(const std::filesystem::path& entry) const;

    std::filesystem::path m_folder;
};

} // namespace quillary
