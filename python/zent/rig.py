"""Whole rigs, outside Maya."""
from __future__ import annotations

import json
import os
import re
import tempfile
from collections.abc import Mapping
from typing import NamedTuple, Optional, Tuple

from ._zent import Error
from .results import _as_files


class Plug(NamedTuple):
    """An input or an output of a rig. `type` is "numbers", "mesh", "curve", "surface" or "lattice", `shape` that of its
    array, and `unit` "rad" of angles, "time" of times, else empty."""
    name: str
    type: str
    shape: Tuple[int, ...]
    unit: str


class RigRecord(NamedTuple):
    """A record of a rig's manifest, or one that the rig adds for a matrix of the DAG: `index` is None then. `sources` are
    the places of the records that it reads, `outputs` the names of its own."""
    node: str
    method: str
    index: Optional[int]
    sources: Tuple[int, ...]
    outputs: Tuple[str, ...]


class Rig:
    """A rig outside Maya: the records of a manifest, evaluated from the controls down with their own values in between.
    What no record makes is an input, and has the scene's value until it is set; it stays then.

    `manifest` is a file, a Manifest or a list of records, `resource` its file of large values or a Resource, `scene` a
    scene file, or what one holds. `namespace` is put before every level of a plug's path. Raises Error where one cannot
    be read. Several threads may call one rig: it evaluates for one after the other.
    """

    def __init__(self, manifest, resource=None, scene=None, namespace=""):
        from . import _rig
        with tempfile.TemporaryDirectory() as folder:
            manifest, resource = _as_files(manifest, resource, folder)
            if scene is None:
                scene = {"nodes": {}}
            if not isinstance(scene, (str, os.PathLike)):
                text, scene = json.dumps(scene), os.path.join(folder, "scene.json")
                with open(scene, "w", encoding="utf-8") as file:
                    file.write(text)
            self._rig = _rig.Rig(os.fspath(manifest), "" if resource is None else os.fspath(resource),
                                 os.fspath(scene), namespace)
            units = _Units(scene)
            self.inputs = {each.name: each for each in map(units.plug, self._rig.inputs())}
            self.outputs = {each.name: each for each in map(units.plug, self._rig.outputs())}

    def __repr__(self):
        return f"<zent.Rig of {len(self.records)} records, {len(self.inputs)} inputs, {len(self.outputs)} outputs>"

    @property
    def records(self):
        """A RigRecord for each, in an order of evaluation."""
        return [RigRecord(node, method, index, tuple(sources), tuple(outputs))
                for node, method, index, sources, outputs in self._rig.records()]

    @property
    def notes(self):
        """What an evaluation leaves out, in words: records that cannot be read, cycles, connections that do not fit."""
        return self._rig.notes()

    def evaluate(self, inputs=None, outputs=None):
        """Sets inputs, evaluates what depends on them, and returns outputs, a dict by name.

        `inputs` is a dict: a plug's name, "ctrl.translate" or "ctrl.translate.translateX", and its value: a float, (n,)
        floats, a matrix of (4, 4), of a shape its points, (n, 3) floats in its own space. With one more leading dimension
        they are frames, which are evaluated one after the other without Python; an input without it is the same in all.
        `outputs` are the names of those to return, or None for all: a float or an array as above, of frames with that
        dimension. An input keeps its last value.

        Raises Error, with the nearest name, for a plug that there is not, and for an output that cannot be made, with the
        record that failed; TypeError and ValueError, with the plug's name, for a value that does not fit.
        """
        if inputs is not None and not isinstance(inputs, Mapping):
            raise TypeError(f"Rig.evaluate: inputs: a dict expected, not {type(inputs).__name__}")
        outputs = self.outputs if outputs is None else outputs
        if isinstance(outputs, str) or not all(isinstance(name, str) for name in outputs):
            raise TypeError("Rig.evaluate: outputs: a list of names expected")
        return self._rig.evaluate(dict(inputs or {}), list(outputs))

    def shape_matrix(self, output):
        """The matrix to world space of an output that is a shape, (4, 4)."""
        return self._rig.shape_matrix(output)


class _Units:
    """What a scene file tells of the units of its plugs."""

    def __init__(self, scene):
        try:
            with open(scene, encoding="utf-8") as file:
                nodes = json.load(file).get("nodes", {})
        except ValueError as error:
            raise Error(f"scene {scene}: {error}") from None
        self._nodes = {}
        for path, attributes in nodes.items():
            self._nodes.setdefault(re.sub(r"[^|]*:", "", path).split("|")[-1], []).append((path, attributes))

    def plug(self, info):
        name, kind, size = info
        shape = (size, 3) if kind != "numbers" else () if size == 1 else (4, 4) if size == 16 else (size,)
        return Plug(name, kind, shape, self._unit(name) if kind == "numbers" else "")

    def _unit(self, name):
        node, _, path = name.partition(".")
        plain = re.sub(r"[^|]*:", "", node)
        fitting = [attributes for each, attributes in self._nodes.get(plain.split("|")[-1], [])
                   if ("|" + re.sub(r"[^|]*:", "", each).lstrip("|")).endswith("|" + plain.lstrip("|"))]
        value = {"compound": fitting[0]} if fitting else None
        for part in re.findall(r"[^.\[\]]+|\[\d+\]", path):
            value = _element(value, part[1:-1]) if part[0] == "[" else _child(value, part)
        return _unit_of(value)


def _child(value, name):
    if isinstance(value, list):
        return next((each for letter, each in zip("XYZW", value) if name.endswith(letter)), None)
    if isinstance(value, dict) and isinstance(value.get("compound"), dict):
        children = value["compound"]
        if name in children:
            return children[name]
        return next((each for each in children.values() if isinstance(each, dict) and
                     name in (each.get("short"), each.get("alias"))), None)
    return None


def _element(value, index):
    elements = value.get("multi") if isinstance(value, dict) else None
    if isinstance(elements, list):
        elements = {str(i): each for i, each in enumerate(elements)}
    if not isinstance(elements, dict):
        return None
    return elements.get(index, value.get("element", next(iter(elements.values()), None)))


def _unit_of(value):
    if isinstance(value, list) and value:
        units = {_unit_of(each) for each in value}
        return units.pop() if len(units) == 1 else ""
    if isinstance(value, dict):
        if isinstance(value.get("compound"), dict):
            return _unit_of(list(value["compound"].values()))
        return "rad" if "angle" in value else "time" if "time" in value else ""
    return ""
