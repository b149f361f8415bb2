#pragma once

#include <string>
#include <string_view>

namespace quillary::platform {

/// The only name space of extended attributes that is open to everyone here.
inline constexpr std::string_view attributePrefix = "user.";

inline std::string attributeName(std::string_view name) {
    return std::string(attributePrefix).append(name);
}

} // namespace quillary::platform
