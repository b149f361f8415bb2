#include "panel/VideoShelf.h"

namespace quillary {

VideoShelf::VideoShelf(const Services& with, QObject* parent)
    : Shelf(with, std::make_shared<ShelfListing>(Storage::Folder::videos), parent) {}

} // namespace quillary
