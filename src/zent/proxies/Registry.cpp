#include "zent/proxies/Registry.h"

#include "zent/proxies/AddDoubleLinear.h"
#include "zent/proxies/AimConstraint.h"
#include "zent/proxies/AngleBetweenAngle.h"
#include "zent/proxies/AngleBetweenAxis.h"
#include "zent/proxies/AnimCurve.h"
#include "zent/proxies/BlendColors.h"
#include "zent/proxies/BlendShape.h"
#include "zent/proxies/BlendTwoAttr.h"
#include "zent/proxies/BlendWeighted.h"
#include "zent/proxies/Clamp.h"
#include "zent/proxies/ClosestPointOnSurface.h"
#include "zent/proxies/Cluster.h"
#include "zent/proxies/ClusterFull.h"
#include "zent/proxies/CombinationShape.h"
#include "zent/proxies/ComposeMatrix.h"
#include "zent/proxies/Condition1D.h"
#include "zent/proxies/Condition3D.h"
#include "zent/proxies/CurveFromCV.h"
#include "zent/proxies/CurveFromMeshEdge.h"
#include "zent/proxies/CurveFromSurfaceIso.h"
#include "zent/proxies/CurveInfo.h"
#include "zent/proxies/DecomposeMatrixQuat.h"
#include "zent/proxies/DecomposeMatrixRotate.h"
#include "zent/proxies/DecomposeMatrixScale.h"
#include "zent/proxies/DecomposeMatrixShear.h"
#include "zent/proxies/DecomposeMatrixTranslate.h"
#include "zent/proxies/DeformBendMesh.h"
#include "zent/proxies/DeformBendPartialMesh.h"
#include "zent/proxies/DeformSine.h"
#include "zent/proxies/DistanceBetweenTwoMatrices.h"
#include "zent/proxies/DistanceBetweenTwoPoints.h"
#include "zent/proxies/DistanceDimShape.h"
#include "zent/proxies/Expression.h"
#include "zent/proxies/FFD.h"
#include "zent/proxies/FollicleRotateMesh.h"
#include "zent/proxies/FollicleRotateSurface.h"
#include "zent/proxies/FollicleTranslateMesh.h"
#include "zent/proxies/FollicleTranslateSurface.h"
#include "zent/proxies/IKRPSolver.h"
#include "zent/proxies/IKSCSolver.h"
#include "zent/proxies/IKSplineSolver.h"
#include "zent/proxies/InverseLocal.h"
#include "zent/proxies/InverseMatrix.h"
#include "zent/proxies/InverseWorld.h"
#include "zent/proxies/Joint.h"
#include "zent/proxies/Locator.h"
#include "zent/proxies/MotionPath.h"
#include "zent/proxies/MultDoubleLinear.h"
#include "zent/proxies/MultiplyDivide1D.h"
#include "zent/proxies/MultiplyDivide3D.h"
#include "zent/proxies/MultMatrix.h"
#include "zent/proxies/OrientConstraint.h"
#include "zent/proxies/PairBlendRotate.h"
#include "zent/proxies/PairBlendTranslate.h"
#include "zent/proxies/ParentConstraintRotate.h"
#include "zent/proxies/ParentConstraintTranslate.h"
#include "zent/proxies/PlusMinusAverage1D.h"
#include "zent/proxies/PlusMinusAverage2D.h"
#include "zent/proxies/PlusMinusAverage3D.h"
#include "zent/proxies/PointConstraint.h"
#include "zent/proxies/PointOnCurveInfo.h"
#include "zent/proxies/PointOnSurfaceNormal.h"
#include "zent/proxies/PointOnSurfaceNormalizedNormal.h"
#include "zent/proxies/PointOnSurfacePosition.h"
#include "zent/proxies/PointOnSurfaceTangentU.h"
#include "zent/proxies/PointOnSurfaceTangentV.h"
#include "zent/proxies/PoleVectorConstraint.h"
#include "zent/proxies/PolyEdgeToCurve.h"
#include "zent/proxies/QuatToEuler.h"
#include "zent/proxies/RemapValue.h"
#include "zent/proxies/Reverse.h"
#include "zent/proxies/ScaleConstraint.h"
#include "zent/proxies/SetRange1D.h"
#include "zent/proxies/SetRange3D.h"
#include "zent/proxies/SkinCluster.h"
#include "zent/proxies/TangentConstraint.h"
#include "zent/proxies/Transform.h"
#include "zent/proxies/UnitConversion1D.h"
#include "zent/proxies/UnitConversion3D.h"
#include "zent/proxies/WeightDriverDrivers.h"
#include "zent/proxies/WeightDriverPoses.h"
#include "zent/proxies/Wire.h"
#include "zent/proxies/WorldMatrix.h"
#include "zent/proxies/WorldSurface.h"

