#include "Function.h"

#include "zent/nodes/blendShape.h"
#include "zent/nodes/cluster.h"
#include "zent/nodes/deformBend.h"
#include "zent/nodes/deformSine.h"
#include "zent/nodes/ffd.h"
#include "zent/nodes/skin.h"
#include "zent/nodes/wire.h"
#include "zent/nodes/wrap.h"

namespace zent::python {

namespace {

template <class T>
T& clusterMembers(T& geometry, std::vector<unsigned int> indices, mat4 first, mat4 second, int angleMode,
                  WeightMap weights, vec3 translate, vec3 rotate, int rotateOrder, vec3 scale, vec3 rotatePivot,
                  vec3 scalePivot, vec3 rotatePivotTranslate, vec3 scalePivotTranslate) {
    return _cluster<T>(geometry, std::move(indices), first, second, angleMode, std::move(weights), translate, rotate,
                       rotateOrder, scale, rotatePivot, scalePivot, rotatePivotTranslate, scalePivotTranslate);
}

/// `skinMesh` of points alone, for the array of a mesh that is shaped in its own space.
std::vector<vec3> skinPoints(std::vector<vec3> const& points, std::vector<mat4> const& matrices,
                             std::vector<mat4> const& bindPreMatrices, SkinWeights const& weights, float envelope,
                             mat4 geomMatrix) {
    const Mesh mesh(std::vector<vec3>(points), mat4(1.0f));
    return std::move(IMPL_skin<Mesh>(envelope, mesh, geomMatrix, matrices, bindPreMatrices, weights).points);
}

#define ZENT_CLUSTER                                                                                                   \
    "matrix=I geomMatrix=I angleInterpolation=0 weightList=[] translate=0 rotate:rad=0 rotateOrder=0 scale=1 "         \
    "rotatePivot=0 scalePivot=0 rotatePivotTranslate=0 scalePivotTranslate=0"
constexpr const char* kCluster = "inputGeometry members " ZENT_CLUSTER;
constexpr const char* kClusterText =
    "The points of a cluster moved: those of weight 1 through the product of both matrices, `geomMatrix` first; those "
    "of less\nthrough an interpolated copy of the handle's transform, told by its channels.\n\nMembers without a "
    "weight "
    "have 1. A member that the shape does not have raises Error.";
constexpr const char* kSkin = "envelope=1 inputGeometry geomMatrix=I matrix bindPreMatrix weightList";
constexpr const char* kSkinText =
    "Classic linear skinning, in the shape's own space. Weights are used as they are: a point without any ends at the\n"
    "origin. An envelope below 1e-5 gives a copy; from there up it has no effect. A point or an influence that does "
    "not "
    "exist\nraises Error.";
constexpr const char* kBlend = "envelope=1 inputGeometry weight shapes=[] deltas=[] targetWeights=[]";
constexpr const char* kBlendText =
    "The base plus, target by target, the weighted difference of the items that the target's weight selects.\n\nAn "
    "item "
    "stands at the in-between value (item - 5000) / 1000, so that 6000 is the full target. `targetWeights` has for a\n"
    "target the factors of its points. A delta of a point that the base does not hold raises Error.";
constexpr const char* kSine =
    "inputGeometry envelope=1 matrix=I wavelength=2 amplitude=0 offset=0 lowBound=-1 highBound=1";
constexpr const char* kSineText =
    "Each point moved along the handle's X axis by a sine of its height on the handle's Y axis.";
constexpr const char* kLattice =
    "inputGeometry deformedLatticePoints deformedLatticeMatrix=I baseLatticeMatrix=I local=0 localInfluenceS=2 "
    "localInfluenceT=2 localInfluenceU=2";
constexpr const char* kLatticeText =
    "Each point carried by a lattice, whose undeformed form goes from -0.5 to 0.5 in `baseLatticeMatrix`. `local` "
    "limits\n"
    "the influence to a window of lattice points, at most 11 in a direction; more raises Error.";
constexpr const char* kWire =
    "inputGeometry rotation=1 baseWire deformedWire wireLocatorParameter=[] wireLocatorTwist:rad=[] bindings";
constexpr const char* kWireText =
    "Each bound point carried from the base wire to the deformed one, turned with it by `rotation` and by the "
    "locators'\n"
    "twists. Binding i belongs to point i; more bindings than points, and fewer twists than locators, raise Error.";

} // namespace

void bindDeformers(Functions& functions) {
    functions.add("skinMesh", skinMesh, kSkin, kSkinText);
    functions.add("skinCurve", skinCurve, kSkin, kSkinText);
    functions.add("skinSurface", skinSurface, kSkin, kSkinText);
    functions.add("skinLattice", skinLattice, kSkin, kSkinText);
    functions.add("skin", skinPoints, "points matrices bind_pre_matrices weights envelope=1 geom_matrix=I", kSkinText);
    functions.add("blendShapeMesh", blendShapeMesh, kBlend, kBlendText);
    functions.add("blendShapeCurve", blendShapeCurve, kBlend, kBlendText);
    functions.add("blendShapeSurface", blendShapeSurface, kBlend, kBlendText);
    functions.add("clusterCurve", clusterMembers<Curve>, kCluster, kClusterText);
    functions.add("clusterSurface", clusterMembers<Surface>, kCluster, kClusterText);
    functions.add("clusterLattice", clusterMembers<Lattice>, kCluster, kClusterText);
    functions.add("clusterFullCurve", clusterFullCurve, "inputGeometry " ZENT_CLUSTER, kClusterText);
    functions.add(
        "deformBendMesh", deformBendMesh, "inputGeometry envelope=1 matrix=I curvature:rad=0 lowBound=-1 highBound=1",
        "The handle's Y axis between the bounds becomes an arc of `curvature` (radians for each unit of handle "
        "space). Nothing\nhappens for an envelope or a curvature below 1e-5.");
    functions.add("deformBendPartialMesh", deformBendPartialMesh,
                  "inputGeometry envelope=1 members matrix=I curvature:rad=0 lowBound=-1 highBound=1",
                  "`deformBendMesh` of some points.");
    functions.add("deformSineCurve", deformSineCurve, kSine, kSineText);
    functions.add("deformSineSurface", deformSineSurface, kSine, kSineText);
    functions.add("ffdMesh", ffdMesh, kLattice, kLatticeText);
    functions.add("ffdSurface", ffdSurface, kLattice, kLatticeText);
    functions.add("ffdPartialMesh", ffdPartialMesh,
                  "inputGeometry members deformedLatticePoints deformedLatticeMatrix=I baseLatticeMatrix=I local=0 "
                  "localInfluenceS=2 localInfluenceT=2 localInfluenceU=2",
                  "`ffdMesh` of some points.");
    functions.add("wireMesh", wireMesh, kWire, kWireText);
    functions.add("wireCurve", wireCurve, kWire, kWireText);
    functions.add("wrapMesh", wrapMesh, "envelope=1 inputGeometry driver bindings",
                  "Each point carried by what its place on a driver's triangle has moved since it was bound. Fewer "
                  "bindings than points,\nand a point that the driver does not have, raise Error.");
}

} // namespace zent::python
