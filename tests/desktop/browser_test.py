#!/usr/bin/env python3
"""The library's browser as other programs and screen readers meet it: browser_test.py FOLDER [TEST]…, where FOLDER holds
the programs. The real panel on an X server of its own; controls are found by the accessibility tree."""

import os
import subprocess
import sys
import time
import wave
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "support" / "desktop"))
from panels import PanelTest, dropped_files, png, run_tests, url_of  # noqa: E402
from session import wait_until  # noqa: E402


class Browser(PanelTest):
    programs = sys.argv[1]

    def setUp(self):
        super().setUp()
        self.clock = time.time() - 10_000

    def image(self, name):
        """A picture, newer than those before."""
        path = self.root / "Library/Images" / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(png(40, 30, (200, 40, 40)))
        self.clock += 10
        os.utime(path, (self.clock, self.clock))
        return path

    def sound(self, name):
        path = self.root / "Library/Audio" / name
        path.parent.mkdir(parents=True, exist_ok=True)
        with wave.open(str(path), "wb") as file:
            file.setparams((1, 2, 8000, 0, "NONE", ""))
            file.writeframes(bytes(16000))
        return path

    def selected(self):
        return sorted(node.name for node in self.reader.tree() if node.role == "list item" and "selected" in node.states)

    def assert_copied(self, path, picture):
        wait_until(lambda: url_of(path) in self.clipboard("text/uri-list").decode(), 10, f"{path} on the clipboard")
        self.assertEqual(self.clipboard("text/uri-list"), url_of(path).encode() + b"\r\n")
        self.assertEqual(self.clipboard("x-special/gnome-copied-files"), b"copy\n" + url_of(path).encode())
        types = [kind.rstrip("\0") for kind in self.clipboard("TARGETS").decode().split()
                 if kind not in ("TIMESTAMP", "TARGETS", "MULTIPLE", "SAVE_TARGETS")]
        if picture:
            self.assertEqual(types[0], "image/png")
            self.assertEqual(self.clipboard("image/png"), path.read_bytes())
        else:
            self.assertNotIn("image/png", types)


class Copying(Browser):
    def test_other_programs_read_what_was_copied(self):
        logo = self.image("a b.png")
        rain = self.sound("Rain.wav")
        self.open_panel("--tab", "library")
        self.click(self.middle(self.tile("a b")), button=3)
        self.reader.press("menu item", "Copy")
        self.assert_copied(logo, picture=True)

        self.reader.press("push button", "Audio, 1")
        self.reader.press("list item", "Rain")
        self.key("Menu")
        self.reader.press("menu item", "Copy")
        self.assert_copied(rain, picture=False)
        self.click(self.middle(self.tile("Rain")), button=3)
        self.reader.press("menu item", "Copy Path")
        wait_until(lambda: self.clipboard("UTF8_STRING") == os.fsencode(rain), 10, "the path")

    def test_the_staged_image_is_copied_out_of_recent(self):
        source = self.folder / "logo.png"
        source.write_bytes(png(30, 20, (1, 2, 3)))
        self.open_panel(str(source))
        staged = self.reader.wait_for("image", "logo")
        self.assertEqual(list((self.root / "Recent").glob("*.png")), [])
        self.key("ctrl+c")
        self.assert_copied(self.root / "Recent/logo.png", picture=True)
        for begin in (lambda: self.click(self.middle(staged), button=3), lambda: self.reader.press("image", "logo")):
            begin()
            self.reader.press("menu item", "Copy Path")
            wait_until(lambda: self.clipboard("UTF8_STRING") == os.fsencode(self.root / "Recent/logo.png"), 10, "path")
            self.copy("UTF8_STRING", b"else")
        self.assertEqual(len(list((self.root / "Recent").glob("*.png"))), 1, "written once")


