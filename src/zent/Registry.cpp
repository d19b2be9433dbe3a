#include "zent/Registry.h"

#if __has_include("zent/proxies/AddDoubleLinear.h")
#include "zent/proxies/AddDoubleLinear.h"
#define HAVE_AddDoubleLinear 1
#endif
#if __has_include("zent/proxies/AimConstraint.h")
#include "zent/proxies/AimConstraint.h"
#define HAVE_AimConstraint 1
#endif
#if __has_include("zent/proxies/AngleBetweenAngle.h")
#include "zent/proxies/AngleBetweenAngle.h"
#define HAVE_AngleBetweenAngle 1
#endif
#if __has_include("zent/proxies/AngleBetweenAxis.h")
#include "zent/proxies/AngleBetweenAxis.h"
#define HAVE_AngleBetweenAxis 1
#endif
#if __has_include("zent/proxies/AnimCurve.h")
#include "zent/proxies/AnimCurve.h"
#define HAVE_AnimCurve 1
#endif
#if __has_include("zent/proxies/BlendColors.h")
#include "zent/proxies/BlendColors.h"
#define HAVE_BlendColors 1
#endif
#if __has_include("zent/proxies/BlendShape.h")
#include "zent/proxies/BlendShape.h"
#define HAVE_BlendShape 1
#endif
#if __has_include("zent/proxies/BlendTwoAttr.h")
#include "zent/proxies/BlendTwoAttr.h"
#define HAVE_BlendTwoAttr 1
#endif
#if __has_include("zent/proxies/BlendWeighted.h")
#include "zent/proxies/BlendWeighted.h"
#define HAVE_BlendWeighted 1
#endif
#if __has_include("zent/proxies/Clamp.h")
#include "zent/proxies/Clamp.h"
#define HAVE_Clamp 1
#endif
#if __has_include("zent/proxies/ClosestPointOnSurface.h")
#include "zent/proxies/ClosestPointOnSurface.h"
#define HAVE_ClosestPointOnSurface 1
#endif
#if __has_include("zent/proxies/Cluster.h")
#include "zent/proxies/Cluster.h"
#define HAVE_Cluster 1
#endif
#if __has_include("zent/proxies/ClusterFull.h")
#include "zent/proxies/ClusterFull.h"
#define HAVE_ClusterFull 1
#endif
#if __has_include("zent/proxies/CombinationShape.h")
#include "zent/proxies/CombinationShape.h"
#define HAVE_CombinationShape 1
#endif
#if __has_include("zent/proxies/ComposeMatrix.h")
#include "zent/proxies/ComposeMatrix.h"
#define HAVE_ComposeMatrix 1
#endif
#if __has_include("zent/proxies/Condition1D.h")
#include "zent/proxies/Condition1D.h"
#define HAVE_Condition1D 1
#endif
#if __has_include("zent/proxies/Condition3D.h")
#include "zent/proxies/Condition3D.h"
#define HAVE_Condition3D 1
#endif
#if __has_include("zent/proxies/CurveFromCV.h")
#include "zent/proxies/CurveFromCV.h"
#define HAVE_CurveFromCV 1
#endif
#if __has_include("zent/proxies/CurveFromMeshEdge.h")
#include "zent/proxies/CurveFromMeshEdge.h"
#define HAVE_CurveFromMeshEdge 1
#endif
#if __has_include("zent/proxies/CurveFromSurfaceIso.h")
#include "zent/proxies/CurveFromSurfaceIso.h"
#define HAVE_CurveFromSurfaceIso 1
#endif
#if __has_include("zent/proxies/CurveInfo.h")
#include "zent/proxies/CurveInfo.h"
#define HAVE_CurveInfo 1
#endif
#if __has_include("zent/proxies/DecomposeMatrixQuat.h")
#include "zent/proxies/DecomposeMatrixQuat.h"
#define HAVE_DecomposeMatrixQuat 1
#endif
#if __has_include("zent/proxies/DecomposeMatrixRotate.h")
#include "zent/proxies/DecomposeMatrixRotate.h"
#define HAVE_DecomposeMatrixRotate 1
#endif
#if __has_include("zent/proxies/DecomposeMatrixScale.h")
#include "zent/proxies/DecomposeMatrixScale.h"
#define HAVE_DecomposeMatrixScale 1
#endif
#if __has_include("zent/proxies/DecomposeMatrixShear.h")
#include "zent/proxies/DecomposeMatrixShear.h"
#define HAVE_DecomposeMatrixShear 1
#endif
#if __has_include("zent/proxies/DecomposeMatrixTranslate.h")
#include "zent/proxies/DecomposeMatrixTranslate.h"
#define HAVE_DecomposeMatrixTranslate 1
#endif
#if __has_include("zent/proxies/DeformBendMesh.h")
#include "zent/proxies/DeformBendMesh.h"
#define HAVE_DeformBendMesh 1
#endif
#if __has_include("zent/proxies/DeformBendPartialMesh.h")
#include "zent/proxies/DeformBendPartialMesh.h"
#define HAVE_DeformBendPartialMesh 1
#endif
#if __has_include("zent/proxies/DeformSine.h")
#include "zent/proxies/DeformSine.h"
#define HAVE_DeformSine 1
#endif
#if __has_include("zent/proxies/DistanceBetweenTwoMatrices.h")
#include "zent/proxies/DistanceBetweenTwoMatrices.h"
#define HAVE_DistanceBetweenTwoMatrices 1
#endif
#if __has_include("zent/proxies/DistanceBetweenTwoPoints.h")
#include "zent/proxies/DistanceBetweenTwoPoints.h"
#define HAVE_DistanceBetweenTwoPoints 1
#endif
#if __has_include("zent/proxies/DistanceDimShape.h")
#include "zent/proxies/DistanceDimShape.h"
#define HAVE_DistanceDimShape 1
#endif
#if __has_include("zent/proxies/Expression.h")
#include "zent/proxies/Expression.h"
#define HAVE_Expression 1
#endif
#if __has_include("zent/proxies/FFD.h")
#include "zent/proxies/FFD.h"
#define HAVE_FFD 1
#endif
#if __has_include("zent/proxies/FollicleRotateMesh.h")
#include "zent/proxies/FollicleRotateMesh.h"
#define HAVE_FollicleRotateMesh 1
#endif
#if __has_include("zent/proxies/FollicleRotateSurface.h")
#include "zent/proxies/FollicleRotateSurface.h"
#define HAVE_FollicleRotateSurface 1
#endif
#if __has_include("zent/proxies/FollicleTranslateMesh.h")
#include "zent/proxies/FollicleTranslateMesh.h"
#define HAVE_FollicleTranslateMesh 1
#endif
#if __has_include("zent/proxies/FollicleTranslateSurface.h")
#include "zent/proxies/FollicleTranslateSurface.h"
#define HAVE_FollicleTranslateSurface 1
#endif
#if __has_include("zent/proxies/IKRPSolver.h")
#include "zent/proxies/IKRPSolver.h"
#define HAVE_IKRPSolver 1
#endif
#if __has_include("zent/proxies/IKSCSolver.h")
#include "zent/proxies/IKSCSolver.h"
#define HAVE_IKSCSolver 1
#endif
#if __has_include("zent/proxies/IKSplineSolver.h")
#include "zent/proxies/IKSplineSolver.h"
#define HAVE_IKSplineSolver 1
#endif
#if __has_include("zent/proxies/InverseLocal.h")
#include "zent/proxies/InverseLocal.h"
#define HAVE_InverseLocal 1
#endif
#if __has_include("zent/proxies/InverseMatrix.h")
#include "zent/proxies/InverseMatrix.h"
#define HAVE_InverseMatrix 1
#endif
#if __has_include("zent/proxies/InverseWorld.h")
#include "zent/proxies/InverseWorld.h"
#define HAVE_InverseWorld 1
#endif
#if __has_include("zent/proxies/Joint.h")
#include "zent/proxies/Joint.h"
#define HAVE_Joint 1
#endif
#if __has_include("zent/proxies/Locator.h")
#include "zent/proxies/Locator.h"
#define HAVE_Locator 1
#endif
#if __has_include("zent/proxies/MotionPath.h")
#include "zent/proxies/MotionPath.h"
#define HAVE_MotionPath 1
#endif
#if __has_include("zent/proxies/MultDoubleLinear.h")
#include "zent/proxies/MultDoubleLinear.h"
#define HAVE_MultDoubleLinear 1
#endif
#if __has_include("zent/proxies/MultMatrix.h")
#include "zent/proxies/MultMatrix.h"
#define HAVE_MultMatrix 1
#endif
#if __has_include("zent/proxies/MultiplyDivide1D.h")
#include "zent/proxies/MultiplyDivide1D.h"
#define HAVE_MultiplyDivide1D 1
#endif
#if __has_include("zent/proxies/MultiplyDivide3D.h")
#include "zent/proxies/MultiplyDivide3D.h"
#define HAVE_MultiplyDivide3D 1
#endif
#if __has_include("zent/proxies/OrientConstraint.h")
#include "zent/proxies/OrientConstraint.h"
#define HAVE_OrientConstraint 1
#endif
#if __has_include("zent/proxies/PairBlendRotate.h")
#include "zent/proxies/PairBlendRotate.h"
#define HAVE_PairBlendRotate 1
#endif
#if __has_include("zent/proxies/PairBlendTranslate.h")
#include "zent/proxies/PairBlendTranslate.h"
#define HAVE_PairBlendTranslate 1
#endif
#if __has_include("zent/proxies/ParentConstraintRotate.h")
#include "zent/proxies/ParentConstraintRotate.h"
#define HAVE_ParentConstraintRotate 1
#endif
#if __has_include("zent/proxies/ParentConstraintTranslate.h")
#include "zent/proxies/ParentConstraintTranslate.h"
#define HAVE_ParentConstraintTranslate 1
#endif
#if __has_include("zent/proxies/PlusMinusAverage1D.h")
#include "zent/proxies/PlusMinusAverage1D.h"
#define HAVE_PlusMinusAverage1D 1
#endif
#if __has_include("zent/proxies/PlusMinusAverage2D.h")
#include "zent/proxies/PlusMinusAverage2D.h"
#define HAVE_PlusMinusAverage2D 1
#endif
#if __has_include("zent/proxies/PlusMinusAverage3D.h")
#include "zent/proxies/PlusMinusAverage3D.h"
#define HAVE_PlusMinusAverage3D 1
#endif
#if __has_include("zent/proxies/PointConstraint.h")
#include "zent/proxies/PointConstraint.h"
#define HAVE_PointConstraint 1
#endif
#if __has_include("zent/proxies/PointOnCurveInfo.h")
#include "zent/proxies/PointOnCurveInfo.h"
#define HAVE_PointOnCurveInfo 1
#endif
#if __has_include("zent/proxies/PointOnSurfaceNormal.h")
#include "zent/proxies/PointOnSurfaceNormal.h"
#define HAVE_PointOnSurfaceNormal 1
#endif
#if __has_include("zent/proxies/PointOnSurfaceNormalizedNormal.h")
#include "zent/proxies/PointOnSurfaceNormalizedNormal.h"
#define HAVE_PointOnSurfaceNormalizedNormal 1
#endif
#if __has_include("zent/proxies/PointOnSurfacePosition.h")
#include "zent/proxies/PointOnSurfacePosition.h"
#define HAVE_PointOnSurfacePosition 1
#endif
#if __has_include("zent/proxies/PointOnSurfaceTangentU.h")
#include "zent/proxies/PointOnSurfaceTangentU.h"
#define HAVE_PointOnSurfaceTangentU 1
#endif
#if __has_include("zent/proxies/PointOnSurfaceTangentV.h")
#include "zent/proxies/PointOnSurfaceTangentV.h"
#define HAVE_PointOnSurfaceTangentV 1
#endif
#if __has_include("zent/proxies/PoleVectorConstraint.h")
#include "zent/proxies/PoleVectorConstraint.h"
#define HAVE_PoleVectorConstraint 1
#endif
#if __has_include("zent/proxies/PolyEdgeToCurve.h")
#include "zent/proxies/PolyEdgeToCurve.h"
#define HAVE_PolyEdgeToCurve 1
#endif
#if __has_include("zent/proxies/QuatToEuler.h")
#include "zent/proxies/QuatToEuler.h"
#define HAVE_QuatToEuler 1
#endif
#if __has_include("zent/proxies/RemapValue.h")
#include "zent/proxies/RemapValue.h"
#define HAVE_RemapValue 1
#endif
#if __has_include("zent/proxies/Reverse.h")
#include "zent/proxies/Reverse.h"
#define HAVE_Reverse 1
#endif
#if __has_include("zent/proxies/ScaleConstraint.h")
#include "zent/proxies/ScaleConstraint.h"
#define HAVE_ScaleConstraint 1
#endif
#if __has_include("zent/proxies/SetRange1D.h")
#include "zent/proxies/SetRange1D.h"
#define HAVE_SetRange1D 1
#endif
#if __has_include("zent/proxies/SetRange3D.h")
#include "zent/proxies/SetRange3D.h"
#define HAVE_SetRange3D 1
#endif
#if __has_include("zent/proxies/SkinCluster.h")
#include "zent/proxies/SkinCluster.h"
#define HAVE_SkinCluster 1
#endif
#if __has_include("zent/proxies/TangentConstraint.h")
#include "zent/proxies/TangentConstraint.h"
#define HAVE_TangentConstraint 1
#endif
#if __has_include("zent/proxies/Transform.h")
#include "zent/proxies/Transform.h"
#define HAVE_Transform 1
#endif
#if __has_include("zent/proxies/UnitConversion1D.h")
#include "zent/proxies/UnitConversion1D.h"
#define HAVE_UnitConversion1D 1
#endif
#if __has_include("zent/proxies/UnitConversion3D.h")
#include "zent/proxies/UnitConversion3D.h"
#define HAVE_UnitConversion3D 1
#endif
#if __has_include("zent/proxies/WeightDriverDrivers.h")
#include "zent/proxies/WeightDriverDrivers.h"
#define HAVE_WeightDriverDrivers 1
#endif
#if __has_include("zent/proxies/WeightDriverPoses.h")
#include "zent/proxies/WeightDriverPoses.h"
#define HAVE_WeightDriverPoses 1
#endif
#if __has_include("zent/proxies/Wire.h")
#include "zent/proxies/Wire.h"
#define HAVE_Wire 1
#endif
#if __has_include("zent/proxies/WorldMatrix.h")
#include "zent/proxies/WorldMatrix.h"
#define HAVE_WorldMatrix 1
#endif
#if __has_include("zent/proxies/WorldSurface.h")
#include "zent/proxies/WorldSurface.h"
#define HAVE_WorldSurface 1
#endif

