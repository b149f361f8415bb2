#!/usr/bin/env python3
"""What is dragged into the real panel and out of it: drops.py FOLDER [TEST]…, where FOLDER holds the programs. Other
processes drag and take; what came of it is read from the panel's tree, from the disk and from their reports."""

import os
import subprocess
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "support" / "desktop"))
from panels import PanelTest, png, run_tests  # noqa: E402
from session import wait_until  # noqa: E402

SVG = b'<svg xmlns="http://www.w3.org/2000/svg" width="40" height="20"><rect width="40" height="20"/></svg>'


def wide(text):
    return text.encode("utf-16-le")


class FromBrowsers(PanelTest):
    """Their offers are rebuilt here as they were seen."""
    programs = sys.argv[1]

    def setUp(self):
        super().setUp()
        self.jpeg = subprocess.run(["convert", "-size", "600x400", "plasma:", "jpg:-"], stdout=subprocess.PIPE,
                                   check=True).stdout
        self.open_panel()

    def saved(self, name):
        self.reader.press("push button", "Save to Library")
        path = self.root / "Library/Images" / name
        wait_until(path.exists, 10, name)
        return path

    def assert_origin(self, path, address, page):
        self.assertEqual(os.getxattr(path, "user.xdg.origin.url").decode(), address)
        self.assertEqual(os.getxattr(path, "user.xdg.referrer.url").decode(), page)

    def test_chromium_gives_a_picture_no_type(self):
        address = "http://pictures.example/my%20logo.jpg"
        self.drag_in({"text/x-moz-url": wide(address + "\na picture"), "text/plain": address.encode(),
                      "application/octet-stream": self.jpeg, "chromium/x-renderer-taint": b"http://shop.example",
                      "text/html": f'<img src="{address}" alt="a picture">'.encode(), "chromium/x-drag-id": b"22"},
                     "--promise", "my logo.jpg")
        self.reader.wait_for("image", "my logo")
        self.wait_for_text("600 × 400")
        self.assert_origin(self.saved("my logo.png"), address, "http://shop.example")

        # An address without a name: that of the promised file counts.
        self.drag_in({"text/x-moz-url": wide("http://shop.example/"), "application/octet-stream": self.jpeg,
                      "text/html": b'<img src="http://pictures.example/17?w=600">'}, "--promise", "red barn.jpg")
        self.reader.wait_for("image", "red barn")
        # A drawing stays a drawing.
        self.drag_in({"application/octet-stream": SVG, "text/html": b'<img src="http://pictures.example/tree.svg">'})
        self.reader.wait_for("image", "tree")
        self.wait_for_text("4096 × 2048")

    def test_firefox_gives_its_own_copy(self):
        page, address = "http://shop.example/deals?x=1", "http://pictures.example/my%20logo.jpg"
        self.drag_in({"text/uri-list": page.encode() + b"\r\n", "_NETSCAPE_URL": page.encode(),
                      "text/html": f'<a href="{page}"><img src="{address}"></a>'.encode(), "text/plain": page.encode(),
                      "application/x-moz-nativeimage": b"", "image/png": png(600, 400, (9, 99, 9)),
                      "image/jpeg": self.jpeg, "application/x-moz-file-promise-dest-filename": wide("my logo.jpg")})
        self.reader.wait_for("image", "my logo")
        self.assert_origin(self.saved("my logo.png"), address, page)

    def test_selected_source_is_a_drawing(self):
        self.drag_in({"text/html": b"<pre>&lt;svg", "text/plain": b"see " + SVG + b" there"})
        self.wait_for_text("4096 × 2048")
        self.reader.wait_for("image", "Pasted Image")


if __name__ == "__main__":
    run_tests("xclip", "convert", arguments=sys.argv[2:], reader=True)
