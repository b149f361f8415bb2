// Turns and mirrors SVG documents in place. A document that was taken stays one that is taken.
#include "fuzz/Promise.h"
#include "imaging/ImageTransform.h"
#include "support/TemporaryFolder.h"

using namespace quillary;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const test::TemporaryFolder folder;
    const auto file = folder.path() / "drawing.svg";
    test::writeFile(file, std::string_view(reinterpret_cast<const char*>(data), size));
    bool taken = ImageTransform::apply(ImageTransform::Operation::rotateLeft, file).has_value();
    fuzz::require(taken || std::filesystem::file_size(file) == size, "what is not taken stays as it is");
    for (const auto operation : ImageTransform::allOperations) {
        if (!taken) break;
        taken = ImageTransform::apply(operation, file).has_value();
        fuzz::require(taken, "what was turned can be turned on");
    }
    return 0;
}
