"""The writers of manifests and resource files: what they write reads back, and what they refuse."""
import json
import re
import subprocess
import sys
import types

import numpy as np
import pytest

import zent
from conftest import ARM, RECORDS, ROOT, arguments_of
from zent import nodes

IDENTITY = np.eye(4)
TRIANGLE = zent.Mesh([[0, 0, 0], [1, 0, 0], [0, 1, 0]], np.diag([2, 2, 2, 1]))
LINE = zent.Curve([[0, 0, 0], [1, 0, 0], [2, 1, 0], [3, 1, 0]])
SHEET = zent.Surface(np.random.default_rng(3).random((4, 5, 3)), matrix=np.diag([1, 2, 3, 1]))
CAGE = zent.Lattice(np.random.default_rng(4).random((12, 3)), (2, 2, 3))
PROGRAM = zent.compile_expression("a.x = b.y * 2.5 + 3; a.y = b.y > 1;")

EVERY_BLOCK = [
    ("skinMesh", dict(inputGeometry=TRIANGLE, matrix=[IDENTITY, np.diag([1, 3, 1, 1])], bindPreMatrix=[IDENTITY] * 2,
                      weightList=np.array([[1, 0], [0, 1], [0.5, 0.5]]), envelope=0.5, geomMatrix=IDENTITY)),
    ("blendShapeMesh", dict(inputGeometry=TRIANGLE, weight={0: 0.5, 3: 1}, envelope=1, shapes={3: TRIANGLE.copy()},
                            deltas={(0, 6000): ([0, 2], [[1, 2, 3], [4, 5, 6]])}, targetWeights={0: {2: 0.25}})),
    ("clusterLattice", dict(inputGeometry=CAGE, members=range(12), matrix=np.diag([2, 1, 1, 1]), geomMatrix=IDENTITY,
                            angleInterpolation=0, weightList={1: 0.5}, translate=[0, 1, 0], rotate=[0, 0, 0],
                            rotateOrder=0, scale=[1, 1, 1], rotatePivot=[0, 0, 0], scalePivot=[0, 0, 0],
                            rotatePivotTranslate=[0, 0, 0], scalePivotTranslate=[0, 0, 0])),
    ("wireMesh", dict(inputGeometry=TRIANGLE, rotation=0.5, baseWire=LINE, deformedWire=LINE.copy(),
                      bindings=([0, 0.5, 1], [np.eye(3)] * 3))),
    ("pointOnSurfacePosition", dict(inputSurface=SHEET, parameterU=0.3, parameterV=0.6, turnOnPercentage=False)),
    ("expression", dict(inputs=[2.5], code=PROGRAM.code, constants=PROGRAM.constants)),
]


def test_all_that_is_written_reads_back():
    manifest = zent.Manifest(zent.Resource())
    wanted = [(record["method"], arguments_of(record)) for record in RECORDS] + EVERY_BLOCK
    for method, given in wanted:
        if method == "expression":
            given = dict(zip(nodes.ARGUMENTS[method], given.values()))
        result = getattr(nodes, method)(**given)
        kind = zent.methods()[method]["results"][0]["type"]
        if kind == "Vec3" and np.size(result) == 2:
            result = [*result, 0]  # Maya's side of a pair is read as a vector
        elif kind == "Vec3[]" and np.ndim(result) == 1:
            result = [result]
        manifest.add("made", method, result, **given)
    results = zent.check(manifest, epsilon=2e-5)
    assert [record for record in results.records if not record.matches] == []
    assert results.summary["match"] == len(wanted)


def test_the_arms_files_are_what_its_script_writes(tmp_path):
    subprocess.run([sys.executable, "-B", ARM / "make.py", tmp_path], check=True)
    for name in ("scene.json", "manifest.json", "faults.json", "resource.bin"):
        assert (tmp_path / name).read_bytes() == (ARM / name).read_bytes(), name


def test_the_documents_exporter(tmp_path, monkeypatch):
    """Over the example's scene, whose file stands in for what Maya would answer."""
    scene = json.loads((ARM / "scene.json").read_text())["nodes"]

    def children(value):
        return {key: each["compound"] for key, each in value["multi"].items()}

    def weights(node, component, **_):
        point = re.search(r"vtx\[(\d+)\]", component)[1]
        row = children(scene[node]["weightList"])[point]["weights"]["multi"]
        return [row.get(str(i), 0) for i in range(4)]

    shapes = {"armSkin": ["armMesh"], "sleeveSkin": ["sleeve"]}
    cmds = types.SimpleNamespace(
        ls=lambda type: [name for name, node in scene.items() if node["type"] == type],
        getAttr=lambda plug, multiIndices: list(range(len(scene[plug.split(".")[0]][plug.split(".")[1]]["multi"]))),
        nodeType=lambda name: "mesh" if name == "armMesh" else "nurbsSurface",
        polyEvaluate=lambda mesh, vertex: len(scene["armSkin"]["weightList"]["multi"]),
        skinCluster=lambda node, query, geometry: shapes[node], skinPercent=weights)
    monkeypatch.setitem(sys.modules, "maya", types.SimpleNamespace(cmds=cmds))
    monkeypatch.setitem(sys.modules, "maya.cmds", cmds)
    monkeypatch.chdir(tmp_path)
    exporter = re.search(r"```python\n(import maya\.cmds.*?)```", (ROOT / "docs/python.md").read_text(), re.S)[1]
    exec(exporter, {})
    results = zent.check("rig.json", "rig.bin", ARM / "scene.json", scene_resource=ARM / "resource.bin")
    assert [record.node for record in results.records if not record.matches] == []
    assert {record.method for record in results.records} == {"multiplyDivide1D", "pointConstraint", "skinMesh"}


