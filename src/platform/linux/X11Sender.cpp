#include "platform/linux/X11Sender.h"

#include "platform/linux/X11Connection.h"

#include <algorithm>
#include <chrono>
#include <poll.h>

namespace quillary::platform {

namespace {

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

constexpr auto patience = 10s;
constexpr qsizetype pieceSize = qsizetype(1) << 20;
/// What a request to change a property takes beside its data.
constexpr qsizetype requestHead = 64;

X11Reply<xcb_generic_event_t> nextEvent(xcb_connection_t* server, Clock::time_point deadline) {
    for (;;) {
        if (auto* event = xcb_poll_for_event(server)) return X11Reply<xcb_generic_event_t>(event);
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
        if (left <= 0 || xcb_connection_has_error(server) != 0) return {};
        pollfd readable{xcb_get_file_descriptor(server), POLLIN, 0};
        poll(&readable, 1, static_cast<int>(left));
    }
}

/// Until the receiver has taken what stands in the property; false when it never will.
bool waitUntilTaken(xcb_connection_t* server, const xcb_selection_request_event_t& request) {
    const auto deadline = Clock::now() + patience;
    while (const auto event = nextEvent(server, deadline)) {
        switch (event->response_type & 0x7FU) {
        case 0: // an error: the receiver's window is gone
        case XCB_DESTROY_NOTIFY:
            return false;
        case XCB_PROPERTY_NOTIFY: {
            const auto* change = reinterpret_cast<const xcb_property_notify_event_t*>(event.get());
            if (change->atom == request.property && change->state == XCB_PROPERTY_DELETE) return true;
            break;
        }
        default:
            break;
        }
    }
    return false;
}

void notify(xcb_connection_t* server, const xcb_selection_request_event_t& request) {
    // An event on the wire is 32 bytes, more than this one's fields.
    union {
        xcb_selection_notify_event_t fields;
        char wire[32];
    } answer{};
    answer.fields.response_type = XCB_SELECTION_NOTIFY;
    answer.fields.time = request.time;
    answer.fields.requestor = request.requestor;
    answer.fields.selection = request.selection;
    answer.fields.target = request.target;
    answer.fields.property = request.property;
    xcb_send_event(server, 0, request.requestor, XCB_EVENT_MASK_NO_EVENT, answer.wire);
    xcb_flush(server);
}

} // namespace

void sendInPieces(const xcb_selection_request_event_t& request, const QByteArray& bytes) {
    const X11Connection connection;
    if (!connection.works()) return;
    xcb_connection_t* server = connection.get();
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(server, request.requestor, XCB_CW_EVENT_MASK, &events);
    const auto size = static_cast<std::uint32_t>(bytes.size());
    xcb_change_property(server, XCB_PROP_MODE_REPLACE, request.requestor, request.property, connection.atom("INCR"), 32,
                        1, &size);
    notify(server, request);

    const qsizetype largestRequest = qsizetype(xcb_get_maximum_request_length(server)) * 4 - requestHead;
    const qsizetype most = std::min(pieceSize, largestRequest);
    qsizetype sent = 0;
    // The piece after the last one is empty and tells the end.
    for (bool ended = false; !ended && waitUntilTaken(server, request);) {
        const qsizetype piece = std::min(most, bytes.size() - sent);
        xcb_change_property(server, XCB_PROP_MODE_REPLACE, request.requestor, request.property, request.target, 8,
                            static_cast<std::uint32_t>(piece), bytes.constData() + sent);
        xcb_flush(server);
        sent += piece;
        ended = piece == 0;
    }
    connection.finish();
}

} // namespace quillary::platform
