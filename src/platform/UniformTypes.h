#pragma once

#include <QByteArray>
#include <QString>
#include <filesystem>

namespace quillary::platform {

/// Content types and how they relate. A type is named by its MIME name; uniform type identifiers that have one
/// ("public.png", "com.adobe.pdf") are understood everywhere and mean the same.

/// The MIME name for either spelling; unknown names come back unchanged.
QString mimeName(const QString& type);

/// Whether `type` is `ancestor` or a kind of it. "image/*" stands for the generic image type.
bool conforms(const QString& type, const QString& ancestor);

/// A file's content type: by its extension, or by its first bytes when the extension tells nothing;
/// "application/octet-stream" when neither does.
QString contentType(const std::filesystem::path& file);

/// The type that a file's first bytes tell; "application/octet-stream" when they tell none.
QString contentType(const QByteArray& bytes);

/// The usual file name extension of a type, such as "jpeg", without a dot; empty when it has none.
QString preferredExtension(const QString& type);

} // namespace quillary::platform
