#include "base/Translation.h"

#include <QTranslator>

namespace quillary {

namespace {

const QString folder = QStringLiteral(":/translations");
const QString name = QStringLiteral("quillary");
const QString separator = QStringLiteral("_");

void install(std::unique_ptr<QTranslator> translator, bool loaded) {
    if (loaded && QCoreApplication::installTranslator(translator.get())) static_cast<void>(translator.release());
}

} // namespace

void installEnglish() {
    auto english = std::make_unique<QTranslator>(QCoreApplication::instance());
    const bool loaded = english->load(QLocale(QLocale::English), name, separator, folder);
    install(std::move(english), loaded);
}

void installLanguage(const QLocale& locale) {
    auto texts = std::make_unique<QTranslator>(QCoreApplication::instance());
    const bool loaded = texts->load(locale, name, separator, folder);
    install(std::move(texts), loaded);
}

} // namespace quillary
