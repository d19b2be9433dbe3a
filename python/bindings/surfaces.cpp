#include "Function.h"

#include "zent/nodes/closestPointOnSurface.h"
#include "zent/nodes/curveFromSurfaceIso.h"
#include "zent/nodes/follicle.h"
#include "zent/nodes/pointOnPoly.h"
#include "zent/nodes/pointOnSurface.h"
#include "zent/nodes/surfaceKnotInsert.h"
#include "zent/nodes/worldSurface.h"

namespace zent::python {

namespace {

constexpr const char* kPoint = "inputSurface parameterU=0 parameterV=0 turnOnPercentage=0";
#define ZENT_RING "cornerFaceCounts cornerFaces cornerNeighbours ringCounts ringConnection"
#define ZENT_RING_TEXT                                                                                                 \
    "\n\nThe quad's four corners in face order, their UVs; then for each corner how many faces of the ring touch it, " \
    "those faces\nas indices into the ring, and for each the two vertices next to the corner in it; for each face of " \
    "the ring its number\nof vertices, and their indices. What leads outside its list raises Error."

} // namespace

void bindSurfaces(Functions& functions) {
    functions.add("closestPointOnSurface", closestPointOnSurface, "inputSurface inPosition",
                  "The parameters (u, v) of the point that is nearest to a point, both in world space.");
    functions.add("pointOnSurfacePosition", pointOnSurfacePosition, kPoint,
                  "The point at (u, v), or at fractions of the domains' ends, world space. A surface that cannot be "
                  "evaluated raises Error.");
    functions.add("pointOnSurfaceNormal", pointOnSurfaceNormal, kPoint, "The cross product of both derivatives.");
    functions.add("pointOnSurfaceNormalizedNormal", pointOnSurfaceNormalizedNormal, kPoint,
                  "The unit normal; NaN where it vanishes.");
    functions.add("pointOnSurfaceTangentU", pointOnSurfaceTangentU, kPoint, "The derivative in U, not normalised.");
    functions.add("pointOnSurfaceTangentV", pointOnSurfaceTangentV, kPoint, "The derivative in V, not normalised.");
    functions.add("worldSurface", worldSurface, "local worldMatrix", "The surface under another matrix.");
    functions.add("curveFromSurfaceIso", curveFromSurfaceIso,
                  "inputSurface isoparmDirection=0 isoparmValue=0 minValue=0 maxValue=1 relativeValue=0",
                  "An isoparametric curve in world space: along U for direction 0, else along V. The value is clamped, "
                  "and then a fraction\nof the domain if `relativeValue`.");
    functions.add("surfaceKnotInsertOnU", surfaceKnotInsertOnU, "surface knot",
                  "The same surface with one more knot in U. One below the domain raises Error.");
    functions.add("surfaceKnotInsertOnV", surfaceKnotInsertOnV, "surface knot", "The same surface with one more in V.");
    functions.add("follicleTranslateSurface", follicleTranslateSurface, "inputSurface parameterU=0 parameterV=0",
                  "The world-space point at fractions of the domain.");
    functions.add(
        "follicleRotateSurface", follicleRotateSurface, "inputSurface parameterU=0 parameterV=0",
        "The Euler angles (xyz, radians) of the frame there: Z along the normal, X along the derivative in U.");
    functions.add("follicleTranslateMesh", follicleTranslateMesh,
                  "inputMesh parameterU parameterV faceVertices faceUVs",
                  "The world-space point of a mesh at (u, v) on one of its quads: its corners' vertices and UVs.");
    functions.add("follicleRotateMesh", follicleRotateMesh,
                  "inputMesh parameterU parameterV faceVertices faceUVs " ZENT_RING,
                  "The Euler angles (xyz, radians) of the frame there: Z along the normal, X against the "
                  "tangent." ZENT_RING_TEXT);
    functions.add("pointOnPolyTranslate", pointOnPolyTranslate, "matrix=I inputMesh uv faceVertices faceUVs",
                  "The point of a mesh at `uv` on one of its quads, through `matrix`.");
    functions.add("pointOnPolyRotate", pointOnPolyRotate,
                  "matrix=I inputMesh uv rotateOrder=0 faceVertices faceUVs " ZENT_RING,
                  "The Euler angles (radians, in `rotateOrder`) of the frame there: Y along the normal, X along the "
                  "tangent." ZENT_RING_TEXT);
}

} // namespace zent::python
