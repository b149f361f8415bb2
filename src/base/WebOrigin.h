#pragma once

#include <QString>
#include <QUrl>

namespace quillary {

/// Where on the web a picture was found. Both are addresses that `webAddress` let through; empty ones are not known.
struct WebOrigin {
    QString page;
    QString address; ///< of the picture itself

    bool isKnown() const { return !page.isEmpty() || !address.isEmpty(); }
    bool operator==(const WebOrigin&) const = default;
};

/// The address in its encoded spelling, one line of ASCII; empty for anything that is no address on the web (http,
/// https) or longer than 2,000 characters. User names and passwords are left out.
QString webAddress(const QUrl& url);
QString webAddress(const QString& text);

/// One line for the credits of `name`: the picture's address and its page, as far as they are known; empty if none is.
QString creditOf(const QString& name, const WebOrigin& origin);

} // namespace quillary
