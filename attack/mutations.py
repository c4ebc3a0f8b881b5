"""Damaged files of every format through every command that reads it, under the sanitizers."""

import os
import re
import struct
import subprocess
import time

import gamefiles
from program import contents, fill

NUMBERS = [0, 1, 2, 3, 0x7F, 0x80, 0xFF, 0x7FFF, 0x8000, 0xFFFF, 0x10000, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF, 0xFFFFFFFE]
# What a terminal must not get from a file: all control characters but line feed and tab, and those that turn the text round.
CONTROLS = re.compile(rb"[\x00-\x08\x0b-\x1f\x7f]|\xc2[\x80-\x9f]|\xe2\x80[\x8e\x8f\xaa-\xae]|\xe2\x81[\xa6-\xa9]")
SPARE = 64 << 20  # memory for what does not depend on the file


def mutate(random, data, others):
    data = bytearray(data)
    for _ in range(random.choice([1, 1, 1, 2, 3, 8])):
        at = random.randrange(len(data)) if data else 0
        kind = random.randrange(8)
        if kind == 0 and data:
            data[at] ^= 1 << random.randrange(8)
        elif kind == 1 and data:
            data[at] = random.randrange(256)
        elif kind == 2:
            data[at:at + 4] = struct.pack("<I", random.choice(NUMBERS))
        elif kind == 3:
            del data[at:]
        elif kind == 4:
            del data[at:at + random.randint(1, 64)]
        elif kind == 5:
            data[at:at] = data[random.randrange(len(data) or 1):][:random.randint(1, 64)]
        elif kind == 6:
            other = random.choice(others)
            data[at:at + 64] = other[random.randrange(len(other) or 1):][:64]
        else:
            data[at:at] = random.choice([b"99999999999999999999", b"-1", b"nan", b"1e999", b"\0", b"\x1b[2J", b"\n" * 100])
    return bytes(data)


def commands(samples):
    """{name of the damaged file: (seeds, lists of arguments)}. "{f}" is the file, "{o}" a new folder."""
    models = [p.read_bytes() for p in (samples / "MODELS").glob("*.BIN")]
    raws = sorted(p for p in (samples / "ART").glob("*.RAW"))[:6]
    acts = [p.read_bytes() for p in sorted((samples / "ART").glob("*.ACT"))[:6]]
    trucks = [p.read_bytes() for p in samples.rglob("*.TRK")]
    infos = [p.read_bytes() for p in samples.rglob("*.info")]
    archives = [gamefiles.archive([(b"ART\\A.RAW", b"a" * 64), (b"DATA\\B.TXT", b"b"), (b"C.BIN", models[0][:500])])]
    pictures = ["--pictures", "{o}/pictures", "--fit", "450"]
    mesh = [["import", "{f}", "{o}/o.bin", "--texture", "{r}", "--swap-yz", "--center"], ["import", "{f}", "{o}/o.bin", *pictures]]
    lenient = ["--blank-texture", "64", "--unknown-face", "0x18", "--no"]
    return {
        "m.BIN": (models, [[*lenient, "info", "{f}"], [*lenient, "dump", "{f}"], [*lenient, "json", "{f}"],
                           [*lenient, "textures", "{f}"], [*lenient, "convert", "{f}", "{o}/o.obj", "--to", "obj"],
                           [*lenient, "convert", "{f}", "{o}/o.bin", "--to", "hellbender", "--scale", "2"],
                           [*lenient, "edit", "{f}", "{o}/o.bin", "--merge", "5", "--center", "--delete-unused"],
                           [*lenient, "convert", "{f}", "{o}/o.obj", "--to", "obj", "--materials"],
                           [*lenient, "edit", "{f}", "{o}/o.bin", "--fit", "300", "--mirror", "x", "--rotate", "y,30", "--map", "box"],
                           [*lenient, "edit", "{f}", "{o}/o.bin", "--face-type", "0x18,0x29", "--append", "{m}", "--translate", "1,2,3"],
                           [*lenient, "shape", "sphere", "{o}/o.bin", "--into", "{f}", "--texture", "{r}"],
                           [*lenient, "check", "{f}"], [*lenient, "render", "{f}", "{o}/o.png", "--size", "64x64"]]),
        "s.BIN.info": (infos, [[*lenient, "edit", "{m}", "{o}/o.bin", "--scale", "2,2,2"], [*lenient, "json", "{m}"]]),
        "t.RAW": ([p.read_bytes() for p in raws], [["texture", "export", "{f}", "{o}/o.png"]]),
        "t.ACT": (acts, [["texture", "import", "{p}", "{o}/o.raw", "--palette", "{f}"],
                         ["--palette", "{f}", "texture", "export", "{r}", "{o}/o.png"]]),
        "p.png": ([gamefiles.png(64), gamefiles.png(64, 4)], [["texture", "import", "{f}", "{o}/o.raw"]]),
        "a.POD": (archives, [["pod", "list", "{f}"], ["pod", "list", "{f}", "--json"], ["pod", "extract", "{f}", "{o}"],
                             ["pod", "extract", "{f}", "{o}", "--folders", "--deps", "--overwrite", "all"],
                             ["pod", "create", "{o}/o.pod", "{f}"]]),
        "t.TRK": (trucks, [["truck", "show", "{f}"], ["truck", "show", "{f}", "--json"], ["--yes", "truck", "rewrite", "{f}", "{o}/o.trk"],
                           ["truck", "deps", "{f}"]]),
        "w.obj": ([gamefiles.wave_mesh(), gamefiles.wave_materials()],
                  [["import", "{f}", "{o}/o.bin", "--texture", "{r}"], ["import", "{f}", "{o}/o.bin", *pictures]]),
        "wood.mtl": ([gamefiles.materials()], [["import", "{w}", "{o}/o.bin", *pictures]]),
        "wood.png": ([gamefiles.png(64), gamefiles.png(100, 4)], [["import", "{w}", "{o}/o.bin", *pictures]]),
        "d.3ds": ([gamefiles.studio_mesh()], [["import", "{f}", "{o}/o.bin", "--texture", "{r}"],
                                              ["import", "{f}", "{o}/o.bin", "--materials"], ["import", "{f}", "{o}/o.bin", *pictures]]),
        "g.gltf": ([gamefiles.gltf_text()], mesh),
        "g.glb": ([gamefiles.gltf_binary()], mesh),
        "p.ply": ([gamefiles.ply(form) for form in ("ascii", "binary_little_endian", "binary_big_endian")], mesh),
        "t.stl": ([gamefiles.stl(True), gamefiles.stl(False)], mesh),
        "v.cfg": ([p.read_bytes() for p in samples.glob("*.cfg")], [["--cfg", "{f}", "--blank-texture", "64", "info", "{m}"]]),
    }


