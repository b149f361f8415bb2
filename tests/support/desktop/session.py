#!/usr/bin/env python3
"""A desktop session of its own for one test or demo: a virtual X server, a session bus, and on request a Wayland
compositor drawn into it. Everything ends with it, whatever happened.

On the command line:

    session.py [--wayland] [--size 1280x800] [--need TOOL]… -- COMMAND [ARGUMENT]…

runs the command inside and ends with its status, or with 77 and one line that names what is missing (CTest's
SKIP_RETURN_CODE). From Python:

    with Session(wayland=False) as desktop:
        target = desktop.start(["drop_target", "--place", "600,100,300,300"])
        target.wait_for("ready")
        desktop.place(target, 600, 100)
        desktop.drag((50, 50), (700, 200))
        print(target.wait_for("drop"))

Programs inside see DISPLAY or, under Wayland, WAYLAND_DISPLAY and QT_QPA_PLATFORM=wayland. Pointer and keys always go
through xdotool on the X server. X11 windows stand where they ask to, with or without a window manager. Under Wayland
nobody can tell where a window stands, unless it is no smaller than its screen: `screens` gives the compositor several,
side by side from the left, and a window opens on the one that `look_at` was told last; drags between them need the library
`free_pointer`. Where a test has one screen only, `place` carries a window by hand. Only the standard library is used.
"""

import argparse
import ctypes
import json
import os
import queue
import shutil
import signal
import subprocess
import sys
import tempfile
import threading
import time

SKIPPED = 77


class Missing(Exception):
    """A tool that the session needs is not installed."""


def end_with_parent():
    """Run in a child: it gets a signal when this program dies, even when that is killed."""
    parent_death_signal = 1
    ctypes.CDLL(None).prctl(parent_death_signal, signal.SIGTERM)


def require(*tools):
    for tool in tools:
        if not shutil.which(tool):
            raise Missing(f"{tool} is not installed")


class Program:
    """A process that reports in lines of JSON on standard output."""

    def __init__(self, process):
        self.process = process
        self.events = []
        self._incoming = queue.Queue()
        threading.Thread(target=self._read, daemon=True).start()

    def _read(self):
        with self.process.stdout as lines:
            for line in lines:
                try:
                    self._incoming.put(json.loads(line))
                except ValueError:
                    sys.stderr.buffer.write(line)
        self._incoming.put(None)

    def wait_for(self, event, seconds=10.0):
        """The next report of this kind; others before it are kept in `events`."""
        end = time.monotonic() + seconds
        while (left := end - time.monotonic()) > 0:
            try:
                report = self._incoming.get(timeout=left)
            except queue.Empty:
                break
            if report is None:
                raise AssertionError(f"{self.process.args[0]} ended before it reported {event!r}")
            self.events.append(report)
            if report["event"] == event:
                return report
        raise AssertionError(f"{self.process.args[0]} did not report {event!r} in {seconds} s: {self.events}")

    def last(self, event):
        """The newest report of this kind that has come by now, or None."""
        while True:
            try:
                report = self._incoming.get_nowait()
            except queue.Empty:
                break
            if report is None:
                break
            self.events.append(report)
        return next((e for e in reversed(self.events) if e["event"] == event), None)

    def stays_silent(self, event, seconds):
        """Whether no such report comes for a while."""
        try:
            self.wait_for(event, seconds)
        except AssertionError:
            return True
        return False

    def stop(self):
        if self.process.poll() is None:
            self.process.kill()
        self.process.wait()


