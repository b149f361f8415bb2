#include "panel/AudioShelf.h"

#include <array>

namespace quillary {

QString AudioShelf::label(AudioSort sort) {
    constexpr std::array<QStringView, 4> labels{u"Newest", u"Name", u"Shortest", u"Longest"};
    return labels.at(static_cast<std::size_t>(sort)).toString();
}

AudioShelf::AudioShelf(const Services& with, QObject* parent)
    : Shelf(with, std::make_shared<ShelfListing>(Storage::Folder::audio), parent) {}

void AudioShelf::setAudioSort(AudioSort sort) {
    m_audioSort = sort;
    Q_EMIT audioSortChanged();
    updateVisible();
}

void AudioShelf::setSelectedAudio(std::optional<std::filesystem::path> url) {
    if (m_selectedAudio == url) return;
    m_selectedAudio = std::move(url);
    Q_EMIT selectedAudioChanged();
}

void AudioShelf::arrange(std::vector<quint32>& rows, const LibraryItems& items) const {
    if (m_audioSort == AudioSort::name) sortByName(rows, items);
}

void AudioShelf::relocated(std::span<const ShelfSelection::Relocation> relocations) {
    for (const auto& [from, to] : relocations) {
        if (auto known = m_audioDurations.extract(from)) {
            known.key() = to;
            m_audioDurations.insert(std::move(known));
        }
        if (m_selectedAudio == from) setSelectedAudio(to);
    }
}

} // namespace quillary
