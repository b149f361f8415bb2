#pragma once

#include <QByteArray>
#include <filesystem>

namespace quillary::benchmark {

/// A compound clip of `assets` assets, each with a bookmark and metadata of about two kilobytes and one clip on the
/// storyline with a title above it: the make of a long project. The media are named "N.mov" in `media`.
QByteArray largeClip(int assets, const std::filesystem::path& media);

} // namespace quillary::benchmark
