#include "panel/DragDocuments.h"

#include "blocks/ArrangementStore.h"

#include <algorithm>

namespace quillary {

namespace fs = std::filesystem;

const DragDocuments::Prepared* DragDocuments::find(const fs::path& block, const platform::FileStamp& stamp) const {
    const auto found = std::ranges::find_if(m_kept, [&](const Prepared& kept) {
        return kept.block == block && kept.stamp == stamp && !kept.until.hasExpired();
    });
    return found == m_kept.end() ? nullptr : &*found;
}

void DragDocuments::keep(Prepared prepared) {
    std::erase_if(m_kept, [&](const Prepared& kept) { return kept.block == prepared.block; });
    m_kept.push_front(std::move(prepared));
    qsizetype bytes = 0;
    std::size_t count = 0;
    while (count < m_kept.size() && count < mostKept && (bytes += m_kept[count].xml.size()) <= mostBytes) ++count;
    // The newest stays however large it is.
    m_kept.resize(std::max<std::size_t>(count, 1));
}

void DragDocuments::prepare(const fs::path& block) {
    const auto stamp = platform::fileStamp(block);
    if (!stamp || stamp->size <= small || find(block, *stamp)) return;
    const std::pair wanted{block, *stamp};
    if (m_preparing.busy() && m_underWay == wanted) return;
    m_underWay = wanted;
    m_preparing.run(
        [&storage = m_storage, block](const std::stop_token&) { return ArrangementStore(storage).xml(block); },
        [this, wanted](std::optional<QByteArray> xml) {
            m_underWay.reset();
            if (xml) keep({wanted.first, wanted.second, *std::move(xml), QDeadlineTimer(fresh)});
        });
}

std::expected<QByteArray, DragDocuments::Missing> DragDocuments::take(const fs::path& block) {
    const auto stamp = platform::fileStamp(block);
    if (!stamp) return std::unexpected(Missing::gone);
    if (stamp->size <= small) {
        auto xml = ArrangementStore(m_storage).xml(block);
        return xml ? std::expected<QByteArray, Missing>(*std::move(xml)) : std::unexpected(Missing::gone);
    }
    if (const Prepared* prepared = find(block, *stamp)) return prepared->xml;
    prepare(block);
    return std::unexpected(Missing::notReady);
}

} // namespace quillary
