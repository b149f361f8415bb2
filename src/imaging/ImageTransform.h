#pragma once

#include <QByteArray>
#include <QString>
#include <QStringView>
#include <array>
#include <expected>
#include <filesystem>
#include <optional>

namespace quillary {

/// Turns and mirrors image files in place. A file is rewritten whole, with its name, its extended attributes and its
/// permissions, or it stays as it was: a link stays and what it leads to is rewritten, a file that may not be written
/// is left alone. Stateless; any thread.
namespace ImageTransform {

enum class Operation { rotateLeft, rotateRight, flipHorizontal, flipVertical };
inline constexpr std::array allOperations{Operation::rotateLeft, Operation::rotateRight, Operation::flipHorizontal,
                                          Operation::flipVertical};

/// "rotateLeft" and so on; none for another text.
std::optional<Operation> operation(QStringView rawValue);
QString rawValue(Operation operation);
/// What menus and notes show.
QString label(Operation operation);

/// Nothing when the file was rewritten, else why it was not, for the eye.
using Outcome = std::expected<void, QString>;

/// By the extension: SVG as a vector, everything else as a bitmap. Of a file that was rewritten the mark of having come
/// from outside is gone.
Outcome apply(Operation operation, const std::filesystem::path& url);

/// The picture as it is seen (its orientation applied), redrawn and written as PNG, whatever the name's extension. RGB
/// samples pass unchanged with their colour profile, so four quarter turns give the first pixels back.
Outcome applyToBitmap(Operation operation, const std::filesystem::path& url);

/// The document with everything but its "defs" and "metadata" in a group that turns or mirrors it. A view box is taken
/// to begin at 0,0. Fails for what is no SVG, or has no size.
Outcome applyToVector(Operation operation, const std::filesystem::path& url);

/// A number as SVG attributes have it: whole numbers without a fraction, others in the shortest form that reads back
/// the same.
QByteArray clean(double number);

} // namespace ImageTransform

} // namespace quillary
