#include "blocks/FCPXMLPasteboard.h"

#include "platform/ItemProvider.h"
#include "platform/Pasteboard.h"
#include "platform/UniformTypes.h"

#include <QStringDecoder>
#include <algorithm>

namespace quillary::FCPXMLPasteboard {

namespace {

const QString plainText = QStringLiteral("public.utf8-plain-text");

std::optional<QByteArray> accepted(std::optional<QByteArray> bytes) {
    return bytes && isFCPXML(*bytes) ? std::move(bytes) : std::nullopt;
}

} // namespace

const QStringList& types() {
    static const QStringList all = {primary, primary + QStringLiteral(".v1-14"), primary + QStringLiteral(".v1-13"),
                                    primary + QStringLiteral(".v1-12"), plainText};
    return all;
}

bool isFCPXML(QByteArrayView bytes) {
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString prefix = decoder(bytes.first(std::min<qsizetype>(bytes.size(), 512)));
    return !decoder.hasError() && prefix.contains(u"<fcpxml");
}

std::optional<QByteArray> xml(platform::Pasteboard& pasteboard) {
    for (const QString& type : types()) {
        if (auto found = accepted(pasteboard.data(type))) return found;
        if (type != plainText) continue;
        if (const auto text = pasteboard.string()) return accepted(text->toUtf8());
    }
    return {};
}

std::optional<QByteArray> xml(const platform::ItemProvider& item) {
    for (const QString& type : types()) {
        if (auto found = accepted(item.data(type))) return found;
        if (type != plainText) continue;
        if (auto found = accepted(item.data(QStringLiteral("text/plain;charset=utf-8")))) return found;
    }
    return {};
}

platform::ItemProvider provider(const QByteArray& xml, const QString& name) {
    platform::ItemProvider item;
    for (const QString& type : types()) item.registerData(type, xml);
    item.setSuggestedName(name);
    return item;
}

bool holdsFinalCutClips(platform::Pasteboard& pasteboard) {
    const QStringList offered = pasteboard.types();
    if (!offered.contains(flexoType) || xml(pasteboard)) return false;
    static const QStringList usable = {QStringLiteral("text/uri-list"), QStringLiteral("image/png"),
                                       QStringLiteral("image/tiff"), QStringLiteral("application/pdf"),
                                       QStringLiteral("image/jpeg")};
    return std::ranges::none_of(offered, [](const QString& type) { return usable.contains(platform::mimeName(type)); });
}

bool carriesClips(const platform::ItemProvider& item) {
    if (xml(item)) return true;
    return item.types().contains(flexoType) && !item.fileURL();
}

} // namespace quillary::FCPXMLPasteboard
