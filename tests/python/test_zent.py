"""The Python package: every node function of plain values over literal records, rows, wrong arguments, threads, shapes,
runs of the check, and the stub."""
import ast
import copy
import doctest
import importlib
import inspect
import os
import pathlib
import pickle
import random
import re
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor

import numpy as np
import pytest

import zent
from conftest import ARM, HERE, METHODS, RECORDS, ROOT, arguments_of
from zent import nodes

IDENTITY = np.eye(4)
KINDS = {"Mesh", "Curve", "Surface", "Lattice"}


@pytest.mark.parametrize("record", RECORDS, ids=lambda record: record["node_name"])
def test_a_record_has_its_result(record):
    given = arguments_of(record)
    expected = [entry["value"] for entry in record["results"]]
    function = getattr(nodes, record["method"])
    result = np.asarray(function(**given))
    if result.shape == (2,) and np.shape(expected[0]) == (3,):
        expected = expected[0][:2]  # Maya's side of a pair is read as a vector
    expected = np.array(expected)
    np.testing.assert_allclose(result, expected.reshape(result.shape), atol=2e-5)

    rows = {name: value for name, value in given.items() if isinstance(value, (int, float, list))}
    repeated = function(**{**given, **{name: np.array([value] * 3) for name, value in rows.items()}})
    np.testing.assert_array_equal(repeated, np.array([result] * 3))


def test_the_records_match_in_a_run_too():
    results = zent.check(HERE / "records.json", epsilon=2e-5)
    assert [record for record in results.records if not record.matches] == []
    assert results.matched and results.summary["match"] == len(RECORDS)


def test_every_method_has_a_function_with_its_arguments():
    for name, method in METHODS.items():
        assert len(nodes.ARGUMENTS[name]) == len(method["arguments"]), name
        parameters = inspect.signature(getattr(nodes, name)).parameters
        assert sorted(parameters) == sorted(nodes.ARGUMENTS[name])
        for argument, info in zip(nodes.ARGUMENTS[name], method["arguments"]):
            line = next(line for line in getattr(nodes, name).__doc__.splitlines()
                        if line.startswith(f"    {argument}:"))
            words = {"Float": "float", "Int": "int", "Bool": "bool", "Vec3": "(3,) float", "Mat4": "(4, 4) float"}
            if info["type"] in words and not argument.startswith("unused"):
                assert line.split(": ")[1].startswith(words[info["type"]]), (name, argument)
            assert not (info["type"] in KINDS and info["type"] not in line), (name, argument)


def test_the_names_are_those_of_plain_plugs():
    """A plug that is told by its name alone is the argument's name."""
    compared = 0
    for name, method in METHODS.items():
        for argument, told in zip(nodes.ARGUMENTS[name], method["nodes"][0]["arguments"] if method["nodes"] else []):
            if method["subsystem"] == "ik" or told.get("from", "").split(".")[0] in ("handle", "sine"):
                continue  # several nodes have plugs of one name
            plug = told.get("from", "").split(".")[-1].split("[")[0]
            if plug in nodes.ARGUMENTS[name]:
                compared += 1
                assert argument == plug, (name, argument, plug)
    assert compared > 100


def test_values_by_hand():
    np.testing.assert_allclose(nodes.animCurve([-1, 0, 1, 2.5, 9], [0, 2, 4], [0, 10, 10], *[[0] * 3] * 2, [2] * 3,
                                               *[[0] * 3] * 2, [2] * 3), [0, 0, 5, 10, 10], atol=1e-6)
    half = nodes.composeMatrix([0, 0, 0], [[0, 0, np.pi / 2], [0, 0, 0]])
    np.testing.assert_allclose(half[0] @ half[0], np.diag([-1, -1, 1, 1]), atol=1e-6)
    np.testing.assert_allclose(half[0][0], [0, 1, 0, 0], atol=1e-6)  # row by row: x goes to y
    target = IDENTITY.copy()
    target[3, :3] = 1, 2, 3
    assert nodes.pointConstraint([1], [target.ravel()], [[0, 0, 0]], offset=[0, 0, 1]).tolist() == [1, 2, 4]
    with pytest.raises(zent.Error, match="^row 1: "):
        nodes.animCurve([[0, 1]][0], *[[[0, 1], [1, 0]]] * 8)
    chain = dict(endTranslate=[1, 0, 0], poleVector=[0, 1, 0], rotate=[[0, 0, 0], [0, 0, -0.5]],
                 jointTranslate=[[0, 0, 0], [1, 0, 0]])
    handles = np.array([[1, 0, 0], [1.5, 0.2, 0], [0, 1.2, 0.1]])
    for handle, rotates in zip(handles, nodes.ikRPsolver(handles, **chain)):
        lower = nodes.joint([1, 0, 0], rotates[1])
        end = nodes.joint([1, 0, 0]) @ lower @ nodes.joint([0, 0, 0], rotates[0])
        np.testing.assert_allclose(end[3, :3], handle, atol=1e-4)


