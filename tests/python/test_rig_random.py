"""Random graphs of utility nodes as whole rigs, against an evaluation in plain Python."""
import random

import numpy as np
import pytest

import zent


def each(function):
    return lambda *values: [function(*components) for components in zip(*values)]


def multiply_divide(a, b, op):
    return a * b if op == 1 else a / b


def set_range(value, old_min, old_max, low, high):
    return low + (min(max(value, old_min), old_max) - old_min) / (old_max - old_min) * (high - low)


def choose(first, second, if_true, if_false, op):
    if abs(first - second) < 1e-3:
        raise ArithmeticError  # too close for floats to tell
    return if_true if {2: first > second, 3: first >= second, 4: first < second, 5: first <= second}[op] else if_false


def sum_of(values, op):
    return values[0] - sum(values[1:]) if op == 2 else sum(values) / (len(values) if op == 3 else 1)


# Method, kinds of its arguments (number, vector, "*" a list of them, or a choice of literals), kind of its result, Python.
METHODS = [
    ("addDoubleLinear", "nn", "n", lambda a, b: a + b),
    ("multDoubleLinear", ["n", [0.5, -0.7, 0.9]], "n", lambda a, b: a * b),
    ("multiplyDivide1D", ["n", [0.5, -2.0, 4.0], [1, 2]], "n", multiply_divide),
    ("multiplyDivide3D", ["v", [[0.5, -2.0, 1.5]], [1, 2]], "v",
     lambda a, b, op: [multiply_divide(x, y, op) for x, y in zip(a, b)]),
    ("plusMinusAverage1D", ["*n", [1, 2, 3]], "n", sum_of),
    ("plusMinusAverage3D", ["*v", [1, 2, 3]], "v", lambda values, op: [sum_of(list(c), op) for c in zip(*values)]),
    ("condition1D", ["n", [0.123, -0.41], "n", "n", [2, 3, 4, 5]], "n", choose),
    ("condition3D", ["n", [0.37], "v", "v", [2, 3, 4, 5]], "v", choose),
    ("clamp", ["n", [-1.0, -0.5], [0.8, 3.0]], "n", lambda x, low, high: min(max(x, low), high)),
    ("setRange1D", ["n", [-3.0], [2.0], [0.0], [1.0, -1.5]], "n", set_range),
    ("setRange3D", ["v", [[-3.0, -2.0, -1.0]], [[2.0, 2.0, 2.0]], [[0.0, 0.0, 1.0]], [[1.0, -1.0, 0.0]]], "v", each(set_range)),
    ("reverse", "n", "n", lambda x: 1 - x),
    ("blendTwoAttr", ["**n", [0.3, 0.8]], "n", lambda values, t: values[0] + (values[1] - values[0]) * t),
]


class Read(dict):
    """Values, and the largest of all that each comes from, by which its rounding is measured."""

    def __init__(self, values):
        super().__init__(values)
        self.sizes = {name: float(np.max(np.abs(value))) for name, value in values.items()}
        self.reached = 0.0

    def __getitem__(self, name):
        self.reached = max(self.reached, self.sizes[name])
        return super().__getitem__(name)

    def take(self, name, value):
        self.sizes[name] = max(self.reached, 1.0, float(np.max(np.abs(value))))
        self[name] = value
        self.reached = 0.0


