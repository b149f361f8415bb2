#pragma once

#include <QMimeData>
#include <filesystem>
#include <functional>
#include <memory>
#include <vector>

namespace quillary::platform {

class ItemProvider;

/// What a drag of files carries to other programs: their URLs, their bytes as they are, and nothing else. `begun` is
/// when the drag began: the time stamp of the pointer's event.
std::unique_ptr<QMimeData> fileDragData(const std::vector<std::filesystem::path>& files, quint64 begun);
/// The same for files that need not exist when the drag begins: they are asked for on the main thread whenever another
/// program wants the data, and may be waited for in an event loop of their own. None of them is no data.
std::unique_ptr<QMimeData> fileDragData(std::function<std::vector<std::filesystem::path>()> files, quint64 begun);

/// Whether the picture that a drag carries can be half transparent on this screen now.
bool dragsAreTranslucent();

/// What copied files are on the clipboard: PNG bytes first, if there are any, then the URLs, then the URLs as file
/// managers mark copied ones.
std::unique_ptr<QMimeData> fileOfferData(const std::vector<std::filesystem::path>& files, const QByteArray& png);

/// What a drag of an item carries: its data under its types as they are named, in its order, of any size. Plain text is
/// offered under its MIME name as well, last, since programs here know no other.
std::unique_ptr<QMimeData> itemDragData(const ItemProvider& item, quint64 begun);

} // namespace quillary::platform