WRONG = [
    (lambda: nodes.clamp("a"), TypeError, "clamp: input: numbers expected, not str"),
    (lambda: nodes.clamp(None), TypeError, "input: numbers expected, not NoneType"),
    (lambda: nodes.clamp(1 + 2j), TypeError, "input: numbers expected, not complex128"),
    (lambda: nodes.clamp(np.array([{}])), TypeError, "input: numbers expected, not object"),
    (lambda: nodes.clamp([[1, 2], [3]]), ValueError, "input: "),
    (lambda: nodes.clamp(), TypeError, "missing required argument 'input'"),
    (lambda: nodes.clamp(1, 2, 3, 4), TypeError, "at most 3 arguments, 4 were given"),
    (lambda: nodes.clamp(1, low=2), TypeError, "unexpected keyword argument 'low'"),
    (lambda: nodes.clamp(1, input=2), TypeError, "multiple values for argument 'input'"),
    (lambda: nodes.clamp([1, 2], [1, 2, 3]), ValueError, "min: 3 rows, but input has 2"),
    (lambda: nodes.composeMatrix([1, 2]), ValueError, r"inputTranslate: shape \(2,\), expected \(3,\) or \(rows, 3\)"),
    (lambda: nodes.composeMatrix(inputRotateOrder=1.5), TypeError, "inputRotateOrder: whole numbers expected"),
    (lambda: nodes.composeMatrix(inputRotateOrder=2**40), ValueError, "inputRotateOrder: 1099511627776 is out of range"),
    (lambda: nodes.composeMatrix(inputRotateOrder=np.array([2**63], "u8")), ValueError, "inputRotateOrder: .*out of range"),
    (lambda: nodes.clamp(np.broadcast_to(np.float64(0), 1 << 45)), MemoryError, "input: "),
    (lambda: nodes.blendTwoAttr([1, 2, 3]), ValueError, "input: 3 entries, takes at most 2"),
    (lambda: nodes.blendTwoAttr([]), zent.Error, ""),
    (lambda: nodes.blendWeighted({-1: 2}), ValueError, "input: -1 is out of range"),
    (lambda: nodes.skinMesh(zent.Lattice([[0] * 3], [1, 1, 1]), [], [], ([], [], [])), TypeError,
     "skinMesh: inputGeometry: a Mesh expected, not zent"),
    (lambda: zent.skin([[0, 0, 0]], [IDENTITY], [IDENTITY], ([0], [1], [1.0])), zent.Error, "influences"),
    (lambda: zent.skin([[0, 0, 0]], [IDENTITY], [IDENTITY], ([0], [0, 1], [1.0])), ValueError, "weights: 2 influences"),
    (lambda: zent.Curve([[0, 0, 0]] * 4, knots=[0, 1]), ValueError, "knots: 2 knots for 4 points of degree 3; 6"),
    (lambda: zent.Curve([[0, 0, 0]] * 4, degree=9), ValueError, "degree: 1 to 5 expected, not 9"),
    (lambda: zent.Surface(np.zeros((4, 3))), ValueError, "points: 2 dimensions"),
    (lambda: zent.Lattice([[0, 0, 0]], [2, 1, 1]), ValueError, "1 points for 2 by 1 by 1"),
    (lambda: zent.compile_expression("a.x = ;"), zent.Error, "line 1, column 7"),
]


