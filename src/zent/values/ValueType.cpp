#include "zent/values/ValueType.h"

#include "zent/values/jsonAccess.h"

namespace zent {

json numbersToJson(const float* numbers, std::size_t count) {
    json::array_t array;
    array.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        array.emplace_back(static_cast<double>(numbers[i]));
    }
    return json(std::move(array));
}

void numbersFromJson(const json& value, float* numbers, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        numbers[i] = item(value, i).get<float>();
    }
}

json ValueType<Rotation>::toJson(const Rotation& value) {
    constexpr float kDegreesPerRadian = 57.29578f;
    return zent::toJson(value.radians * kDegreesPerRadian);
}

} // namespace zent
