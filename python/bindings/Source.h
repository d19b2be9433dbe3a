#pragma once

#include "Argument.h"
#include "Constructed.h"

#include "zent/expression/Value.h"
#include "zent/geometry/shapes.h"
#include "zent/geometry/weights.h"

#include <array>
#include <cstring>
#include <functional>
#include <map>
#include <memory>
#include <type_traits>
#include <utility>

namespace pybind11::detail {

template <>
struct type_caster<zent::Mesh> : CasterOfConstructed<zent::Mesh> {};
template <>
struct type_caster<zent::Curve> : CasterOfConstructed<zent::Curve> {};
template <>
struct type_caster<zent::Surface> : CasterOfConstructed<zent::Surface> {};
template <>
struct type_caster<zent::Lattice> : CasterOfConstructed<zent::Lattice> {};

} // namespace pybind11::detail

/// The C++ type of a parameter decides how its argument is read.
namespace zent::python {

// ---- the layout of a type -------------------------------------------------------------------------------------------

template <class T>
struct Element {
    static constexpr bool is = false;
};
template <Number N, std::size_t Rank, std::size_t Rows, std::size_t Columns>
struct ElementOf {
    static constexpr bool is = true;
    static constexpr Layout layout{N, Rank, {Rows, Columns}};
};
template <>
struct Element<float> : ElementOf<Number::single, 0, 1, 1> {};
template <>
struct Element<int> : ElementOf<Number::integer, 0, 1, 1> {};
template <>
struct Element<unsigned int> : ElementOf<Number::counter, 0, 1, 1> {};
template <>
struct Element<bool> : ElementOf<Number::truth, 0, 1, 1> {};
template <>
struct Element<vec2> : ElementOf<Number::single, 1, 2, 1> {};
template <>
struct Element<vec3> : ElementOf<Number::single, 1, 3, 1> {};
template <>
struct Element<vec4> : ElementOf<Number::single, 1, 4, 1> {};
template <>
struct Element<glm::vec<3, unsigned int>> : ElementOf<Number::counter, 1, 3, 1> {};
template <>
struct Element<mat3> : ElementOf<Number::single, 2, 3, 3> {};
template <>
struct Element<mat4> : ElementOf<Number::single, 2, 4, 4> {};

template <class T>
struct List {
    static constexpr bool is = false;
};
template <class T, std::size_t Least, std::size_t Most>
struct ListOf {
    static constexpr bool is = Element<T>::is;
    using Item = T;
    static constexpr Layout layout{Element<T>::layout.number,
                                   Element<T>::layout.rank,
                                   {Element<T>::layout.size[0], Element<T>::layout.size[1]},
                                   true,
                                   Least,
                                   Most};
};
template <class T>
struct List<std::vector<T>> : ListOf<T, 0, SIZE_MAX> {};
template <class T, std::size_t N>
struct List<std::array<T, N>> : ListOf<T, N, N> {};
template <class T, std::size_t N>
struct List<static_vector<T, N>> : ListOf<T, 0, N> {};
template <class T, std::size_t N, class A, class O>
struct List<boost::container::small_vector<T, N, A, O>> : ListOf<T, 0, SIZE_MAX> {};
template <>
struct List<std::vector<unsigned char>> { // byte code
    static constexpr bool is = false;
};

template <class T>
inline constexpr bool isShape =
    std::is_same_v<T, Mesh> || std::is_same_v<T, Curve> || std::is_same_v<T, Surface> || std::is_same_v<T, Lattice>;

template <class T>
inline constexpr bool isItems = false;
template <class T>
inline constexpr bool isItems<std::map<ItemIndex, std::reference_wrapper<T const>>> = true;

// ---- sources --------------------------------------------------------------------------------------------------------

/// The values of one parameter, by row. `take` gives a row's value, `view` refers to it, `own` to a copy that a
/// function may change. A thread that evaluates rows has a `Local` of its own, in which a value may lie.
template <class T, class = void>
struct Source;

template <class T>
struct Source<T, std::enable_if_t<Element<T>::is>> {
    void read(Call& call, std::size_t argument) { numbers.read(call, argument, Element<T>::layout); }
    void settle(const Call& /*call*/, std::size_t /*argument*/) {}
    struct Local {};
    T take(Local& /*local*/, std::size_t row) const {
        T value;
        std::memcpy(&value, numbers.at(row), sizeof(T));
        return value;
    }
    T view(Local& local, std::size_t row) const { return take(local, row); }

    Numbers numbers;
};

template <class T>
struct Source<T, std::enable_if_t<List<T>::is>> {
    void read(Call& call, std::size_t argument) { numbers.read(call, argument, List<T>::layout); }
    void settle(const Call& call, std::size_t argument) {
        numbers.settle(call, argument, List<T>::layout);
        if (numbers.isRepeated()) {
            fill(0, list);
        }
    }
    struct Local {
        T list{};
    };
    T take(Local& /*local*/, std::size_t row) const {
        if (numbers.isRepeated()) {
            return list;
        }
        T fresh{};
        fill(row, fresh);
        return fresh;
    }
    const T& view(Local& local, std::size_t row) const {
        if (numbers.isRepeated()) {
            return list;
        }
        fill(row, local.list);
        return local.list;
    }

