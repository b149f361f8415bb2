#pragma once

#include "panel/BatchSave.h"
#include "panel/FileJobs.h"
#include "panel/Shelf.h"
#include "platform/ItemProvider.h"

namespace quillary {

/// What the Audio and the Videos shelf have in common: files of the shelf's kind are copied onto it, into the selected
/// collection. Main thread; the copying is done in the background.
class MediaShelf : public quillary::Shelf { // qualified: the QML type system looks it up by this name
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("given by the model")

public:
    /// Adds what was dropped: the sounds or clips among the files and in the folders, or the one file of a single clip
    /// from Final Cut's browser. The note tells what came of it.
    void save(const std::vector<platform::ItemProvider>& providers);
    void save(const std::vector<std::filesystem::path>& urls);

Q_SIGNALS:
    /// What is to be told of files beyond the note: that some could not be added, or, without a summary, that they came
    /// in folders.
    void filed(const quillary::BatchResult& result, const quillary::BatchTarget& target, const QString& summary);
    /// A clip that is more than one file was dropped: it belongs among the blocks.
    void compoundClipDropped(const quillary::platform::ItemProvider& clip);

protected:
    /// The shelf's own words.
    struct Texts {
        QString none;      ///< for a drop without a file
        QString wrong;     ///< for files of other kinds
        const char* added; ///< for as many as came, not yet translated
    };
    MediaShelf(const Services& with, Storage::Folder folder, Texts texts, QObject* parent);

    FileVerbs fileVerbs() const override { return Shelf::fileVerbs(storage(), m_folder); }
    Storage::Folder folder() const { return m_folder; }

private:
    void saveClip(const platform::ItemProvider& clip, const QByteArray& xml);
    std::shared_ptr<FileJob> begin(const std::vector<std::filesystem::path>& urls, const BatchTarget& target);
    void tell(const BatchResult& result, const BatchTarget& target);
    void tellAdded(int files);

    const Storage::Folder m_folder;
    const Texts m_texts;
    Background m_saving;
};

} // namespace quillary
