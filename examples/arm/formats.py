"""Writers of the three files that zentcheck reads: the scene, the manifest and the resource file.

What the files hold is told in docs/scene-file.md, docs/manifest-format.md and docs/resource-format.md.
"""
import json
import pathlib
import struct
import subprocess
import sys
from math import degrees

from vectors import IDENTITY

FORMS = {"open": 1, "closed": 2, "periodic": 3}


def rounded(number):
    """Nine digits: more than single precision holds, and the same text on every machine."""
    if isinstance(number, (bool, int)):
        return number
    number = float(f"{number:.9g}") if abs(number) >= 1e-9 else 0.0
    return int(number) if number.is_integer() else number


def plain(value):
    """A value of the rig as JSON takes it."""
    if isinstance(value, dict):
        return {key: plain(item) for key, item in value.items()}
    if isinstance(value, (list, tuple)):
        return [plain(item) for item in value]
    return rounded(value) if isinstance(value, (int, float)) else value


def numbers(matrix):
    return [number for row in matrix for number in row]


# ---------------------------------------------------------------------------------------------------------------------
# The scene


class Fed:
    """An attribute whose value comes over a connection. The rest value only tells its kind."""

    def __init__(self, source, rest):
        self.source = source
        self.rest = rest


def fed_vector(source, rest=0):
    """A compound of three, each child fed by that of another compound."""
    return [Fed(f"{source}.{source.split('.')[-1]}{letter}", rest) for letter in "XYZ"]


def fed_angles(source):
    return fed_vector(source, angle())


def angle(radians=0):
    return {"angle": degrees(radians)}


def angles(radians=(0, 0, 0)):
    return [angle(a) for a in radians]


def matrix(value=IDENTITY):
    return {"matrix": numbers(value)}


def multi(*elements):
    return {"multi": list(elements)}


class Scene:
    def __init__(self):
        self.nodes = {}
        self.connections = []

    def node(self, name, **attributes):
        """Adds a node. A value is written as the scene file has it, except that any part of it may be Fed."""
        self.nodes[name] = {key: self._attribute(f"{name}.{key}", value) for key, value in attributes.items()}

    def _attribute(self, plug, value):
        """The value without what is Fed, which becomes connections."""
        if isinstance(value, Fed):
            self.connections.append([value.source, plug])
            return value.rest
        if isinstance(value, (list, tuple)):  # a compound: the children of translate are translate.translateX, ...
            child = plug + "." + plug.split(".")[-1].split("[")[0]
            return [self._attribute(child + letter, item) for letter, item in zip("XYZW", value)]
        if isinstance(value, dict) and "compound" in value:
            children = value["compound"].items()
            return {"compound": {key: self._attribute(f"{plug}.{key}", item) for key, item in children}}
        if isinstance(value, dict) and isinstance(value.get("multi"), dict):
            return {"multi": {i: self._attribute(f"{plug}[{i}]", item) for i, item in value["multi"].items()}}
        if isinstance(value, dict) and "multi" in value:
            return {"multi": [self._attribute(f"{plug}[{i}]", item) for i, item in enumerate(value["multi"])]}
        return value

    def write(self, path):
        nodes = []
        for name, attributes in self.nodes.items():
            lines = [f"      {json.dumps(key)}: {json.dumps(plain(value))}" for key, value in attributes.items()]
            nodes.append(f"    {json.dumps(name)}: {{\n" + ",\n".join(lines) + "\n    }")
        connections = [f"    {json.dumps(pair)}" for pair in self.connections]
        with open(path, "w") as file:
            file.write('{\n  "nodes": {\n' + ",\n".join(nodes) + '\n  },\n')
            file.write('  "connections": [\n' + ",\n".join(connections) + "\n  ]\n}\n")


# ---------------------------------------------------------------------------------------------------------------------
# The manifest


class Many(list):
    """Several entries of one attribute, in order. With indices: pairs of indices and value."""


def many(*values):
    return Many((None, value) for value in values)


def each(pattern, places):
    """Plugs by a pattern with {}, which takes each of the places: names, or 0 to n - 1."""
    return many(*[pattern.format(place) for place in (range(places) if isinstance(places, int) else places)])


def indexed(values):
    """Entries of a map: {0: value} or {(0, 6000): value}."""
    return Many((list(key) if isinstance(key, tuple) else [key], value) for key, value in values.items())


class Manifest:
    def __init__(self):
        self.records = []

    def record(self, node, method, results, arguments):
        """Adds a record. The place of a value in the two lists is its attribute number. A string is a plug, one that
        begins with a dot is the node's own; everything else is a literal."""
        self.records.append((node, method, results, arguments))

    @staticmethod
    def _entries(node, values):
        lines = []
        for attribute, value in enumerate(values):
            for indices, item in value if isinstance(value, Many) else [(None, value)]:
                entry = {"attribute": attribute}
                if indices is not None:
                    entry["indices"] = indices
                if isinstance(item, str):
                    entry["name"] = node + item if item.startswith(".") else item
                else:
                    entry["value"] = plain(item)
                lines.append("      " + json.dumps(entry))
        return "[\n" + ",\n".join(lines) + "\n    ]"

    def write(self, path):
        records = []
        for node, method, results, arguments in self.records:
            records.append(f'  {{\n    "node_name": "{node}",\n    "method": "{method}",\n'
                           f'    "results": {self._entries(node, results)},\n'
                           f'    "arguments": {self._entries(node, arguments)}\n  }}')
        with open(path, "w") as file:
            file.write("[\n" + ",\n".join(records) + "\n]\n")


