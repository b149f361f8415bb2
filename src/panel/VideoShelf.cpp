#include "panel/VideoShelf.h"

#include "base/Translation.h"

namespace quillary {

VideoShelf::VideoShelf(const Services& with, QObject* parent)
    : MediaShelf(with, Storage::Folder::videos,
                 {.none = translate("Shelf", "That drag carried no Final Cut clip"),
                  .wrong = translate("Shelf", "Those aren’t video files"),
                  .added = QT_TRANSLATE_N_NOOP("Shelf", "Added %n video(s)")},
                 parent)
    , m_scrubber(with.work) {}

} // namespace quillary
