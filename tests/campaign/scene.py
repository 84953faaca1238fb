"""A home with files, on this computer or in a machine folder, and what a bad moment made of it."""

import json
import os
import shutil
import signal
import subprocess

# What has to be stored still, whatever else is.
KEPT = ["/somewhere/precious"]


class Scene:
    def __init__(self, program, folder, kind, copies):
        """kind: "computer" or "folder"; copies: how many files a removal of everything takes."""
        self.program, self.folder, self.kind, self.copies = program, folder, kind, copies
        self.home = f"{folder}/home"
        own = "Library/Application Support/Swabby" if kind == "folder" else ".local/share/Swabby"
        self.data = f"{self.home}/{own}"
        self.preferences = f"{self.home}/Library/Preferences" if kind == "folder" else f"{self.home}/.config/Swabby"
        self.trash = f"{self.home}/.Trash" if kind == "folder" else f"{self.home}/.local/share/Trash"
        self.files, self.points = {}, 0
        self.make()

    def make(self):
        """Everything anew, with some settings and some history."""
        self.wipe()
        downloads = f"{self.home}/Downloads"
        os.makedirs(downloads)
        os.makedirs(f"{self.home}/Desktop")
        if self.kind == "folder":
            with open(f"{self.folder}/machine.json", "w") as machine:
                json.dump({"now": 1_700_000_000}, machine)
        for paper in range(self.copies // 4):
            for number in range(5):
                with open(f"{downloads}/paper {paper} {number}.txt", "w") as file:
                    file.write(f"This is paper {paper}.\n" * 300)
        self.files = {file.path: file.inode() for file in os.scandir(downloads)}
        self.run("settings", "neverRemove", json.dumps(KEPT))
        self.run("watch", "--refreshes", "60" if self.kind == "folder" else "1")
        self.points = len(self.stored("history.json") or [])

    def wipe(self):
        shutil.rmtree(self.folder, ignore_errors=True)

    def start(self, *words, largest_file=None):
        """The program at work. No file of it grows beyond largest_file bytes."""
        def limit():
            if largest_file is not None:
                import resource
                resource.setrlimit(resource.RLIMIT_FSIZE, (largest_file, largest_file))
                signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
        machine = ["--machine", self.folder] if self.kind == "folder" else []
        surroundings = {"HOME": self.home, "PATH": "/usr/bin:/bin", "LC_ALL": "C.UTF-8",
                        "DBUS_SESSION_BUS_ADDRESS": "disabled:"}
        return subprocess.Popen([self.program, *machine, *words], env=surroundings, stdin=subprocess.DEVNULL,
                                stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True,
                                preexec_fn=limit, restore_signals=False)

    def run(self, *words, **limits):
        """What it printed, what it complained of, and its exit status."""
        program = self.start(*words, **limits)
        printed, complaint = program.communicate()
        return printed, complaint, program.returncode

    def ids(self, **limits):
        return [item["id"] for item in json.loads(self.run("items", "--json", **limits)[0] or "[]")]

    def stored(self, name):
        """The JSON of a file of its own, None when there is none or it cannot be read."""
        try:
            with open(f"{self.data}/{name}") as file:
                return json.load(file)
        except (OSError, ValueError):
            return None

    def setting(self, key):
        printed, _, status = self.run("settings", key, "--json")
        return json.loads(printed) if status == 0 else None

    def unreadable(self):
        """How many of its own files lost what they held."""
        history = self.stored("history.json")
        return (self.setting("neverRemove") != KEPT) + (history is None or len(history) < self.points)

    def gone(self):
        """The files that are at their place no more."""
        return {path for path, inode in self.files.items() if inode_of(path) != inode}

    def everything(self):
        return (file for folder, _, _ in os.walk(self.home) for file in os.scandir(folder))

    def astray(self):
        """How many files are in neither place, and how many the Trash or a put-back knows nothing of."""
        there = {file.inode() for file in self.everything()}
        lost = {path for path in self.gone() if self.files[path] not in there}
        unrecorded = set()
        if self.kind == "computer" and os.path.isdir(f"{self.trash}/files"):
            inodes = {inode: path for path, inode in self.files.items()}
            unrecorded = {inodes.get(file.inode()) for file in os.scandir(f"{self.trash}/files")
                          if not os.path.exists(f"{self.trash}/info/{file.name}.trashinfo")}
        self.run("put-back")
        return len(lost), len((self.gone() - lost) | unrecorded)


def inode_of(path):
    try:
        return os.lstat(path).st_ino
    except OSError:
        return None
