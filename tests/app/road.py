#!/usr/bin/env python3
"""The road of one image through the real panel: road.py x11|wayland FOLDER, where FOLDER holds the programs.

Another program owns the clipboard, another process takes the drag; what came of it is read from the disk and from the
drop target's report. Windows are found on a picture of the screen, since under Wayland they cannot choose their place.
"""

import base64
import json
import os
import shutil
import subprocess
import sys
import tempfile
import time
import unittest
import zlib
from pathlib import Path
from urllib.parse import quote, unquote_to_bytes

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "support", "desktop"))
from session import SKIPPED, Missing, Session, require, wait_until  # noqa: E402

SYSTEM, PROGRAMS = sys.argv[1:3]
WAYLAND = SYSTEM == "wayland"
PANEL = (0x1C, 0x1C, 0x1F)
TARGET = (0x00, 0x80, 0x00)
SOURCE = (0x00, 0x00, 0x80)


def program(name):
    return os.path.join(PROGRAMS, name)


def png(width, height, color, middle=None):
    """A flat picture as PNG bytes, its middle third of another colour if one is given."""
    def chunk(kind, data):
        body = kind + data
        return len(data).to_bytes(4, "big") + body + zlib.crc32(body).to_bytes(4, "big")
    header = width.to_bytes(4, "big") + height.to_bytes(4, "big") + bytes([8, 2, 0, 0, 0])
    flat = b"\0" + bytes(color) * width
    third = width // 3
    row = b"\0" + bytes(color) * third + bytes(middle or color) * (width - 2 * third) + bytes(color) * third
    rows = flat * (height // 3) + row * (height - 2 * (height // 3)) + flat * (height // 3)
    return b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(rows)) + chunk(b"IEND", b"")


