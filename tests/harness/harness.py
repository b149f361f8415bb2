"""What the harness programs share: pictures that can be told apart, the program in a home of its own, and the
inspection of a library afterwards. Standard library only."""

import json
import os
import random
import signal
import struct
import subprocess
import tempfile
import zlib

SKIPPED = 77


def _chunk(kind, data):
    return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))


def picture(number, width=40, height=30, noise=False):
    """A PNG whose first pixel tells its number. Its size in bytes is its own: a comment of `number` bytes pads it."""
    colour = struct.pack(">I", number)[1:]
    grain = random.Random(number)
    rows = [colour + (grain.randbytes(3 * width - 3) if noise else colour * (width - 1)) for _ in range(height)]
    raw = b"".join(b"\0" + row for row in rows)
    header = struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0)
    comment = b"Comment\0" + b"x" * number
    return (b"\x89PNG\r\n\x1a\n" + _chunk(b"IHDR", header) + _chunk(b"tEXt", comment)
            + _chunk(b"IDAT", zlib.compress(raw, 1)) + _chunk(b"IEND", b""))


def number_of(data):
    """The number of a whole PNG; an AssertionError for anything that is not whole from its first byte to its last."""
    assert data[:8] == b"\x89PNG\r\n\x1a\n", "no PNG"
    at, pixels, ended, width, height, channels = 8, b"", False, 0, 0, 0
    while at < len(data):
        assert not ended, "bytes after the end"
        length, kind = struct.unpack(">I4s", data[at:at + 8])
        body = data[at + 8:at + 8 + length]
        assert len(body) == length and at + 12 + length <= len(data), "cut short"
        assert struct.unpack(">I", data[at + 8 + length:at + 12 + length])[0] == zlib.crc32(kind + body), "damaged"
        if kind == b"IHDR":
            width, height, depth, colour = struct.unpack(">IIBB", body[:10])
            assert depth == 8 and colour in (2, 6)
            channels = 3 if colour == 2 else 4
        pixels += body if kind == b"IDAT" else b""
        ended = kind == b"IEND"
        at += 12 + length
    assert ended, "no end"
    rows = zlib.decompress(pixels)
    assert len(rows) == height * (1 + width * channels), "rows are missing"
    # Whatever filter the first row has, its first pixel is stored as it is (nothing lies left of it or above).
    return struct.unpack(">I", b"\0" + rows[1:4])[0]


class Program:
    """The built program in a home of its own, and a library beside it."""

    def __init__(self, path, folder):
        self.path = os.path.abspath(path)
        self.folder = folder
        self.home = os.path.join(folder, "home")
        self.library = os.path.join(folder, "library")
        self.root = os.path.join(self.library, "Quillary")
        os.makedirs(self.home)
        self.environment = {
            "HOME": self.home, "LC_ALL": "C.UTF-8", "PATH": os.environ["PATH"],
            "XDG_CONFIG_HOME": os.path.join(self.home, "config"), "XDG_CACHE_HOME": os.path.join(self.home, "cache"),
            "XDG_RUNTIME_DIR": self.home,
            # What a run with sanitizers tells them.
            **{name: value for name, value in os.environ.items() if name.endswith("SAN_OPTIONS")},
        }

    def start(self, *words, library=None, extra=None):
        command = [self.path, "--json"] + ["--library", library or self.library] * (library != "") + list(words)
        return subprocess.Popen(command, env={**self.environment, **(extra or {})}, stdin=subprocess.DEVNULL,
                                stdout=subprocess.PIPE, stderr=subprocess.PIPE, start_new_session=True)

    def run(self, *words, library=None, extra=None, status=0):
        """The parsed result of a run that ends with `status`."""
        process = self.start(*words, library=library, extra=extra)
        try:
            out, err = process.communicate(timeout=120)
        except subprocess.TimeoutExpired:
            os.killpg(process.pid, signal.SIGKILL)
            raise AssertionError(f"hangs: {words}")
        assert process.returncode == status, f"{words} ended with {process.returncode}: {out.decode()} {err.decode()}"
        return json.loads(out) if out.strip() else None

    def shelf(self, name):
        return os.path.join(self.root, name)


def files_below(folder):
    for place, _, names in os.walk(folder):
        for name in names:
            yield os.path.join(place, name)


def leftovers(folder):
    return [path for path in files_below(folder) if os.path.basename(path).startswith(".")]


def pictures_in(folder):
    """Every visible file of a folder: {path: number}. Each must be a whole picture."""
    found = {}
    for path in files_below(folder):
        if os.path.basename(path).startswith("."):
            continue
        with open(path, "rb") as file:
            data = file.read()
        try:
            found[path] = number_of(data)
        except (AssertionError, zlib.error) as error:
            raise AssertionError(f"{path} is not whole: {error}")
    return found


def temporary_folder():
    return tempfile.TemporaryDirectory(prefix="quillary-harness-", ignore_cleanup_errors=True)
