#!/usr/bin/python3 -B
"""Fills the disk under Swabby's terminal program, kills it and sets it against itself, and counts what is lost.

Prints a line for each kind of trouble, and ends with 1 when anything was lost or claimed that is not so:
files of its own that cannot be read or lost what they held, files that are neither at their place nor in the
Trash, files in the Trash that "put-back" or the Trash itself knows nothing of, and changes that it said, or let
believe, were made.
"""

import argparse
import json
import os
import random
import signal
import sys
import tempfile
import time

from full_disk import Ballast, remove_disk, small_disk
from scene import Scene

HEAD = ("tries", "unreadable", "in neither place", "unrecorded", "claimed, not so")


class Count:
    """What became of the tries of one kind."""

    def __init__(self, kind):
        self.kind, self.figures = kind, [0] * len(HEAD)

    def add(self, scene, is_untrue=False, tries=1):
        """Looks at what they left, and makes the scene anew when something is wrong with it. Whether all is
        well."""
        found = [scene.unreadable(), *scene.astray(), int(is_untrue)]
        self.figures = [sum(pair) for pair in zip(self.figures, [tries, *found])]
        if any(found):
            scene.make()
        return not any(found)

    def line(self):
        return f"{self.kind:46}" + "".join(f"{figure:>{len(head) + 3}}" for figure, head in zip(self.figures, HEAD))


# Each does one thing, and says whether all of it was done and whether it claimed more than it did.

def change_setting(scene, **limits):
    value = 90 if scene.setting("cpuYellow") == 80 else 80
    _, _, status = scene.run("settings", "cpuYellow", str(value), **limits)
    return status == 0, (scene.setting("cpuYellow") == value) != (status == 0)


def refresh(scene, **limits):
    before = len(scene.stored("history.json") or [])
    complaint = scene.run("watch", "--refreshes", "1", **limits)[1]
    is_stored = len(scene.stored("history.json") or []) > before
    return is_stored, not is_stored and not complaint


def remove(scene, **limits):
    ids = scene.ids()
    printed, _, status = scene.run("remove", "--yes", "--json", *ids, **limits)
    gone = len(scene.gone())
    is_claimed = status == 0 and json.loads(printed)["left"] == 0
    return gone == scene.copies, is_claimed and gone < scene.copies


def fill_disk(action, scene, steps, starve):
    """With ever less hunger, until all is well three times in a row."""
    count = Count(f"{starve.__doc__}: {action.__name__.replace('_', ' ')}, {scene.kind}")
    in_a_row = 0
    for step in steps:
        is_whole, is_untrue = starve(action, scene, step)
        is_well = count.add(scene, is_untrue)
        in_a_row = in_a_row + 1 if is_whole and is_well else 0
        if in_a_row == 3:
            break
    return count


def with_small_files(action, scene, size):
    """no file grows"""
    return action(scene, largest_file=size)


def with_pages(action, scene, pages):
    """full disk"""
    return starved(action, scene, pages=pages)


def with_names(action, scene, names):
    """no new files"""
    return starved(action, scene, names=names)


def starved(action, scene, **left):
    ballast = Ballast(os.path.dirname(scene.folder))
    ballast.leave(**left)
    try:
        return action(scene)
    finally:
        ballast.drop()


def stamps(folders):
    return [os.stat(folder).st_mtime_ns if os.path.isdir(folder) else 0 for folder in folders]


def begin(scene, words, watched):
    """The program, and when it first changed one of the folders or ended."""
    before = stamps(watched)
    program = scene.start(*words)
    while program.poll() is None and stamps(watched) == before:
        pass
    return program, time.perf_counter()


def end(*programs):
    for program in programs:
        program.communicate()


def kill(kind, scene, prepare, watched, wanted, chance):
    """Kills the program at any moment between its first change in one of the folders and its end."""
    count = Count(f"kill -9: {kind}, {scene.kind}")
    longest = 0.02
    for _ in range(20 * wanted):
        program, began = begin(scene, prepare(), watched)
        moment = began + longest * chance.random()
        while program.poll() is None and time.perf_counter() < moment:
            pass
        program.kill()
        end(program)
        # What was done before it could be killed was no try, and the next one shall come earlier.
        was_killed = program.returncode < 0
        longest *= 1.05 if was_killed else 0.9
        count.add(scene, tries=int(was_killed))
        if count.figures[0] == wanted:
            return count
    raise SystemExit(f"{count.kind}: it always ended before it could be killed")


