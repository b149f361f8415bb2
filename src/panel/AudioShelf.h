#pragma once

#include "panel/Shelf.h"

#include <map>

namespace quillary {

/// The Audio shelf. Main thread.
class AudioShelf : public quillary::Shelf { // qualified: the QML type system looks it up by this name
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("given by the model")
    Q_PROPERTY(
        quillary::AudioShelf::AudioSort audioSort READ audioSort WRITE setAudioSort NOTIFY audioSortChanged FINAL)

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

    explicit AudioShelf(const Services& with, QObject* parent = nullptr);

    QString title() const override { return tr("Audio"); }
    void refreshAudio() { refresh(); }
    const LibraryItems& audio() const { return items(); }
    const QStringList& audioCollections() const { return collections(); }
    /// None for all.
    std::optional<QString> audioCollection() const { return collectionFilter().collection(); }
    AudioSort audioSort() const { return m_audioSort; }
    void setAudioSort(AudioSort sort);
    /// Seconds of the sounds whose length is known.
    const std::map<std::filesystem::path, double>& audioDurations() const { return m_audioDurations; }
    const std::optional<std::filesystem::path>& selectedAudio() const { return m_selectedAudio; }
    void setSelectedAudio(std::optional<std::filesystem::path> url);

Q_SIGNALS:
    void audioSortChanged();
    void selectedAudioChanged();

protected:
    FileVerbs fileVerbs() const override { return Shelf::fileVerbs(storage(), Storage::Folder::audio); }
    void arrange(std::vector<quint32>& rows, const LibraryItems& items) const override;
    void relocated(std::span<const ShelfSelection::Relocation> relocations) override;

private:
    AudioSort m_audioSort = AudioSort::recent;
    std::map<std::filesystem::path, double> m_audioDurations;
    std::optional<std::filesystem::path> m_selectedAudio;
};

} // namespace quillary
