"""Whatever happens while files are written, each set of files that belong together is the whole old or the whole new one."""

import errno
import os
import resource
import signal
import threading
import time
from dataclasses import dataclass, field

from program import contents, fill

ERRORS = [errno.ENOSPC, errno.EIO, errno.EACCES, errno.EDQUOT, errno.EROFS]


@dataclass
class Case:
    """A command that writes into the folder "{o}"."""
    name: str
    args: list
    old_args: list = None  # what made the files that it replaces; without it they hold nothing of sense
    each_alone: bool = False  # its files do not belong together
    reads_back: list = None  # what opens the result, and may finish or take back what was interrupted
    draws: bool = False  # with a driver of OpenGL, which does not live through a lack of memory
    several_sets: bool = False  # after a kill each file is an old or a new one
    changes: bool = False  # what the old command has made, which may not be possible twice
    seconds: float = 0  # that it takes
    new: dict = field(default_factory=dict)
    old: dict = field(default_factory=dict)


def cases(world):
    s = world.samples
    other = sorted(p for p in (s / "MODELS").glob("*.BIN") if p.name != "TRUCK.BIN")[0]
    model = ["info", "{o}/m.bin"]
    archive = sorted(s.glob("*.POD"))[0]
    picked = [str(p) for p in sorted((s / "ART").glob("*"))[:8]]
    grouped = world.grouped
    return [
        Case("edit", ["edit", grouped[0], "{o}/m.bin", "--scale", "2,2,2"], ["edit", grouped[1], "{o}/m.bin", "--center"], False, model),
        Case("convert", ["--no", "convert", grouped[0], "{o}/m.bin", "--to", "mtm"], ["edit", grouped[1], "{o}/m.bin", "--center"],
             False, model),
        Case("without groups", ["edit", str(other), "{o}/m.bin", "--center"], ["edit", grouped[1], "{o}/m.bin", "--center"], False, model),
        Case("wavefront", ["--no", "convert", grouped[0], "{o}/m.obj", "--to", "obj"]),
        Case("import", ["import", world.mesh, "{o}/m.bin", "--texture", world.texture], ["edit", grouped[1], "{o}/m.bin", "--center"],
             False, model),
        Case("convert with materials", ["--no", "convert", grouped[0], "{o}/m.obj", "--to", "obj", "--materials"], several_sets=True),
        Case("import with pictures", ["import", world.rich_mesh, "{o}/m.bin", "--pictures", "{o}", "--fit", "450"],
             ["edit", grouped[1], "{o}/m.bin", "--center"], False, model, several_sets=True),
        Case("import of glTF", ["import", world.gltf, "{o}/m.bin", "--pictures", "{o}", "--scale", "105"],
             ["edit", grouped[1], "{o}/m.bin", "--center"], False, model, several_sets=True),
        Case("edit all", ["edit", grouped[0], "{o}/m.bin", "--fit", "300", "--mirror", "x", "--rotate", "y,30", "--merge", "3", "--map", "box"],
             ["edit", grouped[1], "{o}/m.bin", "--center"], False, model),
        Case("shape", ["shape", "sphere", "{o}/m.bin", "--texture", world.texture, "--into", grouped[0]],
             ["edit", grouped[1], "{o}/m.bin", "--center"], False, model),
        Case("texture import", ["texture", "import", world.picture, "{o}/T.RAW"],
             ["texture", "import", world.other_picture, "{o}/T.RAW"], False, ["texture", "export", "{o}/T.RAW", "/dev/null"]),
        Case("texture export", ["texture", "export", world.texture, "{o}/t.png"]),
        Case("pod create", ["pod", "create", "{o}/a.pod", *picked]),
        *[Case(f"pod {args[0]}", ["pod", args[0], "{o}/a.pod", *args[1:]], ["pod", "create", "{o}/a.pod", *picked], changes=True)
          for args in (["add", picked[2], "--as", "ART\\NEW.RAW"], ["remove", os.path.basename(picked[0])],
                       ["rename", f"ART\\{os.path.basename(picked[0])}", "ART\\NEW.RAW"],
                       ["replace", os.path.basename(picked[0]), picked[1]])],
        Case("pod extract", ["pod", "extract", str(archive), "{o}", "--overwrite", "all"], None, True),
        Case("truck rewrite", ["--yes", "truck", "rewrite", str(sorted(s.rglob("*.TRK"))[0]), "{o}/t.trk"]),
        Case("json", ["json", grouped[0], "{o}/m.json"]),
        Case("render", ["render", grouped[0], "{o}/m.png", "--size", "64x64"], draws=True),
    ]


