#pragma once

#include "platform/ItemProvider.h"

#include <QObject>
#include <filesystem>
#include <functional>
#include <vector>

namespace quillary::DropReader {

/// Hands the files among the items to `completion`, once, in a later turn of the main thread's event loop; items
/// without a file are passed over. Nothing is called when `context` is gone by then.
void fileURLs(const std::vector<platform::ItemProvider>& providers, QObject* context,
              std::function<void(std::vector<std::filesystem::path>)> completion);

/// A drop's clips and the rest of it, each in its order. `isClip` tells an item that carries Final Cut's clips.
struct Split {
    std::vector<platform::ItemProvider> clips;
    std::vector<platform::ItemProvider> others;
};
Split split(const std::vector<platform::ItemProvider>& providers,
            const std::function<bool(const platform::ItemProvider&)>& isClip);

/// What a drop without clips means to the panel.
enum class Contents {
    image,  ///< exactly one item, and it is a picture
    batch,  ///< files or folders to be filed
    nothing ///< no file, or not one picture
};
Contents contents(const std::vector<platform::ItemProvider>& providers);

} // namespace quillary::DropReader
