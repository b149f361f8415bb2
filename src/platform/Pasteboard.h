#pragma once

#include "base/WebOrigin.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <QUrl>
#include <optional>

namespace quillary::platform {

/// A source of typed data: the desktop's clipboard, or what a drag brought. Types are MIME names here.
///
/// Every call answers within a few seconds, also when the owner of the data hangs: what could not be had in time reads
/// as absent. An implementation says in its header on which threads it may be asked.
class Pasteboard {
public:
    virtual ~Pasteboard() = default;

    /// In the owner's order, without the system's bookkeeping types. Empty when there is nothing.
    virtual QStringList types() = 0;
    virtual std::optional<QByteArray> data(const QString& type) = 0;

    /// The plain text, read as UTF-8; absent when there is none.
    std::optional<QString> string();
    /// Every URL on it, files first where a file manager says which files it means, then the addresses a browser tells
    /// (its URL list, its link, the picture's address in its HTML).
    QList<QUrl> urls();
    /// Where on the web the picture was found that a browser copied or dragged: its address from the HTML, else a link
    /// to a picture; the page as the browser tells it, else a link to anything else. Nothing is fetched.
    WebOrigin webOrigin();
    /// A name for the picture that a browser copied or dragged: from the picture's address, the file name that the
    /// browser gives it, or the first other address.
    std::optional<QString> pictureName();

private:
    /// Empty when the type is not on it.
    QByteArray offered(QStringView type);
    QString link();
    QString pictureInHtml();
};

} // namespace quillary::platform
