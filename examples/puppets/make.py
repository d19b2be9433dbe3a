#!/usr/bin/env python3
"""Makes scene.json and left-out.txt: python3 make.py [FOLDER]

Two puppets of different size, each in a namespace of its own. Each has a node of every type that a method is for, with
outputs that are worked out here, from what the nodes mean and in double precision; and some nodes that do what their
method does not, each with a line of left-out.txt. There is no manifest: an export writes it.
"""
import pathlib
import sys
from math import acos, cos, degrees, pi, prod, radians, sin

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "arm"))
from scene_file import Fed, Scene, angle, angles, matrix, multi  # noqa: E402
from vectors import (IDENTITY, Curve, Surface, across, add, between, cross, euler_angles, euler_matrix, frame, inverse,  # noqa: E402
                     length, linear, origin, point_by, product, scaled, scaling, sub, translation, turn, unit, vector_by)

X, Y, Z, ZERO, ONE = [1, 0, 0], [0, 1, 0], [0, 0, 1], [0, 0, 0], [1, 1, 1]
MESSAGE = {"message": None}
FRAME = 9

scene = Scene()
left_out = []


def elements(values):
    """A multi with these logical indices."""
    return {"multi": {str(i): value for i, value in values.items()}}


def compound(**children):
    return {"compound": children}


def rgb(name, values):
    return {name: compound(**{name + letter: value for letter, value in zip("RGB", values)})}


def curve_data(curve):
    return {"curve": {"degree": curve.degree, "form": "open", "knots": curve.knots, "points": curve.points,
                      **matrix(curve.world)}}


def surface_data(surface):
    return {"surface": {"degree": surface.degrees, "form": ["open", "open"], "knotsU": surface.knots[0],
                        "knotsV": surface.knots[1], "points": surface.points, **matrix(surface.world)}}


def mesh_data(points, **more):
    return {"mesh": {"points": points, **more}}


def lattice_data(points, divisions=(2, 2, 2)):
    return {"lattice": {"divisions": divisions, "points": points}}