class Mutations:
    name = "damaged files"

    def __init__(self, world):
        self.world = world
        self.table = commands(world.samples)
        self.others = [seed for seeds, _ in self.table.values() for seed in seeds]
        self.usual_peaks = {}

    def usual_peak(self, arguments, args):
        """What the command takes for a file that is as it should be."""
        key = tuple(arguments)
        if key not in self.usual_peaks:
            self.usual_peaks[key] = self.world.release.run(args).peak
        return self.usual_peaks[key]

    def judge(self, outcome, size, usual_peak):
        """What is wrong with OUTCOME; "" if nothing."""
        if outcome.late:
            return "does not end"
        if outcome.status not in (0, 1, 2):
            return f"ends with status {outcome.status}"
        if b"Sanitizer" in outcome.err or b"runtime error" in outcome.err:
            return "a sanitizer speaks"
        if CONTROLS.search(outcome.err) or (CONTROLS.search(outcome.out) and "{o}" not in outcome.text()):
            return "control characters reach the terminal"
        if usual_peak is not None and outcome.peak > usual_peak + 20 * size + SPARE:
            return "takes too much memory"
        return ""

    def run(self, seconds, random):
        runs = 0
        folder = self.world.scratch("mutations")
        until = time.monotonic() + seconds
        while time.monotonic() < until:
            name = random.choice(list(self.table))
            seeds, argument_lists = self.table[name]
            data = gamefiles.hostile_archive(random) if name == "a.POD" and random.random() < 0.3 else mutate(
                random, random.choice(seeds), self.others)
            arguments = random.choice(argument_lists)
            runs += 1
            self.one(folder, name, data, arguments, releases=runs % 4 == 0)
        return runs

    def one(self, folder, name, data, arguments, releases):
        fill(folder, {"in/s.BIN": self.world.model, "in/wood.obj": gamefiles.wave_materials(), "in/wood.mtl": gamefiles.materials(),
                      "in/wood.png": gamefiles.png(64), "outside/keep": b"mine"} | {"in/" + name: data})
        (folder / "in/o").mkdir()
        file = folder / "in" / name
        # An output folder two levels below, so that "..\.." of a name still ends in this folder.
        words = {"{f}": file, "{w}": folder / "in/wood.obj", "{m}": folder / "in/s.BIN", "{o}": folder / "in/o", "{p}": self.world.picture,
                 "{r}": self.world.texture}
        args = [self.fill_in(argument, words) for argument in arguments]
        usual_peak = None
        if releases:
            seed = self.table[name][0][0]
            file.write_bytes(seed)
            usual_peak = self.usual_peak(arguments, args)
            file.write_bytes(data)
            fill(folder / "in/o", {})
        before = {k: v for k, v in contents(folder).items() if not k.startswith("in/o/")}
        program = self.world.release if releases else self.world.checked
        outcome = program.run(args)
        what = self.judge(outcome, len(data), usual_peak)
        if {k: v for k, v in contents(folder).items() if not k.startswith("in/o/")} != before:
            what = "writes outside its output"
        if any(value.startswith(b"link to ") for value in contents(folder / "in/o").values()):
            what = "leaves a link"
        if what:
            self.world.finds.add(self.name, what, outcome, [folder / "in"])

    @staticmethod
    def fill_in(argument, words):
        for word, value in words.items():
            argument = argument.replace(word, os.fspath(value))
        return argument
