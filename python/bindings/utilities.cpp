#include "Function.h"

#include "zent/expression/expression.h"
#include "zent/nodes/addDoubleLinear.h"
#include "zent/nodes/angleBetween.h"
#include "zent/nodes/animCurve.h"
#include "zent/nodes/blendColors.h"
#include "zent/nodes/blendTwoAttr.h"
#include "zent/nodes/blendWeighted.h"
#include "zent/nodes/clamp.h"
#include "zent/nodes/combinationShape.h"
#include "zent/nodes/condition.h"
#include "zent/nodes/distanceBetween.h"
#include "zent/nodes/lerp.h"
#include "zent/nodes/limit.h"
#include "zent/nodes/multDoubleLinear.h"
#include "zent/nodes/multiplyDivide.h"
#include "zent/nodes/plusMinusAverage.h"
#include "zent/nodes/remapValue.h"
#include "zent/nodes/reverse.h"
#include "zent/nodes/setRange.h"
#include "zent/nodes/unitConversion.h"
#include "zent/nodes/weightDriverDrivers.h"
#include "zent/nodes/weightDriverOutWeight.h"
#include "zent/nodes/weightDriverPoses.h"
#include "zent/nodes/worldVisibility.h"

namespace zent::python {

void bindUtilities(Functions& functions) {
    functions.add("addDoubleLinear", addDoubleLinear, "input1=0 input2=0", "input1 + input2.");
    functions.add("multDoubleLinear", multDoubleLinear, "input1=0 input2=0", "input1 times input2.");
    functions.add("angleBetween__COMPUTE__angle", angleBetween__COMPUTE__angle, "vector1 vector2",
                  "The angle from `vector1` to `vector2`, radians, 0 to pi. A vector shorter than 1e-5 gives 0.");
    functions.add("angleBetween__COMPUTE__axis", angleBetween__COMPUTE__axis, "vector1 vector2",
                  "The unit axis of the rotation from `vector1` to `vector2`. Equal vectors, and one shorter than "
                  "1e-5, give (0, 0, 1).");
    functions.add("blendColors", blendColors, "color1 color2 blender=0.5",
                  "`color1` at blender 1, `color2` at blender 0. The blender is not clamped.");
    functions.add("blendTwoAttr", blendTwoAttr, "input attributesBlender=0",
                  "From input[0] at attributesBlender 0 to input[1] at 1. A single input is the result. An empty one "
                  "raises Error.");
    functions.add("blendWeighted", blendWeighted, "input weight=[]",
                  "The weighted sum of `input`, both by logical index. An input without a weight counts whole.");
    functions.add("clamp", clamp, "input min=0 max=0", "`input` held between `min` and `max`; `max` wins.");
    functions.add("combinationShape", combinationShape, "inputWeight combinationMethod=0",
                  "Several shape weights as one: method 0 their product, 1 the lowest, 2 their product times their "
                  "number over their sum,\nanything else 0. The lowest of none raises Error.");
    functions.add("condition1D", condition1D, "firstTerm secondTerm colorIfTrue=0 colorIfFalse=1 operation=0",
                  "`colorIfTrue` where the terms are 0 equal, 1 not equal (both within 1e-5), 2 greater, 3 greater or "
                  "equal, 4 less,\n5 less or equal; else, and for any other operation, `colorIfFalse`.");
    functions.add("condition3D", condition3D, "firstTerm secondTerm colorIfTrue=0 colorIfFalse=1 operation=0",
                  "`condition1D` with vectors to choose from.");
    functions.add("distanceBetweenTwoPoints", distanceBetweenTwoPoints, "point1 point2", "The distance of two points.");
    functions.add("distanceBetweenTwoMatrices", distanceBetweenTwoMatrices, "inMatrix1 inMatrix2",
                  "The distance of the translations of two matrices.");
    functions.add("distanceDimShape", distanceDimShape, "startPoint endPoint", "The distance of two points.");
    functions.add("lerp", lerp, "a b t", "`a` at t 0, `b` at t 1. Not clamped.");
    functions.add("limit", limit, "value minEnable min maxEnable max",
                  "`value` held at the bounds that are enabled; `max` wins.");
    functions.add(
        "limit3", limit3,
        "value minEnableX minX maxEnableX maxX minEnableY minY maxEnableY maxY minEnableZ minZ maxEnableZ maxZ",
        "`limit` by component.");
    functions.add("multiplyDivide1D", multiplyDivide1D, "input1 input2=1 operation=1",
                  "Operation 0 gives `input1`, 1 the product, 2 the quotient, 3 the power, any other 0.");
    functions.add("multiplyDivide3D", multiplyDivide3D, "input1 input2=1 operation=1",
                  "`multiplyDivide1D` by component.");
    functions.add("plusMinusAverage1D", plusMinusAverage1D, "input1D operation=1",
                  "Operation 0 gives the first, 1 the sum, 2 the first less the others, 3 the average, any other 0. "
                  "Operations 0 and 2 of\nnothing raise Error.");
    functions.add("plusMinusAverage2D", plusMinusAverage2D, "input2D operation=1",
                  "`plusMinusAverage1D` by component.");
    functions.add("plusMinusAverage3D", plusMinusAverage3D, "input3D operation=1",
                  "`plusMinusAverage1D` by component.");
    functions.add("remap", remap, "x positions values interpolation=1",
                  "The piecewise linear curve through (positions, values) at `x`, constant beyond both ends. The "
                  "interpolations have no\neffect. No position, or fewer values, raise Error.");
    functions.add("remapValue", remapValue,
                  "inputValue inputMin=0 inputMax=1 outputMin=0 outputMax=1 value_Position value_FloatValue "
                  "value_Interp=1",
                  "`inputValue`, limited to its range and taken to 0..1, through `remap` and to the output's range.");
    functions.add("reverse", reverse, "input", "1 - input.");
    functions.add("setRange1D", setRange1D, "value oldMin=0 oldMax=0 min=0 max=0",
                  "`value` taken from the old range to `min` and `max`, held at the ends. An old range of less than "
                  "1e-5 gives 0.");
    functions.add("setRange3D", setRange3D, "value oldMin=0 oldMax=0 min=0 max=0", "`setRange1D` by component.");
    functions.add("unitConversion1D", unitConversion1D, "input conversionFactor=1", "`input` times the factor.");
    functions.add("unitConversion2D", unitConversion2D, "input conversionFactor=1", "`input` times the factor.");
    functions.add("unitConversion3D", unitConversion3D, "input conversionFactor=1", "`input` times the factor.");
    functions.add("worldVisibility", worldVisibility, "visibility parentVisibility=1", "Both of them.");

    functions.add("animCurve", animCurve,
                  "input keyTime keyValue keyTanInX keyTanInY keyTanInType keyTanOutX keyTanOutY keyTanOutType "
                  "preInfinity=0 postInfinity=0 weightedTangents=0",
                  "A keyed curve at a time or another input. Key times ascend; the other lists are as long.\n\n"
                  "Tangent types with a meaning: 2 linear (on both sides), 5 step (out), 17 step next (in). "
                  "Infinities: 0 constant,\n1 linear, 3 cycle, 4 cycle with offset; any other gives 0. No key, short "
                  "lists and times that do not ascend raise\nError.");
    functions.add("expression", expression, "input code constants=[]",
                  "What the byte code of an expression writes, by slot. `zent.compile_expression` makes the code of a "
                  "text. Raises Error\nfor code that cannot be run.");
    functions.add(
        "weightDriverDrivers", weightDriverDrivers,
        "unused1=0 unused2=0 twistAxis=0 invertAxis=0 driverMatrix readerMatrix poseMatrix poseParentMatrix=I "
        "poseMode=0 rotationOffset:rad=0",
        "A weight for each pose of a transform: 1 for the pose at which the driver stands, 0 for the others, "
        "in between by a\nradial basis function. Twist axis: 0 x, 1 y, 2 z; a pose of mode 1 ignores twist. "
        "Short lists, and more than 4,096\nposes, raise Error.");
    functions.add("weightDriverOutWeight", weightDriverOutWeight, "first second limit invert=0",
                  "The falloff by the angle between the x axis of `second` and the way to `first`: 1 at no angle, 0 "
                  "from `limit` (degrees) on.");
    functions.add("weightDriverPoses", weightDriverPoses, "unused1=0 unused2=0 input poseInput poseValue",
                  "The generic pose interpolator: the values of pose i at its inputs, in between by a radial basis "
                  "function. Both maps go\nby (pose, element). Raises Error for an element beyond the input or beyond "
                  "the poses.");
}

} // namespace zent::python
