#include "zent/check/Run.h"
#include "zent/methods/Exporter.h"
#include "zent/methods/Lint.h"
#include "zent/methods/WholeFiles.h"

#include "maya/Scene.h"
#include "scene/sceneFile.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>

namespace zent {
namespace {

constexpr const char* kMatrix = R"({"matrix": [1,0,0,0, 0,1,0,0, 0,0,1,0, 0,0,0,1]})";
constexpr const char* kMoved = R"({"matrix": [1,0,0,0, 0,1,0,0, 0,0,1,0, 2,0,0,1]})";
constexpr const char* kMesh = R"({"mesh": {"points": [[0,0,0],[1,0,0],[1,1,0],[0,1,0]], "polygons": [[0,1,2,3]],
    "uvSets": {"map1": {"uvs": [[0,0],[1,0],[1,1],[0,1]], "polygons": [[0,1,2,3]]}}}})";
constexpr const char* kCurve =
    R"({"curve": {"degree": 1, "form": "open", "knots": [0,1,2], "points": [[0,0,0],[1,0,0],[2,0,0]]}})";

constexpr const char* kAngles = R"([{"angle": 0}, {"angle": 0}, {"angle": 0}])";
constexpr const char* kSurface =
    R"({"surface": {"degree": [1, 1], "form": ["open", "open"], "knotsU": [0,1], "knotsV": [0,1],
    "points": [[0,0,0],[0,0,1],[1,0,0],[1,0,1]]}})";
constexpr const char* kSteep =
    R"({"surface": {"degree": [7, 1], "form": ["open", "open"], "knotsU": [0,0,0,0,0,0,0,1,1,1,1,1,1,1],
    "knotsV": [0,1], "points": [[0,0,0],[0,0,1],[1,0,0],[1,0,1],[2,0,0],[2,0,1],[3,0,0],[3,0,1],[4,0,0],[4,0,1],[5,0,0],
    [5,0,1],[6,0,0],[6,0,1],[7,0,0],[7,0,1]]}})";
constexpr const char* kLattice = R"({"lattice": {"divisions": [2,2,2], "points": [[-0.5,-0.5,-0.5],[0.5,-0.5,-0.5],
    [-0.5,0.5,-0.5],[0.5,0.5,-0.5],[-0.5,-0.5,0.5],[0.5,-0.5,0.5],[-0.5,0.5,0.5],[0.5,0.5,0.5]]}})";

constexpr const char* kSteepCurve =
    R"({"curve": {"degree": 7, "form": "open", "knots": [0,0,0,0,0,0,0,1,1,1,1,1,1,1],
    "points": [[0,0,0],[1,0,0],[2,0,0],[3,0,0],[4,0,0],[5,0,0],[6,0,0],[7,0,0]]}})";
constexpr const char* kMovedLattice = R"({"lattice": {"divisions": [2,2,2], "points": [[-0.5,-0.5,-0.5],[0.5,-0.5,-0.5],
    [-0.5,0.5,-0.5],[0.5,0.5,-0.5],[-0.5,-0.5,0.5],[0.5,-0.5,0.5],[-0.5,0.5,0.5],[0.5,0.5,0.75]]}})";
/// Weights of influence 5 for four points, and of influence 0 for eight.
constexpr const char* kWeights =
    R"({"multi": [{"compound": {"weights": {"multi": {"5": 1}}}}, {"compound": {"weights": {"multi": {"5": 1}}}},
    {"compound": {"weights": {"multi": {"5": 1}}}}, {"compound": {"weights": {"multi": {"5": 1}}}}]})";
constexpr const char* kWeightsOfOne =
    R"({"multi": [{"compound": {"weights": {"multi": [1]}}}, {"compound": {"weights": {"multi": [1]}}},
    {"compound": {"weights": {"multi": [1]}}}, {"compound": {"weights": {"multi": [1]}}},
    {"compound": {"weights": {"multi": [1]}}}, {"compound": {"weights": {"multi": [1]}}},
    {"compound": {"weights": {"multi": [1]}}}, {"compound": {"weights": {"multi": [1]}}}]})";
/// All points of a curve, a mesh and a surface as members.
constexpr const char* kCurveMembers =
    R"({"type": "groupParts", "inputComponents": {"components": ["cv[0:2]"]}, "outputGeometry": @C})";
constexpr const char* kMeshMembers =
    R"({"type": "groupParts", "inputComponents": {"components": ["vtx[*]"]}, "outputGeometry": @G})";
constexpr const char* kSurfaceMembers =
    R"({"type": "groupParts", "inputComponents": {"components": ["cv[0:1][0:1]"]}, "outputGeometry": @S})";

/// Text with "M" for a matrix, "T" for one that moves, "G" for a mesh of a quad and "C" for a curve of two spans.
json parsed(std::string text) {
    const std::pair<const char*, const char*> words[] = {
        {"@g", kCurveMembers}, {"@h", kMeshMembers}, {"@s", kSurfaceMembers}, {"@M", kMatrix},  {"@T", kMoved},
        {"@G", kMesh},         {"@C", kCurve},       {"@A", kAngles},         {"@S", kSurface}, {"@7", kSteep},
        {"@L", kLattice},      {"@D", kSteepCurve},  {"@B", kMovedLattice},   {"@W", kWeights}, {"@0", kWeightsOfOne}};
    for (const auto& [word, value] : words) {
        for (std::size_t at = text.find(word); at != std::string::npos; at = text.find(word, at)) {
            text.replace(at, 2, value);
        }
    }
    return json::parse(text);
}

