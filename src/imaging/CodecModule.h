#pragma once

namespace quillary {

namespace codecs {
class Bitmaps;
}

/// The module of bitmap codecs, loaded when it is first asked for, which takes some 20 ms. It lies beside the program
/// or in ../lib/quillary. Null, with a warning, when it is missing or cannot start. Any thread.
codecs::Bitmaps* bitmapCodecs();

} // namespace quillary
