#include "platform/FileDrag.h"

#include "base/FileUrl.h"
#include "platform/ItemProvider.h"
#include "platform/linux/X11Connection.h"
#include "platform/linux/X11DragData.h"

#include <QGuiApplication>
#include <QLibraryInfo>
#include <QVersionNumber>
#include <algorithm>
#include <optional>
#include <utility>

namespace quillary::platform {

namespace {

const QString uriList = QStringLiteral("text/uri-list");

/// The type as the toolkit must hear it. Beside a type spelled exactly "text/uri-list" its X11 plug-in announces the
/// URL as two kinds of text; a trailing NUL ends the name it announces all the same, and keeps it from doing so.
QString announcedType() {
    const bool known = QLibraryInfo::version() < QVersionNumber(6, 5);
    return known && QGuiApplication::platformName() == u"xcb" ? uriList + QChar::Null : uriList;
}

void handOut(std::optional<X11DragData>& sender, const QMimeData* data, quint64 begun) {
    if (QGuiApplication::platformName() == u"xcb") sender.emplace(data, static_cast<std::uint32_t>(begun));
}

/// Bytes under types, in an order of their own. The toolkit's own class would parse URLs and write them anew.
class OfferData final : public QMimeData {
public:
    void add(const QString& type, QByteArray bytes) { m_offers.emplace_back(type, std::move(bytes)); }
    void addUrls(QByteArray list) { add(announcedType(), std::move(list)); }
    /// From here on the drag may be asked for it.
    void beDragged(quint64 begun) { handOut(m_sender, this, begun); }

    bool hasFormat(const QString& type) const override { return find(type) != nullptr; }
    QStringList formats() const override {
        QStringList types;
        for (const auto& [type, bytes] : m_offers) types.append(type);
        return types;
    }

protected:
    QVariant retrieveData(const QString& type, QMetaType) const override {
        const QByteArray* bytes = find(type);
        return bytes ? QVariant(*bytes) : QVariant();
    }

private:
    const QByteArray* find(const QString& wanted) const {
        const QString type = wanted == uriList ? announcedType() : wanted;
        const auto found = std::ranges::find(m_offers, type, &std::pair<QString, QByteArray>::first);
        return found == m_offers.end() ? nullptr : &found->second;
    }

    std::vector<std::pair<QString, QByteArray>> m_offers;
    std::optional<X11DragData> m_sender;
};

/// A list of files that is made when it is asked for.
class LateFiles final : public QMimeData {
public:
    LateFiles(std::function<std::vector<std::filesystem::path>()> files, quint64 begun) : m_files(std::move(files)) {
        handOut(m_sender, nullptr, begun);
    }

    bool hasFormat(const QString& type) const override { return type == uriList || type == announcedType(); }
    QStringList formats() const override { return {announcedType()}; }

protected:
    QVariant retrieveData(const QString& type, QMetaType) const override;

private:
    std::function<std::vector<std::filesystem::path>()> m_files;
    std::optional<X11DragData> m_sender;
};

QByteArray urlList(const std::vector<std::filesystem::path>& files) {
    QByteArray list;
    for (const auto& file : files) list += fileUrl(file) + "\r\n";
    return list;
}

QVariant LateFiles::retrieveData(const QString& type, QMetaType) const {
    if (!hasFormat(type)) return {};
    // This object may go while they are waited for.
    const auto files = m_files;
    const QByteArray list = urlList(files());
    return list.isEmpty() ? QVariant() : QVariant(list);
}

} // namespace

std::unique_ptr<QMimeData> fileDragData(std::function<std::vector<std::filesystem::path>()> files, quint64 begun) {
    return std::make_unique<LateFiles>(std::move(files), begun);
}

std::unique_ptr<QMimeData> fileDragData(const std::vector<std::filesystem::path>& files, quint64 begun) {
    auto data = std::make_unique<OfferData>();
    data->addUrls(urlList(files));
    data->beDragged(begun);
    return data;
}

bool dragsAreTranslucent() {
    if (QGuiApplication::platformName() != u"xcb") return true;
    // Whoever draws an X server's windows together owns this selection.
    const X11Connection connection;
    if (!connection.works()) return false;
    const auto cookie = xcb_get_selection_owner(connection.get(), connection.atom("_NET_WM_CM_S0"));
    const X11Reply<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(connection.get(), cookie, nullptr));
    return reply && reply->owner != XCB_WINDOW_NONE;
}

std::unique_ptr<QMimeData> fileOfferData(const std::vector<std::filesystem::path>& files, const QByteArray& png) {
    auto data = std::make_unique<OfferData>();
    QByteArray copied = "copy";
    for (const auto& file : files) copied += '\n' + fileUrl(file);
    if (!png.isEmpty()) data->add(QStringLiteral("image/png"), png);
    data->addUrls(urlList(files));
    data->add(QStringLiteral("x-special/gnome-copied-files"), copied);
    return data;
}

std::unique_ptr<QMimeData> itemDragData(const ItemProvider& item, quint64 begun) {
    auto data = std::make_unique<OfferData>();
    for (const QString& type : item.types())
        if (const auto bytes = item.data(type)) data->add(type == uriList ? announcedType() : type, *bytes);
    const QString text = QStringLiteral("public.utf8-plain-text");
    if (item.types().contains(text))
        if (const auto bytes = item.data(text)) data->add(QStringLiteral("text/plain;charset=utf-8"), *bytes);
    data->beDragged(begun);
    return data;
}

} // namespace quillary::platform
