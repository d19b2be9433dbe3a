#pragma once

#include "zent/proxies/Access.h"
#include "zent/proxies/Evaluation.h"

#include <tuple>
#include <type_traits>
#include <utility>

namespace zent {

/// The results of a node function that makes a T: one, or those of a list, on attribute 0. A node function whose value
/// is several results has a row of its own.
template <class T>
struct Results {
    static Slot at(T& value, unsigned int attribute, const EntryPlace& entry) {
        return attribute == 0 ? entrySlot(value, entry) : Slot();
    }
};

/// How a node function is evaluated time and again. One that takes its lists by value has a row of its own where a copy
/// would allocate: it gives the same from the values where they stand, and may keep what it made of them.
template <auto Function>
struct Inside {
    template <class Values, class Value>
    void operator()(Values& values, Value& value) {
        value = std::apply(Function, values);
    }
};

/// A node function, its arguments in the order of its parameters, and what it made of them last.
template <auto Function>
class FunctionEvaluation : public Evaluation {
public:
    using Value = typename Caller<decltype(Function)>::Value;
    using Show = void (*)(json& outputs, const Value& value);

    FunctionEvaluation(const Arguments& args, Show append)
        : values_(Caller<decltype(Function)>::read(args)), show_(append) {}

    Slot argument(unsigned int index, const EntryPlace& entry) override {
        return argument(index, entry, std::make_index_sequence<std::tuple_size_v<decltype(values_)>>{});
    }
    Slot output(unsigned int attribute, std::size_t position) override {
        static const std::vector<unsigned int> kNone;
        return Results<Value>::at(value_, attribute, {position, kNone});
    }
    bool staysInPlace() const override { return std::is_floating_point_v<Value> || kIsVector<Value>; }
    void evaluate() override { inside_(values_, value_); }
    void show(json& outputs) const override { show_(outputs, value_); }

private:
    template <class T>
    static constexpr bool kIsVector = std::is_same_v<T, vec2> || std::is_same_v<T, vec3> || std::is_same_v<T, vec4> ||
                                      std::is_same_v<T, quat> || std::is_same_v<T, mat4>;

    template <std::size_t... I>
    Slot argument(unsigned int index, const EntryPlace& entry, std::index_sequence<I...>) {
        Slot slot;
        static_cast<void>(((I == index && (slot = entrySlot(std::get<I>(values_), entry), true)) || ...));
        return slot;
    }

    typename Caller<decltype(Function)>::Values values_;
    Value value_{};
    Inside<Function> inside_;
    Show show_;
};

} // namespace zent
