#include "base/FileUrl.h"
#include "platform/ItemProvider.h"
#include "platform/Pasteboard.h"
#include "platform/SuggestedName.h"
#include "platform/UniformTypes.h"
#include "platform/linux/MimeReading.h"

#include <QMimeData>
#include <algorithm>

namespace quillary::platform {

namespace {

const QString uriList = QStringLiteral("text/uri-list");
constexpr int mostClipTypes = 32;

/// What a drop brings, read type by type while it lasts.
class DropPasteboard final : public Pasteboard {
public:
    explicit DropPasteboard(const QMimeData& drop) : m_drop(drop), m_types(offeredTypes(drop)) {}

    QStringList types() override { return m_types; }
    std::optional<QByteArray> data(const QString& type) override {
        const auto spelling = offeredSpelling(m_types, type);
        return spelling ? m_reader.read(m_drop, *spelling) : std::nullopt;
    }

private:
    const QMimeData& m_drop;
    QStringList m_types;
    MimeReader m_reader;
};

/// The paths behind a list's file URLs, from its bytes: a toolkit's URL type would change names that are not UTF-8.
std::vector<std::filesystem::path> filesIn(const QByteArray& list) {
    std::vector<std::filesystem::path> files;
    for (const QByteArray& line : list.split('\n'))
        if (const auto path = pathOfFileUrl(line.trimmed())) files.push_back(*path);
    return files;
}

std::optional<ItemProvider> picture(DropPasteboard& drop) {
    static const QStringList preferred = {QStringLiteral("image/png"), QStringLiteral("image/tiff"),
                                          QStringLiteral("image/jpeg"), QStringLiteral("image/svg+xml"),
                                          QStringLiteral("application/pdf")};
    QStringList candidates = preferred;
    for (const QString& type : drop.types())
        if (conforms(type, QStringLiteral("image/*"))) candidates += type;
    candidates.removeDuplicates();
    for (const QString& type : candidates) {
        auto bytes = drop.data(type);
        if (!bytes) continue;
        ItemProvider item;
        item.registerData(type, *bytes);
        const auto urls = drop.urls();
        if (!urls.isEmpty())
            if (const auto name = suggestedName(urls.front())) item.setSuggestedName(*name);
        return item;
    }
    return {};
}

std::optional<ItemProvider> text(DropPasteboard& drop) {
    const auto found = drop.string();
    if (!found) return {};
    ItemProvider item;
    item.registerData(QStringLiteral("text/plain;charset=utf-8"), found->toUtf8());
    return item;
}

/// Types spelled as uniform type identifiers: "com.maker.type", without a slash.
QStringList clipTypes(const QStringList& types) {
    QStringList found;
    for (const QString& type : types)
        if (type.count(u'.') >= 2 && !type.contains(u'/') && mimeName(type) == type) found += type;
    return found.first(std::min<qsizetype>(found.size(), mostClipTypes));
}

} // namespace

std::vector<ItemProvider> itemProviders(const QMimeData& drop) {
    DropPasteboard source(drop);
    std::vector<ItemProvider> items;
    if (const auto list = source.data(uriList))
        for (const auto& file : filesIn(*list)) items.push_back(ItemProvider::file(file));
    const QStringList clips = clipTypes(source.types());
    if (items.empty()) {
        auto item = picture(source);
        if (!item) item = text(source);
        if (item || !clips.isEmpty()) items.push_back(std::move(item).value_or(ItemProvider()));
    }
    if (items.size() == 1) items.front().setWebOrigin(source.webOrigin());
    for (const QString& type : clips)
        if (auto bytes = source.data(type)) items.front().registerData(type, *bytes);
    return items;
}

} // namespace quillary::platform
