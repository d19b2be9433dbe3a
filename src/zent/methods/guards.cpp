#include "zent/methods/Context.h"

#include "zent/nodes/nearestPointOnCurve.h"
#include "zent/values/Select.h"

#include <fmt/format.h>
#include <glm/gtc/matrix_inverse.hpp>

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <numeric>
#include <sstream>

namespace zent {

namespace {

using Problem = std::optional<std::string>;

constexpr double kSame = 1e-6; // two values of a plug that a rig takes for one

Problem unless(bool holds, const std::string& problem) {
    return holds ? Problem() : Problem(problem);
}

bool isIdentity(const mat4& matrix) {
    for (int i = 0; i < 16; ++i) {
        if (!(std::abs(matrix[i / 4][i % 4] - (i % 5 == 0 ? 1.0f : 0.0f)) < static_cast<float>(kSame))) {
            return false;
        }
    }
    return true;
}

std::string withWhy(const Guard& guard, std::string text) {
    return guard.why.empty() ? text : text + ": " + guard.why;
}

/// The plugs that a guard looks at; none where the node does not have them.
std::vector<MPlug> guardedPlugs(const Context& context, const Guard& guard) {
    std::vector<MPlug> plugs;
    const std::vector<SceneNode> nodes =
        guard.walk.empty() ? std::vector<SceneNode>{context.node} : walk(context.node, guard.walk);
    for (const SceneNode& node : nodes) {
        try {
            for (const FoundPlug& found : findPlugs(node, guard.plug, context.geometry)) {
                plugs.push_back(found.plug);
            }
        } catch (const LeftOut&) {
        }
    }
    return plugs;
}

Problem valueProblem(const Context& context, const Guard& guard) {
    for (const MPlug& plug : guardedPlugs(context, guard)) {
        for (const double number : numbersOf(plug)) {
            const bool isOne = std::any_of(guard.numbers.begin(), guard.numbers.end(),
                                           [number](double one) { return std::abs(number - one) < kSame; });
            if (!isOne) {
                return withWhy(guard,
                               fmt::format("{} is {}, not {}", guard.plug, number, fmt::join(guard.numbers, " or ")));
            }
        }
    }
    return {};
}

Problem countProblem(const Context& context, const Guard& guard) {
    const auto count = static_cast<double>(indicesOf(context.plug(guard.plug)).size());
    const double asked = guard.numbers.front();
    switch (guard.test) {
    case Guard::Test::countAtMost:
        return unless(count <= asked,
                      withWhy(guard, fmt::format("{} has {} elements, at most {} count", guard.plug, count, asked)));
    case Guard::Test::countAtLeast:
        return unless(count >= asked, withWhy(guard, fmt::format("{} is empty", guard.plug)));
    default:
        return unless(count == asked,
                      withWhy(guard, fmt::format("{} has {} elements, not {}", guard.plug, count, asked)));
    }
}

// ---- functions -----------------------------------------------------------------------------------------------------

using Plugs = std::vector<std::string>;

bool isVectorInput(const Context& context, const std::string& input) {
    const MPlug plug = context.plug(input);
    const MPlug source = plug.isNull() ? MPlug() : plug.source();
    const auto isVector = [](const MPlug& value) {
        return !value.isNull() && value.isCompound() && value.numChildren() == 3;
    };
    return isVector(plug) || isVector(source);
}

Problem isNumber(const Context& context, const Plugs& plugs) {
    return unless(!isVectorInput(context, plugs[0]), "its input is a vector");
}

Problem isVector(const Context& context, const Plugs& plugs) {
    return unless(isVectorInput(context, plugs[0]), "its input is a number");
}

Problem onlyRotates(const Context& context, const Plugs& plugs) {
    constexpr float kEven = 1e-4f;
    const mat4 matrix = mat4_value(context.requiredPlug(plugs[0]));
    for (int i = 0; i < 3; ++i) {
        for (int j = 0; j <= i; ++j) {
            if (!(std::abs(glm::dot(vec3(matrix[i]), vec3(matrix[j])) - (i == j ? 1.0f : 0.0f)) < kEven)) {
                return plugs[0] + " has scale or shear, which the method leaves in";
            }
        }
    }
    return {};
}

Problem restPosition(const Context& context, const Plugs& plugs) {
    double sum = 0.0;
    for (const FoundPlug& weight : findPlugs(context.node, plugs[0], 0)) {
        sum += numberOf(weight.plug, 0.0);
    }
    return unless(std::abs(sum) > kSame || numberOf(context.plug(plugs[1]), 1.0) != 0.0,
                  "its weights are all 0 and enableRestPosition is off");
}

Problem pairBlendOrder(const Context& context, const Plugs& plugs) {
    return unless(numberOf(context.plug(plugs[0]), 0.0) == 0.0 || numberOf(context.plug(plugs[1]), 0.0) == 0.0,
                  "it blends quaternions of another rotateOrder than xyz");
}

Problem atMostJoints(const Context& context, std::size_t most) {
    const std::size_t joints = walk(context.node, "chain").size();
    return unless(joints <= most, fmt::format("its chain has {} joints, the method takes {}", joints, most));
}

Problem atMostTwoJoints(const Context& context, const Plugs&) {
    return atMostJoints(context, 2);
}

Problem oneJoint(const Context& context, const Plugs&) {
    return atMostJoints(context, 1);
}

Problem bends(const Context& context, const Plugs&) {
    const std::vector<SceneNode> chain = walk(context.node, "chain");
    if (chain.size() < 2) {
        return {};
    }
    const std::vector<double> angles = numbersOf(chain[1].plug("preferredAngle"));
    return unless(std::any_of(angles.begin(), angles.end(), [](double angle) { return angle != 0.0; }),
                  "preferredAngle of its second joint is 0: nothing tells where it bends");
}

Problem upType(const Context& context, const Plugs& plugs) {
    const double type = numberOf(context.plug(plugs[1]), 1.0);
    return unless(numberOf(context.plug(plugs[0]), 0.0) == 0.0 || type == 1.0 || type == 4.0 || type == 6.0,
                  fmt::format("dWorldUpType is {}, not 1, 4 or 6", type));
}

/// What is evaluated at a parameter; Maya has degree 7, too.
Problem shapeDegree(const Context& context, const Plugs& plugs) {
    const MPlug plug = shapePlug(context.requiredPlug(plugs[0]));
    std::vector<unsigned int> degrees;
    if (shapeKind(plug) == "Surface") {
        const Surface surface = shape_value<Surface>(plug);
        degrees = {surface.degreeU, surface.degreeV};
    } else {
        degrees = {shape_value<Curve>(plug).degree};
    }
    for (const unsigned int degree : degrees) {
        if (degree < 1 || degree > 5) {
            return fmt::format("the degree of {} is {}, not 1 to 5", plugs[0], degree);
        }
    }
    return {};
}

Problem parameterInside(const Context& context, const Plugs& plugs) {
    const Curve curve = shape_value<Curve>(shapePlug(context.requiredPlug(plugs[0])));
    const bool isFraction = numberOf(context.plug(plugs[2]), 0.0) != 0.0;
    const double parameter = numberOf(context.plug(plugs[1]), 0.0);
    if (curve.degree < 1 || curve.knots.size() < 2 * static_cast<std::size_t>(curve.degree)) {
        return "the curve has no points";
    }
    const double start = isFraction ? 0.0 : static_cast<double>(curve.domainStart());
    const double end = isFraction ? 1.0 : static_cast<double>(curve.domainEnd());
    return unless(parameter >= start && parameter <= end,
                  fmt::format("parameter is {}, outside {} to {}: nothing wraps", parameter, start, end));
}

Problem drivenPoints(const Context& context, const Plugs& plugs) {
    const std::string multi = plugs[0].substr(0, plugs[0].find('['));
    return unless(!findPlugs(context.node, multi + "[>]", 0).empty(), "nothing drives its control points");
}

Problem quadUnderFollicle(const Context& context, const Plugs&) {
    faceUnderFollicle(context);
    return {};
}

Problem bindPreMatrices(const Context& context, const Plugs&) {
    const std::vector<unsigned int> matrices = indicesOf(context.plug("matrix"));
    const std::vector<unsigned int> bound = indicesOf(context.plug("bindPreMatrix"));
    return unless(std::includes(bound.begin(), bound.end(), matrices.begin(), matrices.end()),
                  "bindPreMatrix lacks an element for some influence");
}

Problem meshStandsInPlace(const Context& context, const Plugs& plugs) {
    return unless(isIdentity(pointsAt(context.requiredPlug(plugs[0]), "Mesh").matrix),
                  "the mesh has a transform in the world");
}

Problem allMembers(const Context& context, const Plugs&) {
    return unless(membersOf(context).areAll, "not all points are members");
}

Problem someMembers(const Context& context, const Plugs&) {
    return unless(!membersOf(context).areAll, "all points are members");
}

Problem insideLattice(const Context& context, const Plugs& plugs) {
    if (numberOf(context.plug(plugs[0]), 0.0) == 1.0) {
        return {};
    }
    const MPlug input = context.requiredPlug("input[g].inputGeometry");
    const PlacedPoints shape = pointsAt(input, shapeKind(input));
    const mat4 toLattice = glm::inverse(mat4_value(context.requiredPlug("baseLatticeMatrix"))) * shape.matrix;
    for (const vec3 point : shape.points) {
        const vec3 place = glm::abs(vec3(toLattice * vec4(point, 1.0f)));
        if (!(std::max({place.x, place.y, place.z}) <= 0.5f + 1e-4f)) {
            return "some points are outside the base lattice, and outsideLattice is not 1";
        }
    }
    return {};
}

Problem latticeDivisions(const Context& context, const Plugs&) {
    const Lattice lattice = shape_value<Lattice>(shapePlug(context.requiredPlug("deformedLatticePoints")));
    return unless(std::max({lattice.s, lattice.t, lattice.u}) <= 11,
                  fmt::format("the lattice has {} by {} by {} points, at most 11 each way count", lattice.s, lattice.t,
                              lattice.u));
}

/// The method takes a base lattice for a box, however many points it has.
Problem baseLatticeInPlace(const Context& context, const Plugs& plugs) {
    const MPlug plug = context.plug(plugs[0].substr(0, plugs[0].find('?')));
    if (shapeKind(plug) != "Lattice") {
        return {}; // as it is made
    }
    constexpr float kInPlace = 1e-4f;
    const Lattice lattice = shape_value<Lattice>(shapePlug(plug));
    const auto place = [](std::size_t i, unsigned int count) {
        return count > 1 ? static_cast<float>(i) / static_cast<float>(count - 1) - 0.5f : 0.0f;
    };
    for (std::size_t i = 0; i < lattice.points.size() && lattice.s > 0 && lattice.t > 0; ++i) {
        const vec3 rest(place(i % lattice.s, lattice.s), place(i / lattice.s % lattice.t, lattice.t),
                        place(i / lattice.s / lattice.t, lattice.u));
        if (!(glm::distance(lattice.points[i], rest) < kInPlace)) {
            return fmt::format("point {} of the base lattice was moved", i);
        }
    }
    return {};
}

Problem bendsForward(const Context& context, const Plugs&) {
    const double curvature = numberOf(walk(context.node, "bend").front().plug("curvature"), 0.0);
    return unless(curvature >= 0.0, fmt::format("curvature is {}, below 0", curvature));
}

Problem insideDropoff(const Context& context, const Plugs& plugs) {
    const double dropoff = numberOf(context.plug(plugs[0]), HUGE_VAL);
    const MPlug input = context.requiredPlug("input[g].inputGeometry");
    const PlacedPoints shape = pointsAt(input, shapeKind(input));
    const Curve base = shape_value<Curve>(shapePlug(context.requiredPlug("baseWire[.deformedWire]")));
    const CurveSamples samples = closestSamples(base);
    for (const vec3 point : shape.points) {
        const vec3 world(shape.matrix * vec4(point, 1.0f));
        const float u = getClosetPointOnCurve(base, samples, world);
        const vec3 nearest = base.matrixLinear * base.localPoint(u) + base.translation;
        if (!(static_cast<double>(glm::distance(world, nearest)) < dropoff)) {
            return fmt::format("some points are {} or more away from the wire, its dropoffDistance", dropoff);
        }
    }
    return {};
}

using Function = Problem (*)(const Context& context, const Plugs& plugs);
const std::map<std::string, Function> kFunctions = {
    {"isNumber", isNumber},
    {"isVector", isVector},
    {"onlyRotates", onlyRotates},
    {"restPosition", restPosition},
    {"pairBlendOrder", pairBlendOrder},
    {"atMostTwoJoints", atMostTwoJoints},
    {"oneJoint", oneJoint},
    {"bends", bends},
    {"upType", upType},
    {"shapeDegree", shapeDegree},
    {"parameterInside", parameterInside},
    {"drivenPoints", drivenPoints},
    {"quadUnderFollicle", quadUnderFollicle},
    {"bindPreMatrices", bindPreMatrices},
    {"meshStandsInPlace", meshStandsInPlace},
    {"allMembers", allMembers},
    {"someMembers", someMembers},
    {"insideLattice", insideLattice},
    {"latticeDivisions", latticeDivisions},
    {"baseLatticeInPlace", baseLatticeInPlace},
    {"bendsForward", bendsForward},
    {"insideDropoff", insideDropoff},
};

Problem functionProblem(const Context& context, const Guard& guard) {
    std::istringstream words(guard.plug);
    std::string name;
    words >> name;
    Plugs plugs;
    for (std::string plug; words >> plug;) {
        plugs.push_back(plug);
    }
    return kFunctions.at(name)(context, plugs);
}

} // namespace

MPlug Context::requiredPlug(const std::string& path) const {
    const std::vector<FoundPlug> found = findPlugs(node, path, geometry);
    if (found.empty()) {
        throw LeftOut(path + " has no element");
    }
    return found.front().plug;
}

Problem violation(const Context& context, const Guard& guard) {
    switch (guard.test) {
    case Guard::Test::equals:
        return valueProblem(context, guard);
    case Guard::Test::count:
    case Guard::Test::countAtMost:
    case Guard::Test::countAtLeast:
        return countProblem(context, guard);
    case Guard::Test::identity:
        for (const MPlug& plug : guardedPlugs(context, guard)) {
            if (!isIdentity(mat4_value(plug))) {
                return withWhy(guard, guard.plug + " is not the identity");
            }
        }
        return {};
    case Guard::Test::connected:
        return unless(isFed(context.plug(guard.plug)), withWhy(guard, guard.plug + " is not connected"));
    case Guard::Test::unconnected:
        return unless(!isFed(context.plug(guard.plug)), withWhy(guard, guard.plug + " is connected"));
    case Guard::Test::exists:
        return unless(!context.plug(guard.plug).isNull(), withWhy(guard, "it has no plug " + guard.plug));
    case Guard::Test::function:
        break;
    }
    return functionProblem(context, guard);
}

} // namespace zent
