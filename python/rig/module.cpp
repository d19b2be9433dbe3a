#include "bindings/Argument.h"
#include "bindings/Constructed.h"

#include "zent/rig/Rig.h"

#include <pybind11/numpy.h>
#include <pybind11/stl.h>

#include <cstring>
#include <deque>
#include <mutex>
#include <new>
#include <optional>

/// zent.Rig, but for what Python alone does better. A module of its own, since it holds a stand-in for Maya's API.
namespace zent::python {

namespace {

[[noreturn]] void raise(const std::string& text) {
    PyErr_SetString(py::module_::import("zent._zent").attr("Error").ptr(), text.c_str());
    throw py::error_already_set();
}

/// Calls into the library; what it throws is a zent.Error.
template <class Work>
auto asError(Work work) {
    try {
        return work();
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& error) {
        raise(error.what());
    }
}

constexpr std::size_t kNumbersOfMatrix = 16;

/// How a plug's value lies: 16 numbers are a matrix, those of a shape its points.
Layout layoutOf(rig::Type type, std::size_t count) {
    if (type != rig::Type::numbers) {
        return {Number::single, 1, {3, 1}, true, count, count};
    }
    if (count == 1) {
        return {Number::single, 0, {1, 1}};
    }
    return count == kNumbersOfMatrix ? Layout{Number::single, 2, {4, 4}} : Layout{Number::single, 1, {count, 1}};
}

struct GivenInput {
    rig::PlugId id;
    rig::Type type = rig::Type::numbers;
    std::size_t count = 0;
    Numbers numbers;
};

struct AskedOutput {
    rig::PlugId id;
    rig::Type type = rig::Type::numbers;
    std::size_t count = 0; ///< of floats
    py::object array;
    float* data = nullptr;
};

class BoundRig {
public:
    explicit BoundRig(rig::Rig&& loaded) : rig_(std::move(loaded)) {}

    const rig::Rig& rig() const { return rig_; }

    py::dict evaluate(const py::dict& given, const std::vector<std::string>& asked);
    py::array shapeMatrix(const std::string& plug);

private:
    void run(const Call& call, const std::deque<GivenInput>& inputs, std::deque<AskedOutput>& outputs,
             std::size_t& row);
    void fetch(const AskedOutput& output, std::size_t row) const;

    rig::Rig rig_;
    std::mutex mutex_; // a rig is for one thread at a time
};

py::dict BoundRig::evaluate(const py::dict& given, const std::vector<std::string>& asked) {
    std::vector<Parameter> parameters;
    std::vector<PyObject*> values;
    for (const auto& [key, value] : given) {
        if (!PyUnicode_Check(key.ptr())) {
            throw py::type_error("Rig.evaluate: inputs: a plug's name expected, not " +
                                 std::string(Py_TYPE(key.ptr())->tp_name));
        }
        parameters.emplace_back().name = key.cast<std::string>();
        values.push_back(value.ptr());
    }
    Call call("Rig.evaluate", parameters, values.data());
    std::deque<GivenInput> inputs;
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        GivenInput& input = inputs.emplace_back();
        input.id = asError([&] { return rig_.input(parameters[i].name); });
        const rig::PlugInfo& info = rig_.inputs()[input.id.index];
        input.type = info.type;
        input.count = info.type == rig::Type::numbers ? input.id.count : info.size;
        input.numbers.read(call, i, layoutOf(input.type, input.count));
    }

    const std::size_t rows = call.rows();
    std::deque<AskedOutput> outputs;
    for (const std::string& name : asked) {
        AskedOutput& output = outputs.emplace_back();
        output.id = asError([&] { return rig_.output(name); });
        const rig::PlugInfo& info = rig_.outputs()[output.id.index];
        output.type = info.type;
        const std::size_t size = info.type == rig::Type::numbers ? output.id.count : info.size;
        Layout layout = layoutOf(info.type, size);
        output.count = size * (info.type == rig::Type::numbers ? 1 : 3);
        void* data = nullptr;
        output.array = newArray(layout, call.isBatch() ? &rows : nullptr, layout.isList ? &size : nullptr, data);
        output.data = static_cast<float*>(data);
    }

