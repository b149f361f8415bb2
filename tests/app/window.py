#!/usr/bin/env python3
"""What the panel's window and its text fields do with others around them: window.py FOLDER, where FOLDER holds the
programs. Text fields beside owners of the clipboard that hang, the window's place from one start to the next."""

import os
import re
import subprocess
import sys
import time
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "support" / "desktop"))
from panels import PanelTest, png, run_tests  # noqa: E402
from session import wait_until  # noqa: E402


class Fields(PanelTest):
    programs = sys.argv[1]

    def field(self, name):
        return self.middle(self.reader.placed("text", name))

    def answers(self):
        """How long the panel takes to show its other tab and this one again."""
        begin = time.monotonic()
        self.reader.press("", "Library")
        self.reader.wait_for("text", "Search", 30)
        self.reader.press("", "Import")
        self.reader.wait_for("text", "Name", 30)
        return time.monotonic() - begin

    def test_no_field_waits_for_a_clipboard_that_hangs(self):
        self.open_panel()
        self.copy("image/png", png(40, 40, (9, 9, 9)))
        self.key("ctrl+v")
        self.reader.wait_for("image", "Pasted Image")
        self.answers()
        usual = self.answers()
        owner = self.desktop.start([self.program("clipboard_owner"), "--data", f"text/plain={os.devnull}", "--hang"],
                                   QT_LINUX_ACCESSIBILITY_ALWAYS_ON="0")
        owner.wait_for("ready")
        self.assertLess(self.answers(), usual + 5, "nobody asked for the clipboard")
        # Asked for, it keeps the field without text, and nobody waiting.
        self.click(self.field("Name"))
        self.key("ctrl+a", "ctrl+v")
        self.type("mine")
        self.key("Return")
        self.reader.wait_for("image", "mine", 10)
        self.assertLess(self.answers(), usual + 5)
        owner.stop()

    def test_fields_paste_text(self):
        self.open_panel()
        self.copy("image/png", png(40, 40, (9, 9, 9)))
        self.key("ctrl+v")
        self.reader.wait_for("image", "Pasted Image")
        self.copy("UTF8_STRING", "Grüße 2\n".encode())
        for key in ("ctrl+v", "shift+Insert"):
            self.click(self.field("Name"))
            self.key("ctrl+a", key, "Return")
            self.reader.wait_for("image", "Grüße 2")
            self.click(self.field("Name"))
            self.key("ctrl+a", "x", "Return")
            self.reader.wait_for("image", "x")
        # Selecting the name makes it what is selected; only then another program's text is.
        self.click(self.field("Name"))
        self.key("ctrl+a", "Delete")
        subprocess.run(["xclip", "-selection", "primary", "-i"], input=b"picked", env=self.desktop.environment, check=True)
        self.click(self.field("Name"), button=2)
        self.key("Return")
        self.reader.wait_for("image", "picked")
        self.reader.press("", "Library")
        self.click(self.field("Search"))
        self.key("ctrl+v")
        self.wait_for_text("Nothing matches")


class Window(PanelTest):
    programs = sys.argv[1]

    def setUp(self):
        super().setUp()
        self.desktop.start(["openbox", "--sm-disable"])

    def window(self):
        found = subprocess.run(["xdotool", "search", "--onlyvisible", "--name", "^Quillary$"], env=self.desktop.environment,
                               stdout=subprocess.PIPE, text=True).stdout.split()
        return found[-1] if found else None

    def frame(self):
        told = subprocess.run(["xwininfo", "-id", self.window(), "-stats"], env=self.desktop.environment,
                              stdout=subprocess.PIPE, text=True, check=True).stdout
        return tuple(int(re.search(f"{what}: *(-?\\d+)", told)[1])
                     for what in ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height"))

    def open(self, *arguments):
        self.panel = self.desktop.start([self.program("quillary"), "--library", str(self.folder / "library"), "panel",
                                         *arguments])
        wait_until(self.window, 30, "the window")
        self.reader.wait_for("frame", "Quillary", 30)

    def close(self):
        subprocess.run(["wmctrl", "-ic", self.window()], env=self.desktop.environment, check=True)
        self.panel.process.wait(30)

    def test_opens_as_it_was_left(self):
        self.open()
        self.desktop.xdo("windowsize", "--sync", self.window(), 500, 400)
        self.desktop.xdo("windowmove", "--sync", self.window(), 600, 200)
        before = self.frame()
        self.reader.press("", "Library")
        self.reader.press("", "Audio, 0")
        self.close()
        self.open()
        wait_until(lambda: self.frame() == before, 10, f"{before}, not {self.frame()}")
        self.wait_for_text("No audio yet")
        self.close()

        settings = next(path for path in (self.folder / "config").rglob("*")
                        if path.is_file() and "500x400" in path.read_text())
        text = settings.read_text()
        moved = re.sub(r"\d+,\d+ 500x400", "5000,4000 500x400", text)
        self.assertNotEqual(moved, text)
        settings.write_text(moved)
        self.open()
        x, y, width, height = self.frame()
        self.assertEqual((width, height), (500, 400))
        self.assertTrue(0 <= x <= 700 and 0 <= y <= 300, (x, y))

    def test_stays_above_when_it_is_told_to(self):
        self.open()

        def above():
            told = subprocess.run(["xprop", "-id", self.window(), "_NET_WM_STATE"], env=self.desktop.environment,
                                  stdout=subprocess.PIPE, text=True).stdout
            return "_NET_WM_STATE_ABOVE" in told
        self.assertFalse(above())
        self.reader.press("push button", "Settings")
        self.key("Page_Down", "Page_Down", "Page_Down", "Page_Down")
        self.reader.press("push button", "Keep above other windows")
        wait_until(above, 10, "the window above others")
        self.reader.press("push button", "Done")
        self.close()
        self.open()
        wait_until(above, 10, "the next window above others")


if __name__ == "__main__":
    run_tests("xclip", "openbox", "wmctrl", "xprop", "xwininfo", arguments=sys.argv[2:], reader=True)
