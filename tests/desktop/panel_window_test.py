#!/usr/bin/env python3
"""A window driven by hand, with other processes around it: panel_window_test.py x11|wayland FOLDER [TEST]…, where FOLDER
holds the programs."""

import base64
import hashlib
import os
import sys
import tempfile
import time
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "support" / "desktop"))
from panels import run_tests, url_of  # noqa: E402
from session import Session  # noqa: E402

SYSTEM, PROGRAMS = sys.argv[1:3]
# Under Wayland windows cannot choose their place, so the tests look where they are.
WAYLAND = SYSTEM == "wayland"


def program(name, *arguments):
    return [os.path.join(PROGRAMS, name), *arguments]


class Window(unittest.TestCase):
    def setUp(self):
        self.desktop = self.enterContext(Session(wayland=WAYLAND))
        self.folder = os.fsencode(self.enterContext(tempfile.TemporaryDirectory(prefix="quillary-drags-")))

    def start(self, name, *arguments, left, top):
        started = self.desktop.start(program(name, "--place", f"{left},{top},400,300", *arguments))
        started.wait_for("ready")
        time.sleep(0.3)
        self.desktop.place(started, left, top)
        started.events.clear()
        return started

    def panel(self, *arguments):
        return self.start("panel_window", *arguments, left=0, top=0)

    def file(self, name, content=b"content"):
        path = os.path.join(self.folder, name)
        with open(path, "wb") as file:
            file.write(content)
        return path


class OutOfThePanel(Window):
    def test_carries_one_file_url_and_nothing_else(self):
        names = [b"plain.png", b"a b.png", b"a#b.png", b"100%.png", b"a;b.png", b"a[1].png", "ü.png".encode(),
                 b"\xff\xfe.png", b"%41.png"]
        urls = [url_of(os.path.join(self.folder, name)) for name in names]
        panel = self.panel(*(part for url in urls for part in ("--url", url)))
        target = self.start("drop_target", "--count", str(len(urls)), left=600, top=100)
        for url in urls:
            with self.subTest(url=url):
                self.desktop.drag((100, 100), (800, 250))
                drop = target.wait_for("drop")
                self.assertEqual(drop["formats"], ["text/uri-list"])
                self.assertEqual(drop["announced"], [] if WAYLAND else ["text/uri-list"])
                self.assertEqual(base64.b64decode(drop["uriList"]), url.encode() + b"\r\n")
                self.assertEqual(drop["possibleActions"], 1, "to be copied only")
                panel.wait_for("dragEnded")
        self.assertEqual([e["event"] for e in panel.events].count("asked"), len(urls))

    def test_waits_for_a_file(self):
        panel = self.panel("--url", "", "--url", "", "--url", "file:///a")
        target = self.start("drop_target", left=600, top=100)
        self.desktop.drag((100, 100), (800, 250))
        self.assertEqual(base64.b64decode(target.wait_for("drop")["uriList"]), b"file:///a\r\n")
        panel.wait_for("dragEnded")
        self.assertEqual([e["event"] for e in panel.events].count("asked"), 3)

    def test_works_again_after_any_drag(self):
        panel = self.panel("--url", "file:///a")
        target = self.start("drop_target", left=600, top=100)
        self.desktop.drag((100, 100), (1000, 700))  # where nobody takes it
        panel.wait_for("dragEnded")
        self.desktop.drag((100, 100), (800, 250))
        target.wait_for("drop")
        panel.wait_for("dragEnded")
        # A press that hardly moves is a tap.
        self.desktop.press(100, 100)
        self.desktop.move(102, 100)
        self.desktop.move(104, 100)
        self.desktop.release()
        panel.wait_for("tapped")
        self.assertEqual([e["event"] for e in panel.events].count("asked"), 2)

    def test_survives_the_end_of_its_source(self):
        panel = self.panel("--url", "file:///a", "--delete")
        target = self.start("drop_target", left=600, top=100)
        self.desktop.drag((100, 100), (800, 250))
        panel.wait_for("deleted")
        target.wait_for("drop")
        self.assertIsNone(panel.process.poll())

    def test_the_panel_does_not_take_its_own_drag(self):
        panel = self.panel("--url", "file:///a")
        self.desktop.drag((100, 100), (300, 100))
        panel.wait_for("dragEnded")
        self.assertTrue(panel.stays_silent("dropped", 1))
        self.assertNotIn("targeted", [e["event"] for e in panel.events])


class Keys(Window):
    def test_caps_lock_is_told(self):
        panel = self.panel()
        self.desktop.press(100, 100)
        self.desktop.release()
        for engaged in (False, True, False):
            self.desktop.xdo("key", "ctrl+v")
            while (key := panel.wait_for("key"))["key"] != ord("V"):
                pass
            self.assertEqual(key["capsLock"], engaged)
            self.desktop.xdo("key", "Caps_Lock")


class IntoThePanel(Window):
    def drop(self, *offers):
        """What the panel finds in a drop of these (type, bytes) pairs."""
        arguments = []
        for number, (kind, content) in enumerate(offers):
            arguments += ["--data", f"{kind}={os.fsdecode(self.file(b'offer%d' % number, content))}"]
        panel = self.panel()
        source = self.start("drag_source", *arguments, left=600, top=100)
        self.desktop.drag((800, 250), (300, 100))
        dropped = panel.wait_for("dropped", 15)
        self.assertEqual(source.wait_for("dragged")["action"], 1, "copied")
        self.assertEqual([e["on"] for e in panel.events if e["event"] == "targeted"], [True, False])
        return dropped["items"]

    def assert_bytes(self, item, kind, content):
        self.assertEqual(item["md5"].get(kind), hashlib.md5(content).hexdigest(), kind)

    def test_takes_several_files(self):
        urls = [url_of(self.file(name)) for name in (b"a b.png", b"\xff.mov", "ü;[.svg".encode())]
        urls.append(url_of(self.folder))
        items = self.drop(("text/uri-list", "\r\n".join(urls + [""]).encode()))
        self.assertEqual([item["file"] for item in items], urls)
        self.assertEqual([item["types"][0] for item in items],
                         ["image/png", "video/quicktime", "image/svg+xml", "inode/directory"])

    def test_takes_a_picture_as_data(self):
        picture = b"\x89PNG" + os.urandom(5_000_000)
        items = self.drop(("text/uri-list", b"https://example.org/my%20logo.png\r\n"), ("image/png", picture))
        self.assertEqual(len(items), 1)
        self.assertEqual(items[0]["file"], "")
        self.assertEqual(items[0]["suggestedName"], "my logo")
        self.assert_bytes(items[0], "image/png", picture)

    def test_takes_a_clip(self):
        clip = b"\xff\x00<fcpxml version='1.13'>" * 100000
        items = self.drop(("com.apple.finalcutpro.xml.v1-13", clip), ("text/plain", b"beside it"))
        self.assertEqual(len(items), 1)
        self.assert_bytes(items[0], "com.apple.finalcutpro.xml.v1-13", clip)
        self.assertIn("text/plain;charset=utf-8", items[0]["types"])


if __name__ == "__main__":
    run_tests(*(["weston"] if WAYLAND else []), arguments=sys.argv[3:])
