#include "zent/values/geometryJson.h"

#include "zent/geometry/shapes.h"
#include "zent/values/jsonAccess.h"
#include "zent/values/ValueType.h"

#include <utility>

namespace zent {

namespace {

std::vector<float> floatsOf(const json& value) {
    return value.get<std::vector<float>>();
}

std::vector<vec3> pointsFrom(const json& value) {
    std::vector<vec3> points;
    points.reserve(value.size());
    for (std::size_t i = 0; i < value.size(); ++i) {
        points.push_back(toVec3(item(value, i)));
    }
    return points;
}

mat4 matrixFrom(const json& value) {
    mat4 matrix(0.0f);
    for (int i = 0; i < 16; ++i) {
        matrix[i / 4][i % 4] = item(value, static_cast<std::size_t>(i)).get<float>();
    }
    return matrix;
}

} // namespace

void to_json(json& value, const Curve& curve) {
    value = json{{"degree", curve.degree},
                 {"form", curve.form},
                 {"cv", toJson(curve.cv)},
                 {"knots", toJson(curve.knots)},
                 {"matrix", toJson(matrixOf(curve))}};
}

void from_json(const json& value, Curve& curve) {
    curve =
        Curve(toUnsigned(member(value, "degree")), toUnsigned(member(value, "form")), pointsFrom(member(value, "cv")),
              floatsOf(member(value, "knots")), matrixFrom(member(value, "matrix")));
}

void to_json(json& value, const Surface& surface) {
    value = json{{"degreeU", surface.degreeU}, {"degreeV", surface.degreeV},         {"formU", surface.formU},
                 {"formV", surface.formV},     {"knotsU", toJson(surface.knotsU)},   {"knotsV", toJson(surface.knotsV)},
                 {"cv", toJson(surface.cv)},   {"matrix", toJson(matrixOf(surface))}};
}

void from_json(const json& value, Surface& surface) {
    surface = Surface(toUnsigned(member(value, "degreeU")), toUnsigned(member(value, "degreeV")),
                      toUnsigned(member(value, "formU")), toUnsigned(member(value, "formV")),
                      floatsOf(member(value, "knotsU")), floatsOf(member(value, "knotsV")),
                      pointsFrom(member(value, "cv")), matrixFrom(member(value, "matrix")));
}

} // namespace zent
