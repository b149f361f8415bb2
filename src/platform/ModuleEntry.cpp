#include "platform/ModuleEntry.h"

#include <QCoreApplication>
#include <QLibrary>
#include <QStringList>

namespace quillary {

QFunctionPointer moduleEntry(const char* fileName, const char* symbol, QString& reason) {
    QStringList reasons;
    for (const QString& folder : {QStringLiteral("/"), QStringLiteral("/../lib/quillary/")}) {
        QLibrary module(QCoreApplication::applicationDirPath() + folder + QLatin1String(fileName));
        if (const QFunctionPointer entry = module.resolve(symbol)) return entry;
        reasons += module.errorString();
    }
    reason = reasons.join(QLatin1Char('\n'));
    return nullptr;
}

} // namespace quillary