    Numbers numbers;
    T list{};

private:
    void fill(std::size_t row, T& to) const {
        using Item = typename List<T>::Item;
        const unsigned char* from = numbers.at(row);
        if constexpr (std::is_same_v<T, std::vector<bool>>) {
            to.assign(from, from + numbers.entries());
        } else {
            if constexpr (List<T>::layout.least != List<T>::layout.most) {
                to.resize(numbers.entries());
            }
            if (numbers.entries() != 0) {
                std::memcpy(static_cast<void*>(to.data()), from, numbers.entries() * sizeof(Item));
            }
        }
    }
};

/// Shapes: one, or a list or tuple of them as rows.
template <class T>
struct Source<T, std::enable_if_t<isShape<T>>> {
    void read(Call& call, std::size_t argument);
    void settle(const Call& /*call*/, std::size_t /*argument*/) {}
    struct Local {
        const T* copied = nullptr;
        T copy;
    };
    const T& view(Local& /*local*/, std::size_t row) const { return *shapes[shapes.size() == 1 ? 0 : row]; }
    T take(Local& local, std::size_t row) const { return view(local, row); }
    /// A new copy of the shape for each row, or, for what only fills a cache, one for as long as the shape is the same.
    T& own(Local& local, std::size_t row, bool isChanged) const {
        const T* shape = &view(local, row);
        if (isChanged || shape != local.copied) {
            local.copy = *shape;
            local.copied = shape;
        }
        return local.copy;
    }

    py::object keep;
    std::vector<const T*> shapes;
};

/// Everything else is read as a whole, for all rows or row by row: see `readValue`.
template <class T>
struct Source<T, std::enable_if_t<!Element<T>::is && !List<T>::is && !isShape<T> && !isItems<T>>> {
    void read(Call& call, std::size_t argument) {
        if (call.value(argument) == nullptr) {
            rows.resize(1);
        } else {
            readValue(call, argument, call.value(argument), rows);
        }
    }
    void settle(const Call& /*call*/, std::size_t /*argument*/) {}
    struct Local {};
    const T& view(Local& /*local*/, std::size_t row) const { return rows[rows.size() == 1 ? 0 : row]; }
    T take(Local& local, std::size_t row) const { return view(local, row); }

    std::vector<T> rows;
};

/// Map and list forms; each throws a TypeError or a ValueError. The first three may have rows.
void readValue(Call& call, std::size_t argument, PyObject* value, std::vector<WeightMap>& rows);
void readValue(Call& call, std::size_t argument, PyObject* value, std::vector<std::map<unsigned int, vec3>>& rows);
void readValue(Call& call, std::size_t argument, PyObject* value, std::vector<std::map<ItemIndex, float>>& rows);
void readValue(Call& call, std::size_t argument, PyObject* value, std::vector<DeltaList>& rows);
void readValue(Call& call, std::size_t argument, PyObject* value, std::vector<SkinWeights>& rows);
void readValue(Call& call, std::size_t argument, PyObject* value, std::vector<WireBindings>& rows);
void readValue(Call& call, std::size_t argument, PyObject* value, std::vector<WrapBindings>& rows);
void readValue(Call& call, std::size_t argument, PyObject* value, std::vector<std::vector<unsigned char>>& rows);
void readValue(Call& call, std::size_t argument, PyObject* value, std::vector<std::vector<Value>>& rows);
void readValue(Call& call, std::size_t argument, PyObject* value, std::vector<std::map<unsigned int, WeightMap>>& rows);

/// The items of a blend shape, with what the function's map refers to.
template <class T>
struct Items {
    std::vector<std::shared_ptr<T>> held;
    std::map<ItemIndex, std::reference_wrapper<T const>> map;
};
void readItems(Call& call, std::size_t argument, PyObject* value, Items<Mesh>& items);
void readItems(Call& call, std::size_t argument, PyObject* value, Items<Curve>& items);
void readItems(Call& call, std::size_t argument, PyObject* value, Items<Surface>& items);
void readItems(Call& call, std::size_t argument, PyObject* value, Items<DeltaList>& items);

template <class T>
struct Source<std::map<ItemIndex, std::reference_wrapper<T const>>, void> {
    void read(Call& call, std::size_t argument) {
        if (call.value(argument) != nullptr) {
            readItems(call, argument, call.value(argument), items);
        }
    }
    void settle(const Call& /*call*/, std::size_t /*argument*/) {}
    struct Local {};
    auto take(Local& /*local*/, std::size_t /*row*/) const { return items.map; }