@pytest.mark.parametrize("call, error, text", WRONG, ids=range(len(WRONG)))
def test_a_wrong_argument_is_named(call, error, text):
    with pytest.raises(error, match=text):
        call()


def test_any_layout_goes_in():
    rows = np.arange(12.0).reshape(4, 3)
    expected = nodes.composeMatrix(rows.astype("f4"))
    frozen = rows.astype("f4")
    frozen.flags.writeable = False
    for form in (rows, rows.tolist(), frozen, np.asfortranarray(rows), rows.astype(">f8"), rows.astype("i2"),
                 np.repeat(rows, 2, axis=1)[:, ::2], rows[::-1][::-1]):
        np.testing.assert_array_equal(nodes.composeMatrix(form), expected)
    np.testing.assert_array_equal(nodes.composeMatrix(rows[::-1]), expected[::-1])
    assert np.isnan(nodes.clamp(float("nan"), 0, 1)) or nodes.clamp(float("nan"), 0, 1) in (0, 1)
    assert nodes.composeMatrix(np.zeros((0, 3))).shape == (0, 4, 4)


def test_junk_gives_exceptions_only():
    dice = random.Random(7)
    with np.errstate(all="ignore"):
        pool = [None, True, 3, -1, 2**70, 1e300, float("nan"), "text", b"\x1c", [], [[]], {}, {0: 1}, {(0, 0): [1]},
                object(), range(3), np.zeros(3), np.full((2, 3), np.inf), np.zeros((2, 2, 2)), np.eye(4), [np.eye(4)] * 2,
                np.array([1, 2], "u4"), np.array(["a"]), np.array(None), np.ones(5)[::-2], np.zeros((0, 3)),
                np.datetime64("2020-01-01"), ([0], [0], [1]), ([7], [[1, 2, 3]]), [7, 2**31 - 1],
                zent.Mesh([[0, 0, 0]] * 3), zent.Mesh([]), zent.Curve([[0, 0, 0], [np.nan, 1, 0]], 1),
                zent.Curve(np.eye(3), 2), zent.Surface(np.zeros((4, 4, 3))), zent.Lattice(np.zeros((8, 3)), [2, 2, 2]),
                [zent.Mesh([[1, 2, 3]])] * 2]
    evaluated = 0
    for name, names in nodes.ARGUMENTS.items():
        for _ in range(150):
            try:
                getattr(nodes, name)(**{each: dice.choice(pool) for each in names if dice.random() < 0.9})
                evaluated += 1
            except (TypeError, ValueError, MemoryError, zent.Error):
                pass
    assert evaluated > 100


def test_threads_give_what_one_gives():
    times = np.linspace(-5, 15, 20000)
    keys = [np.arange(10), np.arange(10) ** 2, *[np.ones(10)] * 2, [9] * 10, *[np.ones(10)] * 2, [9] * 10]
    surface = zent.Surface(np.random.default_rng(1).random((5, 6, 3)))
    points = np.random.default_rng(2).random((50, 3))

    def work(_):
        return nodes.animCurve(times, *keys), nodes.closestPointOnSurface(surface, points)

    alone = work(0)
    with ThreadPoolExecutor(4) as pool:
        for curve, closest in pool.map(work, range(16)):
            np.testing.assert_array_equal(curve, alone[0])
            np.testing.assert_array_equal(closest, alone[1])


