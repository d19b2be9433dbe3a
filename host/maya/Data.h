#pragma once

#include <maya/MDoubleArray.h>
#include <maya/MFloatMatrix.h>
#include <maya/MFloatPointArray.h>
#include <maya/MFn.h>
#include <maya/MIntArray.h>
#include <maya/MMatrix.h>
#include <maya/MObject.h>
#include <maya/MPointArray.h>

#include <array>
#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

/// What the plugs of a scene hold besides plain numbers.
namespace scene {

/// Whatever an MObject can refer to.
struct Object {
    MFn::Type type = MFn::kInvalid;
};

/// Two or three numbers in one; `type` tells how many, and their precision.
struct NumericData : Object {
    std::array<double, 3> values{};
};

struct StringData : Object {
    static constexpr MFn::Type kType = MFn::kStringData;
    std::string text;
};

struct MatrixData : Object {
    static constexpr MFn::Type kType = MFn::kMatrixData;
    MMatrix matrix;
    MFloatMatrix narrowed;
};

struct PointArrayData : Object {
    static constexpr MFn::Type kType = MFn::kPointArrayData;
    MPointArray points;
};

/// Components of one kind, such as "vtx[0:7]": a block of indices in one to three directions, or all there are.
struct Component : Object {
    struct Range {
        int first = 0;
        int last = 0; ///< included
    };
    std::array<Range, 3> ranges{};
    std::size_t directions = 1;
    bool isComplete = false;

    /// How many components it lists; none where it is complete.
    int count() const;
    /// The indices of component `position`, in the order in which the last direction runs fastest.
    std::array<int, 3> at(int position) const;
};

struct ComponentListData : Object {
    static constexpr MFn::Type kType = MFn::kComponentListData;
    std::vector<Component> components;
};

struct GeometryData : Object {
    MMatrix transform; ///< from the geometry's own space to world space
};

/// Lists of different lengths, one after the other; list i ends at ends[i].
struct Lists {
    std::vector<int> values;
    std::vector<std::size_t> ends;

    std::size_t size() const { return ends.size(); }
    std::size_t begin(std::size_t i) const { return i == 0 ? 0 : ends[i - 1]; }
    std::size_t length(std::size_t i) const { return ends[i] - begin(i); }
    int at(std::size_t i, std::size_t position) const { return values[begin(i) + position]; }
    void copyTo(std::size_t i, MIntArray& list) const;
};

struct UvSet {
    std::vector<std::array<float, 2>> uvs;
    Lists polygons; ///< UV indices in the order of each polygon's vertices; an empty list for a polygon without UVs
};

struct MeshData : GeometryData {
    static constexpr MFn::Type kType = MFn::kMeshData;
    /// Shared by all meshes that are made from one block.
    std::shared_ptr<MFloatPointArray> points = std::make_shared<MFloatPointArray>();
    Lists polygons; ///< vertex indices
    std::vector<std::pair<std::string, UvSet>> uvSets;

    /// The polygons that touch each vertex, made at first need.
    const Lists& vertexFaces() const;
    /// The two vertices of each edge, made at first need: edges are numbered as the walk around the polygons meets
    /// them.
    const std::vector<std::array<int, 2>>& edges() const;
    /// The UV set of a name, the first one for none; null if there is no such set.
    const UvSet* uvSet(const std::string* name) const;

private:
    mutable Lists vertexFaces_;
    mutable std::vector<std::array<int, 2>> edges_;
};

struct CurveData : GeometryData {
    static constexpr MFn::Type kType = MFn::kNurbsCurveData;
    int degree = 0;
    int form = 0;
    MPointArray points;
    MDoubleArray knots;
};

struct SurfaceData : GeometryData {
    static constexpr MFn::Type kType = MFn::kNurbsSurfaceData;
    std::array<int, 2> degree{}; ///< U, V
    std::array<int, 2> form{};
    MPointArray points; ///< V running fastest
    std::array<MDoubleArray, 2> knots;
};

struct LatticeData : GeometryData {
    static constexpr MFn::Type kType = MFn::kLatticeData;
    std::array<unsigned int, 3> divisions{}; ///< S, T, U
    MPointArray points;                      ///< S running fastest
};

/// An object as what it is, null if it is something else.
template <class T>
const T* as(const MObject& object) {
    return object.apiType() == T::kType ? static_cast<const T*>(object.object()) : nullptr;
}

/// The geometry in an object, null if it holds none.
const GeometryData* asGeometry(const MObject& object);

/// A point through a matrix, in Maya's row order.
MPoint transformed(const MPoint& point, const MMatrix& matrix);

} // namespace scene
