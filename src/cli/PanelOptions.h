#pragma once

#include "panel/PanelModel.h"

#include <QString>
#include <filesystem>
#include <optional>
#include <vector>

namespace quillary {

/// How the panel is to open.
struct PanelOptions {
    std::vector<QString> arguments;          ///< absolute "file:" URLs of what is taken as if dropped
    std::optional<PanelModel::Tab> tab = {}; ///< instead of the one from the settings
    std::optional<PanelModel::LibraryKind> shelf = {};
    std::optional<std::filesystem::path> screenshot = {}; ///< rendered once into this PNG, then the program ends
};

} // namespace quillary
