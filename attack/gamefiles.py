"""Small files of formats that the samples lack, and archives that nobody means well with. Written apart from the program, so that
both do not share a fault."""

import base64
import json
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


def wave_materials():
    """A mesh with materials, whose files are wood.mtl and wood.png."""
    return wave_mesh().replace(b"o pyramid", b"mtllib wood.mtl\no pyramid").replace(b"g base", b"usemtl wood_0x18\ng base")


def materials():
    return b"newmtl wood_0x18\nKd 1 1 1\nmap_Kd -s 1 1 1 wood.png\nnewmtl plain\nmap_Kd C:\\my\\gone.tga\n"


POINTS = [(0, 0, 0), (100, 0, 0), (100, 100, 0), (0, 100, 0), (50, 50, 80)]
TRIANGLES = [(0, 1, 4), (1, 2, 4), (2, 3, 4), (3, 0, 4), (0, 2, 1), (0, 3, 2)]


def gltf_parts(buffer_uri):
    """The JSON and the buffer of a pyramid with a picture in the buffer, a colour, a moved and a mirrored node."""
    places = b"".join(struct.pack("<3f", *p) for p in POINTS)
    coords = b"".join(struct.pack("<2f", p[0] / 100, p[1] / 100) for p in POINTS)
    indices = b"".join(struct.pack("<3H", *t) for t in TRIANGLES)
    parts = [places, coords, indices, png(64)]
    views = [{"buffer": 0, "byteOffset": sum(map(len, parts[:i])), "byteLength": len(part)} for i, part in enumerate(parts)]
    packed = b"".join(parts)
    packed += b"\0" * (-len(packed) % 4)
    buffer = {"byteLength": len(packed)} | ({"uri": buffer_uri(packed)} if buffer_uri else {})
    picture = {"baseColorTexture": {"index": 0, "extensions": {"KHR_texture_transform": {"offset": [0.5, 0], "scale": [2, 2]}}}}
    tree = {"asset": {"version": "2.0"}, "scene": 0, "scenes": [{"nodes": [0]}],
            "nodes": [{"children": [1, 2], "translation": [1, 2, 3]}, {"mesh": 0, "name": "body", "rotation": [0, 0, 1, 0]},
                      {"mesh": 0, "scale": [-1, 1, 1]}],
            "buffers": [buffer], "bufferViews": views, "images": [{"bufferView": 3, "mimeType": "image/png"}, {"uri": "wood.png"}],
            "accessors": [{"bufferView": 0, "componentType": 5126, "type": "VEC3", "count": len(POINTS)},
                          {"bufferView": 1, "componentType": 5126, "type": "VEC2", "count": len(POINTS)},
                          {"bufferView": 2, "componentType": 5123, "type": "SCALAR", "count": 3 * len(TRIANGLES)}],
            "textures": [{"source": 0}, {"source": 1}],
            "materials": [{"name": "skin", "pbrMetallicRoughness": picture},
                          {"name": "red", "pbrMetallicRoughness": {"baseColorFactor": [1, 0, 0, 1]}},
                          {"name": "wood", "pbrMetallicRoughness": {"baseColorTexture": {"index": 1}}}],
            "meshes": [{"primitives": [{"attributes": {"POSITION": 0, "TEXCOORD_0": 1}, "indices": 2, "material": m} for m in range(3)]}]}
    return json.dumps(tree).encode(), packed


def gltf_text():
    return gltf_parts(lambda packed: "data:application/octet-stream;base64," + base64.b64encode(packed).decode())[0]


def gltf_binary():
    tree, packed = gltf_parts(None)
    tree += b" " * (-len(tree) % 4)
    chunks = struct.pack("<II", len(tree), 0x4E4F534A) + tree + struct.pack("<II", len(packed), 0x004E4942) + packed
    return struct.pack("<4sII", b"glTF", 2, 12 + len(chunks)) + chunks


def ply(form):
    head = (f"ply\nformat {form} 1.0\ncomment TextureFile wood.png\nelement vertex {len(POINTS)}\nproperty float x\nproperty float y\n"
            f"property float z\nproperty float s\nproperty float t\nelement face {len(TRIANGLES)}\n"
            "property list uchar int vertex_indices\nend_header\n").encode()
    if form == "ascii":
        lines = ["%g %g %g 0 1" % p for p in POINTS] + ["3 %d %d %d" % t for t in TRIANGLES]
        return head + "\n".join(lines).encode() + b"\n"
    order = "<" if form == "binary_little_endian" else ">"
    return (head + b"".join(struct.pack(order + "5f", *p, 0, 1) for p in POINTS)
            + b"".join(struct.pack(order + "B3i", 3, *t) for t in TRIANGLES))


def stl(text):
    if text:
        loops = ("outer loop\n" + "".join("vertex %g %g %g\n" % POINTS[v] for v in t) + "endloop\n" for t in TRIANGLES)
        return b"solid pyramid\n" + "".join(loops).encode() + b"endsolid\n"
    return bytes(80) + struct.pack("<I", len(TRIANGLES)) + b"".join(
        struct.pack("<12fH", 0, 0, 1, *POINTS[a], *POINTS[b], *POINTS[c], 0) for a, b, c in TRIANGLES)


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