def settings_at_once(scene, tries):
    count = Count(f"at once: four changes of settings, {scene.kind}")
    for number in range(tries):
        values = {key: number + 1 for key in ("cpuYellow", "cpuRed", "memYellow", "memRed")}
        end(*[scene.start("settings", key, str(value)) for key, value in values.items()])
        count.add(scene, any(scene.setting(key) != value for key, value in values.items()))
    return count


def hold(program):
    """Stops it where it is; whether it had not ended before."""
    program.send_signal(signal.SIGSTOP)
    held = os.waitid(os.P_PID, program.pid, os.WSTOPPED | os.WEXITED | os.WNOWAIT)
    return held.si_code == os.CLD_STOPPED


def removals_at_once(scene, tries, chance):
    """Each begins before the other is done: a later one rightly has a record of its own, and that alone."""
    count = Count(f"at once: two removals and a put-back, {scene.kind}")
    downloads = [f"{scene.home}/Downloads"]
    for _ in range(20 * tries):
        ids = scene.ids()
        chance.shuffle(ids)
        first, _ = begin(scene, ["remove", "--yes", *ids[::2]], downloads)
        if not hold(first):
            end(first)
            scene.make()
            continue
        second, moment = begin(scene, ["remove", "--yes", *ids[1::2]], downloads)
        first.send_signal(signal.SIGCONT)
        moment += chance.random() / 20
        while time.perf_counter() < moment:
            pass
        end(first, second, scene.start("put-back"))
        count.add(scene)
        if count.figures[0] == tries:
            return count
    raise SystemExit(f"{count.kind}: the first always ended before it could be held")


def campaign(program, place, is_short, chance):
    """The counts, one after the other."""
    size_step, saves, removals, rounds = (509, 20, 10, 5) if is_short else (61, 250, 100, 50)
    os.mkdir(f"{place}/disk")
    has_small_disk = small_disk(f"{place}/disk")
    if not has_small_disk:
        print("skipped: a disk of its own that is full, since nothing may be mounted here")
    for kind in ("folder", "computer"):
        few = Scene(program, f"{place}/disk/{kind}", kind, copies=16)
        for action in (change_setting, refresh, remove):
            yield fill_disk(action, few, range(0, 1 << 20, size_step), with_small_files)
            if has_small_disk:
                yield fill_disk(action, few, range(500), with_pages)
                yield fill_disk(action, few, range(500), with_names)
        few.wipe()

        many = Scene(program, f"{place}/{kind}", kind, copies=160)
        def changing(scene=many):
            return ["settings", "cpuYellow", str(chance.randrange(1, 99))]
        def removing(scene=many):
            return ["remove", "--yes", *scene.ids()]
        def putting_back(scene=many):
            end(scene.start(*removing()))
            return ["put-back"]
        yield kill("settings change", many, changing, [many.preferences], saves, chance)
        if kind == "folder":
            yield kill("refresh", many, lambda: ["watch", "--refreshes", "9"], [many.data], 2 * saves, chance)
        downloads = [f"{many.home}/Downloads"]
        yield kill("removal", many, removing, downloads, removals, chance)
        yield kill("put-back", many, putting_back, downloads, removals, chance)
        yield settings_at_once(many, rounds)
        yield removals_at_once(many, rounds, chance)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("swabbyctl", type=os.path.abspath)
    parser.add_argument("--short", action="store_true", help="about a tenth of the tries")
    parser.add_argument("--seed", type=int, default=1, help="of the moments to kill at and the orders")
    given = parser.parse_args()
    with tempfile.TemporaryDirectory(prefix="swabby-campaign.") as place:
        print(f"{'':46}" + "".join(f"{head:>{len(head) + 3}}" for head in HEAD))
        is_good = True
        for count in campaign(given.swabbyctl, place, given.short, random.Random(given.seed)):
            print(count.line(), flush=True)
            is_good = is_good and not any(count.figures[1:])
        remove_disk(f"{place}/disk")
    return 0 if is_good else 1


if __name__ == "__main__":
    sys.exit(main())
