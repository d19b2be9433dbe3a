#include "zent/proxies/Access.h"

#include "zent/proxies/Binding.h"

namespace zent {

std::vector<ValueInfo> describe(std::initializer_list<Describe> types) {
    std::vector<ValueInfo> infos;
    infos.reserve(types.size());
    for (const Describe type : types) {
        infos.push_back(type({}));
    }
    return infos;
}

template <class T>
T Access<T>::argument(const Arguments& args, unsigned int index) {
    return args.get(index).read<T>();
}

template <class T>
T Access<T>::result(const std::vector<Port>& ports, unsigned int index) {
    return resultPort(ports, index).read<T>();
}

template <class T>
ValueInfo Access<T>::info(std::string name) {
    return {std::move(name), PortType<T>::name(), PortType<T>::least, PortType<T>::most};
}

template <class T>
void Shown<T>::append(json& outputs, const T& value) {
    outputs.push_back(output(value));
}

template <class T>
void Shown<T>::append(json& outputs, const char* plug, const T& value) {
    outputs.push_back(output(plug, value));
}

// The types that records give and results show. A link error that names Access or Shown of a type asks for a row here.
template struct Access<float>;
template struct Access<int>;
template struct Access<unsigned int>;
template struct Access<bool>;
template struct Access<vec2>;
template struct Access<vec3>;
template struct Access<vec4>;
template struct Access<mat4>;
template struct Access<Euler>;
template struct Access<Rotation>;
template struct Access<Mesh>;
template struct Access<Curve>;
template struct Access<Surface>;
template struct Access<Lattice>;
template struct Access<SkinWeights>;
template struct Access<WireBindings>;
template struct Access<std::vector<unsigned int>>;
template struct Access<std::vector<unsigned char>>;
template struct Access<std::vector<Value>>;
template struct Access<svec<float, 4>>;
template struct Access<svec<float, 8>>;
template struct Access<svec<float, 16>>;
template struct Access<svec<int, 4>>;
template struct Access<svec<int, 8>>;
template struct Access<svec<int, 16>>;
template struct Access<svec<unsigned int, 9>>;
template struct Access<svec<unsigned int, 16>>;
template struct Access<svec<unsigned int, 36>>;
template struct Access<svec<unsigned int, 64>>;
template struct Access<svec<bool, 4>>;
template struct Access<svec<vec2, 8>>;
template struct Access<svec<vec3, 4>>;
template struct Access<svec<vec3, 8>>;
template struct Access<svec<mat4, 4>>;
template struct Access<svec<mat4, 8>>;
template struct Access<svec<mat4, 16>>;
template struct Access<svec<Euler, 4>>;
template struct Access<std::array<int, 1>>;
template struct Access<std::array<bool, 1>>;
template struct Access<std::array<unsigned int, 4>>;
template struct Access<std::array<vec2, 4>>;
template struct Access<std::array<vec3, 1>>;
template struct Access<static_vector<float, 2>>;
template struct Access<static_vector<int, 2>>;
template struct Access<static_vector<bool, 2>>;
template struct Access<static_vector<vec3, 2>>;
template struct Access<std::vector<int>>;
template struct Access<std::vector<bool>>;
template struct Access<std::vector<vec3>>;
template struct Access<std::vector<mat4>>;
template struct Access<std::vector<Rotation>>;
template struct Access<std::map<unsigned int, float>>;
template struct Access<std::map<unsigned int, vec3>>;
template struct Access<std::map<unsigned int, WeightMap>>;
template struct Access<std::map<ItemIndex, float>>;
template struct Access<std::map<ItemIndex, Mesh>>;
template struct Access<std::map<ItemIndex, Curve>>;
template struct Access<std::map<ItemIndex, Surface>>;
template struct Access<std::map<ItemIndex, DeltaList>>;

template struct Shown<float>;
template struct Shown<vec2>;
template struct Shown<vec3>;
template struct Shown<vec4>;
template struct Shown<quat>;
template struct Shown<mat4>;
template struct Shown<Euler>;
template struct Shown<Rotation>;
template struct Shown<Curve>;
template struct Shown<Surface>;
template struct Shown<svec<float, 16>>;
template struct Shown<static_vector<vec3, 2>>;
template struct Shown<std::vector<vec3>>;

} // namespace zent
