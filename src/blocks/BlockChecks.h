#pragma once

#include "blocks/ArrangementFailure.h"
#include "blocks/BlockHealth.h"
#include "blocks/FinalCutElements.h"
#include "platform/FileAttributes.h"

#include <QByteArray>
#include <expected>
#include <span>
#include <stop_token>
#include <unordered_map>

namespace quillary {

/// Looks after the media of blocks; nothing is ever written. What documents hold, and whether media are whole, is kept
/// between checks and read anew only when their date, size or inode changed; whether media are there is asked of the
/// file system each time. One object, used by one thread at a time.
class BlockChecks {
public:
    /// The health of each block, or why it cannot be read, in the order given. `root` is that of the library. A stop
    /// request ends it early: the result is void then, what was read is kept.
    using Checked = std::expected<BlockHealth, ArrangementFailure>;
    std::vector<Checked> check(const std::filesystem::path& root, std::span<const std::filesystem::path> blocks,
                               const std::stop_token& stop = {});

    /// Forgets all other blocks.
    void keepOnly(std::span<const std::filesystem::path> blocks);

    /// How many documents were read since this object was made.
    int documentsRead() const { return m_documentsRead; }

private:
    struct Reference {
        QString name;
        QByteArray uid;
        std::filesystem::path file; ///< empty when the document names none
        MediaIdentity identity = MediaIdentity::uid;
    };
    struct Document {
        platform::FileStamp stamp;
        QString version;
        std::vector<Reference> media;
    };
    std::expected<const Document*, ArrangementFailure> document(const std::filesystem::path& block);

    BlockHealth::Media lookAt(const Reference& reference, FinalCutElements& elements);
    bool isCutShort(const std::filesystem::path& file, const platform::FileStamp& stamp);

    std::unordered_map<std::string, Document> m_documents; ///< by path
    struct Looked {
        platform::FileStamp stamp;
        bool isCutShort = false;
    };
    std::unordered_map<std::string, Looked> m_looked; ///< into media, by path
    int m_documentsRead = 0;
};

} // namespace quillary
