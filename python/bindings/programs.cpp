#include "Function.h"

#include <pybind11/stl.h>

#include "zent/expression/compileExpression.h"

namespace zent::python {

namespace {

py::object toPython(const Value& value) {
    if (const bool* truth = std::get_if<bool>(&value)) {
        return py::bool_(*truth);
    }
    if (const int* number = std::get_if<int>(&value)) {
        return py::int_(*number);
    }
    if (const double* number = std::get_if<double>(&value)) {
        return py::float_(*number);
    }
    const auto& vector = std::get<ValueVector>(value);
    return py::make_tuple(vector.x, vector.y, vector.z);
}

[[noreturn]] void raise(const ExpressionError& error) {
    PyErr_SetString(errorType(), toText(error).c_str());
    throw py::error_already_set();
}

/// Code, constants, and a listing.
py::tuple compile(const std::string& text, const std::vector<std::string>& inputs,
                  const std::vector<std::string>& outputs, double framesPerSecond) {
    const CompiledExpression compiled = compileExpression(text, inputs, outputs, framesPerSecond);
    if (compiled.error) {
        raise(*compiled.error);
    }
    py::list constants;
    for (const Value& constant : compiled.program.constants) {
        constants.append(toPython(constant));
    }
    const auto& code = compiled.program.code;
    return py::make_tuple(py::bytes(reinterpret_cast<const char*>(code.data()), code.size()), constants,
                          listing(compiled.program, compiled.marks, text));
}

py::tuple names(const std::string& text) {
    const ExpressionNames found = namesInExpression(text);
    if (found.error) {
        raise(*found.error);
    }
    return py::make_tuple(py::cast(found.inputs), py::cast(found.outputs));
}

} // namespace

void bindPrograms(py::module_& module) {
    using namespace pybind11::literals;
    module.def("compile_expression", &compile, "text"_a, "inputs"_a, "outputs"_a, "frames_per_second"_a);
    module.def("names_in_expression", &names, "text"_a);
}

} // namespace zent::python
