// A cluster's points beside a loop that has all that the points share made beforehand.
#include "../SkinRig.h"
#include "Pair.h"

#include "zent/nodes/cluster.h"
#include "zent/proxies/PointWalk.h"
#include "zent/proxies/Registry.h"
#include "zent/values/Port.h"

#include <algorithm>
#include <utility>

namespace zent::peers {

using namespace bench;

namespace {

constexpr float kEpsilon = 0.001f;

/// The handle's channels, whose pivots have offsets, too.
const mat4 kFirst(vec4(0, 1, 0, 0), vec4(-1, 0, 0, 0), vec4(0, 0, 1, 0), vec4(2, 0, 0, 1));
const mat4 kSecond(vec4(1, 0, 0, 0), vec4(0, 1, 0, 0), vec4(0, 0, 2, 0), vec4(0, 3, 0, 1));
const vec3 kTranslate(1.0f, 2.0f, 3.0f);
const vec3 kRotate(0.0f, 0.0f, 1.2f);
const vec3 kScale(2.0f, 1.0f, 0.5f);
const vec3 kRotatePivot(0.5f, 0.0f, 0.0f);
const vec3 kScalePivot(0.0f, 0.5f, 0.0f);
const vec3 kRotatePivotTranslate(0.0f, 0.0f, 0.1f);
const vec3 kScalePivotTranslate(0.2f, 0.0f, 0.0f);

void plainCluster(const std::vector<vec3>& from, const std::vector<float>& weights, std::vector<vec3>& to) {
    const mat4 whole = kFirst * kSecond;
    const quat turn = glm::angleAxis(kRotate.z, vec3(0.0f, 0.0f, 1.0f));
    const float angle = std::acos(turn.w);
    const float inverseSine = 1.0f / std::sin(angle);
    const vec3 translate = kTranslate + kRotatePivotTranslate;
    const vec3 offset = kScalePivot - kRotatePivot;
    for (std::size_t i = 0; i < from.size(); ++i) {
        const vec3 p = from[i];
        const float w = weights[i];
        if (w < 1e-5f) {
            to[i] = p;
        } else if (w > 1.0f - 1e-5f) {
            to[i] = vec3(whole[0] * p.x + whole[1] * p.y + whole[2] * p.z + whole[3]);
        } else {
            const float share = std::sin(w * angle) * inverseSine;
            const float real = std::sin((1.0f - w) * angle) * inverseSine + share * turn.w;
            const vec3 axis = share * vec3(turn.x, turn.y, turn.z);
            const vec3 r = (p - kScalePivot) * (1.0f + w * (kScale - 1.0f)) + offset + w * kScalePivotTranslate;
            const vec3 across = glm::cross(axis, r);
            to[i] = kRotatePivot + r + 2.0f * (real * across + glm::cross(axis, across)) + w * translate;
        }
    }
}

bool agree(const std::vector<vec3>& a, const std::vector<vec3>& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](vec3 v, vec3 w) { return glm::length(v - w) <= 1e-4f * (1.0f + glm::length(v)); });
}

json listOf(const float* numbers, std::size_t count) {
    return json(std::vector<float>(numbers, numbers + count));
}

/// The arguments of `clusterLattice`: block 1 is the shape, block 2 its points' indices.
Arguments argumentsOf(const std::vector<float>& weights) {
    Arguments args;
    unsigned index = 0;
    const auto add = [&](json value) { args.add(index++, Element(std::move(value))); };
    const auto addVector = [&](const vec3& v) { add(listOf(&v.x, 3)); };
    add({{"id", 1}});
    add({{"id", 2}});
    add(listOf(&kFirst[0].x, 16));
    add(listOf(&kSecond[0].x, 16));
    add(0);
    for (unsigned i = 0; i < weights.size(); ++i) {
        args.add(index, Element(json(weights[i]), {i}));
    }
    ++index;
    addVector(kTranslate);
    addVector(kRotate);
    add(0);
    addVector(kScale);
    addVector(kRotatePivot);
    addVector(kScalePivot);
    addVector(kRotatePivotTranslate);
    addVector(kScalePivotTranslate);
    return args;
}

} // namespace

void clusterPeers() {
    Lattice lattice;
    lattice.points = cloud().points;
    lattice.s = kPoints;
    lattice.t = lattice.u = 1;
    std::vector<float> weights;
    std::vector<unsigned> indices;
    for (unsigned i = 0; i < kPoints; ++i) {
        const auto t = static_cast<float>(i);
        weights.push_back(std::clamp(0.5f + 0.7f * std::sin(0.001f * t), 0.0f, 1.0f)); // soft between 0 and 1
        indices.push_back(i);
    }
    const auto move = pointCluster(kFirst, kSecond, 0, kTranslate, kRotate, 0, kScale, kRotatePivot, kScalePivot,
                                   kRotatePivotTranslate, kScalePivotTranslate);
    std::vector<vec3> ours(kPoints);
    std::vector<vec3> theirs(kPoints);
    const auto product = [&] {
        for (unsigned i = 0; i < kPoints; ++i) {
            ours[i] = move(lattice.points[i], weights[i]);
        }
    };
    const auto plain = [&] { plainCluster(lattice.points, weights, theirs); };
    product();
    plain();
    requireAgreement("cluster", agree(ours, theirs));
    measure({"cluster, 100,000 points with soft weights", "a plain loop for this handle alone", product, plain});

    Lattice clustered = lattice;
    clustered.points = ours;
    ResourceWriter writer;
    writer.add(clustered);
    writer.add(lattice);
    writer.add(indices);
    store(writer);
    std::vector<Port> ports(1);
    ports[0].add(Element(json{{"id", 0}}));
    const std::unique_ptr<Proxy> proxy = makeProxy("clusterLattice");
    proxy->init(argumentsOf(weights), ports);
    unsigned off = 0;
    const auto walk = [&] { off = walkOf(*proxy)->firstOff(0, kEpsilon); };
    unsigned theirOff = 0;
    const auto compared = [&] {
        plainCluster(lattice.points, weights, theirs);
        for (theirOff = 0; theirOff < kPoints; ++theirOff) {
            const vec3 distance = glm::abs(clustered.points[theirOff] - theirs[theirOff]);
            if (!(distance.x < kEpsilon && distance.y < kEpsilon && distance.z < kEpsilon)) {
                break;
            }
        }
    };
    walk();
    compared();
    requireAgreement("record of a cluster", off == kPoints && theirOff == kPoints);
    measure({"walk over the record of a cluster, 100,000 points", "that loop, and one comparison", walk, compared});
}

} // namespace zent::peers
