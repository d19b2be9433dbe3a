#!/usr/bin/env python3
"""Makes the files of this example, with the Python package zent in the path: python3 make.py [FOLDER]

It builds an arm node by node. For each node it works out what Maya's node gives, from what the node means, in double
precision and with nothing of this project; writes inputs and outputs into the scene; and writes a record that holds the
node function against them. vectors.py has the mathematics, scene_file.py the writer of the scene; zent writes the
other files.
"""
import pathlib
import sys
from math import atan2, comb, cos, degrees, exp, pi, radians, sin

import zent
from scene_file import Fed, Scene, angle, angles, fed_angles, fed_vector, matrix, multi, plain
from vectors import (IDENTITY, Curve, Surface, across, add, angle_between, axis_and_angle, between, cross, dot,
                     euler_angles, euler_matrix, frame, inverse, length, linear, origin, point_by, product, scaled,
                     scaling, sub, translation, turn, unit, vector_by)

scene, resource = Scene(), zent.Resource()
manifest = zent.Manifest(resource)

X, Y, Z, ZERO, ONE = [1, 0, 0], [0, 1, 0], [0, 0, 1], [0, 0, 0], [1, 1, 1]


def in_radians(*angles):
    return [radians(a) for a in angles]


def each(pattern, places):
    """Plugs by a pattern with {}, which takes each of the places: names, or 0 to n - 1."""
    return [pattern.format(place) for place in (range(places) if isinstance(places, int) else places)]


def columns(rows):
    """Of a list of tuples a tuple of lists."""
    return tuple(plain(list(column)) for column in zip(*rows))


# ---------------------------------------------------------------------------------------------------------------------
# Transforms: the groups, controls and joints

world = {"": IDENTITY}  # world matrices by the last name of the path
paths = {"": ""}


def transform(name, parent, translate=None, rotate=None, order=0, scale=None, orient=None, local=None, checked=True,
              **more):
    """A transform, or a joint where it has a joint orient. Where a connection feeds a channel, `local` has to be given:
    the matrix that comes of it."""
    if local is None:
        local = product(scaling(scale or ONE), euler_matrix(rotate or ZERO, order), euler_matrix(orient or ZERO),
                        translation(translate or ZERO))
        rotate = angles(rotate or ZERO)
    world[name] = product(local, world[parent])
    paths[name] = f"{paths[parent]}|{name}"
    if orient is not None:
        more.update(type="joint", jointOrient=angles(orient), inverseScale=ONE, segmentScaleCompensate=True)
    else:
        more = {"type": "transform", "shear": ZERO, "rotatePivot": ZERO, "scalePivot": ZERO,
                "rotatePivotTranslate": ZERO, "scalePivotTranslate": ZERO, **more}
    above = Fed(f"{parent}.worldMatrix[0]", matrix()) if parent else matrix()
    scene.node(paths[name], translate=translate or ZERO, rotate=rotate, rotateOrder=order, scale=scale or ONE, **more,
               matrix=matrix(local), parentMatrix=multi(above), worldMatrix=multi(matrix(world[name])),
               parentInverseMatrix=multi(matrix(inverse(world[parent]))),
               worldInverseMatrix=multi(matrix(inverse(world[name]))))
    if not checked:
        return
    if orient is not None:
        manifest.add(name, "joint", ".matrix", [".translate", ".rotate", ".scale", ".rotateOrder", ".jointOrient",
                                                  ".inverseScale", ".segmentScaleCompensate"])
    manifest.add(name, "worldMatrix", ".worldMatrix[0]", [".parentMatrix[0]", ".matrix"])


def locator(name, parent, translate):
    """A locator: a transform that also tells its place in the world."""
    transform(name, parent, translate, checked=False)
    at = origin(world[name])
    scene.node(f"{paths[name]}|{name}Shape", type="locator", localPosition=ZERO, worldPosition=multi(at),
               worldMatrix=multi(Fed(f"{name}.worldMatrix[0]", matrix())))
    manifest.add(name, "locatorWorldPosition", f"{name}Shape.worldPosition[0]",
                 [f"{name}Shape.localPosition", f"{name}Shape.worldMatrix[0]"])
    return at


transform("arm", "", [18, 140, -2], in_radians(0, 12, 0))
transform("clavicle", "arm", ZERO, in_radians(0, 0, 6))
transform("hips", "arm", [-10, -35, 4], in_radians(0, -8, 0))
pole = locator("pole", "arm", [22, -20, -45])



def driven(parent, name=None, **own):
    """The attributes that Maya's own command connects on a constraint of a node under `parent`."""
    inputs = {"constraintParentInverseMatrix": Fed(f"{parent}.worldInverseMatrix[0]", matrix())}
    kinds = {"RotateOrder": ("rotateOrder", 0), "JointOrient": ("jointOrient", angles()), "Translate": ("translate", ZERO)}
    for key in own.get("inputs", ()):
        plug, rest = kinds[key]
        inputs[f"constraint{key}"] = Fed(f"{name}.{plug}", rest)
    return inputs


def aims(targets, weights, *plugs, **more):
    """The targets of a constraint: each with its weight, its parent's matrix, and the plugs of the target that it reads.
    A target that is no joint lacks some; Maya leaves their rest values."""
    kinds = {"Translate": ZERO, "Rotate": angles(), "Scale": ONE, "RotatePivot": ZERO, "RotateOrder": 0,
             "JointOrient": angles(), "InverseScale": ONE, "ScaleCompensate": False}
    sources = {"InverseScale": "inverseScale", "ScaleCompensate": "segmentScaleCompensate"}
    elements = []
    for i, (name, weight) in enumerate(zip(targets, weights)):
        element = {"targetWeight": weight, "targetParentMatrix": Fed(f"{name}.parentMatrix[0]", matrix()),
                   "targetRotateTranslate": ZERO}
        for plug in plugs:
            is_joint = name in JOINT_NAMES
            source = sources.get(plug, plug[0].lower() + plug[1:])
            has = is_joint if plug in ("JointOrient", "InverseScale", "ScaleCompensate") else (
                not is_joint if plug == "RotatePivot" else True)
            element[f"target{plug}"] = Fed(f"{name}.{source}", kinds[plug]) if has else kinds[plug]
        for key, values in more.items():
            element[f"target{key}"] = values[i]
        elements.append({"compound": element})
    return multi(*elements)


JOINT_NAMES = ("shoulder", "elbow", "wrist")

# ---------------------------------------------------------------------------------------------------------------------
# Time and an animation curve: the hand control goes up and down