class Dragging(Browser):
    def test_the_handle_carries_the_selection_in_the_order_shown(self):
        files = [self.image(f"{name}.png") for name in ("first", "second b", "third")]
        self.open_panel("--tab", "library")
        self.reader.press("list item", "third")
        self.key("ctrl+a")
        handle = self.reader.placed("", "3 selected")
        target = self.drop_target("--count", "2")
        self.desktop.drag(self.middle(handle), (900, 250))
        drop = target.wait_for("drop")
        self.assertEqual(drop["formats"], ["text/uri-list"])
        self.assertEqual(dropped_files(drop), files[::-1], "newest first, as shown")
        # A tile still carries its own file alone.
        self.desktop.drag(self.middle(self.tile("third")), (900, 250))
        self.assertEqual(dropped_files(target.wait_for("drop")), files[2:])

    def test_a_refresh_keeps_selection_place_and_a_running_drag(self):
        files = [self.image(f"image {number:02}.png") for number in range(60)]
        self.open_panel("--tab", "library")
        self.reader.press("list item", "image 59")
        self.key(*["Down"] * 7)
        chosen = self.selected()
        self.assertEqual(len(chosen), 1)
        before = self.tile(chosen[0])
        target = self.drop_target()
        x, y = self.middle(before)
        self.desktop.press(x, y)
        for step in range(1, 8):
            self.desktop.move(x + 6 * step, y)
        # While the drag is under way another program adds, renames and removes.
        self.clock = time.time()
        self.image("newest.png")
        files[0].unlink()
        files[1].rename(files[1].with_name("renamed.png"))
        wait_until(lambda: self.reader.find("", "Images, 60"), 10, "the refresh")
        for step in range(1, 9):
            self.desktop.move(x + 42 + (900 - x - 42) * step // 8, y + (250 - y) * step // 8)
        time.sleep(0.5)
        self.desktop.release()
        self.assertEqual(dropped_files(target.wait_for("drop")), [self.root / "Library/Images" / (chosen[0] + ".png")])
        self.assertEqual(self.selected(), chosen)
        after = self.tile(chosen[0])
        self.assertLess(abs(after.top - before.top), before.height + 20, "a row at most")


class Reading(Browser):
    """Everything by the accessibility tree, and everything by keyboard."""

    def setUp(self):
        super().setUp()
        for name in ("Logos/one.png", "Logos/two.png", "three.png", "four.png"):
            self.image(name)

    def assert_clear(self, state):
        """Whatever can be acted on or focused has a name, and says it once."""
        tree = [node for node in self.reader.tree() if "showing" in node.states]
        shown = {node.number: node for node in tree}
        for node in tree:
            acts = [action for action in node.actions if action != "SetFocus"]
            if acts or ("focusable" in node.states and node.role not in ("frame", "panel", "filler", "label")):
                self.assertTrue(node.name, f"{state}: a nameless {node.role} at {node.left},{node.top}")
            above = shown.get(node.parent)
            while above is not None and above.role != "frame":
                same = acts and above.name == node.name and any(action != "SetFocus" for action in above.actions)
                self.assertFalse(same, f"{state}: “{node.name}” is there twice, as {above.role} and {node.role}")
                above = shown.get(above.parent)
        return [node.name for node in tree]

    def tab_to(self, *names, most=40):
        """Until one of these has the keyboard."""
        for _ in range(most):
            focused = self.reader.focused()
            if focused and focused.name in names:
                return
            self.key("Tab")
        self.fail(f"Tab does not reach {names}")

    def test_every_state_has_clear_names(self):
        picture = self.folder / "logo.png"
        picture.write_bytes(png(60, 40, (9, 9, 9)))
        self.open_panel(str(picture))
        self.reader.wait_for("image", "logo")
        self.assert_clear("a staged image")
        self.reader.press("image", "logo")
        self.assert_clear("its menu")
        self.key("Escape")
        self.reader.press("push button", "Library")
        self.reader.wait_for("list item", "four")
        self.assert_clear("the library")
        self.reader.press("list item", "four")
        self.assert_clear("a selection")
        for opener, entry in (("Collection: All", "Unfiled, 2"), ("More", "Select All"), ("Import files", "Import image files…"),
                              ("Move to", "Unfiled")):
            self.reader.press("push button", opener)
            wait_until(lambda: any(entry in name for name in self.assert_clear(opener)), 10, f"{entry} of {opener}")
            self.key("Escape")
        self.reader.press("list item", "four")
        self.key("Menu")
        names = self.assert_clear("a tile's menu")
        for entry in ("Add to Favorites", "Remove Background…", "Rotate & Flip", "Rename…", "Remove from Library",
                      "Move to…", "Move to Trash", "Copy", "Copy Path", "Show in Files"):
            self.assertIn(entry, names)
        self.reader.press("menu item", "Rename…")
        self.reader.wait_for("push button", "Rename")
        self.assert_clear("renaming")
        self.key("Escape")
        self.reader.press("push button", "Settings")
        self.reader.wait_for("push button", "Done")
        self.assert_clear("the settings")

    def test_all_is_done_by_the_tree(self):
        self.open_panel("--tab", "library")
        images = self.root / "Library/Images"
        self.reader.press("push button", "Collection: All")
        self.reader.press("", "New Collection…")
        self.reader.wait_for("push button", "Create")
        self.type("Badges")
        self.reader.press("push button", "Create")
        wait_until(lambda: (images / "Badges").is_dir(), 10, "the collection")
        self.reader.press("push button", "Collection: Badges")
        self.reader.press("", "All, 4")
        self.reader.press("list item", "four")
        self.reader.press("push button", "Move to")
        self.reader.press("", "Badges, 0")
        wait_until(lambda: (images / "Badges/four.png").exists(), 10, "the move")
        self.reader.press("list item", "Logos, 2")
        self.reader.wait_for("list item", "two")
        self.reader.press("push button", "Images")
        self.reader.press("push button", "Show favorites only")
        self.reader.wait_for("", "Showing favorites only")
        self.reader.press("push button", "Clear")
        self.reader.wait_for("list item", "three")
        self.reader.press("push button", "Settings")
        self.reader.press("push button", "Done")
        wait_until(lambda: not self.reader.find("push button", "Done"), 10, "the end of the settings")

    def test_all_is_done_by_keyboard(self):
        self.open_panel("--tab", "library")
        images = self.root / "Library/Images"
        self.reader.wait_for("list item", "four")
        self.tab_to("four")
        self.key("Right", "F2")
        self.reader.wait_for("push button", "Rename")
        self.key("ctrl+a")
        self.type("renamed")
        self.key("Return")
        wait_until(lambda: (images / "renamed.png").exists(), 10, "the new name")
        self.reader.wait_for("", "Renamed to “renamed”")
        self.key("ctrl+z")
        wait_until(lambda: (images / "three.png").exists(), 10, "the old name")
        self.reader.wait_for("", "Undid renaming to “renamed”")
        self.key("ctrl+shift+z")
        wait_until(lambda: (images / "renamed.png").exists(), 10, "the new name again")
        self.tab_to("one", "two", "four", "renamed")
        self.key("r", "e", "n")
        wait_until(lambda: self.selected() == ["renamed"], 10, "the name that was typed")
        self.key("ctrl+BackSpace")
        wait_until(lambda: (self.folder / "data/Trash/files/renamed.png").exists(), 10, "the trash")
        self.key("ctrl+z")
        wait_until(lambda: (images / "renamed.png").exists(), 10, "back from the trash")
        self.tab_to("Library")
        self.key("Left")
        self.wait_for_text("Paste an image")
        self.key("Right")
        self.tab_to("Images, 4")
        self.key("Right", "Right")
        self.wait_for_text("No audio yet")


if __name__ == "__main__":
    run_tests("xclip", arguments=sys.argv[2:], reader=True)
