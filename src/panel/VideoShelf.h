#pragma once

#include "media/VideoScrubber.h"
#include "panel/MediaShelf.h"

namespace quillary {

/// The Videos shelf: clips, and the frames that their tiles show under the pointer. Main thread.
class VideoShelf : public quillary::MediaShelf { // qualified: the QML type system looks it up by this name
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("given by the model")

public:
    explicit VideoShelf(const Services& with, QObject* parent = nullptr);

    QString title() const override { return tr("Videos"); }
    void refreshVideos() { refresh(); }
    void saveVideos(const std::vector<platform::ItemProvider>& providers) { save(providers); }
    LibraryItems visibleVideos() const { return visible(); }
    const LibraryItems& videos() const { return items(); }
    const QStringList& videoCollections() const { return collections(); }
    /// None for all.
    std::optional<QString> videoCollection() const { return collectionFilter().collection(); }

    VideoScrubber& scrubber() { return m_scrubber; }
    QThreadPool& pool() const { return work(); }

private:
    VideoScrubber m_scrubber;
};

} // namespace quillary
