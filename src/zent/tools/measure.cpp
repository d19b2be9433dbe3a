#include "zent/tools/measure.h"

#include "zent/geometry/shapes.h"
#include "zent/values/Compare.h"
#include "zent/values/jsonAccess.h"
#include "zent/values/ValueType.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace zent {

namespace {

/// An output being measured. Knots have an entry of their own behind their shape's.
struct Output {
    std::vector<Statistics>& entries;
    std::size_t entry;
    const Tolerance& tolerance;

    Statistics& statistics() const { return entries[entry]; }
    void note(const std::string& text) const {
        if (statistics().note.empty()) {
            statistics().note = text;
        }
    }
};

/// A difference that is not finite where a side is not, also where both are the same infinity.
double differenceOf(float a, float b) {
    return static_cast<double>(std::abs(a - b));
}

bool isWithin(double error, double a, double b, double relative) {
    return relative > 0.0 && error <= relative * std::max(a, b);
}

void measureNumber(const Tolerance& tolerance, float a, float b, const Where& where, Statistics& statistics) {
    const double error = differenceOf(a, b);
    const bool matches =
        check(a, b, tolerance.epsilon) ||
        isWithin(error, static_cast<double>(std::abs(a)), static_cast<double>(std::abs(b)), tolerance.relative);
    statistics.add(error, matches, where);
}

template <class T>
void measureValue(const Output& output, const T& a, const T& b, const Where& where) {
    constexpr std::size_t kFloatSize = sizeof(float);
    constexpr std::size_t kCount = sizeof(T) / kFloatSize;
    std::array<float, kCount> numbersA;
    std::array<float, kCount> numbersB;
    std::memcpy(numbersA.data(), &a, sizeof a);
    std::memcpy(numbersB.data(), &b, sizeof b);
    for (std::size_t i = 0; i < kCount; ++i) {
        measureNumber(output.tolerance, numbersA[i], numbersB[i], where.with(static_cast<std::uint32_t>(i)),
                      output.statistics());
    }
}

/// How far one component of two rotations is from being the same, in the nearer of both solutions.
double componentError(double a, double b) {
    const double difference = std::abs(a - b);
    const double sum = std::abs(a + b);
    const double direct = std::min(difference, std::abs(difference - 360.0));
    return std::min(direct, std::min(std::abs(difference - 180.0), std::abs(sum - 180.0)));
}

void measureValue(const Output& output, const Euler& a, const Euler& b, const Where& where) {
    constexpr double kRadiansPerDegree = 0.017453292519943295;
    const bool matches = check(a, b, output.tolerance.epsilon);
    double greatest = -1.0;
    unsigned int component = 0;
    for (unsigned int i = 0; i < 3; ++i) {
        const auto angle = static_cast<glm::length_t>(i);
        const double error = componentError(static_cast<double>(a.angles[angle]), static_cast<double>(b.angles[angle]));
        if (std::isnan(error) || error > greatest) {
            greatest = error;
            component = i;
        }
        if (std::isnan(error)) {
            break;
        }
    }
    // What matches and is this far off is a pair of solutions at gimbal lock.
    const double tolerance = 2.0 * static_cast<double>(output.tolerance.epsilon) / kRadiansPerDegree;
    if (matches && greatest > tolerance) {
        greatest = 0.0;
    }
    output.statistics().unit = Unit::degrees;
    output.statistics().add(greatest, matches, where.with(component));
}

void measurePoints(const Output& output, const std::vector<vec3>& a, const std::vector<vec3>& b, const Where& where) {
    if (a.size() != b.size()) {
        output.note(fmt::format("{} points, not {}", b.size(), a.size()));
    }
    const std::size_t count = std::min(a.size(), b.size());
    Statistics& statistics = output.statistics();
    statistics.unit = Unit::distance;
    statistics.hasHistogram = count > kFewValues;
    for (std::size_t i = 0; i < count; ++i) {
        const PointPair point{a[i], b[i]};
        const bool matches = point.agree(output.tolerance.epsilon) || zent::isWithin(point, output.tolerance.relative);
        statistics.add(static_cast<double>(point.distance()), matches, where.with(static_cast<std::uint32_t>(i)));
    }
}

void measureValue(const Output& output, const Vertex& a, const Vertex& b, const Where& where) {
    measurePoints(output, {a.point}, {b.point}, where);
}

void measureNumbers(const Output& output, const std::vector<float>& a, const std::vector<float>& b, const char* what,
                    std::uint32_t first, const Where& where) {
    if (a.size() != b.size()) {
        output.note(fmt::format("{} {}, not {}", b.size(), what, a.size()));
    }
    const std::size_t count = std::min(a.size(), b.size());
    output.statistics().hasHistogram = output.statistics().hasHistogram || count > kFewValues;
    for (std::size_t i = 0; i < count; ++i) {
        measureNumber(output.tolerance, a[i], b[i], where.with(first + static_cast<std::uint32_t>(i)),
                      output.statistics());
    }
}

void noteNumber(const Output& output, const char* what, unsigned int a, unsigned int b) {
    if (a != b) {
        output.note(fmt::format("{} {}, not {}", what, b, a));
    }
}

template <class Shape>
std::vector<vec3> worldPoints(const Shape& shape) {
    std::vector<vec3> points = shape.cv;
    for (vec3& point : points) {
        point = toWorld(shape, point);
    }
    return points;
}

/// The entry of a shape's knots.
Output knotsOf(const Output& output) {
    const std::string name = output.statistics().output + ".knots";
    for (std::size_t i = output.entry + 1; i < output.entries.size(); ++i) {
        if (output.entries[i].output == name) {
            return {output.entries, i, output.tolerance};
        }
    }
    Statistics knots;
    knots.output = name;
    knots.type = "Float[]";
    output.entries.push_back(knots);
    return {output.entries, output.entries.size() - 1, output.tolerance};
}

void measureValue(const Output& output, const Curve& a, const Curve& b, const Where& where) {
    noteNumber(output, "degree", a.degree, b.degree);
    noteNumber(output, "form", a.form, b.form);
    measurePoints(output, worldPoints(a), worldPoints(b), where);
    measureNumbers(knotsOf(output), a.knots, b.knots, "knots", 0, where);
}

void measureValue(const Output& output, const Surface& a, const Surface& b, const Where& where) {
    noteNumber(output, "degree in U", a.degreeU, b.degreeU);
    noteNumber(output, "form in U", a.formU, b.formU);
    noteNumber(output, "degree in V", a.degreeV, b.degreeV);
    noteNumber(output, "form in V", a.formV, b.formV);
    measurePoints(output, worldPoints(a), worldPoints(b), where);
    const Output knots = knotsOf(output);
    measureNumbers(knots, a.knotsU, b.knotsU, "knots in U", 0, where);
    measureNumbers(knots, a.knotsV, b.knotsV, "knots in V", static_cast<std::uint32_t>(a.knotsU.size()), where);
}

template <class... T>
bool measureAs(TypeList<T...>, const Output& output, const std::string& type, const json& a, const json& b,
               const Where& where) {
    return ((type == ValueType<T>::name &&
             (measureValue(output, ValueType<T>::fromJson(a), ValueType<T>::fromJson(b), where), true)) ||
            ...);
}

void measureTyped(const Output& output, const std::string& type, const json& a, const json& b, const Where& where) {
    if (measureAs(ComparedTypes(), output, type, a, b, where) || type.size() < 2) {
        return;
    }
    if (a.size() > b.size()) {
        output.note(fmt::format("{} values, not {}", b.size(), a.size()));
    }
    const std::string elementType = type.substr(0, type.size() - 2);
    const std::size_t count = std::min(a.size(), b.size());
    output.statistics().hasHistogram = count > kFewValues;
    for (std::size_t i = 0; i < count; ++i) {
        measureTyped(output, elementType, item(a, i), item(b, i), where.with(static_cast<std::uint32_t>(i)));
    }
}

std::string textOr(const json& value, const char* otherwise) {
    return value.is_string() ? value.get<std::string>() : otherwise;
}

} // namespace

