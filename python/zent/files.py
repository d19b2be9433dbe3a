"""Writers of a check's files: the manifest, and the resource file of what is large."""
from __future__ import annotations

import contextlib
import difflib
import functools
import json
import math
import os
import pathlib
import threading

import numpy as np

from . import nodes
from ._zent import Error, Mesh, ResourceWriter
from .program import Program, compile_expression


@functools.lru_cache(maxsize=None)
def methods():
    """The methods that a record may name: a dict by name of what `zentcheck --list-methods --json` tells of each.

    `results` and `arguments` have the types of its outputs and arguments, `nodes` its node types and the plugs that they
    stand on.
    """
    text = (pathlib.Path(__file__).parent / "methods.json").read_text(encoding="utf-8")
    return {method["name"]: method for method in json.loads(text)["methods"]}


@contextlib.contextmanager
def _whole(path):
    """The name of a file to write, which takes the place of `path` at the end, or not at all."""
    path = os.path.realpath(os.fsdecode(path))
    if os.path.exists(path) and not os.path.isfile(path):
        yield path  # a device or a pipe
        return
    part = f"{path}.{os.getpid()}.{threading.get_ident()}.part"
    try:
        with open(part, "wb"):
            pass
    except OSError as error:
        raise type(error)(error.errno, error.strerror, path) from None
    try:
        yield part
        os.replace(part, path)
    except BaseException:
        with contextlib.suppress(OSError):
            os.unlink(part)
        raise


# ---------------------------------------------------------------------------------------------------------------------
# The resource file


class Block(dict):
    """A reference to a block of a resource file: {"id": n}, as a manifest and a scene file write it. `kind` is what it
    holds, by the name of the method of Resource that made it."""

    def __init__(self, number, kind):
        super().__init__(id=number)
        self.kind = kind

    def __repr__(self):
        return f"<zent.Block {self['id']}: {self.kind}>"

    def __reduce__(self):
        return Block, (self["id"], self.kind)


class Resource:
    """A resource file, block by block. Each method adds a block and returns the Block that refers to it. Arrays of any
    real type and layout go in, of floats as of whole numbers; a wrong one is a TypeError or a ValueError that names it."""

    def __init__(self):
        self._writer = ResourceWriter()
        self._blocks = []

    def __len__(self):
        return len(self._blocks)

    @property
    def blocks(self):
        """A Block for each, in order."""
        return list(self._blocks)

    def _added(self, number, kind):
        self._blocks.append(Block(number, kind))
        return self._blocks[-1]

    def mesh(self, mesh, matrix=None):
        """A Mesh, or (n, 3) floats in its own space, with its matrix to world space; the identity if None."""
        if not isinstance(mesh, Mesh):
            mesh = Mesh(mesh, matrix)
        elif matrix is not None:
            raise TypeError("Resource.mesh: matrix: a Mesh has its own")
        return self._added(self._writer.mesh(mesh), "mesh")

    def curve(self, curve):
        """A Curve."""
        return self._added(self._writer.curve(curve), "curve")

    def surface(self, surface):
        """A Surface."""
        return self._added(self._writer.surface(surface), "surface")

    def lattice(self, lattice):
        """A Lattice."""
        return self._added(self._writer.lattice(lattice), "lattice")

    def weight_map(self, weights, points=None):
        """Weights by point: {point: weight}; (n,) floats of the first n points; or (n,) floats of those of `points`,
        (n,) ints, of which the first counts where one stands twice."""
        return self._added(self._writer.weight_map(weights, points), "weight_map")

    def deltas(self, deltas):
        """Offsets by point: {point: offset}, or two arrays: (n,) points and (n, 3) offsets."""
        return self._added(self._writer.deltas(deltas), "deltas")

    def indices(self, indices):
        """Whole numbers, (n,) ints: members of a deformer, in ascending order, or vertices along edges."""
        return self._added(self._writer.indices(indices), "indices")

    def skin_weights(self, weights):
        """Weights of a skin: (points, influences) floats, of which those that are 0 are left out; or a tuple of three
        arrays of (n,): points, influences, weights."""
        return self._added(self._writer.skin_weights(weights), "skin_weights")

    def wire_bindings(self, bindings):
        """Where each point is bound to a base wire, two arrays: (n,) parameters, and (n, 3, 3) frames, whose rows are
        the axes with the tangent first."""
        return self._added(self._writer.wire_bindings(bindings), "wire_bindings")

    def byte_code(self, code):
        """The instructions of an expression, bytes."""
        return self._added(self._writer.byte_code(code), "byte_code")

    def constants(self, constants):
        """The constants of an expression: a list of bool, int, float, or three floats."""
        return self._added(self._writer.constants(constants), "constants")

    def expression(self, expression, inputs=None, outputs=None, frames_per_second=0.0):
        """The byte code and the constants of an expression, two Blocks. It is a Program, or a text, which is compiled
        as `compile_expression` does; raises Error with line and column where it cannot be."""
        if not isinstance(expression, Program):
            expression = compile_expression(expression, inputs, outputs, frames_per_second)
        return self.byte_code(expression.code), self.constants(expression.constants)

    def raw(self, data, kind="raw"):
        """Bytes as they stand. `kind` is what a manifest shall take them for, such as "mesh"."""
        return self._added(self._writer.raw(bytes(memoryview(data))), kind)

    def write(self, path):
        """Writes the file, as a whole or not at all. Raises OSError or Error where that fails."""
        with _whole(path) as part:
            self._writer.write(part)


