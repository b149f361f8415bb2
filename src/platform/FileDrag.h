#pragma once

#include <QMimeData>
#include <filesystem>
#include <functional>
#include <memory>
#include <vector>

namespace quillary::platform {

class ItemProvider;

/// What a drag of files carries to other programs: their URLs, their bytes as they are, and nothing else.
std::unique_ptr<QMimeData> fileDragData(const std::vector<std::filesystem::path>& files);
/// The same for files that need not exist when the drag begins: they are asked for on the main thread whenever another
/// program wants the data, and may be waited for in an event loop of their own. None of them is no data.
std::unique_ptr<QMimeData> fileDragData(std::function<std::vector<std::filesystem::path>()> files);

/// What copied files are on the clipboard: PNG bytes first, if there are any, then the URLs, then the URLs as file
/// managers mark copied ones.
std::unique_ptr<QMimeData> fileOfferData(const std::vector<std::filesystem::path>& files, const QByteArray& png);

/// What a drag of an item carries: its data under its types as they are named, in its order. Plain text is offered
/// under its MIME name as well, since programs here know no other.
std::unique_ptr<QMimeData> itemDragData(const ItemProvider& item);

} // namespace quillary::platform
