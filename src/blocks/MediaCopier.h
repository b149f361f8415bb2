#pragma once

#include "blocks/FinalCutElements.h"
#include "platform/FileError.h"
#include "platform/PendingFile.h"

#include <QByteArray>
#include <cstdint>
#include <expected>
#include <filesystem>
#include <functional>
#include <optional>
#include <stop_token>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace quillary {

/// How long work on media tells how far it is, and how it is ended early. Both may be left out.
struct MediaProgress {
    /// Bytes copied so far, of how many in all. Called on the thread that copies.
    std::function<void(std::uint64_t done, std::uint64_t total)> report = {};
    std::stop_token stop = {};
};

/// Brings the media of one document into the library. Made for one operation, on any one thread.
///
/// A copy's name is made from the asset's UID and the file's name, so that the same asset always lands on the same
/// file and is copied once, also by two processes at the same time. A name that is taken by another file (another
/// asset's mark, another size where there is no UID, another file of this very document, a copy that was cut short)
/// gets a number instead.
class MediaCopier {
public:
    struct Source {
        std::optional<std::filesystem::path> file; ///< none when the document names no file of this machine
        QByteArray uid;                            ///< of the asset; may be empty
        MediaIdentity identity = MediaIdentity::uid;
    };

    explicit MediaCopier(FinalCutElements& elements, MediaProgress progress = {})
        : m_elements(elements), m_progress(std::move(progress)) {}

    /// Tells beforehand of a copy that is to come, so that the progress knows its whole.
    void announce(const Source& source, const std::filesystem::path& folder);

    /// Whether there is nothing that `copyMedia` could take: the source is gone, and the library holds no copy of it.
    bool isMissing(const Source& source, const std::filesystem::path& folder);

    /// The place of the asset's file in the library: where it lies already, or a copy in `folder`, which is made when
    /// it is missing. Links are followed; what is no regular file is refused. A copy has its final name when it is
    /// whole, bears the mark, and is dated now.
    std::expected<std::filesystem::path, platform::FileError> copyMedia(const Source& source,
                                                                        const std::filesystem::path& folder);

private:
    bool isTheAssets(const std::filesystem::path& copy, std::uintmax_t copied, const Source& source,
                     bool numbered) const;
    /// What the library holds of a source that is gone.
    std::optional<std::filesystem::path> found(const Source& source);
    std::uint64_t announcedBytes() const;
    std::expected<platform::PendingFile, platform::FileError> filled(const Source& source,
                                                                     const std::filesystem::path& folder);

    FinalCutElements& m_elements;
    MediaProgress m_progress;
    std::uint64_t m_done = 0;
    std::uint64_t m_total = 0;
    std::vector<std::pair<Source, std::filesystem::path>> m_announced;
    std::unordered_set<std::string> m_cleared;            ///< folders without what killed writers left
    std::unordered_map<std::string, std::string> m_given; ///< copies of this document, with their sources
};

} // namespace quillary