FRAME = 14
KEYS = [(0, -24, 0.5), (10, -19, 0.9), (24, -8, 0.2)]  # frame, value, slope of the tangents

scene.node("time1", type="time", outTime={"time": FRAME})


def hermite(x, left, right):
    """The cubic through two keys with their slopes."""
    (x0, y0, m0), (x1, y1, m1) = left, right
    t, span = (x - x0) / (x1 - x0), x1 - x0
    return (y0 * (1 + 2 * t) * (1 - t) ** 2 + m0 * span * t * (1 - t) ** 2 + y1 * t * t * (3 - 2 * t) +
            m1 * span * t * t * (t - 1))


hand_height = hermite(FRAME, KEYS[1], KEYS[2])
tangents = [unit([1, slope]) for _, _, slope in KEYS]
scene.node("handHeight", type="animCurveTL", input=Fed("time1.outTime", {"time": 0}), output=hand_height,
           keyTimeValue=multi(*[{"compound": {"keyTime": {"time": t}, "keyValue": value}} for t, value, _ in KEYS]),
           **{f"keyTan{side}X": multi(*[x for x, _ in tangents]) for side in ("In", "Out")},
           **{f"keyTan{side}Y": multi(*[y for _, y in tangents]) for side in ("In", "Out")},
           **{f"keyTan{side}Type": multi(1, 1, 1) for side in ("In", "Out")},  # fixed
           preInfinity=0, postInfinity=0, weightedTangents=False)
manifest.add("handHeight", "animCurve", ".output",
             [".input", each(".keyTimeValue[{}].keyTime", 3), each(".keyTimeValue[{}].keyValue", 3),
              each(".keyTanInX[{}]", 3), each(".keyTanInY[{}]", 3), each(".keyTanInType[{}]", 3),
              each(".keyTanOutX[{}]", 3), each(".keyTanOutY[{}]", 3), each(".keyTanOutType[{}]", 3),
              ".preInfinity", ".postInfinity", ".weightedTangents"])

# The hand control turns about a pivot; its translate takes the curve's value.
PIVOT = [1.5, 0, 0.5]
hand_rotate, hand_scale = in_radians(15, -35, 20), [1.1, 1.1, 1.1]
hand_translate = [27, hand_height, 22]
transform("handControl", "arm", [27, Fed("handHeight.output", 0), 22], angles(hand_rotate), scale=hand_scale,
          rotatePivot=PIVOT,
          local=product(scaling(hand_scale), translation(scaled(PIVOT, -1)), euler_matrix(hand_rotate),
                        translation(add(PIVOT, hand_translate))))
manifest.add("handControl", "transform", ".matrix",
             [".translate", ".rotate", ".rotateOrder", ".scale", ZERO, ".rotatePivot", ZERO, ZERO, ZERO])

# ---------------------------------------------------------------------------------------------------------------------
# The IK handle: a point constraint and a pole vector constraint place it


def shares(weights):
    """Target weights add up to 1."""
    return [weight / sum(weights) for weight in weights]


# The handle follows the hand control, and the hips a little.
TARGETS, weights = ("handControl", "hips"), [1, 0.1]
targets = [point_by(add(hand_translate, PIVOT), world["arm"]), origin(world["hips"])]
handle_world = add(*[scaled(p, share) for p, share in zip(targets, shares(weights))])
handle = point_by(handle_world, inverse(world["arm"]))
scene.node("handleFollows", type="pointConstraint", constraintTranslate=handle, restTranslate=ZERO, offset=ZERO,
           handW0=weights[0], hipsW1=weights[1], **driven("arm"), constraintRotatePivot=ZERO, constraintRotateTranslate=ZERO,
           target=aims(TARGETS, [Fed("handleFollows.handW0", 0), Fed("handleFollows.hipsW1", 0)], "Translate",
                       "RotatePivot"))
manifest.add("handleFollows", "pointConstraint", ".constraintTranslate",
             ["arm.worldInverseMatrix[0]", ZERO, ZERO, ".offset", [".handW0", ".hipsW1"], ".restTranslate",
              each("{}.parentMatrix[0]", TARGETS), each("{}.translate", TARGETS),
              ["handControl.rotatePivot", ZERO]])

# The pole vector goes from the chain's root to the pole, in the space of the handle's parent.
root_world = origin(world["clavicle"])
pole_vector = vector_by(sub(pole, root_world), inverse(world["arm"]))
scene.node("elbowPoints", type="poleVectorConstraint", constraintTranslate=pole_vector, **driven("arm"),
           constraintRotatePivot=Fed("shoulder.translate", ZERO), pivotSpace=Fed("shoulder.parentMatrix[0]", matrix()),
           target=aims(["pole"], [1], "Translate", "RotatePivot"))
manifest.add("elbowPoints", "poleVectorConstraint", ".constraintTranslate",
             ["arm.worldInverseMatrix[0]", "shoulder.translate", "clavicle.worldMatrix[0]", "pole.parentMatrix[0]",
              "pole.translate", ZERO])

TWIST = radians(8)
transform("armHandle", "arm", fed_vector("handleFollows.constraintTranslate"), angles(), local=translation(handle),
          type="ikHandle", twist=angle(TWIST), startJoint=Fed("shoulder.message", {"message": None}),
          endEffector=Fed("effector.message", {"message": None}),
          ikSolver=Fed("ikRPsolver.message", {"message": None}), poleVector=fed_vector("elbowPoints.constraintTranslate"))

# ---------------------------------------------------------------------------------------------------------------------
# IK with two bones

BONES, UPPER, FORE = ("shoulder", "elbow"), 28, 25
ORDER = {"shoulder": 3, "elbow": 4, "wrist": 5}
ORIENT = {"shoulder": in_radians(10, -5, -35), "elbow": in_radians(0, -3, 0), "wrist": ZERO}
PREFERRED = {"shoulder": ZERO, "elbow": in_radians(0, -25, 0)}


def joint_matrix(name, rotate, translate, above):
    return product(euler_matrix(rotate, ORDER[name]), euler_matrix(ORIENT[name]), translation(translate), above)


