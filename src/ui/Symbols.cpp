#include "ui/Symbols.h"

#include <QFontDatabase>
#include <algorithm>

namespace quillary {

namespace {

using Entry = std::pair<std::string_view, char16_t>;

constexpr std::array entries{
    Entry{"arrow.left.and.right.righttriangle.left.righttriangle.right", u'\ue3e8'},
    Entry{"arrow.triangle.2.circlepath", u'\ue863'},
    Entry{"arrow.up.and.down.and.arrow.left.and.right", u'\ue89f'},
    Entry{"arrow.up.and.down.righttriangle.up.righttriangle.down", u'\ue8d5'},
    Entry{"arrow.up.bin", u'\ue92e'},
    Entry{"arrow.up.forward.app", u'\ue89e'},
    Entry{"arrow.uturn.backward", u'\ue166'},
    Entry{"checkmark", u'\ue5ca'},
    Entry{"checkmark.circle.fill", u'\ue86c'},
    Entry{"chevron.compact.right", u'\ue5cc'},
    Entry{"chevron.down", u'\ue5cf'},
    Entry{"chevron.up.chevron.down", u'\ue5d7'},
    Entry{"clock.arrow.circlepath", u'\ue889'},
    Entry{"doc", u'\ue24d'},
    Entry{"doc.on.doc", u'\ue14d'},
    Entry{"ellipsis.circle", u'\ue5d3'},
    Entry{"exclamationmark.triangle", u'\uf083'},
    Entry{"exclamationmark.triangle.fill", u'\ue002'},
    Entry{"externaldrive.badge.xmark", u'\ue4fa'},
    Entry{"film", u'\ue02c'},
    Entry{"film.stack", u'\ue04a'},
    Entry{"folder", u'\ue2c7'},
    Entry{"folder.badge.plus", u'\ue2cc'},
    Entry{"folder.badge.questionmark", u'\ueb83'},
    Entry{"gearshape", u'\ue8b8'},
    Entry{"info.circle", u'\ue88e'},
    Entry{"link", u'\ue157'},
    Entry{"lock.open", u'\ue898'},
    Entry{"magnifyingglass", u'\ue8b6'},
    Entry{"pencil", u'\ue3c9'},
    Entry{"photo.badge.plus", u'\ue43e'},
    Entry{"photo.on.rectangle.angled", u'\ue413'},
    Entry{"play.fill", u'\ue037'},
    Entry{"questionmark.square.dashed", u'\ue3ad'},
    Entry{"quote.bubble", u'\ue244'},
    Entry{"rotate.left", u'\ue419'},
    Entry{"rotate.right", u'\ue41a'},
    Entry{"scissors", u'\ue14e'},
    Entry{"shippingbox", u'\ue149'},
    Entry{"speaker.wave.1.fill", u'\ue04d'},
    Entry{"speaker.wave.2.fill", u'\ue050'},
    Entry{"square.3.layers.3d", u'\ue53b'},
    Entry{"square.and.arrow.down", u'\ue2c4'},
    Entry{"square.and.arrow.up", u'\ue2c6'},
    Entry{"square.grid.2x2", u'\ue9b0'},
    Entry{"star", u'\ue83a'},
    Entry{"star.fill", u'\ue838'},
    Entry{"stop.fill", u'\ue047'},
    Entry{"trash", u'\ue872'},
    Entry{"tray", u'\ue156'},
    Entry{"waveform", u'\ue1b8'},
    Entry{"xmark", u'\ue5cd'},
    Entry{"xmark.circle.fill", u'\ue5c9'},
};
static_assert(std::ranges::is_sorted(entries, {}, &Entry::first));

QString registeredFamily() {
    const int font = QFontDatabase::addApplicationFont(QStringLiteral(":/qt/qml/Quillary/Controls/symbols.ttf"));
    return QFontDatabase::applicationFontFamilies(font).value(0);
}

} // namespace

Symbols::Symbols(QObject* parent) : QObject(parent), m_family(registeredFamily()) {
    if (m_family.isEmpty()) qWarning("The icon font cannot be read.");
}

QString Symbols::glyph(const QString& name) const {
    const QByteArray wanted = name.toUtf8();
    const auto entry = std::ranges::lower_bound(entries, std::string_view(wanted), {}, &Entry::first);
    if (entry != entries.end() && entry->first == std::string_view(wanted)) return QString(QChar(entry->second));
    if (!name.isEmpty()) qWarning("There is no symbol called %s.", wanted.constData());
    return {};
}

std::span<const std::pair<std::string_view, char16_t>> Symbols::table() {
    return entries;
}

} // namespace quillary
