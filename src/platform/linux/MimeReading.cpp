#include "platform/linux/MimeReading.h"

#include "platform/UniformTypes.h"

#include <QElapsedTimer>
#include <QMimeData>
#include <algorithm>

namespace quillary::platform {

namespace {

constexpr qint64 patienceInMilliseconds = 900;
const QString toolkitImage = QStringLiteral("application/x-qt-image");

} // namespace

bool isBookkeeping(QStringView type) {
    static constexpr QStringView words[] = {u"TARGETS", u"MULTIPLE",         u"TIMESTAMP",      u"SAVE_TARGETS",
                                            u"DELETE",  u"INSERT_SELECTION", u"INSERT_PROPERTY"};
    return type.isEmpty() || std::ranges::find(words, type) != std::end(words);
}

std::optional<QString> offeredSpelling(const QStringList& offered, const QString& type) {
    if (offered.contains(type)) return type;
    const QString meant = mimeName(type);
    const auto found = std::ranges::find(offered, meant, mimeName);
    return found == offered.end() ? std::nullopt : std::optional(*found);
}

QStringList offeredTypes(const QMimeData& from) {
    QStringList types = from.formats();
    types.removeIf([](const QString& type) { return isBookkeeping(type); });
    const auto isPicture = [](const QString& type) { return type.startsWith(u"image/"); };
    if (std::ranges::any_of(types, isPicture)) types.removeAll(toolkitImage);
    types.removeDuplicates();
    return types;
}

std::optional<QByteArray> MimeReader::read(const QMimeData& from, const QString& type) {
    if (m_gaveUp) return {};
    QElapsedTimer watch;
    watch.start();
    QByteArray bytes = from.data(type);
    if (!bytes.isEmpty()) return bytes;
    m_gaveUp = watch.elapsed() >= patienceInMilliseconds;
    return {};
}

} // namespace quillary::platform