def solve_two_bones():
    """The rotates of shoulder and elbow that bring the wrist to the handle."""
    # The chain in its preferred pose tells the axis about which the elbow bends.
    shoulder = joint_matrix("shoulder", PREFERRED["shoulder"], ZERO, world["clavicle"])
    elbow = joint_matrix("elbow", PREFERRED["elbow"], [UPPER, 0, 0], shoulder)
    upper, fore = vector_by(X, shoulder), vector_by(X, elbow)
    bend_axis = unit(cross(upper, fore))

    # Where the elbow has to be: the triangle of the two bones stands in the plane of handle and pole.
    reach = sub(handle_world, root_world)
    distance, along = length(reach), unit(reach)
    outwards = across(vector_by(pole_vector, world["arm"]), along)
    outwards = vector_by(outwards, turn(along, TWIST))
    cosine = (UPPER ** 2 + distance ** 2 - FORE ** 2) / (2 * UPPER * distance)
    new_upper = add(scaled(along, cosine), scaled(outwards, (1 - cosine ** 2) ** 0.5))
    new_fore = unit(sub(reach, scaled(new_upper, UPPER)))
    new_axis = unit(cross(new_upper, new_fore))

    # Turn the whole chain there, and then bend the elbow by what is missing.
    whole = product(inverse(frame(upper, bend_axis, cross(upper, bend_axis))),
                    frame(new_upper, new_axis, cross(new_upper, new_axis)))
    bend = turn(new_axis, angle_between(new_upper, new_fore) - angle_between(upper, fore))
    new_shoulder, new_elbow = product(linear(shoulder), whole), product(linear(elbow), whole, bend)

    def rotate(name, m, above):
        return euler_angles(product(m, inverse(linear(above)), inverse(euler_matrix(ORIENT[name]))), ORDER[name])

    return rotate("shoulder", new_shoulder, world["clavicle"]), rotate("elbow", new_elbow, new_shoulder)


shoulder_rotate, elbow_rotate = solve_two_bones()
for name, parent, translate, rotate in [("shoulder", "clavicle", ZERO, shoulder_rotate),
                                        ("elbow", "shoulder", [UPPER, 0, 0], elbow_rotate)]:
    transform(name, parent, translate, rotate, ORDER[name], orient=ORIENT[name],
              preferredAngle=angles(PREFERRED[name]))
scene.node("ikRPsolver", type="ikRPsolver")
scene.node(f"{paths['elbow']}|effector", type="ikEffector", translate=[FORE, 0, 0])
manifest.add("armHandle", "ikRPsolver", each("{}.rotate", BONES),
             ["arm.worldMatrix[0]", ".translate", "effector.translate", ".poleVector", ".twist",
              "clavicle.worldMatrix[0]", each("{}.jointOrient", BONES), each("{}.preferredAngle", BONES),
              each("{}.translate", BONES), each("{}.rotateOrder", BONES), each("{}.scale", BONES),
              each("{}.inverseScale", BONES), each("{}.segmentScaleCompensate", BONES)])

# ---------------------------------------------------------------------------------------------------------------------
# Constraints: orient, parent, aim, scale

# The wrist turns with the hand control and keeps a share of the forearm: the shortest way from the one to the other.
TARGETS, weights = ("elbow", "handControl"), [0.3, 0.7]
wrist_offset = in_radians(5, 0, -10)
forearm = linear(product(euler_matrix(elbow_rotate, ORDER["elbow"]), euler_matrix(ORIENT["elbow"]), world["shoulder"]))
hand = linear(product(euler_matrix(hand_rotate), world["arm"]))
to_forearm = inverse(linear(world["elbow"]))
wrist_rotate = euler_angles(
    product(euler_matrix(wrist_offset, ORDER["wrist"]),
            between(product(forearm, to_forearm), product(hand, to_forearm), shares(weights)[1])), ORDER["wrist"])
scene.node("wristTurns", type="orientConstraint", constraintRotate=angles(wrist_rotate), offset=angles(wrist_offset), restRotate=angles(),
           interpType=2, elbowW0=weights[0], handControlW1=weights[1],
           **driven("elbow", "wrist", inputs=("RotateOrder", "JointOrient")),
           target=aims(TARGETS, [Fed("wristTurns.elbowW0", 0), Fed("wristTurns.handControlW1", 0)], "Rotate",
                       "RotateOrder", "JointOrient"))
wrist_record = ("wristTurns", "orientConstraint", ".constraintRotate",
                ["elbow.worldInverseMatrix[0]", "wrist.rotateOrder", "wrist.jointOrient", ".offset", ".interpType",
                 [".elbowW0", ".handControlW1"], ".restRotate", each("{}.parentMatrix[0]", TARGETS),
                 each("{}.rotate", TARGETS), each("{}.rotateOrder", TARGETS), ["elbow.jointOrient", ZERO]])
manifest.add(*wrist_record)
transform("wrist", "elbow", [FORE, 0, 0], fed_angles("wristTurns.constraintRotate"), ORDER["wrist"],
          orient=ORIENT["wrist"], local=joint_matrix("wrist", wrist_rotate, [FORE, 0, 0], IDENTITY))

# A twist joint half-way along the upper arm: in the middle between shoulder and elbow, in place and rotation.
offset_rotates = [ZERO, in_radians(12, 0, 0)]
offset_translates = [[0, 0, 0.5], [0, 0, -0.5]]
to_clavicle = inverse(world["clavicle"])
middle = scaled(add(*[point_by(offset, product(world[name], to_clavicle))
                      for name, offset in zip(BONES, offset_translates)]), 0.5)
twist_rotate = euler_angles(between(*[product(euler_matrix(offset), linear(world[name]), linear(to_clavicle))
                                      for name, offset in zip(BONES, offset_rotates)], 0.5))
scene.node("upperTwists", type="parentConstraint", constraintTranslate=middle, constraintRotate=angles(twist_rotate), interpType=1,
           restTranslate=ZERO, restRotate=angles(), constraintRotatePivot=ZERO, constraintRotateTranslate=ZERO,
           constraintJointOrient=angles(), **driven("clavicle", "upperTwist", inputs=("RotateOrder",)),
           target=aims(BONES, [0.5, 0.5], "Translate", "RotatePivot", "Rotate", "RotateOrder", "Scale", "InverseScale",
                       "ScaleCompensate", "JointOrient", OffsetTranslate=offset_translates,
                       OffsetRotate=[angles(rotate) for rotate in offset_rotates]))
manifest.add("upperTwists", "parentConstraintTranslate", ".constraintTranslate",
             ["clavicle.worldInverseMatrix[0]", ZERO, ZERO, each(".target[{}].targetWeight", 2), ZERO,
              each("{}.parentMatrix[0]", BONES), each("{}.translate", BONES),
              each(".target[{}].targetOffsetTranslate", 2), [ZERO, ZERO], each("{}.rotate", BONES),
              each("{}.rotateOrder", BONES), each("{}.scale", BONES), each("{}.inverseScale", BONES),
              each("{}.segmentScaleCompensate", BONES), each("{}.jointOrient", BONES)])
