// A skin's record as a check runs it, beside the same copies, one skinMesh, and one comparison.
#include "../SkinRig.h"
#include "Pair.h"

#include "zent/check/Run.h"
#include "zent/values/Compare.h"

namespace zent::peers {

namespace {

constexpr float kEpsilon = 0.001f;

/// The index of the worst point, or -1.
int worstOf(const Mesh& maya, const Mesh& zent) {
    float worst = 0.0f;
    int index = -1;
    for (std::size_t i = 0; i < maya.points.size(); ++i) {
        const vec3 a = maya.matrixLinear * maya.points[i] + maya.translation;
        const vec3 b = zent.matrixLinear * zent.points[i] + zent.translation;
        const vec3 off = glm::abs(a - b);
        const float distance = glm::length(a - b);
        if (!(off.x < kEpsilon && off.y < kEpsilon && off.z < kEpsilon) && distance > worst) {
            worst = distance;
            index = static_cast<int>(i);
        }
    }
    return index;
}

} // namespace

void recordPeers() {
    const bench::SkinRig skin;
    const Mesh skinned = skin.skinned();
    const json record = skinRecord(skin);
    Registry registry;
    registry["skinMesh"] = makeProxy("skinMesh");
    RunSettings settings;
    settings.ignoreDeformer = false;
    settings.epsilon = kEpsilon;
    const Run run(registry, settings, {});
    bool matches = false;
    const auto product = [&] { matches = run.checkSingle(record) == Run::kMatch; };
    int worst = 0;
    const auto plain = [&] {
        const json used = record; // a run uses its record up
        const Mesh maya = skinned;
        const Mesh input = skin.mesh;
        const SkinWeights weights = skin.weights;
        worst = worstOf(maya, skinMesh(1.0f, input, mat4(1.0f), skin.matrix, skin.bindPreMatrix, weights));
    };
    product();
    plain();
    requireAgreement("record of a skin", matches && worst < 0);
    measure({"record of a skin of 100,000 points", "the same copies, one skinMesh, one comparison", product, plain});
}

} // namespace zent::peers