std::string readAll(const std::string& path) {
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// What an export of a scene wrote.
struct Exported {
    json manifest;
    std::string notes;
    std::size_t records(const std::string& method) const {
        return static_cast<std::size_t>(std::count_if(manifest.begin(), manifest.end(),
                                                      [&](const json& record) { return record["method"] == method; }));
    }
};

class ExportTest : public testing::Test {
protected:
    void TearDown() override { scene::Scene::current().clear(); }

    Exported exported(const json& nodes, const json& connections, ExportSettings settings = {},
                      const json& selected = json::array()) {
        const std::string folder = testing::TempDir();
        std::ofstream(folder + "export.json")
            << json{{"nodes", nodes}, {"connections", connections}, {"selected", selected}};
        scene::Scene::current().clear();
        scene::readSceneFile(folder + "export.json", "", scene::Scene::current());
        settings.manifest = folder + "exported.json";
        settings.resource = folder + "exported.bin";
        WholeFiles files;
        const std::string notes = exportManifest(settings, files).notes;
        files.put();
        Exported result{json::parse(readAll(settings.manifest)), notes};
        LintSettings lintSettings;
        lintSettings.resource = settings.resource;
        lintSettings.hasScene = settings.nameSpace.empty();
        for (const Mistake& mistake : lint(result.manifest, lintSettings)) {
            ADD_FAILURE() << mistake.inWords();
        }
        return result;
    }
};

/// A node that has a record, and what spoils it.
struct Case {
    const char* method;
    const char* nodes;
    const char* connections;
    std::vector<std::pair<const char*, const char*>> spoiled; ///< a patch of the nodes, and the reason in the notes
};

const Case kCases[] =
    {
        {"blendTwoAttr",
         R"({"n": {"type": "blendTwoAttr", "input": {"multi": [1, 2]}, "attributesBlender": 0.5, "output": 1.5}})",
         "[]",
         {{R"({"n": {"input": {"multi": [1, 2, 3]}}})",
           "input has 3 elements, at most 2 count: more than two inputs"}}},
        {"distanceBetweenTwoPoints",
         R"({"n": {"type": "distanceBetween", "point1": [0,0,0], "point2": [1,0,0], "inMatrix1": @M, "inMatrix2": @M, "distance": 1}})",
         "[]",
         {{R"({"n": {"inMatrix1": @T}})", "inMatrix1 is not the identity: a matrix is set"}}},
        {"distanceBetweenTwoMatrices",
         R"({"n": {"type": "distanceBetween", "point1": [0,0,0], "point2": [0,0,0], "inMatrix1": @M, "inMatrix2": @M, "distance": 0}, "a": {"m": @M}})",
         R"([["a.m", "n.inMatrix1"], ["a.m", "n.inMatrix2"]])",
         {{R"({"n": {"point2": [0,1,0]}})", "point2 is 1, not 0: a point and a matrix"}}},
        {"multiplyDivide3D",
         R"({"n": {"type": "multiplyDivide", "input1": [1,2,3], "input2": [1,1,1], "operation": 1, "output": [1,2,3]}})",
         "[]",
         {{R"({"n": {"operation": 0}})", "operation is 0, not 1 or 2 or 3: no operation"}}},
        {"remapValue",
         R"({"n": {"type": "remapValue", "inputValue": 0, "inputMin": 0, "inputMax": 1, "outputMin": 0, "outputMax": 1, "outValue": 0,
        "value": {"multi": [{"compound": {"value_Position": 1, "value_FloatValue": 1, "value_Interp": 1}}]}}})",
         "[]",
         {{R"({"n": {"value": {"multi": [{"compound": {"value_Position": 1, "value_FloatValue": 1, "value_Interp": 3}}]}}})",
           "value[*].value_Interp is 3, not 1: an interpolation that is not linear"},
          {R"({"n": {"inputMin": null}})", "it has no plug inputMin"}}},
        {"animCurve",
         R"({"time1": {"type": "time", "outTime": {"time": 0}}, "n": {"type": "animCurveTL", "input": {"time": 0}, "output": 1, "preInfinity": 0, "postInfinity": 4,
        "weightedTangents": false, "keyTimeValue": {"multi": [{"compound": {"keyTime": {"time": 0}, "keyValue": 1}}]}, "keyTanInType": {"multi": [3]}, "keyTanOutType": {"multi": [3]}}})",
         "[]",
         {{R"({"n": {"postInfinity": 5}})", "postInfinity is 5, not 0 or 1 or 3 or 4: oscillates"},
          {R"({"n": {"keyTanOutType": {"multi": [9]}}})", "the out tangent of key 0 is not known"},
          {R"({"n": {"keyTimeValue": {"multi": {}, "element": {"compound": {"keyTime": {"time": 0}, "keyValue": 0}}}}})",
           "keyTimeValue is empty: no key"},
          {R"({"time1": {"type": "other"}})", "the scene has no node that tells the time"}}},
        {"composeMatrix",
         R"({"n": {"type": "composeMatrix", "inputTranslate": [0,0,0], "inputRotate": [{"angle": 0},{"angle": 0},{"angle": 0}], "inputRotateOrder": 0, "inputScale": [1,1,1],
        "inputShear": [0,0,0], "useEulerRotation": true, "outputMatrix": @M}})",
         "[]",
         {{R"({"n": {"useEulerRotation": false}})", "useEulerRotation is 0, not 1: it composes from a quaternion"},
          {R"({"n": {"inputShear": [0,0.5,0]}})", "inputShear is 0.5, not 0: shear"}}},
        {"transform",
         R"({"|n": {"type": "transform", "translate": [0,0,0], "rotate": [{"angle": 0},{"angle": 0},{"angle": 0}], "rotateOrder": 0, "scale": [1,1,1], "shear": [0,0,0],
        "rotatePivot": [0,0,0], "scalePivot": [0,0,0], "rotatePivotTranslate": [0,0,0], "scalePivotTranslate": [0,0,0], "rotateAxis": [{"angle": 0},{"angle": 0},{"angle": 0}], "matrix": @M}})",
         "[]",
         {{R"({"|n": {"rotateAxis": [{"angle": 0},{"angle": 180},{"angle": 0}]}})", "rotateAxis is 3.14159265"},
          {R"({"|n": {"offsetParentMatrix": @T}})",
           "offsetParentMatrix is not the identity: offsetParentMatrix is in use"}}},
        {"worldMatrix",
         R"({"|n": {"type": "joint", "matrix": @M, "parentMatrix": {"multi": [@M]}, "worldMatrix": {"multi": [@M]}}})",
         "[]",
         {{R"({"|n": {"inheritsTransform": false}})", "inheritsTransform is 0, not 1: inheritsTransform is off"},
          {R"({"|n": {"worldMatrix": {"multi": [@M, @M]}}})",
           "worldMatrix has 2 elements, at most 1 count: the node has several instances"}}},
        {"quatToEuler",
         R"({"n": {"type": "quatToEuler", "inputQuat": [0,0,0,1], "inputRotateOrder": 0, "outputRotate": [{"angle": 0},{"angle": 0},{"angle": 0}]}})",
         "[]",
         {{R"({"n": {"inputRotateOrder": 2}})", "inputRotateOrder is 2, not 0"}}},
        {"pointConstraint",
         R"({"n": {"type": "pointConstraint", "nodeState": 0, "constraintParentInverseMatrix": @M, "constraintRotatePivot": [0,0,0], "constraintRotateTranslate": [0,0,0],
        "offset": [0,0,0], "restTranslate": [0,0,0], "constraintTranslate": [0,0,0], "enableRestPosition": false, "target": {"multi": {"4": {"compound": {"targetWeight": 1, "targetParentMatrix": @M,
        "targetTranslate": [0,0,0], "targetRotatePivot": [0,0,0], "targetRotateTranslate": [0,0,0]}}}}}})",
         "[]",
         {{R"({"n": {"nodeState": 1}})", "nodeState is 1, not 0: the node is switched off"},
          {R"({"n": {"target": {"multi": {"4": {"compound": {"targetWeight": 0}}}}}})",
           "its weights are all 0 and enableRestPosition is off"},
          {R"({"n": {"target": {"multi": {"4": {"compound": {"targetRotateTranslate": [0,0,1]}}}}}})",
           "target[*].targetRotateTranslate is 1, not 0"}}},
        {"tangentConstraint",
         R"({"n": {"type": "tangentConstraint", "constraintParentInverseMatrix": @M, "constraintRotateOrder": 0, "constraintTranslate": [0,0,0], "aimVector": [1,0,0],
        "upVector": [0,1,0], "worldUpType": 3, "worldUpMatrix": @M, "worldUpVector": [0,1,0], "constraintRotate": [{"angle": 0},{"angle": 0},{"angle": 0}], "target": {"multi": [{"compound": {"targetGeometry": @C}}]}}})",
         "[]",
         {{R"({"n": {"target": {"multi": [{"compound": {"targetGeometry": @C}}, {"compound": {"targetGeometry": @C}}]}}})",
           "target has 2 elements, not 1: several targets"},
          {R"({"n": {"worldUpType": 4}})", "worldUpType is 4, not 0 or 1 or 2 or 3: no world up"}}},
        {"pairBlendRotate",
         R"({"n": {"type": "pairBlend", "inRotate1": [{"angle": 0},{"angle": 0},{"angle": 0}], "inRotate2": [{"angle": 0},{"angle": 0},{"angle": 0}], "weight": 1, "rotInterpolation": 1,
        "rotateOrder": 0, "outRotate": [{"angle": 0},{"angle": 0},{"angle": 0}]}})",
         "[]",
         {{R"({"n": {"rotateOrder": 3}})", "it blends quaternions of another rotateOrder than xyz"}}},
        {"pointOnCurveInfo",
         R"({"n": {"type": "pointOnCurveInfo", "inputCurve": @C, "parameter": 2, "turnOnPercentage": false, "position": [2,0,0]}})",
         "[]",
         {{R"({"n": {"parameter": 2.5}})", "parameter is 2.5, outside 0 to 2: nothing wraps"},
          {R"({"n": {"turnOnPercentage": true}})", "parameter is 2, outside 0 to 1: nothing wraps"}}},
        {"follicleRotateMesh",
         R"({"m": {"type": "mesh", "outMesh": @G}, "n": {"type": "follicle", "inputMesh": {"mesh": null}, "parameterU": 0.25, "parameterV": 0.5, "outTranslate": [0.25,0.5,0],
        "outRotate": [{"angle": 0},{"angle": 0},{"angle": 0}]}})",
         R"([["m.outMesh", "n.inputMesh"]])",
         {{R"({"n": {"parameterU": 1.5}})", "no face of the mesh is at (1.5, 0.5)"}}},
        {"polyEdgeToCurve",
         R"({"n": {"type": "polyEdgeToCurve", "inputPolymesh": @G, "inputComponents": {"components": ["e[0:1]"]}, "degree": 1, "conformToSmoothMeshPreview": false, "outputcurve": @C}})",
         "[]",
         {{R"({"n": {"conformToSmoothMeshPreview": true}})",
           "conformToSmoothMeshPreview is 1, not 0: it may follow the smooth preview"},
          {R"({"n": {"inputComponents": {"components": ["e[0]", "e[2]"]}}})", "its edges are no single path"},
          {R"({"n": {"inputComponents": {"components": ["e[9]"]}}})", "the mesh has no edge 9"}}},
        {"skinMesh",
         R"({"n": {"type": "skinCluster", "envelope": 1, "skinningMethod": 0, "normalizeWeights": 1, "geomMatrix": @M, "matrix": {"multi": {"2": @M, "5": @M}}, "bindPreMatrix": {"multi": {"2": @M, "5": @M}},
        "input": {"multi": [{"compound": {"inputGeometry": @G}}]}, "outputGeometry": {"multi": [@G]}, "weightList": @W}})",
         "[]",
         {{R"({"n": {"skinningMethod": 1}})", "skinningMethod is 1, not 0: dual quaternion or blended"},
          {R"({"n": {"bindPreMatrix": {"multi": {"5": null}}}})", "bindPreMatrix lacks an element for some influence"},
          {R"({"n": {"weightList": {"multi": [{"compound": {"weights": {"multi": {"7": 1}}}}]}}})",
           "point 0 has a weight of influence 7, which has no matrix"},
          {R"({"n": {"weightList": {"multi": [{"compound": {"weights": {"multi": {"5": 1}}}}]}}})",
           "point 1 has no weight"},
          {R"({"n": {"normalizeWeights": 2}})",
           "normalizeWeights is 2, not 1: weights are not normalised as they are set"},
          {R"({"n": {"outputGeometry": {"multi": [{"mesh": {"points": [[0,0,0]], "matrix": [1,0,0,0, 0,1,0,0, 0,0,1,0, 2,0,0,1]}}]}}})",
           "the mesh has a transform in the world"}}},
        {"skinCurve",
         R"({"n": {"type": "skinCluster", "envelope": 1, "skinningMethod": 0, "normalizeWeights": 1, "geomMatrix": @M, "matrix": {"multi": [@M]}, "bindPreMatrix": {"multi": [@M]},
        "input": {"multi": [{"compound": {"inputGeometry": @C}}]}, "outputGeometry": {"multi": [@C]}, "weightList": @0}})",
         "[]",
         {{R"({"n": {"skinningMethod": 2}})", "skinningMethod is 2, not 0: dual quaternion or blended"},
          {R"({"n": {"useComponents": true}})", "useComponents is 1, not 0"}}},
        {"skinSurface",
         R"({"n": {"type": "skinCluster", "envelope": 1, "skinningMethod": 0, "normalizeWeights": 1, "geomMatrix": @M, "matrix": {"multi": [@M]}, "bindPreMatrix": {"multi": [@M]},
        "input": {"multi": {"3": {"compound": {"inputGeometry": @S}}}}, "outputGeometry": {"multi": {"3": @S}}, "weightList": @0}})",
         "[]",
         {{R"({"n": {"nodeState": 2}})", "nodeState is 2, not 0: the node is switched off"}}},
        {"skinLattice",
         R"({"n": {"type": "skinCluster", "envelope": 1, "skinningMethod": 0, "normalizeWeights": 1, "geomMatrix": @M, "matrix": {"multi": [@M]}, "bindPreMatrix": {"multi": [@M]},
        "input": {"multi": [{"compound": {"inputGeometry": @L}}]}, "outputGeometry": {"multi": [@L]}, "weightList": @0}})",
         "[]",
         {{R"({"n": {"weightList": {"multi": {}, "element": 0}}})", "point 0 has no weight"}}},
        {"blendShapeMesh",
         R"({"n": {"type": "blendShape", "envelope": 1, "weight": {"multi": [1]}, "input": {"multi": [{"compound": {"inputGeometry": @G}}]}, "outputGeometry": {"multi": [@G]},
        "inputTarget": {"multi": [{"compound": {"baseWeights": {"multi": [1, 1]}, "inputTargetGroup": {"multi": [{"compound": {"inputTargetItem": {"multi": {"6000": {"compound": {"inputGeomTarget": {"mesh": null},
        "inputPointsTarget": {"points": [[0,1,0]]}, "inputComponentsTarget": {"components": ["vtx[2]"]}}}}}}}]}}}]}}})",
         "[]",
         {{R"({"n": {"inputTarget": {"multi": [{"compound": {"baseWeights": {"multi": [1, 0.5]}, "inputTargetGroup": {"multi": [{"compound": {"inputTargetItem": {"multi": {}}}}]}}}]}}})",
           "inputTarget[g].baseWeights[*] is 0.5, not 1: painted base weights"}}},
        {"blendShapeCurve",
         R"({"n": {"type": "blendShape", "envelope": 1, "origin": 1, "weight": {"multi": [1]}, "input": {"multi": [{"compound": {"inputGeometry": @C}}]}, "outputGeometry": {"multi": [@C]},
        "inputTarget": {"multi": [{"compound": {"inputTargetGroup": {"multi": [{"compound": {"normalizationId": 0, "postDeformersMode": 0, "inputTargetItem": {"multi": {"6000": {"compound": {"inputGeomTarget": {"curve": null},
        "inputPointsTarget": {"points": [[0,1,0]]}, "inputComponentsTarget": {"components": ["cv[2]"]}}}}}}}]}}}]}}, "g": @g})",
         R"([["g.outputGeometry", "n.input[0].inputGeometry"]])",
         {{R"({"n": {"origin": 0}})", "origin is 0, not 1: targets in world space"},
          {R"({"n": {"inputTarget": {"multi": [{"compound": {"inputTargetGroup": {"multi": [{"compound": {"normalizationId": 1, "postDeformersMode": 0}}]}}}]}}})",
           "normalizationId is 1, not 0: a normalisation group"},
          {R"({"n": {"inputTarget": {"multi": [{"compound": {"inputTargetGroup": {"multi": [{"compound": {"normalizationId": 0, "postDeformersMode": 1}}]}}}]}}})",
           "postDeformersMode is 1, not 0: targets after the deformers"},
          {R"({"g": {"inputComponents": {"components": ["cv[0:1]"]}}})", "not all points are members"}}},
        {"blendShapeSurface",
         R"({"n": {"type": "blendShape", "envelope": 1, "weight": {"multi": [1]}, "input": {"multi": [{"compound": {"inputGeometry": @S}}]}, "outputGeometry": {"multi": [@S]},
        "inputTarget": {"multi": [{"compound": {"inputTargetGroup": {"multi": [{"compound": {"inputTargetItem": {"multi": {"6000": {"compound": {"inputGeomTarget": {"surface": null},
        "inputPointsTarget": {"points": [[0,1,0]]}, "inputComponentsTarget": {"components": ["cv[1][0]"]}}}}}}}]}}}]}}})",
         "[]",
         {{R"({"n": {"inputTarget": {"multi": [{"compound": {"inputTargetGroup": {"multi": [{"compound": {"inputTargetItem": {"multi": {"6000": {"compound": {"inputGeomTarget": {"surface": null},
        "inputPointsTarget": {"points": [[0,1,0]]}, "inputComponentsTarget": {"components": ["cv[0][0:1]"]}}}}}}}]}}}]}}})",
           "target 0 moves 1 points and lists 2 components"}}},
        {"clusterFullCurve",
         R"({"|h": {"translate": [0,0,0], "rotate": [{"angle": 0},{"angle": 0},{"angle": 0}], "rotateOrder": 0, "scale": [1,1,1], "rotatePivot": [0,0,0], "scalePivot": [0,0,0],
        "rotatePivotTranslate": [0,0,0], "scalePivotTranslate": [0,0,0], "worldMatrix": {"multi": [@M]}}, "n": {"type": "cluster", "envelope": 1, "matrix": @M, "bindPreMatrix": @M, "angleInterpolation": 0,
        "input": {"multi": [{"compound": {"inputGeometry": @C}}]}, "outputGeometry": {"multi": [@C]}, "weightList": {"multi": [{"compound": {"weights": {"multi": {"1": 0.5}}}}]}}})",
         R"([["|h.worldMatrix[0]", "n.matrix"]])",
         {{R"({"n": {"envelope": 0.5}})", "envelope is 0.5, not 1"},
          {R"({"n": {"geomMatrix": {"multi": [@T]}}})",
           "geomMatrix[g] is not the identity: the shape is not in its own space"},
          {R"({"n": {"input": {"multi": [{"compound": {"inputGeometry": @C, "componentTagExpression": "left"}}]}}})",
           "none of its methods fits what is connected to it"}}},
        {"deformBendMesh",
         R"({"b": {"type": "deformBend", "deformerData": 0, "curvature": {"angle": 30}, "lowBound": -1, "highBound": 1}, "n": {"type": "nonLinear", "deformerData": 0, "envelope": 1, "matrix": @M,
        "input": {"multi": [{"compound": {"inputGeometry": @G}}]}, "outputGeometry": {"multi": [@G]}}})",
         R"([["b.deformerData", "n.deformerData"]])",
         {{R"({"b": {"curvature": {"angle": -180}}})", "curvature is -3.14159265"},
          {R"({"b": {"type": "deformFlare"}})", "deformFlare has no method"}}},
        {"wireCurve",
         R"({"n": {"type": "wire", "envelope": 1, "rotation": 0, "freezeGeometry": true, "baseWire": {"multi": [@C]}, "deformedWire": {"multi": [@C]}, "dropoffDistance": {"multi": [5]},
        "wireLocatorParameter": {"multi": [1.5, 0.5]}, "wireLocatorTwist": {"multi": [{"angle": 0}, {"angle": 10}]}, "input": {"multi": [{"compound": {"inputGeometry": @C}}]}, "outputGeometry": {"multi": [@C]}}})",
         "[]",
         {{R"({"n": {"freezeGeometry": false}})", "freezeGeometry is 0, not 1: the shape at bind time is not known"},
          {R"({"n": {"dropoffDistance": {"multi": [0]}}})",
           "some points are 0 or more away from the wire, its dropoffDistance"},
          {R"({"n": {"scale": {"multi": [2]}}})", "scale[*] is 2, not 1"},
          {R"({"n": {"crossingEffect": 1}})", "crossingEffect is 1, not 0"},
          {R"({"n": {"localInfluence": 0.5}})", "localInfluence is 0.5, not 0"},
          {R"({"n": {"deformedWire": {"multi": [@C, @C]}}})", "deformedWire has 2 elements, not 1: several wires"}}},
        {"wireMesh", // its wire stands at another index than 0
         R"({"n": {"type": "wire", "envelope": 1, "rotation": 0, "freezeGeometry": true, "baseWire": {"multi": {"2": @C}}, "deformedWire": {"multi": {"2": @C}}, "dropoffDistance": {"multi": {"0": 0, "2": 5}},
        "wireLocatorParameter": {"multi": [0.5]}, "wireLocatorTwist": {"multi": [{"angle": 0}]}, "input": {"multi": [{"compound": {"inputGeometry": @G}}]}, "outputGeometry": {"multi": [@G]}, "holder": {"multi": {}, "element": {"curve": null}}}, "g": @h, "c": {"shape": @C}})",
         R"([["g.outputGeometry", "n.input[0].inputGeometry"]])",
         {{R"({"n": {"dropoffDistance": {"multi": {"0": 5, "2": 1}}}})", "some points are 1 or more away"},
          {R"({"n": {"baseWire": {"multi": {"0": @C, "2": null}}}})", "baseWire[2] has no geometry"},
          {R"({"n": {"envelope": 0}})", "envelope is 0, not 1"},
          {R"({"g": {"inputComponents": {"components": ["vtx[1]"]}}})", "not all points are members"}}},
        {"ikRPsolver",
         R"({"|a": {"type": "joint", "message": {"message": null}, "rotate": [{"angle": 0},{"angle": 0},{"angle": 0}], "jointOrient": [{"angle": 0},{"angle": 0},{"angle": 0}], "preferredAngle": [{"angle": 0},{"angle": 0},{"angle": 0}],
        "translate": [0,0,0], "rotateOrder": 0, "scale": [1,1,1], "inverseScale": [1,1,1], "segmentScaleCompensate": true, "parentMatrix": {"multi": [@M]}}, "|a|e": {"type": "ikEffector", "translate": [1,0,0]},
        "s": {"type": "ikRPsolver"}, "|n": {"type": "ikHandle", "ikBlend": 1, "translate": [0,0,0], "poleVector": [0,0,1], "twist": {"angle": 0}, "parentMatrix": {"multi": [@M]}, "startJoint": {"message": null}, "endEffector": {"message": null}, "ikSolver": {"message": null}}})",
         R"([["|a.message", "|n.startJoint"], ["|a|e.message", "|n.endEffector"], ["s.message", "|n.ikSolver"]])",
         {{R"({"|n": {"ikBlend": 0.5}})", "ikBlend is 0.5, not 1: ikBlend mixes in the joints' own rotates"},
          {R"({"s": {"type": "ikMCsolver"}})", "ikMCsolver has no method"},
          {R"({"|n": {"rotatePivot": [1,0,0]}})", "rotatePivot is 1, not 0"}}},
        {"orientConstraint",
         R"({"n": {"type": "orientConstraint", "constraintParentInverseMatrix": @M, "constraintRotateOrder": 0, "constraintJointOrient": @A, "offset": @A, "interpType": 1,
        "restRotate": @A, "constraintRotate": @A, "target": {"multi": [{"compound": {"targetWeight": 1, "targetParentMatrix": @M, "targetRotate": @A, "targetRotateOrder": 0, "targetJointOrient": @A}}]}}})",
         "[]",
         {{R"({"n": {"interpType": 3}})", "interpType is 3, not 0 or 1 or 2: longest or cached interpolation"},
          {R"({"n": {"useOldOffsetCalculation": true}})", "useOldOffsetCalculation is 1, not 0"}}},
        {"aimConstraint",
         R"({"n": {"type": "aimConstraint", "constraintParentInverseMatrix": @M, "constraintTranslate": [0,0,0], "constraintRotatePivot": [0,0,0], "constraintRotateTranslate": [0,0,0],
        "constraintRotateOrder": 0, "constraintJointOrient": @A, "offset": @A, "restRotate": @A, "constraintRotate": @A, "worldUpType": 0, "worldUpMatrix": @M, "worldUpVector": [0,1,0],
        "aimVector": [1,0,0], "upVector": [0,1,0], "target": {"multi": [{"compound": {"targetWeight": 1, "targetParentMatrix": @M, "targetTranslate": [1,0,0], "targetRotatePivot": [0,0,0]}}]}}})",
         "[]",
         {{R"({"n": {"worldUpType": 4}})", "worldUpType is 4, not 0 or 1 or 2 or 3: no world up"}}},
        {"parentConstraintTranslate",
         R"({"n": {"type": "parentConstraint", "constraintParentInverseMatrix": @M, "constraintRotatePivot": [0,0,0], "constraintRotateTranslate": [0,0,0], "restTranslate": [0,0,0], "constraintTranslate": [0,0,0],
        "target": {"multi": [{"compound": {"targetWeight": 1, "targetParentMatrix": @M, "targetTranslate": [0,0,0], "targetOffsetTranslate": [0,0,0], "targetRotatePivot": [0,0,0], "targetRotateTranslate": [0,0,0],
        "targetRotate": @A, "targetRotateOrder": 0, "targetScale": [1,1,1], "targetInverseScale": [1,1,1], "targetScaleCompensate": false, "targetJointOrient": @A}}]}}})",
         "[]",
         {{R"({"n": {"useDecompositionRotateTranslate": true}})", "useDecompositionRotateTranslate is 1, not 0"},
          {R"({"n": {"nodeState": 8}})", "nodeState is 8, not 0: the node is switched off"}}},
        {"parentConstraintRotate",
         R"({"n": {"type": "parentConstraint", "constraintParentInverseMatrix": @M, "constraintRotateOrder": 0, "constraintJointOrient": @A, "interpType": 2, "restRotate": @A, "constraintRotate": @A,
        "enableRestPosition": false, "target": {"multi": [{"compound": {"targetWeight": 1, "targetParentMatrix": @M, "targetRotate": @A, "targetOffsetRotate": @A, "targetRotateOrder": 0, "targetJointOrient": @A}}]}}})",
         "[]",
         {{R"({"n": {"interpType": 4}})", "interpType is 4, not 0 or 1 or 2: longest or cached interpolation"},
          {R"({"n": {"decompRotationToChild": true}})", "decompRotationToChild is 1, not 0"},
          {R"({"n": {"target": {"multi": [{"compound": {"targetWeight": 0}}]}}})",
           "its weights are all 0 and enableRestPosition is off"}}},
        {"scaleConstraint",
         R"({"n": {"type": "scaleConstraint", "constraintParentInverseMatrix": @M, "constraintScaleCompensate": false, "offset": [1,1,1], "restScale": [1,1,1], "constraintScale": [1,1,1], "enableRestPosition": false,
        "target": {"multi": [{"compound": {"targetWeight": 1, "targetParentMatrix": @M, "targetScale": [1,1,1]}}]}}})",
         "[]",
         {{R"({"n": {"target": {"multi": [{"compound": {"targetWeight": 0}}]}}})",
           "its weights are all 0 and enableRestPosition is off"}}},
        {"joint",
         R"({"|n": {"type": "joint", "matrix": @M, "translate": [0,0,0], "rotate": @A, "scale": [1,1,1], "rotateOrder": 0, "jointOrient": @A, "inverseScale": [1,1,1], "segmentScaleCompensate": true}})",
         "[]",
         {{R"({"|n": {"shear": [0,1,0]}})", "shear is 1, not 0: shear"},
          {R"({"|n": {"rotatePivot": [0,0,3]}})", "rotatePivot is 3, not 0"},
          {R"({"|n": {"scalePivot": [3,0,0]}})", "scalePivot is 3, not 0"},
          {R"({"|n": {"rotateAxis": [{"angle": 0}, {"angle": 180}, {"angle": 0}]}})", "rotateAxis turns it"}}},
        {"ikSplineSolver",
         R"({"|a": {"type": "joint", "message": {"message": null}, "rotate": @A, "jointOrient": @A, "translate": [0,0,0], "rotateOrder": 0, "scale": [1,1,1], "inverseScale": [1,1,1],
        "segmentScaleCompensate": true, "parentMatrix": {"multi": [@M]}}, "|a|e": {"type": "ikEffector", "translate": [1,0,0]}, "s": {"type": "ikSplineSolver"},
        "|n": {"type": "ikHandle", "ikBlend": 1, "solverEnable": true, "inCurve": @C, "rootTwistMode": false, "dTwistControlEnable": true, "dWorldUpAxis": 0, "dWorldUpType": 4, "dWorldUpVector": [0,1,0],
        "dWorldUpVectorEnd": [0,1,0], "dWorldUpMatrix": @M, "dWorldUpMatrixEnd": @M, "twist": {"angle": 0}, "rootOnCurve": true, "offset": 0, "roll": {"angle": 0},
        "startJoint": {"message": null}, "endEffector": {"message": null}, "ikSolver": {"message": null}}})",
         R"([["|a.message", "|n.startJoint"], ["|a|e.message", "|n.endEffector"], ["s.message", "|n.ikSolver"]])",
         {{R"({"|n": {"rootOnCurve": false}})", "rootOnCurve is 0, not 1"},
          {R"({"|n": {"offset": 0.5}})", "offset is 0.5, not 0"},
          {R"({"|n": {"roll": {"angle": 180}}})", "roll is 3.14159265"},
          {R"({"|n": {"dWorldUpType": 3}})", "dWorldUpType is 3, not 1, 4 or 6"},
          {R"({"|n": {"inCurve": @D}})", "the degree of inCurve is 7, not 1 to 5"}}},
        {"poleVectorConstraint",
         R"({"n": {"type": "poleVectorConstraint", "constraintParentInverseMatrix": @M, "constraintRotatePivot": [0,0,0], "pivotSpace": @M, "offset": [0,0,0], "constraintTranslate": [1,0,0],
        "target": {"multi": {"2": {"compound": {"targetWeight": 1, "targetParentMatrix": @M, "targetTranslate": [1,0,0], "targetRotatePivot": [0,0,0]}}}}}})",
         "[]",
         {{R"({"n": {"target": {"multi": {"2": {"compound": {"targetWeight": 0.5}}}}}})", "a weight that is not 1"},
          {R"({"n": {"offset": [0,2,0]}})", "offset is 2, not 0"},
          {R"({"n": {"target": {"multi": {"3": {"compound": {"targetWeight": 1}}}}}})",
           "target has 2 elements, not 1: several targets"}}},
        {"closestPointOnSurface",
         R"({"n": {"type": "closestPointOnSurface", "inputSurface": @S, "inPosition": [0,1,0], "parameterU": 0, "parameterV": 0}})",
         "[]",
         {{R"({"n": {"inputSurface": null}})", "it has no plug inputSurface"},
          {R"({"n": {"inputSurface": @7}})", "the degree of inputSurface is 7, not 1 to 5"}}},
        {"curveFromSurfaceIso",
         R"({"n": {"type": "curveFromSurfaceIso", "inputSurface": @S, "isoparmDirection": 0, "isoparmValue": 0, "minValue": 1, "maxValue": -1, "relativeValue": false, "outputCurve": @C}})",
         "[]",
         {{R"({"n": {"relative": true}})", "relative is 1, not 0"},
          {R"({"n": {"inputSurface": @7}})", "the degree of inputSurface is 7, not 1 to 5"}}},
        {"pointOnSurfaceNormal",
         R"({"n": {"type": "pointOnSurfaceInfo", "inputSurface": @S, "parameterU": 0, "parameterV": 0, "turnOnPercentage": false, "normal": [0,1,0]}})",
         "[]",
         {{R"({"n": {"inputSurface": @7}})", "the degree of inputSurface is 7, not 1 to 5"}}},
        {"follicleTranslateSurface",
         R"({"r": {"type": "nurbsSurface", "local": @S}, "n": {"type": "follicle", "inputSurface": {"surface": null}, "parameterU": 0, "parameterV": 0, "outTranslate": [0,0,0], "outRotate": @A}})",
         R"([["r.local", "n.inputSurface"]])",
         {{R"({"r": {"local": @7}})", "the degree of inputSurface is 7, not 1 to 5"}}},
        {"curveInfo",
         R"({"n": {"type": "curveInfo", "inputCurve": @C, "arcLength": 2}})",
         "[]",
         {{R"({"n": {"inputCurve": @D}})", "the degree of inputCurve is 7, not 1 to 5"}}},
        {"decomposeMatrixRotate",
         R"({"n": {"type": "decomposeMatrix", "inputMatrix": @T, "inputRotateOrder": 0, "outputRotate": @A}})",
         "[]",
         {{R"({"n": {"inputMatrix": {"matrix": [1,0,0,0, 0.5,1,0,0, 0,0,1,0, 0,0,0,1]}}})",
           "inputMatrix has scale or shear, which the method leaves in"},
          {R"({"n": {"inputRotateOrder": 1}})", "inputRotateOrder is 1, not 0"}}},
        {"ffdMesh",
         R"({"n": {"type": "ffd", "envelope": 1, "outsideLattice": 1, "deformedLatticePoints": @L, "deformedLatticeMatrix": @M, "baseLatticeMatrix": @M, "local": true, "localInfluenceS": 2,
        "localInfluenceT": 2, "localInfluenceU": 2, "input": {"multi": [{"compound": {"inputGeometry": @G}}]}, "outputGeometry": {"multi": [@G]}}})",
         "[]",
         {{R"({"n": {"envelope": 0.5}})", "envelope is 0.5, not 1"},
          {R"({"n": {"outsideLattice": 0}})", "some points are outside the base lattice, and outsideLattice is not 1"},
          {R"({"n": {"baseLatticePoints": @B}})", "point 7 of the base lattice was moved"}}},
        {"ffdSurface",
         R"({"n": {"type": "ffd", "envelope": 1, "outsideLattice": 1, "deformedLatticePoints": @L, "deformedLatticeMatrix": @M, "baseLatticeMatrix": @M, "baseLatticePoints": @L, "local": true, "localInfluenceS": 2,
        "localInfluenceT": 2, "localInfluenceU": 2, "input": {"multi": [{"compound": {"inputGeometry": @S}}]}, "outputGeometry": {"multi": [@S]}}, "g": @s})",
         R"([["g.outputGeometry", "n.input[0].inputGeometry"]])",
         {{R"({"g": {"inputComponents": {"components": ["cv[0][0:1]"]}}})", "not all points are members"},
          {R"({"n": {"deformedLatticePoints": {"lattice": {"divisions": [12,1,1], "points": [[0,0,0],[0,0,0],[0,0,0],[0,0,0],[0,0,0],[0,0,0],[0,0,0],[0,0,0],[0,0,0],[0,0,0],[0,0,0],[0,0,0]]}}}})",
           "the lattice has 12 by 1 by 1 points, at most 11 each way count"}}},
        {"deformBendPartialMesh",
         R"({"b": {"type": "deformBend", "deformerData": 0, "curvature": {"angle": 30}, "lowBound": -1, "highBound": 1}, "n": {"type": "nonLinear", "deformerData": 0, "envelope": 1, "matrix": @M,
        "input": {"multi": [{"compound": {"inputGeometry": @G}}]}, "outputGeometry": {"multi": [@G]}}, "g": {"type": "groupParts", "inputComponents": {"components": ["vtx[1:2]"]}, "outputGeometry": @G}})",
         R"([["b.deformerData", "n.deformerData"], ["g.outputGeometry", "n.input[0].inputGeometry"]])",
         {{R"({"b": {"curvature": {"angle": -180}}})", "curvature is -3.14159265"},
          {R"({"n": {"input": {"multi": [{"compound": {"inputGeometry": @G, "componentTagExpression": "left"}}]}}})",
           "none of its methods fits what is connected to it"}}},
        {"deformSineCurve",
         R"({"s": {"type": "deformSine", "deformerData": 0, "wavelength": 2, "amplitude": 1, "offset": 0, "lowBound": -1, "highBound": 1, "dropoff": 0},
        "n": {"type": "nonLinear", "deformerData": 0, "envelope": 1, "matrix": @M, "input": {"multi": [{"compound": {"inputGeometry": @C}}]}, "outputGeometry": {"multi": [@C]}}, "g": @g})",
         R"([["s.deformerData", "n.deformerData"], ["g.outputGeometry", "n.input[0].inputGeometry"]])",
         {{R"({"g": {"inputComponents": {"components": ["cv[2]"]}}})", "not all points are members"},
          {R"({"n": {"input": {"multi": [{"compound": {"inputGeometry": @C, "componentTagExpression": "left"}}]}}})",
           "its members are told by the component tags \"left\""}}},
        {"deformSineSurface",
         R"({"s": {"type": "deformSine", "deformerData": 0, "wavelength": 2, "amplitude": 1, "offset": 0, "lowBound": -1, "highBound": 1, "dropoff": 0},
        "n": {"type": "nonLinear", "deformerData": 0, "envelope": 1, "matrix": @M, "input": {"multi": [{"compound": {"inputGeometry": @S}}]}, "outputGeometry": {"multi": [@S]}}})",
         R"([["s.deformerData", "n.deformerData"]])",
         {{R"({"s": {"dropoff": 0.5}})", "dropoff is 0.5, not 0"},
          {R"({"n": {"outputGeometry": {"multi": [@G]}}})", "no method deforms a Mesh"}}},
        {"ikSCsolver",
         R"({"|a": {"type": "joint", "message": {"message": null}, "rotate": @A, "jointOrient": @A, "translate": [0,0,0], "rotateOrder": 0, "scale": [1,1,1], "inverseScale": [1,1,1],
        "segmentScaleCompensate": true, "parentMatrix": {"multi": [@M]}}, "|a|e": {"type": "ikEffector", "translate": [1,0,0]}, "|b": {"type": "joint"}, "s": {"type": "ikSCsolver"},
        "|n": {"type": "ikHandle", "ikBlend": 1, "solverEnable": true, "translate": [0,0,0], "rotate": @A, "rotateOrder": 0, "parentMatrix": {"multi": [@M]}, "startJoint": {"message": null}, "endEffector": {"message": null}, "ikSolver": {"message": null}}})",
         R"([["|a.message", "|n.startJoint"], ["|a|e.message", "|n.endEffector"], ["s.message", "|n.ikSolver"]])",
         {{R"({"|n": {"solverEnable": false}})", "solverEnable is 0, not 1: the solver is off"}}},
        {"expression",
         R"({"n": {"type": "expression", "input": {"multi": [2]}, "output": {"multi": [4]}, "expression": ".O[0] = .I[0] * 2;"}})",
         "[]",
         {{R"({"n": {"expression": ".O[0] = `pwd`;"}})", "line 1"},
          {R"({"n": {"expression": null}})", "its text is not known"}}},
};

