#include "zent/proxies/Registry.h"

#include "zent/geometry/shapes.h"
#include "zent/proxies/Method.h"

namespace zent {

template <class T>
class ProxyBlendShape;
template <class T>
class ProxyCluster;
template <class T>
class ProxyClusterFull;
template <class T>
class ProxyDeformSine;
template <class T>
class ProxyFFD;
template <class T>
class ProxySkinCluster;
template <class T>
class ProxyWire;

struct RegistryRow {
    const char* subsystem;
    Method (*method)();
};

/// One row for each method. The class stands in a source of its name and is known here by its name only.
static const RegistryRow kRows[] = {
    {"utility", method<class ProxyAddDoubleLinear>},
    {"constraint", method<class ProxyAimConstraint>},
    {"utility", method<class ProxyAngleBetweenAngle>},
    {"utility", method<class ProxyAngleBetweenAxis>},
    {"animation", method<class ProxyAnimCurve>},
    {"utility", method<class ProxyBlendColors>},
    {"deformer", method<ProxyBlendShape<Mesh>>},
    {"deformer", method<ProxyBlendShape<Curve>>},
    {"deformer", method<ProxyBlendShape<Surface>>},
    {"utility", method<class ProxyBlendTwoAttr>},
    {"utility", method<class ProxyBlendWeighted>},
    {"utility", method<class ProxyClamp>},
    {"surface", method<class ProxyClosestPointOnSurface>},
    {"deformer", method<ProxyCluster<Curve>>},
    {"deformer", method<ProxyCluster<Surface>>},
    {"deformer", method<ProxyCluster<Lattice>>},
    {"deformer", method<ProxyClusterFull<Curve>>},
    {"utility", method<class ProxyCombinationShape>},
    {"transform", method<class ProxyComposeMatrix>},
    {"utility", method<class ProxyCondition1D>},
    {"utility", method<class ProxyCondition3D>},
    {"curve", method<class ProxyCurveFromMeshEdge>},
    {"curve", method<class ProxyCurveFromSurfaceIso>},
    {"curve", method<class ProxyCurveInfo>},
    {"curve", method<class ProxyCurveFromCV>},
    {"transform", method<class ProxyDecomposeMatrixTranslate>},
    {"transform", method<class ProxyDecomposeMatrixRotate>},
    {"transform", method<class ProxyDecomposeMatrixScale>},
    {"transform", method<class ProxyDecomposeMatrixShear>},
    {"transform", method<class ProxyDecomposeMatrixQuat>},
    {"deformer", method<class ProxyDeformBendMesh>},
    {"deformer", method<class ProxyDeformBendPartialMesh>},
    {"deformer", method<ProxyDeformSine<Curve>>},
    {"deformer", method<ProxyDeformSine<Surface>>},
    {"utility", method<class ProxyDistanceBetweenTwoMatrices>},
    {"utility", method<class ProxyDistanceBetweenTwoPoints>},
    {"utility", method<class ProxyDistanceDimShape>},
    {"expression", method<class ProxyExpression>},
    {"deformer", method<ProxyFFD<Mesh>>},
    {"deformer", method<ProxyFFD<Surface>>},
    {"follicle", method<class ProxyFollicleRotateMesh>},
    {"follicle", method<class ProxyFollicleRotateSurface>},
    {"follicle", method<class ProxyFollicleTranslateMesh>},
    {"follicle", method<class ProxyFollicleTranslateSurface>},
    {"ik", method<class ProxyIKRPSolver>},
    {"ik", method<class ProxyIKSCSolver>},
    {"ik", method<class ProxyIKSplineSolver>},
    {"transform", method<class ProxyInverseMatrix>},
    {"transform", method<class ProxyInverseLocal>},
    {"transform", method<class ProxyInverseWorld>},
    {"transform", method<class ProxyJoint>},
    {"transform", method<class ProxyLocator>},
    {"curve", method<class ProxyMotionPath>},
    {"utility", method<class ProxyMultDoubleLinear>},
    {"transform", method<class ProxyMultMatrix>},
    {"utility", method<class ProxyMultiplyDivide1D>},
    {"utility", method<class ProxyMultiplyDivide3D>},
    {"constraint", method<class ProxyOrientConstraint>},
    {"animation", method<class ProxyPairBlendRotate>},
    {"animation", method<class ProxyPairBlendTranslate>},
    {"constraint", method<class ProxyParentConstraintRotate>},
    {"constraint", method<class ProxyParentConstraintTranslate>},
    {"utility", method<class ProxyPlusMinusAverage1D>},
    {"utility", method<class ProxyPlusMinusAverage2D>},
    {"utility", method<class ProxyPlusMinusAverage3D>},
    {"constraint", method<class ProxyPointConstraint>},
    {"curve", method<class ProxyPointOnCurveInfo>},
    {"surface", method<class ProxyPointOnSurfacePosition>},
    {"surface", method<class ProxyPointOnSurfaceNormal>},
    {"surface", method<class ProxyPointOnSurfaceNormalizedNormal>},
    {"surface", method<class ProxyPointOnSurfaceTangentU>},
    {"surface", method<class ProxyPointOnSurfaceTangentV>},
    {"constraint", method<class ProxyPoleVectorConstraint>},
    {"curve", method<class ProxyPolyEdgeToCurve>},
    {"transform", method<class ProxyQuatToEuler>},
    {"utility", method<class ProxyRemapValue>},
    {"utility", method<class ProxyReverse>},
    {"utility", method<class ProxySetRange1D>},
    {"utility", method<class ProxySetRange3D>},
    {"constraint", method<class ProxyScaleConstraint>},
    {"deformer", method<ProxySkinCluster<Mesh>>},
    {"deformer", method<ProxySkinCluster<Curve>>},
    {"deformer", method<ProxySkinCluster<Surface>>},
    {"deformer", method<ProxySkinCluster<Lattice>>},
    {"constraint", method<class ProxyTangentConstraint>},
    {"transform", method<class ProxyTransform>},
    {"utility", method<class ProxyUnitConversion1D>},
    {"utility", method<class ProxyUnitConversion3D>},
    {"transform", method<class ProxyWorldMatrix>},
    {"surface", method<class ProxyWorldSurface>},
    {"pose", method<class ProxyWeightDriverDrivers>},
    {"pose", method<class ProxyWeightDriverPoses>},
    {"deformer", method<ProxyWire<Mesh>>},
    {"deformer", method<ProxyWire<Curve>>},
};

std::vector<std::unique_ptr<Proxy>> makeProxies() {
    std::vector<std::unique_ptr<Proxy>> proxies;
    proxies.reserve(std::size(kRows));
    for (const RegistryRow& row : kRows) {
        proxies.push_back(row.method().make());
    }
    return proxies;
}

std::vector<MethodInfo> methodInfos() {
    std::vector<MethodInfo> infos;
    infos.reserve(std::size(kRows));
    for (const RegistryRow& row : kRows) {
        infos.push_back(row.method().describe());
        infos.back().subsystem = row.subsystem;
    }
    return infos;
}

const std::map<std::string, std::unique_ptr<Proxy> (*)()>& proxyMakers() {
    static const auto kMakers = [] {
        std::map<std::string, std::unique_ptr<Proxy> (*)()> makers;
        for (const RegistryRow& row : kRows) {
            const Method made = row.method();
            makers.emplace(made.make()->name(), made.make);
        }
        return makers;
    }();
    return kMakers;
}

std::unique_ptr<Proxy> makeProxy(const std::string& method) {
    const auto found = proxyMakers().find(method);
    return found == proxyMakers().end() ? nullptr : found->second();
}

} // namespace zent