    std::size_t row = 0;
    std::string problem;
    {
        const py::gil_scoped_release released;
        const std::lock_guard<std::mutex> lock(mutex_);
        try {
            run(call, inputs, outputs, row);
        } catch (const std::bad_alloc&) {
            throw;
        } catch (const std::exception& error) {
            problem = error.what();
        }
    }
    if (!problem.empty()) {
        raise(call.isBatch() ? "row " + std::to_string(row) + ": " + problem : problem);
    }
    py::dict made;
    for (std::size_t i = 0; i < asked.size(); ++i) {
        const bool isNumber = !call.isBatch() && outputs[i].type == rig::Type::numbers && outputs[i].count == 1;
        made[py::str(asked[i])] = isNumber ? toPython(Number::single, outputs[i].data) : outputs[i].array;
    }
    return made;
}

void BoundRig::run(const Call& call, const std::deque<GivenInput>& inputs, std::deque<AskedOutput>& outputs,
                   std::size_t& row) {
    for (row = 0; row < call.rows(); ++row) {
        for (const GivenInput& input : inputs) {
            if (row != 0 && input.numbers.isRepeated()) {
                continue;
            }
            const auto* from = reinterpret_cast<const float*>(input.numbers.at(row));
            if (input.type == rig::Type::numbers) {
                rig_.setNumbers(input.id, from, input.count);
            } else {
                rig_.setPoints(input.id, reinterpret_cast<const vec3*>(from), input.count);
            }
        }
        std::string failed;
        try {
            rig_.evaluate();
        } catch (const std::runtime_error& error) { // which outputs have no part in
            failed = error.what();
        }
        if (!failed.empty() && outputs.empty()) {
            throw std::runtime_error(failed);
        }
        for (const AskedOutput& output : outputs) {
            try {
                fetch(output, row);
            } catch (const std::runtime_error& error) {
                const std::string text = error.what();
                throw std::runtime_error(
                    failed.empty() || text.find(failed) != std::string::npos ? text : text + "; first, " + failed);
            }
        }
    }
}

void BoundRig::fetch(const AskedOutput& output, std::size_t row) const {
    const float* from = nullptr;
    if (output.type == rig::Type::numbers) {
        from = rig_.numbers(output.id);
    } else {
        const std::vector<vec3>& points = rig_.points(output.id);
        if (points.size() * 3 != output.count) {
            throw std::runtime_error(rig_.outputs()[output.id.index].name + " has " + std::to_string(points.size()) +
                                     " points, not " + std::to_string(output.count / 3));
        }
        from = reinterpret_cast<const float*>(points.data());
    }
    if (output.count != 0) {
        std::memcpy(output.data + row * output.count, from, output.count * sizeof(float));
    }
}

py::array BoundRig::shapeMatrix(const std::string& plug) {
    const mat4 matrix = asError([&] {
        const py::gil_scoped_release released;
        const std::lock_guard<std::mutex> lock(mutex_);
        return rig_.shapeMatrix(rig_.output(plug));
    });
    py::array_t<float> array(std::vector<py::ssize_t>{4, 4});
    std::memcpy(array.mutable_data(), &matrix, sizeof(matrix));
    return std::move(array);
}

py::list plugsOf(const std::vector<rig::PlugInfo>& infos) {
    static const char* const kTypes[] = {"numbers", "mesh", "curve", "surface", "lattice"};
    py::list plugs;
    for (const rig::PlugInfo& info : infos) {
        plugs.append(py::make_tuple(info.name, kTypes[static_cast<std::size_t>(info.type)], info.size));
    }
    return plugs;
}

py::list recordsOf(const rig::Rig& rig) {
    py::list records;
    for (const rig::RecordInfo& record : rig.records()) {
        py::list outputs;
        for (const std::size_t output : record.outputs) {
            outputs.append(rig.outputs()[output].name);
        }
        const bool isAdded = record.index == rig::RecordInfo::kAdded;
        records.append(py::make_tuple(record.node, record.method,
                                      isAdded ? py::object(py::none()) : py::object(py::int_(record.index)),
                                      record.sources, outputs));
    }
    return records;
}

} // namespace

} // namespace zent::python

namespace pybind11::detail {
template <>
struct type_caster<zent::python::BoundRig> : CasterOfConstructed<zent::python::BoundRig> {};
} // namespace pybind11::detail

PYBIND11_MODULE(_rig, module) {
    using namespace zent::python;
    using namespace pybind11::literals;
    module.doc() = "The compiled part of zent.Rig.";
    py::class_<BoundRig>(module, "Rig")
        .def(py::init([](const std::string& manifest, const std::string& resource, const std::string& scene,
                         const std::string& nameSpace) {
                 return asError([&] {
                     std::optional<zent::rig::Rig> loaded;
                     {
                         const py::gil_scoped_release released;
                         loaded.emplace(zent::rig::Rig::load(manifest, resource, scene, nameSpace));
                     }
                     return std::make_unique<BoundRig>(std::move(*loaded));
                 });
             }),
             "manifest"_a, "resource"_a, "scene"_a, "namespace"_a)
        .def("evaluate", &BoundRig::evaluate, "inputs"_a, "outputs"_a)
        .def("shape_matrix", &BoundRig::shapeMatrix, "output"_a)
        .def("inputs", [](const BoundRig& self) { return plugsOf(self.rig().inputs()); })
        .def("outputs", [](const BoundRig& self) { return plugsOf(self.rig().outputs()); })
        .def("records", [](const BoundRig& self) { return recordsOf(self.rig()); })
        .def("notes", [](const BoundRig& self) { return self.rig().notes(); });
}
