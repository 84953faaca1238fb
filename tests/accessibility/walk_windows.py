"""Walks Swabby's windows as a person does who cannot see them, and complains of what was not said.

usage: walk_windows.py SWABBY MACHINE SYMBOLS TREES
"""

import os
import pathlib
import subprocess
import sys

from screen_reader import Reader, complaints, wait
from surroundings import Model, StatusPlace

SECRET = "sk-canary-in-the-coal-mine"
CULPRIT = "Frame Foundry"
COMPOSITOR = "swabby-walk"
ASK, SETTINGS, PANEL = "Ask Swabby", "Settings", "Swabby at a glance"


class Walk:
    def __init__(self, program, machine, symbols, trees):
        self.status_place = StatusPlace()
        address = Model(CULPRIT).address
        self.environment = dict(os.environ, QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1", QT_QPA_PLATFORM="xcb",
                                SWABBY_AI_DIRECT_URL=address, SWABBY_AI_PROXY_URL=address)
        self.command = [program, "--machine", machine, "--run-tools", "--theme", "light"]
        self.start()
        self.symbols = symbols
        self.trees = trees
        self.keyboard = None
        self.problems = []
        self.views = self.controls = 0

    def start(self):
        self.swabby = subprocess.Popen(self.command, env=self.environment)
        self.reader = Reader("swabby")
        self.window = "Overview"

    def start_named(self, window):
        self.start()
        self.window = window
        self.see("Overview", "heading")

    def ends(self):
        if self.swabby.wait(30) != 0:
            self.problems.append(f"it ended with {self.swabby.returncode}")

    def look(self, view, window=None):
        """Writes down what shows, and what is wrong with it."""
        nodes = self.reader.nodes(window or self.window)
        found = complaints(nodes, self.symbols)
        if not any(node.is_control() for node in nodes):
            found.append("nothing here can be operated")
        for node in nodes:
            if SECRET in node.name + node.description + node.text:
                found.append(f"{node.role} tells the secret")
        print(f"\n== {view}", *[node.line() for node in nodes], *[f"!! {text}" for text in found], sep="\n",
              file=self.trees)
        self.problems += [f"{view}: {text}" for text in found]
        self.views += 1
        self.controls += sum(node.is_control() for node in nodes)

    def press(self, name, role="push button", window=None, action="Press"):
        return self.reader.act(window or self.window, name, role, action)

    def see(self, name, role=None, window=None):
        return self.reader.await_node(window or self.window, name, role)

    def sheet_is(self, is_open, window=None):
        wait(f"a sheet to be {is_open}", lambda: bool(self.reader.dialog(window or self.window)) == is_open)

    def grow(self, window):
        """What lies outside the window does not show, so it is made as high as a page can be."""
        command = ["xdotool", "search", "--onlyvisible", "--name", f"^{window}$", "windowsize", "--sync",
                   "1200", "5000"]
        subprocess.run(command, check=True)

    def type(self, keys):
        target = self.keyboard or ["--name", f"^{self.window}$"]
        window = ["search", "--onlyvisible", *target, "windowfocus", "--sync"]
        for command in (window, ["key", keys]):
            subprocess.run(["xdotool", *command], check=True)

    def go_to(self, section):
        self.press(section, "list item")
        self.window = section
        self.see(section, "heading")

    def sheet(self, view, opener, closer, opener_role="push button", window=None):
        self.press(opener, opener_role, window)
        self.sheet_is(True, window)
        self.look(view, window)
        self.press(closer, window=window)
        self.sheet_is(False, window)

    def main_window(self):
        self.see("Welcome to Swabby", "dialog")
        self.look("Welcome")
        self.press("Get started")
        self.sheet_is(False)
        self.grow("Overview")
        self.look("Overview")
        self.sheet("What is going on", "What's going on", "Done")
        self.press("What's going on")
        self.sheet_is(True)
        for role, name in (("list item", "Battery"), ("push button", "Ask AI")):
            self.reader.act("Overview", name, role, is_below=True)
        self.press("Done")
        self.sheet_is(False)
        if set(self.reader.windows()) != {"Overview"}:
            self.problems.append("what lies below a sheet can be pressed")
        for section, sign in (("Battery", "Using the most battery"), ("Network", "Busiest on the network")):
            self.go_to(section)
            self.see(sign, "heading")
            self.look(section)
        self.go_to("Swabby Check")
        self.see("Scan Again", "push button")
        self.look("Swabby Check")

    def speed(self):
        self.go_to("Speed & Running Apps")
        self.see(f"Quit {CULPRIT}", "push button")
        self.look("Speed")
        self.sheet("An explanation", f"What is this? {CULPRIT}", "Done")
        self.sheet("A question before quitting", f"Quit {CULPRIT}", "Cancel")
        self.press(f"More: {CULPRIT}", "push button")
        self.see("Force Quit", "menu item")
        self.look("A menu")
        self.sheet("A question before forcing", "Force Quit", "Cancel", "menu item")
        self.press("By Browser", "page tab")
        self.see("Browser memory usage across all open tabs.")
        self.look("Speed by browser")

    def cleaning(self):
        self.go_to("Storage & Cleanup")
        for title, button in (("Quick Clean", None), ("Duplicates", "Scan for duplicates"),
                              ("Forgotten files", "Scan"), ("App Uninstaller", "Show installed apps")):
            if button:
                self.press(f"{button}: {title}")
            self.see(f"Scan again: {title}", "push button")
        self.press("Show what is behind it…")
        self.see("Hide what is behind it…", "push button")
        self.look("Storage")
        before = self.reader.places(self.window)
        box = self.press("Coding tool cache (pip)", "check box", action="Toggle")
        wait("a ticked box", lambda: self.see(box.name, "check box").is_checked)
        self.problems += [f"{what} moved when a box was ticked" for what, place in
                          self.reader.places(self.window).items() if before.get(what, place) != place]
        self.press("Holiday film.mov ×3", "check box", action="Toggle")
        self.press("Review and clean up")
        self.press("Show what is behind it: Holiday film.mov ×3")
        self.see("Holiday film.mov, stays", "list item")
        self.look("A question before removing")
        self.press("Cancel")
        self.sheet_is(False)
        self.see("Quit: Frame Foundry", "push button")
        self.sheet("A question before uninstalling", "Remove: Vault Line", "Cancel")
        self.go_to("Developer Tools")
        self.press("Scan developer clutter")
        self.see("Remove: Xcode DerivedData", "push button")
        self.look("Developer")
        self.sheet("A question before removing builds", "Remove: Xcode DerivedData", "Cancel")

    def startup(self):
        self.go_to("Startup Items")
        name = self.press("Disable: …").name.partition(": ")[2]
        self.see(f"Turn on again: {name}", "push button")
        self.look("Startup")
        self.press(f"Turn on again: {name}")
        self.see(f"Disable: {name}", "push button")

    def asking(self):
        self.press("Ask AI")
        self.see("Your question", "text", ASK)
        self.look("Ask", ASK)
        self.press("…?", window=ASK)
        self.see(f"Quit {CULPRIT}", "push button", ASK)
        self.look("Ask, answered", ASK)
        self.sheet("Ask, a question before quitting", f"Quit {CULPRIT}", "Cancel", window=ASK)

    def settings(self):
        self.press("Settings")
        for tab, sign in (("General", "Open automatically on login"), ("Thresholds", "Restore defaults"),
                          ("Notifications", "Snooze 2 hours"), ("AI", "Save key")):
            self.press(tab, "page tab", SETTINGS)
            self.see(sign, window=SETTINGS)
            self.look(f"Settings, {tab}", SETTINGS)
        self.press("Thresholds", "page tab", SETTINGS)
        self.reader.slide(SETTINGS, "Speed critical threshold", 75)
        self.press("AI", "page tab", SETTINGS)
        self.press("API key", "text", SETTINGS, "SetFocus")
        subprocess.run(["xdotool", "type", "--delay", "0", SECRET], check=True)
        self.look("Settings, a key in its field", SETTINGS)
        self.press("Save key", window=SETTINGS)
        self.see("Remove key", "push button", SETTINGS)
        self.look("Settings, a key that is kept", SETTINGS)

    def panel(self):
        self.status_place.press()
        head = self.see("…: what's wrong and how to help", "push button", PANEL)
        self.look("Panel", PANEL)
        self.press(head.name, window=PANEL)
        self.see("Warning: Storage space is getting low", "push button", PANEL)
        self.look("Panel, unfolded", PANEL)
        self.press("Battery, …", window=PANEL)
        self.window = "Battery"
        self.see("Battery", "heading")
        self.status_place.press()
        self.press("Quit Swabby", window=PANEL)
        self.ends()

    def without_a_panel(self):
        """Where nothing would be left of Swabby, its last window asks, and can be left."""
        self.status_place.give_up()
        for leave in (lambda: self.type("ctrl+q"), lambda: self.press("Quit Swabby")):
            self.start()
            self.see("Overview", "heading")
            self.type("ctrl+w")
            self.sheet_is(True)
            self.look("The last window")
            leave()
            self.ends()

    def on_wayland(self):
        """A compositor without a panel: every window opens there, is named in its title, and can be left."""
        socket = pathlib.Path(os.environ["XDG_RUNTIME_DIR"], COMPOSITOR)
        compositor = subprocess.Popen(["weston", "--no-config", "--backend=x11-backend.so", f"--socket={COMPOSITOR}",
                                       "--width=1200", "--height=900"], stderr=subprocess.DEVNULL)
        try:
            wait("a compositor", socket.exists)
            self.environment.update(QT_QPA_PLATFORM="wayland", WAYLAND_DISPLAY=COMPOSITOR)
            self.keyboard = ["--class", "Weston"]
            for leave in (lambda: self.type("ctrl+q"), lambda: self.press("Quit Swabby")):
                self.start_named("Overview — Swabby")
                self.type("ctrl+w")
                self.sheet_is(True)
                self.look("The last window on Wayland")
                leave()
                self.ends()
            self.start_named("Overview — Swabby")
            for button, window, sign, key in (("Ask AI", ASK, "Your question", "Escape"),
                                              ("Settings", "Settings — Swabby", "General", "ctrl+q")):
                self.press(button)
                self.see(sign, window=window)
                self.type(key)
            self.ends()
            if left := list(socket.parent.glob("swabby-[0-9a-f]*")):
                self.problems.append(f"it left {left}")
        finally:
            compositor.kill()
            compositor.wait()


def main():
    program, machine, symbols, trees = sys.argv[1:]
    with open(trees, "w", encoding="utf-8") as file:
        walk = Walk(program, machine, set(open(symbols, encoding="utf-8").read().split()), file)
        try:
            for part in (walk.main_window, walk.speed, walk.cleaning, walk.startup, walk.asking, walk.settings,
                         walk.panel, walk.without_a_panel, walk.on_wayland):
                part()
        except AssertionError as problem:
            walk.problems.append(str(problem))
            for window in walk.reader.windows():
                walk.look(f"Where it ended: {window}", window)
        finally:
            walk.swabby.kill()
            walk.swabby.wait()
    for problem in walk.problems:
        print(problem)
    print(f"{walk.views} views with {walk.controls} controls were read.")
    sys.exit(bool(walk.problems))


main()
