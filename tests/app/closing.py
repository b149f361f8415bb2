#!/usr/bin/env python3
"""The window is closed while files are on their way: closing.py FOLDER, where FOLDER holds the programs."""

import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "support" / "desktop"))
from panels import PanelTest, noise, run_tests, url_of  # noqa: E402
from session import wait_until  # noqa: E402

PICTURES = 60
SOUNDS = 4000
FINISHING = "Quillary is finishing"


class Closing(PanelTest):
    programs = sys.argv[1]

    def surroundings(self):
        return {"HOME": str(self.folder)}

    def pictures(self):
        folder = self.folder / "pictures"
        folder.mkdir()
        for number in range(PICTURES):
            (folder / f"{number:02}.png").write_bytes(noise(900, 900))
        return folder

    def sounds(self):
        folder = self.folder / "sounds"
        folder.mkdir()
        for number in range(SOUNDS):
            (folder / f"{number:04}.wav").write_bytes(b"sound %d" % number)
        return folder

    def shelf(self, name, root=None):
        return list(((root or self.root) / "Library" / name).rglob("[!.]*.*"))

    def close_early(self, name, whole, root=None):
        """Closes the panel when the first of the files are on the shelf, which they are not all."""
        wait_until(lambda: len(self.shelf(name, root)) >= 3, 60, "the first files")
        self.close_window("Quillary")
        self.assertLess(len(self.shelf(name, root)), whole, "closed too late for this test")

    def ends(self, process=None):
        process = (process or self.panel).process
        wait_until(lambda: process.poll() is not None, 120, "the end of the program")
        self.assertEqual(process.returncode, 0)

    def test_pictures_are_all_filed(self):
        self.open_panel(str(self.pictures()))
        self.close_early("Images", PICTURES)
        wait_until(lambda: self.windows(FINISHING), 20, "the small window")
        self.wait_for_text(f" of {PICTURES}…")
        self.ends()
        self.assertEqual(len(self.shelf("Images")), PICTURES)

    def test_sounds_of_a_shelf_are_all_filed(self):
        self.open_panel("--shelf", "audio", str(self.sounds()))
        self.close_early("Audio", SOUNDS)
        self.ends()
        self.assertEqual(len(self.shelf("Audio")), SOUNDS)

    def test_media_of_a_block_are_all_copied(self):
        assets, spine = [], []
        for number, sound in enumerate(sorted(self.sounds().iterdir())):
            assets.append(f'<asset id="a{number}" uid="U{number:04}" name="s"><media-rep kind="original-media" '
                          f'src="{url_of(sound)}"/></asset>')
            spine.append(f'<asset-clip ref="a{number}" name="s"/>')
        document = self.folder / "Intro.fcpxml"
        document.write_text(f'<?xml version="1.0"?>\n<!DOCTYPE fcpxml>\n<fcpxml version="1.9"><resources>{"".join(assets)}'
                            f'<media id="m" name="Intro"><sequence duration="9s"><spine>{"".join(spine)}</spine></sequence>'
                            '</media></resources><ref-clip ref="m" name="Intro" duration="9s"/></fcpxml>\n')
        self.open_panel(str(document))
        self.close_early("Audio/Final Cut Elements", SOUNDS)
        self.ends()
        self.assertEqual(len(self.shelf("Audio/Final Cut Elements")), SOUNDS)
        self.assertTrue((self.root / "Library/Blocks/Intro.fcpxml").exists())

    def test_the_copy_of_a_library_is_finished(self):
        old, new = self.folder / "old", self.folder / "Movies" / "Quillary"
        old.mkdir()
        self.desktop.run([self.program("quillary"), "library", "use", str(old)], check=True)
        shelf = old / "Quillary" / "Library" / "Audio"
        shelf.mkdir(parents=True, exist_ok=True)
        for sound in self.sounds().iterdir():
            sound.rename(shelf / sound.name)
        self.open_own_panel()
        self.reader.press("push button", "Settings")
        self.reader.press("push button", "Use Default")
        self.reader.press("push button", "Copy")
        self.close_early("Audio", SOUNDS, new)
        self.ends()
        self.assertEqual(len(self.shelf("Audio", new)), SOUNDS)

    def test_a_start_meanwhile_brings_the_panel_back(self):
        self.root = self.folder / "Movies" / "Quillary"
        self.open_own_panel(str(self.pictures()))
        self.close_early("Images", PICTURES)
        wait_until(lambda: self.windows(FINISHING), 20, "the small window")
        self.desktop.run([self.program("quillary")], check=True)
        wait_until(lambda: self.windows("Quillary"), 10, "the panel")
        self.assertFalse(self.windows(FINISHING))
        self.wait_for_text(f" of {PICTURES}")
        self.close_window("Quillary")
        self.ends()
        self.assertEqual(len(self.shelf("Images")), PICTURES)

    def test_what_is_given_up_is_told_by_the_next_start(self):
        self.open_panel(str(self.pictures()))
        self.close_early("Images", PICTURES)
        self.reader.press("push button", "Stop")
        self.ends()
        self.left_is_told_and_filed()

    def test_what_a_kill_left_is_told_by_the_next_start(self):
        self.open_panel(str(self.pictures()))
        wait_until(lambda: len(self.shelf("Images")) >= 3, 60, "the first files")
        self.panel.process.terminate()
        self.panel.process.wait()
        self.left_is_told_and_filed()

    def left_is_told_and_filed(self):
        missing = PICTURES - len(self.shelf("Images"))
        self.assertGreater(missing, 0)
        self.open_panel()
        wait_until(lambda: any(node.name.endswith("did not get into your library") for node in self.reader.tree()), 20,
                   "the files that are missing")
        self.reader.press("push button", "File Them Now")
        wait_until(lambda: len(self.shelf("Images")) == PICTURES, 120, "all pictures")
        self.close_window("Quillary")
        self.ends()
        self.assertEqual(len(self.shelf("Images")), PICTURES)

    def open_own_panel(self, *arguments):
        """The session's own panel, over the library of the settings."""
        self.panel = self.desktop.start([self.program("quillary"), "panel", *arguments])
        self.reader.placed("frame", "Quillary", 30)


if __name__ == "__main__":
    run_tests(arguments=sys.argv[2:], reader=True)
