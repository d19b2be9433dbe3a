#include "Data.h"

#include <algorithm>
#include <set>

namespace scene {

void Lists::copyTo(std::size_t i, MIntArray& list) const {
    list.setLength(static_cast<unsigned int>(length(i)));
    for (unsigned int position = 0; position < list.length(); ++position) {
        list[position] = at(i, position);
    }
}

int Component::count() const {
    int product = isComplete ? 0 : 1;
    for (std::size_t i = 0; i < directions; ++i) {
        product *= ranges[i].last - ranges[i].first + 1;
    }
    return product;
}

std::array<int, 3> Component::at(int position) const {
    std::array<int, 3> indices{};
    for (std::size_t i = directions; i-- > 0;) {
        const int length = ranges[i].last - ranges[i].first + 1;
        indices[i] = ranges[i].first + position % length;
        position /= length;
    }
    return indices;
}

const Lists& MeshData::vertexFaces() const {
    if (vertexFaces_.size() == points->length()) {
        return vertexFaces_;
    }
    // A counting sort by vertex: each list ends up in the ascending order of the walk. A polygon that names a vertex
    // twice is listed once.
    std::vector<std::size_t> next(points->length() + 1, 0);
    const auto eachCorner = [this](auto&& visit) {
        std::vector<std::size_t> lastFace(points->length(), polygons.size());
        for (std::size_t face = 0; face < polygons.size(); ++face) {
            for (std::size_t i = polygons.begin(face); i < polygons.ends[face]; ++i) {
                const auto vertex = static_cast<std::size_t>(polygons.values[i]);
                if (lastFace[vertex] != face) {
                    lastFace[vertex] = face;
                    visit(vertex, face);
                }
            }
        }
    };
    eachCorner([&](std::size_t vertex, std::size_t) { ++next[vertex + 1]; });
    for (std::size_t vertex = 1; vertex < next.size(); ++vertex) {
        next[vertex] += next[vertex - 1];
    }
    vertexFaces_.ends.assign(next.begin() + 1, next.end());
    vertexFaces_.values.resize(next.back());
    eachCorner(
        [&](std::size_t vertex, std::size_t face) { vertexFaces_.values[next[vertex]++] = static_cast<int>(face); });
    return vertexFaces_;
}

const std::vector<std::array<int, 2>>& MeshData::edges() const {
    if (!edges_.empty()) {
        return edges_;
    }
    std::set<std::array<int, 2>> known;
    for (std::size_t face = 0; face < polygons.size(); ++face) {
        const std::size_t corners = polygons.length(face);
        for (std::size_t i = 0; i < corners; ++i) {
            const int from = polygons.at(face, i);
            const int to = polygons.at(face, (i + 1) % corners);
            if (known.insert({std::min(from, to), std::max(from, to)}).second) {
                edges_.push_back({from, to});
            }
        }
    }
    return edges_;
}

const UvSet* MeshData::uvSet(const std::string* name) const {
    for (const auto& [setName, set] : uvSets) {
        if (name == nullptr || setName == *name) {
            return &set;
        }
    }
    return nullptr;
}

const GeometryData* asGeometry(const MObject& object) {
    switch (object.apiType()) {
    case MFn::kMeshData:
    case MFn::kNurbsCurveData:
    case MFn::kNurbsSurfaceData:
    case MFn::kLatticeData:
        return static_cast<const GeometryData*>(object.object());
    default:
        return nullptr;
    }
}

MPoint transformed(const MPoint& point, const MMatrix& matrix) {
    const double in[4] = {point.x, point.y, point.z, point.w};
    double out[4] = {};
    for (unsigned int row = 0; row < 4; ++row) {
        for (unsigned int column = 0; column < 4; ++column) {
            out[column] += in[row] * matrix(row, column);
        }
    }
    return {out[0], out[1], out[2], out[3]};
}

} // namespace scene
