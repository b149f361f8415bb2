#include "support/desktop/StallingOwner.h"

#include "support/desktop/Report.h"

#include <array>
#include <cstdlib>
#include <cstring>
#include <xcb/xcb.h>

namespace quillary::test {

namespace {

xcb_atom_t atom(xcb_connection_t* connection, const char* name) {
    auto* reply = xcb_intern_atom_reply(
        connection, xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(std::strlen(name)), name), nullptr);
    const xcb_atom_t value = reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
    std::free(reply);
    return value;
}

} // namespace

int ownClipboardAndStall() {
    xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(connection) != 0) return 1;
    const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
    const xcb_window_t window = xcb_generate_id(connection);
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, screen->root, 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    const xcb_atom_t clipboard = atom(connection, "CLIPBOARD");
    const xcb_atom_t targets = atom(connection, "TARGETS");
    const xcb_atom_t incr = atom(connection, "INCR");
    const std::array offered{targets, atom(connection, "image/png")};
    xcb_set_selection_owner(connection, window, clipboard, XCB_CURRENT_TIME);
    xcb_flush(connection);
    report(QStringLiteral("ready"));

    xcb_window_t requestor = XCB_WINDOW_NONE;
    xcb_atom_t property = XCB_ATOM_NONE;
    bool sent = false;
    while (auto* event = xcb_wait_for_event(connection)) {
        const auto type = event->response_type & 0x7F;
        if (type == XCB_SELECTION_CLEAR) return 0;
        if (type == XCB_SELECTION_REQUEST) {
            const auto* request = reinterpret_cast<const xcb_selection_request_event_t*>(event);
            requestor = request->requestor;
            property = request->property;
            if (request->target == targets) {
                xcb_change_property(connection, XCB_PROP_MODE_REPLACE, requestor, property, XCB_ATOM_ATOM, 32,
                                    offered.size(), offered.data());
            } else {
                const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
                xcb_change_window_attributes(connection, requestor, XCB_CW_EVENT_MASK, &events);
                const std::uint32_t length = 1000000;
                xcb_change_property(connection, XCB_PROP_MODE_REPLACE, requestor, property, incr, 32, 1, &length);
            }
            xcb_selection_notify_event_t answer{};
            answer.response_type = XCB_SELECTION_NOTIFY;
            answer.time = request->time;
            answer.requestor = requestor;
            answer.selection = request->selection;
            answer.target = request->target;
            answer.property = property;
            xcb_send_event(connection, 0, requestor, 0, reinterpret_cast<const char*>(&answer));
        }
        if (type == XCB_PROPERTY_NOTIFY && !sent) {
            const auto* notify = reinterpret_cast<const xcb_property_notify_event_t*>(event);
            if (notify->atom == property && notify->state == XCB_PROPERTY_DELETE) {
                xcb_change_property(connection, XCB_PROP_MODE_REPLACE, requestor, property, offered[1], 8, 9,
                                    "piece one");
                sent = true;
            }
        }
        xcb_flush(connection);
        std::free(event);
    }
    return 1;
}

} // namespace quillary::test