manifest.add("upperTwists", "parentConstraintRotate", ".constraintRotate",
             ["clavicle.worldInverseMatrix[0]", "upperTwist.rotateOrder", ZERO, ".interpType",
              each(".target[{}].targetWeight", 2), ZERO, each("{}.parentMatrix[0]", BONES),
              each("{}.rotate", BONES), each(".target[{}].targetOffsetRotate", 2), each("{}.rotateOrder", BONES),
              each("{}.jointOrient", BONES)])
transform("upperTwist", "clavicle", fed_vector("upperTwists.constraintTranslate"),
          fed_angles("upperTwists.constraintRotate"),
          local=product(euler_matrix(twist_rotate), translation(middle)))

# The elbow pad aims at the wrist, with its back to the pole.
PAD = [1, 0, -4]
aim = unit(sub([FORE, 0, 0], PAD))
up = across(sub(point_by(pole, inverse(world["elbow"])), PAD), aim)
pad_rotate = euler_angles(frame(aim, cross(up, aim), up))
scene.node("padAims", type="aimConstraint", constraintRotate=angles(pad_rotate), restRotate=angles(), offset=angles(), worldUpType=1,
           aimVector=X, upVector=Z, worldUpVector=Y, wristW0=1,
           **driven("elbow", "elbowPad", inputs=("RotateOrder", "Translate")), constraintRotatePivot=ZERO,
           constraintRotateTranslate=ZERO, constraintJointOrient=angles(),
           target=aims(["wrist"], [Fed("padAims.wristW0", 0)], "Translate", "RotatePivot"), worldUpMatrix=Fed("pole.worldMatrix[0]", matrix()))
manifest.add("padAims", "aimConstraint", ".constraintRotate",
             ["elbow.worldInverseMatrix[0]", "elbowPad.translate", ZERO, ZERO, "elbowPad.rotateOrder", ZERO,
              ".offset", [".wristW0"], ".restRotate", ["wrist.parentMatrix[0]"], ["wrist.translate"], [ZERO],
              ".worldUpType", ".worldUpMatrix", Y, ".aimVector", ".upVector"])
transform("elbowPad", "elbow", PAD, fed_angles("padAims.constraintRotate"),
          local=product(frame(aim, cross(up, aim), up), translation(PAD)))

# The glove takes the hand control's scale.
GLOVE = [1, 1.2, 0.9]
glove_scale = [a * b for a, b in zip(hand_scale, GLOVE)]
scene.node("gloveScales", type="scaleConstraint", constraintScale=glove_scale, offset=GLOVE, restScale=ONE,
           constraintScaleCompensate=False, **driven("arm"), target=aims(["handControl"], [1], "Scale"))
manifest.add("gloveScales", "scaleConstraint", ".constraintScale",
             ["arm.worldInverseMatrix[0]", False, ".offset", [1], ONE, ["handControl.parentMatrix[0]"],
              ["handControl.scale"]])
transform("glove", "arm", ZERO, angles(), scale=fed_vector("gloveScales.constraintScale", 1),
          local=scaling(glove_scale))

# ---------------------------------------------------------------------------------------------------------------------
# Utility nodes: how far the elbow bends, how far the hand is from where it can reach

for name in ("shoulder", "elbow", "wrist"):
    scene.node(f"{name}Place", type="decomposeMatrix", inputMatrix=Fed(f"{name}.worldMatrix[0]", matrix()), outputTranslate=origin(world[name]))
    manifest.add(f"{name}Place", "decomposeMatrixTranslate", f"{name}Place.outputTranslate",
                 [f"{name}Place.inputMatrix"])


def bone(name, start, end):
    """Here a connection feeds each of the compounds' children: a child's plug has a path of its own."""
    vector = sub(origin(world[end]), origin(world[start]))
    scene.node(name, type="plusMinusAverage", operation=2, output3D=vector, input3D=multi(fed_vector(f"{end}Place.outputTranslate"),
                                                                 fed_vector(f"{start}Place.outputTranslate")))
    manifest.add(name, "plusMinusAverage3D", ".output3D", [each(".input3D[{}]", 2), ".operation"])
    return vector


bend = angle_between(bone("upperBone", "shoulder", "elbow"), bone("foreBone", "elbow", "wrist"))
scene.node("bend", type="angleBetween", vector1=fed_vector("upperBone.output3D"), vector2=fed_vector("foreBone.output3D"), angle=angle(bend))
manifest.add("bend", "angleBetween__COMPUTE__angle", ".angle", [".vector1", ".vector2"])
scene.node("bendInDegrees", type="unitConversion", input=Fed("bend.angle", angle()), conversionFactor=180 / pi, output=degrees(bend))
manifest.add("bendInDegrees", "unitConversion1D", ".output", [".input", ".conversionFactor"])

reach = length(sub(handle_world, root_world))
scene.node("reach", type="distanceBetween", inMatrix1=Fed("shoulder.worldMatrix[0]", matrix()),
           inMatrix2=Fed("armHandle.worldMatrix[0]", matrix()), distance=reach)
manifest.add("reach", "distanceBetweenTwoMatrices", ".distance", [".inMatrix1", ".inMatrix2"])

ratio = reach / (UPPER + FORE)
scene.node("reachRatio", type="multiplyDivide", input1=[Fed("reach.distance", 0), 0, 0], input2=[UPPER + FORE, 1, 1], operation=2,
           output=[ratio, 0, 0])
manifest.add("reachRatio", "multiplyDivide1D", ".output.outputX",
             [".input1.input1X", ".input2.input2X", ".operation"])



def color(name, r, g, b):
    return {name: {"compound": {f"{name}R": r, f"{name}G": g, f"{name}B": b}}}


scene.node("stretch", type="condition", firstTerm=Fed("reachRatio.output.outputX", 0), secondTerm=1, operation=2,
           **color("colorIfTrue", Fed("reachRatio.output.outputX", 0), 0, 0), **color("colorIfFalse", 1, 1, 1),
           **color("outColor", max(ratio, 1), 1, 1))
manifest.add("stretch", "condition1D", ".outColor.outColorR",
             [".firstTerm", ".secondTerm", ".colorIfTrue.colorIfTrueR", ".colorIfFalse.colorIfFalseR",
              ".operation"])

