#!/usr/bin/env python3
"""An editor's long day with one panel: soak.py FOLDER MINUTES, where FOLDER holds the programs. Run by hand.

Pastes, cuts out, saves, browses every shelf, searches, plays, scrubs and drags out, over and over, while another program
adds and removes files behind the panel's back. Prints the panel's memory once a minute, and fails when the last third of
the run needs over a tenth more than the second.
"""

import io
import os
import random
import statistics
import subprocess
import sys
import tempfile
import time
import wave
from pathlib import Path

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "support", "desktop"))
sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "harness"))
from harness import picture  # noqa: E402
from session import Session, wait_until  # noqa: E402

PROGRAMS, MINUTES = Path(sys.argv[1]).resolve(), float(sys.argv[2])
IMPORT, LIBRARY = (43, 24), (101, 24)
SHELVES = {"images": (55, 71), "videos": (150, 71), "audio": (245, 71), "blocks": (320, 71)}
REMOVE_BACKGROUND, SAVE, STAGE, SEARCH = (95, 410), (325, 442), (190, 180), (230, 105)
TILES = [(60, 260), (150, 260), (240, 260), (60, 350), (150, 350)]


class Day:
    def __init__(self, desktop, folder):
        self.desktop = desktop
        self.folder = folder
        self.shelves = folder / "library" / "Quillary" / "Library"
        self.chance = random.Random(11)
        self.number = 0
        self.panel = desktop.start([str(PROGRAMS / "quillary"), "--library", str(folder / "library"), "panel"])
        wait_until(lambda: self.shelves.exists(), 20, "the panel is open")
        target = desktop.start([str(PROGRAMS / "drop_target"), "--place", "600,50,300,300", "--count", "100000", "--timeout", "100000"])
        self.target = target

    def click(self, place):
        self.desktop.xdo("mousemove", *place, "click", 1)

    def key(self, *keys):
        self.desktop.xdo("key", "--delay", "20", *keys)

    def paste(self):
        self.number += 1
        file = self.folder / "clipboard.png"
        if self.number % 3 == 0:
            file.write_bytes(picture(self.number, 600, 400, noise=True))
        else:  # something to cut out
            colour = f"rgb({self.number % 256},60,{255 - self.number % 256})"
            subprocess.run(["convert", "-size", "600x400", "xc:#f4f2ee", "-fill", colour, "-draw",
                            f"circle 300,200 {320 + self.number % 100},300", str(file)], check=True)
        subprocess.run(["xclip", "-selection", "clipboard", "-t", "image/png", str(file)], env=self.desktop.environment,
                       check=True, stdout=subprocess.DEVNULL)
        self.click(IMPORT)
        self.key("ctrl+v")
        time.sleep(0.5)

    def cut_out(self):
        self.click(REMOVE_BACKGROUND)
        time.sleep(0.6)

    def save(self):
        self.click(SAVE)
        time.sleep(0.2)

    def drag_out(self):
        self.desktop.drag(STAGE, (800, 150), settle=0.3)

    def browse(self):
        self.click(LIBRARY)
        shelf = self.chance.choice(list(SHELVES))
        self.click(SHELVES[shelf])
        for place in self.chance.sample(TILES, 3):
            self.click(place)
            self.desktop.xdo("mousemove", place[0] + 20, place[1])
            self.key("space")
        self.key("Down", "shift+Right", "End", "Home", "Escape")
        self.click(SEARCH)
        self.desktop.xdo("type", "--delay", "15", self.chance.choice(["a", "1", "nothing"]))
        self.key("ctrl+a", "BackSpace", "Escape")

    def others_work(self):
        sound = io.BytesIO()
        with wave.open(sound, "wb") as file:
            file.setnchannels(1), file.setsampwidth(2), file.setframerate(8000)
            file.writeframes(self.chance.randbytes(16000))
        n = self.number % 40
        (self.shelves / "Audio" / f"sound {n}.wav").write_bytes(sound.getvalue())
        other = self.shelves / "Images" / "Others"
        other.mkdir(exist_ok=True)
        (other / f"{n}.png").write_bytes(picture(self.number, 200, 100, noise=True))
        for file in sorted((self.shelves / "Images").glob("*.png"), key=os.path.getmtime)[:-40]:
            file.unlink()

    def memory(self):
        status = Path(f"/proc/{self.panel.process.pid}/status").read_text()
        values = dict(line.split(":", 1) for line in status.splitlines())
        return int(values["RssAnon"].split()[0]) // 1024


def main():
    with tempfile.TemporaryDirectory(prefix="quillary-soak-") as name:
        folder = Path(name)
        private = {f"XDG_{kind}_HOME": str(folder / kind.lower()) for kind in ("CONFIG", "CACHE", "DATA")}
        private["PULSE_SERVER"] = f"unix:{folder}/sound"
        with Session(size="1200x700", environment=private) as desktop:
            desktop.start(["pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1", "-L",
                           f"module-native-protocol-unix socket={folder}/sound", "-L", "module-null-sink sink_name=nul"])
            wait_until(lambda: (folder / "sound").exists(), 20, "there is a sound server")
            day = Day(desktop, folder)
            begun, minute, rounds, used = time.monotonic(), 0, 0, []
            while time.monotonic() - begun < MINUTES * 60:
                for work in (day.paste, day.cut_out, day.save, day.drag_out, day.browse, day.others_work):
                    work()
                    assert day.panel.process.poll() is None, f"the panel ended in {work.__name__}"
                rounds += 1
                if (time.monotonic() - begun) / 60 >= minute:
                    used.append(day.memory())
                    print(f"{minute:3} min  {rounds:4} rounds  {used[-1]:4} MiB", flush=True)
                    minute += 1
            kept = len(list((folder / "library" / "Quillary" / "Recent").glob("*.png")))
    third = max(1, len(used) // 3)
    middle, end = statistics.median(used[third:2 * third] or used[-1:]), statistics.median(used[2 * third:] or used[-1:])
    print(f"{rounds} rounds, {kept} files in Recent, {middle} MiB in the second third, {end} MiB in the last")
    assert kept > 0, "no drag arrived"
    assert end <= 1.1 * middle, "memory grows"


main()
