#!/usr/bin/env python3
"""Writes the inputs that the fuzzers start from: fuzz/seeds.py FOLDER, into FOLDER/NAME for the fuzzer NAME.

There is a record of each method of docs/methods.md with arguments of the types that stand there, once as literals and
blocks of a resource file, once as plugs of a scene; each block form; the scenes of docs/scene-file.md; and of the
examples a record of each method."""
import json
import pathlib
import re
import struct
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
UNIT = [1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1]
TURN = [0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 3, -1, 2, 1]


def packed(code, *values):
    return struct.pack(f"<{len(values)}{code}", *values)


def points(count):
    return [(i % 3, i // 3 % 3, 0.25 * (i % 4)) for i in range(count)]


def coordinates(list_of_points):
    return packed("f", *(x for point in list_of_points for x in point))


def curve(degree, form, count):
    ends = [0] * degree + list(range(1, count - degree)) + [count - degree] * degree
    knots = ends if form == 1 else list(range(count + degree - 1))
    head = packed("I", degree, form, count, len(knots)) + packed("f", *UNIT)
    cvs = points(count - degree if form == 3 else count)
    return head + coordinates(cvs + cvs[:count - len(cvs)]) + packed("f", *knots)


def surface(degree, count):
    knots = [0] * degree + list(range(1, count - degree)) + [count - degree] * degree
    head = packed("I", degree, degree, 1, 1, count * count, len(knots), len(knots)) + packed("f", *TURN)
    cvs = [(u, 0.1 * u * v, v) for u in range(count) for v in range(count)]
    return head + coordinates(cvs) + packed("f", *knots, *knots)


def constant(kind, value):
    return value.ljust(24, b"\0") + bytes([kind]) + bytes(7)


BLOCKS = {
    "mesh": packed("f", *TURN) + coordinates(points(5)),
    "curve": curve(3, 1, 5),
    "surface": surface(3, 5),
    "lattice": packed("f", *UNIT) + packed("I", 2, 3, 2) + coordinates(points(12)),
    "weight map": b"".join(struct.pack("<If", i, 0.5) for i in (0, 2)),
    "delta list": b"".join(struct.pack("<I3f", i, 1, 2, 3) for i in (0, 2)),
    "index list": packed("I", 0, 1, 2, 3),
    "skin weight list": b"".join(struct.pack("<IIf", i, i % 2, 0.5) for i in range(5)),
    "wire bindings": packed("f", 0, 0.5, 1, 0, 0, 0, 1, 0, 0, 0, 1) * 25,
    "byte code": bytes([21, 0, 0, 0, 5, 21, 1, 23, 2, 255, 0xDF, 20, 0, 28]),
    "constants": constant(2, packed("d", 2.5)) + constant(1, packed("i", 3)) + constant(3, packed("d", 1, 2, 3)),
    "periodic curve": curve(2, 3, 6),
}
BLOCK_NAMES = list(BLOCKS)
VALUES = {"float": [0.5, 2, 3.25], "int": [1, 0, 2], "bool": [True, False, True], "mat4": [TURN, UNIT, TURN],
          "vec2": [[0, 0], [1, 0], [0, 1]], "vec3": [[1, 2, 3], [0, 0.5, 0], [-1, 0, 2]], "vec4": [[0, 0, 0, 1]] * 3}
ASSEMBLY = """again: input 0   # a label and a comment
 const 2.5
 const (1, 0, 0)
 const [3]
 call 2 atan2
 unless done
 back again
 byte 200
done: end
"""
# What a type alone does not tell, by method and argument.
SPECIAL = {
    ("animCurve", 1): [0, 1, 3],
    ("animCurve", 5): [9, 2, 5],
    ("animCurve", 8): [2, 9, 5],
    ("remapValue", 5): [0, 0.5, 1],
    ("wireMesh", 4): [0.1, 0.5, 1],
    ("wireCurve", 4): [0.1, 0.5, 1],
    ("ikSplineSolver", 15): VALUES["vec3"][:2],
    ("follicleRotateMesh", 3): [0, 1, 2, 3],
    ("follicleRotateMesh", 5): [1, 1, 1, 1],
    ("follicleRotateMesh", 6): [0, 0, 0, 0],
    ("follicleRotateMesh", 7): [1, 3, 2, 0, 3, 1, 0, 2],
    ("follicleRotateMesh", 8): [4],
    ("follicleRotateMesh", 9): [0, 1, 2, 3],
    ("follicleTranslateMesh", 3): [0, 1, 2, 3],
    ("polyEdgeToCurve", 2): [3],
    ("decomposeMatrixRotate", 0): [[0, 2, 0, 0, -1, 0, 0, 0, 0, 0.5, 3, 0, 5, 6, 7, 1]],
}


def file_of(blocks):
    offsets = [8 * (len(blocks) + 2)]
    for block in blocks:
        offsets.append(offsets[-1] + len(block))
    return packed("Q", len(blocks), *offsets) + b"".join(blocks)


class Record:
    """A method's record, the blocks and the scene attributes that it reads."""

    def __init__(self, method, outputs, arguments):
        self.method, self.blocks, self.attributes = method, [], {}
        self.literal = {"node_name": "n", "method": method}
        self.plugs = {"node_name": "n", "method": method}
        for key, types in (("results", outputs), ("arguments", arguments)):
            self.literal[key], self.plugs[key] = [], []
            for attribute, of_type in enumerate(types):
                self.add(key, attribute, of_type)

    def block(self, name):
        if name not in self.blocks:
            self.blocks.append(name)
        return {"id": self.blocks.index(name)}

    def values(self, key, attribute, of_type):
        count = re.search(r"list of (\d)", of_type) or re.search(r"at most (\d)", of_type)
        base = re.sub(r"^((item )?map of|list of( \d)?) |, at most \d$", "", of_type)
        if base in BLOCKS:
            values = [self.block(base)] * 2
        else:
            values = (VALUES[base] * 2)[:int(count.group(1)) if count else 3]
        is_list = base != of_type
        if key == "arguments" and (self.method, attribute) in SPECIAL:
            values = SPECIAL[self.method, attribute]
        return values if is_list else values[:1], base, is_list

    def add(self, key, attribute, of_type):
        values, base, is_list = self.values(key, attribute, of_type)
        name = f"{key[0]}{attribute}"
        shown = []
        for i, value in enumerate(values):
            entry = {"attribute": attribute}
            if "map of" in of_type:
                entry["indices"] = [i, 6000 - 500 * i] if self.method.startswith("blendShape") else [i, i]
                entry["indices"] = entry["indices"] if "item" in of_type else [i]
            self.literal[key].append({**entry, "value": value})
            is_plug = base in VALUES or base in ("mesh", "curve", "surface", "lattice")
            plug = {"name": f"n.{name}" + (f"[{i}]" if is_list else "")} if is_plug else {"value": value}
            self.plugs[key].append({**entry, **plug})
            if is_plug:
                shown.append({"matrix": value} if base == "mat4" else {base: value} if base in BLOCKS else value)
        if shown:
            self.attributes[name] = {"multi": shown} if is_list else shown[0]

    def resource(self):
        return file_of([BLOCKS[name] for name in self.blocks])


def records():
    for line in (ROOT / "docs/methods.md").read_text().splitlines():
        cells = [cell.strip() for cell in line.strip("|").split(" | ")]
        if len(cells) != 4 or not cells[0].startswith("`"):
            continue
        outputs = [re.sub(r"^\d+: `[^`]*`, |, (Vertex|Euler.*)$| \(.*\)$", "", text) for text in cells[2].split("<br>")]
        arguments = []
        for text in cells[3].split("<br>"):
            told = re.findall(r"\(([^()]*)\)", text)
            arguments.append(told[-1] if told else text.split(": ", 1)[1])
        yield Record(cells[0].strip("`"), outputs, arguments)


def blocks_of(file):
    count, = struct.unpack_from("<Q", file)
    offsets = struct.unpack_from(f"<{count + 1}Q", file, 8)
    start = 8 * (count + 2) - offsets[0]
    return [file[start + begin:start + end] for begin, end in zip(offsets, offsets[1:])]


def replace_ids(value, number_of):
    """The value with each block's number replaced by what the function gives for it."""
    if isinstance(value, dict) and "id" in value:
        return {**value, "id": number_of(value["id"])}
    if isinstance(value, dict):
        return {key: replace_ids(item, number_of) for key, item in value.items()}
    return [replace_ids(item, number_of) for item in value] if isinstance(value, list) else value


def texts_in(value):
    if isinstance(value, str):
        yield value
    for item in value.values() if isinstance(value, dict) else value if isinstance(value, list) else []:
        yield from texts_in(item)


def example(folder):
    """For each method of an example a record of it, with the part of the scene and the blocks that it reads."""
    scene = json.loads((folder / "scene.json").read_text())
    blocks = blocks_of((folder / "resource.bin").read_bytes())
    records = {record["method"]: record for record in json.loads((folder / "manifest.json").read_text())}
    for method, record in records.items():
        used = {text.split(".")[0].split("|")[-1] for text in texts_in(record)}
        for source, destination in scene["connections"]:
            if destination.split(".")[0].split("|")[-1] in used:
                used.add(source.split(".")[0].split("|")[-1])
        nodes = {name: node for name, node in scene["nodes"].items() if name.split("|")[-1] in used}
        connections = [pair for pair in scene["connections"]
                       if all(plug.split(".")[0] in nodes or plug.split(".")[0].split("|")[-1] in used for plug in pair)]
        ids = []

        def number_of(block):
            if block not in ids:
                ids.append(block)
            return ids.index(block)

        part = replace_ids([[record], {"nodes": nodes, "connections": connections}], number_of)
        yield method, *part, file_of([blocks[block] for block in ids])


def node_of(plug):
    return plug.split(".")[0].split("|")[-1]


def scenes_by_type(path):
    """For each node type of a scene the first node of it, with what feeds it and what is above it."""
    scene = json.loads(path.read_text())
    by_name = {name.split("|")[-1]: name for name in scene["nodes"]}
    first = {}
    for name, node in scene["nodes"].items():
        first.setdefault(node.get("type"), name)
    for kind, name in first.items():
        used, seen = [name.split("|")[-1]], set()
        while used:
            last = used.pop()
            if last in seen or last not in by_name:
                continue
            seen.add(last)
            used += by_name[last].split("|")[1:]
            used += [node_of(source) for source, destination in scene["connections"] if node_of(destination) == last]
        nodes = {name: node for name, node in scene["nodes"].items() if name.split("|")[-1] in seen}
        connections = [pair for pair in scene["connections"] if all(node_of(plug) in seen for plug in pair)]
        yield kind, {"nodes": nodes, "connections": connections, "selected": [name]}


EXPRESSIONS = [
    "int $n = 0; for (int $i = 0; $i < 9; $i++) { if ($i % 2) continue; $n += $i; } o.x = $n;",
    "vector $v = <<a.x, 2, 3>> ^ <<0, 1, 0>>; if ($v.x > 1 && !(a.y == 2)) o.x = mag($v * 2 + 1); else o.x = -$v.z;",
    "float $a; do { $a += .5; if ($a > 3) break; } while (time < 2); .O[1] = int($a) / 2 + (.I[0] ? 1e-3 : on);",
    "int $i = 5; o.x = $i++ * 10 + --$i; o.x %= 3; o.y = clamp(0, $i = 7, smoothstep(1, 2, acosd(sign(o.x))));",
]


def main(folder):
    def write(fuzzer, name, *files):
        if fuzzer == "run":
            write("rig", name, *files)
        path = pathlib.Path(folder) / fuzzer / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(b"\0".join(file if isinstance(file, bytes) else json.dumps(file).encode() for file in files))

    for record in records():
        scene = {"nodes": {"n": record.attributes}, "connections": []}
        write("run", record.method, [record.literal], b"", record.resource())
        write("run", record.method + "-plugs", [record.plugs], scene, record.resource())
        write("scene", record.method, scene, record.resource())
        write("manifest", record.method, b"?" + json.dumps([record.literal, record.plugs]).encode())
    resources = file_of(list(BLOCKS.values()))
    write("compileExpression", "arm", (ROOT / "examples/arm/muscle.mel").read_bytes())
    for i, program in enumerate(EXPRESSIONS):
        write("compileExpression", f"program{i}", program.encode())
    write("resource", "all", resources)
    for name, block in BLOCKS.items():
        write("resource", name, file_of([block]))
    mesh = file_of([BLOCKS["mesh"]])
    examples = {name: re.findall(r"```json\n(.*?)```", (ROOT / f"docs/{name}.md").read_text(), re.S)
                for name in ("scene-file", "results-format", "batch")}
    write("results", "examples", "".join(text.replace("\n ", " ") for text in examples["results-format"]).encode())
    write("checks", "example", examples["batch"][0].encode())
    for i, text in enumerate(examples["scene-file"]):
        write("scene", f"example{i}", text.encode(), mesh)
        if "follicle" in text:
            record = next(record for record in records() if record.method == "follicleRotateMesh").literal
            record["results"] = [{"attribute": 0, "name": "follicle.outRotate"}]
            record["arguments"][0] = {"attribute": 0, "name": "follicle.inputMesh"}
            text = text.replace('"mapSetName"', '"outRotate": [1, 2, 3], "mapSetName"')
            write("run", "follicleRotateMesh-scene", [record], text.encode(), mesh)
    write("expression", "call", bytes([3, 1, 2]) + packed("d", 2.5) + BLOCKS["byte code"])
    write("assembly", "bytes", BLOCKS["byte code"])
    write("assembly", "text", ASSEMBLY.encode())
    topology = packed("I", 1, 3, 0, 1, 2, 1, 0, 0x3f000000, 3, 0, 0, 0)  # a triangle, with one UV
    write("scene", "topology", {"nodes": {"|m": {"out": {"mesh": {"id": 0, "topology": {"id": 1}, "uvSets": ["map1"]}}}}},
          file_of([BLOCKS["mesh"], topology]))
    for kind, scene in scenes_by_type(ROOT / "examples/puppets/scene.json"):
        write("export", kind, scene, b"")
    for i, text in enumerate(examples["scene-file"]):
        write("export", f"example{i}", text.encode(), mesh)
    for manifest in (ROOT / "examples").glob("*/manifest.json"):
        for method, record, scene, resource in example(manifest.parent):
            write("run", f"{manifest.parent.name}-{method}", record, scene, resource)
            write("scene", f"{manifest.parent.name}-{method}", scene, resource)


if __name__ == "__main__":
    main(sys.argv[1])
