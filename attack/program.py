"""Runs the command line and says how it went."""

import contextlib
import os
import resource
import shutil
import signal
import subprocess
import tempfile
import threading
import time
from dataclasses import dataclass
from pathlib import Path


@dataclass
class Outcome:
    args: list
    status: int  # negative: the signal that ended it
    out: bytes
    err: bytes
    seconds: float
    peak: int  # bytes of memory
    late: bool  # it did not end by itself

    def text(self):
        return " ".join(str(arg) for arg in self.args)


@dataclass
class Program:
    path: Path
    folder: Path  # where it runs
    environment: dict

    def run(self, args, *, environment=None, limits=None, seconds=30.0, kill_after=None, kill_with=signal.SIGKILL):
        """ARGS until it ends; LIMITS are pairs for setrlimit. KILL_AFTER seconds it gets the signal KILL_WITH."""

        def set_limits():
            for kind, value in limits or []:
                resource.setrlimit(kind, (value, value))

        with tempfile.TemporaryFile() as out, tempfile.TemporaryFile() as err:
            began = time.monotonic()
            process = subprocess.Popen(
                [self.path, *args], cwd=self.folder, stdin=subprocess.DEVNULL, stdout=out, stderr=err,
                env={**self.environment, **(environment or {})}, preexec_fn=set_limits if limits else None)
            late = threading.Event()

            def kill(how):
                with contextlib.suppress(ProcessLookupError):
                    os.kill(process.pid, how)

            def end():
                late.set()
                kill(signal.SIGKILL)

            # Not by the process' own functions, which would take its end away from wait4.
            timers = [threading.Timer(seconds, end)]
            if kill_after is not None:
                timers.append(threading.Timer(kill_after, kill, [kill_with]))
            for timer in timers:
                timer.start()
            _, state, usage = os.wait4(process.pid, 0)
            process.returncode = os.waitstatus_to_exitcode(state)
            for timer in timers:
                timer.cancel()
            out.seek(0)
            err.seek(0)
            return Outcome([Path(self.path).name, *args], process.returncode, out.read(), err.read(),
                           time.monotonic() - began, usage.ru_maxrss * 1024, late.is_set())


KEPT_OF_A_KIND = 3


class Finds:
    """What was found: how often, and the files that led to the first ones of a kind."""

    def __init__(self, folder):
        self.folder = folder
        self.kinds = {}
        self.lock = threading.Lock()
        shutil.rmtree(folder, ignore_errors=True)

    def count(self):
        return sum(self.kinds.values())

    def add(self, phase, what, outcome, files=()):
        with self.lock:
            kind = f"{phase}: {what}"
            self.kinds[kind] = self.kinds.get(kind, 0) + 1
            if self.kinds[kind] > KEPT_OF_A_KIND:
                return
            number = self.count()
        place = self.folder / f"{number:04}"
        place.mkdir(parents=True)
        for file in files:
            shutil.copytree(file, place / file.name, symlinks=True, dirs_exist_ok=True)
        (place / "what.txt").write_bytes(
            f"{kind}\n{outcome.text()}\nstatus {outcome.status}, {outcome.seconds:.1f} s, {outcome.peak} bytes\n\n".encode()
            + outcome.err[-20000:] + b"\n--\n" + outcome.out[-2000:])
        print(f"FIND {number:04} {kind}: {outcome.text()}", flush=True)


def contents(folder):
    """The files below FOLDER: {relative path: bytes}. Links are said, not followed."""
    found = {}
    for path in sorted(Path(folder).rglob("*")):
        name = str(path.relative_to(folder))
        if path.is_symlink():
            found[name] = b"link to " + os.fsencode(os.readlink(path))
        elif path.is_file():
            found[name] = path.read_bytes()
    return found


def fill(folder, files):
    """Makes FOLDER hold exactly FILES."""
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)
    for name, data in files.items():
        (folder / name).parent.mkdir(parents=True, exist_ok=True)
        (folder / name).write_bytes(data)
