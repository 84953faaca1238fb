"""What a screen reader is told of a program's windows, and the presses that it can make."""

import re
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

PATIENCE_SECONDS = 30

# What a person operates. Each needs a name, and a row of its own where another one has the same.
CONTROLS = {
    "push button", "toggle button", "button menu", "push button menu", "check box", "radio button", "switch",
    "slider", "spin button", "text", "entry", "password text", "editbar", "combo box", "page tab",
    "menu item", "list item", "link",
}
# What only holds others together may be nameless.
FRAMES = {"application", "panel", "filler", "section", "grouping", "layered pane"}


class Node:
    """One thing in a window, as it was told when it was read."""

    def __init__(self, accessible, depth, row):
        states = accessible.get_state_set()
        self.accessible = accessible
        self.depth = depth
        self.row = row
        self.role = accessible.get_role_name()
        self.name = accessible.get_name() or ""
        self.description = accessible.get_description() or ""
        self.shows = states.contains(Atspi.StateType.SHOWING)
        self.is_selected = states.contains(Atspi.StateType.SELECTED)
        self.is_checked = states.contains(Atspi.StateType.CHECKED)
        self.text = ""
        if "Text" in accessible.get_interfaces():
            self.text = Atspi.Text.get_text(accessible, 0, Atspi.Text.get_character_count(accessible))

    def is_control(self):
        return self.role in CONTROLS

    def line(self):
        marks = (" (checked)" if self.is_checked else "") + (" (selected)" if self.is_selected else "")
        said = f' "{self.name}"' + (f" - {self.description}" if self.description else "")
        return "  " * self.depth + self.role + said + marks


class Reader:
    """Reads one program's windows and presses what stands in them."""

    def __init__(self, program):
        Atspi.init()
        self.program = program
        self.application = wait(f"{program} on the accessibility bus", self._find_application)
        # What was told before may not be true any more.
        self.application.set_cache_mask(Atspi.Cache.NONE)

    def _find_application(self):
        return next((child for child in _children(Atspi.get_desktop(0)) if child.get_name() == self.program), None)

    def windows(self):
        return {child.get_name(): child for child in _children(self.application)}

    def dialog(self, window):
        """The sheet that is open over the window; None for none."""
        for child in reversed(_children(self.windows().get(window))):
            if child.get_role_name() == "dialog" and Node(child, 0, None).shows:
                return child
        return None

    def nodes(self, window):
        """Everything that shows in the window of that name, or in the sheet over it."""
        found = []
        for place in below(self.dialog(window) or self.windows().get(window)):
            try:
                found.append(Node(*place))
            except GLib.Error:
                pass  # gone while it was read
        return [node for node in found if node.shows]

    def places(self, window):
        """Where each thing that has a name stands."""
        found = {}
        for node in self.nodes(window):
            box = Atspi.Component.get_extents(node.accessible, Atspi.CoordType.WINDOW)
            found[node.role, node.name] = (box.x, box.y)
        return found

    def find(self, window, name, role=None, is_below=False):
        """The first thing of that name that shows in the window, or in the sheet over it unless it is to be
        below that; "…" stands for any words. None for none."""
        pattern = re.compile(re.escape(name).replace("…", ".*"))
        for place in below(not is_below and self.dialog(window) or self.windows().get(window)):
            if pattern.fullmatch(place[0].get_name() or "") and role in (None, place[0].get_role_name()):
                node = Node(*place)
                if node.shows:
                    return node
        return None

    def await_node(self, window, name, role=None, is_below=False):
        return wait(f'{role or "something"} "{name}" in "{window}"',
                    lambda: self.find(window, name, role, is_below))

    def slide(self, window, name, wanted):
        """Moves a slider to a value, first by that and then by a step, until it says words that begin so."""
        slider = self.await_node(window, name, "slider")
        Atspi.Value.set_current_value(slider.accessible, wanted)
        self.await_described(window, name, str(wanted))
        step = Atspi.Value.get_minimum_increment(slider.accessible)
        self.act(window, name, "slider", "Increase")
        self.await_described(window, name, f"{wanted + step:g}")

    def await_described(self, window, name, start):
        wait(f'"{name}" to be {start}', lambda: self.find(window, name, "slider").description.startswith(start))

    def act(self, window, name, role=None, action="Press", is_below=False):
        """Does what a screen reader's user does to a control, once it is there."""
        node = self.await_node(window, name, role, is_below)
        for index in range(Atspi.Action.get_n_actions(node.accessible)):
            if Atspi.Action.get_action_name(node.accessible, index) == action:
                Atspi.Action.do_action(node.accessible, index)
                return node
        raise AssertionError(f'"{name}" in "{window}" does not know "{action}"')


def _children(accessible):
    places = range(0 if accessible is None else accessible.get_child_count())
    return [child for child in (accessible.get_child_at_index(place) for place in places) if child is not None]


def below(accessible, depth=0, row=None):
    """It and everything in it, each with its depth and the row of a list that it stands in."""
    if accessible is None:
        return
    yield accessible, depth, row
    try:
        # What does not show may still hold something that does: a place without a size of its own.
        row = accessible if accessible.get_role_name() == "list item" else row
        children = _children(accessible)
    except GLib.Error:
        return  # gone while it was read
    for child in children:
        yield from below(child, depth + 1, row)


def wait(what, condition):
    """The first value of the condition that counts as true."""
    deadline = time.monotonic() + PATIENCE_SECONDS
    while time.monotonic() < deadline:
        try:
            value = condition()
        except GLib.Error:
            value = None
        if value:
            return value
        time.sleep(0.05)
    raise AssertionError(f"waited in vain for {what}")


def complaints(nodes, symbols):
    """What is wrong with a window's tree, a sentence each."""
    found = []
    seen = set()
    for node in nodes:
        said = f'{node.role} "{node.name}"'
        if not node.name.strip() and node.role not in FRAMES:
            found.append(f"{node.role} without a name" + (f' in "{node.row.get_name()}"' if node.row else ""))
        if node.role == "unknown":
            found.append(f"nobody can tell what {said} is")
        if node.role == "page tab" and not any(other.is_selected for other in nodes if other.role == "page tab"):
            found.append(f"{said} and no other is the selected one")
        if not node.is_control():
            continue
        if node.name in symbols or re.fullmatch(r"\W+|.*[,:] ?|[,:] .*|.*, ,.*", node.name):
            found.append(f"{said} is named after its symbol, or only half")
        # The same words may stand once in each row.
        key = (id(node.row), node.role, node.name, node.description)
        if key in seen:
            found.append(f"{said} is there twice and nothing tells them apart")
        seen.add(key)
    return found
