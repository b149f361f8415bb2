#pragma once

#include "media/AudioDurationCache.h"
#include "media/AudioPreview.h"
#include "panel/MediaShelf.h"

namespace quillary {

/// Makes the player known to QML.
struct AudioPreviewType {
    Q_GADGET
    QML_FOREIGN(quillary::AudioPreview)
    QML_NAMED_ELEMENT(AudioPreview)
    QML_UNCREATABLE("given by the shelf")
};

/// The Audio shelf: sounds with their lengths, and the player that previews them. Lengths that are not known yet are
/// read in the background, in batches; a listing that changes begins anew with what is missing then. Main thread.
class AudioShelf : public quillary::MediaShelf { // qualified: the QML type system looks it up by this name
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("given by the model")
    Q_PROPERTY(
        quillary::AudioShelf::AudioSort audioSort READ audioSort WRITE setAudioSort NOTIFY audioSortChanged FINAL)
    /// Files whose length is still being read; 0 when idle.
    Q_PROPERTY(int durationsRemaining READ durationsRemaining NOTIFY durationsRemainingChanged FINAL)
    /// Of how many lengths that are being read.
    Q_PROPERTY(int durationsWanted READ durationsWanted NOTIFY durationsRemainingChanged FINAL)
    Q_PROPERTY(quillary::AudioPreview* preview READ preview CONSTANT FINAL)

public:
    enum class AudioSort {
        recent,
        name,
        shortest,
        longest,
        Recent = recent,
        Name = name,
        Shortest = shortest,
        Longest = longest
    };
    Q_ENUM(AudioSort)
    /// The text that the menu shows.
    Q_INVOKABLE static QString label(quillary::AudioShelf::AudioSort sort);

    static constexpr std::size_t batchSize = 300;

    AudioShelf(const Services& with, AudioPreview& preview, QObject* parent = nullptr);
    ~AudioShelf() override;

    QString title() const override { return tr("Audio"); }
    void refreshAudio() { refresh(); }
    void saveAudio(const std::vector<platform::ItemProvider>& providers) { save(providers); }
    LibraryItems visibleAudio() const { return visible(); }
    const LibraryItems& audio() const { return items(); }
    const QStringList& audioCollections() const { return collections(); }
    /// None for all.
    std::optional<QString> audioCollection() const { return collectionFilter().collection(); }
    AudioSort audioSort() const { return m_audioSort; }
    void setAudioSort(AudioSort sort);
    /// Seconds of the sounds whose length is known.
    const AudioDurationCache::Durations& audioDurations() const { return m_audioDurations; }
    int durationsRemaining() const { return m_durationsRemaining; }
    int durationsWanted() const { return m_durationsWanted; }
    AudioPreview* preview() { return &m_preview; }

    /// Plays the sound that the shelf shows under this file: URL from a fraction of its length.
    Q_INVOKABLE void play(const QString& url, double fraction);
    Q_INVOKABLE void scrub(const QString& url, double fraction);
    const std::optional<std::filesystem::path>& selectedAudio() const { return m_selectedAudio; }
    void setSelectedAudio(std::optional<std::filesystem::path> url);

Q_SIGNALS:
    void audioSortChanged();
    void durationsRemainingChanged();
    void selectedAudioChanged();

protected:
    void takenOver() override;
    QVariant details(const LibraryItem& item) const override;
    void arrange(std::vector<quint32>& rows, const LibraryItems& items) const override;
    void relocated(std::span<const ShelfSelection::Relocation> relocations) override;
    void left(std::span<const std::filesystem::path> files) override;

private:
    struct LengthJob;
    void loadDurations();
    void readDurations(std::shared_ptr<const LengthJob> job, std::size_t from);
    void setDurationsRemaining(std::size_t files);
    void keepDurations();
    std::optional<double> secondsOf(const FileLocation& url) const;

    AudioPreview& m_preview;
    AudioSort m_audioSort = AudioSort::recent;
    AudioDurationCache::Durations m_audioDurations;
    /// The date of each file whose length was asked for, also of those that gave none: they are not asked again.
    std::unordered_map<FileLocation, FileDate> m_asked;
    int m_durationsRemaining = 0;
    int m_durationsWanted = 0;
    Background m_lengths;
    Background m_keeping;
    std::optional<std::filesystem::path> m_selectedAudio;
};

} // namespace quillary
