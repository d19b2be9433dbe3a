#include <maya/MFnMesh.h>

#include "meshAt.h"
#include "setStatus.h"

using scene::MeshData;

namespace {

template <class Index>
bool isBelow(Index index, std::size_t size) {
    return index >= 0 && static_cast<std::size_t>(index) < size;
}

bool isWorld(MSpace::Space space) {
    return space == MSpace::kPostTransform || space == MSpace::kWorld;
}

MPoint pointIn(const MeshData& mesh, unsigned int vertex, MSpace::Space space) {
    const MFloatPoint& point = (*mesh.points)[vertex];
    const MPoint own(static_cast<double>(point.x), static_cast<double>(point.y), static_cast<double>(point.z));
    return isWorld(space) ? scene::transformed(own, mesh.transform) : own;
}

const scene::UvSet* uvSetOf(const MeshData* mesh, const MString* name) {
    const std::string text = name == nullptr ? "" : name->asChar();
    return mesh == nullptr ? nullptr : mesh->uvSet(name == nullptr ? nullptr : &text);
}

} // namespace

MFnMesh::MFnMesh(const MObject& mesh, MStatus* status) : MFnBase(mesh) {
    setStatus(status, scene::as<MeshData>(mesh) != nullptr);
}

MFnMesh::MFnMesh(const MDagPath& path, MStatus* status) : MFnMesh(scene::meshAt(path), status) {}

int MFnMesh::numVertices(MStatus* status) const {
    const auto* mesh = scene::as<MeshData>(object_);
    return setStatus(status, mesh != nullptr) ? static_cast<int>(mesh->points->length()) : 0;
}

int MFnMesh::numPolygons(MStatus* status) const {
    const auto* mesh = scene::as<MeshData>(object_);
    return setStatus(status, mesh != nullptr) ? static_cast<int>(mesh->polygons.size()) : 0;
}

MStatus MFnMesh::getPoints(MFloatPointArray& points, MSpace::Space space) const {
    const auto* mesh = scene::as<MeshData>(object_);
    if (mesh == nullptr) {
        return MStatus::kFailure;
    }
    points = *mesh->points;
    for (unsigned int i = 0; isWorld(space) && i < points.length(); ++i) {
        const MPoint point = pointIn(*mesh, i, space);
        points[i] = {static_cast<float>(point.x), static_cast<float>(point.y), static_cast<float>(point.z)};
    }
    return MStatus::kSuccess;
}

MStatus MFnMesh::getPoint(int vertex, MPoint& point, MSpace::Space space) const {
    const auto* mesh = scene::as<MeshData>(object_);
    if (mesh == nullptr || !isBelow(vertex, mesh->points->length())) {
        return MStatus::kFailure;
    }
    point = pointIn(*mesh, static_cast<unsigned int>(vertex), space);
    return MStatus::kSuccess;
}

MStatus MFnMesh::getPolygonVertices(int polygon, MIntArray& vertices) const {
    const auto* mesh = scene::as<MeshData>(object_);
    if (mesh == nullptr || !isBelow(polygon, mesh->polygons.size())) {
        return MStatus::kFailure;
    }
    mesh->polygons.copyTo(static_cast<std::size_t>(polygon), vertices);
    return MStatus::kSuccess;
}

int MFnMesh::numUVs(const MString& uvSet, MStatus* status) const {
    const scene::UvSet* set = uvSetOf(scene::as<MeshData>(object_), &uvSet);
    return setStatus(status, set != nullptr) ? static_cast<int>(set->uvs.size()) : 0;
}

MStatus MFnMesh::getUV(int uv, float& u, float& v, const MString* uvSet) const {
    const scene::UvSet* set = uvSetOf(scene::as<MeshData>(object_), uvSet);
    if (set == nullptr || !isBelow(uv, set->uvs.size())) {
        return MStatus::kFailure;
    }
    u = set->uvs[static_cast<std::size_t>(uv)][0];
    v = set->uvs[static_cast<std::size_t>(uv)][1];
    return MStatus::kSuccess;
}

int MFnMesh::numEdges(MStatus* status) const {
    const auto* mesh = scene::as<MeshData>(object_);
    return setStatus(status, mesh != nullptr) ? static_cast<int>(mesh->edges().size()) : 0;
}

MStatus MFnMesh::getEdgeVertices(int edge, int2& vertices) const {
    const auto* mesh = scene::as<MeshData>(object_);
    if (mesh == nullptr || !isBelow(edge, mesh->edges().size())) {
        return MStatus::kFailure;
    }
    vertices[0] = mesh->edges()[static_cast<std::size_t>(edge)][0];
    vertices[1] = mesh->edges()[static_cast<std::size_t>(edge)][1];
    return MStatus::kSuccess;
}

MStatus MFnMesh::getUVSetNames(MStringArray& names) const {
    const auto* mesh = scene::as<MeshData>(object_);
    if (mesh == nullptr) {
        return MStatus::kFailure;
    }
    names.clear();
    for (const auto& [name, set] : mesh->uvSets) {
        names.append(MString(name.c_str()));
    }
    return MStatus::kSuccess;
}
