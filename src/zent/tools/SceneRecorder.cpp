#include "zent/tools/SceneRecorder.h"

#include "zent/methods/SceneNode.h"
#include "zent/rig/Upstream.h"
#include "zent/values/apiTypes.h"
#include "zent/values/Select.h"

#include <maya/MAnimControl.h>
#include <maya/MFnAttribute.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnLattice.h>
#include <maya/MFnLatticeData.h>
#include <maya/MFnMatrixData.h>
#include <maya/MFnMesh.h>
#include <maya/MFnNumericData.h>
#include <maya/MFnNurbsCurve.h>
#include <maya/MFnNurbsSurface.h>
#include <maya/MItDependencyNodes.h>
#include <maya/MItMeshPolygon.h>
#include <maya/MPlugArray.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <exception>
#include <utility>
#include <vector>

namespace zent {

namespace {

using nlohmann::ordered_json;

// The one method whose report walks from a plug to its source's node, and over the mesh there.
constexpr const char* kWalkingMethod = "follicleRotateMesh";
constexpr const char* kUvSetOfReport = "mapSetName";

constexpr const char* kAngleUnits[] = {"", "radians", "degrees", "minutes", "seconds"};
constexpr const char* kTimeUnits[] = {"",     "hours",    "minutes",   "seconds",  "milliseconds", "games",
                                      "film", "palFrame", "ntscFrame", "showScan", "palField",     "ntscField"};
constexpr unsigned int kLargeShape = 1000; // points; a shape of so many goes into a block

constexpr const char* kForms[] = {"open", "open", "closed", "periodic"};

std::string pathOf(const MObject& node) {
    return node.hasFn(MFn::kDagNode) ? MFnDagNode(node).fullPathName().asChar()
                                     : MFnDependencyNode(node).name().asChar();
}

std::string nameIn(const MPlug& plug, bool useAlias) {
    const std::string path = plug.partialName(false, true, true, useAlias, false, true).asChar();
    return path.substr(path.rfind('.') + 1);
}

std::string fullNameOf(const MPlug& plug) {
    return pathOf(plug.node()) + "." + plug.partialName(false, true, true, false, true, true).asChar();
}

/// JSON has no word for what is no number.
ordered_json number(double value) {
    if (std::isnan(value)) {
        return "nan";
    }
    return std::isinf(value) ? ordered_json(value > 0.0 ? "inf" : "-inf") : ordered_json(value);
}

/// Room for as many members. Without it, growing would copy all of them, since their names cannot be moved.
ordered_json& reserved(ordered_json& object, std::size_t count) {
    object.get_ref<ordered_json::object_t&>().reserve(count);
    return object;
}

/// Puts a member at the end of an object that has none of its name. The subscript would look through all members.
ordered_json& append(ordered_json& object, std::string name, ordered_json value) {
    return object.get_ref<ordered_json::object_t&>().emplace_back(std::move(name), std::move(value)).second;
}

template <class Matrix>
ordered_json matrix(const Matrix& values) {
    ordered_json list = ordered_json::array();
    for (unsigned int i = 0; i < 16; ++i) {
        list.push_back(number(static_cast<double>(values(i / 4, i % 4))));
    }
    return list;
}

template <class Point>
ordered_json point(const Point& value) {
    return {number(static_cast<double>(value.x)), number(static_cast<double>(value.y)),
            number(static_cast<double>(value.z))};
}

template <class Array>
ordered_json points(const Array& values) {
    ordered_json list = ordered_json::array();
    for (unsigned int i = 0; i < values.length(); ++i) {
        list.push_back(point(values[i]));
    }
    return list;
}

ordered_json numbers(const MDoubleArray& values) {
    ordered_json list = ordered_json::array();
    for (unsigned int i = 0; i < values.length(); ++i) {
        list.push_back(number(values[i]));
    }
    return list;
}

/// The polygons and UV sets of a mesh as one list of numbers.
std::vector<unsigned int> topologyList(const MObject& data, const MStringArray& names) {
    const MFnMesh fn(data);
    std::vector<unsigned int> counts;
    std::vector<unsigned int> vertices;
    std::vector<std::vector<unsigned int>> uvCounts(names.length());
    std::vector<std::vector<unsigned int>> uvs(names.length());
    for (MItMeshPolygon polygon(data); !polygon.isDone(); polygon.next()) {
        MIntArray corners;
        polygon.getVertices(corners);
        counts.push_back(corners.length());
        for (unsigned int i = 0; i < corners.length(); ++i) {
            vertices.push_back(static_cast<unsigned int>(corners[i]));
        }
        for (unsigned int set = 0; set < names.length(); ++set) {
            const std::size_t before = uvs[set].size();
            int uv = 0;
            for (unsigned int i = 0; i < corners.length() && polygon.getUVIndex(static_cast<int>(i), uv, &names[set]);
                 ++i) {
                uvs[set].push_back(static_cast<unsigned int>(uv));
            }
            uvCounts[set].push_back(static_cast<unsigned int>(uvs[set].size() - before));
        }
    }
    std::vector<unsigned int> list{static_cast<unsigned int>(counts.size())};
    const auto append = [&list](const std::vector<unsigned int>& numbers) {
        list.insert(list.end(), numbers.begin(), numbers.end());
    };
    append(counts);
    append(vertices);
    for (unsigned int set = 0; set < names.length(); ++set) {
        const int count = fn.numUVs(names[set]);
        list.push_back(static_cast<unsigned int>(count));
        for (int i = 0; i < count; ++i) {
            std::array<float, 2> uv{};
            fn.getUV(i, uv[0], uv[1], &names[set]);
            std::array<unsigned int, 2> bits{};
            std::memcpy(bits.data(), uv.data(), sizeof bits);
            list.insert(list.end(), bits.begin(), bits.end());
        }
        append(uvCounts[set]);
        append(uvs[set]);
    }
    return list;
}

void addTopology(const MObject& data, ordered_json& mesh) {
    const MFnMesh fn(data);
    MStringArray names;
    fn.getUVSetNames(names);
    mesh["polygons"] = ordered_json::array();
    mesh["uvSets"] = ordered_json::object();
    for (unsigned int set = 0; set < names.length(); ++set) {
        ordered_json& told = mesh["uvSets"][names[set].asChar()];
        told = {{"uvs", ordered_json::array()}, {"polygons", ordered_json::array()}};
        for (int i = 0; i < fn.numUVs(names[set]); ++i) {
            float u = 0.0f;
            float v = 0.0f;
            fn.getUV(i, u, v, &names[set]);
            told["uvs"].push_back({number(static_cast<double>(u)), number(static_cast<double>(v))});
        }
    }
    for (MItMeshPolygon polygon(data); !polygon.isDone(); polygon.next()) {
        MIntArray vertices;
        polygon.getVertices(vertices);
        mesh["polygons"].push_back(maya::std(vertices));
        for (unsigned int set = 0; set < names.length(); ++set) {
            ordered_json corners = ordered_json::array();
            int uv = 0;
            for (unsigned int i = 0; i < vertices.length() && polygon.getUVIndex(static_cast<int>(i), uv, &names[set]);
                 ++i) {
                corners.push_back(uv);
            }
            mesh["uvSets"][names[set].asChar()]["polygons"].push_back(std::move(corners));
        }
    }
}

ordered_json curve(const MObject& data) {
    const MFnNurbsCurve fn(data);
    MPointArray list;
    MDoubleArray knots;
    fn.getCVs(list, MSpace::kObject);
    fn.getKnots(knots);
    return {{"degree", fn.degree()}, {"form", kForms[fn.form()]}, {"knots", numbers(knots)}, {"points", points(list)}};
}

ordered_json surface(const MObject& data) {
    const MFnNurbsSurface fn(data);
    MPointArray list;
    MDoubleArray knotsU;
    MDoubleArray knotsV;
    fn.getCVs(list, MSpace::kObject);
    fn.getKnotsInU(knotsU);
    fn.getKnotsInV(knotsV);
    return {{"degree", {fn.degreeU(), fn.degreeV()}},
            {"form", {kForms[fn.formInU()], kForms[fn.formInV()]}},
            {"knotsU", numbers(knotsU)},
            {"knotsV", numbers(knotsV)},
            {"points", points(list)}};
}

ordered_json lattice(const MObject& data) {
    MFnLattice fn(MFnLatticeData(data).lattice());
    unsigned int s = 0;
    unsigned int t = 0;
    unsigned int u = 0;
    fn.getDivisions(s, t, u);
    ordered_json list = ordered_json::array();
    for (unsigned int k = 0; s * t != 0 && k < u; ++k) {
        for (unsigned int j = 0; j < t; ++j) {
            for (unsigned int i = 0; i < s; ++i) {
                list.push_back(point(fn.point(i, j, k)));
            }
        }
    }
    return {{"divisions", {s, t, u}}, {"points", std::move(list)}};
}

ordered_json numeric(const MPlug& plug) {
    const MObject object = plug.asMObject();
    const MFnNumericData data(object);
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
    float xf = 0.0f;
    float yf = 0.0f;
    float zf = 0.0f;
    switch (object.apiType()) {
    case MFn::kData2Double:
        data.getData2Double(x, y);
        return {{"double2", {number(x), number(y)}}};
    case MFn::kData3Double:
        data.getData3Double(x, y, z);
        return {{"double3", {number(x), number(y), number(z)}}};
    case MFn::kData2Float:
        data.getData2Float(xf, yf);
        return {{"float2", {number(static_cast<double>(xf)), number(static_cast<double>(yf))}}};
    case MFn::kData3Float:
        data.getData3Float(xf, yf, zf);
        return {{"float3",
                 {number(static_cast<double>(xf)), number(static_cast<double>(yf)), number(static_cast<double>(zf))}}};
    default:
        return {{"number", number(plug.asDouble())}};
    }
}

const char* kindOf(const MObject& data) {
    switch (data.apiType()) {
    case MFn::kNurbsCurveData:
        return "curve";
    case MFn::kNurbsSurfaceData:
        return "surface";
    case MFn::kLatticeData:
        return "lattice";
    default:
        return "mesh";
    }
}

/// The kind of geometry that would come over a plug's connections.
const char* kindOfSource(MPlug plug) {
    for (int step = 0; step < 1000 && plug.asMDataHandle().data().isNull() && plug.isDestination(); ++step) {
        plug = plug.source();
    }
    return kindOf(plug.asMDataHandle().data());
}

/// What the elements of a multi that has none would be.
ordered_json blank(const MPlug& multi) {
    switch (static_cast<int>(multi.attribute().apiType())) {
    case kDoubleAngleAttribute:
    case kFloatAngleAttribute:
        return {{"angle", 0}};
    case kTimeAttribute:
        return {{"time", 0}};
    default:
        return 0;
    }
}

unsigned int childPosition(const MPlug& compound, const MPlug& child) {
    unsigned int position = 0;
    while (position < compound.numChildren() && compound.child(position) != child) {
        ++position;
    }
    return position;
}

bool fitsFloats(const ordered_json& value) {
    return value.is_structured() ? std::all_of(value.begin(), value.end(), fitsFloats)
                                 : !value.is_number() || static_cast<double>(value.get<float>()) == value.get<double>();
}

/// Whether a shape is worth a block, and keeps all bits of its numbers there.
bool isLarge(const ordered_json& shape) {
    return shape["points"].size() >= kLargeShape && fitsFloats(shape);
}

/// Whether two floats are one, and so are what a log shows of them.
bool isSame(float a, float b) {
    return (a == b && std::signbit(a) == std::signbit(b)) || (std::isnan(a) && std::isnan(b));
}

bool isSame(const mat4& a, const mat4& b) {
    for (int i = 0; i < 16; ++i) {
        if (!isSame(a[i / 4][i % 4], b[i / 4][i % 4])) {
            return false;
        }
    }
    return true;
}

template <class T>
bool isSameShape(const MPlug& a, const MPlug& b) {
    ResourceWriter one;
    ResourceWriter other;
    one.add(shape_value<T>(a));
    other.add(shape_value<T>(b));
    return one.bytes() == other.bytes();
}

bool isMatrix(const MPlug& plug) {
    const auto type = static_cast<int>(plug.attribute().apiType());
    return type == kFloatMatrixAttribute || type == kOtherFloatMatrixAttribute || type == MFn::kMatrixAttribute ||
           (type == kTypedAttribute && plug.asMDataHandle().data().apiType() == MFn::kMatrixData);
}

/// Data that is null at the end of a connection stays so, and is read at its source.
bool dataReadsAlike(const MPlug& a, const MPlug& b) {
    if (b.asMDataHandle().data().isNull()) {
        return true;
    }
    const MFn::Type type = a.asMDataHandle().data().apiType();
    if (type != b.asMDataHandle().data().apiType()) {
        return false;
    }
    switch (type) {
    case MFn::kMeshData:
        return isSameShape<Mesh>(a, b);
    case MFn::kNurbsCurveData:
        return isSameShape<Curve>(a, b);
    case MFn::kNurbsSurfaceData:
        return isSameShape<Surface>(a, b);
    case MFn::kLatticeData:
        return isSameShape<Lattice>(a, b);
    default:
        return type == MFn::kStringData && a.asString() == b.asString();
    }
}

bool numbersReadAlike(const MPlug& a, const MPlug& b) {
    const ordered_json one = numeric(a);
    const ordered_json other = numeric(b);
    if (one.front().size() != other.front().size()) {
        return false;
    }
    for (std::size_t i = 0; one.front().is_array() && i < one.front().size(); ++i) {
        const ordered_json& x = one.front()[i];
        const ordered_json& y = other.front()[i];
        const bool areNumbers = x.is_number() && y.is_number();
        if (!(areNumbers ? isSame(x.get<float>(), y.get<float>()) : x == y)) {
            return false;
        }
    }
    return one.front().is_array() || isSame(a.asFloat(), b.asFloat());
}

/// Whether a check reads the same from both plugs, and both are of one kind.
bool readsAlike(const MPlug& a, const MPlug& b) {
    if (a.isArray() != b.isArray() || a.isCompound() != b.isCompound()) {
        return false;
    }
    if (a.isArray()) {
        for (unsigned int i = 0; i < b.numElements(); ++i) {
            const MPlug element = b.elementByPhysicalIndex(i);
            if (!readsAlike(a.elementByLogicalIndex(element.logicalIndex()), element)) {
                return false;
            }
        }
        return true;
    }
    if (a.isCompound()) {
        bool areAlike = a.numChildren() == b.numChildren();
        for (unsigned int i = 0; areAlike && i < a.numChildren(); ++i) {
            areAlike = readsAlike(a.child(i), b.child(i));
        }
        return areAlike;
    }
    if (isMatrix(a) || isMatrix(b)) {
        return isMatrix(a) && isMatrix(b) && isSame(mat4_value(a), mat4_value(b));
    }
    const auto kind = [](const MPlug& plug) {
        const auto type = static_cast<int>(plug.attribute().apiType());
        return type == kFloatAngleAttribute ? kDoubleAngleAttribute
               : type == kDoubleAngleAttribute || type == kTimeAttribute || type == kTypedAttribute ? type
               : type == MFn::kMessageAttribute ? static_cast<int>(MFn::kMessageAttribute)
                                                : 0; // a number
    };
    if (kind(a) != kind(b)) {
        return false;
    }
    switch (kind(a)) {
    case kDoubleAngleAttribute:
        return isSame(float_value(a), float_value(b));
    case kTimeAttribute:
        return a.asMTime().unit() == b.asMTime().unit() && isSame(float_value(a), float_value(b));
    case kTypedAttribute:
        return dataReadsAlike(a, b);
    case MFn::kMessageAttribute:
        return true;
    default:
        return numbersReadAlike(a, b);
    }
}

constexpr std::array<const char*, 6> kMatrices{"matrix",      "inverseMatrix",      "parentMatrix",
                                               "worldMatrix", "worldInverseMatrix", "parentInverseMatrix"};
/// What they come of.
constexpr std::array<const char*, 16> kOfMatrices{
    "matrix",      "parentMatrix", "worldMatrix",          "inheritsTransform",  "translate", "rotate",
    "rotateOrder", "scale",        "jointOrient",          "inverseScale",       "shear",     "segmentScaleCompensate",
    "rotatePivot", "scalePivot",   "rotatePivotTranslate", "scalePivotTranslate"};

bool isMatrixOfDag(const MPlug& plug) {
    const std::string name = MFnAttribute(plug.attribute()).name().asChar();
    return plug.node().hasFn(MFn::kDagNode) && std::find(kMatrices.begin(), kMatrices.end(), name) != kMatrices.end();
}

template <class Visit>
void eachEntry(const nlohmann::json& record, const char* list, Visit&& visit) {
    const auto found = record.find(list);
    if (found == record.end() || !found->is_structured()) {
        return;
    }
    for (const nlohmann::json& entry : *found) {
        const auto name = entry.is_object() ? entry.find("name") : entry.end();
        const auto value = name != entry.end() || !entry.is_object() ? name : entry.find("value");
        if (value != entry.end() && value->is_string()) {
            visit(value->get_ref<const std::string&>());
        }
    }
}

} // namespace

SceneRecorder::SceneRecorder(const nlohmann::json& manifest) {
    for (const nlohmann::json& record : manifest) {
        if (!record.is_object()) {
            continue; // an error of the check, with or without a scene
        }
        const bool walks = record.value("method", nlohmann::json()) == kWalkingMethod;
        eachEntry(record, "arguments", [&](const std::string& name) { addName(name, walks); });
        eachEntry(record, "results", [&](const std::string& name) {
            addName(name, false);
            if (walks) {
                addName(name.substr(0, name.find('.')) + "." + kUvSetOfReport, false);
            }
        });
    }
    addUpstream();
    addConnections();
}

void SceneRecorder::addName(const std::string& name, bool asSourceMesh) {
    if (!names_.emplace(name, asSourceMesh).second) {
        return;
    }
    const MPlug plug = findPlug(name);
    if (plug.isNull()) {
        addNamesakes(name);
        return;
    }
    Part& part = add(plug);
    part.isWhole = true;
    addSource(part, asSourceMesh);
    read_.push_back(plug);
}

/// What a chained check follows from plug to plug, and what it makes the matrices of transforms from.
void SceneRecorder::addUpstream() {
    std::set<std::string> passed;
    for (std::vector<MPlug> left = read_; !left.empty();) {
        const MPlug plug = left.back();
        left.pop_back();
        if (plug.isNull() || !passed.insert(fullNameOf(plug)).second) {
            continue;
        }
        Part& part = add(plug);
        if (!part.isWhole) {
            part.isWhole = true;
            addSource(part, false);
        }
        if (const auto step = rig::stepUp(plug)) {
            left.push_back(step->plug);
        }
        if (const auto matrix = rig::matrixAbove(plug)) {
            left.push_back(*matrix);
        }
        const std::vector<MPlug> children = rig::numbersIn(plug);
        left.insert(left.end(), children.begin(), children.end());
        const SceneNode node(plug.node());
        if (node.type() == "unitConversion") {
            left.push_back(node.plug("conversionFactor"));
        }
        if (isMatrixOfDag(plug)) {
            for (const char* attribute : kOfMatrices) {
                const MPlug own = node.plug(attribute);
                left.push_back(!own.isNull() && own.isArray() ? own.elementByLogicalIndex(0) : own);
            }
            if (const auto matrix = rig::worldMatrixAbove(node.object())) {
                left.push_back(*matrix);
            }
        }
    }
}

/// A name that fits several nodes must not fit one of them alone.
void SceneRecorder::addNamesakes(const std::string& name) {
    const std::string node = inNamespace(name.substr(0, name.find('.')));
    const std::string last = node.substr(node.rfind('|') + 1);
    const std::string end = !node.empty() && node.front() == '|' ? node : "|" + node;
    if (dagNodes_.empty()) {
        for (MItDependencyNodes it(MFn::kDagNode); !it.isDone(); it.next()) {
            dagNodes_.emplace(MFnDependencyNode(it.thisNode()).name().asChar(), it.thisNode());
        }
    }
    const auto [first, beyond] = dagNodes_.equal_range(last);
    for (auto namesake = first; namesake != beyond; ++namesake) {
        const std::string path = pathOf(namesake->second);
        if (path.size() >= end.size() && path.compare(path.size() - end.size(), end.size(), end) == 0) {
            recordOf(namesake->second);
        }
    }
}

SceneRecorder::Record& SceneRecorder::recordOf(const MObject& object) {
    const auto [found, isNew] = nodes_.try_emplace(pathOf(object));
    Record& record = found->second;
    if (isNew) {
        record.node = object;
        const MFnDependencyNode node(object);
        for (unsigned int i = 0; i < node.attributeCount(); ++i) {
            record.positions.emplace(MFnAttribute(node.attribute(i)).name().asChar(), i);
        }
    }
    return record;
}

SceneRecorder::Part& SceneRecorder::add(const MPlug& plug) {
    Part* part = nullptr;
    if (plug.isElement()) {
        part = &add(plug.array()).below[plug.logicalIndex()];
    } else if (plug.isChild()) {
        const MPlug parent = plug.parent();
        part = &add(parent).below[childPosition(parent, plug)];
    } else {
        Record& record = recordOf(plug.node());
        const auto position = record.positions.find(MFnAttribute(plug.attribute()).name().asChar());
        const bool isListed = position != record.positions.end(); // every node's "message" is not
        part = &record.attributes[isListed ? position->second : static_cast<unsigned int>(record.positions.size())];
    }
    part->plug = plug;
    return *part;
}

const SceneRecorder::Part* SceneRecorder::find(const MPlug& plug) const {
    const bool isElement = plug.isElement();
    if (isElement || plug.isChild()) {
        const MPlug above = isElement ? plug.array() : plug.parent();
        const Part* part = find(above);
        if (part == nullptr || part->isWhole) {
            return part;
        }
        const auto below = part->below.find(isElement ? plug.logicalIndex() : childPosition(above, plug));
        return below == part->below.end() ? nullptr : &below->second;
    }
    const auto record = nodes_.find(pathOf(plug.node()));
    if (record == nodes_.end()) {
        return nullptr;
    }
    const auto position = record->second.positions.find(MFnAttribute(plug.attribute()).name().asChar());
    const auto part = position == record->second.positions.end() ? record->second.attributes.end()
                                                                 : record->second.attributes.find(position->second);
    return part == record->second.attributes.end() ? nullptr : &part->second;
}

void SceneRecorder::addSource(Part& part, bool asSourceMesh) {
    const bool isTyped = static_cast<int>(part.plug.attribute().apiType()) == kTypedAttribute;
    if (!isTyped || part.plug.isArray() || !part.plug.isDestination()) {
        return;
    }
    const MObject data = part.plug.asMDataHandle().data();
    part.isPlaceholder = asSourceMesh && data.apiType() == MFn::kMeshData;
    if (!data.isNull() && !part.isPlaceholder) {
        return;
    }
    const MPlug source = part.plug.source();
    connections_.emplace(fullNameOf(source), fullNameOf(part.plug));
    Part& above = add(source);
    const bool isKnown = above.isWhole && (above.hasTopology || !asSourceMesh);
    above.isWhole = true;
    above.hasTopology = above.hasTopology || asSourceMesh;
    if (!isKnown) {
        addSource(above, asSourceMesh);
    }
}

void SceneRecorder::addConnections() {
    std::vector<MObject> read;
    for (const auto& [path, record] : nodes_) {
        read.push_back(record.node);
    }
    std::vector<MPlug> fed; // found before any is added, which makes plugs and nodes of its own
    for (const MObject& node : read) {
        MPlugArray plugs;
        MFnDependencyNode(node).getConnections(plugs);
        for (unsigned int i = 0; i < plugs.length(); ++i) {
            const bool isFed = plugs[i].isDestination();
            if (isFed && (find(plugs[i]) != nullptr || nodes_.count(pathOf(plugs[i].source().node())) != 0)) {
                fed.push_back(plugs[i]);
            }
        }
    }
    for (const MPlug& plug : fed) {
        addConnectionsInto(plug);
    }
}

/// The connection into a plug, with the conversions on the way: each of them has its values on its own plugs.
void SceneRecorder::addConnectionsInto(const MPlug& fed) {
    const MPlug first = fed.source();
    std::set<std::string> passed;
    for (MPlug end = fed; !end.isNull() && passed.insert(fullNameOf(end)).second;) {
        const MPlug source = end.sourceWithConversion();
        if (source.isNull() || !addConnection(source, end)) {
            break;
        }
        end = source == first ? MPlug() : MFnDependencyNode(source.node()).findPlug("input", true);
    }
}

/// False where the plug does not read what its source has, which a connection would make it.
bool SceneRecorder::addConnection(const MPlug& source, const MPlug& fed) {
    if (connections_.count({fullNameOf(source), fullNameOf(fed)}) != 0) {
        return true;
    }
    if (!readsAlike(source, fed)) {
        return false;
    }
    // Whole, so that a place in one is the same place in the other.
    add(source).isWhole = true;
    Part& part = add(fed);
    part.isWhole = true;
    part.isPlaceholder = static_cast<int>(fed.attribute().apiType()) == kTypedAttribute && !fed.isArray() &&
                         fed.asMDataHandle().data().apiType() == MFn::kMeshData;
    connections_.emplace(fullNameOf(source), fullNameOf(fed));
    return true;
}

ordered_json SceneRecorder::toldShape(const Part& part, const MObject& data, ResourceWriter& shapes) {
    switch (data.apiType()) {
    case MFn::kMeshData: {
        if (part.isPlaceholder) {
            return {{"points", ordered_json::array()}};
        }
        MFloatPointArray list;
        MFnMesh(data).getPoints(list, MSpace::kObject);
        ordered_json told;
        if (list.length() < kLargeShape) {
            told["points"] = points(list);
        } else {
            told["id"] = shapes.add(shape_value<Mesh>(part.plug));
        }
        if (part.hasTopology && list.length() < kLargeShape) {
            addTopology(data, told);
        } else if (part.hasTopology) {
            MStringArray names;
            MFnMesh(data).getUVSetNames(names);
            told["topology"] = {{"id", shapes.add(topologyList(data, names))}};
            told["uvSets"] = ordered_json::array();
            for (unsigned int set = 0; set < names.length(); ++set) {
                told["uvSets"].push_back(names[set].asChar());
            }
        }
        return told;
    }
    case MFn::kNurbsCurveData: {
        ordered_json told = curve(data);
        return isLarge(told) ? ordered_json{{"id", shapes.add(shape_value<Curve>(part.plug))}} : told;
    }
    case MFn::kNurbsSurfaceData: {
        ordered_json told = surface(data);
        return isLarge(told) ? ordered_json{{"id", shapes.add(shape_value<Surface>(part.plug))}} : told;
    }
    default: {
        ordered_json told = lattice(data);
        return isLarge(told) ? ordered_json{{"id", shapes.add(shape_value<Lattice>(part.plug))}} : told;
    }
    }
}

ordered_json SceneRecorder::toldData(const Part& part, ResourceWriter& shapes) {
    MDataHandle handle = part.plug.asMDataHandle();
    const MObject data = handle.data();
    switch (data.apiType()) {
    case MFn::kMatrixData:
        return {{"matrixData", matrix(MFnMatrixData(data).matrix())}};
    case MFn::kStringData:
        return {{"text", part.plug.asString().asChar()}};
    case MFn::kMeshData:
    case MFn::kNurbsCurveData:
    case MFn::kNurbsSurfaceData:
    case MFn::kLatticeData:
        break;
    default:
        return {{kindOfSource(part.plug), nullptr}};
    }
    ordered_json shape = toldShape(part, data, shapes);
    shape["matrix"] = matrix(handle.geometryTransformMatrix());
    return {{kindOf(data), std::move(shape)}};
}

ordered_json SceneRecorder::told(const Part& part, ResourceWriter& shapes) {
    const MPlug& plug = part.plug;
    const auto type = static_cast<int>(plug.attribute().apiType());
    ordered_json value;
    if (plug.isArray()) {
        value = {{"multi", ordered_json::object()}};
        std::map<unsigned int, Part> elements = part.below;
        for (unsigned int i = 0; part.isWhole && i < plug.numElements(); ++i) {
            const MPlug element = plug.elementByPhysicalIndex(i);
            Part& known = elements[element.logicalIndex()];
            known.plug = element;
            known.isWhole = true;
        }
        ordered_json& list = reserved(value["multi"], elements.size());
        for (const auto& [index, element] : elements) {
            append(list, std::to_string(index), told(element, shapes));
        }
        if (elements.empty()) {
            value["element"] = blank(plug);
        }
    } else if (plug.isCompound()) {
        value = {{"compound", ordered_json::object()}};
        std::map<unsigned int, Part> children = part.below;
        for (unsigned int i = 0; part.isWhole && i < plug.numChildren(); ++i) {
            children[i].plug = plug.child(i);
            children[i].isWhole = true;
        }
        ordered_json& list = reserved(value["compound"], children.size());
        for (const auto& [position, child] : children) {
            append(list, nameIn(child.plug, false), told(child, shapes));
        }
    } else if (type == kDoubleAngleAttribute || type == kFloatAngleAttribute) {
        const MAngle angle = plug.asMAngle();
        value = {{"angle", number(angle.value())}, {"unit", kAngleUnits[angle.unit()]}, {"type", type}};
    } else if (type == kTimeAttribute) {
        const MTime time = plug.asMTime();
        value = {{"time", number(time.value())}, {"unit", kTimeUnits[time.unit()]}};
    } else if (type == kTypedAttribute) {
        value = toldData(part, shapes);
    } else if (type == kFloatMatrixAttribute || type == kOtherFloatMatrixAttribute) {
        value = {{"floatMatrix", matrix(plug.asMDataHandle().asFloatMatrix())}, {"type", type}};
    } else if (type == MFn::kMatrixAttribute) {
        value = {{"matrix", matrix(plug.asMDataHandle().asMatrix())}};
    } else if (type == MFn::kMessageAttribute) {
        value = {{"message", nullptr}};
    } else {
        value = numeric(plug);
    }
    if (plug.isElement()) {
        const auto plain = value.find("number");
        return plain != value.end() && plain->is_number() ? ordered_json(*plain) : value;
    }
    const MFnAttribute attribute(plug.attribute());
    const std::string name = attribute.name().asChar();
    if (const std::string other = attribute.shortName().asChar(); other != name) {
        value["short"] = other;
    }
    if (const std::string alias = nameIn(plug, true); alias != nameIn(plug, false)) {
        value["alias"] = alias;
    }
    return value;
}

ordered_json SceneRecorder::scene(ResourceWriter& shapes, const std::string& resource) const {
    const MTime time = MAnimControl::currentTime();
    ordered_json file{{"resource", resource},
                      {"time", {{"time", number(time.value())}, {"unit", kTimeUnits[time.unit()]}}},
                      {"nodes", ordered_json::object()},
                      {"connections", ordered_json::array()}};
    ordered_json& nodes = reserved(file["nodes"], nodes_.size());
    for (const auto& [path, record] : nodes_) {
        ordered_json& node = reserved(append(nodes, path, ordered_json::object()), record.attributes.size() + 1);
        if (const std::string type = MFnDependencyNode(record.node).typeName().asChar();
            type.compare(0, 7, "unknown") != 0) {
            node["type"] = type;
        }
        for (const auto& [position, part] : record.attributes) {
            const std::string name = nameIn(part.plug, false);
            if (static_cast<int>(part.plug.attribute().apiType()) != MFn::kMessageAttribute || name != "message") {
                append(node, name == "type" ? ".type" : name, told(part, shapes));
            }
        }
    }
    for (const auto& [source, destination] : connections_) {
        file["connections"].push_back({source, destination});
    }
    if (shapes.size() == 0) {
        file.erase("resource");
    }
    return file;
}

} // namespace zent
