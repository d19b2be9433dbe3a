#include "Source.h"

#include <pybind11/numpy.h>

namespace zent::python {

namespace {

/// A list of entries that is a part of an argument: one row.
template <class C>
void readPart(Call& call, std::size_t argument, PyObject* value, Numbers& numbers) {
    numbers.read(call, argument, value, List<C>::layout);
    if (numbers.hasRows()) {
        call.failValue(argument, "one dimension too many");
    }
}

template <class T>
T entry(const Numbers& numbers, std::size_t i, std::size_t row = 0) {
    T value;
    std::memcpy(&value, numbers.at(row) + i * sizeof(T), sizeof(T));
    return value;
}

template <class T>
T readElement(Call& call, std::size_t argument, py::handle value) {
    Numbers numbers;
    numbers.read(call, argument, value.ptr(), Element<T>::layout);
    if (numbers.hasRows()) {
        call.failValue(argument, "one dimension too many");
    }
    return entry<T>(numbers, 0);
}

/// The parts of an argument that is a tuple or a list of arrays.
template <std::size_t N>
std::array<py::object, N> partsOf(Call& call, std::size_t argument, PyObject* value, const char* words) {
    if ((!PyTuple_Check(value) && !PyList_Check(value)) || py::len(value) != N) {
        call.failType(argument, std::string(words) + " expected");
    }
    std::array<py::object, N> parts;
    for (std::size_t i = 0; i < N; ++i) {
        parts[i] = py::reinterpret_borrow<py::object>(PySequence_Fast_GET_ITEM(value, static_cast<Py_ssize_t>(i)));
    }
    return parts;
}

void requireLength(Call& call, std::size_t argument, const char* part, const Numbers& numbers, const Numbers& first) {
    if (numbers.entries() != first.entries()) {
        call.failValue(argument, std::to_string(numbers.entries()) + " " + part + " for " +
                                     std::to_string(first.entries()) + " entries");
    }
}

/// Visits a copy of a dictionary, which the visit may not change under us.
template <class Visit>
void visitItems(PyObject* value, Visit visit) {
    const auto copy = py::reinterpret_steal<py::object>(PyDict_Copy(value));
    if (!copy) {
        throw py::error_already_set();
    }
    for (const auto& [key, item] : py::reinterpret_borrow<py::dict>(copy)) {
        visit(key, item);
    }
}

ItemIndex pairOf(Call& call, std::size_t argument, py::handle key) {
    if (!PyTuple_Check(key.ptr()) || py::len(key) != 2) {
        call.failType(argument, "a key is no pair of whole numbers");
    }
    return {readElement<unsigned int>(call, argument, PyTuple_GET_ITEM(key.ptr(), 0)),
            readElement<unsigned int>(call, argument, PyTuple_GET_ITEM(key.ptr(), 1))};
}

/// Arrays of one value for each index, by row, or a dictionary.
template <class T>
void readMap(Call& call, std::size_t argument, PyObject* value, std::vector<std::map<unsigned int, T>>& rows) {
    if (PyDict_Check(value)) {
        auto& map = rows.emplace_back();
        visitItems(value, [&](py::handle key, py::handle item) {
            map[readElement<unsigned int>(call, argument, key)] = readElement<T>(call, argument, item);
        });
        return;
    }
    Numbers numbers;
    numbers.read(call, argument, value, List<std::vector<T>>::layout);
    if (numbers.hasRows()) {
        call.takeRows(argument, numbers.rows());
    }
    rows.resize(std::max<std::size_t>(numbers.rows(), 1)); // without rows, none is read
    for (std::size_t row = 0; row < numbers.rows(); ++row) {
        for (std::size_t i = 0; i < numbers.entries(); ++i) {
            rows[row].emplace_hint(rows[row].end(), static_cast<unsigned int>(i), entry<T>(numbers, i, row));
        }
    }
}

py::array arrayOf(Call& call, std::size_t argument, PyObject* value) {
    const auto object = py::reinterpret_steal<py::object>(
        py::detail::npy_api::get().PyArray_FromAny_(value, nullptr, 0, 0, 0, nullptr));
    if (!object) {
        call.failAsPython(argument);
    }
    return py::reinterpret_borrow<py::array>(object);
}

/// Layout of a list of vectors whose length is the array's.
Layout tableLayout(const py::array& array) {
    const auto columns = array.ndim() < 2 ? 1 : static_cast<std::size_t>(array.shape(array.ndim() - 1));
    return {Number::single, 1, {columns, 1}, true, 0, SIZE_MAX};
}

} // namespace

void readValue(Call& call, std::size_t argument, PyObject* value, std::vector<WeightMap>& rows) {
    readMap(call, argument, value, rows);
}

void readValue(Call& call, std::size_t argument, PyObject* value, std::vector<std::map<unsigned int, vec3>>& rows) {
    readMap(call, argument, value, rows);
}

void readValue(Call& call, std::size_t argument, PyObject* value, std::vector<std::map<ItemIndex, float>>& rows) {
    if (PyDict_Check(value)) {
        auto& map = rows.emplace_back();
        visitItems(value, [&](py::handle key, py::handle item) {
            map[pairOf(call, argument, key)] = readElement<float>(call, argument, item);
        });
        return;
    }
    const py::array array = arrayOf(call, argument, value);
    const Layout layout = tableLayout(array);
    Numbers numbers;
    numbers.read(call, argument, array.ptr(), layout);
    if (numbers.hasRows()) {
        call.takeRows(argument, numbers.rows());
    }
    rows.resize(std::max<std::size_t>(numbers.rows(), 1));
    for (std::size_t row = 0; row < numbers.rows(); ++row) {
        for (std::size_t i = 0; i < numbers.entries() * layout.size[0]; ++i) {
            const ItemIndex index{static_cast<unsigned int>(i / layout.size[0]),
                                  static_cast<unsigned int>(i % layout.size[0])};
            rows[row].emplace_hint(rows[row].end(), index, entry<float>(numbers, i, row));
        }
    }
}

void readValue(Call& call, std::size_t argument, PyObject* value, std::vector<DeltaList>& rows) {
    DeltaList& deltas = rows.emplace_back();
    if (PyDict_Check(value)) {
        visitItems(value, [&](py::handle key, py::handle item) {
            deltas.emplace_back(readElement<unsigned int>(call, argument, key),
                                readElement<vec3>(call, argument, item));
        });
        return;
    }
    const auto parts = partsOf<2>(call, argument, value, "points and offsets, two arrays,");
    Numbers points;
    Numbers offsets;
    readPart<std::vector<unsigned int>>(call, argument, parts[0].ptr(), points);
    readPart<std::vector<vec3>>(call, argument, parts[1].ptr(), offsets);
    requireLength(call, argument, "offsets", offsets, points);
    for (std::size_t i = 0; i < points.entries(); ++i) {
        deltas.emplace_back(entry<unsigned int>(points, i), entry<vec3>(offsets, i));
    }
}

void readValue(Call& call, std::size_t argument, PyObject* value, std::vector<SkinWeights>& rows) {
    SkinWeights& weights = rows.emplace_back();
    if (PyTuple_Check(value)) {
        const auto parts = partsOf<3>(call, argument, value, "points, influences and weights, three arrays,");
        Numbers points;
        Numbers influences;
        Numbers values;
        readPart<std::vector<unsigned int>>(call, argument, parts[0].ptr(), points);
        readPart<std::vector<unsigned int>>(call, argument, parts[1].ptr(), influences);
        readPart<std::vector<float>>(call, argument, parts[2].ptr(), values);
        requireLength(call, argument, "influences", influences, points);
        requireLength(call, argument, "weights", values, points);
        weights.reserve(points.entries());
        for (std::size_t i = 0; i < points.entries(); ++i) {
            weights.emplace_back(entry<unsigned int>(points, i), entry<unsigned int>(influences, i),
                                 entry<float>(values, i));
        }
        return;
    }
    const py::array array = arrayOf(call, argument, value);
    const Layout layout = tableLayout(array);
    Numbers numbers;
    numbers.read(call, argument, array.ptr(), layout);
    if (numbers.hasRows() || array.ndim() != 2) {
        call.failValue(argument, "an array of points by influences expected");
    }
    for (std::size_t i = 0; i < numbers.entries() * layout.size[0]; ++i) {
        const auto weight = entry<float>(numbers, i);
        if (weight != 0.0f) {
            weights.emplace_back(static_cast<unsigned int>(i / layout.size[0]),
                                 static_cast<unsigned int>(i % layout.size[0]), weight);
        }
    }
}

void readValue(Call& call, std::size_t argument, PyObject* value, std::vector<WireBindings>& rows) {
    WireBindings& bindings = rows.emplace_back();
    const auto parts = partsOf<2>(call, argument, value, "parameters and frames, two arrays,");
    Numbers parameters;
    Numbers frames;
    readPart<std::vector<float>>(call, argument, parts[0].ptr(), parameters);
    readPart<std::vector<mat3>>(call, argument, parts[1].ptr(), frames);
    requireLength(call, argument, "frames", frames, parameters);
    for (std::size_t i = 0; i < parameters.entries(); ++i) {
        bindings.emplace_back(0.0f, entry<float>(parameters, i), entry<mat3>(frames, i));
    }
}

void readValue(Call& call, std::size_t argument, PyObject* value, std::vector<WrapBindings>& rows) {
    using Triangle = glm::vec<3, unsigned int>;
    WrapBindings& bindings = rows.emplace_back();
    const auto parts = partsOf<3>(call, argument, value, "positions, triangles and weights, three arrays,");
    Numbers positions;
    Numbers triangles;
    Numbers weights;
    readPart<std::vector<vec3>>(call, argument, parts[0].ptr(), positions);
    readPart<std::vector<Triangle>>(call, argument, parts[1].ptr(), triangles);
    readPart<std::vector<vec3>>(call, argument, parts[2].ptr(), weights);
    requireLength(call, argument, "triangles", triangles, positions);
    requireLength(call, argument, "weights", weights, positions);
    for (std::size_t i = 0; i < positions.entries(); ++i) {
        bindings.emplace_back(entry<vec3>(positions, i), entry<Triangle>(triangles, i), entry<vec3>(weights, i));
    }
}

void readValue(Call& call, std::size_t argument, PyObject* value, std::vector<std::vector<unsigned char>>& rows) {
    Py_buffer view;
    if (PyObject_GetBuffer(value, &view, PyBUF_SIMPLE) != 0) {
        PyErr_Clear();
        call.failType(argument, std::string("bytes expected, not ") + Py_TYPE(value)->tp_name);
    }
    const auto* bytes = static_cast<const unsigned char*>(view.buf);
    rows.emplace_back(bytes, bytes + view.len);
    PyBuffer_Release(&view);
}

void readValue(Call& call, std::size_t argument, PyObject* value, std::vector<std::vector<Value>>& rows) {
    if (!PyTuple_Check(value) && !PyList_Check(value)) {
        call.failType(argument, "a list expected");
    }
    std::vector<Value>& constants = rows.emplace_back();
    const py::tuple items(py::reinterpret_borrow<py::object>(value)); // which nobody changes meanwhile
    for (const py::handle item : items) {
        if (PyBool_Check(item.ptr())) {
            constants.emplace_back(item.ptr() == Py_True);
        } else if (PyLong_Check(item.ptr())) {
            constants.emplace_back(readElement<int>(call, argument, item));
        } else if (PyFloat_Check(item.ptr())) {
            constants.emplace_back(PyFloat_AS_DOUBLE(item.ptr()));
        } else {
            const auto vector = py::array_t<double, py::array::c_style | py::array::forcecast>::ensure(
                py::reinterpret_borrow<py::object>(item));
            if (!vector || vector.ndim() != 1 || vector.size() != 3) {
                PyErr_Clear();
                call.failType(argument, "a constant is no bool, int, float or vector of three floats");
            }
            constants.emplace_back(ValueVector{vector.at(0), vector.at(1), vector.at(2)});
        }
    }
}

void readValue(Call& call, std::size_t argument, PyObject* value,
               std::vector<std::map<unsigned int, WeightMap>>& rows) {
    if (!PyDict_Check(value)) {
        call.failType(argument, "a dict of weight maps expected");
    }
    auto& maps = rows.emplace_back();
    visitItems(value, [&](py::handle key, py::handle item) {
        std::vector<WeightMap> map;
        readMap(call, argument, item.ptr(), map);
        if (map.size() != 1) {
            call.failValue(argument, "one dimension too many");
        }
        maps[readElement<unsigned int>(call, argument, key)] = std::move(map[0]);
    });
}

// ---- shapes ---------------------------------------------------------------------------------------------------------

template <class T>
void Source<T, std::enable_if_t<isShape<T>>>::read(Call& call, std::size_t argument) {
    keep = py::reinterpret_borrow<py::object>(call.value(argument));
    const bool isMany = PyList_Check(keep.ptr()) || PyTuple_Check(keep.ptr());
    if (isMany) {
        keep = py::tuple(keep); // which nobody changes meanwhile
    }
    for (std::size_t i = 0; i < (isMany ? py::len(keep) : 1); ++i) {
        const py::object shape = isMany ? py::tuple(keep)[i] : keep;
        if (!py::isinstance<T>(shape)) {
            call.failType(argument,
                          std::string("a ") + shapeName<T>() + " expected, not " + Py_TYPE(shape.ptr())->tp_name);
        }
        shapes.push_back(shape.cast<const T*>());
    }
    if (isMany) {
        call.takeRows(argument, shapes.size());
    }
}
template void Source<Mesh, void>::read(Call&, std::size_t);
template void Source<Curve, void>::read(Call&, std::size_t);
template void Source<Surface, void>::read(Call&, std::size_t);
template void Source<Lattice, void>::read(Call&, std::size_t);

namespace {

/// The item of a whole target.
constexpr unsigned int kFullTarget = 6000;

template <class T>
void readAllItems(Call& call, std::size_t argument, PyObject* value, Items<T>& items) {
    if (!PyDict_Check(value)) {
        call.failType(argument, "a dict expected");
    }
    visitItems(value, [&](py::handle key, py::handle item) {
        const ItemIndex index = PyTuple_Check(key.ptr())
                                    ? pairOf(call, argument, key)
                                    : ItemIndex{readElement<unsigned int>(call, argument, key), kFullTarget};
        if constexpr (isShape<T>) {
            if (!py::isinstance<T>(item)) {
                call.failType(argument,
                              std::string("a ") + shapeName<T>() + " expected, not " + Py_TYPE(item.ptr())->tp_name);
            }
            items.held.push_back(std::make_shared<T>(*item.cast<const T*>()));
        } else {
            std::vector<T> read;
            readValue(call, argument, item.ptr(), read);
            items.held.push_back(std::make_shared<T>(std::move(read[0])));
        }
        items.map.insert_or_assign(index, std::cref(*items.held.back()));
    });
}

} // namespace

void readItems(Call& call, std::size_t argument, PyObject* value, Items<Mesh>& items) {
    readAllItems(call, argument, value, items);
}
void readItems(Call& call, std::size_t argument, PyObject* value, Items<Curve>& items) {
    readAllItems(call, argument, value, items);
}
void readItems(Call& call, std::size_t argument, PyObject* value, Items<Surface>& items) {
    readAllItems(call, argument, value, items);
}
void readItems(Call& call, std::size_t argument, PyObject* value, Items<DeltaList>& items) {
    readAllItems(call, argument, value, items);
}

} // namespace zent::python