TEST_F(ExportTest, EachGuardLeavesOutANodeThatViolatesIt) {
    for (const Case& row : kCases) {
        const json nodes = parsed(row.nodes);
        const json connections = json::parse(row.connections);
        const Exported good = exported(nodes, connections);
        EXPECT_EQ(good.records(row.method), 1U) << row.method << "\n" << good.notes;
        for (const auto& [patch, reason] : row.spoiled) {
            json spoiled = nodes;
            spoiled.merge_patch(parsed(patch));
            const Exported bad = exported(spoiled, connections);
            EXPECT_EQ(bad.records(row.method), 0U) << row.method << " " << patch;
            EXPECT_NE(bad.notes.find(reason), std::string::npos) << row.method << " " << patch << "\n" << bad.notes;
        }
    }
}

// A spline whose tangents are stored, and keys whose tangents follow from their types.
TEST_F(ExportTest, TangentsBecomeNumbers) {
    const auto key = [](double time, double angle) {
        return json{{"compound", {{"keyTime", {{"time", time}}}, {"keyValue", {{"angle", angle}}}}}};
    };
    const json curve{
        {"type", "animCurveTA"},
        {"input", {{"time", 0}}},
        {"output", {{"angle", 0}}},
        {"preInfinity", 1},
        {"postInfinity", 0},
        {"weightedTangents", true},
        {"keyTimeValue", {{"multi", {{"2", key(0, 0)}, {"3", key(10, 90)}, {"5", key(30, 45)}, {"9", key(40, 45)}}}}},
        {"keyTanInType", {{"multi", {{"2", 2}, {"3", 9}, {"5", 3}, {"9", 17}}}}},
        {"keyTanOutType", {{"multi", {{"2", 2}, {"3", 5}, {"5", 2}, {"9", 2}}}}},
        {"keyTanInX", {{"multi", {{"3", 10}}}}},
        {"keyTanInY", {{"multi", {{"3", 180}}}}}};
    const Exported result =
        exported({{"n", curve}, {"time1", {{"type", "time"}, {"outTime", {{"time", 0}}}}}}, json::array());
    ASSERT_EQ(result.manifest.size(), 1U) << result.notes;
    std::map<int, std::vector<double>> numbers;
    for (const json& entry : result.manifest[0]["arguments"]) {
        if (entry.contains("value")) {
            numbers[entry["attribute"]].push_back(entry["value"]);
        }
    }
    constexpr double kPi = 3.141592653589793;
    const std::map<int, std::vector<double>> expected{{3, {10, 10, 20, 0}},    {4, {kPi / 2, kPi, 0, 0}},
                                                      {5, {2, 1, 1, 17}},      {6, {10, 0, 10, 10}},
                                                      {7, {kPi / 2, 0, 0, 0}}, {8, {2, 5, 2, 2}}};
    EXPECT_EQ(numbers, expected);
    EXPECT_NE(result.notes.find("animCurve: its plugs were not confirmed in Maya"), std::string::npos);
}

