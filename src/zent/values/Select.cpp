#include "zent/values/Select.h"

#include "zent/values/apiTypes.h"

#include <boost/algorithm/string/predicate.hpp>
#include <boost/algorithm/string/replace.hpp>
#include <fmt/format.h>

#include <maya/MDataHandle.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnLattice.h>
#include <maya/MFnLatticeData.h>
#include <maya/MFnMatrixData.h>
#include <maya/MFnMesh.h>
#include <maya/MFnNumericData.h>
#include <maya/MFnNurbsCurve.h>
#include <maya/MFnNurbsSurface.h>
#include <maya/MGlobal.h>
#include <maya/MSelectionList.h>

#include <stdexcept>
#include <string_view>
#include <unordered_set>
#include <utility>

namespace zent {

namespace {

float narrow(double value) {
    return static_cast<float>(value);
}

template <class Point>
vec3 narrowPoint(const Point& point) {
    return {static_cast<float>(point.x), static_cast<float>(point.y), static_cast<float>(point.z)};
}

/// Maya's rows become glm's columns: the 16 numbers keep their order.
template <class Matrix>
mat4 narrowMatrix(const Matrix& matrix) {
    mat4 result(0.0f);
    for (unsigned int row = 0; row < 4; ++row) {
        for (unsigned int column = 0; column < 4; ++column) {
            result[static_cast<int>(row)][static_cast<int>(column)] = static_cast<float>(matrix(row, column));
        }
    }
    return result;
}

template <class T, class Array>
std::vector<T> narrowValues(const Array& values) {
    std::vector<T> list(values.length());
    for (unsigned int i = 0; i < values.length(); ++i) {
        list[i] = static_cast<T>(values[i]);
    }
    return list;
}

template <class Array>
std::vector<vec3> narrowPoints(const Array& points) {
    std::vector<vec3> list;
    list.reserve(points.length());
    for (unsigned int i = 0; i < points.length(); ++i) {
        list.push_back(narrowPoint(points[i]));
    }
    return list;
}

int attributeType(const MPlug& plug) {
    return static_cast<int>(plug.attribute().apiType());
}

int dataType(const MPlug& plug) {
    return static_cast<int>(plug.asMDataHandle().data().apiType());
}

/// The plug of a top-level attribute, a null plug if the node or the attribute does not exist.
MPlug attributePlug(std::string_view node, std::string_view attribute) {
    MSelectionList list;
    MGlobal::getSelectionListByName(toMaya(node), list);
    MObject object;
    list.getDependNode(0, object);
    return MFnDependencyNode(object).findPlug(toMaya(attribute), true);
}

/// Steps from a plug to its children.
class Descent {
public:
    explicit Descent(const MPlug& plug) : plug_(plug) {}

    const MPlug& plug() const { return plug_; }
    void enter(const MPlug& plug) {
        plug_ = plug;
        names_.clear();
    }
    /// To the child of a name. No such child yields the plug itself: deliberate, manifests name parents through it.
    void toChild(std::string_view name) {
        if (!names_.empty() && names_.count(std::string(name)) == 0) {
            return;
        }
        for (unsigned int i = 0; i < plug_.numChildren(); ++i) {
            if (const MPlug child = plug_.child(i); lastOf(pathOf(child)) == name) {
                enter(child);
                return;
            }
        }
        for (unsigned int i = 0; i < plug_.numChildren(); ++i) {
            names_.emplace(lastOf(pathOf(plug_.child(i))));
        }
    }

private:
    static MString pathOf(const MPlug& child) { return child.partialName(false, true, true, false, false, true); }
    static std::string_view lastOf(const MString& path) {
        const std::string_view text = path.asChar();
        return text.substr(text.rfind('.') + 1); // the whole path where it has no "."
    }

