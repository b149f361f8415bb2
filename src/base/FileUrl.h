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

/// A reference to a file from a document in `folder`, spelled likewise: a path relative to the folder, such as
/// "../Media/a%20b.mov". Both are absolute.
QByteArray relativeReference(const std::filesystem::path& file, const std::filesystem::path& folder);

/// The absolute path behind a reference of a document in `folder`: a "file:" URL, or a relative one. Absent for other
/// schemes and for whatever `pathOfFileUrl` refuses.
std::optional<std::filesystem::path> pathOfReference(QByteArrayView reference, const std::filesystem::path& folder);

} // namespace quillary