namespace zent {

std::vector<std::unique_ptr<Proxy>> makeProxies() {
    std::vector<std::unique_ptr<Proxy>> proxies;
    const auto add = [&](auto proxy) { proxies.push_back(std::move(proxy)); };
#ifdef HAVE_AddDoubleLinear
    add(std::make_unique<ProxyAddDoubleLinear>());
#endif
#ifdef HAVE_AimConstraint
    add(std::make_unique<ProxyAimConstraint>());
#endif
#ifdef HAVE_AngleBetweenAngle
    add(std::make_unique<ProxyAngleBetweenAngle>());
#endif
#ifdef HAVE_AngleBetweenAxis
    add(std::make_unique<ProxyAngleBetweenAxis>());
#endif
#ifdef HAVE_AnimCurve
    add(std::make_unique<ProxyAnimCurve>());
#endif
#ifdef HAVE_BlendColors
    add(std::make_unique<ProxyBlendColors>());
#endif
#ifdef HAVE_BlendShape
    add(std::make_unique<ProxyBlendShape<Mesh>>());
#endif
#ifdef HAVE_BlendShape
    add(std::make_unique<ProxyBlendShape<Curve>>());
#endif
#ifdef HAVE_BlendShape
    add(std::make_unique<ProxyBlendShape<Surface>>());
#endif
#ifdef HAVE_BlendTwoAttr
    add(std::make_unique<ProxyBlendTwoAttr>());
#endif
#ifdef HAVE_BlendWeighted
    add(std::make_unique<ProxyBlendWeighted>());
#endif
#ifdef HAVE_Clamp
    add(std::make_unique<ProxyClamp>());
#endif
#ifdef HAVE_ClosestPointOnSurface
    add(std::make_unique<ProxyClosestPointOnSurface>());
#endif
#ifdef HAVE_Cluster
    add(std::make_unique<ProxyCluster<Curve>>());
#endif
#ifdef HAVE_Cluster
    add(std::make_unique<ProxyCluster<Surface>>());
#endif
#ifdef HAVE_Cluster
    add(std::make_unique<ProxyCluster<Lattice>>());
#endif
#ifdef HAVE_ClusterFull
    add(std::make_unique<ProxyClusterFull<Curve>>());
#endif
#ifdef HAVE_CombinationShape
    add(std::make_unique<ProxyCombinationShape>());
#endif
#ifdef HAVE_ComposeMatrix
    add(std::make_unique<ProxyComposeMatrix>());
#endif
#ifdef HAVE_Condition1D
    add(std::make_unique<ProxyCondition1D>());
#endif
#ifdef HAVE_Condition3D
    add(std::make_unique<ProxyCondition3D>());
#endif
#ifdef HAVE_CurveFromMeshEdge
    add(std::make_unique<ProxyCurveFromMeshEdge>());
#endif
#ifdef HAVE_CurveFromSurfaceIso
    add(std::make_unique<ProxyCurveFromSurfaceIso>());
#endif
#ifdef HAVE_CurveInfo
    add(std::make_unique<ProxyCurveInfo>());
#endif
#ifdef HAVE_CurveFromCV
    add(std::make_unique<ProxyCurveFromCV>());
#endif
#ifdef HAVE_DecomposeMatrixTranslate
    add(std::make_unique<ProxyDecomposeMatrixTranslate>());
#endif
#ifdef HAVE_DecomposeMatrixRotate
    add(std::make_unique<ProxyDecomposeMatrixRotate>());
#endif
#ifdef HAVE_DecomposeMatrixScale
    add(std::make_unique<ProxyDecomposeMatrixScale>());
#endif
#ifdef HAVE_DecomposeMatrixShear
    add(std::make_unique<ProxyDecomposeMatrixShear>());
#endif
#ifdef HAVE_DecomposeMatrixQuat
    add(std::make_unique<ProxyDecomposeMatrixQuat>());
#endif
#ifdef HAVE_DeformBendMesh
    add(std::make_unique<ProxyDeformBendMesh>());
#endif
#ifdef HAVE_DeformBendPartialMesh
    add(std::make_unique<ProxyDeformBendPartialMesh>());
#endif
#ifdef HAVE_DeformSine
    add(std::make_unique<ProxyDeformSine<Curve>>());
#endif
#ifdef HAVE_DeformSine
    add(std::make_unique<ProxyDeformSine<Surface>>());
#endif
#ifdef HAVE_DistanceBetweenTwoMatrices
    add(std::make_unique<ProxyDistanceBetweenTwoMatrices>());
#endif
#ifdef HAVE_DistanceBetweenTwoPoints
    add(std::make_unique<ProxyDistanceBetweenTwoPoints>());
#endif
#ifdef HAVE_DistanceDimShape
    add(std::make_unique<ProxyDistanceDimShape>());
#endif
#ifdef HAVE_Expression
    add(std::make_unique<ProxyExpression>());
#endif
#ifdef HAVE_FFD
    add(std::make_unique<ProxyFFD<Mesh>>());
#endif
#ifdef HAVE_FFD
    add(std::make_unique<ProxyFFD<Surface>>());
#endif
#ifdef HAVE_FollicleRotateMesh
    add(std::make_unique<ProxyFollicleRotateMesh>());
#endif
#ifdef HAVE_FollicleRotateSurface
    add(std::make_unique<ProxyFollicleRotateSurface>());
#endif
#ifdef HAVE_FollicleTranslateMesh
    add(std::make_unique<ProxyFollicleTranslateMesh>());
#endif
#ifdef HAVE_FollicleTranslateSurface
    add(std::make_unique<ProxyFollicleTranslateSurface>());
#endif
#ifdef HAVE_IKRPSolver
    add(std::make_unique<ProxyIKRPSolver>());
#endif
#ifdef HAVE_IKSCSolver
    add(std::make_unique<ProxyIKSCSolver>());
#endif
#ifdef HAVE_IKSplineSolver
    add(std::make_unique<ProxyIKSplineSolver>());
#endif
#ifdef HAVE_InverseMatrix
    add(std::make_unique<ProxyInverseMatrix>());
#endif
#ifdef HAVE_InverseLocal
    add(std::make_unique<ProxyInverseLocal>());
#endif
#ifdef HAVE_InverseWorld
    add(std::make_unique<ProxyInverseWorld>());
#endif
#ifdef HAVE_Joint
    add(std::make_unique<ProxyJoint>());
#endif
#ifdef HAVE_Locator
    add(std::make_unique<ProxyLocator>());
#endif
#ifdef HAVE_MotionPath
    add(std::make_unique<ProxyMotionPath>());
#endif
#ifdef HAVE_MultDoubleLinear
    add(std::make_unique<ProxyMultDoubleLinear>());
#endif
#ifdef HAVE_MultMatrix
    add(std::make_unique<ProxyMultMatrix>());
#endif
#ifdef HAVE_MultiplyDivide1D
    add(std::make_unique<ProxyMultiplyDivide1D>());
#endif
#ifdef HAVE_MultiplyDivide3D
    add(std::make_unique<ProxyMultiplyDivide3D>());
#endif
#ifdef HAVE_OrientConstraint
    add(std::make_unique<ProxyOrientConstraint>());
#endif
#ifdef HAVE_PairBlendRotate
    add(std::make_unique<ProxyPairBlendRotate>());
#endif
#ifdef HAVE_PairBlendTranslate
    add(std::make_unique<ProxyPairBlendTranslate>());
#endif
#ifdef HAVE_ParentConstraintRotate
    add(std::make_unique<ProxyParentConstraintRotate>());
#endif
#ifdef HAVE_ParentConstraintTranslate
    add(std::make_unique<ProxyParentConstraintTranslate>());
#endif
#ifdef HAVE_PlusMinusAverage1D
    add(std::make_unique<ProxyPlusMinusAverage1D>());
#endif
#ifdef HAVE_PlusMinusAverage2D
    add(std::make_unique<ProxyPlusMinusAverage2D>());
#endif
#ifdef HAVE_PlusMinusAverage3D
    add(std::make_unique<ProxyPlusMinusAverage3D>());
#endif
#ifdef HAVE_PointConstraint
    add(std::make_unique<ProxyPointConstraint>());
#endif
#ifdef HAVE_PointOnCurveInfo
    add(std::make_unique<ProxyPointOnCurveInfo>());
#endif
#ifdef HAVE_PointOnSurfacePosition
    add(std::make_unique<ProxyPointOnSurfacePosition>());
#endif
#ifdef HAVE_PointOnSurfaceNormal
    add(std::make_unique<ProxyPointOnSurfaceNormal>());
#endif
#ifdef HAVE_PointOnSurfaceNormalizedNormal
    add(std::make_unique<ProxyPointOnSurfaceNormalizedNormal>());
#endif
#ifdef HAVE_PointOnSurfaceTangentU
    add(std::make_unique<ProxyPointOnSurfaceTangentU>());
#endif
#ifdef HAVE_PointOnSurfaceTangentV
    add(std::make_unique<ProxyPointOnSurfaceTangentV>());
#endif
#ifdef HAVE_PoleVectorConstraint
    add(std::make_unique<ProxyPoleVectorConstraint>());
#endif
#ifdef HAVE_PolyEdgeToCurve
    add(std::make_unique<ProxyPolyEdgeToCurve>());
#endif
#ifdef HAVE_QuatToEuler
    add(std::make_unique<ProxyQuatToEuler>());
#endif
#ifdef HAVE_RemapValue
    add(std::make_unique<ProxyRemapValue>());
#endif
#ifdef HAVE_Reverse
    add(std::make_unique<ProxyReverse>());
#endif
#ifdef HAVE_SetRange1D
    add(std::make_unique<ProxySetRange1D>());
#endif
#ifdef HAVE_SetRange3D
    add(std::make_unique<ProxySetRange3D>());
#endif
#ifdef HAVE_ScaleConstraint
    add(std::make_unique<ProxyScaleConstraint>());
#endif
#ifdef HAVE_SkinCluster
    add(std::make_unique<ProxySkinCluster<Mesh>>());
#endif
#ifdef HAVE_SkinCluster
    add(std::make_unique<ProxySkinCluster<Curve>>());
#endif
#ifdef HAVE_SkinCluster
    add(std::make_unique<ProxySkinCluster<Surface>>());
#endif
#ifdef HAVE_SkinCluster
    add(std::make_unique<ProxySkinCluster<Lattice>>());
#endif
#ifdef HAVE_TangentConstraint
    add(std::make_unique<ProxyTangentConstraint>());
#endif
#ifdef HAVE_Transform
    add(std::make_unique<ProxyTransform>());
#endif
#ifdef HAVE_UnitConversion1D
    add(std::make_unique<ProxyUnitConversion1D>());
#endif
#ifdef HAVE_UnitConversion3D
    add(std::make_unique<ProxyUnitConversion3D>());
#endif
#ifdef HAVE_WorldMatrix
    add(std::make_unique<ProxyWorldMatrix>());
#endif
#ifdef HAVE_WorldSurface
    add(std::make_unique<ProxyWorldSurface>());
#endif
#ifdef HAVE_WeightDriverDrivers
    add(std::make_unique<ProxyWeightDriverDrivers>());
#endif
#ifdef HAVE_WeightDriverPoses
    add(std::make_unique<ProxyWeightDriverPoses>());
#endif
#ifdef HAVE_Wire
    add(std::make_unique<ProxyWire<Mesh>>());
#endif
#ifdef HAVE_Wire
    add(std::make_unique<ProxyWire<Curve>>());
#endif
    return proxies;
}

} // namespace zent
