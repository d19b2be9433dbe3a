#pragma once

#include "zent/expression/Value.h"
#include "zent/geometry/shapes.h"
#include "zent/geometry/weights.h"
#include "zent/math/types.h"

#include <maya/MDagPath.h>
#include <maya/MPlug.h>
#include <nlohmann/json.hpp>

#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace zent {

using json = nlohmann::json;
class ResourceStorage;

/// Where a value stands in its record, for the texts of errors.
struct Place {
    const char* list = nullptr; ///< "results" or "arguments", null for a value that stands in no record
    std::optional<unsigned int> attribute;
};

/// Throws std::runtime_error with a text that begins with the place.
[[noreturn]] void failAt(Place place, const std::string& text);

/// What `read` gives. An error of the program's own is told with its place; those of the JSON library are of another
/// kind.
template <class Read>
decltype(auto) toldAt(Place place, Read read) {
    try {
        return read();
    } catch (const std::runtime_error& error) {
        failAt(place, error.what());
    }
}

/// One input value of a record: a literal, the name of a plug, or a reference into the resource file. Each getter
/// decides which one it holds, so that a reader never has to.
///
/// A string is a plug name and is resolved in the scene at each read; a number, a boolean or an array is a literal; an
/// object with "id" is a block of the resource file. Getters throw std::runtime_error or the JSON library's exceptions.
class Element {
public:
    explicit Element(json&& value, std::vector<unsigned int> indices = {}, Place place = {});

    float getFloat() const;
    int getInt() const;
    bool getBool() const;
    /// The string itself; "not a string" for any other value.
    const std::string& getString() const;
    vec2 getVec2() const;
    vec3 getVec3() const;
    vec4 getVec4() const;
    mat4 getMat4() const;

    /// The path to the DAG node that feeds the named plug.
    MDagPath getDagPath() const;
    /// The named plug, or its source where its own data is null.
    MPlug getMayaShape() const;

    /// A copy of a stored record. T is Mesh, Curve, Surface or Lattice (a plug or a block), or one of the types that
    /// only a block can hold: WeightMap, DeltaList, std::vector<unsigned int>, std::vector<unsigned char>,
    /// std::vector<Value>, SkinWeights, WireBindings.
    template <class T>
    T get() const;
    /// The stored record itself of a value that is a block. It stays as it is until another resource file is loaded.
    template <class T>
    const T& stored() const;
    /// Whether the value is the name of a plug, and no literal or block.
    bool isPlug() const { return value_.is_string(); }

    /// The entry's logical indices of a multi plug, empty if it gave none.
    const std::vector<unsigned int>& indices() const { return indices_; }
    /// Index `position` of the entry; an error that names what is missing if it gave fewer.
    unsigned int index(std::size_t position) const;
    /// The first two logical indices, the key of an in-between item or of a pose's element.
    std::pair<unsigned int, unsigned int> indexPair() const { return {index(0), index(1)}; }

    /// As the manifest has it.
    const json& value() const { return value_; }

    Place place() const { return place_; }

    /// The one storage of resource blocks: made at first need, never freed.
    static ResourceStorage* pResource;
    static ResourceStorage& storage();

private:
    json value_;
    std::vector<unsigned int> indices_;
    Place place_;
};

template <>
Mesh Element::get<Mesh>() const;
template <>
Curve Element::get<Curve>() const;
template <>
Surface Element::get<Surface>() const;
template <>
Lattice Element::get<Lattice>() const;
extern template WeightMap Element::get<WeightMap>() const;
extern template DeltaList Element::get<DeltaList>() const;
extern template std::vector<unsigned int> Element::get<std::vector<unsigned int>>() const;
extern template std::vector<unsigned char> Element::get<std::vector<unsigned char>>() const;
extern template std::vector<Value> Element::get<std::vector<Value>>() const;
extern template SkinWeights Element::get<SkinWeights>() const;
extern template WireBindings Element::get<WireBindings>() const;
extern template const Mesh& Element::stored<Mesh>() const;
extern template const Curve& Element::stored<Curve>() const;
extern template const Surface& Element::stored<Surface>() const;
extern template const WeightMap& Element::stored<WeightMap>() const;
extern template const DeltaList& Element::stored<DeltaList>() const;
extern template const SkinWeights& Element::stored<SkinWeights>() const;

} // namespace zent
