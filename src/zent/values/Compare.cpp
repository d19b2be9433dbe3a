#include "zent/values/Compare.h"

#include "zent/values/jsonAccess.h"
#include "zent/values/ValueType.h"

#include <stdexcept>

namespace zent {

namespace {

/// Element by element over Maya's list. The node function's list may be longer, and its surplus is not looked at; a
/// shorter one is a mismatch. That asymmetry is deliberate.
bool equalLists(const json& a, const json& b, const std::string& elementType, float epsilon) {
    if (a.size() > b.size()) {
        return false;
    }
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (!equal(item(a, i), item(b, i), elementType, epsilon)) {
            return false;
        }
    }
    return true;
}

bool isListType(const std::string& type) {
    return type.size() >= 2 && type.compare(type.size() - 2, 2, "[]") == 0;
}

/// The comparison of the first type of that name.
template <class... T>
bool equalAs(TypeList<T...>, const json& a, const json& b, const std::string& type, float epsilon, bool& same) {
    return ((type == ValueType<T>::name &&
             (same = check(ValueType<T>::fromJson(a), ValueType<T>::fromJson(b), epsilon), true)) ||
            ...);
}

template <class Vector>
bool checkComponents(const Vector& a, const Vector& b, float epsilon) {
    for (int i = 0; i < Vector::length(); ++i) {
        if (!check(a[i], b[i], epsilon)) {
            return false;
        }
    }
    return true;
}

} // namespace

bool compare(const json& a, const json& b, float epsilon) {
    if (a.size() != b.size()) {
        return false;
    }
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (!equal(item(a, i), item(b, i), epsilon)) {
            return false;
        }
    }
    return true;
}

bool equal(const json& a, const json& b, float epsilon) {
    const json& typeA = member(a, "type");
    const json& typeB = member(b, "type");
    if (!typeA.is_string()) {
        static_cast<void>(typeA.get<std::string>()); // throws
    }
    if (typeA != typeB) {
        return false;
    }
    return equal(member(a, "value"), member(b, "value"), typeA.get_ref<const std::string&>(), epsilon);
}

bool equal(const json& a, const json& b, const std::string& type, float epsilon) {
    bool same = false;
    if (equalAs(ComparedTypes(), a, b, type, epsilon, same)) {
        return same;
    }
    if (isListType(type)) {
        return equalLists(a, b, type.substr(0, type.size() - 2), epsilon);
    }
    throw std::runtime_error("cannot compare " + type);
}

bool check(const Euler& a, const Euler& b, float epsilon) {
    return checkEuler(a.angles, b.angles, epsilon);
}

bool check(const Vertex& a, const Vertex& b, float epsilon) {
    return check(a.point, b.point, epsilon);
}

bool check(float a, float b, float epsilon) {
    return std::abs(a - b) < epsilon;
}

bool check(vec2 a, vec2 b, float epsilon) {
    return checkComponents(a, b, epsilon);
}

bool check(vec3 a, vec3 b, float epsilon) {
    return checkComponents(a, b, epsilon);
}

bool check(vec4 a, vec4 b, float epsilon) {
    return checkComponents(a, b, epsilon);
}

bool check(const mat4& a, const mat4& b, float epsilon) {
    for (int row = 0; row < 4; ++row) {
        if (!check(a[row], b[row], epsilon)) {
            return false;
        }
    }
    return true;
}

} // namespace zent