class Writes:
    """What the phases below share."""

    def __init__(self, world):
        self.world = world
        self.folder = world.scratch(type(self).__name__)
        self.out = self.folder / "out"
        self.cases = cases(world)
        for case in self.cases:
            fill(self.out, {})
            if case.changes:
                self.must(case.old_args)
            case.seconds = self.must(case.args).seconds
            case.new = contents(self.out)
            fill(self.out, {})
            if case.old_args:
                self.must(case.old_args)
            case.old = contents(self.out) if case.old_args else {name: b"old " * 500 for name in case.new}

    def run(self, seconds, random):
        """Tries once, with a case that is drawn, until the time is over. Returns how often."""
        until = time.monotonic() + seconds
        runs = 0
        while runs == 0 or time.monotonic() < until:
            self.once(random)
            runs += 1
        return runs

    def args(self, args):
        return [argument.replace("{o}", os.fspath(self.out)) for argument in map(str, args)]

    def must(self, args):
        outcome = self.world.release.run(self.args(args))
        if outcome.status != 0:
            raise SystemExit(f"{outcome.text()} fails by itself:\n{outcome.err.decode(errors='replace')}")
        return outcome

    def find(self, what, outcome):
        self.world.finds.add(self.name, what, outcome, [self.out])

    def is_whole(self, case, files, killed=False):
        if case.each_alone or (killed and case.several_sets):
            return all(files.get(name) in (case.old.get(name), case.new[name]) for name in case.new)
        return files in (case.old, case.new)

    def only_own(self, case, files):
        """Without what an interrupted program may leave for the next one to clear away."""
        return {name: data for name, data in files.items() if name in case.old or name in case.new}

    def judge_end(self, case, outcome, may_do_without=False):
        """Of a program that ended by itself. MAY_DO_WITHOUT what it could not read (groups, a colour table) when it says so."""
        files = contents(self.out)
        if may_do_without and outcome.status == 0 and outcome.err.strip() and set(files) <= set(case.old) | set(case.new):
            return
        if outcome.late or outcome.status not in (0, 1, 2):
            self.find(f"{case.name} ends with status {outcome.status}", outcome)
        elif self.only_own(case, files) != files:
            self.find(f"{case.name} leaves other files", outcome)
        elif not self.is_whole(case, files):
            self.find(f"{case.name} leaves neither the old nor the new files", outcome)
        elif outcome.status == 0 and files != case.new:
            self.find(f"{case.name} says that it is done and is not", outcome)
        elif outcome.status != 0 and not case.each_alone and files == case.new != case.old:
            self.find(f"{case.name} says that it failed, and the files are the new ones", outcome)
        elif outcome.status != 0 and not outcome.err.strip():
            self.find(f"{case.name} fails without a word", outcome)

    def judge_kill(self, case, outcome):
        """Of a program that was killed: after the next one has read the files they are whole; after the next one has written them,
        nothing else is left."""
        if case.reads_back:
            self.world.release.run(self.args(case.reads_back))
        if not self.is_whole(case, self.only_own(case, contents(self.out)), killed=True):
            self.find(f"{case.name} killed: neither the old nor the new files", outcome)
            return
        if case.changes and contents(self.out) == case.new:
            return
        outcome = self.world.release.run(self.args(case.args))
        if outcome.status != 0 or contents(self.out) != case.new:
            self.find(f"{case.name} after one that was killed: not what it writes", outcome)


