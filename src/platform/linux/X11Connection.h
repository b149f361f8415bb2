#pragma once

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <xcb/xcb.h>

namespace quillary::platform {

struct FreeX11Reply {
    void operator()(void* memory) const { std::free(memory); }
};
/// What the X server answered, or an event of it.
template <typename T>
using X11Reply = std::unique_ptr<T, FreeX11Reply>;

/// A short-lived connection to the X server beside the toolkit's.
class X11Connection {
public:
    X11Connection() : m_connection(xcb_connect(nullptr, nullptr)) {}

    bool works() const { return xcb_connection_has_error(get()) == 0; }
    xcb_connection_t* get() const { return m_connection.get(); }
    xcb_atom_t atom(std::string_view name) const {
        const auto cookie = xcb_intern_atom(get(), 0, static_cast<std::uint16_t>(name.size()), name.data());
        const X11Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(get(), cookie, nullptr));
        return reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
    }
    /// Waits until the server has done all it was asked for: of a connection that ends it reads no more.
    void finish() const {
        const X11Reply<xcb_get_input_focus_reply_t> reply(
            xcb_get_input_focus_reply(get(), xcb_get_input_focus(get()), nullptr));
    }

private:
    struct Disconnect {
        void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
    };
    std::unique_ptr<xcb_connection_t, Disconnect> m_connection;
};

} // namespace quillary::platform
