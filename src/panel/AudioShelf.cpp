#include "panel/AudioShelf.h"

#include "base/Translation.h"
#include "media/LengthLabel.h"
#include "media/SoundOrder.h"

#include <algorithm>
#include <array>

namespace quillary {

namespace fs = std::filesystem;

/// The sounds whose lengths are missing, in list order, and where known lengths are kept.
struct AudioShelf::LengthJob {
    AudioDurationCache cache;
    std::vector<FileLocation> files;
    std::vector<FileDate> dates; ///< of the files, as they were listed
};

QString AudioShelf::label(AudioSort sort) {
    constexpr std::array labels{QT_TRANSLATE_NOOP("Shelf", "Newest"), QT_TRANSLATE_NOOP("Shelf", "Name"),
                                QT_TRANSLATE_NOOP("Shelf", "Shortest"), QT_TRANSLATE_NOOP("Shelf", "Longest")};
    return translate("Shelf", labels.at(static_cast<std::size_t>(sort)));
}

AudioShelf::AudioShelf(const Services& with, AudioPreview& preview, QObject* parent)
    : MediaShelf(with, Storage::Folder::audio,
                 {.none = translate("Shelf", "Nothing readable in that drop"),
                  .wrong = translate("Shelf", "Those aren’t audio files"),
                  .added = QT_TRANSLATE_N_NOOP("Shelf", "Added %n sound(s)")},
                 parent)
    , m_preview(preview)
    , m_lengths(with.work)
    , m_keeping(with.work) {}

AudioShelf::~AudioShelf() = default;

void AudioShelf::setAudioSort(AudioSort sort) {
    m_audioSort = sort;
    Q_EMIT audioSortChanged();
    updateVisible();
}

void AudioShelf::setSelectedAudio(std::optional<fs::path> url) {
    if (m_selectedAudio == url) return;
    m_selectedAudio = std::move(url);
    Q_EMIT selectedAudioChanged();
}

void AudioShelf::arrange(std::vector<quint32>& rows, const LibraryItems& items) const {
    switch (m_audioSort) {
    case AudioSort::recent:
        break; // as they come
    case AudioSort::name:
        return sortSounds(rows, items, SoundOrder::name, m_audioDurations);
    case AudioSort::shortest:
        return sortSounds(rows, items, SoundOrder::shortest, m_audioDurations);
    case AudioSort::longest:
        return sortSounds(rows, items, SoundOrder::longest, m_audioDurations);
    }
}

QVariant AudioShelf::details(const LibraryItem& item) const {
    return lengthLabel(secondsOf(item.url).value_or(0));
}

std::optional<double> AudioShelf::secondsOf(const FileLocation& url) const {
    const auto known = m_audioDurations.find(url);
    return known == m_audioDurations.end() ? std::nullopt : std::optional(known->second);
}

/// What changed or went since its length was read is forgotten, and what went is no longer heard.
void AudioShelf::takenOver() {
    const auto& playing = m_preview.url();
    if (playing && std::ranges::find(items(), FileLocation(*playing), &LibraryItem::url) == items().end())
        m_preview.forget(fs::path(*playing));
    std::unordered_map<FileLocation, FileDate> asked;
    AudioDurationCache::Durations known;
    for (const LibraryItem& item : items()) {
        const auto before = m_asked.find(item.url);
        if (before == m_asked.end() || before->second != item.modified) continue;
        asked.emplace(item.url, item.modified);
        if (const auto length = m_audioDurations.find(item.url); length != m_audioDurations.end())
            known.emplace(item.url, length->second);
    }
    m_asked = std::move(asked);
    m_audioDurations = std::move(known);
    loadDurations();
}

void AudioShelf::loadDurations() {
    m_lengths.cancel();
    auto job = std::make_shared<LengthJob>(
        AudioDurationCache(contents().root / Storage::relativeFolder(Storage::Folder::audio)));
    for (const LibraryItem& item : items())
        if (!m_asked.contains(item.url)) {
            job->files.push_back(item.url);
            job->dates.push_back(item.modified);
        }
    setDurationsRemaining(0);
    if (job->files.empty()) return;
    m_lengths.run([job](const std::stop_token&) { return job->cache.load(job->files); },
                  [this, job](AudioDurationCache::Durations kept) {
                      const auto missing = std::make_shared<LengthJob>(job->cache);
                      for (std::size_t i = 0; i < job->files.size(); ++i) {
                          if (kept.contains(job->files[i])) {
                              m_asked.emplace(job->files[i], job->dates[i]);
                              continue;
                          }
                          missing->files.push_back(job->files[i]);
                          missing->dates.push_back(job->dates[i]);
                      }
                      m_audioDurations.merge(kept);
                      visibleModel()->detailsChanged();
                      if (m_audioSort >= AudioSort::shortest) updateVisible();
                      m_durationsWanted = static_cast<int>(missing->files.size());
                      setDurationsRemaining(missing->files.size());
                      if (!missing->files.empty()) readDurations(missing, 0);
                  });
}

void AudioShelf::readDurations(std::shared_ptr<const LengthJob> job, std::size_t from) {
    const auto batch = std::span(job->files).subspan(from, std::min(batchSize, job->files.size() - from));
    m_lengths.run([job, batch](const std::stop_token& stop) { return AudioDurationCache::read(batch, stop); },
                  [this, job, from, next = from + batch.size()](AudioDurationCache::Durations read) {
                      for (std::size_t i = from; i < next; ++i) m_asked.emplace(job->files[i], job->dates[i]);
                      m_audioDurations.merge(read);
                      setDurationsRemaining(job->files.size() - next);
                      visibleModel()->detailsChanged();
                      if (m_audioSort >= AudioSort::shortest) updateVisible();
                      if (next < job->files.size())
                          readDurations(job, next);
                      else
                          keepDurations();
                  });
}

void AudioShelf::setDurationsRemaining(std::size_t files) {
    m_durationsRemaining = static_cast<int>(files);
    Q_EMIT durationsRemainingChanged();
}

void AudioShelf::keepDurations() {
    const AudioDurationCache cache(contents().root / Storage::relativeFolder(Storage::Folder::audio));
    m_keeping.every([cache, known = m_audioDurations](const std::stop_token&) { return cache.save(known); },
                    [](bool) {});
}

void AudioShelf::play(const QString& url, double fraction) {
    const LibraryItem* const item = itemAt(url);
    if (!item) return;
    setSelectedAudio(item->url);
    m_preview.play(item->url, fraction, secondsOf(item->url));
}

void AudioShelf::scrub(const QString& url, double fraction) {
    const LibraryItem* const item = itemAt(url);
    if (!item) return;
    setSelectedAudio(item->url);
    m_preview.scrub(item->url, fraction, secondsOf(item->url));
}

void AudioShelf::relocated(std::span<const ShelfSelection::Relocation> relocations) {
    for (const auto& [from, to] : relocations) {
        if (auto known = m_audioDurations.extract(from)) {
            known.key() = to;
            m_audioDurations.insert(std::move(known));
        }
        if (auto asked = m_asked.extract(from)) {
            asked.key() = to;
            m_asked.insert(std::move(asked));
        }
        if (m_selectedAudio == from) setSelectedAudio(to);
        m_preview.follow(from, to);
    }
}

void AudioShelf::left(std::span<const fs::path> files) {
    for (const fs::path& file : files) m_preview.forget(file);
}

} // namespace quillary
