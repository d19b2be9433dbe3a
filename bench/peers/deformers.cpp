// Deformers of 100,000 points beside plain loops, and Eigen compiled for this processor.
#include "../SkinRig.h"
#include "eigenSkin.h"
#include "latticeLoop.h"
#include "Pair.h"

#include "zent/math/lanes.h"
#include "zent/nodes/animCurve.h"
#include "zent/nodes/ffd.h"

#include <array>

namespace zent::peers {

using namespace bench;

namespace {

bool agree(const std::vector<vec3>& a, const std::vector<vec3>& b) {
    bool near = a.size() == b.size();
    for (std::size_t i = 0; near && i < a.size(); ++i) {
        near = glm::length(a[i] - b[i]) <= 1e-4f * (1.0f + glm::length(a[i]));
    }
    return near;
}

// As an animation runtime skins: the palette is made beforehand, a point's matrices are blended, and the blend carries
// it. The last weight is what is left of 1.
struct RuntimePoint {
    std::uint16_t influence[4];
    float weight[3];
};

void runtimeSkin(const std::vector<mat4>& palette, const std::vector<RuntimePoint>& packed,
                 const std::vector<vec3>& from, std::vector<vec3>& to) {
    for (std::size_t i = 0; i < from.size(); ++i) {
        const RuntimePoint& own = packed[i];
        Lanes blend[4];
        const float last = 1.0f - (own.weight[0] + own.weight[1] + own.weight[2]);
        const float* const m[4] = {&palette[own.influence[0]][0][0], &palette[own.influence[1]][0][0],
                                   &palette[own.influence[2]][0][0], &palette[own.influence[3]][0][0]};
        for (std::size_t c = 0; c < 4; ++c) {
            blend[c] = own.weight[0] * loadLanes(m[0] + 4 * c) + own.weight[1] * loadLanes(m[1] + 4 * c) +
                       own.weight[2] * loadLanes(m[2] + 4 * c) + last * loadLanes(m[3] + 4 * c);
        }
        const Lanes moved = blend[0] * from[i].x + (blend[1] * from[i].y + (blend[2] * from[i].z + blend[3]));
        to[i] = vec3(moved[0], moved[1], moved[2]);
    }
}

void skinPeers(const std::string& name, Neighbours neighbours) {
    const SkinRig rig(neighbours);
    std::vector<FourInfluences> packed(kPoints);
    std::vector<RuntimePoint> runtimePoints(kPoints);
    for (std::size_t k = 0; k < rig.weights.size(); ++k) {
        const auto& [point, influence, weight] = rig.weights[k];
        const std::size_t slot = k % kInfluencesPerPoint;
        packed[point].influence[slot] = runtimePoints[point].influence[slot] = static_cast<std::uint16_t>(influence);
        packed[point].weight[slot] = weight;
        if (slot < 3) {
            runtimePoints[point].weight[slot] = weight;
        }
    }
    std::vector<vec3> ours;
    const auto product = [&] { ours = rig.skinned().points; };
    std::vector<vec3> theirs(kPoints);
    const auto plain = [&] {
        std::vector<mat4> palette(kInfluences);
        for (unsigned i = 0; i < kInfluences; ++i) {
            palette[i] = rig.matrix[i] * rig.bindPreMatrix[i];
        }
        for (unsigned i = 0; i < kPoints; ++i) {
            const vec3 p = rig.mesh.points[i];
            vec4 sum(0.0f);
            for (unsigned k = 0; k < 4; ++k) {
                const mat4& m = palette[packed[i].influence[k]];
                sum += packed[i].weight[k] * (m[0] * p.x + m[1] * p.y + m[2] * p.z + m[3]);
            }
            theirs[i] = vec3(sum);
        }
    };
    const auto eigen = [&] {
        eigenSkin(&rig.matrix[0][0][0], &rig.bindPreMatrix[0][0][0], kInfluences, packed.data(), &rig.mesh.points[0].x,
                  &theirs[0].x, kPoints);
    };
    const std::vector<mat4> palette = skinPalette(mat4(1.0f), rig.matrix, rig.bindPreMatrix);
    const auto runtime = [&] { runtimeSkin(palette, runtimePoints, rig.mesh.points, theirs); };
    product();
    plain();
    requireAgreement("skin, plain loop", agree(ours, theirs));
    measure({name, "a plain loop over packed weights", product, plain});
    runtime();
    requireAgreement("skin, a runtime's job", agree(ours, theirs));
    measure({name, "a runtime's job: blended matrices", product, runtime});
    eigen();
    requireAgreement("skin, Eigen", agree(ours, theirs));
    measure({name, "Eigen, compiled for this processor", product, eigen});
}

void latticePeer() {
    constexpr unsigned kDivisions = 4;
    const Mesh rest = cloud();
    Lattice lattice;
    lattice.s = lattice.t = lattice.u = kDivisions;
    for (unsigned i = 0; i < kDivisions * kDivisions * kDivisions; ++i) {
        lattice.points.push_back(vec3(i % 4, i / 4 % 4, i / 16) / 3.0f - 0.5f + 0.01f * static_cast<float>(i % 5));
    }
    Mesh mesh = rest;
    const auto product = [&] {
        mesh.points = rest.points;
        ffdMesh(mesh, lattice, mat4(1.0f), mat4(1.0f), false, 2, 2, 2);
    };
    std::vector<vec3> theirs(kPoints);
    const auto weigh = [](float v) {
        const float r = 1.0f - v;
        return std::array<float, 4>{r * r * r, 3.0f * v * r * r, 3.0f * v * v * r, v * v * v};
    };
    const auto plain = [&] {
        for (unsigned i = 0; i < kPoints; ++i) {
            const vec3 c = rest.points[i] + 0.5f;
            const auto s = weigh(c.x);
            const auto t = weigh(c.y);
            const auto u = weigh(c.z);
            vec3 sum(0.0f);
            const vec3* at = lattice.points.data();
            for (std::size_t k = 0; k < 4; ++k) {
                vec3 layer(0.0f);
                for (std::size_t j = 0; j < 4; ++j, at += 4) {
                    layer += t[j] * (s[0] * at[0] + s[1] * at[1] + s[2] * at[2] + s[3] * at[3]);
                }
                sum += u[k] * layer;
            }
            theirs[i] = sum;
        }
    };
    product();
    plain();
    requireAgreement("lattice", agree(mesh.points, theirs));
    measure({"lattice of 4 by 4 by 4, 100,000 points", "a plain loop for this lattice alone", product, plain});
    static_assert(kPoints % 16 == 0, "a loop over sixteen has no rest");
    const auto aside = [&] { portableLatticeLoop(&lattice.points[0].x, &rest.points[0].x, &theirs[0].x, kPoints); };
    aside();
    requireAgreement("lattice, 16 points", agree(mesh.points, theirs));
    measure({"lattice of 4 by 4 by 4, 100,000 points", "the same, 16 points side by side", product, aside});
    const auto native = [&] { nativeLatticeLoop(&lattice.points[0].x, &rest.points[0].x, &theirs[0].x, kPoints); };
    native();
    requireAgreement("lattice, 16 points, for this processor", agree(mesh.points, theirs));
    measure({"lattice of 4 by 4 by 4, 100,000 points", "that, compiled for this processor", product, native});
}

void keyedCurvePeer() {
    AnimCurveKeys keys;
    for (int i = 0; i < 5000; ++i) {
        keys.time.push_back(static_cast<float>(2 * i));
        keys.value.push_back(i % 2 == 0 ? 1.0f : 4.0f);
        keys.inTangentX.push_back(1.5f);
        keys.inTangentY.push_back(0.5f);
        keys.inTangentType.push_back(1);
        keys.outTangentX.push_back(2.5f);
        keys.outTangentY.push_back(-0.5f);
        keys.outTangentType.push_back(1);
    }
    keys.weighted = true;
    const KeyedCurve curve(keys);
    volatile float sink = 0.0f;
    const auto once = [&] {
        return animCurve(1234.5f, keys.time, keys.value, keys.inTangentX, keys.inTangentY, keys.inTangentType,
                         keys.outTangentX, keys.outTangentY, keys.outTangentType, 0, 0, true);
    };
    requireAgreement("animation curve", curve(1234.5f) == once());
    measure({"animation curve of 5,000 keys, kept", "the same through animCurve, whose lists are copied",
             [&] { sink = curve(1234.5f); }, [&] { sink = once(); }});
}

} // namespace

void deformerPeers() {
    skinPeers("skin, 100,000 points, neighbours alike", Neighbours::alike);
    skinPeers("skin, 100,000 points, none alike", Neighbours::apart);
    latticePeer();
    keyedCurvePeer();
}

} // namespace zent::peers
