"""What tests of the real panel share: the panel in a session of its own over a library of its own, found and driven by the
accessibility tree, the pointer and the keyboard, and the other programs around it."""

import base64
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


def png_of(width, height, rows):
    """PNG bytes of rows of RGB samples, each after its filter byte."""
    def chunk(kind, data):
        body = kind + data
        return len(data).to_bytes(4, "big") + body + zlib.crc32(body).to_bytes(4, "big")
    header = width.to_bytes(4, "big") + height.to_bytes(4, "big") + bytes([8, 2, 0, 0, 0])
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(rows, 1))
            + chunk(b"IEND", b""))


def png(width, height, color, middle=None):
    """A flat picture as PNG bytes, its middle third of another colour if one is given."""
    third = width // 3
    flat = b"\0" + bytes(color) * width
    row = b"\0" + bytes(color) * third + bytes(middle or color) * (width - 2 * third) + bytes(color) * third
    rows = flat * (height // 3) + row * (height - 2 * (height // 3)) + flat * (height // 3)
    return png_of(width, height, rows)


def url_of(path):
    return "file://" + quote_from_bytes(os.fsencode(path), safe="/-._~!$&'()*+,:=@")


def dropped_files(drop):
    """The files of a drop that carries one address a line, each line ended."""
    urls = base64.b64decode(drop["uriList"]).split(b"\r\n")
    assert urls.pop() == b"" and all(url.startswith(b"file:///") for url in urls), urls
    return [Path(os.fsdecode(unquote_to_bytes(url[len(b"file://"):]))) for url in urls]


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

    def setUp(self):
        self.folder = Path(self.enterContext(tempfile.TemporaryDirectory(prefix="quillary-panel-")))
        environment = {**private_folders(self.folder), **Reader.environment}
        self.desktop = self.enterContext(Session(size="1200x700", environment=environment))
        self.reader = Reader(self.desktop)
        self.addCleanup(self.reader.close)
        self.root = self.folder / "library" / "Quillary"

    def program(self, name):
        return os.path.join(self.programs, name)

    def quillary(self, *arguments):
        """What the command line prints about the panel's library."""
        return self.desktop.run([self.program("quillary"), "--library", str(self.folder / "library"), *map(str, arguments)],
                                stdout=subprocess.PIPE).stdout

    def open_panel(self, *arguments):
        self.panel = self.desktop.start([self.program("quillary"), "--library", str(self.folder / "library"), "panel",
                                         *arguments])
        self.reader.wait_for("frame", "Quillary", 30)
        # Without a window manager the panel stands in the corner and the keyboard goes where the pointer is.
        self.click((230, 20))

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

    def tile(self, name):
        return self.reader.placed("list item", name)

    def wait_for_text(self, text, seconds=20):
        """Until something is shown whose name holds the text."""
        wait_until(lambda: any(text in node.name for node in self.reader.tree() if "showing" in node.states), seconds, text)

    def copy(self, kind, data):
        """Gives the clipboard another owner that offers the data under this type."""
        subprocess.run(["xclip", "-selection", "clipboard", "-t", kind, "-i"], input=data, env=self.desktop.environment,
                       check=True, timeout=30)

    def clipboard(self, kind):
        return subprocess.run(["xclip", "-selection", "clipboard", "-o", "-t", kind], env=self.desktop.environment,
                              stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, timeout=30).stdout

    def drop_target(self, *arguments):
        target = self.desktop.start([self.program("drop_target"), "--place", "700,100,400,300", *arguments])
        target.wait_for("ready")
        return target

    def drag_out(self, place, *arguments):
        """Drags what lies there into another program, which reports the drop."""
        target = self.drop_target(*arguments)
        self.desktop.drag(place, (900, 250))
        drop = target.wait_for("drop", 30)
        target.stop()
        return drop
