#!/usr/bin/env python3
"""A newcomer goes through the real panel: newcomer.py x11|wayland FOLDER [TEST]…, where FOLDER holds the programs. Other
programs own the clipboard, take and begin the drags and hear the sounds; after each step it is asked what is seen next."""

import os
import sys
from pathlib import Path

sys.path[:0] = [str(Path(__file__).resolve().parent.parent / "support" / "desktop"), str(Path(__file__).resolve().parent)]
from corners import Clips, Corners  # noqa: E402, F401
from newcomers import BLUE, GREEN, RED, Newcomer  # noqa: E402
from panels import png, run_tests  # noqa: E402
from session import wait_until  # noqa: E402


class TheRoad(Newcomer):
    def test_pictures_from_the_clipboard_to_the_editor(self):
        self.open_panel()
        self.stage_name_and_drag()
        self.the_next_one()
        self.browse()

    def test_sounds(self):
        self.open_panel("--tab", "library")
        self.drop_sounds()
        self.play_and_delete()

    def test_closed_during_a_batch_and_started_again(self):
        self.open_panel("--tab", "library")
        self.close_during_a_batch()

    def stage_name_and_drag(self):
        with self.step("paste") as seen:
            picture = self.paste("image/png", png(1200, 800, RED, GREEN), "Pasted Image", GREEN)
            self.assertIn("1200 × 800", self.facts())
            # The colour around the middle, which the cut-out takes away.
            self.border = picture.left + picture.width // 4, self.middle(picture)[1]
            self.wait_for_color(self.border, RED, "the border")
            seen(self.facts())
        with self.step("cut out") as seen:
            self.reader.press("push button", "Remove Background")
            self.wait_for_text("cutout · flat background")
            self.staged("Pasted Image", GREEN)
            wait_until(lambda: self.pixel(self.border)[0] < 80, 10, "the border to go")
            seen(self.facts())
        with self.step("type a name and drag, without Return") as seen:
            self.click(self.middle(self.reader.placed("text", "Name")))
            self.key("ctrl+a")
            self.type("Red card")
            file = self.file_to_editor(self.reader.placed("image", "Pasted Image"))
            self.assertEqual(file.name, "Red card cutout.png")
            self.assertEqual(self.size_of(file), (1200, 800, True))
            self.staged("Red card", GREEN)
            self.assertEqual(self.field("Name"), "Red card")
            seen("the editor received", file.name)

    def the_next_one(self):
        with self.step("paste the next one at once") as seen:
            self.paste("image/png", png(1000, 1000, BLUE), "Pasted Image", BLUE)
            self.assertEqual(self.field("Name"), "Pasted Image")
            self.assertIn("RGB", self.facts())
            seen(self.facts())
        with self.step("save") as seen:
            self.reader.press("push button", "Save to Library")
            self.wait_for_text("Saved to your library")
            self.staged("Pasted Image", BLUE)
            seen("Saved to your library")
        with self.step("paste after a save") as seen:
            self.paste("image/png", png(1000, 1000, GREEN), "Pasted Image", GREEN)
            self.wait_until_gone("Saved to your library")
            seen("no word of a save under the new picture")

    def browse(self):
        with self.step("browse") as seen:
            self.go_to("Images")
            self.wait_for_count("Images", 1)
            self.wait_for_rows("Images", "Pasted Image")
            tile = self.tile("Pasted Image")
            self.wait_for_color((tile.left + tile.width // 2, tile.top + tile.width // 2), BLUE, "the tile")
            seen("Images", self.rows("Images"))
        with self.step("drag a tile out") as seen:
            file = self.file_to_editor(tile)
            self.assertEqual(file, self.root / "Library/Images/Pasted Image.png")
            seen("the editor received", file.name)
        with self.step("look into Recent") as seen:
            self.reader.press("list item", "Recent, 1")
            self.wait_for_rows("Images", "Red card cutout")
            seen("Recent", self.rows("Images"))
            self.reader.press("list item", "Recent, 1")
            self.go_to("Images")

    def drop_sounds(self):
        shelves = (("Images", 1, "1 sound to Audio"), ("Videos", 1, "Those aren’t video files"),
                   ("Audio", 2, "Added 1 sound"), ("Blocks", 2, "That drag carried no Final Cut clip"))
        for number, (shelf, count, note) in enumerate(shelves, 1):
            with self.step(f"drop a sound on {shelf}") as seen:
                self.go_to(shelf)
                self.drop_files(self.sound(f"Sound {number}.wav", pitch=200 * number),
                                until=lambda: self.wait_for_text(note))
                self.wait_for_count("Audio", count)
                seen(note, "and", count, "in Audio")

    def play_and_delete(self):
        with self.step("see the sounds") as seen:
            self.go_to("Audio")
            self.wait_for_rows("Audio", "Sound 1", "Sound 3")
            seen("Audio", self.rows("Audio"))
        with self.step("play") as seen, self.listening() as heard:
            self.press_in_row("Sound 1", "Play")
            self.reader.wait_for("push button", "Stop")
            wait_until(heard, 10, "the sound")
            seen("heard; the row has Stop")
        with self.step("delete what plays") as seen:
            self.press_in_row("Sound 3", "Play")
            self.reader.wait_for("push button", "Stop")
            self.context_menu(self.tile("Sound 3"), "Delete")
            self.wait_for_rows("Audio", "Sound 1")
            self.wait_for_count("Audio", 1)
            self.wait_until_gone("Stop")
            seen("Audio", self.rows("Audio"), "nothing plays")

    def press_in_row(self, row, button):
        tile = self.tile(row)
        self.click(self.middle(next(node for node in self.reader.tree()
                                    if node.parent == tile.number and node.name == button)))

    def close_during_a_batch(self):
        folder = self.folder / "graphics"
        folder.mkdir()
        names = [f"picture {number:02}" for number in range(40)]
        for number, name in enumerate(names):
            (folder / f"{name}.png").write_bytes(png(1600 + number, 1200, (number, 90, 200 - number)))
        with self.step("close during a batch") as seen:
            self.go_to("Images")

            def under_way():
                self.reader.wait_for("progress bar", "Import")
            self.drop_files(folder, until=under_way)
            done = len(list((self.root / "Library/Images").glob("picture*.png")))
            self.close_panel()
            self.panel.process.wait(120)
            seen(done, "were filed when it was closed,", len(list((self.root / "Library/Images").glob("picture*.png"))),
                 "when it ended")
        with self.step("start again") as seen:
            self.open_panel()
            self.go_to("Images")
            self.wait_for_count("Images", 40)
            seen("Images", self.count("Images"))


if __name__ == "__main__":
    Newcomer.wayland = sys.argv[1] == "wayland"
    Newcomer.programs = sys.argv[2]
    logs = Path(sys.argv[2]) / "Testing" / "Temporary"
    Newcomer.pictures = str(logs) if logs.is_dir() else os.getcwd()
    run_tests("openbox", "convert", "import", "pulseaudio", "parec", "pactl",
              *(["weston", "wl-copy"] if Newcomer.wayland else ["xclip"]), arguments=sys.argv[3:], reader=True)
