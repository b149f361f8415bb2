"""What tests of the real panel share: the panel in a session of its own over a library of its own, found and driven by the
accessibility tree, the pointer and the keyboard, and the other programs around it; under X11 with a window manager, or under
a Wayland compositor."""

import base64
import ctypes
import os
import subprocess
import sys
import tempfile
import time
import unittest
import zlib
from pathlib import Path
from urllib.parse import quote_from_bytes, unquote_to_bytes

from accessible import Reader, interpreter
from session import SKIPPED, Missing, Session, require, wait_until


def png_of(width, height, rows, effort=1):
    """PNG bytes of rows of RGB samples, each after its filter byte."""
    def chunk(kind, data):
        body = kind + data
        return len(data).to_bytes(4, "big") + body + zlib.crc32(body).to_bytes(4, "big")
    header = width.to_bytes(4, "big") + height.to_bytes(4, "big") + bytes([8, 2, 0, 0, 0])
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(rows, effort))
            + chunk(b"IEND", b""))


def png(width, height, color, middle=None):
    """A flat picture as PNG bytes, its middle third of another colour if one is given."""
    third = width // 3
    flat = b"\0" + bytes(color) * width
    row = b"\0" + bytes(color) * third + bytes(middle or color) * (width - 2 * third) + bytes(color) * third
    rows = flat * (height // 3) + row * (height - 2 * (height // 3)) + flat * (height // 3)
    return png_of(width, height, rows)


def noise(width, height):
    """A picture without any pattern, which takes its time."""
    rows = b"".join(b"\0" + os.urandom(width * 3) for _ in range(height))
    return png_of(width, height, rows, effort=0)


def url_of(path):
    return "file://" + quote_from_bytes(os.fsencode(path), safe="/-._~!$&'()*+,:=@")


def dropped_files(drop):
    """The files of a drop that carries one address a line, each line ended."""
    urls = base64.b64decode(drop["uriList"]).split(b"\r\n")
    assert urls.pop() == b"" and all(url.startswith(b"file:///") for url in urls), urls
    return [Path(os.fsdecode(unquote_to_bytes(url[len(b"file://"):]))) for url in urls]


def ask_to_close(display, window):
    """Asks an X11 window to close, as a window manager does when its button is pressed."""
    class ClientMessage(ctypes.Structure):
        _fields_ = [("type", ctypes.c_int), ("serial", ctypes.c_ulong), ("send_event", ctypes.c_int),
                    ("display", ctypes.c_void_p), ("window", ctypes.c_ulong), ("message_type", ctypes.c_ulong),
                    ("format", ctypes.c_int), ("data", ctypes.c_long * 5), ("rest", ctypes.c_long * 24)]
    x11 = ctypes.CDLL("libX11.so.6")
    x11.XOpenDisplay.restype = ctypes.c_void_p
    x11.XInternAtom.restype = ctypes.c_ulong
    server = ctypes.c_void_p(x11.XOpenDisplay(display.encode()))
    client_message = 33
    event = ClientMessage(type=client_message, send_event=1, window=window, format=32)
    event.message_type = x11.XInternAtom(server, b"WM_PROTOCOLS", 0)
    event.data[0] = x11.XInternAtom(server, b"WM_DELETE_WINDOW", 0)
    x11.XSendEvent(server, ctypes.c_ulong(window), 0, ctypes.c_long(0), ctypes.byref(event))
    x11.XCloseDisplay(server)


def private_folders(folder):
    """The desktop's folders below one of the test's own, as environment variables."""
    return {f"XDG_{kind}_HOME": str(Path(folder) / kind.lower()) for kind in ("CONFIG", "CACHE", "DATA")}


def run_tests(*tools, arguments=(), reader=False):
    """Runs the tests of the program; CTest is told when a tool is missing."""
    try:
        require("Xvfb", "xdotool", "dbus-daemon", *tools)
        if reader:
            interpreter()
    except Missing as missing:
        print(f"skipped: {missing}")
        sys.exit(SKIPPED)
    unittest.main(argv=[sys.argv[0], *arguments], verbosity=2)


class PanelTest(unittest.TestCase):
    programs = ""  # the folder that holds them
    wayland = False

    def setUp(self):
        self.folder = Path(self.enterContext(tempfile.TemporaryDirectory(prefix="quillary-panel-")))
        environment = {**private_folders(self.folder), **Reader.environment, **self.surroundings()}
        # Under Wayland the panel in its frame and the other program's window fill a screen each, to the pixel.
        self.desktop = self.enterContext(Session(self.wayland, "1200x700", environment, ["386x493", "400x300"], "openbox",
                                                 self.program("free_pointer.so")))
        self.reader = Reader(self.desktop, *((3, 30) if self.wayland else ()))
        self.addCleanup(self.reader.close)
        self.root = self.folder / "library" / "Quillary"
        self.beside = (386, 0, 400, 300) if self.wayland else (700, 100, 400, 300)

    def surroundings(self):
        """More of the environment that the panel finds."""
        return {}

    def program(self, name):
        return os.path.join(os.path.abspath(self.programs), name)

    def quillary(self, *arguments):
        """What the command line prints about the panel's library."""
        return self.desktop.run([self.program("quillary"), "--library", str(self.folder / "library"), *map(str, arguments)],
                                stdout=subprocess.PIPE).stdout

    # The panel

    def open_panel(self, *arguments):
        self.desktop.look_at(0)
        self.panel = self.desktop.start([self.program("quillary"), "--library", str(self.folder / "library"), "panel",
                                         *arguments], QT_WAYLAND_DISABLE_WINDOWDECORATION="")
        self.reader.placed("frame", "Quillary", 30)

    def to_the_panel(self):
        """Gives its window the keyboard, by its frame."""
        frame = self.reader.wait_for("frame", "Quillary")
        self.click((frame.left + 100, frame.top - 12))

    def close_panel(self):
        """By the cross of its frame."""
        # The first click on the frame that the toolkit draws under Wayland is lost after a drag.
        self.to_the_panel()
        frame = self.reader.wait_for("frame", "Quillary")
        from_the_corner = (14, 15) if self.wayland else (10, 10)
        self.click((frame.left + frame.width - from_the_corner[0], frame.top - from_the_corner[1]))

    # What a hand does

    def windows(self, title):
        """The X11 windows of this title that are shown."""
        found = self.desktop.run(["xdotool", "search", "--onlyvisible", "--name", f"^{title}$"], stdout=subprocess.PIPE)
        return [int(window) for window in found.stdout.split()]

    def close_window(self, title):
        for window in self.windows(title):
            ask_to_close(self.desktop.environment["DISPLAY"], window)
        wait_until(lambda: not self.windows(title), 15, f"“{title}” is closed")

    def click(self, place, button=1):
        self.desktop.press(*place, button)
        self.desktop.release(button)
        time.sleep(0.2)

    def key(self, *keys):
        for key in keys:
            self.desktop.xdo("key", key)
            time.sleep(0.15)

    def type(self, text):
        self.desktop.xdo("type", "--delay", "20", text)

    @staticmethod
    def middle(node):
        return node.left + node.width // 2, node.top + node.height // 2

    # What is seen

    def tile(self, name):
        return self.reader.placed("list item", name)

    def texts(self):
        """The names of all that is shown."""
        return [node.name for node in self.reader.tree() if "showing" in node.states and node.name]

    def wait_for_text(self, text, seconds=20):
        """Until something is shown whose name holds the text."""
        wait_until(lambda: any(text in name for name in self.texts()), seconds, text)

    def pixel(self, place):
        """The colour of a place on the screen, as three numbers."""
        x, y = place
        shown = subprocess.run(["import", "-silent", "-window", "root", "-crop", f"1x1+{x}+{y}", "-depth", "8", "rgb:-"],
                               env=self.desktop.x_environment, stdout=subprocess.PIPE, check=True, timeout=30).stdout
        return tuple(shown[:3])

    def wait_for_color(self, place, color, what, near=12):
        """Until the colour is there: the window system scales and blends."""
        seen = [()]

        def there():
            seen[0] = self.pixel(place)
            return all(abs(is_ - wanted) <= near for is_, wanted in zip(seen[0], color))

        try:
            wait_until(there, 10, what)
        except AssertionError as error:
            raise AssertionError(f"{error}: {seen[0]} at {place}, not {color}") from None

    # Other programs

    def copy(self, kind, data):
        """Gives the clipboard another owner that offers the data under this type."""
        if self.wayland:
            subprocess.run(["wl-copy", "--type", kind], input=data, env=self.desktop.environment, check=True, timeout=30)
            # To own the clipboard it had to take the keyboard.
            self.to_the_panel()
            return
        subprocess.run(["xclip", "-selection", "clipboard", "-t", kind, "-i"], input=data, env=self.desktop.environment,
                       check=True, timeout=30)

    def clipboard(self, kind):
        paste = ["wl-paste", "-n", "-t", kind] if self.wayland else ["xclip", "-selection", "clipboard", "-o", "-t", kind]
        return subprocess.run(paste, env=self.desktop.environment, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                              timeout=30).stdout

    def open_beside(self, name, *arguments):
        """Starts one of the tools beside the panel."""
        self.desktop.look_at(1)
        tool = self.desktop.start([self.program(name), "--place", ",".join(map(str, self.beside)), *arguments])
        tool.wait_for("ready")
        return tool

    @property
    def over_there(self):
        """The middle of the other program's window."""
        left, top, width, height = self.beside
        return left + width // 2, top + height // 2

    def drop_target(self, *arguments):
        return self.open_beside("drop_target", *arguments)

    def drag_out(self, place, *arguments):
        """Drags what lies there into another program, which reports the drop."""
        target = self.drop_target(*arguments)
        self.desktop.drag(place, self.over_there)
        drop = target.wait_for("drop", 30)
        target.stop()
        return drop

    def drag_in(self, *offers, onto=None, until=lambda: True, promise=""):
        """Drags what another program offers, each a pair of type and bytes, into the panel, and waits for what comes of
        it. The program stays as long: a drop is told to be done before all of it was fetched. It may promise to save a
        file of some name."""
        data = []
        for number, (kind, content) in enumerate(offers):
            file = self.folder / f"offer {number}"
            file.write_bytes(content)
            data += ["--data", f"{kind}={file}"]
        source = self.open_beside("drag_source", "--count", "2", "--promise", promise, *data)
        try:
            self.desktop.drag(self.over_there, onto or self.middle(self.reader.wait_for("frame", "Quillary")))
            source.wait_for("dragged")
            until()
        finally:
            source.stop()

    def drop_files(self, *paths, onto=None, until=lambda: True):
        self.drag_in(("text/uri-list", b"".join(url_of(path).encode() + b"\r\n" for path in paths)), onto=onto, until=until)