class Session:
    def __init__(self, wayland=False, size="1280x800", environment=None, screens=(), window_manager=None,
                 free_pointer=None):
        self.wayland = wayland
        self.size = size
        self.screens = [tuple(map(int, screen.split("x"))) for screen in screens or (size,)]
        self.window_manager = None if wayland else window_manager
        self.free_pointer = free_pointer
        self.environment = {**os.environ, "LANGUAGE": "", **(environment or {})}
        self._processes = []
        self._folder = None

    def __enter__(self):
        require("Xvfb", "dbus-daemon", *(["weston"] if self.wayland else []))
        try:
            self._folder = tempfile.mkdtemp(prefix="quillary-session-")
            os.chmod(self._folder, 0o700)
            for name in ("WAYLAND_DISPLAY", "DISPLAY", "QT_QPA_PLATFORM", "XAUTHORITY"):
                self.environment.pop(name, None)
            self.environment.update(
                XDG_RUNTIME_DIR=self._folder, QT_QUICK_BACKEND="software", NO_AT_BRIDGE="1", LC_ALL="C.UTF-8"
            )
            self._start_server()
            self._start_bus()
            self.x_environment = dict(self.environment)
            if self.wayland:
                self._start_compositor()
            else:
                self.environment["QT_QPA_PLATFORM"] = "xcb"
                if self.window_manager:
                    self._start_window_manager()
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        for process in reversed(self._processes):
            if process.poll() is None:
                process.send_signal(signal.SIGCONT)
                process.terminate()
                try:
                    process.wait(3)
                except subprocess.TimeoutExpired:
                    process.kill()
                    process.wait()
        if self._folder:
            shutil.rmtree(self._folder, ignore_errors=True)

    def _service(self, arguments, stdout=subprocess.DEVNULL, pass_fds=(), text=False, **environment):
        with open(os.path.join(self._folder, os.path.basename(arguments[0]) + ".log"), "wb") as log:
            process = subprocess.Popen(arguments, env={**self.environment, **environment}, stderr=log, text=text,
                                       stdin=subprocess.DEVNULL, stdout=stdout, pass_fds=pass_fds,
                                       preexec_fn=end_with_parent)
        self._processes.append(process)
        return process

    def _start_server(self):
        read, write = os.pipe()
        self._service(
            ["Xvfb", "-displayfd", str(write), "-screen", "0", self.size + "x24", "-nolisten", "tcp", "-noreset"],
            pass_fds=[write],
        )
        os.close(write)
        with os.fdopen(read) as answer:
            number = answer.readline().strip()
        if not number:
            raise Missing("Xvfb did not start")
        self.environment["DISPLAY"] = ":" + number

    def _start_bus(self):
        bus = self._service(
            ["dbus-daemon", "--session", "--nofork", "--print-address"], stdout=subprocess.PIPE, text=True
        )
        with bus.stdout as answer:
            self.environment["DBUS_SESSION_BUS_ADDRESS"] = answer.readline().strip()

    def _start_window_manager(self):
        self._service([self.window_manager])
        wait_until(lambda: self.run(["xdotool", "get_num_desktops"], stdout=subprocess.DEVNULL,
                                    stderr=subprocess.DEVNULL).returncode == 0, 15, self.window_manager)

    def _start_compositor(self):
        settings = os.path.join(self._folder, "weston.ini")
        with open(settings, "w") as file:
            file.write("[core]\nidle-time=0\nrequire-input=false\n[shell]\npanel-position=none\nlocking=false\n"
                       "animation=none\nstartup-animation=none\nclose-animation=none\nfocus-animation=none\n"
                       # No keyboard on the screen, which would come up over a text field that is clicked.
                       "[input-method]\npath=\n")
            for number, (width, height) in enumerate(self.screens):
                file.write(f"[output]\nname=screen{number}\nmode={width}x{height}\n")
        weston = self._service(
            ["weston", "--backend=x11-backend.so", "--use-pixman", "--config=" + settings, "--socket=quillary",
             f"--output-count={len(self.screens)}"],
            LD_PRELOAD=self.free_pointer or "",
        )
        socket = os.path.join(self._folder, "quillary")
        wait_until(lambda: os.path.exists(socket) or weston.poll() is not None, 15, "weston's socket")
        if weston.poll() is not None:
            raise Missing("weston's x11 backend did not start")
        if len(self.screens) > 1:
            # The compositor's own places for its screens, so that the pointer is in both where it is in one.
            found = []

            def all_there():
                found[:] = subprocess.run(["xdotool", "search", "--class", "weston"], env=self.x_environment,
                                          stdout=subprocess.PIPE, timeout=30).stdout.split()
                return len(found) == len(self.screens)

            wait_until(all_there, 15, "weston's screens")
            left = 0
            # They were made in this order, and so were their numbers.
            for window, (width, _) in zip(sorted(map(int, found)), self.screens):
                self.xdo("windowmove", window, left, 0)
                left += width
        del self.environment["DISPLAY"]
        self.environment.update(WAYLAND_DISPLAY="quillary", QT_QPA_PLATFORM="wayland",
                                QT_WAYLAND_DISABLE_WINDOWDECORATION="1")

    def look_at(self, number):
        """Puts the pointer onto a screen, where the next window opens then; X11 has only one, and no such custom."""
        if not self.wayland:
            return
        left = sum(width for width, _ in self.screens[:number])
        self.move(left + self.screens[number][0] // 2, self.screens[number][1] // 2)

    def start(self, arguments, **environment):
        """Starts a program that reports in JSON; it ends with the session."""
        process = subprocess.Popen(
            arguments, env={**self.environment, **environment}, stdout=subprocess.PIPE, stdin=subprocess.DEVNULL,
            preexec_fn=end_with_parent,
        )
        self._processes.append(process)
        return Program(process)

    def run(self, arguments, **options):
        return subprocess.run(arguments, env=self.environment, timeout=120, **options)

    def xdo(self, *arguments):
        require("xdotool")
        subprocess.run(["xdotool", *map(str, arguments)], env=self.x_environment, check=True, timeout=30)

    def press(self, x, y, button=1):
        self.xdo("mousemove", x, y)
        time.sleep(0.15)
        self.xdo("mousedown", button)
        time.sleep(0.1)

    def release(self, button=1):
        self.xdo("mouseup", button)

    def move(self, x, y):
        self.xdo("mousemove", x, y)
        time.sleep(0.03)

    def place(self, program, x, y):
        """Puts the program's window at this place, where only the compositor could: the pointer searches for the window,
        whose program reports "pointer", and carries it there. Windows in front of it must have been placed before."""
        if not self.wayland:
            return
        width, height = map(int, self.size.split("x"))
        for at_y in range(60, height, 120):
            for at_x in range(60, width, 120):
                self.move(at_x, at_y)
                if not program.last("pointer"):
                    continue
                # What came so far may be of an earlier place.
                program.events.clear()
                self.move(at_x + 2, at_y + 1)
                time.sleep(0.2)
                if not (found := program.last("pointer")):
                    continue
                self.xdo("keydown", "Super_L")
                self.press(at_x + 2, at_y + 1)
                self.move(at_x, at_y)
                self.move(x + found["x"], y + found["y"])
                self.release()
                self.xdo("keyup", "Super_L")
                self.move(0, 0)
                return
        raise AssertionError(f"{program.process.args[0]} has no window that the pointer can find")

    def drag(self, begin, end, settle=0.5):
        """A drag by hand: press, a few short moves to leave the threshold, longer steps, a pause, release."""
        self.press(*begin)
        x, y = begin
        for _ in range(6):
            x += 4
            self.move(x, y)
        for step in range(1, 9):
            self.move(x + (end[0] - x) * step // 8, y + (end[1] - y) * step // 8)
        self.move(end[0] + 1, end[1] + 1)
        time.sleep(settle)
        self.release()


def wait_until(condition, seconds, what):
    end = time.monotonic() + seconds
    while not condition():
        if time.monotonic() > end:
            raise AssertionError(f"waited {seconds} s for {what}")
        time.sleep(0.02)


def main():
    parser = argparse.ArgumentParser(description="Runs a command inside a desktop session of its own.")
    parser.add_argument("--wayland", action="store_true", help="a Wayland compositor inside the X server")
    parser.add_argument("--size", default="1280x800")
    parser.add_argument("--need", action="append", default=[], metavar="TOOL", help="skip when it is not installed")
    parser.add_argument("command", nargs=argparse.REMAINDER)
    options = parser.parse_args()
    command = options.command[1:] if options.command[:1] == ["--"] else options.command
    try:
        require(*options.need)
        with Session(options.wayland, options.size) as desktop:
            return subprocess.run(command, env=desktop.environment).returncode
    except Missing as missing:
        print(f"skipped: {missing}")
        return SKIPPED


if __name__ == "__main__":
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(143))
    sys.exit(main())
