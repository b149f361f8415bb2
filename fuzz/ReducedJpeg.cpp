// Feeds bytes to the quick reader of JPEG for thumbnails.
#include "fuzz/Promise.h"
#include "imaging/reduced/ReducedPicture.h"

using namespace quillary;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    for (const int side : {1, 40}) {
        const auto picture = reduced::readJpeg({data, size}, side);
        if (!picture) continue;
        fuzz::require(!picture->image.isNull(), "a picture that is read has pixels");
        fuzz::require(std::max(picture->image.width(), picture->image.height()) >= side, "and as many as were wanted");
        fuzz::require(picture->orientation >= 1 && picture->orientation <= 8, "orientations are those of EXIF");
    }
    return 0;
}