/// Nodes that feed one another, a chain that never comes to its start, a multi of very many elements, and an index at
/// the end of all.
TEST_F(ExportTest, HostileScenesEnd) {
    json elements = json::object();
    for (int i = 0; i < 50000; ++i) {
        elements[std::to_string(7 * i)] = 1;
    }
    json nodes = json::parse(R"({
        "a": {"type": "addDoubleLinear", "input1": 0, "input2": 1, "output": 1},
        "b": {"type": "addDoubleLinear", "input1": 0, "input2": 1, "output": 1},
        "far": {"type": "plusMinusAverage", "operation": 1, "output1D": 1, "input1D": {"multi": {"4294967295": 1}}},
        "u": {"type": "unitConversion", "input": 0, "conversionFactor": 1, "output": 0},
        "|r": {"type": "joint"}, "|e": {"type": "ikEffector"}, "s": {"type": "ikSCsolver"},
        "|n": {"type": "ikHandle", "startJoint": {"message": null}, "endEffector": {"message": null}, "ikSolver": {"message": null}}})");
    nodes["many"] = {
        {"type", "plusMinusAverage"}, {"operation", 1}, {"output1D", 50000}, {"input1D", {{"multi", elements}}}};
    const json connections =
        json::parse(R"([["a.output", "b.input1"], ["b.output", "u.input"], ["u.output", "a.input1"],
        ["|r.message", "|n.startJoint"], ["|e.message", "|n.endEffector"], ["s.message", "|n.ikSolver"], ["a.output", "many.operation"]])");
    struct : RunProgress {
        void beginRecord(const std::string& node, const std::string& type) override {
            told.push_back(node + " " + type);
        }
        void beginPoints() override {}
        std::vector<std::string> told;
    } progress;
    ExportSettings settings;
    settings.progress = &progress;
    const Exported all = exported(nodes, connections, settings);
    EXPECT_EQ(all.records("addDoubleLinear"), 2U);
    EXPECT_EQ(all.records("plusMinusAverage1D"), 1U) << all.notes;
    EXPECT_NE(all.notes.find("its effector is not below its start joint"), std::string::npos) << all.notes;
    EXPECT_NE(all.notes.find("far.input1D[4294967295] is not found by its name"), std::string::npos);
    EXPECT_EQ(progress.told.size(), nodes.size());
    EXPECT_EQ(std::count(progress.told.begin(), progress.told.end(), "n ikHandle"), 1);
    settings.onlySelected = settings.withHistory = true;
    EXPECT_EQ(exported(nodes, connections, settings, {"many"}).records("addDoubleLinear"), 2U);
}