def test_rows_in_threads_are_those_of_one():
    """Calls of enough work for threads: numbers, lists, lists of different lengths, shapes, and errors."""
    dice = np.random.default_rng(6)
    handles = dice.uniform(0.3, 1.2, (20000, 3))
    chain = dict(endTranslate=[1, 0, 0], poleVector=[0, 1, 0], rotate=[[0, 0, 0], [0, 0, -0.5]],
                 jointTranslate=[[0, 0, 0], [1, 0, 0]])
    surface = zent.Surface(dice.random((6, 7, 3)))
    code, signs = bytes([0, 0, 20, 0, 21, 0, 0, 1, 11, 26, 0, 4, 0, 0, 20, 1, 28]), dice.choice([-1, 1], (60000, 1))
    signs[:5000] = -1  # so that the rows are even until the threads have begun
    meshes = [zent.Mesh(dice.random((2000, 3))) for _ in range(50)]
    times = np.tile([0.0, 1.0], (60000, 1))
    times[[40000, 59000]] = [1, 0]  # keys that descend

    def work():
        yield nodes.ikRPsolver(handles, **chain)
        yield np.array(nodes.closestPointOnSurface(surface, handles[:500]))
        yield nodes.expression(signs, code, [1, 0])
        yield [mesh.points for mesh in nodes.deformBendMesh(meshes, curvature=np.linspace(0, 1, 50))]
        with pytest.raises(zent.Error, match="^row 40000: "):
            nodes.animCurve(0.5, times, *[[0, 0]] * 7)

    try:
        zent.set_threads(1)
        alone = list(work())
        zent.set_threads(5)
        for one, other in zip(alone, work()):
            np.testing.assert_array_equal(one, other)
    finally:
        zent.set_threads(0)


def test_shapes_share_their_points():
    mesh = zent.Mesh([[0, 0, 0], [1, 0, 0]], matrix=np.diag([2, 2, 2, 1]))
    view = mesh.points
    view[1] = 5, 6, 7
    assert mesh.points[1].tolist() == [5, 6, 7]
    with pytest.raises(ValueError, match="points: shape"):
        mesh.points = [[1, 2, 3]]
    mesh.matrix = IDENTITY
    assert view is not mesh.points and np.shares_memory(view, mesh.points)
    bent = nodes.deformBendMesh(mesh, curvature=0.5)
    assert not np.shares_memory(bent.points, view) and view[1].tolist() == [5, 6, 7]
    curve = zent.Curve([[0, 0, 0], [1, 0, 0], [2, 0, 0], [3, 0, 0]])
    assert curve.knots.tolist() == [0, 0, 0, 1, 1, 1] and not curve.knots.flags.writeable
    np.testing.assert_allclose(nodes.curveInfo([curve, curve]), 3, atol=1e-5)
    surface = zent.Surface(np.zeros((4, 5, 3)), knots_v=[0, 0, 0, 1, 2, 2, 2])
    lattice = zent.Lattice(np.zeros((8, 3)), (2, 2, 2))
    for shape in (mesh, curve, surface, lattice):
        for twin in (shape.copy(), copy.deepcopy(shape), pickle.loads(pickle.dumps(shape))):
            np.testing.assert_array_equal(twin.points, shape.points)
            assert not np.shares_memory(twin.points, shape.points)
    del mesh
    assert view[1].tolist() == [5, 6, 7]


def test_skins_frames():
    shift = IDENTITY.copy()
    shift[3, :3] = 0, 1, 0
    frames = np.array([[IDENTITY, IDENTITY], [IDENTITY, shift], [shift, shift]])
    points, weights = [[0, 0, 0], [1, 0, 0]], [[1, 0], [0.5, 0.5]]
    skinned = zent.skin(points, frames, [IDENTITY] * 2, weights)
    assert skinned[:, :, 1].tolist() == [[0, 0], [0, 0.5], [1, 1]]
    sparse = zent.skin(points, frames, [IDENTITY] * 2, ([0, 1, 1], [0, 0, 1], [1, 0.5, 0.5]))
    np.testing.assert_array_equal(sparse, skinned)
    meshes = nodes.skinMesh(zent.Mesh(points), frames, [IDENTITY] * 2, weights)
    np.testing.assert_array_equal([mesh.points for mesh in meshes], skinned)
    blend = nodes.blendShapeMesh(zent.Mesh(points), [[0], [0.5]], deltas={0: ([1], [[0, 4, 0]])})
    assert [mesh.points[1].tolist() for mesh in blend] == [[1, 0, 0], [1, 2, 0]]


