"""The attack on the command line: what it does, for how long, and what came of it. Started by scripts/attack."""

import argparse
import faulthandler
import os
import random
import shutil
import sys
import threading
import time
from pathlib import Path

import gamefiles
import mutations
import writes
from program import Finds, Program

# The part of the time that each phase gets beside the damaged files, which are tried all the while.
PHASES = [(writes.FailingCalls, 0.5), (writes.Kills, 0.25), (writes.Races, 0.1), (writes.PlantedLinks, 0.05), (writes.Limits, 0.1)]


class World:
    """The programs under attack, the files that they get and the folders to do it in."""

    def __init__(self, folder, release, checked, shim):
        self.folder = folder.resolve()
        shutil.rmtree(self.folder, ignore_errors=True)
        self.folder.mkdir(parents=True)
        self.samples = self.folder / "samples"
        self.shim = shim
        self.finds = Finds(self.folder / "finds")
        home = self.folder / "home"
        home.mkdir()
        environment = {"PATH": os.environ["PATH"], "HOME": os.fspath(home), "LC_ALL": "C.UTF-8",
                       "ASAN_OPTIONS": "exitcode=77:allocator_may_return_null=1:detect_leaks=0:hard_rss_limit_mb=2048",
                       "UBSAN_OPTIONS": "exitcode=77:print_stacktrace=1"}
        if os.spawnv(os.P_WAIT, release / "make_samples", ["make_samples", os.fspath(self.samples)]) != 0:
            raise SystemExit("the samples cannot be made")
        self.release = Program(release / "veldra-cli", self.samples, environment)
        self.checked = Program(checked / "veldra-cli", self.samples, environment)
        self.model = (self.samples / "MODELS/TRUCK.BIN").read_bytes()
        self.texture = os.fspath(sorted((self.samples / "ART").glob("*.RAW"))[0])
        self.picture = self.keep("p.png", gamefiles.png(64))
        self.other_picture = self.keep("q.png", gamefiles.png(128))
        self.mesh = self.keep("w.obj", gamefiles.wave_mesh())
        self.rich_mesh = self.keep("rich.obj", gamefiles.wave_materials())
        self.keep("wood.mtl", gamefiles.materials())
        self.keep("wood.png", gamefiles.png(100))
        self.gltf = self.keep("g.glb", gamefiles.gltf_binary())
        self.crowded = self.keep("crowded.pod", gamefiles.archive(
            [(b"DATA\\F%05d.TXT" % i, b"%d" % i) for i in range(400)]))
        # Two models that tell by their groups' names whose groups they are.
        groups = (self.samples / "MODELS/TRUCK.BIN.info").read_bytes()
        self.grouped = [self.keep("g1.bin", self.model), self.keep("g2.bin", self.model)]
        self.keep("g1.bin.info", groups)
        self.keep("g2.bin.info", groups.upper())

    def keep(self, name, data):
        path = self.folder / "inputs" / name
        path.parent.mkdir(exist_ok=True)
        path.write_bytes(data)
        return os.fspath(path)

    def scratch(self, name):
        path = self.folder / "scratch" / name
        path.mkdir(parents=True, exist_ok=True)
        return path


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--seconds", type=float, required=True)
    parser.add_argument("--seed", type=int, default=int(time.time()))
    parser.add_argument("--folder", type=Path, required=True)
    parser.add_argument("--release", type=Path, required=True, help="folder of the programs")
    parser.add_argument("--checked", type=Path, required=True, help="folder of the programs with sanitizers")
    parser.add_argument("--shim", type=Path, required=True)
    options = parser.parse_args()
    world = World(options.folder, options.release.resolve(), options.checked.resolve(), options.shim.resolve())
    print(f"seed {options.seed}", flush=True)
    faulthandler.dump_traceback_later(options.seconds + 100)
    table = []

    def phase(attack, seconds, seed):
        began = time.monotonic()
        runs = attack.run(seconds, random.Random(seed))
        table.append((attack.name, runs, time.monotonic() - began))

    damage = threading.Thread(target=phase, args=(mutations.Mutations(world), options.seconds, options.seed))
    damage.start()
    for kind, part in PHASES:
        phase(kind(world), options.seconds * part, options.seed)
    damage.join()
    for name, runs, seconds in table:
        print(f"{name:<16} {runs:>8} runs  {seconds:>6.0f} s")
    for kind, count in world.finds.kinds.items():
        print(f"found {count:>6} times: {kind}")
    print(f"{world.finds.count()} finds" + (f", the first of each kind kept in {world.finds.folder}" if world.finds.kinds else ""))
    is_whole = len(table) == len(PHASES) + 1
    if not is_whole:
        print("a phase did not come to its end")
    return 0 if is_whole and not world.finds.kinds else 1


sys.exit(main())