    Items<T> items;
};

// ---- results --------------------------------------------------------------------------------------------------------

/// Where the rows' results go. Several threads may set rows between a `share` that said true and the end; where one of
/// them throws UnevenRows, all is evaluated again after a `restart`.
template <class T, class = void>
struct Sink;
struct UnevenRows {};

template <class T>
struct Sink<T, std::enable_if_t<Element<T>::is>> {
    void start(const Call& call) {
        constexpr Layout layout = Element<T>::layout;
        const std::size_t rows = call.rows();
        data = &only;
        if (call.isBatch() || layout.rank != 0) {
            array = newArray(layout, call.isBatch() ? &rows : nullptr, nullptr, data);
        }
    }
    void set(std::size_t row, const T& value) {
        std::memcpy(static_cast<unsigned char*>(data) + row * sizeof(T), &value, sizeof(T));
    }
    bool share() { return true; }
    void restart() {}
    py::object finish(const Call& /*call*/) { return array ? array : toPython(Element<T>::layout.number, &only); }

    py::object array;
    T only;
    void* data = nullptr;
};

/// As x, y, z, w.
template <>
struct Sink<quat, void> : Sink<vec4> {
    void set(std::size_t row, const quat& q) { Sink<vec4>::set(row, vec4(q.x, q.y, q.z, q.w)); }
};

/// Rows go straight into the result's memory, as wide as the first one. Where they differ, they are kept one after the
/// other, and those of fewer entries than others are filled with 0.
template <class T>
struct Sink<T, std::enable_if_t<List<T>::is>> {
    using Item = typename List<T>::Item;

    void start(const Call& call) { rows = call.rows(); }
    void set(std::size_t row, const T& list) {
        if (row == 0) {
            most = list.size();
            even.reset(new unsigned char[rows * most * sizeof(Item)]);
        }
        if (counts.empty() && list.size() == most) {
            if (most != 0) {
                std::memcpy(even.get() + row * most * sizeof(Item), list.data(), most * sizeof(Item));
            }
            return;
        }
        if (isShared) {
            throw UnevenRows();
        }
        if (counts.empty()) {
            counts.assign(row, most);
            items.resize(row * most);
            std::memcpy(static_cast<void*>(items.data()), even.get(), items.size() * sizeof(Item));
            even.reset();
        }
        counts.push_back(list.size());
        most = std::max(most, list.size());
        items.insert(items.end(), list.begin(), list.end());
    }
    bool share() { return isShared = counts.empty(); }
    void restart() {
        isShared = false;
        counts.clear();
        items.clear();
    }
    py::object finish(const Call& call) {
        const std::size_t* const isMany = call.isBatch() ? &rows : nullptr;
        if (counts.empty() && even) {
            return arrayOver(Element<Item>::layout, isMany, &most, std::move(even));
        }
        void* data = nullptr;
        py::object array = newArray(Element<Item>::layout, isMany, &most, data);
        auto* to = static_cast<unsigned char*>(data);
        const Item* from = items.data();
        for (const std::size_t count : counts) {
            std::memset(to, 0, most * sizeof(Item));
            if (count != 0) {
                std::memcpy(to, from, count * sizeof(Item));
            }
            from += count;
            to += most * sizeof(Item);
        }
        return array;
    }

    std::size_t rows = 0;
    std::size_t most = 0;
    bool isShared = false;
    std::unique_ptr<unsigned char[]> even;
    std::vector<Item> items;
    std::vector<std::size_t> counts;
};

py::object toPython(Mesh&& shape);
py::object toPython(Curve&& shape);
py::object toPython(Surface&& shape);
py::object toPython(Lattice&& shape);

template <class T>
struct Sink<T, std::enable_if_t<isShape<T>>> {
    void start(const Call& call) { shapes.resize(call.rows()); }
    void set(std::size_t row, T&& shape) { shapes[row] = std::move(shape); }
    bool share() { return true; }
    void restart() {}
    py::object finish(const Call& call) {
        if (!call.isBatch()) {
            return toPython(std::move(shapes[0]));
        }
        py::list list(shapes.size());
        for (std::size_t i = 0; i < shapes.size(); ++i) {
            list[i] = toPython(std::move(shapes[i]));
        }
        return std::move(list);
    }

    std::vector<T> shapes;
};

template <class A, class B>
struct Sink<std::pair<A, B>, void> {
    void start(const Call& call) {
        first.start(call);
        second.start(call);
    }
    void set(std::size_t row, std::pair<A, B>&& value) {
        first.set(row, std::move(value.first));
        second.set(row, std::move(value.second));
    }
    bool share() {
        const bool both[] = {first.share(), second.share()};
        return both[0] && both[1];
    }
    void restart() {
        first.restart();
        second.restart();
    }
    py::object finish(const Call& call) { return py::make_tuple(first.finish(call), second.finish(call)); }

    Sink<A> first;
    Sink<B> second;
};

} // namespace zent::python
