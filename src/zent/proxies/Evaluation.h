#pragma once

#include "zent/geometry/shapes.h"
#include "zent/geometry/weights.h"
#include "zent/math/types.h"
#include "zent/values/json.h"

#include <array>
#include <map>
#include <memory>
#include <vector>

/// A record that is evaluated time and again: its values are read once, and then overwritten where they change.
namespace zent {

class Arguments;

/// The place of a value that can be overwritten, or read. Lists' places hold until the list changes its size, those of
/// arguments as long as their evaluation.
struct Slot {
    enum class Kind : unsigned char { none, floats, integer, whole, boolean, bit, mesh, curve, surface, lattice };

    Kind kind = Kind::none;
    unsigned int size = 0; ///< of floats: 1 of a number, 2 to 4 of a vector, 16 of a matrix. Of bits: which one
    void* place = nullptr;

    float* floats() const { return static_cast<float*>(place); }
    bool isShape() const { return kind >= Kind::mesh; }
};

/// Which entry of an argument is meant: its place among the argument's entries, and its logical indices.
struct EntryPlace {
    std::size_t position;
    const std::vector<unsigned int>& indices;
};

/// One record's node function with its arguments.
class Evaluation {
public:
    Evaluation() = default;
    Evaluation(const Evaluation&) = delete;
    Evaluation& operator=(const Evaluation&) = delete;
    virtual ~Evaluation() = default;

    /// Where an entry's value stands; kind none for one that nothing may overwrite.
    virtual Slot argument(unsigned int index, const EntryPlace& entry) = 0;
    /// Where the value of a result's entry stands since the last evaluation; kind none where there is no such result.
    virtual Slot output(unsigned int attribute, std::size_t position) = 0;
    /// Whether the outputs' places hold as long as the evaluation, whatever it makes.
    virtual bool staysInPlace() const { return false; }
    /// Throws what the node function throws.
    virtual void evaluate() = 0;
    /// The parts that evaluate() may be done in at the same time: `begin`, then the points from one to another, of all.
    virtual void begin() { evaluate(); }
    virtual unsigned int points() const { return 0; }
    virtual void evaluatePoints(unsigned int /*from*/, unsigned int /*to*/) {}
    /// Appends the outputs, as the adapter's `zentResult` has them. A deformer has none: its shape is told by its
    /// points.
    virtual void show(json& outputs) const = 0;
};

/// An adapter that gives out evaluations, apart from its operations. It outlives what it gives out.
class Bindable {
public:
    /// Reads all arguments, as `zentResult` does. Throws what reading them throws.
    virtual std::unique_ptr<Evaluation> bind(const Arguments& args) = 0;

protected:
    Bindable() = default;
    ~Bindable() = default;
    Bindable(const Bindable&) = delete;
    Bindable& operator=(const Bindable&) = delete;
};

// ---- slots by type -------------------------------------------------------------------------------------------------

template <class T>
Slot slotOf(T& /*value*/) {
    return {};
}
inline Slot slotOf(float& value) {
    return {Slot::Kind::floats, 1, &value};
}
inline Slot slotOf(int& value) {
    return {Slot::Kind::integer, 1, &value};
}
inline Slot slotOf(unsigned int& value) {
    return {Slot::Kind::whole, 1, &value};
}
inline Slot slotOf(bool& value) {
    return {Slot::Kind::boolean, 1, &value};
}
inline Slot slotOf(vec2& value) {
    return {Slot::Kind::floats, 2, &value};
}
inline Slot slotOf(vec3& value) {
    return {Slot::Kind::floats, 3, &value};
}
inline Slot slotOf(vec4& value) {
    return {Slot::Kind::floats, 4, &value};
}
inline Slot slotOf(quat& value) {
    return {Slot::Kind::floats, 4, &value};
}
inline Slot slotOf(mat4& value) {
    return {Slot::Kind::floats, 16, &value};
}
inline Slot slotOf(Mesh& value) {
    return {Slot::Kind::mesh, 1, &value};
}
inline Slot slotOf(Curve& value) {
    return {Slot::Kind::curve, 1, &value};
}
inline Slot slotOf(Surface& value) {
    return {Slot::Kind::surface, 1, &value};
}
inline Slot slotOf(Lattice& value) {
    return {Slot::Kind::lattice, 1, &value};
}

/// An entry of an argument of type T, or of a result.
template <class T>
Slot entrySlot(T& value, const EntryPlace& entry) {
    return entry.position == 0 ? slotOf(value) : Slot();
}
template <class List>
Slot itemSlot(List& list, const EntryPlace& entry) {
    return entry.position < list.size() ? slotOf(list[entry.position]) : Slot();
}
template <class T, std::size_t N>
Slot entrySlot(svec<T, N>& list, const EntryPlace& entry) {
    return itemSlot(list, entry);
}
template <class T, std::size_t N>
Slot entrySlot(static_vector<T, N>& list, const EntryPlace& entry) {
    return itemSlot(list, entry);
}
template <class T, std::size_t N>
Slot entrySlot(std::array<T, N>& list, const EntryPlace& entry) {
    return itemSlot(list, entry);
}
inline Slot entrySlot(std::vector<vec3>& list, const EntryPlace& entry) {
    return itemSlot(list, entry);
}
inline Slot entrySlot(std::vector<mat4>& list, const EntryPlace& entry) {
    return itemSlot(list, entry);
}
inline Slot entrySlot(std::vector<int>& list, const EntryPlace& entry) {
    return itemSlot(list, entry);
}
inline Slot entrySlot(std::vector<float>& list, const EntryPlace& entry) {
    return itemSlot(list, entry);
}
inline Slot entrySlot(std::vector<bool>& list, const EntryPlace& entry) {
    return entry.position < list.size() ? Slot{Slot::Kind::bit, static_cast<unsigned int>(entry.position), &list}
                                        : Slot();
}
template <class Item>
Slot entrySlot(std::map<unsigned int, Item>& map, const EntryPlace& entry) {
    const auto found = entry.indices.empty() ? map.end() : map.find(entry.indices[0]);
    return found == map.end() ? Slot() : slotOf(found->second);
}
template <class Item>
Slot entrySlot(std::map<ItemIndex, Item>& map, const EntryPlace& entry) {
    const auto found = entry.indices.size() < 2 ? map.end() : map.find({entry.indices[0], entry.indices[1]});
    return found == map.end() ? Slot() : slotOf(found->second);
}

} // namespace zent