scene.node("slack", type="reverse", input=[Fed("reachRatio.output.outputX", 0), 0, 0], output=[1 - ratio, 1, 1])
manifest.add("slack", "reverse", ".output.outputX", [".input.inputX"])

RAMP = [(0, 0), (0.5, 0.2), (1, 1)]


def remap(value, low, high):
    x = min(max((value - low) / (high - low), 0), 1)
    for (x0, y0), (x1, y1) in zip(RAMP, RAMP[1:]):
        if x <= x1:
            return y0 + (y1 - y0) * (x - x0) / (x1 - x0)


tension = remap(ratio, 0.4, 1)
scene.node("tension", type="remapValue", inputValue=Fed("reachRatio.output.outputX", 0), inputMin=0.4, inputMax=1, outputMin=0,
           outputMax=1, outValue=tension,
           value=multi(*[{"compound": {"value_Position": x, "value_FloatValue": y, "value_Interp": 1}}
                         for x, y in RAMP]))
manifest.add("tension", "remapValue", ".outValue",
             [".inputValue", ".inputMin", ".inputMax", ".outputMin", ".outputMax",
              each(".value[{}].value_Position", 3), each(".value[{}].value_FloatValue", 3),
              each(".value[{}].value_Interp", 3)])

hand_space = product(world["wrist"], inverse(world["clavicle"]))
scene.node("handSpace", type="multMatrix", matrixIn=multi(Fed("wrist.worldMatrix[0]", matrix()),
                                       Fed("clavicle.worldInverseMatrix[0]", matrix())), matrixSum=matrix(hand_space))
manifest.add("handSpace", "multMatrix", ".matrixSum", [each(".matrixIn[{}]", 2)])
scene.node("handTurn", type="decomposeMatrix", inputMatrix=Fed("handSpace.matrixSum", matrix()), outputRotate=angles(euler_angles(hand_space)))
manifest.add("handTurn", "decomposeMatrixRotate", ".outputRotate", [".inputMatrix"])

# ---------------------------------------------------------------------------------------------------------------------
# An expression

MUSCLE = (pathlib.Path(__file__).parent / "muscle.mel").read_text()
code, constants = resource.expression(MUSCLE)
# Maya keeps the text with the slots in the place of the names.
for written, slot in (("bendInDegrees.output", ".I[0]"), ("muscle.flex", ".O[0]"), ("muscle.twist", ".O[1]"),
                      ("muscle.pinch", ".O[2]")):
    MUSCLE = MUSCLE.replace(written, slot)


def smooth(value, low, high):
    """Goes from 0 to 1 between two values, without a kink."""
    t = min(max((value - low) / (high - low), 0), 1)
    return t * t * (3 - 2 * t)


flex = smooth(degrees(bend), 20, 110)
strap_twist = 0.35 + 0.1 * sin(FRAME * 0.25)
pinch = max(degrees(bend) - 60, 0) / 60
scene.node("muscle", type="expression", input=multi(Fed("bendInDegrees.output", 0)), time=Fed("time1.outTime", {"time": 0}),
           output=multi(flex, strap_twist, pinch), frame=FRAME, expression=MUSCLE)
# The plug "time" reads in its own unit, which is the frame.
manifest.add("muscle", "expression", each(".output[{}]", 3),
             [[".input[0]", ".time"], code, constants])

# ---------------------------------------------------------------------------------------------------------------------
# Pose drivers: weights by how near the arm is to stored poses


def solve(rows, right):
    """Linear equations, by elimination."""
    rows = [list(row) + [value] for row, value in zip(rows, right)]
    for i in range(len(rows)):
        pivot = max(range(i, len(rows)), key=lambda k: abs(rows[k][i]))
        rows[i], rows[pivot] = rows[pivot], rows[i]
        for k in range(len(rows)):
            if k != i:
                rows[k] = sub(rows[k], scaled(rows[i], rows[k][i] / rows[i][i]))
    return [row[-1] / row[i] for i, row in enumerate(rows)]


def interpolate(poses, values, now):
    """By radial basis functions exp(-distance / width^2), so that the values are met at each pose. The width is the
    mean distance."""
    distances = [[length(sub(a, b)) for b in poses] for a in poses]
    width = sum(map(sum, distances)) / len(poses) ** 2
    shares = solve([[exp(-d / width ** 2) for d in row] for row in distances],
                   [exp(-length(sub(pose, now)) / width ** 2) for pose in poses])
    return [dot(shares, column) for column in zip(*values)]


def pointing(m):
    """A pose is where the x axis points, and the twist about it."""
    axis, angle = axis_and_angle(m)
    return [*m[0][:3], 2 * atan2(axis[0] * sin(angle / 2), cos(angle / 2))]


# By matrices: the elbow as the shoulder sees it, straight, half bent and fully bent.
to_shoulder = inverse(joint_matrix("shoulder", ZERO, ZERO, world["clavicle"]))
poses = [joint_matrix("elbow", in_radians(0, bend, 0), [UPPER, 0, 0], inverse(to_shoulder)) for bend in (0, -50, -110)]
pose_weights = interpolate([pointing(product(pose, to_shoulder)) for pose in poses],
                           [[1, 0, 0], [0, 1, 0], [0, 0, 1]],
                           pointing(product(world["elbow"], inverse(world["shoulder"]))))
scene.node("elbowPoses", type="weightDriver", twistAxis=0, invertAxis=False, driverMatrix=Fed("elbow.worldMatrix[0]", matrix()),
           readerMatrix=Fed("shoulder.worldInverseMatrix[0]", matrix()), rotationOffset=angles(),
           pose=multi(*[{"compound": {"poseMatrix": matrix(pose), "poseParentMatrix": matrix(inverse(to_shoulder)),
                                      "poseMode": 0}} for pose in poses]), output=multi(*pose_weights))
manifest.add("elbowPoses", "weightDriverDrivers", each(".output[{}]", 3),
             [0, 0, ".twistAxis", ".invertAxis", ".driverMatrix", ".readerMatrix", each(".pose[{}].poseMatrix", 3),
              each(".pose[{}].poseParentMatrix", 3), each(".pose[{}].poseMode", 3), ".rotationOffset"])

