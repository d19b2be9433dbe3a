#include <maya/MItMeshPolygon.h>
#include <maya/MItMeshVertex.h>

#include "meshAt.h"
#include "setStatus.h"

using scene::MeshData;

namespace {

/// Moves a walk to a place among `count`, and tells the one it left.
MStatus moveTo(int index, std::size_t count, unsigned int& current, int& previous) {
    if (index < 0 || static_cast<std::size_t>(index) >= count) {
        return MStatus::kInvalidParameter;
    }
    previous = static_cast<int>(current);
    current = static_cast<unsigned int>(index);
    return MStatus::kSuccess;
}

std::size_t polygonCount(const MeshData* mesh) {
    return mesh == nullptr ? 0 : mesh->polygons.size();
}

std::size_t vertexCount(const MeshData* mesh) {
    return mesh == nullptr ? 0 : mesh->points->length();
}

MStatus moveOn(unsigned int& index, std::size_t count) {
    if (index >= count) {
        return MStatus::kFailure;
    }
    ++index;
    return MStatus::kSuccess;
}

} // namespace

MItMeshPolygon::MItMeshPolygon(const MObject& mesh, MStatus* status) : mesh_(scene::as<MeshData>(mesh)) {
    setStatus(status, mesh_ != nullptr);
}

MItMeshPolygon::MItMeshPolygon(const MDagPath& path, MObject, MStatus* status)
    : MItMeshPolygon(scene::meshAt(path), status) {}

bool MItMeshPolygon::isDone(MStatus* status) const {
    setStatus(status, mesh_ != nullptr);
    return index_ >= polygonCount(mesh_);
}

MStatus MItMeshPolygon::next() {
    return moveOn(index_, polygonCount(mesh_));
}

MStatus MItMeshPolygon::reset() {
    index_ = 0;
    return MStatus::kSuccess;
}

unsigned int MItMeshPolygon::count(MStatus* status) const {
    setStatus(status, mesh_ != nullptr);
    return static_cast<unsigned int>(polygonCount(mesh_));
}

MStatus MItMeshPolygon::setIndex(int index, int& previous) {
    return moveTo(index, polygonCount(mesh_), index_, previous);
}

unsigned int MItMeshPolygon::polygonVertexCount(MStatus* status) const {
    return setStatus(status, !isDone()) ? static_cast<unsigned int>(mesh_->polygons.length(index_)) : 0;
}

MStatus MItMeshPolygon::getVertices(MIntArray& vertices) const {
    if (isDone()) {
        return MStatus::kFailure;
    }
    mesh_->polygons.copyTo(index_, vertices);
    return MStatus::kSuccess;
}

MStatus MItMeshPolygon::getUVIndex(int vertex, int& index, const MString* uvSet) const {
    if (isDone()) {
        return MStatus::kFailure;
    }
    const std::string name = uvSet == nullptr ? "" : uvSet->asChar();
    const scene::UvSet* set = mesh_->uvSet(uvSet == nullptr ? nullptr : &name);
    if (set == nullptr || vertex < 0 || static_cast<std::size_t>(vertex) >= set->polygons.length(index_)) {
        return MStatus::kFailure;
    }
    index = set->polygons.at(index_, static_cast<std::size_t>(vertex));
    return MStatus::kSuccess;
}

MItMeshVertex::MItMeshVertex(const MObject& mesh, MStatus* status) : mesh_(scene::as<MeshData>(mesh)) {
    setStatus(status, mesh_ != nullptr);
}

MItMeshVertex::MItMeshVertex(const MDagPath& path, MObject, MStatus* status)
    : MItMeshVertex(scene::meshAt(path), status) {}

bool MItMeshVertex::isDone(MStatus* status) const {
    setStatus(status, mesh_ != nullptr);
    return index_ >= vertexCount(mesh_);
}

MStatus MItMeshVertex::next() {
    return moveOn(index_, vertexCount(mesh_));
}

MStatus MItMeshVertex::reset() {
    index_ = 0;
    return MStatus::kSuccess;
}

unsigned int MItMeshVertex::count(MStatus* status) const {
    setStatus(status, mesh_ != nullptr);
    return static_cast<unsigned int>(vertexCount(mesh_));
}

int MItMeshVertex::index(MStatus* status) const {
    setStatus(status, mesh_ != nullptr);
    return static_cast<int>(index_);
}

MStatus MItMeshVertex::setIndex(int index, int& previous) {
    return moveTo(index, vertexCount(mesh_), index_, previous);
}

MStatus MItMeshVertex::getConnectedFaces(MIntArray& faces) const {
    if (isDone()) {
        return MStatus::kFailure;
    }
    mesh_->vertexFaces().copyTo(index_, faces);
    return MStatus::kSuccess;
}
