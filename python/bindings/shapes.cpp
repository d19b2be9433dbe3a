#include "Function.h"

#include "zent/geometry/transform.h"

#include <pybind11/numpy.h>

#include <memory>

namespace zent::python {

namespace {

/// Reads the arguments of a shape's constructor with the checks and texts of a function's.
class Reader {
public:
    explicit Reader(const char* shape) : shape_(shape) {}

    template <class T>
    T read(const char* name, py::handle value, const Layout& layout) {
        std::vector<Parameter> parameters(1);
        parameters[0].name = name;
        PyObject* values[] = {value.ptr()};
        Call call(shape_, parameters, values);
        Numbers numbers;
        numbers.read(call, 0, value.ptr(), layout);
        if (numbers.hasRows()) {
            call.failValue(0, "one dimension too many");
        }
        if constexpr (List<T>::is) {
            T list(numbers.entries());
            if (!list.empty()) {
                std::memcpy(static_cast<void*>(list.data()), numbers.at(0), list.size() * sizeof(list[0]));
            }
            return list;
        } else {
            T one;
            std::memcpy(&one, numbers.at(0), sizeof(T));
            return one;
        }
    }
    std::vector<vec3> points(py::handle value) {
        return read<std::vector<vec3>>("points", value, List<std::vector<vec3>>::layout);
    }
    std::vector<float> knots(const char* name, py::handle value) {
        return read<std::vector<float>>(name, value, List<std::vector<float>>::layout);
    }
    mat4 matrix(py::handle value) {
        return value.is_none() ? mat4(1.0f) : read<mat4>("matrix", value, Element<mat4>::layout);
    }
    [[noreturn]] void fail(const std::string& text) const { throw py::value_error(std::string(shape_) + ": " + text); }

