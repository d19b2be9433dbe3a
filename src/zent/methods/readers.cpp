#include "zent/methods/Context.h"

#include "zent/expression/compileExpression.h"
#include "zent/methods/plugName.h"
#include "zent/nodes/nearestPointOnCurve.h"
#include "zent/values/Select.h"

#include <fmt/format.h>

#include <maya/MAngle.h>
#include <maya/MDataHandle.h>
#include <maya/MFnAnimCurve.h>
#include <maya/MFnComponentListData.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnDoubleIndexedComponent.h>
#include <maya/MFnMesh.h>
#include <maya/MFnPointArrayData.h>
#include <maya/MFnSingleIndexedComponent.h>
#include <maya/MFnTripleIndexedComponent.h>
#include <maya/MIntArray.h>
#include <maya/MItDependencyNodes.h>
#include <maya/MItMeshPolygon.h>
#include <maya/MPlugArray.h>
#include <maya/MPointArray.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <set>

namespace zent {

namespace {

using Entries = std::vector<MadeEntry>;

/// One of a rig's lists that never ends by mistake.
constexpr std::size_t kMostSteps = 10000;

template <class T>
MadeEntry block(const Context& context, const T& record, std::vector<unsigned int> indices = {}) {
    return {std::move(indices), fmt::format("{{\"id\": {}}}", context.resource.add(record)), ""};
}

template <class T>
Entries literals(const std::vector<T>& values) {
    Entries entries;
    for (const T value : values) {
        entries.push_back({{}, fmt::format("{}", value), ""});
    }
    return entries;
}

MObject dataOf(const MPlug& plug) {
    return shapePlug(plug).asMDataHandle().data();
}

/// How many points a direction has; for components with several indices.
struct Directions {
    int v = 0;
    int s = 0;
    int t = 0;
};

Directions directionsOf(const Context& context) {
    const MPlug input = context.plug("input[g].inputGeometry");
    const std::string kind = input.isNull() ? "" : shapeKind(input);
    Directions directions;
    if (kind == "Surface") {
        directions.v = static_cast<int>(shape_value<Surface>(shapePlug(input)).cvCountV());
    } else if (kind == "Lattice") {
        const Lattice lattice = shape_value<Lattice>(shapePlug(input));
        directions.s = static_cast<int>(lattice.s);
        directions.t = static_cast<int>(lattice.t);
    }
    return directions;
}

/// The indices of a component, in its order. Nothing where it stands for all there are.
std::optional<std::vector<unsigned int>> indicesOfComponent(const MObject& component, const Directions& directions) {
    const MFnComponent any(component);
    if (any.isComplete()) {
        return std::nullopt;
    }
    MIntArray first;
    MIntArray second;
    MIntArray third;
    std::vector<unsigned int> indices;
    switch (any.componentType()) {
    case MFn::kSurfaceCVComponent:
        MFnDoubleIndexedComponent(component).getElements(first, second);
        for (unsigned int i = 0; i < first.length(); ++i) {
            indices.push_back(static_cast<unsigned int>(first[i] * directions.v + second[i]));
        }
        break;
    case MFn::kLatticeComponent:
        MFnTripleIndexedComponent(component).getElements(first, second, third);
        for (unsigned int i = 0; i < first.length(); ++i) {
            indices.push_back(
                static_cast<unsigned int>((third[i] * directions.t + second[i]) * directions.s + first[i]));
        }
        break;
    default:
        MFnSingleIndexedComponent(component).getElements(first);
        for (unsigned int i = 0; i < first.length(); ++i) {
            indices.push_back(static_cast<unsigned int>(first[i]));
        }
    }
    return indices;
}

/// The indices of a plug's component list, in its order. Nothing where it stands for all there are.
std::optional<std::vector<unsigned int>> componentIndices(const MPlug& plug, const Directions& directions) {
    const MObject data = plug.isNull() ? MObject() : plug.asMDataHandle().data();
    std::vector<unsigned int> all;
    const MFnComponentListData list(data);
    for (unsigned int i = 0; !data.isNull() && i < list.length(); ++i) {
        const auto indices = indicesOfComponent(list[i], directions);
        if (!indices) {
            return std::nullopt;
        }
        all.insert(all.end(), indices->begin(), indices->end());
    }
    return all;
}

// ---- paths of edges -------------------------------------------------------------------------------------------------

/// The vertices along edges that make one path, from the end that the first edges are nearer to; a closed path repeats
/// its first vertex.
std::vector<unsigned int> verticesAlong(const MPlug& meshPlug, const std::vector<unsigned int>& edges) {
    const MFnMesh mesh(dataOf(meshPlug));
    std::map<int, std::vector<std::size_t>> edgesAt;
    std::vector<std::pair<int, int>> ends;
    for (const unsigned int edge : edges) {
        int2 vertices{};
        if (static_cast<int>(edge) >= mesh.numEdges() ||
            mesh.getEdgeVertices(static_cast<int>(edge), vertices).error()) {
            throw LeftOut(fmt::format("the mesh has no edge {}", edge));
        }
        edgesAt[vertices[0]].push_back(ends.size());
        edgesAt[vertices[1]].push_back(ends.size());
        ends.emplace_back(vertices[0], vertices[1]);
    }
    if (ends.empty()) {
        throw LeftOut("no edges are listed");
    }
    int start = ends.front().first;
    bool isOpen = false;
    for (std::size_t i = 0; i < ends.size() && !isOpen; ++i) {
        for (const int vertex : {ends[i].first, ends[i].second}) {
            if (!isOpen && edgesAt[vertex].size() == 1) {
                start = vertex;
                isOpen = true;
            }
        }
    }
    std::vector<unsigned int> path{static_cast<unsigned int>(start)};
    std::vector<bool> isWalked(ends.size(), false);
    for (int at = start; path.size() <= ends.size();) {
        const std::vector<std::size_t>& around = edgesAt[at];
        const auto next = std::find_if(around.begin(), around.end(), [&](std::size_t edge) { return !isWalked[edge]; });
        if (next == around.end() || around.size() > 2) {
            throw LeftOut("its edges are no single path");
        }
        isWalked[*next] = true;
        at = ends[*next].first == at ? ends[*next].second : ends[*next].first;
        path.push_back(static_cast<unsigned int>(at));
    }
    return path;
}

Entries edgeVertices(const Context& context, const Source&) {
    const auto edge = static_cast<unsigned int>(numberOf(context.requiredPlug("edgeIndex[0]"), 0.0));
    return {block(context, verticesAlong(context.requiredPlug("inputMesh"), {edge}))};
}

Entries pathVertices(const Context& context, const Source&) {
    const auto edges = componentIndices(context.requiredPlug("inputComponents"), {});
    if (!edges) {
        throw LeftOut("its edges are all of the mesh");
    }
    return {block(context, verticesAlong(context.requiredPlug("inputPolymesh"), *edges))};
}

// ---- deformers ------------------------------------------------------------------------------------------------------

Entries skinWeights(const Context& context, const Source&) {
    // The block tells the place in the list of matrices, the plug the logical index.
    std::map<unsigned int, unsigned int> placeOf;
    for (const unsigned int index : indicesOf(context.plug("matrix"))) {
        placeOf.emplace(index, static_cast<unsigned int>(placeOf.size()));
    }
    SkinWeights weights;
    const MPlug input = context.requiredPlug("input[g].inputGeometry");
    std::vector<bool> isWeighted(pointsAt(input, shapeKind(input)).points.size());
    const MPlug list = context.requiredPlug("weightList");
    for (const unsigned int point : indicesOf(list)) {
        const MPlug row = list.elementByLogicalIndex(point).child(0);
        for (const unsigned int influence : indicesOf(row)) {
            const auto weight = static_cast<float>(numberOf(row.elementByLogicalIndex(influence), 0.0));
            const auto place = placeOf.find(influence);
            if (weight == 0.0f) {
                continue;
            }
            if (place == placeOf.end()) {
                throw LeftOut(
                    fmt::format("point {} has a weight of influence {}, which has no matrix", point, influence));
            }
            weights.emplace_back(point, place->second, weight);
            if (point < isWeighted.size()) {
                isWeighted[point] = true;
            }
        }
    }
    // Maya leaves such a point where it is, the method takes it to the origin.
    const auto bare = std::find(isWeighted.begin(), isWeighted.end(), false);
    if (bare != isWeighted.end()) {
        throw LeftOut(fmt::format("point {} has no weight", bare - isWeighted.begin()));
    }
    return {block(context, weights)};
}

/// Calls for each item of a blend shape's targets: target index, item index, the item's plug.
template <class Call>
void eachTargetItem(const Context& context, Call call) {
    const std::string group = "inputTarget[g].inputTargetGroup";
    for (const unsigned int target : indicesOf(context.plug(group))) {
        const std::string item = fmt::format("{}[{}].inputTargetItem", group, target);
        for (const unsigned int index : indicesOf(context.plug(item))) {
            call(target, index, fmt::format("{}[{}]", item, index));
        }
    }
}

bool hasShape(const MPlug& plug) {
    return !plug.isNull() && plug.isDestination();
}

Entries targetShapes(const Context& context, const Source&) {
    Entries entries;
    eachTargetItem(context, [&](unsigned int target, unsigned int index, const std::string& item) {
        if (const MPlug shape = context.plug(item + ".inputGeomTarget"); hasShape(shape)) {
            entries.push_back({{target, index}, "", context.names.plugName(shape)});
        }
    });
    return entries;
}

Entries targetDeltas(const Context& context, const Source&) {
    Entries entries;
    const Directions directions = directionsOf(context);
    eachTargetItem(context, [&](unsigned int target, unsigned int index, const std::string& item) {
        const MPlug points = context.plug(item + ".inputPointsTarget");
        if (hasShape(context.plug(item + ".inputGeomTarget")) || points.isNull()) {
            return;
        }
        const MObject data = points.asMDataHandle().data();
        MPointArray moves;
        if (!data.isNull()) {
            MFnPointArrayData(data).copyTo(moves);
        }
        auto indices = componentIndices(context.plug(item + ".inputComponentsTarget"), directions);
        if (indices && indices->size() != moves.length()) {
            throw LeftOut(fmt::format("target {} moves {} points and lists {} components", target, moves.length(),
                                      indices->size()));
        }
        DeltaList deltas;
        for (unsigned int i = 0; i < moves.length(); ++i) {
            const MPoint& move = moves[i];
            deltas.emplace_back(indices ? (*indices)[i] : i, vec3(move.x, move.y, move.z));
        }
        entries.push_back(block(context, deltas, {target, index}));
    });
    return entries;
}

Entries targetWeights(const Context& context, const Source&) {
    Entries entries;
    const std::string group = "inputTarget[g].inputTargetGroup";
    for (const unsigned int target : indicesOf(context.plug(group))) {
        const MPlug weights = context.plug(fmt::format("{}[{}].targetWeights", group, target));
        WeightMap map;
        for (const unsigned int point : indicesOf(weights)) {
            map.emplace(point, static_cast<float>(numberOf(weights.elementByLogicalIndex(point), 1.0)));
        }
        if (!map.empty()) {
            entries.push_back(block(context, map, {target}));
        }
    }
    return entries;
}

Entries members(const Context& context, const Source&) {
    std::vector<unsigned int> points = membersOf(context).points;
    if (membersOf(context).areAll) {
        const MPlug input = context.requiredPlug("input[g].inputGeometry");
        const std::size_t count = pointsAt(input, shapeKind(input)).points.size();
        for (unsigned int i = 0; i < count; ++i) {
            points.push_back(i);
        }
    }
    return {block(context, points)};
}

/// A cluster's weights. One that no plug has is 1, also of a point that the cluster does not move: such a point has 0.
Entries memberWeights(const Context& context, const Source&) {
    const Members members = membersOf(context);
    const MPlug input = context.requiredPlug("input[g].inputGeometry");
    const std::size_t count = members.areAll ? 0 : pointsAt(input, shapeKind(input)).points.size();
    Entries entries;
    std::set<unsigned int> told(members.points.begin(), members.points.end());
    for (const FoundPlug& weight : findPlugs(context.node, "weightList[g].weights[#]", context.geometry)) {
        if (members.areAll || told.count(weight.indices.front()) != 0) {
            entries.push_back({weight.indices, "", context.names.plugName(weight.plug)});
        }
    }
    for (unsigned int point = 0; point < count; ++point) {
        if (told.count(point) == 0) {
            entries.push_back({{point}, "0", ""});
        }
    }
    return entries;
}

mat3 frameAlong(vec3 tangent) {
    const vec3 along = glm::normalize(tangent);
    const vec3 away = std::abs(along.x) < 0.6f ? vec3(1, 0, 0) : vec3(0, 1, 0);
    const vec3 side = glm::normalize(glm::cross(along, away));
    return {along, side, glm::cross(along, side)};
}

Entries wireBindings(const Context& context, const Source&) {
    const MPlug input = context.requiredPlug("input[g].inputGeometry");
    const PlacedPoints shape = pointsAt(input, shapeKind(input));
    const Curve base = shape_value<Curve>(shapePlug(context.requiredPlug("baseWire[.deformedWire]")));
    const CurveSamples samples = closestSamples(base);
    WireBindings bindings;
    for (const vec3 point : shape.points) {
        const float u = getClosetPointOnCurve(base, samples, vec3(shape.matrix * vec4(point, 1.0f)));
        bindings.emplace_back(0.0f, u, frameAlong(base.dPdU(u)));
    }
    return {block(context, bindings)};
}

// ---- others ---------------------------------------------------------------------------------------------------------

Entries restCurve(const Context& context, const Source&) {
    return {block(context, shape_value<Curve>(context.requiredPlug("local")))};
}

/// The node that tells the scene's time.
SceneNode timeNode(const Context& context) {
    std::optional<MObject>& node = context.findings.timeNode;
    if (!node) {
        node = MObject();
        for (MItDependencyNodes nodes; !nodes.isDone() && node->isNull(); nodes.next()) {
            node = SceneNode(nodes.thisNode()).type() == "time" ? nodes.thisNode() : MObject();
        }
    }
    if (node->isNull()) {
        throw LeftOut("the scene has no node that tells the time");
    }
    return SceneNode(*node);
}

Entries curveInput(const Context& context, const Source&) {
    const MPlug input = context.requiredPlug("input");
    // An unconnected curve over time follows the scene's time, which its plug does not tell.
    const bool isOverTime = context.node.type().compare(0, 10, "animCurveT") == 0;
    if (!isOverTime || input.isDestination()) {
        return {{{}, "", context.names.plugName(input)}};
    }
    return {{{}, "", context.names.plugName(findPlug(timeNode(context), "outTime", 0))}};
}

/// What a curve has for each of its keys, which must be those that its plugs tell.
template <class Read>
Entries forEachKey(const Context& context, Read&& read) {
    const MFnAnimCurve curve(context.node.object());
    const unsigned int keys = curve.numKeys();
    if (keys != indicesOf(context.plug("keyTimeValue")).size()) {
        throw LeftOut(fmt::format("it has {} keys, and other elements of keyTimeValue", keys));
    }
    std::vector<decltype(read(curve, 0))> values;
    for (unsigned int key = 0; key < keys; ++key) {
        values.push_back(read(curve, key));
    }
    return literals(values);
}

/// Most tangents follow from a key's neighbours, and no plug holds them.
template <bool isIn, bool isY>
Entries tangents(const Context& context, const Source&) {
    return forEachKey(context, [](const MFnAnimCurve& curve, unsigned int key) {
        MFnAnimCurve::TangentValue x = 0;
        MFnAnimCurve::TangentValue y = 0;
        if (curve.getTangent(key, x, y, isIn).error() || !std::isfinite(x) || !std::isfinite(y)) {
            throw LeftOut(fmt::format("the {} tangent of key {} is not known", isIn ? "in" : "out", key));
        }
        const MFnAnimCurve::AnimCurveType type = curve.animCurveType();
        const bool isAngle = type == MFnAnimCurve::kAnimCurveTA || type == MFnAnimCurve::kAnimCurveUA;
        return !isY ? x : isAngle ? MAngle(y, MAngle::uiUnit()).asRadians() : y; // as keys' values are read
    });
}

/// The number that the method knows a type of tangents by: that of the attribute, not of the function set.
int tangentNumber(MFnAnimCurve::TangentType type) {
    switch (type) {
    case MFnAnimCurve::kTangentLinear:
        return 2;
    case MFnAnimCurve::kTangentStep:
        return 5;
    case MFnAnimCurve::kTangentStepNext:
        return 17;
    default: // a cubic, by its tangents alone
        return 1;
    }
}

template <bool isIn>
Entries tangentTypes(const Context& context, const Source&) {
    return forEachKey(context, [](const MFnAnimCurve& curve, unsigned int key) {
        return tangentNumber(isIn ? curve.inTangentType(key) : curve.outTangentType(key));
    });
}

/// The text of an expression, with a name for each slot: as the text writes it, or that of the plug.
struct ExpressionSlots {
    std::string text;
    std::vector<std::string> inputs;
    std::vector<std::string> outputs;
    std::vector<std::string> clocks; ///< "time" and "frame", as far as the text reads them
};

std::string plainName(const MPlug& plug) {
    return plug.isNull() ? "" : SceneNode(plug.node()).name() + "." + longPlugName(plug);
}

/// The long name of the plug that a text calls so, or the text's name itself.
std::string longNameOf(const std::string& written) {
    const std::size_t dot = written.find('.');
    try {
        return dot == std::string::npos || dot == 0 ? written : plainName(selectPlug(written));
    } catch (const std::runtime_error&) {
        return written;
    }
}

void useWrittenNames(std::vector<std::string>& slots, const std::vector<std::string>& written) {
    for (const std::string& name : written) {
        const auto slot = std::find(slots.begin(), slots.end(), longNameOf(name));
        if (slot != slots.end()) {
            *slot = name;
        }
    }
}

/// The indices in use of a multi, which must be 0, 1, 2 ...: slots are numbered so.
std::size_t slotCount(const Context& context, const char* multi) {
    const std::vector<unsigned int> indices = indicesOf(context.plug(multi));
    if (!indices.empty() && indices.back() + 1 != indices.size()) {
        throw LeftOut(fmt::format("its {} has gaps", multi));
    }
    return indices.size();
}

ExpressionSlots slotsOf(const Context& context) {
    ExpressionSlots slots;
    const MPlug text = context.plug("expression");
    slots.text = text.isNull() ? "" : std::string(text.asString().asChar());
    if (slots.text.empty()) {
        throw LeftOut("its text is not known");
    }
    const ExpressionNames names = namesInExpression(slots.text);
    if (names.error) {
        throw LeftOut(toText(*names.error));
    }
    const std::size_t inputs = slotCount(context, "input");
    for (unsigned int i = 0; i < inputs; ++i) {
        slots.inputs.push_back(plainName(context.plug("input").elementByLogicalIndex(i).source()));
    }
    const std::size_t outputs = slotCount(context, "output");
    for (unsigned int i = 0; i < outputs; ++i) {
        MPlugArray fed;
        context.plug("output").elementByLogicalIndex(i).destinations(fed);
        slots.outputs.push_back(fed.length() == 0 ? "" : plainName(fed[0]));
    }
    useWrittenNames(slots.inputs, names.inputs);
    useWrittenNames(slots.outputs, names.outputs);
    for (const char* clock : {"time", "frame"}) {
        if (std::find(names.inputs.begin(), names.inputs.end(), clock) != names.inputs.end()) {
            slots.clocks.emplace_back(clock);
        }
    }
    return slots;
}

Entries expressionInputs(const Context& context, const Source&) {
    const ExpressionSlots slots = slotsOf(context);
    Entries entries;
    for (unsigned int i = 0; i < slots.inputs.size(); ++i) {
        entries.push_back({{}, "", context.names.plugName(context.plug("input").elementByLogicalIndex(i))});
    }
    for (const std::string& clock : slots.clocks) {
        entries.push_back({{}, "", context.names.plugName(context.requiredPlug(clock))});
    }
    return entries;
}

Program programOf(const Context& context) {
    ExpressionSlots slots = slotsOf(context);
    slots.inputs.insert(slots.inputs.end(), slots.clocks.begin(), slots.clocks.end());
    CompiledExpression compiled = compileExpression(slots.text, slots.inputs, slots.outputs);
    if (compiled.error) {
        throw LeftOut(toText(*compiled.error));
    }
    return std::move(compiled.program);
}

Entries expressionCode(const Context& context, const Source&) {
    return {block(context, programOf(context).code)};
}

Entries expressionConstants(const Context& context, const Source&) {
    return {block(context, programOf(context).constants)};
}

template <std::vector<int> FaceUnderFollicle::*List>
Entries faceList(const Context& context, const Source&) {
    return literals(faceUnderFollicle(context).*List);
}

Entries faceUVs(const Context& context, const Source&) {
    Entries entries;
    for (const vec2 uv : faceUnderFollicle(context).uvs) {
        entries.push_back({{}, fmt::format("[{}, {}]", uv.x, uv.y), ""});
    }
    return entries;
}

using Reader = Entries (*)(const Context& context, const Source& source);
const std::map<std::string, Reader> kReaders = {
    {"edgeVertices", edgeVertices},
    {"pathVertices", pathVertices},
    {"skinWeights", skinWeights},
    {"targetShapes", targetShapes},
    {"targetDeltas", targetDeltas},
    {"targetWeights", targetWeights},
    {"members", members},
    {"memberWeights", memberWeights},
    {"wireBindings", wireBindings},
    {"restCurve", restCurve},
    {"curveInput", curveInput},
    {"inTangentX", tangents<true, false>},
    {"inTangentY", tangents<true, true>},
    {"inTangentType", tangentTypes<true>},
    {"outTangentX", tangents<false, false>},
    {"outTangentY", tangents<false, true>},
    {"outTangentType", tangentTypes<false>},
    {"expressionInputs", expressionInputs},
    {"expressionCode", expressionCode},
    {"expressionConstants", expressionConstants},
    {"faceVertices", faceList<&FaceUnderFollicle::vertices>},
    {"faceUVs", faceUVs},
    {"ringCounts", faceList<&FaceUnderFollicle::counts>},
    {"ringFaces", faceList<&FaceUnderFollicle::faces>},
    {"ringNeighbours", faceList<&FaceUnderFollicle::neighbours>},
    {"ringSizes", faceList<&FaceUnderFollicle::sizes>},
    {"ringVertices", faceList<&FaceUnderFollicle::ring>},
};

// ---- the face under a follicle --------------------------------------------------------------------------------------

bool isInside(vec2 point, const std::vector<vec2>& polygon) {
    bool inside = false;
    for (std::size_t i = 0, j = polygon.size() - 1; i < polygon.size(); j = i++) {
        const vec2 a = polygon[i];
        const vec2 b = polygon[j];
        if ((a.y > point.y) != (b.y > point.y) && point.x < (b.x - a.x) * (point.y - a.y) / (b.y - a.y) + a.x) {
            inside = !inside;
        }
    }
    return inside;
}

std::vector<int> toList(const MIntArray& array) {
    std::vector<int> list;
    for (unsigned int i = 0; i < array.length(); ++i) {
        list.push_back(array[i]);
    }
    return list;
}

} // namespace

static FaceUnderFollicle findFace(const Context& context) {
    const MObject data = dataOf(context.requiredPlug("inputMesh"));
    const MFnMesh mesh(data);
    const MPlug setName = context.plug("mapSetName");
    const MString set = setName.isNull() ? MString() : setName.asString();
    const MString* uvSet = set.length() == 0 ? nullptr : &set;
    const vec2 at(numberOf(context.requiredPlug("parameterU"), 0.0), numberOf(context.requiredPlug("parameterV"), 0.0));

    FaceUnderFollicle face;
    std::vector<std::vector<int>> polygons;
    for (MItMeshPolygon polygon(data); !polygon.isDone(); polygon.next()) {
        MIntArray corners;
        polygon.getVertices(corners);
        polygons.push_back(toList(corners));
        std::vector<vec2> uvs;
        for (unsigned int i = 0; face.vertices.empty() && i < corners.length(); ++i) {
            int uv = -1;
            vec2 value(0.0f);
            if (polygon.getUVIndex(static_cast<int>(i), uv, uvSet).error() ||
                mesh.getUV(uv, value.x, value.y, uvSet).error()) {
                uvs.clear();
                break;
            }
            uvs.push_back(value);
        }
        if (!uvs.empty() && isInside(at, uvs)) {
            face.vertices = polygons.back();
            face.uvs = uvs;
        }
    }
    if (face.vertices.size() != 4) {
        throw LeftOut(face.vertices.empty()
                          ? fmt::format("no face of the mesh is at ({}, {})", at.x, at.y)
                          : fmt::format("the face under it has {} corners, not 4", face.vertices.size()));
    }
    // The ring: all faces that share a corner with it, by their places in this list.
    std::vector<const std::vector<int>*> ring;
    for (const std::vector<int>& polygon : polygons) {
        if (std::find_first_of(polygon.begin(), polygon.end(), face.vertices.begin(), face.vertices.end()) !=
            polygon.end()) {
            ring.push_back(&polygon);
            face.sizes.push_back(static_cast<int>(polygon.size()));
            face.ring.insert(face.ring.end(), polygon.begin(), polygon.end());
        }
    }
    for (const int vertex : face.vertices) {
        int count = 0;
        for (std::size_t place = 0; place < ring.size(); ++place) {
            const std::vector<int>& polygon = *ring[place];
            const auto corner = std::find(polygon.begin(), polygon.end(), vertex);
            if (corner == polygon.end()) {
                continue;
            }
            const auto size = polygon.size();
            const auto position = static_cast<std::size_t>(corner - polygon.begin());
            face.faces.push_back(static_cast<int>(place));
            face.neighbours.push_back(polygon[(position + size - 1) % size]);
            face.neighbours.push_back(polygon[(position + 1) % size]);
            ++count;
        }
        face.counts.push_back(count);
    }
    return face;
}

const FaceUnderFollicle& faceUnderFollicle(const Context& context) {
    auto& known = context.findings.face;
    if (!known || !(known->first == context.node.object())) {
        known.emplace(context.node.object(), findFace(context));
    }
    return known->second;
}

MPlug shapePlug(const MPlug& plug) {
    if (!plug.asMDataHandle().data().isNull()) {
        return plug;
    }
    if (!plug.isDestination()) {
        throw LeftOut(plug.partialName(false, true, true, false, true, true).asChar() +
                      std::string(" has no geometry"));
    }
    return plug.source();
}

std::string shapeKind(const MPlug& plug) {
    if (plug.isNull()) {
        return "";
    }
    MObject data = plug.asMDataHandle().data();
    if (data.isNull() && plug.isDestination()) {
        data = plug.source().asMDataHandle().data();
    }
    switch (data.apiType()) {
    case MFn::kMeshData:
        return "Mesh";
    case MFn::kNurbsCurveData:
        return "Curve";
    case MFn::kNurbsSurfaceData:
        return "Surface";
    case MFn::kLatticeData:
        return "Lattice";
    default:
        return "";
    }
}

template <class T>
static PlacedPoints placed(const MPlug& plug) {
    const T shape = shape_value<T>(shapePlug(plug));
    const auto& points = pointsOf(shape);
    PlacedPoints result{{points.begin(), points.end()}, mat4(shape.matrixLinear)};
    result.matrix[3] = vec4(shape.translation, 1.0f);
    return result;
}

PlacedPoints pointsAt(const MPlug& plug, const std::string& kind) {
    return kind == "Mesh"      ? placed<Mesh>(plug)
           : kind == "Curve"   ? placed<Curve>(plug)
           : kind == "Surface" ? placed<Surface>(plug)
           : kind == "Lattice" ? placed<Lattice>(plug)
                               : throw LeftOut("its input has no geometry");
}

Members membersOf(const Context& context) {
    const MPlug expression = context.plug("input[g].componentTagExpression");
    const std::string tag = expression.isNull() ? "" : std::string(expression.asString().asChar());
    if (!tag.empty() && tag != "*") {
        throw LeftOut("its members are told by the component tags \"" + tag + "\"");
    }
    const MPlug input = context.requiredPlug("input[g].inputGeometry");
    const MPlug source = input.source();
    if (source.isNull() || SceneNode(source.node()).type() != "groupParts") {
        return {};
    }
    auto points = componentIndices(SceneNode(source.node()).plug("inputComponents"), directionsOf(context));
    if (!points) {
        return {};
    }
    std::sort(points->begin(), points->end());
    points->erase(std::unique(points->begin(), points->end()), points->end());
    const std::size_t count = pointsAt(input, shapeKind(input)).points.size();
    return {points->size() >= count, *points};
}

std::vector<SceneNode> walk(const SceneNode& node, const std::string& name) {
    if (name == "effector") {
        return {node.sourceOf("endEffector")};
    }
    if (name == "bend" || name == "sine") {
        return {node.sourceOf("deformerData")};
    }
    if (name == "handle") {
        const MPlug matrix = node.plug("matrix");
        return {node.sourceOf(!matrix.isNull() && matrix.isDestination() ? "matrix" : "weightedMatrix")};
    }
    // The joints from the effector's parent up to the start joint, turned round.
    const SceneNode root = node.sourceOf("startJoint");
    const SceneNode effector = node.sourceOf("endEffector");
    std::vector<SceneNode> chain;
    MObject at = effector.object();
    do {
        at = at.hasFn(MFn::kDagNode) ? MFnDagNode(at).parent(0) : MObject();
        if (at.isNull() || !at.hasFn(MFn::kDependencyNode) || chain.size() > kMostSteps) {
            throw LeftOut("its effector is not below its start joint");
        }
        chain.emplace_back(at);
    } while (!(at == root.object()));
    std::reverse(chain.begin(), chain.end());
    if (name == "root") {
        return {chain.front()};
    }
    if (name == "rest") {
        chain.erase(chain.begin());
    }
    return chain;
}

Entries makeEntries(const Context& context, const Source& reader) {
    return kReaders.at(reader.text)(context, reader);
}

} // namespace zent