class Graph:
    """Each argument is a way to its value, given all plugs' values; `scene` and `records` tell zent the same."""

    def __init__(self, seed, count):
        self.random = random.Random(seed)
        self.nodes = {"ctrl": {"x": 0.7, "y": -1.2, "t": [0.5, 1.5, -0.4]}}
        self.links, self.records, self.steps = [], [], []
        self.plugs = {"n": ["ctrl.x", "ctrl.y"], "v": ["ctrl.t"]}
        for i in range(count):
            self.add(f"n{i}", *self.random.choice(METHODS))
        self.random.shuffle(self.records)

    def argument(self, node, name, kind):
        """A plug of the node that is fed in one of the ways that connections have, and how Python gets there."""
        self.nodes[node][name] = 0 if kind == "n" else [0, 0, 0]
        source = self.random.choice(self.plugs[kind])
        way = self.random.randrange(4)
        if way == 0:
            return source, lambda values: values[source]  # the result itself
        if way == 1 and kind == "n":  # a child of a vector
            vector, axis = self.random.choice(self.plugs["v"]), self.random.randrange(3)
            self.links.append([f"{vector}.{vector.split('.')[1]}{'XYZ'[axis]}", f"{node}.{name}"])
            return f"{node}.{name}", lambda values: values[vector][axis]
        if way == 2 and kind == "n":
            self.nodes[f"{node}{name}"] = {"type": "unitConversion", "input": 0, "output": 0, "conversionFactor": 0.25}
            self.links += [[source, f"{node}{name}.input"], [f"{node}{name}.output", f"{node}.{name}"]]
            return f"{node}.{name}", lambda values: values[source] * 0.25
        if way == 3 and kind == "v":  # one child from elsewhere, the others as the scene has them
            number = self.random.choice(self.plugs["n"])
            self.links.append([number, f"{node}.{name}.{name}Y"])
            return f"{node}.{name}", lambda values: [0, values[number], 0]
        self.links.append([source, f"{node}.{name}"])
        return f"{node}.{name}", lambda values: values[source]

    def add(self, node, method, kinds, result, function):
        self.nodes[node] = {"o": 0 if result == "n" else [0, 0, 0]}
        entries, ways = [], []
        for attribute, kind in enumerate(kinds):
            if isinstance(kind, list):
                literal = self.random.choice(kind)
                entries.append({"attribute": attribute, "value": literal})
                ways.append(lambda values, literal=literal: literal)
                continue
            count = 1 if kind[0] != "*" else 2 if kind[:2] == "**" else self.random.randrange(2, 5)
            made = [self.argument(node, f"a{attribute}{'abcd'[k]}", kind[-1]) for k in range(count)]
            entries += [{"attribute": attribute, "name": plug} for plug, _ in made]
            ways.append((lambda values, made=made: [way(values) for _, way in made]) if kind[0] == "*" else made[0][1])
        self.records.append({"node_name": node, "method": method, "arguments": entries,
                             "results": [{"attribute": 0, "name": f"{node}.o"}]})
        self.steps.append((f"{node}.o", method, ways, function))
        self.plugs[result].append(f"{node}.o")

    def evaluate(self, inputs):
        values = Read(inputs)
        for plug, _, ways, function in self.steps:
            values.take(plug, function(*[way(values) for way in ways]))
        return values


@pytest.mark.parametrize("seed", range(12))
def test_a_random_graph_gives_what_python_gives(seed):
    graph = Graph(seed, 150)
    rig = zent.Rig(graph.records, scene={"nodes": graph.nodes, "connections": graph.links})
    assert len(rig.records) == 150 and rig.notes == []
    compared = 0
    for frame in range(5):
        numbers = random.Random(frame)
        inputs = {"ctrl.x": numbers.uniform(-2, 2), "ctrl.y": numbers.uniform(-2, 2),
                  "ctrl.t": [numbers.uniform(-2, 2) for _ in range(3)]}
        made = rig.evaluate({name: value for name, value in inputs.items() if name in rig.inputs})
        # Each function by itself, with the values that came to it, gives the same bits.
        single = {name: np.float32(value) for name, value in inputs.items()}
        single.update(made)
        for plug, method, ways, _ in graph.steps:
            alone = getattr(zent.nodes, method)(*[way(single) for way in ways])
            assert np.float32(alone).tobytes() == np.float32(made[plug]).tobytes(), (plug, method)
        try:
            expected = graph.evaluate(inputs)
        except ArithmeticError:
            continue
        for plug, value in made.items():
            np.testing.assert_allclose(value, dict.get(expected, plug), rtol=0, atol=1e-5 * expected.sizes[plug], err_msg=plug)
        compared += 1
    assert compared > 0
