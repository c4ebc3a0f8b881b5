"""The attack on the editor: it is driven by keys on a display of its own, killed at any moment, its disk is full, its folders go, and
another program changes its files. What it is told to move is counted, so that what is lost afterwards is known. Started by
scripts/attack-editor."""

import argparse
import contextlib
import os
import random
import shutil
import signal
import struct
import subprocess
import sys
import time
from pathlib import Path

from program import Finds, Outcome, Program, contents, fill

STEP = 5  # of a move by a key, as the settings have it
MAIN_WINDOW = "Veldra - ["  # its name begins so as long as there is a document
FIRST_VERTEX = 20  # where the model's file has its coordinates
LONGEST_COPY_PAUSE = 12.0  # seconds after a change that its recovery copy is there


class Display:
    """A screen and a window manager for one editor at a time."""

    def __init__(self):
        read, write = os.pipe()
        self.server = subprocess.Popen(["Xvfb", "-displayfd", str(write), "-screen", "0", "1280x1024x24", "-nolisten", "tcp",
                                       "-noreset"],
                                       pass_fds=[write], stderr=subprocess.DEVNULL)
        os.close(write)
        self.environment = {**os.environ, "DISPLAY": ":" + os.read(read, 20).decode().strip(), "WAYLAND_DISPLAY": "",
                            "LIBGL_ALWAYS_SOFTWARE": "1", "QT_QPA_PLATFORM": "xcb"}
        self.manager = subprocess.Popen(["openbox"], env=self.environment, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        while not self.do("get_desktop"):  # until the window manager is there
            time.sleep(0.05)

    def close(self):
        self.manager.kill()
        self.server.kill()

    def do(self, *args):
        return subprocess.run(["xdotool", *map(str, args)], env=self.environment, capture_output=True, text=True).stdout.split()

    def windows(self):
        """The names of the windows, the newest last."""
        return [" ".join(self.do("getwindowname", window)) for window in self.do("search", "--onlyvisible", "--name", ".")]

    def active(self):
        return " ".join(self.do("getactivewindow", "getwindowname"))


class Editor:
    """One run of the editor on FILES."""

    def __init__(self, world, files, while_full=None):
        self.display = world.display
        world.runs += 1
        self.moves = []  # when each move was asked for
        self.astray = 0  # moves that a question may have got in place of the view
        environment = {**world.display.environment, **world.environment}
        if while_full:
            environment |= {"LD_PRELOAD": os.fspath(world.shim), "FAILCALLS_WHILE": os.fspath(while_full), "FAILCALLS_ERRNO": "28"}
        self.log = open(world.folder / "editor.log", "wb")
        self.process = subprocess.Popen([world.editor, *files], cwd=world.samples, env=environment, stdin=subprocess.DEVNULL,
                                        stdout=self.log, stderr=self.log)

    def wait_for(self, text, seconds=20.0):
        """Whether a window whose name holds TEXT comes to the front."""
        until = time.monotonic() + seconds
        while time.monotonic() < until:
            if text in self.display.active():
                return True
            time.sleep(0.05)
        return False

    def key(self, *keys):
        self.display.do("key", "--delay", 5, *keys)

    def move(self):
        if MAIN_WINDOW not in self.display.active():
            self.dismiss()
        self.moves.append(time.monotonic())
        self.key("x")

    def dismiss(self):
        """Answers what is asked in the way that changes nothing, until the main window is in front again."""
        asked = 0
        while asked < 10 and MAIN_WINDOW not in self.display.active():
            self.key("Escape")
            time.sleep(0.2)
            asked += 1
        self.astray += 2 * asked  # the one before, and one while it closed
        return asked

    def save(self):
        """Whether it comes to that; also over what was saved between the last copy and the end."""
        self.key("ctrl+s")
        until = time.monotonic() + 10
        while time.monotonic() < until:
            time.sleep(0.2)
            title = self.display.active()
            if MAIN_WINDOW in title and "*" not in title:
                return True
            if MAIN_WINDOW not in title:
                self.key("alt+y")
        return False

    def end(self, how=signal.SIGKILL):
        self.process.send_signal(how)
        self.process.wait()
        self.log.close()


class World:
    def __init__(self, folder, programs, shim):
        self.folder = folder.resolve()
        shutil.rmtree(self.folder, ignore_errors=True)
        self.folder.mkdir(parents=True)
        self.samples = self.folder / "samples"
        subprocess.run([programs / "make_samples", self.samples], check=True, stdout=subprocess.DEVNULL)
        self.editor = programs / "veldra"
        self.shim = shim
        self.data = self.folder / "data"
        self.work = self.folder / "work"
        self.file = self.work / "M.BIN"
        self.environment = {"VELDRA_DATA": os.fspath(self.data), "LC_ALL": "C.UTF-8", "HOME": os.fspath(self.folder)}
        self.cli = Program(programs / "veldra-cli", self.samples, {"PATH": os.environ["PATH"], **self.environment})
        self.display = Display()
        self.finds = Finds(self.folder / "finds")
        model = (self.samples / "MODELS/TRUCK.BIN").read_bytes()
        self.files = {"M.BIN": model, "M.BIN.info": (self.samples / "MODELS/TRUCK.BIN.info").read_bytes()}
        self.settings = (self.samples / "Veldra.cfg").read_bytes()
        self.runs = self.moves = self.found = self.packed = 0
        self.start_x = self.x_of(model)

    @staticmethod
    def x_of(model):
        return struct.unpack_from("<i", model, FIRST_VERTEX)[0]

    def moved(self):
        """How many moves the file holds, or None when it is not the model with some moves."""
        data = self.file.read_bytes()
        other = self.files["M.BIN"]
        # The bounds and normals may follow the vertex, so only the counts are compared beside it.
        x = self.x_of(data)
        is_model = len(data) == len(other) and data[:FIRST_VERTEX] == other[:FIRST_VERTEX] and (x - self.start_x) % STEP == 0
        return (x - self.start_x) // STEP if is_model else None

    def prepare(self):
        fill(self.work, self.files)
        fill(self.data, {})
        (self.samples / "Veldra.cfg").write_bytes(self.settings)

    def open(self, **how):
        """An editor in whose view the first vertex is the current one; None when it does not come up."""
        editor = Editor(self, [self.file], **how)
        if not editor.wait_for(MAIN_WINDOW):
            editor.end()
            return None
        editor.key("Tab")
        return editor


class Round:
    def __init__(self, world):
        self.world = world

    def find(self, what, editor):
        log = (self.world.folder / "editor.log").read_bytes()
        self.world.finds.add(self.name, what, Outcome(["veldra", self.world.file], editor.process.poll() or 0, b"", log, 0, 0, False),
                             [self.world.work, self.world.data])

    def work_a_while(self, editor, random, seconds, saves=True):
        until = time.monotonic() + seconds
        while time.monotonic() < until and editor.process.poll() is None:
            editor.move()
            if saves and random.random() < 0.08:
                editor.key("ctrl+s")
            time.sleep(random.random() * 0.08)

    def judge_recovered(self, editor, at_least, at_most):
        """What the next start finds of it: the file as it was saved or a copy that is newer."""
        world = self.world
        saved = world.moved()
        outcome = world.cli.run(["info", world.file])
        if outcome.status != 0 or saved is None:
            return self.find("the file is broken", editor)
        has_copies = any((world.data / "recovery").rglob("*.copy"))
        next_editor = Editor(world, [world.file])
        if has_copies and next_editor.wait_for("Recover Documents"):
            next_editor.key("Return")
        elif has_copies:
            self.find("copies are not offered", next_editor)
        if not next_editor.wait_for(MAIN_WINDOW):
            self.find("does not start again", next_editor)
            return next_editor.end()
        time.sleep(0.3)
        # So that there is something to save in any case; the move is taken back again.
        next_editor.key("Tab", "x", "shift+x")
        if not next_editor.save():
            self.find("cannot be saved", next_editor)
        next_editor.key("ctrl+q")
        with contextlib.suppress(subprocess.TimeoutExpired):
            next_editor.process.wait(20)
        names = world.display.windows()
        next_editor.end()
        if names:
            return self.find("does not end: " + ", ".join(names), next_editor)
        if set(contents(world.work)) != set(world.files):
            self.find("other files are left", editor)
        found = world.moved()
        world.moves += at_most
        world.found += found or 0
        if found is None or found < at_least or found > at_most:
            self.find(f"{at_least} to {at_most} moves were made, {saved} of them saved, {found} found again", next_editor)


class Killed(Round):
    """Killed while one edits and saves."""
    name = "killed"

    def once(self, random):
        self.world.prepare()
        editor = self.world.open()
        if editor is None:
            return self.world.finds.add(self.name, "did not start", Outcome(["veldra"], 0, b"", b"", 0, 0, False))
        self.work_a_while(editor, random, random.choice([1, 3, 6, 14]) * random.random() + 0.2)
        now = time.monotonic()
        editor.end(random.choice([signal.SIGKILL, signal.SIGKILL, signal.SIGTERM]))
        by_signal = editor.process.returncode == 0
        sure = len(editor.moves) if by_signal else sum(now - at > LONGEST_COPY_PAUSE for at in editor.moves)
        # A program that is told to quit has done what it had read of the keyboard.
        self.judge_recovered(editor, max(0, sure - 3) if by_signal else sure, len(editor.moves))


class DiskFull(Round):
    """No byte can be written for a while: everything is said, nothing is lost."""
    name = "disk full"

    def once(self, random):
        world = self.world
        world.prepare()
        full = world.folder / "full"
        full.unlink(missing_ok=True)
        editor = world.open(while_full=full)
        self.work_a_while(editor, random, random.random(), saves=False)
        full.touch()
        self.work_a_while(editor, random, random.random(), saves=False)
        editor.key("ctrl+s")
        time.sleep(0.8)
        if editor.dismiss() == 0:
            self.find("a save that failed says nothing", editor)
        if world.moved() != 0 or set(contents(world.work)) != set(world.files):
            self.find("the old files are not whole", editor)
        self.work_a_while(editor, random, random.random() * 4, saves=False)
        full.unlink()
        editor.key("ctrl+s")
        time.sleep(0.8)
        if editor.dismiss() > 0 or world.moved() != len(editor.moves):
            self.find(f"{len(editor.moves)} moves, {world.moved()} saved afterwards", editor)
        editor.end()


class FolderGone(Round):
    """The folder of the file goes away and comes back; the folder of the recovery copies goes for good."""
    name = "folder gone"

    def once(self, random):
        world = self.world
        world.prepare()
        editor = world.open()
        away = world.folder / "away"
        shutil.rmtree(away, ignore_errors=True)
        self.work_a_while(editor, random, random.random(), saves=False)
        world.work.rename(away)
        if random.random() < 0.5:
            shutil.rmtree(world.data)
        self.work_a_while(editor, random, random.random() * 3, saves=False)
        editor.dismiss()
        editor.key("ctrl+s")
        time.sleep(0.8)
        editor.dismiss()
        if world.work.exists():
            shutil.rmtree(world.work)
        away.rename(world.work)
        time.sleep(random.random() * 2)
        editor.dismiss()
        self.work_a_while(editor, random, 0.5, saves=False)
        time.sleep(random.choice([0, LONGEST_COPY_PAUSE]))
        now = time.monotonic()
        editor.end()
        sure = max(0, sum(now - at > LONGEST_COPY_PAUSE for at in editor.moves) - editor.astray)
        self.judge_recovered(editor, sure, len(editor.moves))


class OtherWriter(Round):
    """Another program writes the file while there is unsaved work in it: both are kept."""
    name = "other writer"

    def once(self, random):
        world = self.world
        world.prepare()
        editor = world.open()
        self.work_a_while(editor, random, random.random() * 2, saves=False)
        world.cli.run(["edit", world.file, world.file, "--scale", "2,2,2"])
        foreign = contents(world.work)
        self.work_a_while(editor, random, random.random() * 2, saves=False)
        time.sleep(1.5)
        editor.dismiss()
        editor.key("ctrl+s")
        time.sleep(0.8)
        if editor.dismiss() == 0:
            self.find("is saved over without a question", editor)
        if contents(world.work) != foreign:
            self.find("the other program's file is gone", editor)
        moves = len(editor.moves)
        editor.end(signal.SIGTERM)
        copies = any((world.data / "recovery").rglob("*.copy"))
        if moves and not copies:
            self.find("no copy of the unsaved work", editor)


class Packing(Round):
    """Killed while an archive is written over another."""
    name = "packing"

    def once(self, random):
        world = self.world
        world.prepare()
        target = world.samples / "OUT.POD"
        old = b"PODold " * 1000
        target.write_bytes(old)
        truck = sorted(world.samples.rglob("*.TRK"))[0]
        editor = Editor(world, [truck])
        if not editor.wait_for("Truck Editor"):
            self.find("the truck does not open: " + ", ".join(world.display.windows()), editor)
            return editor.end()
        editor.key("ctrl+p")
        if not editor.wait_for("Pack Truck"):
            self.find("nothing to pack: " + ", ".join(world.display.windows()), editor)
            return editor.end()
        editor.key("alt+w")
        editor.wait_for("Write Archive")
        time.sleep(0.3)
        editor.key("ctrl+a")
        world.display.do("type", "--delay", 2, os.fspath(target))
        editor.key("Return")
        until = time.monotonic() + 10
        while len(world.display.windows()) < 4 and time.monotonic() < until:  # the question whether to write over it
            time.sleep(0.05)
        editor.key("alt+y")
        time.sleep(random.random() ** 2)
        editor.end()
        data = target.read_bytes()
        world.packed += data != old
        if data != old and world.cli.run(["pod", "test", target]).status != 0:
            self.find("the archive is neither the old nor a new one", editor)


KINDS = [(Killed, 0.6), (Packing, 0.15), (DiskFull, 0.1), (FolderGone, 0.08), (OtherWriter, 0.07)]


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--runs", type=int, required=True)
    parser.add_argument("--seed", type=int, required=True)
    parser.add_argument("--folder", type=Path, required=True)
    parser.add_argument("--programs", type=Path, required=True)
    parser.add_argument("--shim", type=Path, required=True)
    options = parser.parse_args()
    world = World(options.folder, options.programs.resolve(), options.shim.resolve())
    print(f"seed {options.seed}", flush=True)
    chance = random.Random(options.seed)
    try:
        for kind, part in KINDS:
            attack = kind(world)
            began = time.monotonic()
            runs = max(1, round(options.runs * part))
            for _ in range(runs):
                attack.once(chance)
            print(f"{kind.name:<16} {runs:>6} runs  {time.monotonic() - began:>6.0f} s", flush=True)
    finally:
        world.display.close()
    print(f"after kills {world.found} of {world.moves} moves were found again; {world.packed} archives were written before the kill; {world.runs} starts")
    for kind, count in world.finds.kinds.items():
        print(f"found {count:>6} times: {kind}")
    return 1 if world.finds.kinds else 0


if __name__ == "__main__":
    sys.exit(main())
