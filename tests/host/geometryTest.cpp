#include "host/openScene.h"
#include "zent/values/Port.h"
#include "zent/values/ResourceWriter.h"
#include "zent/values/Select.h"

#include <maya/MFnMesh.h>
#include <maya/MGlobal.h>
#include <maya/MItMeshPolygon.h>
#include <maya/MItMeshVertex.h>
#include <nlohmann/json.hpp>

#include <fstream>
#include <sstream>

namespace zent::test {
namespace {

/// A turn about z by a quarter, then a move by (10, 20, 30).
const mat4 kPlaced({0, 1, 0, 0}, {-1, 0, 0, 0}, {0, 0, 1, 0}, {10, 20, 30, 1});
const char* const kPlacedText = "[0,1,0,0, -1,0,0,0, 0,0,1,0, 10,20,30,1]";

template <class T>
T read(const std::string& plug) {
    return Element(json(plug)).get<T>();
}

std::vector<vec3> points(int count) {
    std::vector<vec3> list;
    for (int i = 0; i < count; ++i) {
        list.emplace_back(i, 0.5f * static_cast<float>(i), -i);
    }
    return list;
}

std::string text(const std::vector<vec3>& list) {
    json points = json::array();
    for (const vec3& point : list) {
        points.push_back({point.x, point.y, point.z});
    }
    return points.dump();
}

std::vector<int> values(const MIntArray& list) {
    return maya::std(list);
}

class GeometryTest : public OpenScene {};

TEST_F(GeometryTest, ATopologyBlockIsHeldAgainstItsCounts) {
    const struct {
        std::vector<unsigned int> list;
        const char* told; ///< nothing where the mesh is right: a triangle, with one UV
    } rows[] = {
        {{1, 3, 0, 1, 2, 1, 0, 0x3f000000, 3, 0, 0, 0}, ""},
        {{1, 3, 0, 1, 2, 1, 0, 0, 0}, ""}, // no UVs on its polygon
        {{}, "\"topology\" ends after 0 numbers"},
        {{4000000000}, "\"topology\" has 1 numbers, its counts ask for more"},
        {{1, 4000000000, 0, 1, 2}, "\"topology\" has 5 numbers, its counts ask for more"},
        {{1, 3, 0, 1, 3, 0, 0}, "\"topology\" holds 3, which is no index below 3"},
        {{1, 3, 0, 1, 2, 4000000000}, "\"topology\" has 6 numbers, its counts ask for more"},
        {{1, 3, 0, 1, 2, 1, 0, 0, 2, 0, 0}, "polygon 0 of a UV set has 2 entries, its vertices are 3"},
        {{1, 3, 0, 1, 2, 0, 0, 7}, "\"topology\" has 8 numbers, its counts ask for 7"},
    };
    for (const auto& row : rows) {
        ResourceWriter writer;
        writer.add(Mesh({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, mat4(1.0f)));
        writer.add(row.list);
        const std::string resource = temporaryPath("topology.bin");
        writer.write(resource);
        const std::string told = thrownText([&] {
            open(R"({"nodes": {"n": {"m": {"mesh": {"id": 0, "topology": {"id": 1}, "uvSets": ["a"]}}}}})", resource);
        });
        EXPECT_EQ(told.empty(), *row.told == '\0') << told;
        EXPECT_NE(told.find(row.told), std::string::npos) << told;
        if (told.empty()) {
            const MFnMesh mesh(selectPlug("n.m").asMObject());
            const MString name("a");
            EXPECT_TRUE(mesh.numPolygons() == 1 && mesh.numEdges() == 3 && mesh.numUVs(name) == 1);
        }
    }
}

TEST_F(GeometryTest, ReadsEachShapeInPlaceAndFromABlock) {
    const Mesh mesh(points(5), kPlaced);
    const Curve curve(3, kFormPeriodic, points(6), {-2, -1, 0, 1, 2, 3, 4, 5}, kPlaced);
    const Surface surface(2, 1, kFormOpen, kFormClosed, {0, 0, 1, 1}, {0, 1, 2, 3}, points(12), kPlaced);
    Lattice lattice;
    std::tie(lattice.s, lattice.t, lattice.u) = std::tuple(2U, 3U, 4U);
    lattice.points = points(24);
    lattice.matrixLinear = mat3(kPlaced);
    lattice.translation = vec3(kPlaced[3]);

    ResourceWriter writer;
    writer.add(mesh);
    writer.add(curve);
    writer.add(surface);
    writer.add(lattice);
    const std::string resource = temporaryPath("scene.bin");
    writer.write(resource);
    std::stringstream scene;
    scene << R"({"nodes": {"block": {"mesh": {"mesh": {"id": 0}}, "curve": {"curve": {"id": 1}},
              "surface": {"surface": {"id": 2}}, "lattice": {"lattice": {"id": 3}}, "again": {"curve": {"id": 1}}},
          "placed": {"mesh": {"mesh": {"points": )"
          << text(mesh.points) << R"(, "matrix": )" << kPlacedText << R"(}},
            "curve": {"curve": {"degree": 3, "form": "periodic", "knots": [-2,-1,0,1,2,3,4,5], "points": )"
          << text(curve.cv) << R"(, "matrix": )" << kPlacedText << R"(}},
            "surface": {"surface": {"degree": [2, 1], "form": ["open", "closed"], "knotsU": [0,0,1,1],
                                    "knotsV": [0,1,2,3], "points": )"
          << text(surface.cv) << R"(, "matrix": )" << kPlacedText << R"(}},
            "lattice": {"lattice": {"divisions": [2, 3, 4], "points": )"
          << text(lattice.points) << R"(, "matrix": )" << kPlacedText << "}}}}}";
    open(scene.str(), resource);

    EXPECT_EQ(read<Curve>("block.again").cv, curve.cv);
    for (const std::string node : {"block.", "placed."}) {
        const Mesh readMesh = read<Mesh>(node + "mesh");
        EXPECT_EQ(readMesh.points, mesh.points);
        EXPECT_EQ(matrixOf(readMesh), kPlaced);
        EXPECT_EQ(readMesh.inverseTranslation, vec3(-20, 10, -30));
        const Curve readCurve = read<Curve>(node + "curve");
        EXPECT_EQ(std::tie(readCurve.degree, readCurve.form, readCurve.cv, readCurve.knots),
                  std::tie(curve.degree, curve.form, curve.cv, curve.knots));
        EXPECT_EQ(matrixOf(readCurve), kPlaced);
        const Surface readSurface = read<Surface>(node + "surface");
        EXPECT_EQ(std::tie(readSurface.degreeU, readSurface.degreeV, readSurface.formU, readSurface.formV),
                  std::tie(surface.degreeU, surface.degreeV, surface.formU, surface.formV));
        EXPECT_EQ(std::tie(readSurface.cv, readSurface.knotsU, readSurface.knotsV),
                  std::tie(surface.cv, surface.knotsU, surface.knotsV));
        EXPECT_EQ(matrixOf(readSurface), kPlaced);
        const Lattice readLattice = read<Lattice>(node + "lattice");
        EXPECT_EQ(std::tie(readLattice.s, readLattice.t, readLattice.u, readLattice.points),
                  std::tie(lattice.s, lattice.t, lattice.u, lattice.points));
        EXPECT_EQ(matrixOf(readLattice), kPlaced);
    }
    EXPECT_TRUE(read<Mesh>("block.curve").points.empty()); // data of another kind is no mesh
}

TEST_F(GeometryTest, RefusesALatticeBlockWhoseCountsWrap) {
    Lattice lattice;
    std::tie(lattice.s, lattice.t, lattice.u) = std::tuple(65536U, 65537U, 1U); // 65536 in 32 bits
    lattice.points = points(65536);
    ResourceWriter writer;
    writer.add(lattice);
    const std::string resource = temporaryPath("wrap.bin");
    writer.write(resource);
    const std::string told = thrownText([&] { open(R"({"nodes": {"n": {"l": {"lattice": {"id": 0}}}}})", resource); });
    EXPECT_NE(told.find("n.l: block 0 of the resource file: lattice has 65536 points"), std::string::npos) << told;
}

TEST_F(GeometryTest, ReadsALatticeOfEmptyLayersAtOnce) {
    Lattice lattice;
    std::tie(lattice.s, lattice.t, lattice.u) = std::tuple(0U, 0xFFFFFFFFU, 0xFFFFFFFFU);
    ResourceWriter writer;
    writer.add(lattice);
    const std::string resource = temporaryPath("layers.bin");
    writer.write(resource);
    open(R"({"nodes": {"n": {"l": {"lattice": {"id": 0}}}}})", resource);
    EXPECT_TRUE(read<Lattice>("n.l").points.empty());
}

/// Six vertices in two rows of three, the quads 0 1 4 3 and 1 2 5 4, and a triangle 5 2 1 on the second.
const char* const kStrip = R"({"nodes": {
    "|strip|shape": {"outMesh": {"mesh": {"points": [[0,0,0], [1,0,0], [2,0,0], [0,1,0], [1,1,0], [2,1,0]],
        "polygons": [[0, 1, 4, 3], [1, 2, 5, 4], [5, 2, 1]], "matrix": [0,1,0,0, -1,0,0,0, 0,0,1,0, 10,20,30,1],
        "uvSets": {"first": {"uvs": [[0, 0]], "polygons": [[0, 0, 0, 0], [0, 0, 0, 0], []]},
                   "map1": {"uvs": [[0.25, 0.5], [0.75, 1]],
                            "polygons": [[0, 0, 1, 1], [1, 0, 0, 1], [1, 1, 0]]}}}}},
    "user": {"in": {"mesh": null}}}, "connections": [["|strip|shape.outMesh", "user.in"]]})";

TEST_F(GeometryTest, WalksAMeshOverItsDagPath) {
    open(kStrip);
    const MDagPath path = Element(json("user.in")).getDagPath();
    int previous = -1;
    MIntArray list;
    std::vector<std::vector<int>> faces;
    MItMeshPolygon polygon(path);
    for (; !polygon.isDone(); polygon.next()) {
        polygon.getVertices(list);
        faces.push_back(values(list));
    }
    EXPECT_EQ(faces, (std::vector<std::vector<int>>{{0, 1, 4, 3}, {1, 2, 5, 4}, {5, 2, 1}}));
    EXPECT_EQ(polygon.getVertices(list), MStatus::kFailure);
    EXPECT_EQ(polygon.setIndex(3, previous), MStatus::kInvalidParameter);
    EXPECT_EQ(polygon.setIndex(1, previous), MStatus::kSuccess);
    EXPECT_EQ(previous, 3);

    const MString map1("map1");
    const MString first("first");
    int uv = -1;
    EXPECT_EQ(polygon.getUVIndex(3, uv, &map1), MStatus::kSuccess);
    EXPECT_EQ(uv, 1);
    EXPECT_EQ(polygon.getUVIndex(0, uv), MStatus::kSuccess); // without a name, the first set
    EXPECT_EQ(uv, 0);
    EXPECT_EQ(polygon.getUVIndex(4, uv, &map1), MStatus::kFailure);
    polygon.setIndex(2, previous);
    EXPECT_EQ(polygon.getUVIndex(0, uv, &first), MStatus::kFailure); // this polygon has no UVs there

    const std::vector<std::vector<int>> touching{{0}, {0, 1, 2}, {1, 2}, {0}, {0, 1}, {1, 2}};
    MItMeshVertex vertex(path);
    for (int i = 5; i >= 0; --i) {
        vertex.setIndex(i, previous);
        vertex.getConnectedFaces(list);
        EXPECT_EQ(values(list), touching[static_cast<std::size_t>(i)]) << i;
    }

    const MFnMesh mesh(path);
    MPoint point;
    float u = 0.0f;
    float v = 0.0f;
    mesh.getPoint(4, point, MSpace::kObject);
    EXPECT_EQ(maya::pointsToStd(MPointArray(1, point)).front(), vec3(1, 1, 0));
    mesh.getPoint(4, point, static_cast<MSpace::Space>(3)); // (1, 1, 0) turns to (-1, 1, 0)
    EXPECT_EQ(maya::pointsToStd(MPointArray(1, point)).front(), vec3(9, 21, 30));
    EXPECT_EQ(mesh.getPoint(6, point), MStatus::kFailure);
    EXPECT_EQ(mesh.getUV(1, u, v, &map1), MStatus::kSuccess);
    EXPECT_EQ(vec2(u, v), vec2(0.75f, 1));
    EXPECT_EQ(mesh.getUV(1, u, v, &first), MStatus::kFailure);
}

TEST_F(GeometryTest, FindsAMeshBelowATransformAndNoneElsewhere) {
    open(kStrip);
    const auto meshAt = [](const char* node) {
        MSelectionList list;
        MDagPath path;
        MGlobal::getSelectionListByName(node, list);
        list.getDagPath(0, path);
        return MFnMesh(path).numPolygons();
    };
    EXPECT_EQ(meshAt("shape"), 3);
    EXPECT_EQ(meshAt("|strip"), 3);
    EXPECT_EQ(meshAt("user"), 0);
    EXPECT_EQ(meshAt("nothing"), 0);
    EXPECT_TRUE(MItMeshVertex(MDagPath()).isDone());
}

} // namespace
} // namespace zent::test