# ---------------------------------------------------------------------------------------------------------------------
# The resource file


def floats(values):
    return struct.pack(f"<{len(values)}f", *[rounded(value) for value in values])


def integers(*values):
    return struct.pack(f"<{len(values)}I", *values)


class Resource:
    """Each operation adds a block and gives the reference to it, as the scene and the manifest write it."""

    def __init__(self):
        self.blocks = []

    def _add(self, *parts):
        self.blocks.append(b"".join(parts))
        return {"id": len(self.blocks) - 1}

    def mesh(self, points, world):
        return self._add(floats(numbers(world)), floats(numbers(points)))

    def curve(self, curve):
        return self._add(integers(curve.degree, FORMS["open"], len(curve.points), len(curve.knots)),
                         floats(numbers(curve.world)), floats(numbers(curve.points)), floats(curve.knots))

    def surface(self, surface):
        return self._add(integers(*surface.degrees, FORMS["open"], FORMS["open"], len(surface.points)),
                         integers(len(surface.knots[0]), len(surface.knots[1])), floats(numbers(surface.world)),
                         floats(numbers(surface.points)), floats(surface.knots[0]), floats(surface.knots[1]))

    def lattice(self, divisions, points, world):
        return self._add(floats(numbers(world)), integers(*divisions), floats(numbers(points)))

    def weight_map(self, weights):
        return self._add(*[integers(point) + floats([weight]) for point, weight in weights.items()])

    def deltas(self, deltas):
        return self._add(*[integers(point) + floats(delta) for point, delta in deltas.items()])

    def skin_weights(self, weights):
        """Triples: point, influence, weight."""
        return self._add(*[integers(point, influence) + floats([weight]) for point, influence, weight in weights])

    def wire_bindings(self, bindings):
        """Pairs: parameter on the base wire, and the frame's three axes with the tangent first."""
        return self._add(*[floats([0, parameter] + numbers(frame)) for parameter, frame in bindings])

    def byte_code(self, code):
        return self._add(bytes(code))

    def constants(self, texts):
        """Integers, and real numbers, which have a point."""
        return self._add(*[(struct.pack("<d16x", float(text)) + bytes([2]) if "." in text else
                            struct.pack("<i20x", int(text)) + bytes([1])) + bytes(7) for text in texts])

    def write(self, path):
        offsets = [8 * (len(self.blocks) + 2)]
        for block in self.blocks:
            offsets.append(offsets[-1] + len(block))
        with open(path, "wb") as file:
            file.write(struct.pack(f"<{1 + len(offsets)}Q", len(self.blocks), *offsets))
            file.write(b"".join(self.blocks))


# ---------------------------------------------------------------------------------------------------------------------
# Expressions

OPCODES = {"const": 0, "add": 3, "sub": 4, "mul": 5, "div": 6, "gt": 11, "output": 20, "input": 21, "getoutput": 22,
           "load": 18, "pop": 17, "call": 23, "jump": 25, "unless": 26, "end": 28}
BUILT_INS = {"clamp": 0xFFF6, "sin": 0xFFE9}


def compiled(name):
    """The instructions of an expression's text, a file beside this one. The program that compiles it is the second
    argument; without one, that of the release build."""
    folder = pathlib.Path(__file__).resolve().parent
    zentcheck = sys.argv[2] if len(sys.argv) > 2 else folder.parent.parent / "build/release/bin/zentcheck"
    return subprocess.run([zentcheck, "--compile-expression", folder / name], stdout=subprocess.PIPE, text=True,
                          check=True).stdout


def assemble(source):
    """Byte code and constants of an expression, from the instructions that zentcheck shows: one a line, with a label and
    a colon in front where a jump leads."""
    code, constants, labels, jumps = [], [], {}, []
    for line in source.split("\n"):
        words = line.split("#")[0].split()
        if words and words[0].endswith(":"):
            labels[words.pop(0)[:-1]] = len(code)
        if not words:
            continue
        name, operands = words[0], words[1:]
        code.append(OPCODES[name])
        if name == "const":
            if operands[0] not in constants:
                constants.append(operands[0])
            code.append(constants.index(operands[0]))
        elif name == "call":
            number = BUILT_INS[operands[1]]
            code += [int(operands[0]), number >> 8, number & 255]
        elif name in ("jump", "unless"):
            jumps.append((len(code), operands[0]))
            code += [0, 0]
        elif operands:
            code.append(int(operands[0]))
    for place, label in jumps:
        distance = labels[label] - (place + 2)
        code[place:place + 2] = [distance >> 8, distance & 255]
    return code, constants
