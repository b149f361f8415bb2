#include "support/desktop/AnnouncedTypes.h"

#include <cstdlib>
#include <xcb/xcb.h>

namespace quillary::test {

namespace {

QString nameOf(xcb_connection_t* connection, xcb_atom_t atom) {
    auto* reply = xcb_get_atom_name_reply(connection, xcb_get_atom_name(connection, atom), nullptr);
    if (!reply) return {};
    const QString name = QString::fromLatin1(xcb_get_atom_name_name(reply), xcb_get_atom_name_name_length(reply));
    std::free(reply);
    return name;
}

} // namespace

bool AnnouncedTypes::nativeEventFilter(const QByteArray& kind, void* message, qintptr*) {
    if (kind != "xcb_generic_event_t") return false;
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    if ((event->response_type & 0x7F) != XCB_CLIENT_MESSAGE) return false;
    const auto* client = static_cast<const xcb_client_message_event_t*>(message);
    xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
    if (nameOf(connection, client->type) == u"XdndEnter") {
        m_types.clear();
        // Up to three types come in the message, more in a property of the other window.
        const bool inProperty = (client->data.data32[1] & 1) != 0;
        if (inProperty) m_types += QStringLiteral("(more than three)");
        for (int i = 2; i < 5; ++i)
            if (client->data.data32[i] != XCB_ATOM_NONE) m_types += nameOf(connection, client->data.data32[i]);
    }
    xcb_disconnect(connection);
    return false;
}

} // namespace quillary::test
