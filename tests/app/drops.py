#!/usr/bin/env python3
"""What is dragged into the real panel and out of it: drops.py FOLDER [TEST]…, where FOLDER holds the programs. Other
processes drag and take; what came of it is read from the panel's tree, from the disk and from their reports."""

import os
import subprocess
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "support" / "desktop"))
from panels import PanelTest, png, run_tests, url_of  # noqa: E402
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

    def drag(self, offers, shown, promise=""):
        self.drag_in(*offers.items(), until=lambda: self.reader.wait_for("image", shown), promise=promise)

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
        self.drag({"text/x-moz-url": wide(address + "\na picture"), "text/plain": address.encode(),
                   "application/octet-stream": self.jpeg, "chromium/x-renderer-taint": b"http://shop.example",
                   "text/html": f'<img src="{address}" alt="a picture">'.encode(), "chromium/x-drag-id": b"22"},
                  "my logo", "my logo.jpg")
        self.wait_for_text("600 × 400")
        self.assert_origin(self.saved("my logo.png"), address, "http://shop.example")

        # An address without a name: that of the promised file counts.
        self.drag({"text/x-moz-url": wide("http://shop.example/"), "application/octet-stream": self.jpeg,
                   "text/html": b'<img src="http://pictures.example/17?w=600">'}, "red barn", "red barn.jpg")
        # A drawing stays a drawing.
        self.drag({"application/octet-stream": SVG, "text/html": b'<img src="http://pictures.example/tree.svg">'}, "tree")
        self.wait_for_text("4096 × 2048")

    def test_firefox_gives_its_own_copy(self):
        page, address = "http://shop.example/deals?x=1", "http://pictures.example/my%20logo.jpg"
        self.drag({"text/uri-list": page.encode() + b"\r\n", "_NETSCAPE_URL": page.encode(),
                      "text/html": f'<a href="{page}"><img src="{address}"></a>'.encode(), "text/plain": page.encode(),
                      "application/x-moz-nativeimage": b"", "image/png": png(600, 400, (9, 99, 9)),
                      "image/jpeg": self.jpeg, "application/x-moz-file-promise-dest-filename": wide("my logo.jpg")}, "my logo")
        self.assert_origin(self.saved("my logo.png"), address, page)

    def test_selected_source_is_a_drawing(self):
        self.drag({"text/html": b"<pre>&lt;svg", "text/plain": b"see " + SVG + b" there"}, "Pasted Image")
        self.wait_for_text("4096 × 2048")


class OntoShelves(PanelTest):
    """A drop lands where it was dropped, and the shelf tells what came of it."""
    programs = sys.argv[1]

    def setUp(self):
        super().setUp()
        staged = self.folder / "staged.png"
        staged.write_bytes(png(300, 200, (9, 9, 99)))
        self.open_panel(str(staged))
        self.reader.wait_for("image", "staged")
        self.reader.press("push button", "Library")

    def drag(self, offers, told):
        self.drag_in(*offers.items(), until=lambda: self.reader.wait_for("", told))

    def assert_staged(self):
        self.reader.press("push button", "Import")
        self.reader.wait_for("image", "staged")
        self.reader.press("push button", "Library")

    def files(self, shelf):
        return sorted(path.name for path in (self.root / "Library" / shelf).glob("*.*"))

    def test_onto_the_images(self):
        self.drag({"image/png": png(60, 40, (99, 9, 9)), "text/html": b'<img src="http://a.example/red%20barn.png">'},
                  "red barn saved to your library")
        self.tile("red barn")
        self.drag({"text/plain": b"a clipping"}, "Nothing readable in that drop.")
        self.assert_staged()
        self.assertEqual(self.files("Images"), ["red barn.png"])

    def test_onto_the_blocks(self):
        clip = (b'<fcpxml version="1.11"><resources><media id="r1" name="Card"><sequence duration="2s"><spine>'
                b'<gap duration="2s"/></spine></sequence></media></resources><ref-clip ref="r1" name="Card" duration="2s"/>'
                b"</fcpxml>")
        late = b"<!--" + b"x" * 600 + b"-->" + clip
        self.reader.press("push button", "Blocks, 0")
        refused = "That drag carried no Final Cut clip"
        picture = self.folder / "one.png"
        picture.write_bytes(png(30, 30, (9, 9, 9)))
        for offers in ({"text/plain": b"<xmeml version='5'/>"}, {"com.apple.finalcutpro.xml": late},
                       {"text/uri-list": url_of(picture).encode() + b"\r\n"}):
            self.drag(offers, refused)
            wait_until(lambda: not self.reader.find("", refused), 15, "the end of the note")
        self.assert_staged()

        exported = self.folder / "exported.fcpxml"
        exported.write_bytes(clip)
        self.drop_files(exported, picture, until=lambda: self.tile("Card"))
        wait_until(lambda: self.files("Images") == ["one.png"], 10, "the picture beside the clip")
        self.assertEqual(self.files("Blocks"), ["Card.fcpxml"])