class Road(unittest.TestCase):
    def setUp(self):
        self.folder = Path(self.enterContext(tempfile.TemporaryDirectory(prefix="quillary-road-")))
        private = {f"XDG_{kind}_HOME": str(self.folder / kind.lower()) for kind in ("CONFIG", "CACHE", "DATA")}
        self.desktop = self.enterContext(Session(wayland=WAYLAND, size="1200x700", environment=private))
        self.root = self.folder / "library" / "Quillary"

    # What is on the screen

    def screen(self):
        """Width, height and RGB bytes of the whole screen."""
        shot = subprocess.run(["import", "-window", "root", "-depth", "8", "rgb:-"], env=self.desktop.x_environment,
                              stdout=subprocess.PIPE, check=True, timeout=30).stdout
        return 1200, 700, shot

    def window(self, color):
        """The rectangle (left, top, right, bottom) of the window of this colour; none when it is not there."""
        width, height, pixels = self.screen()
        wanted = bytes(color)
        rows = []
        for y in range(height):
            row = pixels[y * width * 3:(y + 1) * width * 3]
            count = sum(row[x:x + 3] == wanted for x in range(0, len(row), 3 * 8))
            if count >= 8:
                rows.append(y)
        if len(rows) < 60:
            return None
        middle = rows[0] + 3
        row = pixels[middle * width * 3:(middle + 1) * width * 3]
        columns = [x // 3 for x in range(0, len(row), 3) if row[x:x + 3] == wanted]
        return columns[0], rows[0], columns[-1], rows[-1]

    def shown(self, color):
        wait_until(lambda: self.window(color), 20, "the window on the screen")
        time.sleep(0.5)
        return self.window(color)

    def arranged(self, color, left, top):
        """Waits for the window and, where only the compositor could place it, carries it to this corner by hand."""
        at = self.shown(color)
        if not WAYLAND:
            return at
        hold = at[0] + 230, at[1] + 20
        self.desktop.xdo("keydown", "Super_L")
        self.desktop.press(*hold)
        for step in range(1, 9):
            self.desktop.move(hold[0] + (left - at[0]) * step // 8, hold[1] + (top - at[1]) * step // 8)
        self.desktop.release()
        self.desktop.xdo("keyup", "Super_L")
        return self.shown(color)

    # What a user does

    def open_panel(self, *arguments):
        self.panel = self.desktop.start([program("quillary"), "--library", str(self.folder / "library"), "panel",
                                         *arguments])
        left, top, right, bottom = self.arranged(PANEL, 20, 20)
        self.left, self.top, self.right, self.bottom = left, top, left + 379, top + 459
        self.focus()

    def focus(self):
        """A click beside every control gives the panel the keyboard."""
        self.click(self.left + 230, self.top + 20)

    def click(self, x, y):
        self.desktop.press(x, y)
        self.desktop.release()
        time.sleep(0.2)

    def copy(self, kind, data):
        """Gives the clipboard another owner that offers the data under this type."""
        file = self.folder / "offered"
        file.write_bytes(data)
        if WAYLAND:
            with open(file, "rb") as offered:
                subprocess.run(["wl-copy", "--type", kind], stdin=offered, env=self.desktop.environment, check=True,
                               timeout=30)
            # To own the clipboard it had to take the keyboard.
            self.focus()
        else:
            subprocess.run(["xclip", "-selection", "clipboard", "-t", kind, "-i", str(file)],
                           env=self.desktop.environment, check=True, timeout=30)

    def paste(self):
        self.desktop.xdo("key", "ctrl+v")
        time.sleep(1.0)

    def save(self):
        self.click(self.right - 50, self.bottom - 22)

    def images(self):
        return sorted(path.name for path in (self.root / "Library/Images").glob("*.png"))

    def saved(self, *names):
        wait_until(lambda: self.images() == sorted(names), 10, f"{names} on the shelf, not {self.images()}")

    def drag_out(self):
        """Drags the staged picture into the other program and returns the file that arrived there."""
        files = self.dragged_files((self.left + 190, self.top + 150))
        self.assertEqual(len(files), 1)
        return files[0]

    def dragged_files(self, begin):
        """Drags what lies there into the other program and returns the files that arrived, in their order."""
        target = self.desktop.start([program("drop_target"), "--place", "700,100,400,300"])
        target.wait_for("ready")
        left, top, right, bottom = self.arranged(TARGET, 700, 100)
        self.desktop.drag(begin, ((left + right) // 2, (top + bottom) // 2))
        drop = target.wait_for("drop")
        target.stop()
        self.assertEqual(drop["formats"], ["text/uri-list"])
        urls = base64.b64decode(drop["uriList"]).split(b"\r\n")
        self.assertEqual(urls.pop(), b"", "each address ends its line")
        self.assertTrue(all(url.startswith(b"file:///") for url in urls), urls)
        return [Path(os.fsdecode(unquote_to_bytes(url[len(b"file://"):]))) for url in urls]

    def intake(self, file):
        answer = self.desktop.run([program("quillary"), "intake", str(file), "--json"], stdout=subprocess.PIPE)
        return json.loads(answer.stdout)

    # The road

    def test_from_the_clipboard_to_another_program(self):
        self.open_panel()
        self.copy("image/png", png(1200, 800, (200, 40, 40)))
        self.paste()
        self.save()
        self.saved("Pasted Image.png")

        # Renamed in the field, dragged under the new name.
        self.click(self.left + 190, self.bottom - 137)
        self.desktop.xdo("key", "ctrl+a")
        self.desktop.xdo("type", "--delay", "20", "Red card")
        self.desktop.xdo("key", "Return")
        time.sleep(0.7)
        file = self.drag_out()
        self.assertEqual(file, self.root / "Recent" / "Red card.png")
        self.assertEqual((self.intake(file)["pixelWidth"], self.intake(file)["pixelHeight"]), (1200, 800))
        self.assertEqual(self.drag_out(), file, "a second drag carries the same file")

    def test_a_cutout_is_saved_and_dragged_in_place_of_its_picture(self):
        self.open_panel()
        side = 1200
        logo = self.folder / "logo.png"
        logo.write_bytes(png(side, side, (255, 255, 255), (32, 64, 192)))
        self.copy("text/uri-list", b"file://" + os.fsencode(logo) + b"\r\n")
        self.paste()
        self.click(self.left + 80, self.bottom - 54)  # Remove Background
        time.sleep(1)
        self.save()
        self.saved("logo cutout.png")
        file = self.drag_out()
        self.assertEqual(file, self.root / "Recent" / "logo cutout.png")
        answer = self.intake(file)
        self.assertEqual((answer["pixelWidth"], answer["hasAlphaChannel"]), (side, True))

        # The edge is dragged to its end, the picture out right after it.
        self.desktop.drag((self.left + 240, self.bottom - 54), (self.left + 325, self.bottom - 54))
        tighter = self.drag_out()
        self.assertEqual(tighter.name, "logo cutout 2.png")
        self.assertLess(self.opaque(tighter), self.opaque(file))

    def opaque(self, file):
        """The share of the picture's pixels that are opaque."""
        mean = subprocess.run(["convert", str(file), "-alpha", "extract", "-threshold", "99%", "-format", "%[fx:mean]",
                               "info:"], stdout=subprocess.PIPE, check=True, timeout=30).stdout
        return float(mean)

    def test_vectors_are_rasterised(self):
        self.open_panel()
        self.copy("text/plain;charset=utf-8",
                  b'see <svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 40 20"><rect width="40" height="20"/></svg>')
        self.paste()
        time.sleep(1)
        file = self.drag_out()
        self.assertEqual((self.intake(file)["pixelWidth"], self.intake(file)["pixelHeight"]), (4096, 2048))

        source = self.folder / "my logo.svg"
        source.write_text('<svg xmlns="http://www.w3.org/2000/svg" width="10" height="10"/>')
        self.copy("text/uri-list", b"file://" + str(source).replace(" ", "%20").encode() + b"\r\n")
        self.paste()
        time.sleep(1)
        self.save()
        self.saved("my logo.png")

    @unittest.skipIf(WAYLAND, "the owner that never answers is an X11 program")
    def test_a_clipboard_that_never_answers_stops_nothing(self):
        self.open_panel()
        owner = self.desktop.start([program("clipboard_owner"), "--data", f"image/png={os.devnull}", "--hang"])
        owner.wait_for("ready")
        self.desktop.xdo("key", "ctrl+v")
        time.sleep(0.2)
        # The window goes on while the owner keeps the reader waiting.
        begin = time.monotonic()
        self.click(self.left + 80, self.top + 20)
        time.sleep(3.5)
        owner.stop()
        self.assertIsNone(self.panel.process.poll())
        self.assertLess(time.monotonic() - begin, 10)
        self.click(self.left + 35, self.top + 20)
        self.copy("image/png", png(20, 20, (1, 2, 3)))
        self.paste()
        self.save()
        self.saved("Pasted Image.png")

    def test_drops_stage_one_image_and_file_a_batch(self):
        self.open_panel()
        folder = self.folder / "graphics"
        (folder / "deep").mkdir(parents=True)
        for name in ("one.png", "deep/two.png"):
            (folder / name).write_bytes(png(30, 30, (len(name), 90, 90)))
        (folder / "sound.wav").write_bytes(b"noise")

        self.drop(folder / "one.png")
        self.save()
        self.saved("one.png")
        # A drag out before, which must not make the panel refuse the drag in.
        self.assertEqual(self.drag_out(), self.root / "Recent" / "one.png")
        self.drop(folder)
        wait_until(lambda: (self.root / "Library/Audio/sound.wav").exists(), 10, "the batch")
        self.saved("one.png", "two.png")

    def test_a_selection_is_dragged_as_its_files_in_the_order_shown(self):
        shelf = self.root / "Library/Images"
        shelf.mkdir(parents=True)
        for age, name in enumerate(("new & first.png", "middle.png", "old.png", "oldest.png")):
            (shelf / name).write_bytes(png(30, 30, (60 * age, 90, 90)))
            os.utime(shelf / name, (1_700_000_000 - age, 1_700_000_000 - age))
        self.open_panel("--tab", "library")
        time.sleep(1)
        first = self.left + 50, self.top + 255
        self.click(*first)
        self.desktop.xdo("key", "shift+Right", "shift+Right")
        time.sleep(0.5)
        files = self.dragged_files((self.left + 40, self.bottom - 22))
        self.assertEqual([file.name for file in files], ["new & first.png", "middle.png", "old.png"])
        self.assertEqual([file.name for file in self.dragged_files(first)], ["new & first.png"], "a tile is one file")

    def test_a_compound_clip_comes_in_and_goes_out_again(self):
        media = self.folder / "editor" / "Café 1.mov"
        media.parent.mkdir()
        media.write_bytes(b"frames")
        src = b"file://" + quote(str(media)).encode()
        # Ten megabytes, as a long project has.
        filler = b"".join(b"<!-- " + b"q" * 1_000_000 + b" -->" for _ in range(10))
        clip = (b'<?xml version="1.0" encoding="UTF-8"?>\n<!DOCTYPE fcpxml>\n<fcpxml version="1.13"><resources>'
                b'<asset id="r1" uid="0123456789ABCDEF" name="c"><media-rep kind="original-media" src="' + src +
                b'"><bookmark>Ym9v</bookmark></media-rep></asset>'
                b'<media id="r2" name="Intro" modDate="x" uid="y"><sequence duration="2s"><spine><asset-clip ref="r1" '
                b'name="c"/></spine></sequence></media></resources><ref-clip ref="r2" name="Intro" duration="2s"/>' +
                filler + b"</fcpxml>\n")
        offer = self.folder / "clip"
        offer.write_bytes(clip)
        self.open_panel()
        self.drag_in([f"com.apple.finalcutpro.xml.v1-13={offer}", f"com.apple.flexo.proFFPasteboardUTI={offer}"])
        block = self.root / "Library/Blocks/Intro.fcpxml"
        wait_until(block.exists, 20, "the block")
        copy = self.root / "Library/Videos/Final Cut Elements/01234567-Café 1.mov"
        self.assertEqual(copy.read_bytes(), b"frames")
        media.unlink()

        time.sleep(1.5)
        kept = self.folder / "kept"
        kept.mkdir()
        target = self.desktop.start([program("drop_target"), "--place", "700,100,400,300", "--keep", str(kept)])
        target.wait_for("ready")
        left, top, right, bottom = self.arranged(TARGET, 700, 100)
        self.desktop.drag((self.left + 60, self.top + 185), ((left + right) // 2, (top + bottom) // 2))
        drop = target.wait_for("drop", 30)
        target.stop()
        types = ["com.apple.finalcutpro.xml", *(f"com.apple.finalcutpro.xml.v1-{n}" for n in (14, 13, 12)),
                 "public.utf8-plain-text", "text/plain;charset=utf-8"]
        self.assertEqual(drop["formats"], types)
        printed = self.desktop.run([program("quillary"), "--library", str(self.folder / "library"), "block", "xml",
                                    str(block)], stdout=subprocess.PIPE).stdout
        for place in range(len(types)):
            self.assertEqual((kept / str(place)).read_bytes(), printed, types[place])
        self.assertIn(quote(str(copy)).encode(), printed)
        self.assertNotIn(b"uid=", printed)
        self.assertIn(filler, printed)

    def drop(self, path):
        offer = self.folder / "drag"
        offer.write_bytes(b"file://" + os.fsencode(path) + b"\r\n")
        self.drag_in([f"text/uri-list={offer}"])

    def drag_in(self, offers):
        """Drags what another program offers into the panel: "TYPE=FILE", any number of them."""
        data = [word for offer in offers for word in ("--data", offer)]
        source = self.desktop.start([program("drag_source"), "--place", "700,100,400,300", "--count", "2", *data])
        source.wait_for("ready")
        time.sleep(0.5)
        begin = self.source_window()
        self.desktop.drag(begin, (self.left + 190, self.top + 200))
        source.wait_for("dragged")
        # The drop is told to be done before all of it was fetched, so the source stays for a while.
        time.sleep(2)
        source.stop()

    def source_window(self):
        if not WAYLAND:
            return 900, 250
        left, top, right, bottom = self.arranged(SOURCE, 700, 100)
        return (left + right) // 2, (top + bottom) // 2


if __name__ == "__main__":
    try:
        require("Xvfb", "xdotool", "import", *(["weston", "wl-copy"] if WAYLAND else ["xclip"]))
    except Missing as missing:
        print(f"skipped: {missing}")
        sys.exit(SKIPPED)
    unittest.main(argv=[sys.argv[0], *sys.argv[3:]], verbosity=2)