class FailingCalls(Writes):
    """Each call that changes the disk, each that reads, and some that take memory, fails once."""
    name = "failing calls"

    def run(self, seconds, random):
        runs = 0
        until = time.monotonic() + seconds
        # Round by round, so that each command gets its share; a call's number grows until there is no such call any more.
        plans = [[case, kind, 0, random.choice(ERRORS)] for case in self.cases for kind in ("write", "read")]
        memory = [case for case in self.cases if not case.draws]
        calls_of = {}
        while time.monotonic() < until and (plans or memory):
            for plan in list(plans):
                case, kind, number, error = plan
                plan[2] = number = number + 1
                runs += 1
                if self.one(case, kind, number, errno.EIO if kind == "read" else error) < number:
                    plans.remove(plan)
                if time.monotonic() >= until:
                    break
            for case in memory if time.monotonic() < until else []:
                runs += 1
                known = calls_of.get(case.name, 1 << 40)
                made = self.one(case, "memory", random.randint(1, min(known, 20000)), errno.ENOMEM)
                calls_of[case.name] = max(made, 1)
        return runs

    def one(self, case, kind, number, error):
        fill(self.out, case.old)
        counter = self.folder / "calls"
        counter.unlink(missing_ok=True)
        outcome = self.world.release.run(self.args(case.args), environment={
            "LD_PRELOAD": os.fspath(self.world.shim), "FAILCALLS_KIND": kind, "FAILCALLS_AT": str(number),
            "FAILCALLS_ERRNO": str(error), "FAILCALLS_COUNT": os.fspath(counter),
            "FAILCALLS_BELOW": os.fspath(self.world.folder)})
        self.judge_end(case, outcome, may_do_without=kind == "read")
        return int(counter.read_text()) if counter.exists() else number


class Kills(Writes):
    """Killed at any moment, for good or in a way that lets it clear up."""
    name = "kills"

    def once(self, random):
        case = random.choice(self.cases)
        fill(self.out, case.old)
        how = random.choice([signal.SIGKILL, signal.SIGKILL, signal.SIGTERM, signal.SIGINT, signal.SIGHUP])
        outcome = self.world.release.run(self.args(case.args), kill_after=random.random() * case.seconds * 1.1, kill_with=how)
        files = contents(self.out)
        if how != signal.SIGKILL and self.only_own(case, files) != files:
            self.find(f"{case.name} ended by signal {how:d} leaves other files", outcome)
        self.judge_kill(case, outcome)


class Races(Writes):
    """Several programs that write the same files at once."""
    name = "races"

    def once(self, random):
        case = random.choice([case for case in self.cases if case.old_args and not case.several_sets])
        fill(self.out, case.old)
        outcomes = []
        threads = [threading.Thread(target=lambda args=args: outcomes.append(self.world.release.run(self.args(args))))
                   for args in [case.args, case.old_args] * 2]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        for outcome in outcomes:
            if outcome.late or outcome.status not in (0, 1):
                self.find(f"{case.name} beside others ends with status {outcome.status}", outcome)
        if contents(self.out) not in (case.old, case.new):
            self.find(f"{case.name} beside others: files of two savers", outcomes[0])


class Limits(Writes):
    """Too little memory, too few files, a limit on their size."""
    name = "limits"

    def once(self, random):
        case = random.choice(self.cases)
        fill(self.out, case.old)
        limit = random.choice([(resource.RLIMIT_AS, random.randint(40 << 20, 400 << 20)),
                               (resource.RLIMIT_FSIZE, random.randint(0, 100000)),
                               (resource.RLIMIT_NOFILE, random.randint(5, 16))])
        if case.draws and limit[0] == resource.RLIMIT_AS:
            return
        outcome = self.world.release.run(self.args(case.args), limits=[limit])
        # What is too little for the system's loader is not the program's to answer.
        if outcome.status == 127 or b"error while loading shared libraries" in outcome.err:
            return
        self.judge_end(case, outcome)


class PlantedLinks(Writes):
    """Folders that become links while an archive is extracted into them."""
    name = "planted links"

    def once(self, random):
        fill(self.out, {})
        outside = self.folder / "outside"
        fill(outside, {})
        stop = threading.Event()

        def swap():
            folder, aside = self.out / "DATA", self.folder / "aside"
            while not stop.is_set():
                try:
                    folder.rename(aside)
                    folder.symlink_to(outside)
                    folder.unlink()
                    aside.rename(folder)
                except OSError:
                    pass

        thread = threading.Thread(target=swap)
        thread.start()
        outcome = self.world.release.run(["pod", "extract", self.world.crowded, os.fspath(self.out), "--folders",
                                          "--overwrite", "all"])
        stop.set()
        thread.join()
        if contents(outside):
            self.find("files got out", outcome)
        if outcome.late or outcome.status not in (0, 1):
            self.find(f"ends with status {outcome.status}", outcome)
        aside = self.folder / "aside"
        if aside.is_dir():
            fill(aside, {})
            aside.rmdir()
