#pragma once

#include "Source.h"

#include <functional>
#include <optional>
#include <tuple>

/// Functions of the library as functions of Python. One call binds one, by its signature:
///
///     functions.add("clamp", clamp, "input min=0 max=0", "`input` held between `min` and `max`.");
namespace zent::python {

/// A parameter's or a result's type in words, and as a stub has it.
struct TypeText {
    std::string words;
    std::string annotation;
};
TypeText textOf(const Layout& layout);

template <class T>
struct TextOf {
    static TypeText get() {
        if constexpr (List<T>::is) {
            return textOf(List<T>::layout);
        } else {
            return textOf(Element<T>::layout);
        }
    }
};
#define ZENT_TEXT(type, words, annotation)                                                                             \
    template <>                                                                                                        \
    struct TextOf<type> {                                                                                              \
        static TypeText get() { return {words, annotation}; }                                                          \
    }
ZENT_TEXT(Mesh, "a Mesh", "Mesh");
ZENT_TEXT(Curve, "a Curve", "Curve");
ZENT_TEXT(Surface, "a Surface", "Surface");
ZENT_TEXT(Lattice, "a Lattice", "Lattice");
ZENT_TEXT(quat, "(4,) floats: x, y, z, w", "Floats");
ZENT_TEXT(WeightMap, "a float for each index: {index: float}, or (n,) floats", "WeightMap");
using PointMap = std::map<unsigned int, vec3>;
ZENT_TEXT(PointMap, "a point for each index: {index: point}, or (n, 3) floats", "PointMap");
using PairMap = std::map<ItemIndex, float>;
ZENT_TEXT(PairMap, "a float for each pair: {(first, second): float}, or (n, m) floats", "PairMap");
using WeightMaps = std::map<unsigned int, WeightMap>;
ZENT_TEXT(WeightMaps, "a weight map for each index: {index: weight map}", "Mapping[int, WeightMap]");
ZENT_TEXT(SkinWeights, "(points, influences) floats, or three arrays: points, influences, weights", "SkinWeights");
ZENT_TEXT(WireBindings, "two arrays: (n,) parameters, (n, 3, 3) frames", "WireBindings");
ZENT_TEXT(WrapBindings, "three arrays: (n, 3) bind positions, (n, 3) indices of triangles, (n, 3) weights",
          "WrapBindings");
ZENT_TEXT(std::vector<unsigned char>, "bytes", "bytes");
ZENT_TEXT(std::vector<Value>, "a list of bool, int, float or (3,) floats", "Sequence[Any]");
using MeshItems = std::map<ItemIndex, std::reference_wrapper<Mesh const>>;
using CurveItems = std::map<ItemIndex, std::reference_wrapper<Curve const>>;
using SurfaceItems = std::map<ItemIndex, std::reference_wrapper<Surface const>>;
using DeltaItems = std::map<ItemIndex, std::reference_wrapper<DeltaList const>>;
ZENT_TEXT(MeshItems, "{(target, item): Mesh}, or {target: Mesh} for item 6000", "Mapping[Any, Mesh]");
ZENT_TEXT(CurveItems, "{(target, item): Curve}, or {target: Curve} for item 6000", "Mapping[Any, Curve]");
ZENT_TEXT(SurfaceItems, "{(target, item): Surface}, or {target: Surface} for item 6000", "Mapping[Any, Surface]");
ZENT_TEXT(DeltaItems, "{(target, item): deltas}, or {target: deltas}; deltas are two arrays: points, (n, 3) offsets",
          "Mapping[Any, Deltas]");
#undef ZENT_TEXT
template <class A, class B>
struct TextOf<std::pair<A, B>> {
    static TypeText get() { return {TextOf<A>::get().words + ", and " + TextOf<B>::get().words, "Tuple[Any, Any]"}; }
};

/// Evaluates rows from `row` up to `last`, and leaves `row` at one that throws.
using Rows = std::function<void(std::size_t last, std::size_t& row)>;
struct RowWork {
    Rows here;   ///< in the thread of the call
    Rows beside; ///< in another one
    std::function<bool()> share;
    std::function<void()> restart;
};
/// All rows of a call, in as many threads as there are processors where that is worth it. Throws what the first row
/// that fails throws, with the call at that row. The interpreter must be released.
void evaluateRows(Call& call, const RowWork& work);
/// At most so many threads for one call; 0 for one on each processor of this process.
void setThreads(unsigned int count);

using AnyFunction = void (*)();
using Invoke = py::object (*)(AnyFunction function, Call& call);

/// A bound function.
struct Function {
    std::string name;
    std::vector<Parameter> parameters; ///< in the order of the library's function
    std::vector<unsigned int> order;   ///< Python's positions: those that must be given, then those with a default
    std::string text;                  ///< signature and docstring
    std::string stub;
    AnyFunction function = nullptr;
    Invoke invoke = nullptr;
};

template <class Signature>
struct Invoker;

template <class R, class... P>
struct Invoker<R (*)(P...)> {
    using Result = std::decay_t<R>;
    using Indices = std::index_sequence_for<P...>;
    static constexpr bool isLong = ((isShape<std::decay_t<P>>) || ...) || isShape<Result>;