TEST_F(ExportTest, TakesTheNodesAndMethodsThatAreAsked) {
    const json nodes = json::parse(R"({
        "a:c": {"type": "addDoubleLinear", "input1": 1, "input2": 2, "output": 3},
        "a:r": {"type": "reverse", "input": [0, 0, 0], "output": [-2, 1, 1]},
        "ab:r": {"type": "reverse", "input": [0, 0, 0], "output": [1, 1, 1]}})");
    const json connections = json::parse(R"([["a:c.output", "a:r.input.inputX"]])");
    const struct {
        const char* nameSpace;
        bool isSelected;
        bool hasHistory;
        std::set<std::string> skip, only;
        std::set<std::string> nodes;
    } rows[] = {
        {"", false, false, {}, {}, {"a:c", "a:r", "ab:r"}},
        {"a", false, false, {}, {}, {"c", "r"}},
        {"", true, false, {}, {}, {"a:r"}},
        {"", true, true, {}, {}, {"a:r", "a:c"}},
        {"", false, false, {"reverse"}, {}, {"a:c"}},
        {"a", false, false, {}, {"reverse"}, {"r"}},
        {"ab", true, true, {}, {}, {}},
    };
    for (const auto& row : rows) {
        ExportSettings settings;
        settings.nameSpace = row.nameSpace;
        settings.onlySelected = row.isSelected;
        settings.withHistory = row.hasHistory;
        settings.skip = row.skip;
        settings.only = row.only;
        settings.notes = testing::TempDir() + "notes.txt";
        const Exported result = exported(nodes, connections, settings, {"a:r"});
        std::set<std::string> names;
        for (const json& record : result.manifest) {
            names.insert(record["node_name"].get<std::string>());
        }
        EXPECT_EQ(names, row.nodes) << row.nameSpace << row.isSelected << row.hasHistory;
        EXPECT_EQ(readAll(settings.notes), result.notes);
    }
}

} // namespace
} // namespace zent
