#include "imaging/ImageIntake.h"
#include "platform/UniformTypes.h"

#include <QRegularExpression>

namespace quillary::ImageIntake {

const QStringList& bitmapPriority() {
    static const QStringList types{QStringLiteral("image/png"), QStringLiteral("image/tiff"),
                                   QStringLiteral("image/jpeg")};
    return types;
}

const QStringList& vectorTypes() {
    static const QStringList types{QStringLiteral("image/svg+xml"), QStringLiteral("application/pdf")};
    return types;
}

const QStringList& acceptedFileTypes() {
    static const QStringList types = QStringList{QStringLiteral("image/*")} + vectorTypes();
    return types;
}

QString shortName(const QString& typeIdentifier) {
    const QString extension = platform::preferredExtension(typeIdentifier);
    if (!extension.isEmpty()) return extension.toUpper();
    static const QRegularExpression separator(QStringLiteral("[./]"));
    return typeIdentifier.mid(typeIdentifier.lastIndexOf(separator) + 1).toUpper();
}

} // namespace quillary::ImageIntake
