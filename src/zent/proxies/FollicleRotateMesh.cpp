#include "zent/nodes/follicle.h"
#include "zent/proxies/Binding.h"
#include "zent/proxies/Plain.h"
#include "zent/values/Select.h"

#include <fmt/format.h>
#include <maya/MDagPath.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnMesh.h>
#include <maya/MIntArray.h>
#include <maya/MItMeshPolygon.h>
#include <maya/MItMeshVertex.h>
#include <maya/MPoint.h>
#include <maya/MString.h>

#include <algorithm>
#include <map>
#include <set>
#include <stdexcept>

namespace zent {

namespace {

/// Gives each index of the whole mesh a number of the fragment, first come, first numbered.
class Renumbering {
public:
    int operator()(int index) {
        const auto [entry, added] = numbers_.emplace(index, static_cast<int>(order_.size()));
        if (added) {
            order_.push_back(index);
        }
        return entry->second;
    }
    /// The mesh's indices in the order of their new numbers.
    const std::vector<int>& order() const { return order_; }

private:
    std::map<int, int> numbers_;
    std::vector<int> order_;
};

std::vector<int> quadVertices(const Port& port) {
    std::vector<int> vertices;
    for (const Element& element : port.elements()) {
        vertices.push_back(element.getInt());
    }
    return vertices;
}

/// The first face with as many vertices as the list, each of them in it, in any order.
void requireFace(const MDagPath& path, const std::vector<int>& vertices) {
    for (MItMeshPolygon polygon(path); !polygon.isDone(); polygon.next()) {
        MIntArray corners;
        polygon.getVertices(corners);
        bool matches = corners.length() == vertices.size();
        for (unsigned int i = 0; matches && i < corners.length(); ++i) {
            matches = std::find(vertices.begin(), vertices.end(), corners[i]) != vertices.end();
        }
        if (matches) {
            return;
        }
    }
    throw std::runtime_error(fmt::format("no face with these vertices: [{}]", fmt::join(vertices, ", ")));
}

std::set<int> facesAround(const MDagPath& path, const std::vector<int>& vertices) {
    std::set<int> faces;
    MItMeshVertex vertex(path);
    for (const int index : vertices) {
        int previous = 0;
        vertex.setIndex(index, previous);
        MIntArray connected;
        vertex.getConnectedFaces(connected);
        for (unsigned int i = 0; i < connected.length(); ++i) {
            faces.insert(connected[i]);
        }
    }
    return faces;
}

/// The name of the UV set that the follicle reads, from the node of its output plug.
MString uvSetOf(const Port& port) {
    const MFnDependencyNode follicle(selectPlug(port.castSingle().getString()).node());
    return follicle.findPlug("mapSetName", true).asString();
}

/// The given faces of a mesh as a mesh of their own.
json meshFragment(const MDagPath& path, const std::set<int>& faces, const MString& uvSet) {
    json fragment(json::value_t::object);
    for (const char* key : {"points", "polyCounts", "polyConnection", "uvValues", "uvIds"}) {
        fragment[key] = json::array();
    }
    Renumbering points;
    Renumbering uvs;
    MItMeshPolygon polygon(path);
    for (const int face : faces) {
        int previous = 0;
        polygon.setIndex(face, previous);
        MIntArray corners;
        polygon.getVertices(corners);
        fragment["polyCounts"].push_back(corners.length());
        for (unsigned int i = 0; i < corners.length(); ++i) {
            int uv = -1; // stays so on a face without UVs
            polygon.getUVIndex(static_cast<int>(i), uv, &uvSet);
            fragment["polyConnection"].push_back(points(corners[i]));
            fragment["uvIds"].push_back(uvs(uv));
        }
    }

    const MFnMesh mesh(path);
    for (const int index : points.order()) {
        MPoint point;
        mesh.getPoint(index, point, static_cast<MSpace::Space>(3));
        fragment["points"].push_back(toJson(vec3(point.x, point.y, point.z)));
    }
    for (const int index : uvs.order()) {
        vec2 uv(0.0f);
        mesh.getUV(index, uv.x, uv.y, &uvSet);
        fragment["uvValues"].push_back(toJson(uv));
    }
    return fragment;
}

} // namespace

class ProxyFollicleRotateMesh : public Plain<follicleRotateMesh, Rotation> {
public:
    ProxyFollicleRotateMesh() : Plain("follicleRotateMesh", "outRotate") {}
    /// A scene fragment that stands on its own: the faces around the follicle's quad, with their points and UVs, as a
    /// mesh. Needs the mesh and the follicle in the scene.
    json closure(const Arguments& args, const std::vector<Port>& ports) const override;
};
template Method method<ProxyFollicleRotateMesh>();

json ProxyFollicleRotateMesh::closure(const Arguments& args, const std::vector<Port>& ports) const {
    json report = Proxy::closure(args, ports);
    report["node"] = "follicle";
    const MDagPath path = args.get(0).castSingle().getDagPath();
    const std::vector<int> vertices = quadVertices(args.get(3));
    requireFace(path, vertices);
    const std::set<int> faces = facesAround(path, vertices);
    report["inputs"] =
        results(typedValue("inputMesh", "Mesh", meshFragment(path, faces, uvSetOf(resultPort(ports, 0)))),
                input<float>("parameterU", args, 1), input<float>("parameterV", args, 2));
    return report;
}

} // namespace zent
