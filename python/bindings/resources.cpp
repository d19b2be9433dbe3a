#include "Function.h"

#include "zent/values/ResourceWriter.h"

#include <pybind11/numpy.h>

#include <utility>

namespace pybind11::detail {
template <>
struct type_caster<zent::ResourceWriter> : CasterOfConstructed<zent::ResourceWriter> {};
} // namespace pybind11::detail

namespace zent::python {

namespace {

/// Reads one argument of a method of zent.Resource with the checks and texts of a function's.
class BlockCall {
public:
    BlockCall(const char* method, const char* name, const py::object& value)
        : parameters_(1), values_{value.ptr()}, call_(method, parameters_, values_) {
        parameters_[0].name = name;
    }
    BlockCall(const BlockCall&) = delete;
    BlockCall& operator=(const BlockCall&) = delete;

    template <class T>
    T read() {
        Source<T> source;
        source.read(call_, 0);
        source.settle(call_, 0);
        if (call_.isBatch()) {
            call_.failValue(0, "one dimension too many");
        }
        typename Source<T>::Local local;
        return source.take(local, 0);
    }
    Call& call() { return call_; }

private:
    std::vector<Parameter> parameters_;
    PyObject* values_[1];
    Call call_;
};

/// Where points are given, each weight is that of its point; of equal points the first one counts.
WeightMap weightMap(const py::object& weights, const py::object& points) {
    BlockCall reader("Resource.weight_map", "weights", weights);
    if (points.is_none()) {
        return reader.read<WeightMap>();
    }
    const auto numbers = reader.read<std::vector<float>>();
    BlockCall indexReader("Resource.weight_map", "points", points);
    const auto indices = indexReader.read<std::vector<unsigned int>>();
    if (indices.size() != numbers.size()) {
        indexReader.call().failValue(0, std::to_string(indices.size()) + " points for " +
                                            std::to_string(numbers.size()) + " weights");
    }
    WeightMap map;
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        map.emplace_hint(map.end(), indices[i], numbers[i]);
    }
    return map;
}

template <class T>
void bindList(py::class_<ResourceWriter>& type, const char* method, const char* argument) {
    type.def(
        method,
        [method, argument](ResourceWriter& self, const py::object& value) {
            const std::string name = std::string("Resource.") + method;
            return self.add(BlockCall(name.c_str(), argument, value).read<T>());
        },
        py::arg(argument));
}

} // namespace

void bindResources(py::module_& module) {
    using namespace pybind11::literals;
    py::class_<ResourceWriter> type(module, "ResourceWriter");
    type.def(py::init<>());
    type.def("__len__", &ResourceWriter::size);
    bindList<Mesh>(type, "mesh", "mesh");
    bindList<Curve>(type, "curve", "curve");
    bindList<Surface>(type, "surface", "surface");
    bindList<Lattice>(type, "lattice", "lattice");
    bindList<DeltaList>(type, "deltas", "deltas");
    bindList<SkinWeights>(type, "skin_weights", "weights");
    bindList<WireBindings>(type, "wire_bindings", "bindings");
    bindList<std::vector<unsigned int>>(type, "indices", "indices");
    bindList<std::vector<unsigned char>>(type, "byte_code", "code");
    bindList<std::vector<Value>>(type, "constants", "constants");
    type.def(
        "weight_map",
        [](ResourceWriter& self, const py::object& weights, const py::object& points) {
            return self.add(weightMap(weights, points));
        },
        "weights"_a, "points"_a);
    type.def(
        "raw", [](ResourceWriter& self, const py::bytes& bytes) { return self.addBytes(bytes); }, "bytes"_a);
    type.def(
        "write",
        [](const ResourceWriter& self, const std::string& path) {
            try {
                self.write(path);
            } catch (const std::exception& error) {
                PyErr_SetString(errorType(), error.what());
                throw py::error_already_set();
            }
        },
        "path"_a);
}

} // namespace zent::python