def adding(method, results=".o", resource=None, **named):
    return lambda: zent.Manifest(resource).add("n", method, results, **named)


REFUSED = [
    (adding("clam"), zent.Error, 'no method "clam"; the nearest is "clamp"'),
    (adding("clamp", input=1, min=0), TypeError, r"n\(clamp\): max is missing"),
    (adding("clamp", inputs=1), TypeError, "no argument inputs; the nearest is \"input\""),
    (adding("clamp", arguments=[1, 2]), TypeError, "a list of 3 expected: input, min, max"),
    (adding("clamp", input="time", min=0, max=1), ValueError, "input: 'time' is no plug"),
    (adding("clamp", input=float("nan"), min=0, max=1), ValueError, "input: a manifest holds finite numbers only"),
    (adding("clamp", input=None, min=0, max=1), TypeError, "input: a plug or a number expected, not NoneType"),
    (adding("closestPointOnSurface"), TypeError, "results: a list of 2 expected"),
    (adding("multMatrix", matrixIn=[np.eye(3)]), ValueError, r"matrixIn\[0\]: a plug or 16 numbers expected"),
    (adding("multMatrix", matrixIn=".matrixIn"), TypeError, "matrixIn: a list expected, not str"),
    (adding("condition1D", firstTerm=1, secondTerm=1, colorIfTrue=1, colorIfFalse=1, operation=0.5), TypeError,
     "operation: 0.5 is no whole number"),
    (adding("blendWeighted", input={-1: 2}, weight={}), ValueError, "input: -1 is no index"),
    (adding("blendTwoAttr", input=[1, 2, 3], attributesBlender=0), ValueError, "input: 3 entries, not 0 to 2"),
    (adding("curveInfo", inputCurve=LINE), TypeError, "inputCurve: a plug or a Block of kind curve expected, not .*Curve"),
    (adding("curveInfo", resource=zent.Resource(), inputCurve=TRIANGLE), TypeError, "inputCurve: .*a Curve expected"),
    (adding("curveInfo", inputCurve=zent.Resource().mesh(TRIANGLE)), TypeError, "a block of kind curve expected, not mesh"),
    (adding("curveInfo", inputCurve={"id": -1}), TypeError, "inputCurve: -1 is no block's number"),
    (adding("curveInfo", resource=zent.Resource(), inputCurve={"id": 0}), ValueError, "inputCurve: there is no block 0"),
    (adding(["clamp"]), TypeError, "method: a name expected, not list"),
    (lambda: zent.Resource().raw(5), TypeError, "int"),
    (lambda: zent.Resource().deltas(([0], [[1, 2]])), ValueError, "Resource.deltas: deltas: shape"),
    (lambda: zent.Resource().skin_weights([[[1.0]]]), ValueError, "Resource.skin_weights: weights: "),
    (lambda: zent.Resource().indices([1.5]), TypeError, "Resource.indices: indices: whole numbers expected"),
    (lambda: zent.Resource().weight_map([1, 2], points=[1]), ValueError, "points: 1 points for 2 weights"),
    (lambda: zent.Resource().constants(["a"]), TypeError, "Resource.constants: constants: a constant is no bool"),
]


@pytest.mark.parametrize("call, error, text", REFUSED, ids=range(len(REFUSED)))
def test_what_does_not_fit_is_refused(call, error, text):
    with pytest.raises(error, match=text):
        call()


def test_a_file_is_whole_or_as_it_was(tmp_path):
    resource = zent.Resource()
    resource.raw(b"one")
    manifest = zent.Manifest()
    manifest.add("n", "clamp", 0.1, input=np.float32(0.1), min=-0.0, max=1e30)
    kept = tmp_path / "kept.json"
    manifest.write(kept)
    before = kept.read_bytes()
    assert json.loads(before)[0]["arguments"][0]["value"] == 0.1
    assert str(json.loads(before)[0]["arguments"][1]["value"]) == "-0.0"
    manifest.records.append({"node_name": {1, 2}, "method": "clamp", "results": [], "arguments": []})
    with pytest.raises(TypeError):
        manifest.write(kept)
    assert kept.read_bytes() == before and list(tmp_path.iterdir()) == [kept]
    with pytest.raises(FileNotFoundError, match="resource.bin'$"):
        resource.write(tmp_path / "none/resource.bin")
