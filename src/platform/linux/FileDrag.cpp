#include "platform/FileDrag.h"

#include "base/FileUrl.h"
#include "platform/ItemProvider.h"

#include <QGuiApplication>
#include <QLibraryInfo>
#include <QVersionNumber>

namespace quillary::platform {

namespace {

const QString uriList = QStringLiteral("text/uri-list");

/// The type as the toolkit must hear it. Beside a type spelled exactly "text/uri-list" its X11 plug-in announces the
/// URL as two kinds of text; a trailing NUL ends the name it announces all the same, and keeps it from doing so.
QString announcedType() {
    const bool known = QLibraryInfo::version() < QVersionNumber(6, 5);
    return known && QGuiApplication::platformName() == u"xcb" ? uriList + QChar::Null : uriList;
}

/// The toolkit's own class would parse the URL and write it anew.
class FileUrlData final : public QMimeData {
public:
    explicit FileUrlData(const std::filesystem::path& file) : m_list(fileUrl(file) + "\r\n"), m_type(announcedType()) {}

    bool hasFormat(const QString& type) const override { return type == uriList || type == m_type; }
    QStringList formats() const override { return {m_type}; }

protected:
    QVariant retrieveData(const QString& type, QMetaType) const override {
        return hasFormat(type) ? QVariant(m_list) : QVariant();
    }

private:
    QByteArray m_list;
    QString m_type;
};

} // namespace

std::unique_ptr<QMimeData> fileDragData(const std::filesystem::path& file) {
    return std::make_unique<FileUrlData>(file);
}

std::unique_ptr<QMimeData> itemDragData(const ItemProvider& item) {
    auto data = std::make_unique<QMimeData>();
    for (const QString& type : item.types())
        if (const auto bytes = item.data(type)) data->setData(type, *bytes);
    const QString text = QStringLiteral("public.utf8-plain-text");
    if (item.types().contains(text))
        if (const auto bytes = item.data(text)) data->setData(QStringLiteral("text/plain;charset=utf-8"), *bytes);
    return data;
}

} // namespace quillary::platform
