#pragma once

#include <maya/MDagPath.h>
#include <maya/MIntArray.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>

namespace scene {
struct MeshData;
}

/// A walk over a mesh's vertices.
class OPENMAYA_EXPORT MItMeshVertex {
public:
    explicit MItMeshVertex(const MObject& mesh, MStatus* status = nullptr);
    explicit MItMeshVertex(const MDagPath& path, MObject component = MObject::kNullObj, MStatus* status = nullptr);

    bool isDone(MStatus* status = nullptr) const;
    MStatus next();
    MStatus reset();
    unsigned int count(MStatus* status = nullptr) const;
    int index(MStatus* status = nullptr) const;
    MStatus setIndex(int index, int& previous);
    /// The polygons that touch the vertex, in ascending order.
    MStatus getConnectedFaces(MIntArray& faces) const;

private:
    const scene::MeshData* mesh_ = nullptr;
    unsigned int index_ = 0;
};