# ---------------------------------------------------------------------------------------------------------------------
# The manifest

_SHAPES = {"Float": (), "Int": (), "Bool": (), "Vec2": (2,), "Vec3": (3,), "Vec4": (4,), "Mat4": (16,), "Euler": (3,)}
_BLOCKS = {"Mesh": "mesh", "Curve": "curve", "Surface": "surface", "Lattice": "lattice", "WeightMap": "weight_map",
           "DeltaList": "deltas", "IndexList": "indices", "SkinWeightList": "skin_weights",
           "WireBindings": "wire_bindings", "ByteCode": "byte_code", "Constants": "constants"}
_FULL_TARGET = 6000
_MOST = 2**32 - 1


def _nearest(name, names):
    near = difflib.get_close_matches(str(name), list(names), 1)
    return f'; the nearest is "{near[0]}"' if near else ""


def _plain(array):
    """Python's numbers, those of single precision with no more digits than tell them apart, and whole ones as such."""
    def number(value):
        if not isinstance(value, float) or not value.is_integer() or abs(value) >= 2**53:
            return value
        return value if value == 0 and math.copysign(1, value) < 0 else int(value)

    values = [float(str(value)) for value in array.ravel()] if array.dtype == np.float32 else array.ravel().tolist()
    return [number(value) for value in values] if array.ndim else number(values[0])


