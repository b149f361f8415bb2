#!/usr/bin/env python3
"""again.py SECONDS COMMAND [ARGUMENT]…: runs a test that drives a real display, which may lose a race on a busy machine. Where
QUILLARY_TRIES asks for more than one try, one that failed or took longer is repeated; the file that QUILLARY_TRIED_AGAIN
names lists those tests. Ends with the status of the last try."""

import os
import subprocess
import sys

SKIPPED = 77
TOO_LONG = 124


def run(seconds, command):
    with subprocess.Popen(command) as process:
        try:
            return process.wait(seconds)
        except subprocess.TimeoutExpired:
            process.terminate()
            return TOO_LONG


def main():
    seconds, command = int(sys.argv[1]), sys.argv[2:]
    for left in reversed(range(int(os.environ.get("QUILLARY_TRIES", "1")))):
        status = run(seconds, command)
        if status in (0, SKIPPED) or not left:
            return status if status >= 0 else 128 - status
        print(f"again.py: ended with {status}, is tried again", flush=True)
        if listed := os.environ.get("QUILLARY_TRIED_AGAIN"):
            with open(listed, "a") as file:
                print(*(os.path.basename(word) for word in command), file=file)
    return 0


if __name__ == "__main__":
    sys.exit(main())