namespace zent {

namespace {

template <class... Proxies>
std::vector<std::unique_ptr<Proxy>> makeEach() {
    std::vector<std::unique_ptr<Proxy>> proxies;
    proxies.reserve(sizeof...(Proxies));
    (proxies.push_back(std::make_unique<Proxies>()), ...);
    return proxies;
}

} // namespace

std::vector<std::unique_ptr<Proxy>> makeProxies() {
    return makeEach<
        ProxyAddDoubleLinear, ProxyAimConstraint, ProxyAngleBetweenAngle, ProxyAngleBetweenAxis, ProxyAnimCurve,
        ProxyBlendColors, ProxyBlendShape<Mesh>, ProxyBlendShape<Curve>, ProxyBlendShape<Surface>, ProxyBlendTwoAttr,
        ProxyBlendWeighted, ProxyClamp, ProxyClosestPointOnSurface, ProxyCluster<Curve>, ProxyCluster<Surface>,
        ProxyCluster<Lattice>, ProxyClusterFull<Curve>, ProxyCombinationShape, ProxyComposeMatrix, ProxyCondition1D,
        ProxyCondition3D, ProxyCurveFromMeshEdge, ProxyCurveFromSurfaceIso, ProxyCurveInfo, ProxyCurveFromCV,
        ProxyDecomposeMatrixTranslate, ProxyDecomposeMatrixRotate, ProxyDecomposeMatrixScale, ProxyDecomposeMatrixShear,
        ProxyDecomposeMatrixQuat, ProxyDeformBendMesh, ProxyDeformBendPartialMesh, ProxyDeformSine<Curve>,
        ProxyDeformSine<Surface>, ProxyDistanceBetweenTwoMatrices, ProxyDistanceBetweenTwoPoints, ProxyDistanceDimShape,
        ProxyExpression, ProxyFFD<Mesh>, ProxyFFD<Surface>, ProxyFollicleRotateMesh, ProxyFollicleRotateSurface,
        ProxyFollicleTranslateMesh, ProxyFollicleTranslateSurface, ProxyIKRPSolver, ProxyIKSCSolver,
        ProxyIKSplineSolver, ProxyInverseMatrix, ProxyInverseLocal, ProxyInverseWorld, ProxyJoint, ProxyLocator,
        ProxyMotionPath, ProxyMultDoubleLinear, ProxyMultMatrix, ProxyMultiplyDivide1D, ProxyMultiplyDivide3D,
        ProxyOrientConstraint, ProxyPairBlendRotate, ProxyPairBlendTranslate, ProxyParentConstraintRotate,
        ProxyParentConstraintTranslate, ProxyPlusMinusAverage1D, ProxyPlusMinusAverage2D, ProxyPlusMinusAverage3D,
        ProxyPointConstraint, ProxyPointOnCurveInfo, ProxyPointOnSurfacePosition, ProxyPointOnSurfaceNormal,
        ProxyPointOnSurfaceNormalizedNormal, ProxyPointOnSurfaceTangentU, ProxyPointOnSurfaceTangentV,
        ProxyPoleVectorConstraint, ProxyPolyEdgeToCurve, ProxyQuatToEuler, ProxyRemapValue, ProxyReverse,
        ProxySetRange1D, ProxySetRange3D, ProxyScaleConstraint, ProxySkinCluster<Mesh>, ProxySkinCluster<Curve>,
        ProxySkinCluster<Surface>, ProxySkinCluster<Lattice>, ProxyTangentConstraint, ProxyTransform,
        ProxyUnitConversion1D, ProxyUnitConversion3D, ProxyWorldMatrix, ProxyWorldSurface, ProxyWeightDriverDrivers,
        ProxyWeightDriverPoses, ProxyWire<Mesh>, ProxyWire<Curve>>();
}

} // namespace zent
