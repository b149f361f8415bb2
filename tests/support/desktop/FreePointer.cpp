// Loaded before the compositor's own libraries: it holds a pointer whose button is pressed within one of its screens, and no
// drag would ever reach the next.
#include <cstdint>
#include <dlfcn.h>
#include <xcb/xcb.h>

extern "C" [[gnu::visibility("default")]] xcb_grab_pointer_cookie_t xcb_grab_pointer(xcb_connection_t* connection, std::uint8_t ownerEvents,
                                                      xcb_window_t window, std::uint16_t events,
                                                      std::uint8_t pointerMode, std::uint8_t keyboardMode, xcb_window_t,
                                                      xcb_cursor_t cursor, xcb_timestamp_t time) {
    static const auto grab = reinterpret_cast<decltype(&xcb_grab_pointer)>(
        dlsym(dlopen("libxcb.so.1", RTLD_LAZY), "xcb_grab_pointer"));
    return grab(connection, ownerEvents, window, events, pointerMode, keyboardMode, XCB_WINDOW_NONE, cursor, time);
}
