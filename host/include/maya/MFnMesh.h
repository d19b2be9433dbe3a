#pragma once

#include <maya/MDagPath.h>
#include <maya/MFloatPointArray.h>
#include <maya/MFnBase.h>
#include <maya/MIntArray.h>
#include <maya/MPointArray.h>
#include <maya/MSpace.h>
#include <maya/MString.h>
#include <maya/MStringArray.h>

/// A polygon mesh, from its data or from the path to a node that shows one.
class OPENMAYA_EXPORT MFnMesh : public MFnBase {
public:
    explicit MFnMesh(const MObject& mesh, MStatus* status = nullptr);
    explicit MFnMesh(const MDagPath& path, MStatus* status = nullptr);

    int numVertices(MStatus* status = nullptr) const;
    int numPolygons(MStatus* status = nullptr) const;
    MStatus getPoints(MFloatPointArray& points, MSpace::Space space = MSpace::kObject) const;
    MStatus getPoint(int vertex, MPoint& point, MSpace::Space space = MSpace::kObject) const;
    MStatus getPolygonVertices(int polygon, MIntArray& vertices) const;
    int numUVs(const MString& uvSet, MStatus* status = nullptr) const;
    int numEdges(MStatus* status = nullptr) const;
    /// The two vertices of an edge. Edges are numbered as a walk around each polygon in turn meets them.
    MStatus getEdgeVertices(int edge, int2& vertices) const;
    MStatus getUVSetNames(MStringArray& names) const;
    MStatus getUV(int uv, float& u, float& v, const MString* uvSet = nullptr) const;
};