# By numbers: how much the wrist is squeezed at three pairs of flex and tension.
inputs, values = [[0, 1], [0.5, 0.4], [1, 0.1]], [[0, 0.1, 0], [0.5, 0.2, 0], [1, 0, 0.3]]
squeeze = interpolate(inputs, values, [flex, tension])
scene.node("wristPoses", type="weightDriver", input=multi(Fed("muscle.output[0]", 0), Fed("tension.outValue", 0)), output=multi(*squeeze),
           poses=multi(*[{"compound": {"poseInput": multi(*row), "poseValue": multi(*result)}}
                         for row, result in zip(inputs, values)]))
manifest.add("wristPoses", "weightDriverPoses", each(".output[{}]", 3),
             [0, 0, each(".input[{}]", 2),
              *[{(i, j): f".poses[{i}].{plug}[{j}]" for i, row in enumerate(table) for j in range(len(row))}
                for plug, table in (("poseInput", inputs), ("poseValue", values))]])

# The weights of the blend shape's two targets.
bicep = 0.4 * pose_weights[1] + pose_weights[2]
scene.node("bicepWeight", type="blendWeighted", input=multi(*[Fed(f"elbowPoses.output[{i}]", 0) for i in range(3)]),
           weight=multi(0, 0.4, 1), output=bicep)
manifest.add("bicepWeight", "blendWeighted", ".output",
             [{i: f".input[{i}]" for i in range(3)},
              {i: f".weight[{i}]" for i in range(3)}])
wrist_weight = squeeze[0] * pinch
scene.node("wristWeight", type="combinationShape", inputWeight=multi(Fed("wristPoses.output[0]", 0), Fed("muscle.output[2]", 0)),
           combinationMethod=0, outputWeight=wrist_weight)
manifest.add("wristWeight", "combinationShape", ".outputWeight",
             [each(".inputWeight[{}]", 2), ".combinationMethod"])

# ---------------------------------------------------------------------------------------------------------------------
# The skin: a tube about the straight arm, deformed by a blend shape, a lattice and the joints. It stands in the world,
# under no group: the points that come out of a skinMesh are taken as points of the world.

BIND = {"shoulder": joint_matrix("shoulder", ZERO, ZERO, world["clavicle"])}
BIND["upperTwist"] = product(translation([UPPER / 2, 0, 0]), BIND["shoulder"])
BIND["elbow"] = joint_matrix("elbow", ZERO, [UPPER, 0, 0], BIND["shoulder"])
BIND["wrist"] = joint_matrix("wrist", ZERO, [FORE, 0, 0], BIND["elbow"])
INFLUENCES = list(BIND)
along_arm = BIND["shoulder"]  # x along the bound arm, z to the front

RINGS, AROUND = 15, 12
RADII = [(-2, 6.5), (8, 5.5), (14, 5.8), (28, 4.2), (35, 4.8), (50, 3), (58, 3.2)]


def radius(x):
    for (x0, r0), (x1, r1) in zip(RADII, RADII[1:]):
        if x <= x1:
            return r0 + (r1 - r0) * smooth(x, x0, x1)


rings = [(-2 + 60 * ring / (RINGS - 1), 2 * pi * i / AROUND) for ring in range(RINGS) for i in range(AROUND)]
tube = [[x, radius(x) * sin(a), radius(x) * cos(a)] for x, a in rings]
points = [point_by(p, along_arm) for p in tube]
tube_faces = [[ring + i, ring + (i + 1) % AROUND, ring + AROUND + (i + 1) % AROUND, ring + AROUND + i]
              for ring in range(0, (RINGS - 1) * AROUND, AROUND) for i in range(AROUND)]

# Blend shape: target 0 swells the biceps (deltas of some points), target 1 flattens the wrist (a whole shape, masked).
deltas = {i: vector_by([0, 0, 1.8 * sin(pi * (x - 5) / 17) * cos(a)], along_arm)
          for i, (x, a) in enumerate(rings) if 5 < x < 22 and cos(a) > 0.01}
flat = [point_by([x, 1.2 * y, 0.8 * z] if x > 40 else [x, y, z], along_arm) for x, y, z in tube]
mask = {i: smooth(x, 40, 52) for i, (x, _) in enumerate(rings) if x < 52}
shaped = [add(p, scaled(deltas.get(i, ZERO), bicep), scaled(sub(flat[i], p), wrist_weight * mask.get(i, 1)))
          for i, p in enumerate(points)]


def mesh(points):
    return {"mesh": resource.mesh(plain(points))}


FED_MESH = {"mesh": None}


def deformer(name, kind, source, result, polygons=None, **attributes):
    """A deformer of a mesh, fed by the deformer before it."""
    output = mesh(result)
    if polygons:
        output = {"mesh": dict(output["mesh"], polygons=polygons)}
    scene.node(name, type=kind, envelope=1, input=multi({"compound": {"inputGeometry": Fed(source, FED_MESH)}}),
               outputGeometry=multi(output), **attributes)


scene.node("|armMesh|armBound", type="mesh", outMesh=mesh(points))
scene.node("|flat|flatShape", type="mesh", outMesh=mesh(flat))
deformer("armShapes", "blendShape", "armBound.outMesh", shaped,
         weight=multi(Fed("bicepWeight.output", 0), Fed("wristWeight.outputWeight", 0)),
         inputTarget=multi({"compound": {"inputTargetGroup": multi(
             {"compound": {"inputTargetItem": {"multi": {"6000": {"compound": {
                 "inputGeomTarget": {"mesh": None}, "inputPointsTarget": {"points": list(deltas.values())},
                 "inputComponentsTarget": {"components": [f"vtx[{i}]" for i in deltas]}}}}}}},
             {"compound": {"inputTargetItem": {"multi": {"6000": {"compound": {
                 "inputGeomTarget": Fed("flatShape.outMesh", {"mesh": None})}}}},
                           "targetWeights": {"multi": {str(i): weight for i, weight in mask.items()}}}})}}))
manifest.add("armShapes", "blendShapeMesh", ".outputGeometry[0]",
             [".envelope", ".input[0].inputGeometry",
              {0: ".weight[0]", 1: ".weight[1]"},
              {(1, 6000): resource.mesh(plain(flat))},
              {(0, 6000): resource.deltas(plain(deltas))}, {1: resource.weight_map(plain(mask))}])

# Lattice: 5 by 2 by 2 points over the whole arm; the second and third along it bulge with the muscle.
DIVISIONS = (5, 2, 2)
base_lattice = product(scaling([66, 18, 18]), translation([27, 0, 0]), BIND["shoulder"])
bulged_lattice = product(base_lattice, translation([0, 0.4, 0]))
cage = [[s / 4 - 0.5, t - 0.5, u - 0.5] for u in range(2) for t in range(2) for s in range(5)]
bulged = [[s, (1 + 0.2 * flex) * t, (1 + 0.3 * flex) * u] if s in (-0.25, 0) else [s, t, u] for s, t, u in cage]


