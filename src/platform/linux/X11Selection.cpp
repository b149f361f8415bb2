#include "platform/linux/X11Selection.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <poll.h>
#include <vector>
#include <xcb/xcb.h>

namespace quillary::platform {

namespace {

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};
template <typename T>
using Reply = std::unique_ptr<T, Free>;

constexpr std::uint32_t wordsPerRead = 1U << 20U;
constexpr qsizetype mostTargets = 1000;
constexpr auto ownerCheck = std::chrono::milliseconds(150);

} // namespace

struct X11Selection::Event {
    explicit Event(xcb_generic_event_t* from) : event(from) {}
    template <typename T>
    const T* as(std::uint8_t type) const {
        return (event->response_type & 0x7FU) == type ? reinterpret_cast<const T*>(event.get()) : nullptr;
    }
    Reply<xcb_generic_event_t> event;
};

X11Selection::X11Selection(QByteArray name, Patience patience) : m_name(std::move(name)), m_patience(patience) {}

X11Selection::~X11Selection() {
    if (m_connection) xcb_disconnect(m_connection);
}

QList<QByteArray> X11Selection::targets() {
    if (!connected()) return {};
    const auto answer = convert(atom(QByteArrayLiteral("TARGETS")), m_patience.targets);
    if (!answer) return {};
    QList<Atom> atoms(std::min(answer->size() / qsizetype(sizeof(Atom)), mostTargets));
    std::memcpy(atoms.data(), answer->constData(), static_cast<std::size_t>(atoms.size()) * sizeof(Atom));
    return names(atoms);
}

std::optional<QByteArray> X11Selection::convert(const QByteArray& target) {
    if (!connected()) return {};
    return convert(atom(target), m_patience.data);
}

bool X11Selection::connected() {
    if (m_gaveUp) return false;
    if (m_connection) return true;
    int screenNumber = 0;
    m_connection = xcb_connect(nullptr, &screenNumber);
    if (xcb_connection_has_error(m_connection) != 0) {
        m_gaveUp = true;
        return false;
    }
    auto screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection));
    while (screenNumber-- > 0 && screen.rem > 1) xcb_screen_next(&screen);
    m_window = xcb_generate_id(m_connection);
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, m_window, screen.data->root, 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
    m_selection = atom(m_name);
    m_property = atom(QByteArrayLiteral("QUILLARY_SELECTION"));
    m_incr = atom(QByteArrayLiteral("INCR"));
    return true;
}

X11Selection::Atom X11Selection::atom(const QByteArray& name) {
    const auto cookie = xcb_intern_atom(m_connection, 0, static_cast<std::uint16_t>(name.size()), name.constData());
    const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(m_connection, cookie, nullptr));
    return reply ? reply->atom : Atom(XCB_ATOM_NONE);
}

QList<QByteArray> X11Selection::names(const QList<Atom>& atoms) {
    std::vector<xcb_get_atom_name_cookie_t> cookies;
    cookies.reserve(static_cast<std::size_t>(atoms.size()));
    for (const Atom each : atoms) cookies.push_back(xcb_get_atom_name(m_connection, each));
    QList<QByteArray> found;
    for (const auto cookie : cookies) {
        xcb_generic_error_t* error = nullptr;
        const Reply<xcb_get_atom_name_reply_t> reply(xcb_get_atom_name_reply(m_connection, cookie, &error));
        const Reply<xcb_generic_error_t> ignored(error);
        if (!reply) continue;
        found.emplace_back(xcb_get_atom_name_name(reply.get()), xcb_get_atom_name_name_length(reply.get()));
    }
    return found;
}

std::optional<QByteArray> X11Selection::convert(Atom target, std::chrono::milliseconds patience) {
    const auto begin = Clock::now();
    xcb_delete_property(m_connection, m_window, m_property);
    xcb_convert_selection(m_connection, m_window, m_selection, target, m_property, XCB_CURRENT_TIME);
    Atom answered = XCB_ATOM_NONE;
    if (!waitForAnswer(target, begin + patience, answered)) {
        m_gaveUp = true;
        return {};
    }
    if (answered != m_property) return {};
    // Taking the property away is also what asks a long answer's owner for the first piece.
    Property property = takeProperty();
    if (property.type == XCB_ATOM_NONE) return {};
    if (property.type == m_incr) return receiveInPieces(begin + m_patience.whole);
    return std::move(property.bytes);
}

std::optional<QByteArray> X11Selection::receiveInPieces(Clock::time_point end) {
    QByteArray whole;
    while (waitForPiece(std::min(end, Clock::now() + m_patience.progress))) {
        const Property piece = takeProperty();
        if (piece.type == XCB_ATOM_NONE) continue;
        if (piece.bytes.isEmpty()) return whole;
        if (whole.size() + piece.bytes.size() > largestAnswer) break;
        whole += piece.bytes;
    }
    m_gaveUp = true;
    return {};
}

std::unique_ptr<X11Selection::Event> X11Selection::next(Clock::time_point deadline) {
    xcb_flush(m_connection);
    for (;;) {
        // Looked at first: an owner that floods the window with events must not keep the reader for ever.
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
        if (left <= 0) return {};
        if (auto* event = xcb_poll_for_event(m_connection)) return std::make_unique<Event>(event);
        if (xcb_connection_has_error(m_connection) != 0) return {};
        pollfd readable{xcb_get_file_descriptor(m_connection), POLLIN, 0};
        poll(&readable, 1, static_cast<int>(left));
    }
}

bool X11Selection::hasOwner() {
    const auto cookie = xcb_get_selection_owner(m_connection, m_selection);
    const Reply<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(m_connection, cookie, nullptr));
    return reply && reply->owner != XCB_WINDOW_NONE;
}

bool X11Selection::waitForAnswer(Atom target, Clock::time_point deadline, Atom& property) {
    while (Clock::now() < deadline) {
        const auto event = next(std::min(deadline, Clock::now() + ownerCheck));
        // An owner that ends after it was asked leaves the question open.
        if (!event && (xcb_connection_has_error(m_connection) != 0 || !hasOwner())) return false;
        if (!event) continue;
        const auto* notify = event->as<xcb_selection_notify_event_t>(XCB_SELECTION_NOTIFY);
        if (!notify || notify->selection != m_selection || notify->target != target) continue;
        property = notify->property;
        return true;
    }
    return false;
}

bool X11Selection::waitForPiece(Clock::time_point deadline) {
    while (const auto event = next(deadline)) {
        const auto* notify = event->as<xcb_property_notify_event_t>(XCB_PROPERTY_NOTIFY);
        if (notify && notify->atom == m_property && notify->state == XCB_PROPERTY_NEW_VALUE) return true;
    }
    return false;
}

X11Selection::Property X11Selection::takeProperty() {
    Property taken;
    for (std::uint32_t offset = 0;; offset += wordsPerRead) {
        const auto cookie =
            xcb_get_property(m_connection, 1, m_window, m_property, XCB_GET_PROPERTY_TYPE_ANY, offset, wordsPerRead);
        const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(m_connection, cookie, nullptr));
        if (!reply) return {};
        taken.type = reply->type;
        taken.bytes.append(static_cast<const char*>(xcb_get_property_value(reply.get())),
                           xcb_get_property_value_length(reply.get()));
        if (taken.bytes.size() > largestAnswer) return {};
        if (reply->bytes_after == 0) return taken;
    }
}

} // namespace quillary::platform
