#include "scene/values.h"

#include "maya/Scene.h"

#include <fmt/format.h>

#include <limits>
#include <stdexcept>
#include <string_view>

namespace scene {

void failAt(const Slot& slot, const std::string& text) {
    throw std::runtime_error(fullName(slot) + ": " + text);
}

double readNumber(const Slot& slot, const char* name, const Json& value) {
    if (value.is_number()) {
        return value.get<double>();
    }
    if (value == "nan") {
        return std::numeric_limits<double>::quiet_NaN();
    }
    if (value == "inf" || value == "-inf") {
        return value == "inf" ? std::numeric_limits<double>::infinity() : -std::numeric_limits<double>::infinity();
    }
    failAt(slot, fmt::format("\"{}\" should be a number, not {}", name, value.type_name()));
}

unsigned int readCount(const Slot& slot, const char* name, const Json& value, unsigned int last) {
    if (!value.is_number_unsigned() || value.get<std::uint64_t>() > last) {
        failAt(slot, fmt::format("\"{}\" should be a whole number from 0 to {}", name, last));
    }
    return value.get<unsigned int>();
}

const std::string& readText(const Slot& slot, const char* name, const Json& value) {
    if (!value.is_string()) {
        failAt(slot, fmt::format("\"{}\" should be a text, not {}", name, value.type_name()));
    }
    return value.get_ref<const std::string&>();
}

const Json& requireList(const Slot& slot, const char* name, const Json& value) {
    if (!value.is_array()) {
        failAt(slot, fmt::format("\"{}\" should be a list, not {}", name, value.type_name()));
    }
    return value;
}

const Json& requireList(const Slot& slot, const char* name, const Json& value, std::size_t size) {
    if (requireList(slot, name, value).size() != size) {
        failAt(slot, fmt::format("\"{}\" should be a list of {}, not of {}", name, size, value.size()));
    }
    return value;
}

const Json& requireObject(const Slot& slot, const char* name, const Json& value) {
    if (!value.is_object()) {
        failAt(slot, fmt::format("\"{}\" should be an object, not {}", name, value.type_name()));
    }
    return value;
}

MMatrix readMatrix(const Slot& slot, const char* name, const Json& value) {
    requireList(slot, name, value, 16);
    MMatrix matrix;
    for (unsigned int i = 0; i < 16; ++i) {
        matrix[i / 4][i % 4] = readNumber(slot, name, value[i]);
    }
    return matrix;
}

MPoint readPoint(const Slot& slot, const char* name, const Json& value) {
    requireList(slot, name, value, 3);
    return {readNumber(slot, name, value[0]), readNumber(slot, name, value[1]), readNumber(slot, name, value[2])};
}

int readWord(const Slot& slot, const char* name, const Json& value, std::initializer_list<const char*> words) {
    const std::string& text = readText(slot, name, value);
    int position = 1;
    for (const std::string_view word : words) {
        if (text == word) {
            return position;
        }
        ++position;
    }
    failAt(slot, fmt::format("\"{}\" should be one of {}, not \"{}\"", name, fmt::join(words, ", "), text));
}

} // namespace scene
