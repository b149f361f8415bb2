#include "panel/VideoShelf.h"

namespace quillary {

VideoShelf::VideoShelf(const Services& with, QObject* parent)
    : MediaShelf(with, Storage::Folder::videos,
                 {.none = QStringLiteral("That drag carried no Final Cut clip"),
                  .wrong = QStringLiteral("Those aren’t video files"),
                  .noun = QStringLiteral("video")},
                 parent)
    , m_scrubber(with.work) {}

} // namespace quillary