class Manifest:
    """A manifest, record by record.

    With a Resource, `add` takes what belongs into a block as it stands (a Mesh, arrays of weights), and adds the block.
    """

    def __init__(self, resource=None):
        self.resource = resource
        self.records = []

    def __len__(self):
        return len(self.records)

    def add(self, node, method, results, /, arguments=None, **named):
        """Adds a record: `method` is to make of the arguments what `results` has.

        `results` is the output's value, or a list with one for each where the method has several outputs. `arguments`
        has a value for each argument in the method's order, or they are named as those of the function in zent.nodes;
        lists, maps and what is not used may be left out then. A value is

        - a plug, "ctrl.translate"; one that begins with a dot is the node's own;
        - a literal: a number, (n,) floats, a matrix;
        - of a shape or a list that a file holds, a Block, or what makes one where there is a Resource;
        - of a list, a list of these; of a map {index: value}; of an item map {(target, item): value}, or
          {target: value} for item 6000.

        Raises Error for a method that there is not, TypeError and ValueError for a value that does not fit, with its
        name.
        """
        if not isinstance(node, str) or not node:
            raise TypeError("Manifest.add: node: a name expected")
        if not isinstance(method, str):
            raise TypeError(f"Manifest.add: method: a name expected, not {type(method).__name__}")
        info = methods().get(method)
        if info is None:
            raise Error(f'Manifest.add: there is no method "{method}"{_nearest(method, methods())}')
        names = nodes.ARGUMENTS[method]
        where = f"{node}({method})"
        if arguments is not None:
            if named:
                raise TypeError(f"{where}: arguments are named or in a list, not both")
            if isinstance(arguments, (str, dict)) or len(arguments) != len(names):
                raise TypeError(f"{where}: arguments: a list of {len(names)} expected: {', '.join(names)}")
            named = dict(zip(names, arguments))
        for name in named:
            if name not in names:
                raise TypeError(f"{where}: there is no argument {name}{_nearest(name, names)}")
        if len(info["results"]) == 1:
            results = [results]
        elif not isinstance(results, (list, tuple)) or len(results) != len(info["results"]):
            raise TypeError(f"{where}: results: a list of {len(info['results'])} expected")

        made = {"node_name": node, "method": method, "results": [], "arguments": []}
        for number, (each, value) in enumerate(zip(info["results"], results)):
            name = "results" if len(results) == 1 else f"results[{number}]"
            made["results"] += self._entries(number, each, value, node, f"{where}: {name}")
        for number, (each, name) in enumerate(zip(info["arguments"], names)):
            if name in named:
                value = named[name]
            elif name.startswith("unused"):
                value = 0
            elif each["least"] == 0:
                value = []
            else:
                raise TypeError(f"{where}: {name} is missing")
            made["arguments"] += self._entries(number, each, value, node, f"{where}: {name}")
        self.records.append(made)

    def _entries(self, attribute, info, value, node, where):
        kind = info["type"]
        if kind.endswith("{}{}"):
            pairs = self._items(value, kind[:-4], where, True)
        elif kind.endswith("{}"):
            pairs = self._items(value, kind[:-2], where, False)
        elif kind.endswith("[]"):
            if isinstance(value, (str, bytes, dict)) or not hasattr(value, "__iter__"):
                raise TypeError(f"{where}: a list expected, not {type(value).__name__}")
            pairs = [(None, each) for each in value]
            most = info["most"] if info["most"] is not None else len(pairs)
            if not info["least"] <= len(pairs) <= most:
                raise ValueError(f"{where}: {len(pairs)} entries, not " + (
                    f"{most}" if info["least"] == most else f"{info['least']} to {most}"))
        else:
            pairs = [(None, value)]
        is_many, kind = kind[-1] in "]}", kind.rstrip("[]{}")
        entries = []
        for place, (indices, each) in enumerate(pairs):
            entry = {"attribute": attribute}
            if indices is not None:
                entry["indices"] = list(indices)
            told = f"{where}[{place if indices is None else ', '.join(map(str, indices))}]" if is_many else where
            entry.update(self._value(kind, each, node, told))
            entries.append(entry)
        return entries

    @staticmethod
    def _items(value, kind, where, are_pairs):
        if not isinstance(value, dict):
            if are_pairs and kind in _BLOCKS and value is not None and len(value):
                raise TypeError(f"{where}: a dict expected, not {type(value).__name__}")
            if isinstance(value, (str, bytes)) or not hasattr(value, "__iter__"):
                raise TypeError(f"{where}: a dict expected, not {type(value).__name__}")
            value = {(i, j): each for i, row in enumerate(value) for j, each in enumerate(row)} if are_pairs else \
                dict(enumerate(value))
        pairs = []
        for key, each in value.items():
            indices = key if isinstance(key, tuple) else (key, _FULL_TARGET) if are_pairs and kind in _BLOCKS else (key,)
            if len(indices) != (2 if are_pairs else 1):
                raise TypeError(f"{where}: {key!r} is no {'pair of indices' if are_pairs else 'index'}")
            for index in indices:
                if isinstance(index, bool) or not isinstance(index, (int, np.integer)) or not 0 <= index <= _MOST:
                    raise ValueError(f"{where}: {key!r} is no {'pair of indices' if are_pairs else 'index'}")
            pairs.append(([int(index) for index in indices], each))
        return pairs

    def _value(self, kind, value, node, where):
        if isinstance(value, str):
            plug = node + value if value.startswith(".") else value
            if "." not in plug:
                raise ValueError(f"{where}: {value!r} is no plug, NODE.ATTRIBUTE")
            return {"name": plug}
        if kind in _BLOCKS:
            return {"value": self._block(_BLOCKS[kind], value, where)}
        shape = _SHAPES[kind]
        words = f"{shape[0]} numbers" if shape else "a number"
        try:
            array = np.asarray(value)
        except ValueError:
            array = np.asarray(None)
        if array.dtype.kind not in "fiub":
            raise TypeError(f"{where}: a plug or {words} expected, not {type(value).__name__}")
        if array.shape == (4, 4) and kind == "Mat4":
            array = array.reshape(16)
        if array.shape != shape:
            raise ValueError(f"{where}: a plug or {words} expected, not an array of shape {array.shape}")
        if not np.isfinite(array).all():
            raise ValueError(f"{where}: a manifest holds finite numbers only")
        if kind == "Int" and array.dtype.kind == "f":
            if array != np.trunc(array):
                raise TypeError(f"{where}: {value} is no whole number")
        if kind == "Bool":
            if array not in (0, 1):
                raise TypeError(f"{where}: {value} is no truth value")
            array = array.astype(bool)
        return {"value": _plain(array)}

    def _block(self, kind, value, where):
        words = kind.replace("_", " ")
        if isinstance(value, dict) and set(value) == {"id"}:
            number, found = value["id"], getattr(value, "kind", kind)
            if not isinstance(number, int) or number < 0:
                raise TypeError(f"{where}: {number!r} is no block's number")
            if self.resource is not None and number >= len(self.resource):
                raise ValueError(f"{where}: there is no block {number}, the Resource has {len(self.resource)}")
            if found not in (kind, "raw"):
                raise TypeError(f"{where}: a block of kind {words} expected, not {found.replace('_', ' ')}")
            return dict(value)
        if self.resource is None:
            raise TypeError(f"{where}: a plug or a Block of kind {words} expected, not {type(value).__name__}: this "
                            "Manifest has no Resource to put it into")
        try:
            return dict(getattr(self.resource, kind)(value))
        except (TypeError, ValueError) as error:
            raise type(error)(f"{where}: {error}") from None

    def text(self):
        """The file as text."""
        def block(entries):
            return "[\n" + ",\n".join("      " + json.dumps(entry, allow_nan=False) for entry in entries) + "\n    ]" \
                if entries else "[]"

        records = [f'  {{\n    "node_name": {json.dumps(record["node_name"])},\n    "method": '
                   f'{json.dumps(record["method"])},\n    "results": {block(record["results"])},\n    "arguments": '
                   f'{block(record["arguments"])}\n  }}' for record in self.records]
        return "[\n" + ",\n".join(records) + "\n]\n"

    def write(self, path):
        """Writes the file, as a whole or not at all."""
        with _whole(path) as part, open(part, "w", encoding="utf-8") as file:
            file.write(self.text())
