#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <filesystem>
#include <optional>

namespace quillary {

/// An absolute path as a file URL in the spelling that desktops agree on (and hash for their thumbnail caches): every
/// byte is percent-encoded but letters, digits and -._~!$&'()*+,:=@/ . Works on bytes, so names that are not UTF-8
/// survive.
QByteArray fileUrl(const std::filesystem::path& path);

/// The absolute path of a "file:" URL of this machine; absent for any other text, a foreign host, or an encoded slash
/// or NUL.
std::optional<std::filesystem::path> pathOfFileUrl(QByteArrayView url);

} // namespace quillary
