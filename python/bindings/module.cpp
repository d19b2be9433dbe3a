#include "Function.h"

PYBIND11_MODULE(_zent, module) {
    using namespace zent::python;
    module.doc() = "The compiled part of zent.";
    module.attr("Error") = py::reinterpret_borrow<py::object>(errorType());
    module.attr("__version__") = ZENT_VERSION;
    bindShapes(module);
    bindPrograms(module);
    bindResources(module);

    py::module_ nodes = module.def_submodule("nodes");
    nodes.attr("ARGUMENTS") = py::dict();
    nodes.attr("STUBS") = py::dict();
    Functions functions(nodes);
    bindUtilities(functions);
    bindTransforms(functions);
    bindConstraints(functions);
    bindCurves(functions);
    bindSurfaces(functions);
    bindDeformers(functions);
}
