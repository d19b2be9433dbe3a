#include "zent/values/Compare.h"
#include "zent/values/geometryJson.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace zent::test {
namespace {

TEST(CheckEulerTest, TakesTheFirstRowThatApplies) {
    const struct {
        vec3 a, b;
        bool match;
    } rows[] = {
        {{0, 0, 0}, {180, 0, 0}, true},          // half a turn apart
        {{170, 20, 30}, {10, 20, 30}, true},     // adding up to half a turn
        {{-170, 20, 30}, {-10, 20, 30}, true},   // by magnitude
        {{10, 20, 30}, {10, 20, 390}, true},     // a full turn apart
        {{10, 20, 30}, {10, 20, 750}, false},    // two turns are no row
        {{10, 20, 30}, {10, 20, 30.03f}, true},  // 0.0005 radians
        {{10, 20, 30}, {10, 20, 30.09f}, false}, // 0.0016 radians
        {{10, 20, 30}, {100, 110, 75}, true},    // two quarter turns, and a third that fails
        {{10, 20, 30}, {100, 20, 75}, false},    // one does not excuse it
        {{10, 20, 30}, {100, 20, 30}, true},     // nor fails by itself
        {{0, 20, 33}, {90, 110, 123}, true},     // nor do three
        {{10, 20, 30}, {100, 110, 120}, true},
        {{45, 20, 30},
         {135, 110, 75},
         false}, // adding up comes before the quarter turn, which leaves one and a failure
        {{45, 20, 30}, {135, 20, 30}, true},
        {{10, 20, 30}, {-170, -160, 150}, true}, // the other solution of one rotation
    };
    for (const auto& row : rows) {
        EXPECT_EQ(checkEuler(row.a, row.b, 0.001f), row.match) << testing::PrintToString(&row - rows);
        EXPECT_EQ(checkEuler(row.b, row.a, 0.001f), row.match) << testing::PrintToString(&row - rows);
    }
}

const Curve kCurve(1, kFormOpen, {{1, 2, 3}, {4, 5, 6}}, {0, 1}, mat4(1.0f));
const Surface kSurface(1, 1, kFormOpen, kFormClosed, {0, 1}, {0, 2}, {{0, 0, 0}, {0, 1, 0}, {1, 0, 0}, {1, 1, 5}},
                       mat4(1.0f));

TEST(CheckRecordsTest, ComparesWorldPointsAndKnots) {
    const auto same = [](auto shape, auto change) {
        const auto original = shape;
        change(shape);
        return check(original, shape, 0.5f);
    };
    EXPECT_TRUE(same(kCurve, [](Curve& c) { c.cv[1].z += 0.4f; }));
    EXPECT_FALSE(same(kCurve, [](Curve& c) { c.cv[1].z += 0.5f; }));
    EXPECT_FALSE(same(kCurve, [](Curve& c) { c.knots[1] += 0.6f; }));
    EXPECT_FALSE(same(kCurve, [](Curve& c) { c.form = kFormClosed; }));
    EXPECT_FALSE(same(kCurve, [](Curve& c) { c.degree = 2; }));
    EXPECT_FALSE(same(kCurve, [](Curve& c) { c.cv.push_back(vec3(0.0f)); }));
    EXPECT_FALSE(same(kCurve, [](Curve& c) { c.knots.pop_back(); }));
    EXPECT_FALSE(same(kCurve, [](Curve& c) { c.translation.x = 1.0f; }));
    EXPECT_TRUE(same(kCurve, [](Curve& c) { // the same places, by other points and another matrix
        c = Curve(1, kFormOpen, {{4, 10, 7}, {7, 13, 10}}, {0, 1}, mat4(1.0f));
        c.translation = {-3.0f, -8.0f, -4.0f};
    }));
    EXPECT_FALSE(same(kSurface, [](Surface& s) { s.cv[3].z = 4.0f; }));
    EXPECT_FALSE(same(kSurface, [](Surface& s) { s.knotsU[0] = -1.0f; }));
    EXPECT_FALSE(same(kSurface, [](Surface& s) { s.knotsV[0] = -1.0f; }));
    EXPECT_FALSE(same(kSurface, [](Surface& s) { std::swap(s.formU, s.formV); }));
    EXPECT_FALSE(same(kSurface, [](Surface& s) { s.degreeV = 2; }));
    EXPECT_TRUE(same(kSurface, [](Surface& s) { s.closestSamples.resize(1); }));
}

TEST(CheckRecordsTest, RecordsComeBackFromJson) {
    mat4 matrix(1.0f);
    matrix[1] = {0.5f, 2.0f, 0.0f, 0.0f};
    matrix[3] = {7.0f, 8.0f, 9.0f, 1.0f};
    const Curve curve(2, kFormPeriodic, {{1, 2, 3}, {4, 5, 6}}, {0, 1, 2}, matrix);
    const json form = curve;
    EXPECT_EQ(form, json::parse(R"({"degree": 2, "form": 3, "cv": [[1, 2, 3], [4, 5, 6]], "knots": [0, 1, 2],
                                    "matrix": [1, 0, 0, 0, 0.5, 2, 0, 0, 0, 0, 1, 0, 7, 8, 9, 1]})"));
    EXPECT_EQ(json(form.get<Curve>()), form);
    EXPECT_EQ(form.get<Curve>().inverseLinear, curve.inverseLinear);
    EXPECT_EQ(form.get<Curve>().inverseTranslation, curve.inverseTranslation);

    Surface surface = kSurface;
    surface.closestSamples.resize(1);
    const json surfaceForm = surface;
    EXPECT_EQ(surfaceForm, json::parse(R"({"degreeU": 1, "degreeV": 1, "formU": 1, "formV": 2,
        "knotsU": [0, 1], "knotsV": [0, 2], "cv": [[0, 0, 0], [0, 1, 0], [1, 0, 0], [1, 1, 5]],
        "matrix": [1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1]})"));
    EXPECT_EQ(json(surfaceForm.get<Surface>()), surfaceForm);

    EXPECT_TRUE(zent::equal(form, form, "Curve", 0.001f));
    EXPECT_FALSE(zent::equal(form, form, "Curve", 0.0f));
    EXPECT_TRUE(zent::equal(surfaceForm, surfaceForm, "Surface", 0.001f));
    json broken = form;
    broken.erase("knots");
    EXPECT_THROW(zent::equal(form, broken, "Curve", 0.001f), json::type_error);
    broken["knots"] = form["knots"];
    broken["cv"][1] = {1, 2};
    EXPECT_THROW(zent::equal(form, broken, "Curve", 0.001f), json::type_error);
}

} // namespace
} // namespace zent::test
