#include "base/WebOrigin.h"

#include <QStringList>

namespace quillary {

namespace {

constexpr qsizetype longestAddress = 2000;

} // namespace

QString webAddress(const QUrl& url) {
    const bool web = url.scheme() == u"http" || url.scheme() == u"https";
    if (!url.isValid() || !web || url.host().isEmpty()) return {};
    const QByteArray address = url.adjusted(QUrl::RemoveUserInfo).toEncoded();
    return address.size() > longestAddress ? QString() : QString::fromLatin1(address);
}

QString webAddress(const QString& text) {
    return webAddress(QUrl(text.trimmed()));
}

QString creditOf(const QString& name, const WebOrigin& origin) {
    if (!origin.isKnown()) return {};
    QStringList parts{name};
    if (!origin.address.isEmpty()) parts += origin.address;
    if (!origin.page.isEmpty()) parts += origin.page;
    return parts.join(QStringLiteral(" — "));
}

} // namespace quillary
