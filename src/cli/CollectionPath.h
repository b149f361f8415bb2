#pragma once

#include <QString>
#include <optional>

namespace quillary::cli {

/// A collection path as it was typed, in its plain form: blanks around the names are dropped, empty names left out.
/// None when nothing remains: the shelf itself.
std::optional<QString> collectionOf(const std::optional<QString>& typed);

} // namespace quillary::cli
