#!/usr/bin/env python3
"""One panel for each session: second_start.py FOLDER, where FOLDER holds the programs."""

import os
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "support" / "desktop"))
from panels import private_folders, run_tests  # noqa: E402
from session import Session, wait_until  # noqa: E402

PROGRAM = os.path.join(sys.argv[1], "quillary")
PICTURE = '<svg xmlns="http://www.w3.org/2000/svg" width="40" height="20"><rect width="40" height="20"/></svg>'


class SecondStart(unittest.TestCase):
    def setUp(self):
        self.folder = Path(self.enterContext(tempfile.TemporaryDirectory(prefix="quillary-second-")))
        environment = {**private_folders(self.folder), "HOME": str(self.folder)}
        self.desktop = self.enterContext(Session(environment=environment))

    def windows(self):
        found = self.desktop.run(["xdotool", "search", "--onlyvisible", "--name", "^Quillary$"], stdout=subprocess.PIPE)
        return found.stdout.split()

    def test_hands_its_files_to_the_panel_that_is_open(self):
        pictures = [self.folder / f"pièce {n}.svg" for n in (1, 2)]
        for n, picture in enumerate(pictures):
            picture.write_text(PICTURE.replace("<rect", f'<rect x="{n}"'))
        first = self.desktop.start([PROGRAM])
        wait_until(self.windows, 20, "the panel is open")
        self.desktop.run([PROGRAM, "panel", *map(str, pictures)], check=True)
        images = self.folder / "Movies" / "Quillary" / "Library" / "Images"
        wait_until(lambda: len(list(images.glob("*.png"))) + len(list(images.glob("*.svg"))) == 2, 20, "both are filed")
        self.assertEqual(len(self.windows()), 1)

        # A library of its own is another panel, and so is one after the first has gone.
        other = self.desktop.start([PROGRAM, "--library", str(self.folder / "other"), "panel"])
        wait_until(lambda: len(self.windows()) == 2, 20, "the other library's panel is open")
        other.stop()
        first.stop()
        wait_until(lambda: not self.windows(), 20, "all are closed")
        self.desktop.start([PROGRAM])
        wait_until(self.windows, 20, "a new panel is open")


if __name__ == "__main__":
    run_tests()
