#pragma once

#include <pybind11/pybind11.h>

#include <string>

namespace pybind11::detail {

/// Of a bound class whose objects always have a value: what Python made of it without its constructor is a TypeError.
template <class T>
struct CasterOfConstructed : type_caster_base<T> {
    bool load(handle source, bool convert) {
        if (const handle type = get_type_handle(typeid(T), false); type && isinstance(source, type)) {
            auto* const self = reinterpret_cast<instance*>(source.ptr());
            if (!self->get_value_and_holder().holder_constructed()) {
                throw type_error(std::string(Py_TYPE(source.ptr())->tp_name) + ": made without its constructor");
            }
        }
        return type_caster_base<T>::load(source, convert);
    }
};

} // namespace pybind11::detail