def test_memory_does_not_grow():
    import resource
    if "asan" in os.environ.get("LD_PRELOAD", ""):
        pytest.skip("the sanitizer keeps what is freed")
    call = dict(targetWeight=[1.0], targetParentMatrix=[IDENTITY], targetTranslate=[[0, 0, 0]])
    mesh = zent.Mesh(np.zeros((1000, 3)))

    def work():
        for _ in range(20000):
            nodes.pointConstraint(**call)
        for _ in range(300):
            nodes.skinMesh(mesh, [IDENTITY], [IDENTITY], ([0], [0], [1.0]))
            with pytest.raises(TypeError):
                nodes.clamp("a")
        return resource.getrusage(resource.RUSAGE_SELF).ru_maxrss

    work()
    before = work()
    assert work() - before < 4096  # kB; a float for each call would be more than twice that


def test_a_run_tells_its_records(tmp_path):
    kept = tmp_path / "kept.jsonl"
    results = zent.check(ARM / "faults.json", ARM / "resource.bin", ARM / "scene.json", results=kept)
    first = next(iter(results))
    assert (first.node, first.method, first.outcome) == ("reach", "distanceBetweenTwoMatrices", "match")
    wrong = [record for record in results if not record.matches]
    assert [record.node for record in wrong] == ["reachRatio", "wristTurns", "armSkin"]
    assert wrong[0].statistics[0].greatest == pytest.approx(abs(wrong[0].maya[0]["value"] - wrong[0].zent[0]["value"]))
    assert results.summary["mismatch"] == 3 and not zent.read_results(kept).matched
    cut = tmp_path / "cut.jsonl"
    cut.write_bytes(kept.read_bytes()[:-20])
    assert len(zent.read_results(cut).records) == 4 and not zent.read_results(cut).is_complete
    bad = [{"node_name": "a", "method": "clamp", "results": [{"attribute": 0, "value": 1}], "arguments": []}]
    errors = zent.check(bad)
    assert errors.records[0].outcome == "error" and errors.records[0].error
    with pytest.raises(zent.CheckError, match="cannot open file"):
        zent.check(tmp_path / "none.json")
    with pytest.raises(zent.Error, match="no results file"):
        zent.read_results(ARM / "manifest.json")
    with pytest.raises(zent.CheckError, match="there is no program"):
        zent.check(bad, program=tmp_path / "zentcheck")


def test_a_run_is_read_while_it_goes_on(tmp_path):
    whole = zent.check(ARM / "faults.json", ARM / "resource.bin", ARM / "scene.json")
    kept = tmp_path / "kept.jsonl"
    running = zent.check(ARM / "faults.json", ARM / "resource.bin", ARM / "scene.json", results=kept, stream=True)
    assert [(each.node, each.outcome) for each in running] == [(each.node, each.outcome) for each in whole.records]
    assert {**running.summary, "seconds": 0} == {**whole.summary, "seconds": 0} and list(running) == []
    assert [each.node for each in zent.read_results(kept)] == [each.node for each in whole.records]

    # A run that never ends by itself gives its records, and is ended.
    endless = tmp_path / "endless"
    endless.write_text(f"""#!/bin/sh
while [ "$1" != --results ]; do shift; done
exec >"$2"
head -n 2 {kept}
echo $$ >{tmp_path}/id
exec sleep 1000
""")
    endless.chmod(0o755)
    with zent.check([], program=endless, stream=True) as running:
        assert next(running).node == whole.records[0].node
        process = pathlib.Path(f"/proc/{(tmp_path / 'id').read_text().strip()}") if (tmp_path / "id").exists() else None
    assert list(running) == [] and not running.is_complete and not (process and process.exists())
    with pytest.raises(subprocess.TimeoutExpired):
        list(zent.check([], program=endless, stream=True, timeout=0.3))

    bad = [{"node_name": "a", "method": "clamp", "results": [{"attribute": 0, "value": 1}], "arguments": []}]
    assert [each.outcome for each in zent.check(bad, stream=True)] == ["error"]
    with pytest.raises(zent.CheckError, match="cannot open file"):
        list(zent.check(tmp_path / "none.json", stream=True))
    with pytest.raises(zent.CheckError, match="ended by signal 9"):
        endless.write_text("#!/bin/sh\nkill -9 $$\n")
        zent.check([], program=endless, stream=True)