class OutOfThePanel(PanelTest):
    programs = sys.argv[1]

    def test_a_block_of_any_size(self):
        # No drag could bring so much in on this system, so the document is put there.
        block = self.root / "Library/Blocks/Long.fcpxml"
        block.parent.mkdir(parents=True)
        filler = b"".join(b"<!-- " + b"%06d" % number + b"q" * 999_994 + b" -->" for number in range(24))
        block.write_bytes(
            b'<?xml version="1.0" encoding="UTF-8"?>\n<!DOCTYPE fcpxml>\n<fcpxml version="1.11"><resources>'
            b'<media id="r1" name="Long"><sequence duration="2s"><spine><gap duration="2s"/></spine></sequence></media>'
            b'</resources><ref-clip ref="r1" name="Long" duration="2s"/>' + filler + b"</fcpxml>\n")
        self.open_panel("--tab", "library")
        self.reader.press("push button", "Blocks, 1")
        place = self.middle(self.tile("Long"))
        self.desktop.move(*place)
        printed = self.quillary("block", "xml", block)
        self.assertGreater(len(printed), 20_000_000)
        kept = self.folder / "kept"
        kept.mkdir()
        types = ["com.apple.finalcutpro.xml", *(f"com.apple.finalcutpro.xml.v1-{n}" for n in (14, 13, 12)),
                 "public.utf8-plain-text", "text/uri-list", "text/plain;charset=utf-8"]
        for _ in range(2):
            drop = self.drag_out(place, "--keep", str(kept))
            self.assertEqual(drop["formats"], types)
            for number, kind in enumerate(types):
                arrived = (kept / str(number)).read_bytes()
                if kind == "text/uri-list":
                    self.assertEqual(arrived, url_of(block).encode() + b"\r\n")
                else:
                    self.assertEqual(len(arrived), len(printed), kind)
                    self.assertEqual(arrived, printed, kind)
        self.assertIsNone(self.panel.process.poll())
        self.reader.press("push button", "Images, 0")
        self.reader.wait_for("push button", "Collection: All")

    def look(self, place, size):
        """The part of the screen around a place, as rows of (red, green, blue)."""
        width, height = size
        crop = f"{width}x{height}+{place[0] - width // 2}+{place[1] - height // 2}"
        shot = subprocess.run(["import", "-silent", "-window", "root", "-crop", crop, "-depth", "8", "rgb:-"],
                              env=self.desktop.environment, stdout=subprocess.PIPE, check=True, timeout=30).stdout
        pixels = [tuple(shot[at:at + 3]) for at in range(0, len(shot), 3)]
        return [pixels[row * width:(row + 1) * width] for row in range(height)]

    def carried(self, place, colour):
        """How wide and high what the pointer carries from there is, of this colour."""
        self.drop_target()
        self.desktop.press(*place)
        for step in (4, 8):
            self.desktop.move(place[0] + step, place[1])
        self.desktop.move(*self.over_there)
        box = [0, 0]

        def there():
            rows = self.look(self.over_there, (200, 160))
            near = [[max(abs(a - b) for a, b in zip(pixel, colour)) < 12 for pixel in row] for row in rows]
            box[:] = [max(sum(row) for row in near), sum(any(row) for row in near)]
            return box[0] > 5
        wait_until(there, 10, "what the pointer carries")
        self.desktop.release()
        return box

    def test_the_picture_itself_is_carried(self):
        red = (200, 30, 30)
        images = self.root / "Library/Images"
        images.mkdir(parents=True)
        (images / "small.png").write_bytes(png(50, 20, red))
        wide = self.folder / "wide.png"
        wide.write_bytes(png(1000, 500, red))
        self.open_panel(str(wide))
        self.assertEqual(self.carried(self.middle(self.reader.placed("image", "wide")), red), [110, 55])
        self.reader.press("push button", "Library")
        self.assertEqual(self.carried(self.middle(self.tile("small")), red), [50, 20])


if __name__ == "__main__":
    run_tests("xclip", "convert", arguments=sys.argv[2:], reader=True)
