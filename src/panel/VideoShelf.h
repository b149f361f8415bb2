#pragma once

#include "panel/Shelf.h"

namespace quillary {

/// The Videos shelf. Main thread.
class VideoShelf : public quillary::Shelf { // qualified: the QML type system looks it up by this name
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("given by the model")

public:
    explicit VideoShelf(const Services& with, QObject* parent = nullptr);

    QString title() const override { return tr("Videos"); }
    void refreshVideos() { refresh(); }
    const LibraryItems& videos() const { return items(); }
    const QStringList& videoCollections() const { return collections(); }
    /// None for all.
    std::optional<QString> videoCollection() const { return collectionFilter().collection(); }

protected:
    FileVerbs fileVerbs() const override { return Shelf::fileVerbs(storage(), Storage::Folder::videos); }
};

} // namespace quillary
