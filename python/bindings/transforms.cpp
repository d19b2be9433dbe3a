#include "Function.h"

#include "zent/math/rotation.h"
#include "zent/nodes/inverseMatrix.h"
#include "zent/nodes/joint.h"
#include "zent/nodes/locatorWorldPosition.h"
#include "zent/nodes/multMatrix.h"
#include "zent/nodes/pairBlend.h"
#include "zent/nodes/transform.h"
#include "zent/nodes/worldMatrix.h"

namespace zent::python {

void bindTransforms(Functions& functions) {
    functions.add("composeMatrix", composeMatrix, "inputTranslate=0 inputRotate:rad=0 inputRotateOrder=0 inputScale=1",
                  "Scale, then rotate, then translate.");
    functions.add("decomposeMatrixTranslate", decomposeMatrixTranslate, "inputMatrix", "The translation: row 3.");
    functions.add("decomposeMatrixRotate", decomposeMatrixRotate, "inputMatrix",
                  "Euler angles (xyz, radians) of the matrix as it stands: scale and shear are not taken out.");
    functions.add("decomposeMatrixScale", decomposeMatrixScale, "inputMatrix",
                  "The scale, z negative where the determinant is below 0.001.");
    functions.add("decomposeMatrixShear", decomposeMatrixShear, "inputMatrix", "The shear: xy, xz, yz.");
    functions.add("decomposeMatrixQuat", decomposeMatrixQuat, "inputMatrix",
                  "The rotation as a quaternion, not normalised; negated where the determinant is below 0.001.");
    functions.add(
        "quatToEuler", quatToEuler, "inputQuat",
        "The Euler angles (xyz, radians) of a quaternion x, y, z, w. It is normalised; zero is the identity.");
    functions.add("inverseMatrix", inverseMatrix, "inputMatrix",
                  "The inverse. A singular matrix gives infinities or NaN.");
    functions.add("inverseLocal", inverseLocal, "matrix", "`inverseMatrix` of a local matrix.");
    functions.add("inverseWorld", inverseWorld, "worldMatrix", "`inverseMatrix` of a world matrix.");
    functions.add("multMatrix", multMatrix, "matrixIn",
                  "The product in Maya's row order: the first matrix acts on a point first. None gives the identity.");
    functions.add("transform", transform,
                  "translate=0 rotate:rad=0 rotateOrder=0 scale=1 shear=0 rotatePivot=0 scalePivot=0 "
                  "rotatePivotTranslate=0 scalePivotTranslate=0",
                  "The local matrix of a transform from its channels. A rotate order outside 0 to 5 gives the zero "
                  "matrix.");
    functions.add("joint", joint,
                  "translate=0 rotate:rad=0 scale=1 rotateOrder=0 jointOrient:rad=0 inverseScale=1 "
                  "segmentScaleCompensate=1",
                  "The local matrix of a joint: scale, rotation, joint orient (xyz), the parent's inverse scale if it "
                  "compensates,\ntranslation.");
    functions.add("worldMatrix", worldMatrix, "parentMatrix matrix",
                  "matrix times parentMatrix in Maya's row order: the local matrix acts on a point first.");
    functions.add("locatorWorldPosition", locatorWorldPosition, "localPosition=0 worldMatrix=I",
                  "A point of a locator's space in the world.");
    functions.add("pairBlendTranslate", pairBlendTranslate,
                  "inTranslate1 inTranslate2 weight=1 translateXMode=0 translateYMode=0 translateZMode=0",
                  "Both blended, each component by its mode: 0 blends, 2 takes the second, any other the first.");
    functions.add("pairBlendRotate", pairBlendRotate, "inRotate1:rad inRotate2:rad weight=1 rotInterpolation=0",
                  "Both rotations (xyz, radians) blended: by their angles for 0, by their quaternions for 1; else the "
                  "first.");
}

} // namespace zent::python