    unsigned int form(py::handle value) const {
        static const char* const kNames[] = {"", "open", "closed", "periodic"};
        for (unsigned int i = kFormOpen; i <= kFormPeriodic; ++i) {
            if (value.equal(py::str(kNames[i])) || value.equal(py::int_(i))) {
                return i;
            }
        }
        fail("form: \"open\", \"closed\" or \"periodic\" expected");
    }
    unsigned int degree(int value) const {
        if (value < 1 || value > 5) {
            fail("degree: 1 to 5 expected, not " + std::to_string(value));
        }
        return static_cast<unsigned int>(value);
    }
    void requireKnots(const char* name, std::size_t knots, std::size_t points, unsigned int degree) const {
        if (points <= degree || knots != points + degree - 1) {
            fail(std::string(name) + ": " + std::to_string(knots) + " knots for " + std::to_string(points) +
                 " points of degree " + std::to_string(degree) + "; " + std::to_string(points + degree - 1) +
                 " expected" + (points <= degree ? ", and more points than the degree" : ""));
        }
    }

private:
    const char* shape_;
};

/// The clamped knots of an open curve, a unit apart.
std::vector<float> openKnots(std::size_t points, unsigned int degree) {
    std::vector<float> knots;
    for (std::size_t i = 0; points > degree && i < points + degree - 1; ++i) {
        const std::size_t last = points - degree;
        knots.push_back(static_cast<float>(i < degree ? 0 : std::min(i - degree + 1, last)));
    }
    return knots;
}

/// A shape's list as an array without a copy. A shape keeps its list as long as it is, so that the array stays good.
template <class Item>
py::array viewOf(const std::vector<Item>& list, std::vector<py::ssize_t> shape, py::handle owner, bool isWritable) {
    py::array_t<float> view(std::move(shape), reinterpret_cast<const float*>(list.data()), owner);
    if (!isWritable) {
        view.attr("flags").attr("writeable") = false;
    }
    return std::move(view);
}

py::ssize_t length(std::size_t count) {
    return static_cast<py::ssize_t>(count);
}

/// A surface's points are an array of U by V, where its counts say so.
std::vector<py::ssize_t> arrayShape(const Surface& surface) {
    const std::size_t u = surface.knotsU.size() + 1 - surface.degreeU;
    const std::size_t v = surface.knotsV.size() + 1 - surface.degreeV;
    if (surface.cv.size() == u * v) {
        return {length(u), length(v), 3};
    }
    return {length(surface.cv.size()), 3};
}
template <class T>
std::vector<py::ssize_t> arrayShape(const T& shape) {
    return {length(pointsOf(shape).size()), 3};
}

py::array toArray(const mat4& matrix) {
    py::array_t<float> array(std::vector<py::ssize_t>{4, 4});
    std::memcpy(array.mutable_data(), &matrix, sizeof(matrix));
    return std::move(array);
}

template <class T>
void setMatrix(T& shape, const mat4& matrix) {
    if constexpr (std::is_same_v<T, Lattice>) {
        shape.matrixLinear = mat3(matrix);
        shape.translation = vec3(matrix[3]);
    } else if constexpr (std::is_same_v<T, Surface>) {
        shape.setMatrix(matrix);
    } else {
        setTransformAndInverse(shape, matrix); // the lists stay: another thread may be reading them
    }
}

template <class T>
void bindCommon(py::class_<T>& type) {
    type.def_property(
        "points",
        [](const py::object& self) {
            const T& shape = self.cast<const T&>();
            return viewOf(pointsOf(shape), arrayShape(shape), self, true);
        },
        [](const py::object& self, const py::object& value) {
            const py::object view = self.attr("points");
            if (!py::array(value).attr("shape").equal(view.attr("shape"))) {
                throw py::value_error(std::string(shapeName<T>()) + ": points: shape " +
                                      py::str(py::array(value).attr("shape")).cast<std::string>() + ", expected " +
                                      py::str(view.attr("shape")).cast<std::string>());
            }
            view[py::ellipsis()] = value;
        },
        "The points in the shape's own space, as an array that shares its memory: writing to it moves them.");
    type.def_property(
        "matrix", [](const T& shape) { return toArray(matrixOf(shape)); },
        [](T& shape, const py::object& value) { setMatrix(shape, Reader(shapeName<T>()).matrix(value)); },
        "The matrix to world space, (4, 4), row by row as Maya prints it: a copy; assign to change it.");
    type.def(
        "copy", [](const T& shape) { return T(shape); }, "The same with points of its own.");
    type.def("__len__", [](const T& shape) { return pointsOf(shape).size(); });
    type.def("__repr__", [](const T& shape) {
        return std::string("<zent.") + shapeName<T>() + " of " + std::to_string(pointsOf(shape).size()) + " points>";
    });
}

const char* formName(unsigned int form) {
    return form == kFormPeriodic ? "periodic" : form == kFormClosed ? "closed" : "open";
}

std::unique_ptr<Curve> makeCurve(const py::object& points, int degree, const py::object& form, const py::object& knots,
                                 const py::object& matrix) {
    Reader reader("Curve");
    std::vector<vec3> cv = reader.points(points);
    const unsigned int d = reader.degree(degree);
    const unsigned int f = reader.form(form);
    if (knots.is_none() && f == kFormPeriodic) {
        reader.fail("knots: a periodic curve needs its own");
    }
    std::vector<float> k = knots.is_none() ? openKnots(cv.size(), d) : reader.knots("knots", knots);
    reader.requireKnots("knots", k.size(), cv.size(), d);
    return std::make_unique<Curve>(d, f, std::move(cv), std::move(k), reader.matrix(matrix));
}

std::unique_ptr<Surface> makeSurface(const py::object& points, std::pair<int, int> degrees,
                                     const std::pair<py::object, py::object>& forms, const py::object& knotsU,
                                     const py::object& knotsV, const py::object& matrix) {
    Reader reader("Surface");
    const unsigned int degreeU = reader.degree(degrees.first);
    const unsigned int degreeV = reader.degree(degrees.second);
    const py::array array(points);
    if (array.ndim() != 3) {
        reader.fail("points: " + std::to_string(array.ndim()) + " dimensions, (u, v, 3) expected");
    }
    const auto u = static_cast<std::size_t>(array.shape(0));
    const auto v = static_cast<std::size_t>(array.shape(1));
    std::vector<vec3> cv = reader.points(array.attr("reshape")(-1, array.shape(2)));
    std::vector<float> u_ = knotsU.is_none() ? openKnots(u, degreeU) : reader.knots("knots_u", knotsU);
    std::vector<float> v_ = knotsV.is_none() ? openKnots(v, degreeV) : reader.knots("knots_v", knotsV);
    reader.requireKnots("knots_u", u_.size(), u, degreeU);
    reader.requireKnots("knots_v", v_.size(), v, degreeV);
    return std::make_unique<Surface>(degreeU, degreeV, reader.form(forms.first), reader.form(forms.second),
                                     std::move(u_), std::move(v_), std::move(cv), reader.matrix(matrix));
}

std::unique_ptr<Lattice> makeLattice(const py::object& points, const py::object& divisions, const py::object& matrix) {
    Reader reader("Lattice");
    auto lattice = std::make_unique<Lattice>();
    lattice->points = reader.points(points);
    const auto sizes =
        reader.read<std::vector<unsigned int>>("divisions", divisions, {Number::counter, 0, {1, 1}, true, 3, 3});
    lattice->s = sizes[0];
    lattice->t = sizes[1];
    lattice->u = sizes[2];
    constexpr std::size_t kMost = 1U << 20; // in a direction, so that the product does not wrap
    if (sizes[0] > kMost || sizes[1] > kMost || sizes[2] > kMost ||
        lattice->points.size() != std::size_t{sizes[0]} * sizes[1] * sizes[2]) {
        reader.fail("points: " + std::to_string(lattice->points.size()) + " points for " + std::to_string(sizes[0]) +
                    " by " + std::to_string(sizes[1]) + " by " + std::to_string(sizes[2]) + " divisions");
    }
    setMatrix(*lattice, reader.matrix(matrix));
    return lattice;
}

template <class T>
py::object moved(T&& shape) {
    return py::cast(std::make_unique<T>(std::move(shape)));
}

} // namespace

py::object toPython(Mesh&& shape) {
    return moved(std::move(shape));
}
py::object toPython(Curve&& shape) {
    return moved(std::move(shape));
}
py::object toPython(Surface&& shape) {
    return moved(std::move(shape));
}
py::object toPython(Lattice&& shape) {
    return moved(std::move(shape));
}

void bindShapes(py::module_& module) {
    using namespace pybind11::literals;

    py::class_<Mesh> mesh(module, "Mesh",
                          "The points of a polygon mesh, (n, 3) floats in its own space, with its matrix to world "
                          "space.\nA constructor copies its points once; `points` is a view of them.");
    mesh.def(py::init([](const py::object& points, const py::object& matrix) {
                 Reader reader("Mesh");
                 return std::make_unique<Mesh>(reader.points(points), reader.matrix(matrix));
             }),
             "points"_a, "matrix"_a = py::none());
    bindCommon(mesh);

    py::class_<Curve> curve(module, "Curve",
                            "A NURBS curve without weights: control points (n, 3), a degree of 1 to 5, Maya's n + "
                            "degree - 1 knots (clamped\nand a unit apart if None), its form, and its matrix to world "
                            "space. A periodic curve repeats its first points, as\nmany as its degree, at the end.");
    curve.def(py::init(&makeCurve), "points"_a, "degree"_a = 3, "form"_a = "open", "knots"_a = py::none(),
              "matrix"_a = py::none());
    bindCommon(curve);
    curve.def_property_readonly("knots", [](const py::object& self) {
        const Curve& shape = self.cast<const Curve&>();
        return viewOf(shape.knots, {length(shape.knots.size())}, self, false);
    });
    curve.def_property_readonly("degree", [](const Curve& shape) { return shape.degree; });
    curve.def_property_readonly("form", [](const Curve& shape) { return formName(shape.form); });

    py::class_<Surface> surface(module, "Surface",
                                "A NURBS surface without weights: control points (u, v, 3), and for each direction a "
                                "degree, a form and Maya's\nknots (clamped and a unit apart if None), with its matrix "
                                "to world space.");
    surface.def(py::init(&makeSurface), "points"_a, "degrees"_a = std::pair(3, 3),
                "forms"_a = std::pair("open", "open"), "knots_u"_a = py::none(), "knots_v"_a = py::none(),
                "matrix"_a = py::none());
    bindCommon(surface);
    surface.def_property_readonly("knots_u", [](const py::object& self) {
        const Surface& shape = self.cast<const Surface&>();
        return viewOf(shape.knotsU, {length(shape.knotsU.size())}, self, false);
    });
    surface.def_property_readonly("knots_v", [](const py::object& self) {
        const Surface& shape = self.cast<const Surface&>();
        return viewOf(shape.knotsV, {length(shape.knotsV.size())}, self, false);
    });
    surface.def_property_readonly("degrees",
                                  [](const Surface& shape) { return std::pair(shape.degreeU, shape.degreeV); });
    surface.def_property_readonly(
        "forms", [](const Surface& shape) { return std::pair(formName(shape.formU), formName(shape.formV)); });

    py::class_<Lattice> lattice(module, "Lattice",
                                "The points of a lattice, (s * t * u, 3) floats with S running fastest, its divisions "
                                "(s, t, u), and its matrix to\nworld space. The undeformed lattice goes from -0.5 to "
                                "0.5.");
    lattice.def(py::init(&makeLattice), "points"_a, "divisions"_a, "matrix"_a = py::none());
    bindCommon(lattice);
    lattice.def_property_readonly("divisions",
                                  [](const Lattice& shape) { return py::make_tuple(shape.s, shape.t, shape.u); });
}

} // namespace zent::python
