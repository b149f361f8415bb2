#include "blocks/BlockChecks.h"

#include "base/Text.h"
#include "base/Try.h"
#include "blocks/FCPXMLDocument.h"
#include "blocks/MediaWholeness.h"

#include <unordered_set>

namespace quillary {

namespace fs = std::filesystem;

namespace {

using State = BlockHealth::State;

/// Whether another file in the library is the same asset's: it bears the same mark, or, where that is not enough, the
/// same name, and is as large.
bool hasTwin(FinalCutElements& elements, const fs::path& file, const QByteArray& uid, MediaIdentity identity,
             std::uintmax_t size) {
    for (const fs::path& other : elements.alike(uid, file.filename().native())) {
        if (identity != MediaIdentity::uid && other.filename() != file.filename()) continue;
        std::error_code failed;
        if (platform::regularFileSize(other) == size && !fs::equivalent(other, file, failed)) return true;
    }
    return false;
}

} // namespace

std::expected<const BlockChecks::Document*, ArrangementFailure> BlockChecks::document(const fs::path& block) {
    const auto stamp = platform::fileStamp(block);
    const auto known = m_documents.find(block.native());
    if (stamp && known != m_documents.end() && known->second.stamp == *stamp) return &known->second;
    m_documents.erase(block.native());
    ++m_documentsRead;
    const FCPXMLDocument read = TRY(FCPXMLDocument::read(block));
    Document found{.stamp = stamp.value_or(platform::FileStamp()),
                   .version = QString::fromUtf8(read.root().attribute("version").value_or(QByteArray())),
                   .media = {}};
    for (const auto& reference : read.media()) {
        const auto file = reference.file();
        found.media.push_back(
            {file ? shown(file->filename()) : QString::fromUtf8(reference.holder.attribute("src").value_or("")),
             reference.uid, file.value_or(fs::path()), reference.identity});
    }
    return &m_documents.insert_or_assign(block.native(), std::move(found)).first->second;
}

bool BlockChecks::isCutShort(const fs::path& file, const platform::FileStamp& stamp) {
    const auto known = m_looked.find(file.native());
    if (known != m_looked.end() && known->second.stamp == stamp) return known->second.isCutShort;
    return m_looked.insert_or_assign(file.native(), Looked{stamp, MediaWholeness::isCutShort(file)})
        .first->second.isCutShort;
}

BlockHealth::Media BlockChecks::lookAt(const Reference& reference, FinalCutElements& elements) {
    BlockHealth::Media media{.name = reference.name, .path = reference.file};
    auto stamp = platform::fileStamp(media.path);
    if (stamp) {
        if (hasTwin(elements, media.path, reference.uid, reference.identity, stamp->size))
            media.state = State::duplicate;
    } else {
        const bool known = FinalCutElements::holds(media.path);
        const auto found =
            elements.find(reference.uid, known ? media.path.filename().native() : "", reference.identity);
        media.state = found ? State::moved : State::missing;
        if (!found) return media;
        media.path = *found;
        stamp = platform::fileStamp(*found);
    }
    if (stamp && media.state != State::moved && isCutShort(media.path, *stamp)) media.state = State::incomplete;
    return media;
}

std::vector<BlockChecks::Checked> BlockChecks::check(const fs::path& root, std::span<const fs::path> blocks,
                                                     const std::stop_token& stop) {
    FinalCutElements elements(root);
    std::vector<Checked> checked;
    for (const fs::path& block : blocks) {
        if (stop.stop_requested()) return {};
        const auto read = document(block);
        if (!read) {
            checked.emplace_back(std::unexpected(read.error()));
            continue;
        }
        BlockHealth health{.block = block, .version = (*read)->version, .media = {}};
        std::unordered_set<std::string> counted;
        for (const Reference& reference : (*read)->media) {
            BlockHealth::Media media = lookAt(reference, elements);
            const auto size = platform::regularFileSize(media.path);
            if (size && counted.insert(media.path.native()).second) health.bytes += *size;
            health.media.push_back(std::move(media));
        }
        checked.emplace_back(std::move(health));
    }
    return checked;
}

void BlockChecks::keepOnly(std::span<const fs::path> blocks) {
    std::unordered_set<std::string> kept;
    for (const fs::path& block : blocks) kept.insert(block.native());
    std::erase_if(m_documents, [&](const auto& entry) { return !kept.contains(entry.first); });
    std::unordered_set<std::string> media;
    for (const auto& [block, document] : m_documents)
        for (const Reference& reference : document.media) media.insert(reference.file.native());
    std::erase_if(m_looked, [&](const auto& entry) { return !media.contains(entry.first); });
}

} // namespace quillary
