#include "Function.h"

PYBIND11_MODULE(_zent, module) {
    using namespace zent::python;
    module.doc() = "The compiled part of zent.";
    module.attr("Error") = py::reinterpret_borrow<py::object>(errorType());
    module.attr("__version__") = ZENT_VERSION;
    bindShapes(module);
    bindPrograms(module);
    bindResources(module);

    module.def("set_threads", &setThreads, py::arg("count"),
               "At most `count` threads for the rows of one call; 0, which is the default, for one on each processor "
               "that this\n"
               "process may use. Calls of little work take one.");

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
