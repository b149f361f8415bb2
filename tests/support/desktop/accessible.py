#!/usr/bin/env python3
"""What a screen reader sees and does. From a test:

    with Session(environment=Reader.environment) as desktop:
        reader = Reader(desktop)
        panel = desktop.start(["quillary"])
        reader.press("push button", "Save to Library")

The tree is read by a process of its own inside the session (this file run as a program), since the library that talks to
the accessibility bus finds it only once.
"""

import json
import os
import subprocess
import sys
import time
from collections import namedtuple

if __name__ != "__main__":
    from session import Missing, end_with_parent, wait_until

Node = namedtuple("Node", "number parent role name description states actions left top width height text")

LAUNCHERS = ("/usr/libexec/at-spi-bus-launcher", "/usr/lib/at-spi2-core/at-spi-bus-launcher")
BINDINGS = "import gi; gi.require_version('Atspi', '2.0'); from gi.repository import Atspi"


def interpreter():
    """A Python that has the bindings: this one, or the system's."""
    for candidate in (sys.executable, "/usr/bin/python3"):
        if subprocess.run([candidate, "-c", BINDINGS], stderr=subprocess.DEVNULL).returncode == 0:
            return candidate
    raise Missing("the Python bindings of AT-SPI are not installed")


class Reader:
    environment = {"QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"}

    def __init__(self, desktop, left=0, top=0):
        """Where the toolkit does not know its windows' place, `left` and `top` tell it."""
        self._corner = left, top
        launcher = next((path for path in LAUNCHERS if os.path.exists(path)), None)
        if not launcher:
            raise Missing("at-spi2-core is not installed")
        desktop.start([launcher, "--launch-immediately"])
        self._process = subprocess.Popen(
            [interpreter(), "-W", "ignore", os.path.abspath(__file__)], env=desktop.environment, stdin=subprocess.PIPE,
            stdout=subprocess.PIPE, text=True, preexec_fn=end_with_parent)

    def close(self):
        self._process.stdin.close()
        self._process.wait(10)
        self._process.stdout.close()

    def _ask(self, **question):
        print(json.dumps(question), file=self._process.stdin, flush=True)
        answer = self._process.stdout.readline()
        if not answer:
            raise AssertionError("the reader of the accessibility tree ended")
        return json.loads(answer)

    def tree(self):
        """All that is shown, parents before children."""
        left, top = self._corner
        return [node._replace(left=node.left + left, top=node.top + top)
                for node in (Node(*node) for node in self._ask(do="tree"))]

    def find(self, role, name, tree=None):
        """The shown nodes of this role ("" for any) and name."""
        return [node for node in tree or self.tree()
                if role in ("", node.role) and node.name == name and "showing" in node.states]

    def wait_for(self, role, name, seconds=15):
        found = []

        def there():
            found[:] = self.find(role, name)
            return found

        wait_until(there, seconds, f"{role or 'anything'} “{name}”")
        return found[0]

    def press(self, role, name):
        node = self.wait_for(role, name)
        action = next((a for a in ("Press", "Toggle") if a in node.actions), None)
        if action is None:
            raise AssertionError(f"{node} has no action")
        if not self._ask(do="act", node=node.number, action=action):
            raise AssertionError(f"{node} refused {action}")
        time.sleep(0.3)

    def placed(self, role, name, seconds=15):
        """Waits until it is laid out and stands still."""
        boxes = [None]

        def still():
            node = self.wait_for(role, name, seconds)
            boxes.append((node.left, node.top, node.width, node.height))
            return node.width > 0 and boxes[-1] == boxes[-2]

        wait_until(still, seconds, f"the place of “{name}”")
        return self.wait_for(role, name)

    def focused(self):
        """The node that has the keyboard; None when there is none."""
        return next((node for node in reversed(self.tree()) if "focused" in node.states and node.role != "frame"), None)


def serve():
    import gi

    gi.require_version("Atspi", "2.0")
    from gi.repository import Atspi, GLib

    known = []

    def described(node, parent):
        states = [state.value_nick for state in node.get_state_set().get_states()]
        action = node.get_action_iface()
        actions = [Atspi.Action.get_action_name(action, at) for at in range(action.get_n_actions())] if action else []
        place = node.get_component_iface()
        extents = place.get_extents(Atspi.CoordType.SCREEN) if place else None
        box = [extents.x, extents.y, extents.width, extents.height] if extents else [0, 0, 0, 0]
        text = node.get_text_iface()
        content = Atspi.Text.get_text(text, 0, Atspi.Text.get_character_count(text)) if text else ""
        return [len(known), parent, node.get_role_name(), node.get_name(), node.get_description(), states, actions, *box,
                content]

    def walk(node, parent, out):
        try:
            out.append(described(node, parent))
            number = len(known)
            known.append(node)
            children = [node.get_child_at_index(at) for at in range(node.get_child_count())]
        except GLib.Error:
            return  # went meanwhile
        for child in children:
            if child is not None:
                walk(child, number, out)

    def tree():
        known.clear()
        desktop = Atspi.get_desktop(0)
        out = []
        for at in range(desktop.get_child_count()):
            application = desktop.get_child_at_index(at)
            if application is not None:
                # Nothing is kept, since nobody listens for changes here.
                application.set_cache_mask(Atspi.Cache.NONE)
                walk(application, -1, out)
        return out

    def act(number, wanted):
        action = known[number].get_action_iface()
        for at in range(action.get_n_actions()):
            if Atspi.Action.get_action_name(action, at) == wanted:
                return Atspi.Action.do_action(action, at)
        return False

    for line in sys.stdin:
        question = json.loads(line)
        try:
            answer = tree() if question["do"] == "tree" else act(question["node"], question["action"])
        except GLib.Error as error:
            answer = [] if question["do"] == "tree" else False
            print(error, file=sys.stderr)
        print(json.dumps(answer), flush=True)


if __name__ == "__main__":
    serve()
