"""Kills the program at random instants of what it does, hundreds of times, and looks at what is left: no file that is
not whole, none lost, none overwritten, no temporary file after the next start."""

import argparse
import collections
import os
import random
import shutil
import signal
import time
import urllib.parse
import xml.etree.ElementTree

from harness import Program, files_below, leftovers, picture, pictures_in, temporary_folder

CLIPS = 6
KEPT = 24  # pictures that are on the shelf from the start and are moved and renamed
PLAIN = "unnamed,exclusive"


class Kills:
    def __init__(self, program, seed, plain):
        self.program = program
        self.random = random.Random(seed)
        self.plain = plain
        self.sources = {}
        self.durations = collections.defaultdict(lambda: 0.15)
        self.killed = collections.Counter()
        self.finished = collections.Counter()

    def prepare_clips(self):
        """Documents of three media each, some of them shared."""
        folder = os.path.join(self.program.folder, "media")
        os.makedirs(folder)
        self.media = {}
        for number in range(CLIPS + 2):
            path = os.path.join(folder, f"take {number}.mov")
            self.media[f"{number:08}-take {number}.mov"] = random.Random(number).randbytes(700_000)
            with open(path, "wb") as file:
                file.write(self.media[f"{number:08}-take {number}.mov"])
        for clip in range(CLIPS):
            assets = "".join(
                f'<asset id="r{n}" uid="{n:08}ABCD"><media-rep src="file://{urllib.parse.quote(folder)}/take%20{n}.mov"/>'
                f"</asset>" for n in range(clip, clip + 3))
            with open(os.path.join(folder, f"{clip}.fcpxml"), "w") as file:
                file.write(f'<fcpxml version="1.13"><resources>{assets}</resources><clip name="{clip}"/></fcpxml>')

    def prepare(self):
        self.prepare_clips()
        folder = os.path.join(self.program.folder, "in")
        os.makedirs(folder)
        # Names that collide with each other and with what lies on the shelf already.
        for number in range(1, 13):
            place = os.path.join(folder, str(number))
            os.makedirs(place)
            self.sources[os.path.join(place, f"name {number % 4}.png")] = picture(1000 + number, 300, 200, noise=True)
        for path, data in self.sources.items():
            with open(path, "wb") as file:
                file.write(data)
        self.program.run("settings", "recentLimit", "100000")
        self.program.run("list", "images")
        images = self.program.shelf("Library/Images")
        self.bystanders = {}
        for number in range(KEPT):
            with open(os.path.join(images, f"kept {number}.png"), "wb") as file:
                file.write(picture(number))
        for number in range(4):
            # In the way of every save, move and rename.
            for place in ("Library/Images", "Library/Images/A", "Recent"):
                path = os.path.join(self.program.shelf(place), f"name {number}.png")
                os.makedirs(os.path.dirname(path), exist_ok=True)
                self.bystanders[path] = picture(500 + number)
                with open(path, "wb") as file:
                    file.write(self.bystanders[path])
        stars = [path for path in files_below(images) if "kept" in path][:8]
        self.program.run("favorite", *stars)

    def some_kept(self):
        paths = [path for path, number in pictures_in(self.program.shelf("Library/Images")).items() if number < KEPT]
        return self.random.sample(sorted(paths), 3)

    def task(self):
        kind = self.random.choice(["save", "save", "recent add", "recent add", "move", "rename", "block save"])
        if kind == "block save":
            clip = os.path.join(self.program.folder, "media", f"{self.random.randrange(CLIPS)}.fcpxml")
            # Now and then as if it were the first time.
            if self.random.random() < 0.3:
                shutil.rmtree(self.program.shelf("Library/Videos/Final Cut Elements"), ignore_errors=True)
                shutil.rmtree(self.program.shelf("Library/Blocks"), ignore_errors=True)
            return kind, ["block", "save", clip, "--collection", self.random.choice(["A", ""])]
        if kind == "save":
            files = self.random.sample(sorted(self.sources), 4)
            return kind, ["save", *files, "--collection", self.random.choice(["A", "B / C", ""])]
        if kind == "recent add":
            return kind, ["recent", "add", self.random.choice(sorted(self.sources))]
        if kind == "move":
            return kind, ["move", *self.some_kept(), "--collection", self.random.choice(["A", "B / C", "", "D"])]
        return kind, ["rename", self.some_kept()[0], f"name {self.random.randrange(4)}"]

    def once(self):
        kind, words = self.task()
        plain = self.plain is not None and self.random.random() < 0.4
        extra = {"LD_PRELOAD": self.plain, "PLAIN_FILE_SYSTEM": PLAIN} if plain else {}
        started = time.monotonic()
        process = self.program.start(*words, extra=extra)
        # Anywhere in its life, and more often than not in the part where it writes.
        share = self.random.choice([self.random.random(), self.random.uniform(0.5, 1.0)])
        try:
            process.communicate(timeout=share * self.durations[kind])
            took = time.monotonic() - started
            self.durations[kind] = 0.7 * self.durations[kind] + 0.3 * took
            self.finished[kind] += 1
        except Exception:
            os.killpg(process.pid, signal.SIGKILL)
            process.communicate()
            self.killed[kind] += 1
            self.durations[kind] *= 1.02

    def check_blocks(self):
        """Every block is whole and has its media, every copy is whole."""
        for path in files_below(self.program.shelf("Library/Videos/Final Cut Elements")):
            if not os.path.basename(path).startswith("."):
                with open(path, "rb") as file:
                    assert file.read() == self.media[os.path.basename(path)], f"{path} is not whole"
        blocks = self.program.run("list", "blocks")
        stored = [path for path in files_below(self.program.shelf("Library/Blocks")) if path.endswith(".fcpxml")]
        assert len(blocks) == len(stored), "a document is not whole"
        for block in blocks:
            for media in xml.etree.ElementTree.parse(block["path"]).iter("media-rep"):
                path = urllib.parse.unquote(urllib.parse.urlparse(media.get("src")).path)
                assert os.path.exists(path), f"{block['path']} lost {path}"

    def check(self):
        for path, data in {**self.sources, **self.bystanders}.items():
            with open(path, "rb") as file:
                assert file.read() == data, f"{path} was changed"
        images = pictures_in(self.program.shelf("Library/Images"))
        recent = pictures_in(self.program.shelf("Recent"))
        known = set(range(KEPT)) | set(range(500, 504)) | set(range(1001, 1013))
        strangers = [path for path, number in {**images, **recent}.items() if number not in known]
        assert not strangers, f"pictures that nobody saved: {strangers}"
        copies = collections.Counter(number for number in images.values() if number < KEPT)
        lost = [number for number in range(KEPT) if not copies[number]]
        assert not lost, f"lost: {lost}"
        # Where a file system cannot rename without overwriting, a kill may leave two names of one file, never none.
        for number, count in copies.items():
            same = {os.stat(path).st_ino for path, other in images.items() if other == number}
            assert len(same) == 1, f"picture {number} was doubled"
            assert count == 1 or self.plain is not None, f"picture {number} has {count} names"
        self.check_blocks()
        stored = self.program.run("settings")
        assert stored["recentLimit"] == 100000, "the settings were lost"
        for shelf in ("images", "videos", "audio", "recent"):
            self.program.run("list", shelf)
        assert not leftovers(self.program.root), f"left behind: {leftovers(self.program.root)}"
        return len(images), len(recent)


def main():
    options = argparse.ArgumentParser()
    options.add_argument("program")
    options.add_argument("--plain", help="the library that makes a file system know less")
    options.add_argument("--kills", type=int, default=500)
    options.add_argument("--seed", type=int, default=20)
    given = options.parse_args()
    with temporary_folder() as folder:
        kills = Kills(Program(given.program, folder), given.seed, given.plain)
        kills.prepare()
        started = time.monotonic()
        rounds = 0
        while kills.killed.total() < given.kills:
            kills.once()
            rounds += 1
            assert rounds < 20 * given.kills, "too few runs could be killed in time"
            if rounds % 100 == 0:
                kills.check()
        images, recent = kills.check()
        print(f"{kills.killed.total()} kills in {time.monotonic() - started:.0f} s: {dict(kills.killed)}; "
              f"ran to the end: {dict(kills.finished)}; {images} pictures on the shelf and {recent} in Recent, all whole")


main()
