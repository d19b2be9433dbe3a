#include "zent/methods/rows.h"

// How a row is written. Names with a "?" behind them come from no source that was confirmed in Maya.
//
//   types       name; name(driver)         the driver is the type of an ikHandle's solver or of a nonLinear's shape
//   results     plug; ~plug                "~": only where it is connected, or where no such plug of the node is
//   arguments   plug                       of the node itself
//               walk>plug                  of each node that a walk leads to
//               =1                         a literal
//               plug|1                     a plug, or a literal on nodes that lack it
//               {reader plug plug}         a function, and what it reads; with a "?", in units that were not confirmed
//               :rad :asc                  an angle; a list that must ascend
//   indices     [*] all in use, in order   [#] all in use, and the entry tells which     [g] of the deformer's geometry
//               [.] the only one              [.x] that of the multi x
//               [^x] all, by their child x [=x] those of the multi x                     [>] those that are connected
//   channels    <XYZ>                      one row for each letter
//   guards      plug=0,1  plug=I           values; the identity
//               #plug=1  #plug<2  #plug>0  the number of elements: 1; at most 2; more than none
//               +plug  -plug  !plug        connected; not connected; the node has it
//               {name}                     a function
//               if ...                     no record, and nothing to tell, where it does not hold
//               (words)                    why, for whoever reads the notes
namespace zent {

// clang-format off
#define TRANSFORMS "transform; ikHandle; ikEffector; aimConstraint; orientConstraint; parentConstraint; pointConstraint; " \
                   "poleVectorConstraint; scaleConstraint; tangentConstraint"
#define PLACED "if !matrix; inheritsTransform=1 (inheritsTransform is off); #worldMatrix<1 (the node has several instances); " \
               "offsetParentMatrix=I (offsetParentMatrix is in use)"
#define LIVE "nodeState=0 (the node is switched off)"
#define TARGET "target[*].targetRotateTranslate=0"
#define CHAIN_ON "ikBlend=1 (ikBlend mixes in the joints' own rotates); solverEnable=1 (the solver is off)"
#define DEFORMS LIVE "; -weightFunction[g]? (a falloff weighs it)"
#define HANDLE "handle>translate; handle>rotate:rad; handle>rotateOrder; handle>scale; handle>rotatePivot; " \
               "handle>scalePivot; handle>rotatePivotTranslate; handle>scalePivotTranslate"
#define CLUSTER DEFORMS "; envelope=1; geomMatrix[g]=I (the shape is not in its own space)"
#define SKIN "envelope; input[g].inputGeometry; geomMatrix; matrix[*]; bindPreMatrix[=matrix]; " \
             "{skinWeights weightList[*].weights[*]}"
#define SKIN_GUARDS DEFORMS "; skinningMethod=0 (dual quaternion or blended); normalizeWeights=1 (weights are not normalised as they are set); " \
                    "useComponents=0; {bindPreMatrices}"
#define SHAPES "envelope; input[g].inputGeometry; weight[#]; " \
               "{targetShapes inputTarget[*].inputTargetGroup[*].inputTargetItem[*].inputGeomTarget}; " \
               "{targetDeltas inputTarget[*].inputTargetGroup[*].inputTargetItem[*].inputPointsTarget " \
               "inputTarget[*].inputTargetGroup[*].inputTargetItem[*].inputComponentsTarget}; " \
               "{targetWeights inputTarget[*].inputTargetGroup[*].targetWeights[*]}"
#define SHAPES_GUARDS DEFORMS "; inputTarget[g].baseWeights[*]=1 (painted base weights); origin=1? (targets in world space); " \
                      "inputTarget[g].inputTargetGroup[*].normalizationId=0? (a normalisation group); " \
                      "inputTarget[g].inputTargetGroup[*].postDeformersMode=0? (targets after the deformers); {allMembers}"
#define FFD "input[g].inputGeometry; <deformedLatticePoints; deformedLatticeMatrix; baseLatticeMatrix; local; localInfluenceS; " \
            "localInfluenceT; localInfluenceU"
#define FFD_GUARDS DEFORMS "; envelope=1; {insideLattice outsideLattice}; {latticeDivisions}; " \
                   "{baseLatticeInPlace baseLatticePoints?}"
#define WIRE "input[g].inputGeometry; rotation; baseWire[.deformedWire]; deformedWire[.]; wireLocatorParameter[^]:asc; " \
             "wireLocatorTwist[^wireLocatorParameter]:rad; {wireBindings baseWire[*] input[*].inputGeometry}"
#define WIRE_GUARDS DEFORMS "; #deformedWire=1 (several wires); envelope=1; scale[*]=1; localInfluence=0; crossingEffect=0; " \
                    "-holder? (a holder); freezeGeometry=1 (the shape at bind time is not known); " \
                    "{shapeDegree baseWire[.deformedWire]}; {shapeDegree deformedWire[.]}; " \
                    "{insideDropoff dropoffDistance[.deformedWire]}; {allMembers}"
#define SINE "input[g].inputGeometry; envelope; matrix; sine>wavelength; sine>amplitude; sine>offset; sine>lowBound; sine>highBound"
#define SURFACE_POINT "inputSurface; parameterU; parameterV; turnOnPercentage"
#define FOLLICLE_FACE "inputMesh; parameterU; parameterV; {faceVertices mapSetName?}; {faceUVs}"

const WrittenRow kWrittenRows[] = {
    // ---- utilities
    {"addDoubleLinear", "addDoubleLinear; addDL?", "output", "input1; input2", ""},
    {"multDoubleLinear", "multDoubleLinear; multDL?", "output", "input1; input2", ""},
    {"angleBetween__COMPUTE__angle", "angleBetween", "~angle", "vector1; vector2", ""},
    {"angleBetween__COMPUTE__axis", "angleBetween", "~axis", "vector1; vector2", ""},
    {"blendColors", "blendColors", "output", "color1; color2; blender", ""},
    {"blendTwoAttr", "blendTwoAttr", "output", "input[*]; attributesBlender", "#input<2 (more than two inputs)"},
    {"blendWeighted", "blendWeighted", "output", "input[#]; weight[#]", ""},
    {"clamp", "clamp", "~output<RGB>", "input<RGB>; min<RGB>; max<RGB>", ""},
    {"combinationShape", "combinationShape", "outputWeight", "inputWeight[*]; combinationMethod", ""},
    {"condition1D", "condition", "~outColor<RGB>", "firstTerm; secondTerm; colorIfTrue<RGB>; colorIfFalse<RGB>; operation", ""},
    {"condition3D", "condition", "~outColor", "firstTerm; secondTerm; colorIfTrue; colorIfFalse; operation", ""},
    {"distanceBetweenTwoPoints", "distanceBetween", "distance", "point1; point2",
     "if -inMatrix1; if -inMatrix2; inMatrix1=I (a matrix is set); inMatrix2=I (a matrix is set)"},
    {"distanceBetweenTwoMatrices", "distanceBetween", "distance", "inMatrix1; inMatrix2",
     "if +inMatrix1; if +inMatrix2; point1=0 (a point and a matrix); point2=0 (a point and a matrix)"},
    {"distanceDimShape", "distanceDimShape", "distance", "startPoint; endPoint", ""},
    {"multiplyDivide1D", "multiplyDivide", "~output<XYZ>", "input1<XYZ>; input2<XYZ>; operation", "operation=1,2,3? (no operation)"},
    {"multiplyDivide3D", "multiplyDivide", "~output", "input1; input2; operation", "operation=1,2,3? (no operation)"},
    {"plusMinusAverage1D", "plusMinusAverage", "output1D", "input1D[*]; operation", "if #input1D>0"},
    {"plusMinusAverage2D", "plusMinusAverage", "output2D", "input2D[*]; operation", "if #input2D>0"},
    {"plusMinusAverage3D", "plusMinusAverage", "output3D", "input3D[*]; operation", "if #input3D>0"},
    {"remapValue", "remapValue", "outValue",
     "inputValue; inputMin; inputMax; outputMin; outputMax; value[^value_Position].value_Position:asc; "
     "value[^value_Position].value_FloatValue; value[^value_Position].value_Interp",
     "value[*].value_Interp=1 (an interpolation that is not linear)"},
    {"reverse", "reverse", "~output<XYZ>", "input<XYZ>", ""},
    {"setRange1D", "setRange", "~outValue<XYZ>", "value<XYZ>; oldMin<XYZ>; oldMax<XYZ>; min<XYZ>; max<XYZ>", ""},
    {"setRange3D", "setRange", "~outValue", "value; oldMin; oldMax; min; max", ""},
    {"unitConversion1D", "unitConversion", "output", "input; conversionFactor", "if {isNumber input}"},
    {"unitConversion3D", "unitConversion", "output", "input; conversionFactor", "if {isVector input}"},
    {"quatToEuler", "quatToEuler", "outputRotate", "inputQuat", "inputRotateOrder=0"},
    {"animCurve", "animCurveTL; animCurveTA; animCurveTT; animCurveTU; animCurveUL; animCurveUA; animCurveUT; animCurveUU", "output",
     "{curveInput input}; keyTimeValue[*].keyTime:asc; keyTimeValue[*].keyValue; {inTangentX}?; {inTangentY}?; {inTangentType}; "
     "{outTangentX}?; {outTangentY}?; {outTangentType}; preInfinity; postInfinity; weightedTangents",
     "#keyTimeValue>0 (no key); preInfinity=0,1,3,4 (oscillates); postInfinity=0,1,3,4 (oscillates)"},
    {"expression", "expression", "output[*]", "{expressionInputs input[*] time frame}; {expressionCode expression}; {expressionConstants}", ""},
    // ---- matrices, transforms, joints
    {"composeMatrix", "composeMatrix", "outputMatrix", "inputTranslate; inputRotate:rad; inputRotateOrder; inputScale",
     "useEulerRotation=1 (it composes from a quaternion); inputShear=0 (shear)"},
    {"decomposeMatrixTranslate", "decomposeMatrix", "~outputTranslate", "inputMatrix", ""},
    {"decomposeMatrixRotate", "decomposeMatrix", "~outputRotate", "inputMatrix", "inputRotateOrder=0; {onlyRotates inputMatrix}"},
    {"decomposeMatrixScale", "decomposeMatrix", "~outputScale", "inputMatrix", ""},
    {"decomposeMatrixShear", "decomposeMatrix", "~outputShear", "inputMatrix", ""},
    {"decomposeMatrixQuat", "decomposeMatrix", "~outputQuat", "inputMatrix", ""},
    {"inverseMatrix", "inverseMatrix", "outputMatrix", "inputMatrix", ""},
    {"inverseMatrix", TRANSFORMS "; joint", "parentInverseMatrix[0]", "parentMatrix[0]", "if !parentInverseMatrix; #worldMatrix<1 (the node has several instances)"},
    {"inverseLocal", TRANSFORMS "; joint", "inverseMatrix", "matrix", "if !inverseMatrix"},
    {"inverseWorld", TRANSFORMS "; joint", "worldInverseMatrix[0]", "worldMatrix[0]", "if !worldInverseMatrix; #worldMatrix<1 (the node has several instances)"},
    {"multMatrix", "multMatrix", "matrixSum", "matrixIn[*]", ""},
    {"transform", TRANSFORMS, "matrix",
     "translate; rotate:rad; rotateOrder; scale; shear; rotatePivot; scalePivot; rotatePivotTranslate; scalePivotTranslate",
     "if !matrix; rotateAxis=0 (rotateAxis turns it); -rotateQuaternion (a quaternion drives it); offsetParentMatrix=I (offsetParentMatrix is in use)"},
    {"joint", "joint", "matrix", "translate; rotate:rad; scale; rotateOrder; jointOrient:rad; inverseScale; segmentScaleCompensate",
     "rotateAxis=0 (rotateAxis turns it); shear=0 (shear); rotatePivot=0; scalePivot=0; offsetParentMatrix=I (offsetParentMatrix is in use)"},
    {"worldMatrix", TRANSFORMS "; joint; mesh; nurbsCurve; nurbsSurface; lattice; locator", "worldMatrix[0]", "parentMatrix[0]; matrix", PLACED},
    {"locatorWorldPosition", "locator", "worldPosition[0]", "localPosition; worldMatrix[0]", ""},
    // ---- constraints
    {"pointConstraint", "pointConstraint", "constraintTranslate",
     "constraintParentInverseMatrix; constraintRotatePivot; constraintRotateTranslate; offset; target[*].targetWeight; restTranslate; "
     "target[*].targetParentMatrix; target[*].targetTranslate; target[*].targetRotatePivot",
     LIVE "; " TARGET "; constraintOffsetPolarity=0; {restPosition target[*].targetWeight enableRestPosition}"},
    {"scaleConstraint", "scaleConstraint", "constraintScale",
     "constraintParentInverseMatrix; constraintScaleCompensate; offset; target[*].targetWeight; restScale; "
     "target[*].targetParentMatrix; target[*].targetScale",
     LIVE "; {restPosition target[*].targetWeight enableRestPosition}"},
    {"orientConstraint", "orientConstraint", "constraintRotate",
     "constraintParentInverseMatrix; constraintRotateOrder; constraintJointOrient:rad; offset:rad; interpType; target[*].targetWeight; "
     "restRotate:rad; target[*].targetParentMatrix; target[*].targetRotate:rad; target[*].targetRotateOrder; target[*].targetJointOrient:rad",
     LIVE "; interpType=0,1,2 (longest or cached interpolation); useOldOffsetCalculation=0?; "
     "{restPosition target[*].targetWeight enableRestPosition}"},
    {"parentConstraintTranslate", "parentConstraint", "constraintTranslate",
     "constraintParentInverseMatrix; constraintRotatePivot; constraintRotateTranslate; target[*].targetWeight; restTranslate; "
     "target[*].targetParentMatrix; target[*].targetTranslate; target[*].targetOffsetTranslate; target[*].targetRotatePivot; "
     "target[*].targetRotate:rad; target[*].targetRotateOrder; target[*].targetScale; target[*].targetInverseScale; "
     "target[*].targetScaleCompensate; target[*].targetJointOrient:rad",
     LIVE "; " TARGET "; useDecompositionRotateTranslate=0?; {restPosition target[*].targetWeight enableRestPosition}"},
    {"parentConstraintRotate", "parentConstraint", "constraintRotate",
     "constraintParentInverseMatrix; constraintRotateOrder; constraintJointOrient:rad; interpType; target[*].targetWeight; restRotate:rad; "
     "target[*].targetParentMatrix; target[*].targetRotate:rad; target[*].targetOffsetRotate:rad; target[*].targetRotateOrder; "
     "target[*].targetJointOrient:rad",
     LIVE "; interpType=0,1,2 (longest or cached interpolation); decompRotationToChild=0?; "
     "{restPosition target[*].targetWeight enableRestPosition}"},
    {"aimConstraint", "aimConstraint", "constraintRotate",
     "constraintParentInverseMatrix; constraintTranslate; constraintRotatePivot; constraintRotateTranslate; constraintRotateOrder; "
     "constraintJointOrient:rad; offset:rad; target[*].targetWeight; restRotate:rad; target[*].targetParentMatrix; target[*].targetTranslate; "
     "target[*].targetRotatePivot; worldUpType; worldUpMatrix; worldUpVector; aimVector; upVector",
     LIVE "; worldUpType=0,1,2,3 (no world up); " TARGET "; {restPosition target[*].targetWeight enableRestPosition}"},
    {"tangentConstraint", "tangentConstraint", "constraintRotate",
     "constraintParentInverseMatrix; constraintRotateOrder; constraintTranslate; target[.].targetGeometry; aimVector; upVector; "
     "worldUpType; worldUpMatrix; worldUpVector",
     LIVE "; #target=1 (several targets); constraintJointOrient=0; constraintRotatePivot=0; constraintRotateTranslate=0; "
     "worldUpType=0,1,2,3 (no world up); {shapeDegree target[.].targetGeometry}"},
    {"poleVectorConstraint", "poleVectorConstraint", "constraintTranslate",
     "constraintParentInverseMatrix; constraintRotatePivot; pivotSpace; target[.].targetParentMatrix; target[.].targetTranslate; "
     "target[.].targetRotatePivot",
     LIVE "; #target=1 (several targets); target[*].targetWeight=1 (a weight that is not 1); offset=0; " TARGET},
    {"pairBlendTranslate", "pairBlend", "~outTranslate", "inTranslate1; inTranslate2; weight; translateXMode; translateYMode; translateZMode", LIVE},
    {"pairBlendRotate", "pairBlend", "~outRotate", "inRotate1:rad; inRotate2:rad; weight; rotInterpolation",
     LIVE "; rotateMode=0; {pairBlendOrder rotInterpolation rotateOrder}"},
    // ---- inverse kinematics
    {"ikRPsolver", "ikHandle(ikRPsolver)", "chain>rotate",
     "parentMatrix[0]; translate; effector>translate; poleVector; twist:rad; root>parentMatrix[0]; chain>jointOrient:rad; "
     "chain>preferredAngle:rad; chain>translate; chain>rotateOrder; chain>scale; chain>inverseScale; chain>segmentScaleCompensate",
     CHAIN_ON "; rotatePivot=0; {atMostTwoJoints}; {bends}"},
    {"ikSCsolver", "ikHandle(ikSCsolver)", "root>rotate",
     "parentMatrix[0]; translate; effector>translate; rotate:rad; rotateOrder; root>parentMatrix[0]; root>jointOrient:rad; root>translate; "
     "root>rotateOrder; root>scale; root>inverseScale; root>segmentScaleCompensate",
     CHAIN_ON "; {oneJoint}"},
    {"ikSplineSolver", "ikHandle(ikSplineSolver)", "chain>rotate; root>translate",
     "inCurve; rootTwistMode; dTwistControlEnable; dForwardAxis|0; dWorldUpAxis; dWorldUpType; dWorldUpVector; dWorldUpVectorEnd; "
     "dWorldUpMatrix; dWorldUpMatrixEnd; =0; effector>translate; twist:rad; root>parentMatrix[0]; chain>jointOrient:rad; rest>translate; "
     "chain>rotateOrder; chain>scale; chain>inverseScale; chain>segmentScaleCompensate",
     CHAIN_ON "; rootOnCurve=1; offset=0; roll=0; {upType dTwistControlEnable dWorldUpType}; {shapeDegree inCurve}"},
    // ---- curves and surfaces
    {"curveInfo", "curveInfo", "arcLength", "inputCurve", "{shapeDegree inputCurve}"},
    {"pointOnCurveInfo", "pointOnCurveInfo", "position", "inputCurve; parameter; turnOnPercentage",
     "{shapeDegree inputCurve}; {parameterInside inputCurve parameter turnOnPercentage}"},
    {"motionPath", "motionPath", "allCoordinates", "geometryPath; uValue; fractionMode", "{shapeDegree geometryPath}"},
    {"curve_from_cv", "nurbsCurve", "local", "{restCurve local}; controlPoints[>]",
     "if {drivenPoints controlPoints[*]}; -create (its control points are tweaks of another curve)"},
    {"curveFromMeshEdge", "curveFromMeshEdge", "outputCurve", "inputMesh; {edgeVertices inputMesh edgeIndex[*]}", ""},
    {"curveFromSurfaceIso", "curveFromSurfaceIso", "outputCurve",
     "inputSurface; isoparmDirection; isoparmValue; minValue; maxValue; relativeValue", "relative=0; {shapeDegree inputSurface}"},
    {"polyEdgeToCurve", "polyEdgeToCurve", "outputcurve", "inputPolymesh; {pathVertices inputPolymesh inputComponents}; degree",
     "degree=1,3; conformToSmoothMeshPreview=0 (it may follow the smooth preview); inputMat=I?"},
    {"closestPointOnSurface", "closestPointOnSurface", "parameterU; parameterV", "inputSurface; inPosition", "{shapeDegree inputSurface}"},
    {"pointOnSurfacePosition", "pointOnSurfaceInfo", "~position", SURFACE_POINT, "{shapeDegree inputSurface}"},
    {"pointOnSurfaceNormal", "pointOnSurfaceInfo", "~normal", SURFACE_POINT, "{shapeDegree inputSurface}"},
    {"pointOnSurfaceNormalizedNormal", "pointOnSurfaceInfo", "~normalizedNormal", SURFACE_POINT, "{shapeDegree inputSurface}"},
    {"pointOnSurfaceTangentU", "pointOnSurfaceInfo", "~tangentU", SURFACE_POINT, "{shapeDegree inputSurface}"},
    {"pointOnSurfaceTangentV", "pointOnSurfaceInfo", "~tangentV", SURFACE_POINT, "{shapeDegree inputSurface}"},
    {"worldSurface", "nurbsSurface", "worldSpace[0]", "local; worldMatrix[0]", "if !worldSpace"},
    {"follicleTranslateSurface", "follicle", "outTranslate", "inputSurface; parameterU; parameterV", "if +inputSurface; {shapeDegree inputSurface}"},
    {"follicleRotateSurface", "follicle", "outRotate", "inputSurface; parameterU; parameterV", "if +inputSurface; {shapeDegree inputSurface}"},
    {"follicleTranslateMesh", "follicle", "outTranslate", FOLLICLE_FACE, "if +inputMesh; {quadUnderFollicle}"},
    {"follicleRotateMesh", "follicle", "outRotate",
     FOLLICLE_FACE "; {ringCounts}; {ringFaces}; {ringNeighbours}; {ringSizes}; {ringVertices}", "if +inputMesh; {quadUnderFollicle}"},
    // ---- deformers
    {"skinMesh", "skinCluster", "outputGeometry[g]", SKIN, SKIN_GUARDS "; {meshStandsInPlace outputGeometry[g]}"},
    {"skinCurve", "skinCluster", "outputGeometry[g]", SKIN, SKIN_GUARDS},
    {"skinSurface", "skinCluster", "outputGeometry[g]", SKIN, SKIN_GUARDS},
    {"skinLattice", "skinCluster", "outputGeometry[g]", SKIN, SKIN_GUARDS},
    {"blendShapeMesh", "blendShape", "outputGeometry[g]", SHAPES, SHAPES_GUARDS},
    {"blendShapeCurve", "blendShape", "outputGeometry[g]", SHAPES, SHAPES_GUARDS},
    {"blendShapeSurface", "blendShape", "outputGeometry[g]", SHAPES, SHAPES_GUARDS},
    {"clusterCurve", "cluster", "outputGeometry[g]", "input[g].inputGeometry; {members}:asc; matrix?; bindPreMatrix?; angleInterpolation; {memberWeights weightList[*].weights[*]}; " HANDLE, CLUSTER "; if {someMembers}"},
    {"clusterFullCurve", "cluster", "outputGeometry[g]", "input[g].inputGeometry; matrix?; bindPreMatrix?; angleInterpolation; weightList[g].weights[#]; " HANDLE, CLUSTER "; if {allMembers}"},
    {"clusterSurface", "cluster", "outputGeometry[g]", "input[g].inputGeometry; {members}:asc; matrix?; bindPreMatrix?; angleInterpolation; {memberWeights weightList[*].weights[*]}; " HANDLE, CLUSTER},
    {"clusterLattice", "cluster", "outputGeometry[g]", "input[g].inputGeometry; {members}:asc; matrix?; bindPreMatrix?; angleInterpolation; {memberWeights weightList[*].weights[*]}; " HANDLE, CLUSTER},
    {"ffdMesh", "ffd", "outputGeometry[g]", FFD, FFD_GUARDS "; {allMembers}"},
    {"ffdSurface", "ffd", "outputGeometry[g]", FFD, FFD_GUARDS "; {allMembers}"},
    {"deformBendMesh", "nonLinear(deformBend)", "outputGeometry[g]",
     "input[g].inputGeometry; envelope; matrix; bend>curvature:rad; bend>lowBound; bend>highBound", DEFORMS "; if {allMembers}; {bendsForward}"},
    {"deformBendPartialMesh", "nonLinear(deformBend)", "outputGeometry[g]",
     "input[g].inputGeometry; envelope; {members}:asc; matrix; bend>curvature:rad; bend>lowBound; bend>highBound", DEFORMS "; if {someMembers}; {bendsForward}"},
    {"deformSineCurve", "nonLinear(deformSine)", "outputGeometry[g]", SINE, DEFORMS "; sine>dropoff=0; {allMembers}"},
    {"deformSineSurface", "nonLinear(deformSine)", "outputGeometry[g]", SINE, DEFORMS "; sine>dropoff=0; {allMembers}"},
    {"wireMesh", "wire", "outputGeometry[g]", WIRE, WIRE_GUARDS},
    {"wireCurve", "wire", "outputGeometry[g]", WIRE, WIRE_GUARDS},
    // ---- pose interpolators
    {"weightDriverDrivers", "weightDriver?", "output[*]?",
     "=0; =0; twistAxis?; invertAxis?; driverMatrix?; readerMatrix?; pose[*].poseMatrix?; pose[*].poseParentMatrix?; pose[*].poseMode?; "
     "rotationOffset:rad?", "if !driverMatrix"},
    {"weightDriverPoses", "weightDriver?", "output[*]?", "=0; =0; input[*]?; poses[#].poseInput[#]?; poses[#].poseValue[#]?", "if !poses"},
    {nullptr, nullptr, nullptr, nullptr, nullptr},
};
// clang-format on

} // namespace zent
