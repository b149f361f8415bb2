"""A full file system, a read-only one and one without attributes: one clear text each, and
nothing lost. Mounts small file systems for itself alone, which needs rights; without them it says so and is skipped."""

import os
import shutil
import subprocess
import sys

from harness import SKIPPED, Program, leftovers, picture, pictures_in, temporary_folder


def mount(kind, options, place):
    os.makedirs(place, exist_ok=True)
    subprocess.run(["mount", "-t", kind, "-o", options, "none", place], check=True)


def put(folder, name, number, size=20, noise=False):
    os.makedirs(folder, exist_ok=True)
    path = os.path.join(folder, name)
    with open(path, "wb") as file:
        file.write(picture(number, size, size, noise))
    return path


def full(program):
    mount("tmpfs", "size=700k", program.library)
    files = [put(os.path.join(program.folder, "full"), f"{n}.png", n, 256, noise=True) for n in range(1, 9)]
    result = program.run("save", *files, status=1)
    assert result["saved"] and result["failures"], result
    for failure in result["failures"]:
        assert failure["message"] == f"Could not write {os.path.basename(failure['file'])}: No space left on device", failure
    found = pictures_in(program.root)
    assert len(found) == len(result["saved"]) and not leftovers(program.root)
    assert program.run("recent", "add", files[0], status=1)["error"] == "Could not write 1.png: No space left on device"
    # Renaming and deleting still work, and then there is room again.
    victims = sorted(found)[:2]
    program.run("rename", victims[0], "renamed")
    program.run("delete", victims[1])
    program.run("recent", "add", put(program.folder, "small.png", 99))
    assert len(pictures_in(program.root)) == len(found)


def read_only(program):
    mount("tmpfs", "size=4m", program.library)
    stored = program.run("save", put(program.folder, "a.png", 1))["saved"][0]
    subprocess.run(["mount", "-o", "remount,ro", program.library], check=True)
    other = put(program.folder, "b.png", 2)
    expected = {
        ("save", other): "Could not write b.png: Read-only file system",
        ("save", other, "--collection", "New"): "Could not create the folder “New”: Read-only file system",
        ("recent", "add", other): "Could not write b.png: Read-only file system",
        ("rename", stored, "c"): "Could not move a.png: Read-only file system",
        ("move", stored, "--collection", "C"): "Could not create the folder “C”: Read-only file system",
        ("delete", stored): "Could not delete a.png: Read-only file system",
    }
    for words, text in expected.items():
        process = program.start(*words)
        out, err = process.communicate(timeout=60)
        assert process.returncode == 1 and text in (out + err).decode(), (words, process.returncode, out, err)
    assert [item["path"] for item in program.run("list", "images")] == [stored]
    assert list(pictures_in(program.root).values()) == [1] and os.path.exists(other)


def without_attributes(program):
    mount("ramfs", "mode=755", program.library)
    files = [put(os.path.join(program.folder, "plain"), f"{n}.png", n) for n in range(1, 4)]
    result = program.run("save", *files, "--collection", "A")
    assert len(result["saved"]) == 3 and not result["failures"], result
    moved = program.run("move", result["saved"][0], "--collection", "B")[0]["path"]
    program.run("rename", moved, "new name")
    items = program.run("list", "images")
    assert len(items) == 3 and all(item["sourceFormat"] is None for item in items), items
    assert sorted(pictures_in(program.root).values()) == [1, 2, 3] and not leftovers(program.root)


def main():
    if len(sys.argv) < 3:
        alone = ["unshare", "--mount", "--propagation", "private"]
        if not shutil.which("unshare") or subprocess.run(alone + ["mount", "-t", "tmpfs", "none", "/mnt"],
                                                         stderr=subprocess.DEVNULL).returncode:
            print("skipped: mounting a file system is not permitted here")
            sys.exit(SKIPPED)
        sys.exit(subprocess.run(alone + [sys.executable, __file__, sys.argv[1], "alone"]).returncode)
    for case in (full, read_only, without_attributes):
        with temporary_folder() as folder:
            program = Program(sys.argv[1], folder)
            try:
                case(program)
                print(f"{case.__name__}: as promised")
            finally:
                subprocess.run(["umount", "-l", program.library], stderr=subprocess.DEVNULL)


main()
