#include "Argument.h"

#include <pybind11/numpy.h>

#include <cstring>
#include <limits>

namespace zent::python {

namespace {

const char* wordFor(Number number) {
    switch (number) {
    case Number::single:
        return "numbers";
    case Number::truth:
        return "truth values";
    default:
        return "whole numbers";
    }
}

int typeNumber(Number number) {
    using py::detail::npy_api;
    switch (number) {
    case Number::single:
        return npy_api::NPY_FLOAT_;
    case Number::integer:
        return npy_api::NPY_INT_;
    case Number::counter:
        return npy_api::NPY_UINT_;
    default:
        return npy_api::NPY_BOOL_;
    }
}

py::object asArray(PyObject* value, PyObject* newDescription, int flags) {
    return py::reinterpret_steal<py::object>(
        py::detail::npy_api::get().PyArray_FromAny_(value, newDescription, 0, 0, flags, nullptr));
}

py::object converted(PyObject* value, int type) {
    using py::detail::npy_api;
    return asArray(value, npy_api::get().PyArray_DescrFromType_(type),
                   npy_api::NPY_ARRAY_C_CONTIGUOUS_ | npy_api::NPY_ARRAY_ALIGNED_ | npy_api::NPY_ARRAY_FORCECAST_);
}

std::string shapeText(const py::ssize_t* size, py::ssize_t count) {
    std::string text = "(";
    for (py::ssize_t i = 0; i < count; ++i) {
        text += (i == 0 ? "" : ", ") + std::to_string(size[i]);
    }
    return text + (count == 1 ? ",)" : ")");
}

/// "(3,) or (rows, 3)"
std::string expectedShape(const Layout& layout) {
    std::string inner = layout.isList ? (layout.least == layout.most ? std::to_string(layout.least) : "n") : "";
    for (std::size_t i = 0; i < layout.rank; ++i) {
        inner += (inner.empty() ? "" : ", ") + std::to_string(layout.size[i]);
    }
    const bool isOne = inner.find(',') == std::string::npos;
    return (inner.empty() ? std::string("a number") : "(" + inner + (isOne ? ",)" : ")")) + " or (rows" +
           (inner.empty() ? ",)" : ", " + inner + ")");
}

bool isIn(Number number, long long value) {
    return number == Number::integer
               ? value >= std::numeric_limits<int>::min() && value <= std::numeric_limits<int>::max()
               : value >= 0 && value <= std::numeric_limits<unsigned int>::max();
}

void store(Number number, long long value, unsigned char* to) {
    if (number == Number::integer) {
        const int narrow = static_cast<int>(value);
        std::memcpy(to, &narrow, sizeof(narrow));
    } else {
        const auto narrow = static_cast<unsigned int>(value);
        std::memcpy(to, &narrow, sizeof(narrow));
    }
}

} // namespace

// ---- the call -------------------------------------------------------------------------------------------------------

std::string Call::named(std::size_t argument, const std::string& text) const {
    return std::string(function_) + ": " + parameters_[argument].name + ": " + text;
}

void Call::failType(std::size_t argument, const std::string& text) const {
    throw py::type_error(named(argument, text));
}

void Call::failValue(std::size_t argument, const std::string& text) const {
    throw py::value_error(named(argument, text));
}

void Call::failAsPython(std::size_t argument) const {
    py::error_already_set error;
    if (!error.matches(PyExc_Exception)) {
        throw error; // an interrupt
    }
    const std::string text = named(argument, py::str(error.value()).cast<std::string>());
    PyErr_SetString(error.matches(PyExc_MemoryError)  ? PyExc_MemoryError
                    : error.matches(PyExc_ValueError) ? PyExc_ValueError
                                                      : PyExc_TypeError,
                    text.c_str());
    throw py::error_already_set();
}

void Call::takeRows(std::size_t argument, std::size_t rows) {
    if (isBatch_ && rows != rows_) {
        failValue(argument,
                  std::to_string(rows) + " rows, but " + parameters_[rowsFrom_].name + " has " + std::to_string(rows_));
    }
    if (!isBatch_) {
        isBatch_ = true;
        rows_ = rows;
        rowsFrom_ = argument;
    }
}

// ---- numbers --------------------------------------------------------------------------------------------------------

void Numbers::read(Call& call, std::size_t argument, const Layout& layout) {
    const Parameter& parameter = call.parameter(argument);
    if (PyObject* value = call.value(argument); value != nullptr) {
        read(call, argument, value, layout);
        if (hasRows_) {
            call.takeRows(argument, rows_);
        }
    } else if (layout.isList && parameter.kind != Default::empty) {
        isOmitted_ = true;
    } else {
        fill(parameter, layout, layout.isList ? 0 : 1);
    }
}

void Numbers::read(Call& call, std::size_t argument, PyObject* value, const Layout& layout) {
    if (!readDirectly(call, argument, value, layout)) {
        readArray(call, argument, value, layout);
    }
    if (layout.isList) {
        if (entries_ < layout.least || entries_ > layout.most) {
            call.failValue(argument, std::to_string(entries_) + (entries_ == 1 ? " entry, " : " entries, ") +
                                         (layout.least == layout.most ? "not "
                                          : entries_ < layout.least   ? "needs "
                                                                      : "takes at most ") +
                                         std::to_string(entries_ < layout.least ? layout.least : layout.most));
        }
        call.takeLength(entries_);
    }
}

/// What most calls give: Python's own numbers, alone or as a tuple or list.
bool Numbers::readDirectly(Call& call, std::size_t argument, PyObject* value, const Layout& layout) {
    if (layout.isList || layout.rank > 1) {
        return false;
    }
    PyObject* const* items = &value;
    if (layout.rank == 1) {
        if (!PyList_CheckExact(value) && !PyTuple_CheckExact(value)) {
            return false;
        }
        if (static_cast<std::size_t>(PySequence_Fast_GET_SIZE(value)) != layout.size[0]) {
            return false;
        }
        items = PySequence_Fast_ITEMS(value);
    }
    for (std::size_t i = 0; i < layout.size[0]; ++i) {
        PyObject* item = items[i];
        unsigned char* to = few_ + i * (layout.number == Number::truth ? 1 : 4);
        if (layout.number == Number::single && PyFloat_Check(item)) {
            const auto number = static_cast<float>(PyFloat_AS_DOUBLE(item));
            std::memcpy(to, &number, sizeof(number));
            continue;
        }
        if (!PyLong_Check(item)) { // a bool is one, too
            return false;
        }
        int isTooLarge = 0;
        const long long whole = PyLong_AsLongLongAndOverflow(item, &isTooLarge);
        if (layout.number == Number::single) {
            if (isTooLarge != 0) {
                return false;
            }
            const auto number = static_cast<float>(whole);
            std::memcpy(to, &number, sizeof(number));
        } else if (layout.number == Number::truth) {
            *to = isTooLarge != 0 || whole != 0 ? 1 : 0;
        } else {
            if (isTooLarge != 0 || !isIn(layout.number, whole)) {
                call.failValue(argument, py::str(item).cast<std::string>() + " is out of range");
            }
            store(layout.number, whole, to);
        }
    }
    return true;
}

void Numbers::readArray(Call& call, std::size_t argument, PyObject* value, const Layout& layout) {
    using py::detail::npy_api;
    if (value == Py_None || PyUnicode_Check(value) || PyBytes_Check(value) || PyDict_Check(value)) {
        call.failType(argument, std::string(wordFor(layout.number)) + " expected, not " + Py_TYPE(value)->tp_name);
    }
    py::object object = asArray(value, nullptr, 0);
    if (!object) {
        call.failAsPython(argument);
    }
    auto array = py::reinterpret_borrow<py::array>(object);

    const char kind = array.dtype().kind();
    const bool isWhole = kind == 'i' || kind == 'u' || kind == 'b';
    if (!isWhole && !(kind == 'f' && (layout.number == Number::single || array.size() == 0))) {
        call.failType(argument, std::string(wordFor(layout.number)) + " expected, not " +
                                    py::str(array.dtype()).cast<std::string>());
    }

    // A matrix may come as the 16 numbers of a row.
    const py::ssize_t* size = array.shape();
    const py::ssize_t dimensions = array.ndim();
    const bool isFlat =
        layout.rank == 2 && dimensions > 0 && static_cast<std::size_t>(size[dimensions - 1]) == layout.numbers();
    const std::size_t rank = isFlat ? 1 : layout.rank;
    const std::size_t ofRow = rank + (layout.isList ? 1 : 0);
    const bool isEmptyList = layout.isList && dimensions == 1 && size[0] == 0;
    bool fits = static_cast<std::size_t>(dimensions) == ofRow || static_cast<std::size_t>(dimensions) == ofRow + 1;
    for (std::size_t i = 0; fits && !isFlat && i < rank; ++i) {
        fits = static_cast<std::size_t>(size[static_cast<std::size_t>(dimensions) - rank + i]) == layout.size[i];
    }
    if (!fits && !isEmptyList) {
        call.failValue(argument, "shape " + shapeText(size, dimensions) + ", expected " + expectedShape(layout));
    }
    hasRows_ = !isEmptyList && static_cast<std::size_t>(dimensions) == ofRow + 1;
    rows_ = hasRows_ ? static_cast<std::size_t>(size[0]) : 1;
    entries_ = layout.isList ? (isEmptyList ? 0 : static_cast<std::size_t>(size[hasRows_ ? 1 : 0])) : 1;
    stride_ = hasRows_ ? entries_ * layout.bytes() : 0;

    const bool isRanged = layout.number == Number::integer || layout.number == Number::counter;
    keep_ = converted(array.ptr(), isRanged ? static_cast<int>(npy_api::NPY_LONGLONG_) : typeNumber(layout.number));
    if (!keep_) {
        call.failAsPython(argument);
    }
    const auto plain = py::reinterpret_borrow<py::array>(keep_);
    data_ = static_cast<const unsigned char*>(plain.data());
    if (!isRanged) {
        return;
    }
    const auto* wide = reinterpret_cast<const long long*>(data_);
    const auto count = static_cast<std::size_t>(plain.size());
    own_.resize(count * 4);
    for (std::size_t i = 0; i < count; ++i) {
        if (!isIn(layout.number, wide[i])) {
            call.failValue(argument, std::to_string(wide[i]) + " is out of range");
        }
        store(layout.number, wide[i], own_.data() + 4 * i);
    }
    data_ = own_.data();
    keep_ = py::object();
}

void Numbers::fill(const Parameter& parameter, const Layout& layout, std::size_t entries) {
    entries_ = entries;
    own_.assign(entries * layout.bytes(), 0);
    data_ = own_.data();
    for (std::size_t i = 0; i < entries * layout.numbers(); ++i) {
        const bool isDiagonal = i % layout.numbers() % (layout.size[1] + 1) == 0;
        const float number = parameter.kind == Default::identity ? (isDiagonal ? 1.0f : 0.0f) : parameter.number;
        if (layout.number == Number::truth) {
            own_[i] = number != 0.0f ? 1 : 0;
        } else if (layout.number == Number::single) {
            std::memcpy(own_.data() + 4 * i, &number, sizeof(number));
        } else {
            store(layout.number, static_cast<long long>(number), own_.data() + 4 * i);
        }
    }
}

void Numbers::settle(const Call& call, std::size_t argument, const Layout& layout) {
    if (isOmitted_) {
        fill(call.parameter(argument), layout, std::min(std::max(call.longest(), layout.least), layout.most));
    }
}

// ---- results --------------------------------------------------------------------------------------------------------

namespace {

std::vector<py::ssize_t> shapeOf(const Layout& layout, const std::size_t* rows, const std::size_t* entries) {
    std::vector<py::ssize_t> shape;
    for (const std::size_t* size : {rows, entries}) {
        if (size != nullptr) {
            shape.push_back(static_cast<py::ssize_t>(*size));
        }
    }
    for (std::size_t i = 0; i < layout.rank; ++i) {
        shape.push_back(static_cast<py::ssize_t>(layout.size[i]));
    }
    return shape;
}

py::dtype typeOf(const Layout& layout) {
    return py::dtype(layout.number == Number::single    ? "f4"
                     : layout.number == Number::integer ? "i4"
                     : layout.number == Number::counter ? "u4"
                                                        : "?");
}

} // namespace

py::object newArray(const Layout& layout, const std::size_t* rows, const std::size_t* entries, void*& data) {
    py::array array(typeOf(layout), shapeOf(layout, rows, entries));
    data = array.mutable_data();
    return std::move(array);
}

py::object arrayOver(const Layout& layout, const std::size_t* rows, const std::size_t* entries,
                     std::unique_ptr<unsigned char[]> data) {
    unsigned char* const memory = data.get();
    const py::capsule owner(memory, [](void* held) { delete[] static_cast<unsigned char*>(held); });
    (void)data.release();
    return py::array(typeOf(layout), shapeOf(layout, rows, entries), memory, owner);
}

py::object toPython(Number number, const void* data) {
    if (number == Number::truth) {
        return py::bool_(*static_cast<const unsigned char*>(data) != 0);
    }
    if (number == Number::single) {
        float value = 0.0f;
        std::memcpy(&value, data, sizeof(value));
        return py::float_(static_cast<double>(value));
    }
    std::uint32_t value = 0;
    std::memcpy(&value, data, sizeof(value));
    return number == Number::integer ? py::int_(static_cast<int>(value)) : py::int_(value);
}

} // namespace zent::python
