"""Whole rigs: values by hand and of the example, frames, and what is refused."""
import json
from concurrent.futures import ThreadPoolExecutor

import numpy as np
import pytest

import zent
from conftest import ARM

SCENE = {"nodes": {"|ctrl": {"type": "transform", "translate": [1, 2, 3], "rotate": [{"angle": 90}, {"angle": 0}, {"angle": 0}]},
                   "double": {"input1": 0, "input2": 2, "output": 2},
                   "more": {"input1": 0, "input2": 10, "output": 12},
                   "sum": {"input": {"multi": []}, "output": 0},
                   "after": {"input1": 0, "input2": 1, "output": 0}},
         "connections": [["|ctrl.translate.translateX", "double.input1"], ["double.output", "more.input1"],
                         ["sum.output", "after.input1"]]}


def small(broken=False):
    manifest = zent.Manifest()
    manifest.add("ctrl", "transform", np.eye(4), translate=".translate", rotate=".rotate", rotateOrder=0, scale=[1, 1, 1],
                 shear=[0, 0, 0], rotatePivot=[0, 0, 0], scalePivot=[0, 0, 0], rotatePivotTranslate=[0, 0, 0],
                 scalePivotTranslate=[0, 0, 0])
    manifest.add("more", "addDoubleLinear", ".output", input1=".input1", input2=".input2")
    manifest.add("double", "multDoubleLinear", ".output", input1=".input1", input2=".input2")
    if broken:
        manifest.add("sum", "blendTwoAttr", ".output", input=[], attributesBlender=0)
        manifest.add("after", "addDoubleLinear", ".output", input1=".input1", input2=".input2")
    return zent.Rig(manifest, scene=SCENE)


@pytest.fixture(scope="module")
def arm():
    return zent.Rig(ARM / "manifest.json", ARM / "resource.bin", ARM / "scene.json")


def test_values_by_hand():
    rig = small()
    assert rig.evaluate(outputs=["more.output"]) == {"more.output": 12}
    assert rig.evaluate({"ctrl.translate.translateX": 4}) == {"more.output": 18, "double.output": 8}
    assert rig.evaluate({"more.input2": 0})["more.output"] == 8  # the other input has stayed
    frames = rig.evaluate({"ctrl.translate": [[1, 0, 0], [2, 0, 0], [3, 0, 0]], "double.input2": [1, 2, 3], "more.input2": 100})
    assert frames["more.output"].tolist() == [101, 104, 109] and frames["double.output"].dtype == np.float32
    assert rig.evaluate({"more.input2": []})["more.output"].shape == (0,)
    assert rig.inputs["ctrl.translate"] == ("ctrl.translate", "numbers", (3,), "")
    assert rig.inputs["ctrl.rotate"].unit == "rad" and rig.inputs["double.input2"].shape == ()
    assert [record.node for record in rig.records if record.outputs] == ["double", "more"]
    assert rig.records[-1].sources == (rig.records.index(next(r for r in rig.records if r.node == "double")),)


def test_the_arm_is_as_in_its_scene(arm):
    nodes = json.loads((ARM / "scene.json").read_text())["nodes"]
    made = arm.evaluate()
    for plug in ("button.outTranslate", "cordMiddle.position", "reach.distance"):
        node, name = plug.split(".")
        np.testing.assert_allclose(made[plug], nodes[node][name], atol=1e-3)
    assert made["armSkin.outputGeometry[0]"].shape == arm.outputs["armSkin.outputGeometry[0]"].shape
    assert arm.shape_matrix("sleeveSkin.outputGeometry[0]").shape == (4, 4) and arm.notes == []
    assert arm.inputs["handControl.rotate"].unit == arm.outputs["bend.angle"].unit == "rad"


def test_frames_are_what_each_is_alone(arm):
    mesh = next(plug for plug in arm.inputs.values() if plug.type == "mesh")
    dice = np.random.default_rng(5)
    hand, points = [27, 0, 22] + dice.uniform(-3, 3, (6, 3)), dice.uniform(-20, 20, (6, *mesh.shape))
    outputs = ["wrist.worldMatrix[0]", "armSkin.outputGeometry[0]", "bend.angle"]

    def work(_):
        return arm.evaluate({"handControl.translate": hand, mesh.name: points}, outputs)

    frames = work(0)
    for frame in range(6):
        alone = arm.evaluate({"handControl.translate": hand[frame], mesh.name: points[frame]}, outputs)
        for plug in outputs:
            np.testing.assert_array_equal(frames[plug][frame], alone[plug])
    assert len(np.unique(frames["bend.angle"])) == 6
    with ThreadPoolExecutor(3) as pool:
        for again in pool.map(work, range(6)):
            np.testing.assert_array_equal(again["bend.angle"], frames["bend.angle"])


def test_what_fails_is_named():
    rig = small(broken=True)
    assert rig.evaluate(outputs=["more.output"]) == {"more.output": 12}  # nothing of it depends on what fails
    for outputs in (["after.output"], None, []):
        with pytest.raises(zent.Error, match=r"sum\(blendTwoAttr\)"):
            rig.evaluate(outputs=outputs)


REFUSED = [
    ({"ctrl.translat": [0, 0, 0]}, zent.Error, "no input ctrl.translat; the nearest is ctrl.translate"),
    ({"ctrl.translate": [0, 0]}, ValueError, r"Rig.evaluate: ctrl.translate: shape \(2,\), expected \(3,\) or \(rows, 3\)"),
    ({"ctrl.translate.translateX": "a"}, TypeError, "ctrl.translate.translateX: numbers expected, not str"),
    ({"ctrl.translate": np.zeros((2, 3)), "double.input2": [1, 2, 3]}, ValueError, "double.input2: 3 rows, but ctrl.translate has 2"),
    ([1], TypeError, "inputs: a dict expected, not list"),
    ({3: 1}, TypeError, "inputs: a plug's name expected, not int"),
]


@pytest.mark.parametrize("inputs, error, text", REFUSED, ids=range(len(REFUSED)))
def test_what_does_not_fit_is_refused(inputs, error, text):
    with pytest.raises(error, match=text):
        small().evaluate(inputs)


def test_files_that_cannot_be_read_are_told(tmp_path, arm):
    with pytest.raises(zent.Error, match="no output armSkim"):
        arm.evaluate(outputs=["armSkim.outputGeometry[0]"])
    with pytest.raises(ValueError, match=r"armBound.*: 2 entries, not 180|shape"):
        arm.evaluate({next(plug.name for plug in arm.inputs.values() if plug.type == "mesh"): np.zeros((2, 3))})
    with pytest.raises(zent.Error, match="cannot open file"):
        zent.Rig(tmp_path / "none.json")
    with pytest.raises(TypeError, match="outputs: a list of names"):
        arm.evaluate(outputs=[1])
    with pytest.raises(zent.Error, match="max_size"):
        zent.Rig(ARM / "manifest.json", ARM / "scene.json", ARM / "scene.json")  # no resource file
    assert zent.Rig([], scene={}).evaluate() == {}
    (tmp_path / "scene.json").write_text("{")
    with pytest.raises(zent.Error, match="scene.json"):
        zent.Rig([], scene=tmp_path / "scene.json")