def test_expressions():
    program = zent.compile_expression("ball.translateX = time * 2.5; ball.translateY = ball.translateX + 1;")
    assert program.inputs == ["time"]
    np.testing.assert_allclose(program([[2], [4]]), [[5, 6], [10, 11]])
    assert "input 0" in program.listing
    # Output 0 is 1, and output 1 where the input is above 0: rows of different lengths.
    code, constants = bytes([0, 0, 20, 0, 21, 0, 0, 1, 11, 26, 0, 4, 0, 0, 20, 1, 28]), [1, 0]
    assert nodes.expression([[1], [-1], [2]], code, constants).tolist() == [[1, 1], [1, 0], [1, 1]]
    assert nodes.expression([[-1], [1]], code, constants).tolist() == [[1, 0], [1, 1]]
    assert nodes.expression([[-1], [-2]], code, constants).tolist() == [[1], [1]]


def test_the_stub_is_that_of_the_bindings():
    made = subprocess.run([sys.executable, ROOT / "scripts/python-stub"], stdout=subprocess.PIPE, check=True, text=True).stdout
    assert made == (ROOT / "python/zent/nodes.pyi").read_text()


def told_by(source, module):
    """Of a stub's classes and functions, and of the module's own, {name: parameters}; a property has None."""
    stub, own = {}, {}

    def add(prefix, body, bases):
        for each in body:
            if isinstance(each, ast.ClassDef):
                inherited = [base.body for base in bases if base.name in [name.id for name in each.bases]]
                if not each.name.startswith("_"):
                    stub[each.name] = None
                    for part in (each.body, *inherited):
                        add(each.name + ".", part, [])
            elif isinstance(each, ast.FunctionDef):
                names = [argument.arg for argument in each.args.args if argument.arg != "self"]
                is_property = any(getattr(name, "id", getattr(name, "attr", "")) in ("property", "setter")
                                  for name in each.decorator_list)
                stub[prefix + each.name] = None if is_property else names

    def parameters(text):
        """Those of the signature that pybind11 writes at the start of a docstring."""
        return [name for name in re.findall(r"(\w+): ", re.match(r"\w+\((.*)\) ->", text)[1]) if name != "self"]

    body = ast.parse(source).body
    add("", body, [each for each in body if isinstance(each, ast.ClassDef)])
    for name, each in vars(module).items():
        if inspect.isclass(each):
            own[name] = None
            for member, value in vars(each).items() if each is not zent.Error else ():
                if member in ("__init__", "__len__") or not member.startswith("_"):
                    own[f"{name}.{member}"] = None if isinstance(value, property) else parameters(value.__doc__)
        elif callable(each):
            own[name] = parameters(each.__doc__)
    return stub, own


@pytest.mark.parametrize("name", ["_zent", "_rig"])
def test_the_stub_of_the_compiled_parts_tells_all_of_them(name):
    stub, own = told_by((ROOT / f"python/zent/{name}.pyi").read_text(), importlib.import_module(f"zent.{name}"))
    assert stub == own and len(own) > 5


def test_what_has_no_value_is_an_error():
    for kind in (zent.Mesh, zent.Curve, zent.Surface, zent.Lattice):
        empty = kind.__new__(kind)
        for use in (lambda: empty.points, lambda: empty.copy(), lambda: len(empty), lambda: repr(empty),
                    lambda: nodes.curveInfo(empty), lambda: nodes.skinMesh(empty, [], [], ([], [], []))):
            with pytest.raises(TypeError):
                use()
    for use in (lambda: zent._zent.ResourceWriter.__new__(zent._zent.ResourceWriter).raw(b""),
                lambda: zent._rig.Rig.__new__(zent._rig.Rig).notes(), lambda: zent.Resource().mesh(zent.Mesh.__new__(zent.Mesh))):
        with pytest.raises(TypeError, match="without its constructor"):
            use()


@pytest.mark.parametrize("document", ["README.md", "docs/python.md"])
def test_the_documents_examples(document):
    failed, tried = doctest.testfile(str(ROOT / document), module_relative=False)
    assert failed == 0 and tried > 2
