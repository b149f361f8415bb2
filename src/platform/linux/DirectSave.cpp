#include "platform/linux/DirectSave.h"

#include "platform/linux/X11Connection.h"

#include <QGuiApplication>

namespace quillary::platform {

std::optional<QByteArray> directSaveName() {
    if (QGuiApplication::platformName() != u"xcb") return {};
    const X11Connection connection;
    if (!connection.works()) return {};
    auto* const server = connection.get();
    const X11Reply<xcb_get_selection_owner_reply_t> source(xcb_get_selection_owner_reply(
        server, xcb_get_selection_owner(server, connection.atom("XdndSelection")), nullptr));
    if (!source || source->owner == XCB_WINDOW_NONE) return {};
    constexpr std::uint32_t longestName = 1024; // words
    const auto cookie = xcb_get_property(server, 0, source->owner, connection.atom("XdndDirectSave0"),
                                         XCB_GET_PROPERTY_TYPE_ANY, 0, longestName);
    const X11Reply<xcb_get_property_reply_t> name(xcb_get_property_reply(server, cookie, nullptr));
    if (!name || name->format != 8) return {};
    return QByteArray(static_cast<const char*>(xcb_get_property_value(name.get())),
                      xcb_get_property_value_length(name.get()));
}

} // namespace quillary::platform
