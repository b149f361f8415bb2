#!/usr/bin/env python3
"""What the program asks of the system while it works: no network socket, and no file written, moved or removed outside
the library, the settings, the caches, the session's runtime folder and the named outputs. Needs strace and the right to trace.

    trace.py PROGRAM
"""

import os
import re
import shutil
import subprocess
import sys

from harness import SKIPPED, Program, picture, temporary_folder

CALLS = ("socket,open,openat,openat2,creat,mkdir,mkdirat,mknod,mknodat,rename,renameat,renameat2,unlink,unlinkat,rmdir,"
         "link,linkat,symlink,symlinkat,truncate,chmod,fchmodat,setxattr,lsetxattr,removexattr,lremovexattr")
SVG = ('<svg xmlns="http://www.w3.org/2000/svg" xmlns:xlink="http://www.w3.org/1999/xlink" width="40" height="20">'
       '<image xlink:href="http://127.0.0.1:1/picture.png" width="9" height="9"/><rect width="40" height="20"/></svg>')
FCPXML = ('<?xml version="1.0"?><!DOCTYPE fcpxml SYSTEM "http://127.0.0.1:1/fcpxml.dtd"><fcpxml version="1.10"><resources>'
          '<format id="r1" frameDuration="1/25s"/></resources><library/></fcpxml>')
DEVICES = ("/dev/null", "/dev/tty", "/dev/shm/", "/proc/self/", "/proc/thread-self/", "/memfd:")


def writes(line):
    """The paths that a traced call would write to; empty for one that failed or only reads."""
    call = re.match(r"(?:\[pid +\d+\] |\d+ +)?(\w+)\((.*)\) += (.*)", line)
    if not call or call[3].startswith("-1"):
        return []
    name, arguments, result = call.groups()
    if name in ("open", "openat", "openat2"):
        if not re.search(r"O_WRONLY|O_RDWR|O_CREAT|O_TMPFILE", arguments):
            return []
        opened = re.search(r"<(.*?)(?:\(deleted\)|<char [^>]*>)?>", result)
        return [opened[1].strip()] if opened else []
    paths = []
    for folder, text in re.findall(r'(?:(?:AT_FDCWD|\d+)<([^>]*)>, )?"((?:[^"\\]|\\.)*)"', arguments):
        text = text.encode("latin-1", "replace").decode("unicode_escape").encode("latin-1", "replace").decode("utf-8", "replace")
        paths.append(os.path.normpath(os.path.join(folder or "/", text)))
    # A symbolic link's target and a link's source are only read.
    return paths[-1:] if name.startswith(("link", "symlink", "setxattr", "lsetxattr")) and "xattr" not in name else paths[:2]


def traced(program, log, *words):
    command = ["strace", "-f", "-qq", "-y", "-s", "4096", "-e", f"trace={CALLS}", "-e", "signal=none", "-o", log, program.path,
               "--json", "--library", program.library, *words]
    environment = {**program.environment, "QT_QPA_PLATFORM": "offscreen", "TMPDIR": os.path.join(program.folder, "tmp"),
                   # Leaks cannot be looked for in a process that is traced.
                   "LSAN_OPTIONS": "detect_leaks=0"}
    done = subprocess.run(command, env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                          stderr=subprocess.PIPE, timeout=300)
    return done


def main():
    if not shutil.which("strace") or subprocess.run(["strace", "-qq", "-o", "/dev/null", "true"]).returncode != 0:
        print("skipped: processes cannot be traced here")
        return SKIPPED
    with temporary_folder() as folder:
        program = Program(sys.argv[1], folder)
        program.environment["XDG_RUNTIME_DIR"] = os.path.join(folder, "runtime")
        os.makedirs(program.environment["XDG_RUNTIME_DIR"], mode=0o700)
        out = os.path.join(folder, "out")
        given = os.path.join(folder, "given")
        os.makedirs(out), os.makedirs(given)

        def put(name, content):
            path = os.path.join(given, name)
            with open(path, "wb") as file:
                file.write(content)
            return path
        photo, logo = put("photo.png", picture(7, noise=True)), put("logo.svg", SVG.encode())
        flat, clip = put("flat.png", picture(9, 300, 200)), put("clip.fcpxml", FCPXML.encode())
        sound = put("sound.wav", b"RIFF\x24\x00\x00\x00WAVEfmt \x10\x00\x00\x00\x01\x00\x01\x00\x40\x1f\x00\x00\x80\x3e\x00\x00"
                    b"\x02\x00\x10\x00data\x00\x00\x00\x00")
        before = {name: os.path.getmtime(os.path.join(given, name)) for name in os.listdir(given)}
        runs = [
            ["save", photo, flat, sound], ["save", "--collection", "Logos", logo], ["list", "images"], ["list", "audio"],
            ["intake", logo, "--output", f"{out}/a.png"], ["cutout", flat, "--output", f"{out}/b.png"],
            ["thumbnail", flat, "--output", f"{out}/c.png"], ["recent", "add", photo], ["recent", "prune"],
            ["block", "save", clip], ["block", "xml", clip], ["audio", "peaks", sound], ["settings", "recentLimit", "5"],
            ["panel", photo, logo, flat, sound, clip, "--screenshot", f"{out}/d.png"],
            ["panel", "--tab", "library", "--shelf", "audio", "--screenshot", f"{out}/e.png"],
        ]
        allowed = tuple(os.path.realpath(place) + "/" for place in
                        (program.library, program.environment["XDG_CONFIG_HOME"], program.environment["XDG_CACHE_HOME"], out,
                         program.environment["XDG_RUNTIME_DIR"]))
        calls, written = 0, 0
        for number, words in enumerate(runs):
            log = os.path.join(folder, f"{number}.log")
            traced(program, log, *words)
            with open(log, encoding="utf-8", errors="replace") as lines:
                for line in lines:
                    calls += 1
                    assert not re.search(r"\bsocket\(AF_INET", line), (words, line)
                    for path in writes(line):
                        written += 1
                        inside = (os.path.realpath(path) + "/").startswith(allowed)
                        # Settings and caches begin with their own folders.
                        inside = inside or any(place.startswith(path + "/") for place in allowed)
                        assert inside or path.startswith(DEVICES), (words, path, line)
        assert calls > 1000 and written > 50, f"the trace is empty: {calls} calls, {written} writes"
        assert os.path.exists(f"{out}/a.png") and os.path.exists(f"{out}/d.png"), os.listdir(out)
        after = {name: os.path.getmtime(os.path.join(given, name)) for name in os.listdir(given)}
        assert before == after, "a source was touched"
        print(f"{len(runs)} runs, {calls} calls, {written} writes: no network, nothing written elsewhere")
    return 0


if __name__ == "__main__":
    sys.exit(main())