class Puppet:
    def __init__(self, name_space, size):
        self.name_space, self.size = name_space, size
        self.world = {"": IDENTITY}
        self.paths = {"": ""}

    # ---- nodes -------------------------------------------------------------------------------------------------------

    def fed(self, plug, rest=0):
        return Fed(f"{self.name_space}:{plug}", rest)

    def fed_matrix(self, name, plug="worldMatrix[0]"):
        return self.fed(f"{name}.{plug}", matrix())

    def node(self, name, kind, **attributes):
        scene.node(f"{self.name_space}:{name}", type=kind, **attributes)

    def violation(self, name, kind, method, reason, **attributes):
        """A node that makes no record, and what the notes say."""
        self.node(name, kind, **attributes)
        left_out.append(f"{self.name_space}:{name} ({kind}), {method}: {reason}")

    def transform(self, name, parent="", translate=ZERO, rotate=ZERO, order=0, scale=ONE, kind="transform", local=None,
                  **more):
        if local is None:
            local = product(scaling(scale), euler_matrix(rotate, order), translation(translate))
        world = product(local, self.world[parent])
        self.world[name] = world
        self.paths[name] = f"{self.paths[parent]}|{self.name_space}:{name}"
        above = self.fed_matrix(parent) if parent else matrix()
        pivots = {} if kind == "joint" else {"shear": ZERO, "rotatePivot": ZERO, "scalePivot": ZERO,
                                             "rotatePivotTranslate": ZERO, "scalePivotTranslate": ZERO}
        scene.node(self.paths[name], type=kind, translate=translate, rotate=angles(rotate), rotateOrder=order, scale=scale,
                   **{**pivots, **more}, matrix=matrix(local), inverseMatrix=matrix(inverse(local)), inheritsTransform=True,
                   parentMatrix=multi(above), parentInverseMatrix=multi(matrix(inverse(self.world[parent]))),
                   worldMatrix=multi(matrix(world)), worldInverseMatrix=multi(matrix(inverse(world))))

    def joint(self, name, parent, translate, rotate=ZERO, orient=ZERO, inverse_scale=ONE, **more):
        compensate = inverse_scale != ONE
        back = scaling([1 / s for s in inverse_scale])
        local = product(scaling(more.get("scale", ONE)), euler_matrix(rotate), euler_matrix(orient), back,
                        translation(translate))
        self.transform(name, parent, translate, rotate, kind="joint", local=local, jointOrient=angles(orient),
                       inverseScale=inverse_scale, segmentScaleCompensate=compensate, message=MESSAGE, **more)

    def shape(self, name, kind, translate=ZERO, rotate=ZERO, **attributes):
        """A shape under its transform. Its own matrix is the identity."""
        self.transform(name, translate=translate, rotate=rotate)
        scene.node(f"{self.paths[name]}|{self.name_space}:{name}Shape", type=kind, matrix=matrix(),
                   parentMatrix=multi(self.fed_matrix(name)), worldMatrix=multi(matrix(self.world[name])), **attributes)

    # ---- numbers -----------------------------------------------------------------------------------------------------

    def utilities(self):
        k = self.size
        for name, kind in (("sum", "addDoubleLinear"), ("newSum", "addDL")):
            self.node(name, kind, input1=k, input2=0.25, output=k + 0.25)
        for name, kind in (("area", "multDoubleLinear"), ("newArea", "multDL")):
            self.node(name, kind, input1=k, input2=-3, output=-3 * k)
        self.node("elbowAngle", "angleBetween", vector1=[k, k, 0], vector2=[0, 2, 2], angle=angle(pi / 3),
                  axis=unit([1, -1, 1]))
        one, two = [0.2, 0.4, k], [1, 0, 0.5]
        self.node("skinColor", "blendColors", blender=0.25, **rgb("color1", one), **rgb("color2", two),
                  **rgb("output", add(scaled(one, 0.25), scaled(two, 0.75))))
        self.node("twoWays", "blendTwoAttr", input=multi(k, 3), attributesBlender=0.3, output=0.7 * k + 0.9)
        self.node("manyWays", "blendWeighted", input=elements({1: k, 4: 2}), weight=elements({1: 0.5, 4: 3}), output=k / 2 + 6)
        self.node("limits", "clamp", **rgb("input", [-k, k, 9]), **rgb("min", ZERO), **rgb("max", [4, 4, 4]),
                  **rgb("output", [0, k, 4]))
        self.node("corrective", "combinationShape", inputWeight=multi(0.8, 0.3, 0.5), combinationMethod=1, outputWeight=0.3)
        self.node("switch", "condition", firstTerm=k, secondTerm=1.2, operation=2, **rgb("colorIfTrue", [1, 2, 3]),
                  **rgb("colorIfFalse", [4, 5, 6]), **rgb("outColor", [1, 2, 3] if k > 1.2 else [4, 5, 6]))
        self.node("span", "distanceBetween", point1=[1, 2, 3], point2=[1 + 3 * k, 2, 3 + 4 * k], distance=5 * k)
        self.node("ruler", "distanceDimShape", startPoint=[0, k, 0], endPoint=[0, -k, 0], distance=2 * k)
        self.node("powers", "multiplyDivide", input1=[k, 2, 9], input2=[2, 3, 0.5], operation=3, output=[k * k, 8, 3])
        self.node("means", "plusMinusAverage", operation=3, input1D=elements({0: k, 3: 4}), output1D=k / 2 + 2,
                  input2D=multi([1, 2], [3, k]), output2D=[2, 1 + k / 2], input3D=multi([1, 2, 3], [k, 0, 1]),
                  output3D=[(1 + k) / 2, 1, 2])
        ramp = [compound(value_Position=x, value_FloatValue=y, value_Interp=1) for x, y in ((1, 3), (0, 1), (0.5, 0))]
        self.node("ramp", "remapValue", inputValue=3 * k / 4, inputMin=0, inputMax=k, outputMin=10, outputMax=20,
                  value=multi(*ramp), outValue=25)  # half-way from 0 to 3
        self.node("flip", "reverse", input=[k, 0.25, 1], output=[1 - k, 0.75, 0])
        self.node("ranges", "setRange", value=[0.5, 3, -1], oldMin=ZERO, oldMax=[1, 2, 2], min=[0, 10, 10], max=[k, 20, 20],
                  outValue=[k / 2, 20, 10])
        self.node("inDegrees", "unitConversion", input=angle(k), conversionFactor=180 / pi, output=degrees(k))
        self.node("inMetres", "unitConversion", input=[100 * k, 50, 0], conversionFactor=0.01, output=[k, 0.5, 0])
        self.node("euler", "quatToEuler", inputQuat=[0, 0, sin(0.2 * k), cos(0.2 * k)], inputRotateOrder=0,
                  outputRotate=angles([0, 0, 0.4 * k]))
        self.node("wobble", "expression", input=multi(self.fed("sum.output")), output=multi(k + 0.25 + FRAME / 2),
                  time={"time": FRAME}, frame=FRAME, expression=".O[0] = .I[0] + 0.5 * frame;")
        # ---- what the methods do not do
        self.violation("slowRamp", "remapValue", "remapValue", "value[*].value_Interp is 3", inputValue=0, inputMin=0,
                       inputMax=1, outputMin=0, outputMax=1, outValue=0,
                       value=multi(compound(value_Position=0, value_FloatValue=0, value_Interp=3)))
        self.violation("three", "blendTwoAttr", "blendTwoAttr", "input has 3 elements", input=multi(1, 2, 3),
                       attributesBlender=0, output=1)
        self.violation("shell", "expression", "expression", "line 1", input=multi(), output=multi(0),
                       expression=".O[0] = `pwd`;")

    def animation(self):
        """A curve of each type: a spline from key to key, with a step and a line before it."""
        k = self.size
        for letters in ("TL", "TA", "TT", "TU", "UL", "UA", "UT", "UU"):
            values, slope = [1, 2 * k, 5 * k], 0.3 * k  # slopes at the last two keys; keys at 0, 4, 12
            span = 8
            t = (FRAME - 4) / span
            y = (values[1] * (1 + 2 * t) * (1 - t) ** 2 + slope * span * t * (1 - t) ** 2 +
                 values[2] * t * t * (3 - 2 * t) + slope * span * t * t * (t - 1))
            is_angle, makes = letters[1] == "A", {"A": angle, "T": lambda x: {"time": x}}.get(letters[1], lambda x: x)
            rise = degrees(slope) if is_angle else slope
            times = [{"time": t} if letters[0] == "T" else t for t in (0, 4, 12)]
            self.node(f"curve{letters}", f"animCurve{letters}",
                      input=Fed("time1.outTime", {"time": 0}) if letters[0] == "T" else FRAME, output=makes(y),
                      keyTimeValue=elements({i: compound(keyTime=time, keyValue=makes(v))
                                             for i, (time, v) in enumerate(zip(times, values))}),
                      keyTanInType=multi(1, 2, 9), keyTanOutType=multi(5, 9, 3), keyTanInX=elements({0: 1, 2: 4}),
                      keyTanInY=elements({0: 0, 2: 4 * rise}), keyTanOutX=elements({1: 4}), keyTanOutY=elements({1: 4 * rise}),
                      preInfinity=0, postInfinity=1, weightedTangents=False)
        self.violation("pendulum", "animCurveUU", "animCurve", "postInfinity is 5", input=0, output=0,
                       keyTimeValue=multi(compound(keyTime=0, keyValue=0)), preInfinity=0, postInfinity=5,
                       weightedTangents=False)
        self.violation("automatic", "animCurveUU", "animCurve", "the in tangent of key 0 is not known", input=0, output=0,
                       keyTimeValue=multi(compound(keyTime=0, keyValue=0)), keyTanInType=multi(18), preInfinity=0,
                       postInfinity=0, weightedTangents=False)

    # ---- matrices ----------------------------------------------------------------------------------------------------

    def skeleton(self):
        k = self.size
        self.transform("puppet", "", [10 * k, 0, 2], [0, 0.4, 0])
        self.transform("hip", "puppet", [0, 5 * k, 0], [0.2, -0.1, 0.3], order=2)
        self.joint("thigh", "hip", [0, k, 0], [0.1, 0.5, -0.2], [0, 0, 0.3], scale=[1, 1.5, 1])
        self.joint("shin", "thigh", [0, 2 * k, 0], [0.3, 0, 0], inverse_scale=[1, 1.5, 1])
        pivot, back, shear = [1, 0, 2], [0.5, 0, 0], [0.2, 0, -0.3]
        rotate, scale, translate = [0.3, 0.2, 0.1], [1, 2, 1], [0, k, 0]
        sheared = [[1, 0, 0, 0], [shear[0], 1, 0, 0], [shear[1], shear[2], 1, 0], [0, 0, 0, 1]]
        self.transform("prop", "puppet", translate, rotate, scale=scale, shear=shear, rotatePivot=pivot, scalePivot=pivot,
                       rotatePivotTranslate=back, scalePivotTranslate=Z, local=product(
                           translation(scaled(pivot, -1)), scaling(scale), sheared, translation(pivot), translation(Z),
                           translation(scaled(pivot, -1)), euler_matrix(rotate), translation(pivot), translation(back),
                           translation(translate)))
        self.transform("mark", "hip", [0, 0, k])
        scene.node(f"{self.paths['mark']}|{self.name_space}:markShape", type="locator", localPosition=[0, 1, 0], matrix=matrix(),
                   parentMatrix=multi(self.fed_matrix("mark")), worldMatrix=multi(matrix(self.world["mark"])),
                   worldPosition=multi(point_by([0, 1, 0], self.world["mark"])))
        self.node("reach", "distanceBetween", inMatrix1=self.fed_matrix("hip"), inMatrix2=self.fed_matrix("shin"),
                  distance=length(sub(origin(self.world["hip"]), origin(self.world["shin"]))))
        composed = product(scaling([1, 2, 3]), euler_matrix(rotate, 4), translation([k, 0, 1]))
        self.node("composed", "composeMatrix", inputTranslate=[k, 0, 1], inputRotate=angles(rotate), inputRotateOrder=4,
                  inputScale=[1, 2, 3], inputShear=ZERO, useEulerRotation=True, outputMatrix=matrix(composed))
        axis, turned = unit([1, 2, 2]), 0.7
        parts = product(scaling([1, 2, k]), sheared, turn(axis, turned), translation([1, k, 3]))
        rotated = {"inputRotateOrder": 0, "outputRotate": angles(euler_angles(turn(axis, turned)))}
        self.violation("parts", "decomposeMatrix", "decomposeMatrixRotate", "inputMatrix has scale or shear", **rotated,
                       inputMatrix=matrix(parts), outputTranslate=[1, k, 3], outputScale=[1, 2, k], outputShear=shear,
                       outputQuat=[*scaled(axis, sin(turned / 2)), cos(turned / 2)])
        self.node("turned", "decomposeMatrix", inputMatrix=matrix(turn(axis, turned)), **rotated)
        self.node("undone", "inverseMatrix", inputMatrix=self.fed_matrix("composed", "outputMatrix"),
                  outputMatrix=matrix(inverse(composed)))
        self.node("local", "multMatrix", matrixIn=multi(self.fed_matrix("shin"), matrix(inverse(self.world["hip"]))),
                  matrixSum=matrix(product(self.world["shin"], inverse(self.world["hip"]))))
        self.violation("fromQuaternion", "composeMatrix", "composeMatrix", "useEulerRotation is 0", inputTranslate=ZERO,
                       inputRotate=angles(), inputRotateOrder=0, inputScale=ONE, useEulerRotation=False,
                       outputMatrix=matrix())

    # ---- constraints -------------------------------------------------------------------------------------------------

    def constraints(self):
        """Of nodes under the puppet, to the hip and the mark."""
        k, up = self.size, inverse(self.world["puppet"])
        targets, weights = ("hip", "mark"), (0.75, 0.25)
        parents = {name: {"targetParentMatrix": self.fed_matrix(name, "parentMatrix[0]")} for name in targets}
        own = {"constraintParentInverseMatrix": self.fed_matrix("puppet", "worldInverseMatrix[0]"), "nodeState": 0,
               "constraintRotatePivot": ZERO, "constraintRotateTranslate": ZERO, "constraintRotateOrder": 1,
               "constraintJointOrient": angles()}

        def targets_of(names, *plugs, **more):
            rests = {"Translate": ZERO, "Rotate": angles(), "Scale": ONE, "RotateOrder": 0, "RotatePivot": ZERO}
            return multi(*[compound(targetWeight=weight, targetRotateTranslate=ZERO, **parents[name],
                                    **{f"target{plug}": self.fed(f"{name}.{plug[0].lower()}{plug[1:]}", rests[plug])
                                       for plug in plugs}, **more)
                           for name, weight in zip(names, weights if len(names) > 1 else (1,))])

        def mean(*values):
            return add(*[scaled(v, weight) for v, weight in zip(values, weights)])

        places = [point_by(origin(self.world[name]), up) for name in targets]
        turns = [linear(product(self.world[name], up)) for name in targets]
        self.node("point", "pointConstraint", offset=[0, k, 0], restTranslate=ZERO, target=targets_of(targets, "Translate", "RotatePivot"),
                  constraintTranslate=add(mean(*places), [0, k, 0]), **own)
        self.node("orient", "orientConstraint", offset=angles(), interpType=1, restRotate=angles(),
                  target=targets_of(targets, "Rotate", "RotateOrder", targetJointOrient=angles()),
                  constraintRotate=angles(euler_angles(between(turns[0], turns[1], weights[1]), 1)), **own)
        self.transform("big", "puppet", [1, 0, 0], scale=[2, 3, k])
        parents["big"] = {"targetParentMatrix": self.fed_matrix("big", "parentMatrix[0]")}
        self.node("scaling", "scaleConstraint", offset=[1, 0.5, 2], restScale=ONE, constraintScaleCompensate=False,
                  target=targets_of(["big"], "Scale"), constraintScale=[2, 1.5, 2 * k], **own)
        offset, tilt = [0, 0, k], [0.3, 0, 0]
        held = product(euler_matrix(tilt), translation(offset), self.world["hip"], up)
        self.node("hold", "parentConstraint", restTranslate=ZERO, restRotate=angles(), interpType=1,
                  target=targets_of(["hip"], "Translate", "Rotate", "RotateOrder", "Scale", "RotatePivot", targetOffsetTranslate=offset,
                                    targetOffsetRotate=angles(tilt), targetInverseScale=ONE, targetScaleCompensate=False,
                                    targetJointOrient=angles()),
                  constraintTranslate=origin(held), constraintRotate=angles(euler_angles(linear(held), 1)), **own)
        at = [1, 2 * k, 3]
        aim = unit(sub(places[1], at))
        side = cross(aim, across(vector_by(Y, up), aim))
        aimed = frame(aim, cross(side, aim), side)
        aiming = {"worldUpType": 3, "worldUpMatrix": matrix(), "worldUpVector": Y, "aimVector": X, "upVector": Y}
        self.node("look", "aimConstraint", constraintTranslate=at, offset=angles(), restRotate=angles(), **aiming,
                  target=targets_of(["mark"], "Translate", "RotatePivot"),
                  constraintRotate=angles(euler_angles(aimed, 1)), **own)
        rail = Curve(1, [0, 1], [[0, 0, 0], [3 * k, 0, 4 * k]])
        along = unit(vector_by([0.6, 0, 0.8], up))
        side = cross(along, across(vector_by(Y, up), along))
        self.node("slide", "tangentConstraint", constraintTranslate=at, **aiming,
                  target=multi(compound(targetGeometry=curve_data(rail))),
                  constraintRotate=angles(euler_angles(frame(along, cross(side, along), side), 1)), **own)
        pole = vector_by(sub(origin(self.world["mark"]), origin(self.world["thigh"])), up)
        self.node("pole", "poleVectorConstraint", pivotSpace=self.fed_matrix("thigh", "parentMatrix[0]"), offset=ZERO,
                  target=targets_of(["mark"], "Translate", "RotatePivot"), constraintTranslate=pole,
                  **{**own, "constraintRotatePivot": self.fed("thigh.translate", ZERO)})
        self.node("halfTranslate", "pairBlend", inTranslate1=[0, 2, 4], inTranslate2=[k, 4, 0], weight=0.25, translateXMode=0,
                  translateYMode=1, translateZMode=2, outTranslate=[k / 4, 2, 0], inRotate1=angles([0.2, 0, 0.4]),
                  inRotate2=angles([0.4, 0.4, 0]), rotInterpolation=0, rotateMode=0, rotateOrder=0,
                  outRotate=angles([0.25, 0.1, 0.3]))
        self.violation("off", "pointConstraint", "pointConstraint", "nodeState is 1", offset=ZERO, restTranslate=ZERO,
                       target=targets_of(["mark"], "Translate", "RotatePivot"), constraintTranslate=ZERO,
                       **{**own, "nodeState": 1})
        self.violation("longWay", "orientConstraint", "orientConstraint", "interpType is 3", offset=angles(), interpType=3,
                       restRotate=angles(), constraintRotate=angles(),
                       target=targets_of(["mark"], "Rotate", "RotateOrder", targetJointOrient=angles()), **own)

    # ---- inverse kinematics ------------------------------------------------------------------------------------------

    def handle(self, name, solver, root, effector, translate, **more):
        self.node(f"{name}Solver", solver)
        self.transform(name, "", translate, more.pop("rotate", ZERO), kind="ikHandle", startJoint=self.fed(f"{root}.message", MESSAGE),
                       endEffector=self.fed(f"{effector}.message", MESSAGE), ikSolver=self.fed(f"{name}Solver.message", MESSAGE),
                       ikBlend=1, solverEnable=True, **more)

    def effector(self, name, parent, translate):
        self.transform(name, parent, translate, kind="ikEffector", message=MESSAGE)

    def solvers(self):
        k = self.size
        # A triangle of 3, 4 and 5 that stands over the line to the handle.
        self.joint("upper", "", ZERO, [0, 0, acos(0.6)], preferredAngle=angles())
        self.joint("lower", "upper", [3 * k, 0, 0], [0, 0, -pi / 2], preferredAngle=angles([0, 0, -0.5]))
        self.effector("wristEnd", "lower", [4 * k, 0, 0])
        self.handle("wrist", "ikRPsolver", "upper", "wristEnd", [5 * k, 0, 0], poleVector=Y, twist=angle())
        # A bone that points where its handle is, and is turned as it is.
        turned = product(turn(X, 0.4), turn(Z, 0.5))
        self.joint("pointer", "", ZERO, euler_angles(turned))
        self.effector("pointerEnd", "pointer", [k, 0, 0])
        self.handle("finger", "ikSCsolver", "pointer", "pointerEnd", scaled([cos(0.5), sin(0.5), 0], 3 * k),
                    rotate=euler_angles(turned))
        # Bones up a line and along another; all but the first share the twist.
        self.joint("tail1", "", [1, 0, 0], [0, 0, pi / 2])
        self.joint("tail2", "tail1", [2 * k, 0, 0], [0.3, 0, -pi / 2])
        self.joint("tail3", "tail2", [k, 0, 0], [0.3, 0, 0])
        self.effector("tailEnd", "tail3", [k, 0, 0])
        path = Curve(1, [0, 1, 2], [[1, 0, 0], [1, 2 * k, 0], [1 + 3 * k, 2 * k, 0]])
        self.handle("tail", "ikSplineSolver", "tail1", "tailEnd", ZERO, inCurve=curve_data(path), rootTwistMode=False,
                    dTwistControlEnable=False, dForwardAxis=0, dWorldUpAxis=0, dWorldUpType=0, dWorldUpVector=Y,
                    dWorldUpVectorEnd=Y, dWorldUpMatrix=matrix(), dWorldUpMatrixEnd=matrix(), twist=angle(0.6),
                    rootOnCurve=True, offset=0, roll=angle())
        left_out.append(f"{self.name_space}:spring (ikHandle), ikHandle: ikSpringSolver has no method")
        self.handle("spring", "ikSpringSolver", "upper", "wristEnd", ZERO)

    # ---- curves, surfaces and meshes ---------------------------------------------------------------------------------

    def curves(self):
        k = self.size
        cord = Curve(3, [0, 0, 0, 1, 2, 2, 2], [[0, 0, 0], [k, 1, 0], [2, 2 * k, 1], [3, 1, 1], [4 * k, 0, 0]])
        self.transform("peg", translate=cord.points[2])
        self.shape("cord", "nurbsCurve", local=curve_data(Curve(cord.degree, cord.knots, cord.points)),
                   controlPoints=elements({i: self.fed("peg.translate", ZERO) if i == 2 else p for i, p in enumerate(cord.points)}))
        fed = self.fed("cordShape.local", {"curve": None})
        self.node("cordLength", "curveInfo", inputCurve=fed, arcLength=cord.arc_length(0, 2))
        self.node("cordPoint", "pointOnCurveInfo", inputCurve=fed, parameter=0.35, turnOnPercentage=True, position=cord.point(0.7))
        self.node("cordPath", "motionPath", geometryPath=fed, uValue=1.2, fractionMode=False, allCoordinates=cord.point(1.2))
        self.violation("cordPast", "pointOnCurveInfo", "pointOnCurveInfo", "parameter is 3, outside 0 to 2", inputCurve=fed,
                       parameter=3, turnOnPercentage=False, position=ZERO)

    def surfaces(self):
        k, place = self.size, {"translate": [0, 3, 1], "rotate": [0.3, 0.2, 0]}
        world = product(euler_matrix(place["rotate"]), translation(place["translate"]))
        roof = Surface((3, 1), ([0, 0, 0, 1, 1, 1], [0, 1]),
                       [[i * k, height, 2 * j] for i, height in enumerate((0, 2, 1, 0)) for j in range(2)])
        placed = Surface(roof.degrees, roof.knots, roof.points, world)
        self.shape("roof", "nurbsSurface", **place, local=surface_data(roof), worldSpace=multi(surface_data(placed)))
        fed = self.fed("roofShape.worldSpace[0]", {"surface": None})
        u, v = 0.3, 0.6
        along_u, along_v = placed.tangents(u, v)
        point, up = placed.point(u, v), unit(cross(along_u, along_v))
        self.node("tile", "pointOnSurfaceInfo", inputSurface=fed, parameterU=u, parameterV=v, turnOnPercentage=False,
                  position=point, normal=up, normalizedNormal=up, tangentU=along_u, tangentV=along_v)
        self.node("nearest", "closestPointOnSurface", inputSurface=fed, inPosition=add(point, scaled(up, 0.5)), parameterU=u,
                  parameterV=v)
        self.node("nail", "follicle", inputSurface=fed, parameterU=u, parameterV=v, outTranslate=point,
                  outRotate=angles(euler_angles(frame(unit(along_u), cross(up, unit(along_u)), up))))
        ridge = Curve(3, roof.knots[0], [point_by(add(scaled(roof.points[2 * i], 0.75), scaled(roof.points[2 * i + 1], 0.25)),
                                                  world) for i in range(4)])
        self.node("ridge", "curveFromSurfaceIso", inputSurface=fed, isoparmDirection=0, isoparmValue=0.25, minValue=1,
                  maxValue=-1, relativeValue=False, relative=False, outputCurve=curve_data(ridge))

    def meshes(self):
        """A square sheet of four quads, tilted."""
        k, place = self.size, {"translate": [1, 2, 3], "rotate": [0.5, 0.2, 0.3]}
        world = product(euler_matrix(place["rotate"]), translation(place["translate"]))
        points = [[k * column, k * row, 0] for row in range(3) for column in range(3)]
        faces = [[a, a + 1, a + 4, a + 3] for a in (0, 1, 3, 4)]
        uvs = [[p[0] / (2 * k), p[1] / (2 * k)] for p in points]
        sheet = mesh_data(points, polygons=faces, uvSets={"map1": {"uvs": uvs, "polygons": faces}}, **matrix(world))
        self.shape("sheet", "mesh", **place, worldMesh=multi(sheet))
        fed = self.fed("sheetShape.worldMesh[0]", {"mesh": None})
        # On a mesh, a follicle has its X axis against U.
        self.node("pin", "follicle", inputMesh=fed, parameterU=0.7, parameterV=0.2, mapSetName="map1",
                  outTranslate=point_by([1.4 * k, 0.4 * k, 0], world), outRotate=angles(euler_angles(product(turn(Z, pi), linear(world)))))
        places = [point_by(p, world) for p in points]
        self.node("edge", "curveFromMeshEdge", inputMesh=fed, edgeIndex=multi(1),
                  outputCurve=curve_data(Curve(1, [0, 1], [places[1], places[4]])))
        self.node("hem", "polyEdgeToCurve", inputPolymesh=fed, inputComponents={"components": ["e[0]", "e[4]"]}, degree=1,
                  conformToSmoothMeshPreview=False, inputMat=matrix(),
                  outputcurve=curve_data(Curve(1, [0, 1, 2], places[:3])))
        self.violation("lost", "follicle", "follicleTranslateMesh", "no face of the mesh is at (1.5, 0.2)", inputMesh=fed,
                       parameterU=1.5, parameterV=0.2, outTranslate=ZERO, outRotate=angles())
        left_out.append(f"{self.name_space}:lost (follicle), follicleRotateMesh: no face of the mesh is at (1.5, 0.2)")
        self.violation("fork", "polyEdgeToCurve", "polyEdgeToCurve", "its edges are no single path", inputPolymesh=fed,
                       inputComponents={"components": ["e[0]", "e[2]"]}, degree=1, conformToSmoothMeshPreview=False,
                       outputcurve=curve_data(Curve(1, [0, 1], places[:2])))

    # ---- deformers ---------------------------------------------------------------------------------------------------

    def bodies(self):
        """A shape of each kind, upright: its points, and the data that a plug has of such points."""
        k = self.size
        grid = [[k * column, k * row, 0.5] for row in range(4) for column in range(4)]
        corners = [[s, t, u] for u in (0, k) for t in (0, k) for s in (0, k)]
        return {"Mesh": (grid, mesh_data),
                "Curve": (grid[1::3], lambda points: curve_data(Curve(1, list(range(len(points))), points))),
                "Surface": (grid, lambda points: surface_data(Surface((3, 3), ([0, 0, 0, 1, 1, 1],) * 2, points))),
                "Lattice": (corners, lattice_data)}

    def deformer(self, name, kind, word, result, envelope=1, members=None, add_node=None, **attributes):
        """A deformer of the body of one kind. `result` makes each point of what it was; only members go through it."""
        points, data = self.bodies()[word]
        source = data(points)
        moved = [result(i, p) if members is None or i in members else p for i, p in enumerate(points)]
        if members is not None:
            self.node(f"{name}Members", "groupParts", inputComponents={"components": [
                {"Mesh": "vtx[{0}]", "Curve": "cv[{0}]", "Surface": "cv[{1}][{2}]", "Lattice": "pt[{3}][{4}][{5}]"}[word].format(
                    i, i // 4, i % 4, i % 2, i // 2 % 2, i // 4) for i in members]}, outputGeometry=source)
            source = self.fed(f"{name}Members.outputGeometry", source)
        (add_node or self.node)(name, kind, envelope=envelope, input=multi(compound(inputGeometry=source)),
                                outputGeometry=multi(data(moved)), **attributes)

    def skins(self):
        k = self.size
        binds = [IDENTITY, translation([0, 2 * k, 0])]
        worlds = [product(euler_matrix([0, 0, 0.3]), translation([1, 0, 0])), product(turn(X, 0.5), translation([0, 2 * k, 1]))]
        moves = [product(inverse(bind), world) for bind, world in zip(binds, worlds)]
        # Influences 1 and 6; the further up, the more of the second.
        joints = {"matrix": elements({i: matrix(m) for i, m in zip((1, 6), worlds)}), "geomMatrix": matrix(),
                  "bindPreMatrix": elements({i: matrix(inverse(m)) for i, m in zip((1, 6), binds)}),
                  "skinningMethod": 0, "normalizeWeights": 1, "useComponents": False}

        def share(p):
            return min(p[1] / (3 * k), 1)

        def skinned(_, p):
            return add(scaled(point_by(p, moves[0]), 1 - share(p)), scaled(point_by(p, moves[1]), share(p)))

        for word, (points, _) in self.bodies().items():
            weights = multi(*[compound(weights=elements({1: 1 - share(p), 6: share(p)})) for p in points])
            self.deformer(f"skin{word}", "skinCluster", word, skinned, weightList=weights, **joints)
        self.deformer("dual", "skinCluster", "Mesh", lambda i, p: p, weightList=weights, **{**joints, "skinningMethod": 1},
                      add_node=lambda *a, **b: self.violation(*a, "skinMesh", "skinningMethod is 1", **b))

    def blend_shapes(self):
        """Half of a whole shape, and a quarter of a list of moves."""
        k = self.size
        for word in ("Mesh", "Curve", "Surface"):
            points, data = self.bodies()[word]
            target = [add(p, [p[1], 0, k]) for p in points]
            moves = {1: [0, 4, 0], 3: [0, 0, -4]}
            components = {"Surface": ["cv[0][1]", "cv[0][3]"], "Curve": ["cv[1]", "cv[3]"], "Mesh": ["vtx[1]", "vtx[3]"]}[word]
            self.node(f"{word.lower()}Target", "unknown", shape=data(target))
            shapes = elements({0: compound(inputTargetItem=elements({6000: compound(
                inputGeomTarget=self.fed(f"{word.lower()}Target.shape", {word.lower(): None}), inputPointsTarget={"points": []},
                inputComponentsTarget={"components": []})})),
                5: compound(inputTargetItem=elements({6000: compound(
                    inputGeomTarget={word.lower(): None}, inputPointsTarget={"points": list(moves.values())},
                    inputComponentsTarget={"components": components})}))})
            self.deformer(f"shapes{word}", "blendShape", word,
                          lambda i, p: add(p, scaled([p[1], 0, k], 0.5), scaled(moves.get(i, ZERO), 0.25)),
                          weight=elements({0: 0.5, 5: 0.25}), origin=1,
                          inputTarget=multi(compound(inputTargetGroup=shapes, baseWeights=multi(*[1] * len(points)))))

    def clusters(self):
        """Full weights go through the handle's matrix, others through as much of its rotate and translate."""
        k, turned = self.size, 0.6
        self.transform("grip", "", [1, k, 0], [0, 0, turned])

        def moved(weight):
            return product(turn(Z, turned * weight), translation(scaled([1, k, 0], weight)))

        weights = {1: 0.5, 3: 0.25}
        for name, word, members in (("some", "Curve", (1, 2)), ("all", "Curve", None), ("patch", "Surface", (1, 2, 3, 7)),
                                    ("cage", "Lattice", (1, 3, 6))):
            self.deformer(name, "cluster", word, lambda i, p: point_by(p, moved(weights.get(i, 1))), members=members,
                          matrix=self.fed_matrix("grip"), bindPreMatrix=matrix(), angleInterpolation=0, geomMatrix=multi(matrix()),
                          weightList=multi(compound(weights=elements({i: w for i, w in weights.items()
                                                                      if members is None or i in members}))))
        self.deformer("halfCluster", "cluster", "Curve", lambda i, p: p, envelope=0.5, matrix=self.fed_matrix("grip"), weightList=multi(),
                      add_node=lambda *a, **b: self.violation(*a, "clusterFullCurve", "envelope is 0.5", **b))

    def lattices(self):
        """A box of 2 by 2 by 2 points, of which one corner is pulled out."""
        k = self.size
        box = product(scaling([4 * k, 4 * k, 4]), translation([k, 1.5 * k, 0]))
        cage = [[s - 0.5, t - 0.5, u - 0.5] for u in range(2) for t in range(2) for s in range(2)]
        pull = [0.5, 0.25, 0]

        def latticed(_, p):
            place = point_by(p, inverse(box))
            return point_by(add(place, scaled(pull, prod(c + 0.5 for c in place))), box)

        self.shape("cageBox", "lattice", latticeOutput=lattice_data(cage[:-1] + [add(cage[-1], pull)]))
        attributes = dict(outsideLattice=0, deformedLatticePoints=self.fed("cageBoxShape.latticeOutput", {"lattice": None}), local=False,
                          localInfluenceS=2, localInfluenceT=2, localInfluenceU=2, deformedLatticeMatrix=matrix(box),
                          baseLatticeMatrix=matrix(box))
        self.deformer("boxMesh", "ffd", "Mesh", latticed, **attributes)
        self.deformer("boxSurface", "ffd", "Surface", latticed, **attributes)
        self.deformer("halfBox", "ffd", "Mesh", lambda i, p: p, envelope=0.5, **attributes,
                      add_node=lambda *a, **b: self.violation(*a, "ffdMesh", "envelope is 0.5", **b))

    def non_linears(self):
        k = self.size
        curvature, low, high = 0.3, 0, 2 * k

        def bent(_, p):
            x, y, z = p
            height, radius = min(max(y, low), high), 1 / curvature
            c, s, rest = cos(height * curvature), sin(height * curvature), y - height
            return [radius - (radius - x) * c + rest * s, (radius - x) * s + rest * c, z]

        def driven(name):
            return dict(deformerData=self.fed(f"{name}.deformerData"), matrix=matrix())

        self.node("arc", "deformBend", deformerData=0, curvature=angle(curvature), lowBound=low, highBound=high)
        self.deformer("bendAll", "nonLinear", "Mesh", bent, **driven("arc"))
        self.deformer("bendSome", "nonLinear", "Mesh", bent, members=(2, 3, 9, 14), **driven("arc"))
        self.node("waves", "deformSine", deformerData=0, wavelength=5, amplitude=0.5, offset=0.2, lowBound=0, highBound=high, dropoff=0)
        for word in ("Curve", "Surface"):
            self.deformer(f"wave{word}", "nonLinear", word,
                          lambda i, p: add(p, [0.5 * sin(2 * pi * (min(p[1], high) + 0.2) / 5), 0, 0]), **driven("waves"))
        self.node("horn", "deformFlare", deformerData=0)
        self.deformer("flared", "nonLinear", "Mesh", lambda i, p: p, **driven("horn"),
                      add_node=lambda *a, **b: self.violation(*a, "nonLinear", "deformFlare has no method", **b))

    def wires(self):
        """A straight wire that turns: what it carries turns with it."""
        k = self.size
        turned = product(turn(Z, 0.7), translation([1, 0, k]))
        straight = [[0, -1, 0], [0, 4 * k, 0]]
        wire = dict(rotation=1, freezeGeometry=True, baseWire=multi(curve_data(Curve(1, [0, 1], straight))), scale=multi(1),
                    deformedWire=multi(curve_data(Curve(1, [0, 1], [point_by(p, turned) for p in straight]))),
                    dropoffDistance=multi(100), localInfluence=0, crossingEffect=0,
                    wireLocatorParameter={"multi": {}, "element": 0}, wireLocatorTwist={"multi": {}, "element": angle()})
        for word in ("Mesh", "Curve"):
            self.deformer(f"wire{word}", "wire", word, lambda i, p: point_by(p, turned), **wire)
        self.deformer("loose", "wire", "Mesh", lambda i, p: p, **{**wire, "freezeGeometry": False},
                      add_node=lambda *a, **b: self.violation(*a, "wireMesh", "freezeGeometry is 0", **b))

    def poses(self):
        """Each at one of its poses, whose values come out."""
        poses = [turn(Z, a) for a in (0, 0.5, 1.1)]
        self.node("matrixPoses", "weightDriver", twistAxis=0, invertAxis=False, driverMatrix=matrix(poses[1]), readerMatrix=matrix(),
                  rotationOffset=angles(), output=multi(0, 1, 0),
                  pose=multi(*[compound(poseMatrix=matrix(pose), poseParentMatrix=matrix(), poseMode=0) for pose in poses]))
        inputs, values = [[0, 1], [0.5, 0.4], [1, 0.1]], [[0, 0.1, 0], [0.5, self.size, 0], [1, 0, 0.3]]
        self.node("numberPoses", "weightDriver", input=multi(0.5, 0.4), output=multi(*values[1]),
                  poses=multi(*[compound(poseInput=multi(*row), poseValue=multi(*result)) for row, result in zip(inputs, values)]))

    def make(self):
        for part in (self.utilities, self.animation, self.skeleton, self.constraints, self.solvers, self.curves, self.surfaces,
                     self.meshes, self.skins, self.blend_shapes, self.clusters, self.lattices, self.non_linears, self.wires,
                     self.poses):
            part()


scene.node("time1", type="time", outTime={"time": FRAME})
for name, size in (("left", 1), ("right", 1.6)):
    Puppet(name, size).make()

folder = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else pathlib.Path(__file__).parent
scene.write(folder / "scene.json")
(folder / "left-out.txt").write_text("".join(line + "\n" for line in sorted(left_out)))
