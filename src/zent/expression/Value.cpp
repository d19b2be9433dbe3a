#include "zent/expression/Value.h"

#include <array>
#include <charconv>
#include <cstring>

namespace zent {

namespace {

template <class T>
T storedField(const char* bytes) {
    T field;
    std::memcpy(&field, bytes, sizeof(T));
    return field;
}

std::string doubleText(double number) {
    std::array<char, 32> buffer;
    const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number);
    std::string text(buffer.data(), end);
    if (text.find_first_not_of("-0123456789") == std::string::npos) {
        text += ".0"; // a double, not an integer
    }
    return text;
}

} // namespace

Value valueFromBytes(const char* record) {
    const auto index = static_cast<unsigned char>(record[24]);
    switch (index) {
    case 0:
        return record[0] != 0;
    case 1:
        return storedField<int>(record);
    case 2:
        return storedField<double>(record);
    case 3:
        return ValueVector{storedField<double>(record), storedField<double>(record + 8),
                           storedField<double>(record + 16)};
    default:
        return UnknownValue{index};
    }
}

std::string toText(const Value& value) {
    switch (value.index()) {
    case 0:
        return *std::get_if<bool>(&value) ? "true" : "false";
    case 1:
        return std::to_string(*std::get_if<int>(&value));
    case 2:
        return doubleText(*std::get_if<double>(&value));
    case 4:
        return "unknown kind " + std::to_string(std::get_if<UnknownValue>(&value)->index);
    default: {
        const auto& vector = *std::get_if<ValueVector>(&value);
        return "(" + doubleText(vector.x) + ", " + doubleText(vector.y) + ", " + doubleText(vector.z) + ")";
    }
    }
}

} // namespace zent
