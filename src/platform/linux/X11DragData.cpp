#include "platform/linux/X11DragData.h"

#include "platform/linux/X11Connection.h"
#include "platform/linux/X11Sender.h"

#include <QCoreApplication>
#include <QMimeData>
#include <algorithm>
#include <thread>
#include <vector>

namespace quillary::platform {

namespace {

/// All whose data may still be asked for, the newest last. Main thread.
std::vector<const X11DragData*> drags;

QString nameOf(const X11Connection& connection, xcb_atom_t atom) {
    const auto cookie = xcb_get_atom_name(connection.get(), atom);
    const X11Reply<xcb_get_atom_name_reply_t> reply(xcb_get_atom_name_reply(connection.get(), cookie, nullptr));
    return reply ? QString::fromLatin1(xcb_get_atom_name_name(reply.get()), xcb_get_atom_name_name_length(reply.get()))
                 : QString();
}

} // namespace

X11DragData::X11DragData(const QMimeData* data, std::uint32_t begun) : m_data(data), m_begun(begun) {
    drags.push_back(this);
    if (m_data) QCoreApplication::instance()->installNativeEventFilter(this);
}

X11DragData::~X11DragData() {
    std::erase(drags, this);
    if (auto* application = QCoreApplication::instance()) application->removeNativeEventFilter(this);
}

bool X11DragData::isAsked(std::uint32_t time) const {
    const auto begunBy = [time](const X11DragData* drag) {
        const bool told = time != XCB_CURRENT_TIME && drag->m_begun != XCB_CURRENT_TIME;
        // The server's clock wraps.
        return !told || static_cast<std::int32_t>(time - drag->m_begun) >= 0;
    };
    const auto newest = std::ranges::find_if(drags.rbegin(), drags.rend(), begunBy);
    return newest != drags.rend() && *newest == this;
}

bool X11DragData::nativeEventFilter(const QByteArray& kind, void* message, qintptr*) {
    if (kind != "xcb_generic_event_t") return false;
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    if ((event->response_type & 0x7FU) != XCB_SELECTION_REQUEST) return false;
    const auto request = *static_cast<const xcb_selection_request_event_t*>(message);
    if (!isAsked(request.time) || request.property == XCB_ATOM_NONE) return false;
    const X11Connection connection;
    if (!connection.works() || request.selection != connection.atom("XdndSelection")) return false;
    const QString type = nameOf(connection, request.target);
    if (!m_data->hasFormat(type)) return false;
    const QByteArray bytes = m_data->data(type);
    if (bytes.size() <= large) return false;
    // Not on a shared pool, which a receiver that dawdles would keep from other work. It ends by itself.
    std::thread([request, bytes] { sendInPieces(request, bytes); }).detach();
    return true;
}

} // namespace quillary::platform
