#!/usr/bin/env python3
"""The road of one image through the real panel: road.py FOLDER, where FOLDER holds the programs.

Another program owns the clipboard, another process takes the drag; what came of it is read from the disk and from the
drop target's report.
"""

import json
import os
import subprocess
import sys
import time
from pathlib import Path
from urllib.parse import quote

sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "support" / "desktop"))
from panels import PanelTest, dropped_files, png, png_of, run_tests, url_of  # noqa: E402
from session import wait_until  # noqa: E402


def noisy_png(width, height):
    """A picture that takes long to encode."""
    rows = b"".join(b"\0" + os.urandom(3 * width) for _ in range(height))
    return png_of(width, height, rows)


class Road(PanelTest):
    programs = sys.argv[1]

    def paste(self, kind, data, shown):
        """Pastes what another program offers, until the panel shows it under this name."""
        self.copy(kind, data)
        self.key("ctrl+v")
        self.reader.wait_for("image", shown)

    def saved(self, *names):
        self.reader.press("push button", "Save to Library")

        def images():
            return sorted(path.name for path in (self.root / "Library/Images").glob("*.png"))
        wait_until(lambda: images() == sorted(names), 10, f"{names} on the shelf, not {images()}")

    def dragged(self, name):
        """Drags the staged picture into another program and returns the file that arrived there."""
        drop = self.drag_out(self.middle(self.reader.placed("image", name)))
        self.assertEqual(drop["formats"], ["text/uri-list"])
        files = dropped_files(drop)
        self.assertEqual(len(files), 1)
        self.assertEqual(files[0].parent, self.root / "Recent")
        return files[0]

    def facts(self, file, *keys):
        told = json.loads(self.quillary("intake", file, "--json"))
        return tuple(told[key] for key in keys)

    def test_from_the_clipboard_to_another_program(self):
        self.open_panel()
        self.paste("image/png", png(1200, 800, (200, 40, 40)), "Pasted Image")
        self.saved("Pasted Image.png")
        # Renamed in the field, dragged under the new name.
        self.click(self.middle(self.reader.placed("text", "Name")))
        self.key("ctrl+a")
        self.type("Red card")
        self.key("Return")
        file = self.dragged("Red card")
        self.assertEqual(file.name, "Red card.png")
        self.assertEqual(self.facts(file, "pixelWidth", "pixelHeight"), (1200, 800))
        self.assertEqual(self.dragged("Red card"), file, "a second drag carries the same file")

    def test_a_drag_at_once_brings_the_whole_picture_of_that_moment(self):
        self.open_panel()
        target = self.drop_target("--count", "2")
        for name, (width, height) in {"Pasted Image": (3000, 2000), "Pasted Image 2": (2600, 2300)}.items():
            self.copy("image/png", noisy_png(width, height))
            self.key("ctrl+v")
            self.wait_for_text(f"{width} × {height}")
            # It is being encoded while the drag begins.
            self.desktop.drag(self.middle(self.reader.placed("image", "Pasted Image")), (900, 250))
            file, = dropped_files(target.wait_for("drop", 60))
            self.assertEqual(file, self.root / "Recent" / f"{name}.png")
            self.assertEqual(self.facts(file, "pixelWidth", "pixelHeight"), (width, height))

    def test_a_cutout_is_saved_and_dragged_in_place_of_its_picture(self):
        self.open_panel()
        logo = self.folder / "logo.png"
        logo.write_bytes(png(1200, 1200, (255, 255, 255), (32, 64, 192)))
        self.paste("text/uri-list", url_of(logo).encode() + b"\r\n", "logo")
        self.reader.press("push button", "Remove Background")
        self.wait_for_text("cutout · flat background")
        self.saved("logo cutout.png")
        file = self.dragged("logo")
        self.assertEqual(file.name, "logo cutout.png")
        self.assertEqual(self.facts(file, "pixelWidth", "hasAlphaChannel"), (1200, True))

        # The edge is dragged to its end, the picture out right after it.
        edge = self.reader.placed("slider", "Edge")
        self.desktop.drag((edge.left + edge.width * 3 // 10, edge.top + edge.height // 2),
                          (edge.left + edge.width, edge.top + edge.height // 2))
        tighter = self.dragged("logo")
        self.assertEqual(tighter.name, "logo cutout 2.png")
        self.assertLess(self.opaque(tighter), self.opaque(file))

    def opaque(self, file):
        """The share of the picture's pixels that are opaque."""
        mean = subprocess.run(["convert", str(file), "-alpha", "extract", "-threshold", "99%", "-format", "%[fx:mean]",
                               "info:"], stdout=subprocess.PIPE, check=True, timeout=30).stdout
        return float(mean)

    def test_vectors_are_rasterised(self):
        self.open_panel()
        self.paste("text/plain;charset=utf-8",
                   b'see <svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 40 20"><rect width="40" height="20"/></svg>',
                   "Pasted Image")
        self.assertEqual(self.facts(self.dragged("Pasted Image"), "pixelWidth", "pixelHeight"), (4096, 2048))
        source = self.folder / "my logo.svg"
        source.write_text('<svg xmlns="http://www.w3.org/2000/svg" width="10" height="10"/>')
        self.paste("text/uri-list", url_of(source).encode() + b"\r\n", "my logo")
        self.saved("my logo.png")

    def test_a_clipboard_that_never_answers_stops_nothing(self):
        self.open_panel()
        owner = self.desktop.start([self.program("clipboard_owner"), "--data", f"image/png={os.devnull}", "--hang"])
        owner.wait_for("ready")
        self.key("ctrl+v")
        # The window goes on while the owner keeps the reader waiting.
        begin = time.monotonic()
        self.reader.press("push button", "Library")
        self.reader.wait_for("push button", "Collection: All")
        self.assertLess(time.monotonic() - begin, 5)
        self.reader.press("push button", "Import")
        self.wait_for_text("No image on the clipboard.")
        owner.stop()
        self.paste("image/png", png(20, 20, (1, 2, 3)), "Pasted Image")
        self.saved("Pasted Image.png")

    def test_drops_stage_one_image_and_file_a_batch(self):
        self.open_panel()
        folder = self.folder / "graphics"
        (folder / "deep").mkdir(parents=True)
        for name in ("one.png", "deep/two.png"):
            (folder / name).write_bytes(png(30, 30, (len(name), 90, 90)))
        (folder / "sound.wav").write_bytes(b"noise")
        self.drop(folder / "one.png")
        self.reader.wait_for("image", "one")
        self.saved("one.png")
        # A drag out before, which must not make the panel refuse the drag in.
        self.assertEqual(self.dragged("one").name, "one.png")
        self.drop(folder)
        wait_until(lambda: (self.root / "Library/Audio/sound.wav").exists(), 10, "the batch")
        wait_until(lambda: (self.root / "Library/Images/two.png").exists(), 10, "the pictures below")

    def test_a_compound_clip_comes_in_and_goes_out_again(self):
        media = self.folder / "editor" / "Café 1.mov"
        media.parent.mkdir()
        media.write_bytes(b"frames")
        # Ten megabytes, as a long project has.
        filler = b"".join(b"<!-- " + b"q" * 1_000_000 + b" -->" for _ in range(10))
        offer = self.folder / "clip"
        offer.write_bytes(
            b'<?xml version="1.0" encoding="UTF-8"?>\n<!DOCTYPE fcpxml>\n<fcpxml version="1.13"><resources>'
            b'<asset id="r1" uid="0123456789ABCDEF" name="c"><media-rep kind="original-media" src="' +
            url_of(media).encode() + b'"><bookmark>Ym9v</bookmark></media-rep></asset>'
            b'<media id="r2" name="Intro" modDate="x" uid="y"><sequence duration="2s"><spine><asset-clip ref="r1" '
            b'name="c"/></spine></sequence></media></resources><ref-clip ref="r2" name="Intro" duration="2s"/>' +
            filler + b"</fcpxml>\n")
        self.open_panel()
        self.drag_in(f"com.apple.finalcutpro.xml.v1-13={offer}", f"com.apple.flexo.proFFPasteboardUTI={offer}")
        block = self.root / "Library/Blocks/Intro.fcpxml"
        wait_until(block.exists, 20, "the block")
        copy = self.root / "Library/Videos/Final Cut Elements/01234567-Café 1.mov"
        self.assertEqual(copy.read_bytes(), b"frames")
        media.unlink()

        kept = self.folder / "kept"
        kept.mkdir()
        drop = self.drag_out(self.middle(self.tile("Intro")), "--keep", str(kept))
        types = ["com.apple.finalcutpro.xml", *(f"com.apple.finalcutpro.xml.v1-{n}" for n in (14, 13, 12)),
                 "public.utf8-plain-text", "text/plain;charset=utf-8"]
        self.assertEqual(drop["formats"], types)
        printed = self.quillary("block", "xml", block)
        for place in range(len(types)):
            self.assertEqual((kept / str(place)).read_bytes(), printed, types[place])
        self.assertIn(quote(str(copy)).encode(), printed)
        self.assertNotIn(b"uid=", printed)
        self.assertIn(filler, printed)

    def drop(self, path):
        offer = self.folder / "drag"
        offer.write_bytes(url_of(path).encode() + b"\r\n")
        self.drag_in(f"text/uri-list={offer}")

    def drag_in(self, *offers):
        """Drags what another program offers into the panel, each "TYPE=FILE"."""
        data = [word for offer in offers for word in ("--data", offer)]
        source = self.desktop.start([self.program("drag_source"), "--place", "700,100,400,300", "--count", "2", *data])
        source.wait_for("ready")
        self.desktop.drag((900, 250), (190, 200))
        source.wait_for("dragged")
        # The drop is told to be done before all of it was fetched, so the source stays for a while.
        time.sleep(2)
        source.stop()


if __name__ == "__main__":
    run_tests("xclip", "convert", arguments=sys.argv[2:], reader=True)