void measure(const json& maya, const json& zent, const Tolerance& tolerance, std::vector<Statistics>& statistics) {
    statistics.clear();
    for (std::size_t i = 0; i < maya.size(); ++i) {
        const json& a = item(maya, i);
        const json& b = item(zent, i);
        statistics.emplace_back();
        const Output output{statistics, statistics.size() - 1, tolerance};
        output.statistics().output = textOr(member(a, "name"), "");
        output.statistics().type = textOr(member(a, "type"), "");
        const std::string type = output.statistics().type;
        const std::string typeB = textOr(member(b, "type"), "none");
        if (type == typeB) {
            measureTyped(output, type, member(a, "value"), member(b, "value"), {});
        } else {
            output.note(fmt::format("type {}, not {}", typeB, type));
        }
    }
}

bool matches(const std::vector<Statistics>& statistics) {
    return std::all_of(statistics.begin(), statistics.end(), [](const Statistics& output) {
        return output.over == 0 && output.notFinite == 0 && output.note.empty();
    });
}

void measurePoint(const PointPair& point, bool matches, Statistics& statistics) {
    statistics.add(static_cast<double>(point.distance()), matches,
                   Where().with(static_cast<std::uint32_t>(statistics.count)));
}

bool isWithin(const PointPair& point, double relative) {
    return relative > 0.0 &&
           isWithin(static_cast<double>(point.distance()), static_cast<double>(guardedLength(point.maya)),
                    static_cast<double>(guardedLength(point.zent)), relative);
}

} // namespace zent
