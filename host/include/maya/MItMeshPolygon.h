#pragma once

#include <maya/MDagPath.h>
#include <maya/MIntArray.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

namespace scene {
struct MeshData;
}

/// A walk over a mesh's polygons.
class OPENMAYA_EXPORT MItMeshPolygon {
public:
    explicit MItMeshPolygon(const MObject& mesh, MStatus* status = nullptr);
    explicit MItMeshPolygon(const MDagPath& path, MObject component = MObject::kNullObj, MStatus* status = nullptr);

    bool isDone(MStatus* status = nullptr) const;
    MStatus next();
    MStatus reset();
    unsigned int count(MStatus* status = nullptr) const;
    unsigned int index() const { return index_; }
    MStatus setIndex(int index, int& previous);
    unsigned int polygonVertexCount(MStatus* status = nullptr) const;
    MStatus getVertices(MIntArray& vertices) const;
    /// The UV of the polygon's vertex at a position of its own list.
    MStatus getUVIndex(int vertex, int& index, const MString* uvSet = nullptr) const;

private:
    const scene::MeshData* mesh_ = nullptr;
    unsigned int index_ = 0;
};
