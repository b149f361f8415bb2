#pragma once

#include <QString>
#include <QUrl>
#include <optional>

namespace quillary::platform {

/// A picture's name from the address it was copied from: the last path component without its extension, 2 to 60
/// characters with a letter among them; absent when the address gives no such name.
std::optional<QString> suggestedName(const QUrl& address);

} // namespace quillary::platform
