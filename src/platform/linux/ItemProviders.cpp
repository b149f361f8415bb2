#include "base/FileUrl.h"
#include "base/SvgText.h"
#include "platform/ItemProvider.h"
#include "platform/Pasteboard.h"
#include "platform/UniformTypes.h"
#include "platform/linux/DirectSave.h"
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
        if (type == directSaveType) return directSaveName();
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

bool isPicture(const QString& type) {
    return conforms(type, QStringLiteral("image/*")) || conforms(type, QStringLiteral("application/pdf"));
}

/// Browsers drag a picture's file under a type that tells nothing; its bytes tell what it is.
std::optional<ItemProvider> unnamedPicture(DropPasteboard& drop) {
    for (const QString& type : drop.types()) {
        if (type.section(u';', 0, 0) != u"application/octet-stream") continue;
        const auto bytes = drop.data(type);
        const QString told = bytes ? contentType(*bytes) : QString();
        if (!isPicture(told)) continue;
        ItemProvider item;
        item.registerData(told, *bytes);
        return item;
    }
    return {};
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
        return item;
    }
    return unnamedPicture(drop);
}

std::optional<ItemProvider> text(DropPasteboard& drop) {
    const auto found = drop.string();
    if (!found) return {};
    ItemProvider item;
    item.registerData(QStringLiteral("text/plain;charset=utf-8"), found->toUtf8());
    if (const QString drawing = svgIn(*found); !drawing.isEmpty())
        item.registerData(QStringLiteral("image/svg+xml"), drawing.toUtf8());
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
        if (item) item->setSuggestedName(source.pictureName());
        if (!item) item = text(source);
        if (item || !clips.isEmpty()) items.push_back(std::move(item).value_or(ItemProvider()));
    }
    if (items.size() == 1) items.front().setWebOrigin(source.webOrigin());
    for (const QString& type : clips)
        if (auto bytes = source.data(type)) items.front().registerData(type, *bytes);
    return items;
}

} // namespace quillary::platform
