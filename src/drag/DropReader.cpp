#include "drag/DropReader.h"

#include <algorithm>
#include <iterator>

namespace quillary::DropReader {

using platform::ItemProvider;

namespace {

bool isImage(const ItemProvider& item) {
    return item.hasItemConforming(QStringLiteral("image/*")) ||
           item.hasItemConforming(QStringLiteral("application/pdf"));
}

} // namespace

void fileURLs(const std::vector<ItemProvider>& providers, QObject* context,
              std::function<void(std::vector<std::filesystem::path>)> completion) {
    std::vector<std::filesystem::path> files;
    for (const ItemProvider& item : providers)
        if (const auto& file = item.fileURL()) files.push_back(*file);
    QMetaObject::invokeMethod(
        context, [files = std::move(files), completion = std::move(completion)] { completion(files); },
        Qt::QueuedConnection);
}

Split split(const std::vector<ItemProvider>& providers, const std::function<bool(const ItemProvider&)>& isClip) {
    Split parts;
    std::ranges::partition_copy(providers, std::back_inserter(parts.clips), std::back_inserter(parts.others), isClip);
    return parts;
}

Contents contents(const std::vector<ItemProvider>& providers) {
    if (providers.size() == 1 && isImage(providers.front())) return Contents::image;
    const auto isFile = [](const ItemProvider& item) { return item.fileURL().has_value(); };
    return std::ranges::any_of(providers, isFile) ? Contents::batch : Contents::nothing;
}

} // namespace quillary::DropReader