def in_lattice(p):
    """The point of the lattice's Bernstein polynomial."""
    s, t, u = (x + 0.5 for x in point_by(p, inverse(base_lattice)))

    def share(count, i, x):
        return comb(count - 1, i) * x ** i * (1 - x) ** (count - 1 - i)

    place = add(*[scaled(c, share(5, i % 5, s) * share(2, i // 5 % 2, t) * share(2, i // 10, u))
                  for i, c in enumerate(bulged)])
    return point_by(place, bulged_lattice)


latticed = [in_lattice(p) for p in shaped]
lattice_block = resource.lattice(zent.Lattice(plain(bulged), DIVISIONS, plain(bulged_lattice)))
scene.node("bulgeLattice", type="lattice", latticeOutput={"lattice": lattice_block})
deformer("armBulges", "ffd", "armShapes.outputGeometry[0]", latticed, local=False, outsideLattice=1, deformedLatticePoints=Fed("bulgeLattice.latticeOutput", {"lattice": None}), localInfluenceS=2, localInfluenceT=2,
         localInfluenceU=2, deformedLatticeMatrix=matrix(bulged_lattice), baseLatticeMatrix=matrix(base_lattice))
manifest.add("armBulges", "ffdMesh", ".outputGeometry[0]",
             [".input[0].inputGeometry", "bulgeLattice.latticeOutput", ".deformedLatticeMatrix",
              ".baseLatticeMatrix", ".local", ".localInfluenceS", ".localInfluenceT", ".localInfluenceU"])


# Skin: each point goes with the joints near it.
def skin_weights(places):
    """Triples: point, influence, weight."""
    triples = []
    for i, x in enumerate(places):
        to_twist, to_elbow, to_wrist = smooth(x, 6, 20), smooth(x, 23, 33), smooth(x, 48, 56)
        split = [(1 - to_twist) * (1 - to_elbow), to_twist * (1 - to_elbow), to_elbow * (1 - to_wrist), to_wrist]
        triples += [(i, influence, weight) for influence, weight in enumerate(split) if weight > 0]
    return triples


def weight_list(weights):
    """The weights as the plugs of a skin cluster have them."""
    rows = {}
    for point, influence, weight in weights:
        rows.setdefault(str(point), {})[str(influence)] = weight
    return {"multi": {point: {"compound": {"weights": {"multi": row}}} for point, row in rows.items()}}


def skinned(points, weights, own):
    """`own` is the matrix of the shape that has the points."""
    moved = [product(own, inverse(BIND[name]), world[name], inverse(own)) for name in INFLUENCES]
    sums = [ZERO for _ in points]
    for point, influence, weight in weights:
        sums[point] = add(sums[point], scaled(point_by(points[point], moved[influence]), weight))
    return sums


JOINTS = {"matrix": multi(*[Fed(f"{name}.worldMatrix[0]", matrix()) for name in INFLUENCES]),
          "bindPreMatrix": multi(*[matrix(inverse(BIND[name])) for name in INFLUENCES])}


def skin_record(name, method, weights):
    return (name, method, ".outputGeometry[0]",
            [".envelope", ".input[0].inputGeometry", ".geomMatrix", each(".matrix[{}]", 4),
             each(".bindPreMatrix[{}]", 4), weights])


arm_weights = skin_weights([x for x, _ in rings])
deformer("armSkin", "skinCluster", "armBulges.outputGeometry[0]", skinned(latticed, arm_weights, IDENTITY), tube_faces,
         geomMatrix=matrix(), weightList=weight_list(arm_weights), normalizeWeights=1, skinningMethod=0,
         **JOINTS)
manifest.add(*skin_record("armSkin", "skinMesh", resource.skin_weights(columns(arm_weights))))

# ---------------------------------------------------------------------------------------------------------------------
# A cord along the arm, which carries a strap

CORD = [[0, 6.5, 1], [9, 6.5, 1], [20, 6, 1], [33, 5.5, 1], [45, 4.5, 0.5], [54, 4, 0]]  # along the bound arm
CARRIERS = ["shoulder", "upperTwist", "upperTwist", "elbow", "elbow", "wrist"]
KNOTS = [0, 0, 0, 1, 2, 3, 3, 3]


def curve_data(curve):
    return {"curve": {"degree": curve.degree, "form": "open", "knots": curve.knots, "points": curve.points}}


cord_base = Curve(3, KNOTS, [point_by(p, BIND["shoulder"]) for p in CORD])
cord = Curve(3, KNOTS, [locator(f"anchor{i}", joint, point_by(p, inverse(BIND[joint])))
                        for i, (joint, p) in enumerate(zip(CARRIERS, cord_base.points))])
scene.node("|cordBase|cordBaseShape", type="nurbsCurve", local=curve_data(cord_base))
scene.node("|cord|cordShape", type="nurbsCurve", local=curve_data(cord), controlPoints=multi(*[Fed(f"anchor{i}Shape.worldPosition[0]", ZERO) for i in range(len(CORD))]))
manifest.add("cord", "curve_from_cv", "cordShape.local",
             ["cordBaseShape.local", {i: f"anchor{i}Shape.worldPosition[0]" for i in range(len(CORD))}])

FED_CURVE = Fed("cordShape.local", {"curve": None})
scene.node("cordLength", type="curveInfo", inputCurve=FED_CURVE, arcLength=cord.arc_length(0, 3))
manifest.add("cordLength", "curveInfo", ".arcLength", [".inputCurve"])
scene.node("cordMiddle", type="pointOnCurveInfo", inputCurve=FED_CURVE, parameter=1.3, turnOnPercentage=False, position=cord.point(1.3))
manifest.add("cordMiddle", "pointOnCurveInfo", ".position",
             [".inputCurve", ".parameter", ".turnOnPercentage"])
scene.node("bead", type="motionPath", geometryPath=FED_CURVE, uValue=0.6, fractionMode=True,
           allCoordinates=cord.point(cord.at_fraction(0.6)))
manifest.add("bead", "motionPath", ".allCoordinates", [".geometryPath", ".uValue", ".fractionMode"])

# The strap lies across the cord. Each point is bound to a parameter and to a frame there.
TURNING, LOCATOR = 0.8, 1.2  # how much the strap turns with the cord; where on the cord the expression twists it
strap_bound, strap, bindings = [], [], []
for step in range(9):
    u = 0.3 + 0.3 * step
    along = unit(cord_base.tangent(u))
    side = across(vector_by(Z, BIND["shoulder"]), along)
    new_along = unit(cord.tangent(u))
    turning = turn(unit(cross(along, new_along)), TURNING * angle_between(along, new_along))
    start, end, from_twist, to_twist = (0, LOCATOR, 0, strap_twist) if u < LOCATOR else (LOCATOR, 3, strap_twist, 0)
    t = (u - start) / (end - start)
    twisting = turn(along, to_twist + (from_twist - to_twist) * (t * t - 1) ** 2)
    for offset in (-1.5, 0, 1.5):
        away = add(scaled(side, offset), scaled(cross(side, along), 0.4))
        strap_bound.append(add(cord_base.point(u), away))
        strap.append(add(cord.point(u), vector_by(away, product(turning, twisting))))
        bindings.append((u, [along, side, cross(along, side)]))
scene.node("|strap|strapBound", type="mesh", outMesh=mesh(strap_bound))
scene.node("strapFollows", type="wire", input=multi({"compound": {"inputGeometry": Fed("strapBound.outMesh", FED_MESH)}}),
           envelope=1, freezeGeometry=True, rotation=TURNING, baseWire=multi(Fed("cordBaseShape.local", {"curve": None})),
           deformedWire=multi(FED_CURVE), wireLocatorParameter=multi(LOCATOR),
           wireLocatorTwist=multi(Fed("muscle.output[1]", 0)),
           outputGeometry=multi(mesh(strap)))
manifest.add("strapFollows", "wireMesh", ".outputGeometry[0]",
             [".input[0].inputGeometry", ".rotation", ".baseWire[0]", ".deformedWire[0]",
              [".wireLocatorParameter[0]"], [".wireLocatorTwist[0]"], resource.wire_bindings(columns(bindings))])

# ---------------------------------------------------------------------------------------------------------------------
# A sleeve over the forearm, a surface under the group of the arm, with a button on it

sleeve_points = [[32 + 4 * i, 6 * cos(a), 6 * sin(a)] for i in range(5) for a in in_radians(-70, -25, 25, 70)]


def block_of(surface):
    counts = [len(knots) - degree + 1 for knots, degree in zip(surface.knots, surface.degrees)]
    points = [surface.points[i:i + counts[1]] for i in range(0, len(surface.points), counts[1])]
    return {"surface": resource.surface(zent.Surface(plain(points), surface.degrees, knots_u=surface.knots[0],
                                                     knots_v=surface.knots[1], matrix=plain(surface.world)))}


sleeve_weights = skin_weights([x for x, _, _ in sleeve_points])
sleeve_bound = Surface((3, 3), ([0, 0, 0, 1, 2, 2, 2], [0, 0, 0, 1, 1, 1]),
                       [point_by(p, product(along_arm, inverse(world["arm"]))) for p in sleeve_points], world["arm"])
sleeve = Surface(sleeve_bound.degrees, sleeve_bound.knots,
                 skinned(sleeve_bound.points, sleeve_weights, world["arm"]), world["arm"])
scene.node("|arm|sleeve|sleeveBound", type="nurbsSurface", local=block_of(sleeve_bound))
scene.node("sleeveSkin", type="skinCluster", envelope=1, outputGeometry=multi(block_of(sleeve)), **JOINTS,
           weightList=weight_list(sleeve_weights), normalizeWeights=1, skinningMethod=0, geomMatrix=Fed("arm.worldMatrix[0]", matrix()),
           input=multi({"compound": {"inputGeometry": Fed("sleeveBound.local", {"surface": None})}}))
manifest.add(*skin_record("sleeveSkin", "skinSurface", resource.skin_weights(columns(sleeve_weights))))

BUTTON = [0.55, 0.4]  # fractions of the domain
button_u, button_v = 2 * BUTTON[0], BUTTON[1]
along_u, along_v = sleeve.tangents(button_u, button_v)
normal = unit(cross(along_u, along_v))
button = frame(unit(along_u), cross(normal, unit(along_u)), normal)
FED_SURFACE = Fed("sleeveSkin.outputGeometry[0]", {"surface": None})
scene.node("button", type="follicle", inputSurface=FED_SURFACE, parameterU=BUTTON[0], parameterV=BUTTON[1],
           outTranslate=sleeve.point(button_u, button_v), outRotate=angles(euler_angles(button)))
for method, output in (("follicleTranslateSurface", "outTranslate"), ("follicleRotateSurface", "outRotate")):
    manifest.add("button", method, f".{output}", [".inputSurface", ".parameterU", ".parameterV"])

scene.node("buttonNormal", type="pointOnSurfaceInfo", inputSurface=FED_SURFACE, parameterU=button_u, parameterV=button_v, turnOnPercentage=False,
           normalizedNormal=normal)
manifest.add("buttonNormal", "pointOnSurfaceNormalizedNormal", ".normalizedNormal",
             [".inputSurface", ".parameterU", ".parameterV", ".turnOnPercentage"])
scene.node("buttonFoot", type="closestPointOnSurface", inputSurface=FED_SURFACE, parameterU=button_u, parameterV=button_v,
           inPosition=add(sleeve.point(button_u, button_v), scaled(normal, 1.5)))
manifest.add("buttonFoot", "closestPointOnSurface", [".parameterU", ".parameterV"],
             [".inputSurface", ".inPosition"])

# ---------------------------------------------------------------------------------------------------------------------
# Three faults on purpose, to see what the log says of them

faults = zent.Manifest(resource)
faults.add("reach", "distanceBetweenTwoMatrices", ".distance", [".inMatrix1", ".inMatrix2"])  # right
faults.add("reachRatio", "multiplyDivide1D", ".output.outputX",
           [".input1.input1X", 50, ".operation"])  # the bones are 53 long, not 50
name, method, results, arguments = wrist_record
faults.add(name, method, results, [arguments[0], 0, *arguments[2:]])  # rotate order xyz, the wrist has zyx
wrong_weights = [(point, influence, 0.5 if (point, influence) == (80, 2) else weight)
                 for point, influence, weight in arm_weights]  # one weight of one point
faults.add(*skin_record("armSkin", "skinMesh", resource.skin_weights(columns(wrong_weights))))

folder = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else pathlib.Path(__file__).parent
scene.write(folder / "scene.json")
manifest.write(folder / "manifest.json")
resource.write(folder / "resource.bin")
faults.write(folder / "faults.json")