    MPlug plug_;
    std::unordered_set<std::string> names_; ///< of all its children, once it was asked for one that it does not have
};

/// The element that a part such as "weights[3]" asks for, the plug itself for a part without an index.
MPlug elementPlug(const MPlug& plug, std::string_view part) {
    const std::size_t bracket = part.find('[');
    if (bracket == std::string_view::npos) {
        return plug;
    }
    const std::string_view index = part.substr(bracket + 1, part.find(']', bracket) - bracket - 1);
    return plug.elementByLogicalIndex(static_cast<unsigned int>(toMaya(index).asInt()));
}

std::string_view withoutIndex(std::string_view part) {
    return part.substr(0, part.find('['));
}

mat4 geometryMatrix(const MDataHandle& handle) {
    return narrowMatrix(handle.geometryTransformMatrix());
}

} // namespace

std::string namescope;

MString toMaya(std::string_view text) {
    return MString(text.data(), static_cast<int>(text.size()));
}

std::string inNamespace(std::string name) {
    if (namescope.empty()) {
        return name;
    }
    boost::algorithm::replace_all(name, "|", "|" + namescope + ":");
    return boost::algorithm::starts_with(name, "|") ? name : namescope + ":" + name;
}

MPlug findPlug(std::string name) {
    name = inNamespace(std::move(name));
    // A name with no "." stands for both the node and its attribute.
    const std::string_view whole = name;
    const std::string_view node = whole.substr(0, whole.find('.'));
    std::string_view path = node.size() == whole.size() ? whole : whole.substr(node.size() + 1);
    std::string_view part = path.substr(0, path.find('.'));

    Descent descent(elementPlug(attributePlug(node, withoutIndex(part)), part));
    while (part.size() < path.size()) {
        path.remove_prefix(part.size() + 1);
        part = path.substr(0, path.find('.'));
        descent.toChild(withoutIndex(part));
        if (const MPlug element = elementPlug(descent.plug(), part); !(element == descent.plug())) {
            descent.enter(element);
        }
    }
    return descent.plug();
}

MPlug selectPlug(std::string name) {
    const MPlug plug = findPlug(name);
    if (plug.isNull()) {
        const std::string text = fmt::format("Cannot find plug \"{}\"", inNamespace(std::move(name)));
        MGlobal::displayError(toMaya(text));
        throw std::runtime_error(text);
    }
    return plug;
}

MPlug mayaShapePlug(const std::string& name) {
    const MPlug plug = selectPlug(name);
    if (!plug.asMDataHandle().data().isNull()) {
        return plug;
    }
    if (!plug.isDestination()) {
        throw std::runtime_error(fmt::format("plug {} is null", name));
    }
    return plug.source();
}

MDagPath sourceDagPath(const std::string& name) {
    const MPlug plug = selectPlug(name);
    if (!plug.isDestination()) {
        throw std::runtime_error(fmt::format("plug {} has no source", name));
    }
    MDagPath path;
    MDagPath::getAPathTo(plug.source().node(), path);
    return path;
}

float float_value(const MPlug& plug) {
    switch (attributeType(plug)) {
    case kDoubleAngleAttribute:
    case kFloatAngleAttribute:
        return narrow(plug.asMAngle().asRadians());
    case kTimeAttribute:
        return narrow(plug.asMTime().value());
    default:
        return plug.asFloat();
    }
}

vec2 vec2_value(const MPlug& plug) {
    if (plug.isCompound()) {
        return {float_value(plug.child(0)), float_value(plug.child(1))};
    }
    const MFnNumericData data(plug.asMObject());
    if (dataType(plug) == kData2Double) {
        double x = 0.0;
        double y = 0.0;
        data.getData2Double(x, y);
        return {narrow(x), narrow(y)};
    }
    vec2 result(0.0f);
    data.getData2Float(result.x, result.y);
    return result;
}

vec3 vec3_value(const MPlug& plug) {
    if (plug.isCompound()) {
        return {float_value(plug.child(0)), float_value(plug.child(1)), float_value(plug.child(2))};
    }
    const MFnNumericData data(plug.asMObject());
    if (dataType(plug) == kData3Double) {
        double x = 0.0;
        double y = 0.0;
        double z = 0.0;
        data.getData3Double(x, y, z);
        return {narrow(x), narrow(y), narrow(z)};
    }
    vec3 result(0.0f);
    data.getData3Float(result.x, result.y, result.z);
    return result;
}

vec4 vec4_value(const MPlug& plug) {
    return {float_value(plug.child(0)), float_value(plug.child(1)), float_value(plug.child(2)),
            float_value(plug.child(3))};
}

mat4 mat4_value(const MPlug& plug) {
    MDataHandle handle = plug.asMDataHandle();
    switch (attributeType(plug)) {
    case kTypedAttribute:
        return narrowMatrix(MFnMatrixData(handle.data()).matrix());
    case kFloatMatrixAttribute:
    case kOtherFloatMatrixAttribute:
        return narrowMatrix(handle.asFloatMatrix());
    default:
        return narrowMatrix(handle.asMatrix());
    }
}

template <>
Mesh shape_value<Mesh>(const MPlug& plug) {
    const MDataHandle handle = plug.asMDataHandle();
    MFloatPointArray points;
    MFnMesh(handle.asMesh()).getPoints(points, MSpace::kObject);
    return Mesh(maya::pointsToStd(points), geometryMatrix(handle));
}

template <>
Curve shape_value<Curve>(const MPlug& plug) {
    const MDataHandle handle = plug.asMDataHandle();
    const MFnNurbsCurve curve(handle.asNurbsCurve());
    MPointArray points;
    MDoubleArray knots;
    curve.getCVs(points, MSpace::kObject);
    curve.getKnots(knots);
    return Curve(static_cast<unsigned>(curve.degree()), static_cast<unsigned>(curve.form()), maya::pointsToStd(points),
                 maya::std(knots), geometryMatrix(handle));
}

template <>
Surface shape_value<Surface>(const MPlug& plug) {
    const MDataHandle handle = plug.asMDataHandle();
    const MFnNurbsSurface surface(handle.asNurbsSurface());
    MDoubleArray knotsU;
    MDoubleArray knotsV;
    MPointArray points;
    surface.getKnotsInU(knotsU);
    surface.getKnotsInV(knotsV);
    surface.getCVs(points, MSpace::kObject);
    return Surface(static_cast<unsigned>(surface.degreeU()), static_cast<unsigned>(surface.degreeV()),
                   static_cast<unsigned>(surface.formInU()), static_cast<unsigned>(surface.formInV()),
                   maya::std(knotsU), maya::std(knotsV), maya::pointsToStd(points), geometryMatrix(handle));
}

template <>
Lattice shape_value<Lattice>(const MPlug& plug) {
    MDataHandle handle = plug.asMDataHandle();
    MFnLattice points(MFnLatticeData(handle.data()).lattice());
    Lattice lattice;
    points.getDivisions(lattice.s, lattice.t, lattice.u);
    const bool isEmpty = lattice.s == 0 || lattice.t == 0; // and may have any number of layers
    for (unsigned int u = 0; !isEmpty && u < lattice.u; ++u) {
        for (unsigned int t = 0; t < lattice.t; ++t) {
            for (unsigned int s = 0; s < lattice.s; ++s) {
                lattice.points.push_back(narrowPoint(points.point(s, t, u)));
            }
        }
    }
    const mat4 matrix = geometryMatrix(handle);
    lattice.matrixLinear = mat3(matrix);
    lattice.translation = vec3(matrix[3]);
    return lattice;
}

namespace maya {

std::vector<float> std(const MDoubleArray& values) {
    return narrowValues<float>(values);
}

std::vector<float> std(const MFloatArray& values) {
    return narrowValues<float>(values);
}

std::vector<int> std(const MIntArray& values) {
    return narrowValues<int>(values);
}

std::vector<vec3> pointsToStd(const MFloatPointArray& points) {
    return narrowPoints(points);
}

std::vector<vec3> pointsToStd(const MPointArray& points) {
    return narrowPoints(points);
}

} // namespace maya

} // namespace zent
