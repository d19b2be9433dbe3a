"""A writer of scene files, which docs/scene-file.md tells of."""
import json
from math import degrees

from vectors import IDENTITY


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