    /// The rows' values go in as the function takes them.
    template <class Parameter, class Values>
    static decltype(auto) pass(const Values& values, typename Values::Local& local, std::size_t row) {
        using Referred = std::remove_reference_t<Parameter>;
        if constexpr (!std::is_reference_v<Parameter>) {
            return values.take(local, row);
        } else if constexpr (std::is_const_v<Referred>) {
            return values.view(local, row);
        } else {
            return values.own(local, row, std::is_reference_v<R>);
        }
    }

    template <std::size_t... I>
    static py::object run(AnyFunction anyFunction, Call& call, std::index_sequence<I...>) {
        const auto function = reinterpret_cast<R (*)(P...)>(anyFunction);
        std::tuple<Source<std::decay_t<P>>...> sources;
        (std::get<I>(sources).read(call, I), ...);
        (std::get<I>(sources).settle(call, I), ...);
        Sink<Result> sink;
        sink.start(call);
        {
            std::optional<py::gil_scoped_release> released;
            if (isLong || call.isBatch()) {
                released.emplace();
            }
            using Locals = std::tuple<typename Source<std::decay_t<P>>::Local...>;
            const auto evaluate = [&](Locals& locals, std::size_t last, std::size_t& row) {
                (void)locals; // of a function without parameters
                for (; row < last; ++row) {
                    sink.set(row, Result(function(pass<P>(std::get<I>(sources), std::get<I>(locals), row)...)));
                }
            };
            Locals locals;
            if (call.rows() < 2) {
                evaluate(locals, call.rows(), call.row);
            } else {
                const RowWork work{[&](std::size_t last, std::size_t& row) { evaluate(locals, last, row); },
                                   [&](std::size_t last, std::size_t& row) {
                                       Locals own;
                                       evaluate(own, last, row);
                                   },
                                   [&] { return sink.share(); }, [&] { sink.restart(); }};
                evaluateRows(call, work);
            }
        }
        return sink.finish(call);
    }
    static py::object invoke(AnyFunction function, Call& call) { return run(function, call, Indices{}); }
    static std::vector<TypeText> types() { return {TextOf<std::decay_t<P>>::get()...}; }
    static TypeText result() { return TextOf<Result>::get(); }
};

/// The functions of a module. They live as long as the process.
class Functions {
public:
    explicit Functions(py::module_& module) : module_(module) {}

    template <class R, class... P>
    void add(const char* name, R (*function)(P...), const char* parameters, const char* summary) {
        using Bound = Invoker<R (*)(P...)>;
        add(name, reinterpret_cast<AnyFunction>(function), &Bound::invoke, Bound::types(), Bound::result(), parameters,
            summary);
    }

private:
    void add(const char* name, AnyFunction function, Invoke invoke, const std::vector<TypeText>& types,
             const TypeText& result, const char* parameters, const char* summary);

    py::module_& module_;
};

/// What the library throws where it cannot evaluate: zent.Error.
PyObject* errorType();

void bindShapes(py::module_& module);
void bindPrograms(py::module_& module);
void bindResources(py::module_& module);
void bindUtilities(Functions& functions);
void bindTransforms(Functions& functions);
void bindConstraints(Functions& functions);
void bindCurves(Functions& functions);
void bindSurfaces(Functions& functions);
void bindDeformers(Functions& functions);

} // namespace zent::python
