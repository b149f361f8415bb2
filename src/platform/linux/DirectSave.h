#pragma once

#include <QByteArray>
#include <optional>

namespace quillary::platform {

/// The type under which a drag's source on an X server promises to save a file. Asking for its data would make it save.
inline constexpr auto directSaveType = u"XdndDirectSave0";

/// The file name that the source of the drag under way promises, as it stands on its window. Any thread; absent when
/// there is none, or no X server.
std::optional<QByteArray> directSaveName();

} // namespace quillary::platform
