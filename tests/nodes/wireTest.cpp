#include "zent/nodes/wire.h"
#include "zent/nodes/wrap.h"

#include "nodes/shapesForDeformers.h"

#include <limits>

namespace zent::test {
namespace {

const float kHalfPi = static_cast<float>(kPi / 2.0);
const mat3 kFrame(1.0f); // tangent x, then y and z

/// A straight wire with the domain 0 to 1.
Curve straight(vec3 start, vec3 end, const mat4& matrix = mat4(1.0f)) {
    return curveOf(1, kFormOpen, {start, end}, matrix);
}

const Curve kAlongX = straight(vec3(0.0f), vec3(8, 0, 0));

struct Twists {
    svec<float, 8> parameters;
    svec<float, 8> angles;
};

/// A point that stands off the wire along x at u = 0.5, carried to another wire.
vec3 carried(vec3 offset, const Curve& to, float rotation, const Twists& twists = {}, float u = 0.5f) {
    Mesh mesh = meshOf({kAlongX.localPoint(u) + offset});
    wireMesh(mesh, rotation, kAlongX, to, twists.parameters, twists.angles, {{9.0f, u, kFrame}});
    return mesh.points[0];
}

TEST(Wire, TurnsWithTheTangent) {
    const vec3 offset(1, 2, 3);
    expectNear(carried(offset, kAlongX, 1.0f), vec3(5, 2, 3));
    // To y, through (0, 4, 0): x to y and y to -x.
    const Curve alongY = straight(vec3(0.0f), vec3(0, 8, 0));
    const vec3 middle(0, 4, 0);
    const float root = std::sqrt(0.5f);
    expectNear(carried(offset, alongY, 1.0f), middle + vec3(-2, 1, 3));
    expectNear(carried(offset, alongY, 0.0f), middle + offset);
    expectNear(carried(offset, alongY, 0.5f), middle + vec3(root * (1 - 2), root * (1 + 2), 3), 2e-5f);
    expectNear(carried(offset, alongY, -1.0f), middle + vec3(2, -1, 3));
    // Opposite tangents turn about y: x is longer than z.
    expectNear(carried(offset, straight(vec3(8, 0, 0), vec3(0.0f)), 1.0f), vec3(4, 0, 0) + vec3(-1, 2, -3));
    // Tangents come in world space already: the turned wire's matrix acts on its points and tangents once.
    expectNear(carried(offset, straight(vec3(0.0f), vec3(8, 0, 0), quarterTurn()), 1.0f), middle + vec3(-2, 1, 3));
}

TEST(Wire, SpacesOfPointAndWires) {
    // The point is (4, 2, 0) in the world, 2 off the base wire, which its matrix lifts by nothing; the deformed wire's
    // matrix lifts by 5 along z. The mesh is scaled by 2.
    Mesh mesh = meshOf({vec3(2, 1, 0)}, scaling(vec3(2.0f)));
    const Curve lifted = straight(vec3(0.0f), vec3(8, 0, 0), translation(vec3(0, 0, 5)));
    const Curve base = straight(vec3(0, -1, 0), vec3(8, -1, 0), translation(vec3(0, 1, 0)));
    wireMesh(mesh, 1.0f, base, lifted, {}, {}, {{0.0f, 0.5f, kFrame}});
    expectNear(mesh.points[0], vec3(2, 1, 2.5f));
}

TEST(Wire, TwistBetweenLocators) {
    const float a = 0.4f;
    const float b = 0.8f;
    const Twists two{{0.25f, 0.75f}, {a, b}};
    struct Case {
        Twists twists;
        float u;
        float angle;
    };
    const Case cases[] = {
        {{{0.5f}, {a}}, 0.25f, a * (1 - 0.5625f)}, // from no twist at the start; (1 / 4 - 1) squared is 0.5625
        {{{0.5f}, {a}}, 0.75f, a * 0.5625f},       // to none at the end
        {two, 0.25f, a},
        {two, 0.5f, b + (a - b) * 0.5625f},
        {two, 0.75f, b},
        {{{0.25f, 0.5f, 0.75f}, {0.1f, a, b}}, 0.5f, a},       // at a locator: its own row
        {{{0.25f, 0.75f}, {a, kHalfPi / 576}}, 2.0f, kHalfPi}, // t = 5 as given, where the curve has long ended
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << "case " << &c - cases);
        // Opposite to the fade, the offset turns about the tangent.
        const vec3 moved = carried(vec3(0, 1, 0), kAlongX, 1.0f, c.twists, c.u) - kAlongX.localPoint(c.u);
        expectNear(moved, vec3(0, std::cos(c.angle), std::sin(c.angle)), 2e-5f);
    }
    // The twist acts after the turn, about the tangent of the bind frame: y to -x, which stays.
    expectNear(carried(vec3(0, 1, 0), straight(vec3(0.0f), vec3(0, 8, 0)), 1.0f, {{0.5f}, {kHalfPi}}), vec3(-1, 4, 0));
    // No parameter, no point: but nothing is read beyond the table.
    const float nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_TRUE(std::isnan(carried(vec3(0.0f), kAlongX, 1.0f, two, nan).x));
}

TEST(Wire, BindingsCountThePoints) {
    const Curve lifted = straight(vec3(0, 0, 1), vec3(8, 0, 1));
    const WireBindings bindings(2, {0.0f, 0.5f, kFrame});
    Curve curve = curveOf(2, kFormPeriodic, std::vector<vec3>(4, vec3(0.0f)));
    wireCurve(curve, 1.0f, kAlongX, lifted, {}, {}, bindings);
    const vec3 up(0, 0, 1);
    expectNear(curve.cv, {up, up, up, up}); // two bound, and the overlap that repeats them

    Mesh one = meshOf({vec3(0.0f)});
    Mesh two = meshOf({vec3(0.0f), vec3(0.0f)});
    expectError([&] { wireMesh(one, 1.0f, kAlongX, lifted, {}, {}, bindings); }, {"points has 1", "2"});
    expectError([&] { wireMesh(two, 1.0f, kAlongX, lifted, {0.1f, 0.2f}, {1.0f}, bindings); }, {"twists has 1", "2"});
    expectError([&] { wireMesh(two, 1.0f, kAlongX, Curve(), {}, {}, bindings); }, {"deformed wire"});
    expectNear(two.points, {vec3(0.0f), vec3(0.0f)});
    EXPECT_NO_THROW(wireMesh(one, 1.0f, Curve(), Curve(), {}, {}, {}));
}

TEST(Wrap, FollowsItsTriangle) {
    const Mesh driver = meshOf({vec3(9.0f), vec3(0.0f), vec3(1, 0, 0), vec3(0, 1, 0)}, translation(vec3(0, 3, 0)));
    // 0.2, 0.3 and 0.5 of the corners are (0.3, 0.5, 0), and (0.3, 3.5, 0) in the world; bound without the lift.
    const WrapBindings bindings(3, {vec3(0.3f, 0.5f, 0), {1, 2, 3}, vec3(0.2f, 0.3f, 0.5f)});
    for (const auto& [envelope, y] :
         {std::pair(1.0f, 1.5f), {0.5f, 0.75f}, {2.0f, 3.0f}, {0.0f, 0.0f}, {-1.0f, 0.0f}}) {
        Mesh mesh = meshOf({vec3(1, 0, 0)}, scaling(vec3(2.0f)));
        expectNear(wrapMesh(envelope, mesh, driver, bindings).points[0], vec3(1, y, 0));
    }
    Mesh mesh = meshOf({vec3(0.0f), vec3(0.0f)});
    WrapBindings bad = bindings;
    std::get<1>(bad[2])[0] = 4; // belongs to no point: not read
    EXPECT_NO_THROW(wrapMesh(0.00001f, mesh, driver, bad));
    std::get<1>(bad[1])[2] = 4;
    mesh = meshOf({vec3(0.0f), vec3(0.0f)});
    expectError([&] { wrapMesh(1.0f, mesh, driver, bad); }, {"bindings[1] is 4", "4"});
    expectError([&] { wrapMesh(1.0f, mesh, driver, {bindings[0]}); }, {"bindings has 1", "2"});
    expectNear(mesh.points, {vec3(0.0f), vec3(0.0f)});
}

} // namespace
} // namespace zent::test
