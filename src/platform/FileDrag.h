#pragma once

#include <QMimeData>
#include <filesystem>
#include <memory>

namespace quillary::platform {

/// What a drag of one file carries to other programs: the file's URL, its bytes as they are, and nothing else.
std::unique_ptr<QMimeData> fileDragData(const std::filesystem::path& file);

} // namespace quillary::platform
