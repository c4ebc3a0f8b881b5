"""Small files of formats that the samples lack, and archives that nobody means well with. Written apart from the program, so that
both do not share a fault."""

import struct
import zlib


def chunk(identifier, body):
    return struct.pack("<HI", identifier, 6 + len(body)) + body


def studio_mesh():
    """A pyramid as a 3D Studio file."""
    points = [(0, 0, 0), (100, 0, 0), (100, 100, 0), (0, 100, 0), (50, 50, 80)]
    faces = [(0, 1, 4), (1, 2, 4), (2, 3, 4), (3, 0, 4), (0, 2, 1), (0, 3, 2)]
    vertices = struct.pack("<H", len(points)) + b"".join(struct.pack("<3f", *p) for p in points)
    polygons = struct.pack("<H", len(faces)) + b"".join(struct.pack("<4H", *f, 7) for f in faces)
    mesh = chunk(0x4100, chunk(0x4110, vertices) + chunk(0x4120, polygons))
    return chunk(0x4D4D, chunk(0x0002, struct.pack("<I", 3)) + chunk(0x3D3D, chunk(0x4000, b"pyramid\0" + mesh)))


def wave_mesh():
    lines = ["o pyramid", "v 0 0 0", "v 100 0 0", "v 100 100 0", "v 0 100 0", "v 50 50 80", "vt 0 0", "vt 1 1", "g sides",
             "f 1/1 2/2 5/1", "f 2 3 5", "g base", "f 4 3 2 1"]
    return "\n".join(lines).encode() + b"\n"


def png(side, depth=3):
    def part(name, body):
        return struct.pack(">I", len(body)) + name + body + struct.pack(">I", zlib.crc32(name + body))

    rows = b"".join(b"\0" + bytes((x * 3 + y * 5 + c * 40) % 256 for x in range(side) for c in range(depth))
                    for y in range(side))
    head = struct.pack(">IIBBBBB", side, side, 8, 2 if depth == 3 else 6, 0, 0, 0)
    return b"\x89PNG\r\n\x1a\n" + part(b"IHDR", head) + part(b"IDAT", zlib.compress(rows)) + part(b"IEND", b"")


def archive(entries):
    """ENTRIES are pairs of a name (bytes) and bytes, or of a name and (offset, size) in the data."""
    data = b""
    records = b""
    start = 84 + 40 * len(entries)
    for name, body in entries:
        offset, size = body if isinstance(body, tuple) else (len(data), len(body))
        if not isinstance(body, tuple):
            data += body
        records += name[:32].ljust(32, b"\0") + struct.pack("<II", size, start + offset)
    return struct.pack("<I", len(entries)) + b"made to be read".ljust(80, b"\0") + records + data


PARTS = [b"..", b".", b"", b"A", b"ART", b"C:", b"\x1b[31m", b"CON", b"a:b", b"NUL.TXT", b"x ", b"y.", b"\xe2\x80\xae", b"\x85",
         b"~", b"*", b"|", b"\n", b"\r", b"-rf", b"$(id)", b"%s%n"]


def hostile_name(random):
    separator = random.choice([b"\\", b"/"])
    name = separator.join(random.choice(PARTS) for _ in range(random.randint(1, 5)))
    return random.choice([b"", b"\\", b"/", b"\\\\host\\"]) + name + random.choice([b"", b".RAW", b".TXT"])


def hostile_archive(random):
    entries = [(hostile_name(random), bytes([65 + i]) * random.randint(0, 50)) for i in range(random.randint(1, 40))]
    return archive(entries)
