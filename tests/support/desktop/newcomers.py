"""A newcomer at the real panel: walks of named steps, each of which tells what was seen, beside it another program's window
and a sound server that nobody hears. A step that fails leaves a picture of the screen."""

import contextlib
import math
import os
import re
import subprocess
import wave
from array import array
from pathlib import Path

from panels import PanelTest, dropped_files
from session import wait_until

RED, GREEN, BLUE, WHITE = (200, 40, 40), (30, 180, 60), (32, 64, 192), (255, 255, 255)


class Newcomer(PanelTest):
    pictures = "."  # the folder for what a failed step looked like

    def setUp(self):
        super().setUp()
        self.desktop.start(["pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1",
                            "-L", f"module-native-protocol-unix auth-anonymous=1 socket={self.folder}/sound",
                            "-L", "module-null-sink sink_name=nobody"])
        wait_until(lambda: self.desktop.run(["pactl", "info"], stdout=subprocess.DEVNULL,
                                            stderr=subprocess.DEVNULL).returncode == 0, 20, "the sound server")
        self.editor = self.drop_target("--count", "1000", "--timeout", "3600", "--keep", str(self.folder / "editor"))

    def surroundings(self):
        (self.folder / "editor").mkdir()
        return {"PULSE_SERVER": f"unix:{self.folder}/sound", "PULSE_COOKIE": f"{self.folder}/cookie"}

    @contextlib.contextmanager
    def step(self, what):
        seen = []
        try:
            yield lambda *words: seen.append(" ".join(map(str, words)))
        except Exception:
            name = re.sub(r"\W+", "-", f"{self.id().split('.')[-1]} {what} {'wayland' if self.wayland else 'x11'}")
            picture = Path(self.pictures) / f"{name}.png"
            subprocess.run(["import", "-silent", "-window", "root", str(picture)], env=self.desktop.x_environment)
            print(f"    {what}: FAILED, see {picture}; shown were {self.texts()}", flush=True)
            raise
        print(f"    {what}: {'; '.join(seen)}", flush=True)

    # What is seen

    def staged(self, name, color=None):
        """Waits until that picture is staged, with this colour in its middle."""
        picture = self.reader.placed("image", name)
        if color:
            # A caption lies over the lower end.
            self.wait_for_color(self.middle(picture), color, f"“{name}” on the stage")
        return picture

    def facts(self):
        return next(text for text in self.texts() if "×" in text)

    def field(self, name):
        """What stands in a text field."""
        return self.reader.wait_for("text", name).text

    def rows(self, within):
        """The names of the rows of a list, without the folders."""
        tree = self.reader.tree()
        lists = [node.number for node in tree if node.role == "list" and node.name == within and "showing" in node.states]
        return [node.name for node in tree if node.parent in lists and node.role == "list item" and "showing" in node.states]

    def wait_for_rows(self, within, *names):
        def there():
            return sorted(self.rows(within)) == sorted(names)
        try:
            wait_until(there, 15, f"{names} in {within}")
        except AssertionError as error:
            raise AssertionError(f"{error}, but {self.rows(within)}") from None

    def count(self, shelf):
        """The number that the shelf's tab bears."""
        return next((int(text.rsplit(", ")[-1]) for text in self.texts() if text.startswith(f"{shelf}, ")), None)

    def wait_for_count(self, shelf, number, seconds=20):
        try:
            wait_until(lambda: self.count(shelf) == number, seconds, f"{number} in {shelf}")
        except AssertionError as error:
            raise AssertionError(f"{error}, but {self.count(shelf)}") from None

    def wait_until_gone(self, text):
        wait_until(lambda: not any(text in name for name in self.texts()), 15, f"“{text}” to go")

    # What is done

    def paste(self, kind, data, name, color=None):
        self.copy(kind, data)
        self.key("ctrl+v")
        return self.staged(name, color)

    def go_to(self, shelf):
        """A shelf by its tab; the Library tab first, if another is shown."""
        if self.count(shelf) is None:
            self.reader.press("push button", "Library")
            wait_until(lambda: self.count(shelf) is not None, 15, "the shelves")
        self.reader.press("push button", f"{shelf}, {self.count(shelf)}")
        return self.reader.wait_for("page tab list", "Shelf")

    def context_menu(self, node, *entries):
        self.click(self.middle(node), button=3)
        for entry in entries:
            self.reader.press("menu item", entry)

    def drag_to_editor(self, node):
        """Drags it there; returns what the editor received."""
        self.desktop.drag(self.middle(node), self.over_there)
        return self.editor.wait_for("drop", 30)

    def file_to_editor(self, node):
        drop = self.drag_to_editor(node)
        self.assertEqual(drop["formats"], ["text/uri-list"])
        files = dropped_files(drop)
        self.assertEqual(len(files), 1)
        return files[0]

    def size_of(self, file):
        """The width and height of a picture, and whether it has an alpha channel."""
        told = subprocess.run(["convert", str(file), "-format", "%w %h %A", "info:"], stdout=subprocess.PIPE, check=True,
                              timeout=30).stdout.decode().split()
        return int(told[0]), int(told[1]), told[2] in ("True", "Blend")

    def sound(self, name, seconds=2.0, pitch=440):
        path = self.folder / name
        with wave.open(str(path), "wb") as file:
            file.setparams((1, 2, 44100, 0, "NONE", ""))
            file.writeframes(array("h", (int(12000 * math.sin(n * pitch * math.tau / 44100))
                                         for n in range(int(seconds * 44100)))).tobytes())
        return path

    @contextlib.contextmanager
    def listening(self):
        """Yields a function that tells whether the sound server has played anything since."""
        record = self.folder / "heard"
        with open(record, "wb") as file:
            listener = subprocess.Popen(["parec", "--raw", "--latency-msec=50", "-d", "nobody.monitor"], stdout=file,
                                        env=self.desktop.environment)
        try:
            yield lambda: any(record.read_bytes())
        finally:
            listener.terminate()
            listener.wait()
