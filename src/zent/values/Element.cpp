#include "zent/values/Element.h"

#include "zent/values/jsonAccess.h"
#include "zent/values/resource.h"
#include "zent/values/Select.h"

#include <fmt/format.h>

#include <stdexcept>

namespace zent {

namespace {

/// A literal array must hold what is read of it: the JSON library's subscript would read beyond its end.
const json& requireItems(const json& value, std::size_t count, Place place) {
    if (!value.is_array()) {
        return value[0]; // throws, for null too
    }
    if (value.size() < count) {
        failAt(place, fmt::format("array of {} numbers expected, got {}", count, value.size()));
    }
    return value;
}

template <class Vector>
Vector literalVector(const json& value, Place place) {
    requireItems(value, Vector::length(), place);
    Vector vector(0.0f);
    for (int i = 0; i < Vector::length(); ++i) {
        vector[i] = item(value, static_cast<std::size_t>(i)).get<float>();
    }
    return vector;
}

mat4 literalMatrix(const json& value, Place place) {
    requireItems(value, 16, place);
    mat4 matrix(0.0f);
    for (int i = 0; i < 16; ++i) {
        matrix[i / 4][i % 4] = item(value, static_cast<std::size_t>(i)).get<float>();
    }
    return matrix;
}

} // namespace

void failAt(Place place, const std::string& text) {
    if (place.list == nullptr) {
        throw std::runtime_error(text);
    }
    const std::string attribute = place.attribute ? fmt::format(", attribute {}", *place.attribute) : "";
    throw std::runtime_error(fmt::format("{}{}: {}", place.list, attribute, text));
}

ResourceStorage* Element::pResource = nullptr;

ResourceStorage& Element::storage() {
    if (pResource == nullptr) {
        pResource = new ResourceStorage;
    }
    return *pResource;
}

Element::Element(json&& value, std::vector<unsigned int> indices, Place place)
    : value_(std::move(value)), indices_(std::move(indices)), place_(place) {}

float Element::getFloat() const {
    return value_.is_string() ? float_value(selectPlug(getString())) : value_.get<float>();
}

int Element::getInt() const {
    return value_.is_string() ? selectPlug(getString()).asInt() : toldAt(place_, [this] { return toInt(value_); });
}

bool Element::getBool() const {
    return value_.is_string() ? selectPlug(getString()).asBool() : value_.get<bool>();
}

const std::string& Element::getString() const {
    if (!value_.is_string()) {
        throw std::runtime_error("not a string");
    }
    return value_.get_ref<const std::string&>();
}

vec2 Element::getVec2() const {
    return value_.is_string() ? vec2_value(selectPlug(getString())) : literalVector<vec2>(value_, place_);
}

vec3 Element::getVec3() const {
    return value_.is_string() ? vec3_value(selectPlug(getString())) : literalVector<vec3>(value_, place_);
}

vec4 Element::getVec4() const {
    return value_.is_string() ? vec4_value(selectPlug(getString())) : literalVector<vec4>(value_, place_);
}

mat4 Element::getMat4() const {
    return value_.is_string() ? mat4_value(selectPlug(getString())) : literalMatrix(value_, place_);
}

MDagPath Element::getDagPath() const {
    if (!value_.is_string()) {
        throw std::runtime_error("no attached dag");
    }
    return sourceDagPath(getString());
}

MPlug Element::getMayaShape() const {
    return mayaShapePlug(getString());
}

template <class T>
const T& Element::stored() const {
    const json& id = value_.at("id");
    return toldAt(place_, [&id]() -> const T& { return storage().get<T>(toUnsigned(id)); });
}

template <class T>
T Element::get() const {
    return stored<T>();
}

template <>
Mesh Element::get<Mesh>() const {
    return value_.is_string() ? shape_value<Mesh>(getMayaShape()) : stored<Mesh>();
}

template <>
Curve Element::get<Curve>() const {
    return value_.is_string() ? shape_value<Curve>(getMayaShape()) : stored<Curve>();
}

template <>
Surface Element::get<Surface>() const {
    return value_.is_string() ? shape_value<Surface>(getMayaShape()) : stored<Surface>();
}

// A lattice is read from the plug itself, never through its source.
template <>
Lattice Element::get<Lattice>() const {
    return value_.is_string() ? shape_value<Lattice>(selectPlug(getString())) : stored<Lattice>();
}

template WeightMap Element::get<WeightMap>() const;
template DeltaList Element::get<DeltaList>() const;
template std::vector<unsigned int> Element::get<std::vector<unsigned int>>() const;
template std::vector<unsigned char> Element::get<std::vector<unsigned char>>() const;
template std::vector<Value> Element::get<std::vector<Value>>() const;
template SkinWeights Element::get<SkinWeights>() const;
template WireBindings Element::get<WireBindings>() const;
template const Mesh& Element::stored<Mesh>() const;
template const Curve& Element::stored<Curve>() const;
template const Surface& Element::stored<Surface>() const;
template const WeightMap& Element::stored<WeightMap>() const;
template const DeltaList& Element::stored<DeltaList>() const;
template const SkinWeights& Element::stored<SkinWeights>() const;

unsigned int Element::index(std::size_t position) const {
    if (position >= indices_.size()) {
        failAt(place_,
               fmt::format("entry needs {} logical indices, its \"indices\" hold {}", position + 1, indices_.size()));
    }
    return indices_[position];
}

} // namespace zent
