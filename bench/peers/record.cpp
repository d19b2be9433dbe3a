// A skin's record as a check runs it, beside the same copies, one skinMesh, and one comparison.
#include "Pair.h"

#include "zent/check/Run.h"
#include "zent/nodes/skin.h"
#include "zent/values/Compare.h"
#include "zent/values/Element.h"
#include "zent/values/resource.h"
#include "zent/values/ResourceWriter.h"

#include <cmath>
#include <filesystem>
#include <stdexcept>
#include <utility>

namespace zent::peers {

namespace {

constexpr unsigned kPoints = 100000;
constexpr unsigned kInfluences = 60;
constexpr float kEpsilon = 0.001f;

struct Skin {
    Mesh mesh;
    std::vector<mat4> matrix;
    std::vector<mat4> bindPreMatrix;
    SkinWeights weights;
    Mesh skinned;

    Skin() {
        std::vector<vec3> points;
        for (unsigned i = 0; i < kPoints; ++i) {
            const auto t = static_cast<float>(i);
            points.emplace_back(std::sin(0.37f * t), std::sin(0.11f * t), std::sin(0.23f * t));
            for (unsigned k = 0; k < 4; ++k) {
                weights.emplace_back(i, (i / 97 + 7 * k) % kInfluences, 0.1f * static_cast<float>(k + 1));
            }
        }
        mesh = Mesh(std::move(points), mat4(1.0f));
        for (unsigned i = 0; i < kInfluences; ++i) {
            const auto t = static_cast<float>(i);
            mat4 m = glm::mat4_cast(glm::angleAxis(0.1f * t, glm::normalize(vec3(1.0f, t, 2.0f))));
            m[3] = vec4(t, -t, 0.5f * t, 1.0f);
            bindPreMatrix.push_back(glm::inverse(m));
            m[3] += vec4(1.0f, 0.0f, 0.0f, 0.0f);
            matrix.push_back(m);
        }
        skinned = skinMesh(1.0f, mesh, mat4(1.0f), matrix, bindPreMatrix, weights);
    }
};

json entry(unsigned attribute, json value) {
    return {{"attribute", attribute}, {"value", std::move(value)}};
}

json numbers(const mat4& m) {
    json list = json::array();
    for (int i = 0; i < 16; ++i) {
        list.push_back(m[i / 4][i % 4]);
    }
    return list;
}

/// The record of a skin, whose large lists the run's storage holds afterwards.
json recordOf(const Skin& skin) {
    const std::string path = (std::filesystem::temp_directory_path() / "zent_bench_peers.bin").string();
    ResourceWriter writer;
    writer.add(skin.skinned);
    writer.add(skin.mesh);
    writer.add(skin.weights);
    writer.write(path);
    Element::storage().load(path);
    std::filesystem::remove(path);
    json arguments = {entry(0, 1.0), entry(1, {{"id", 1}}), entry(2, numbers(mat4(1.0f)))};
    for (unsigned i = 0; i < kInfluences; ++i) {
        arguments.push_back(entry(3, numbers(skin.matrix[i])));
        arguments.push_back(entry(4, numbers(skin.bindPreMatrix[i])));
    }
    arguments.push_back(entry(5, {{"id", 2}}));
    return {{"node_name", "skin"},
            {"method", "skinMesh"},
            {"results", {entry(0, {{"id", 0}})}},
            {"arguments", std::move(arguments)}};
}

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
    const Skin skin;
    const json record = recordOf(skin);
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
        const Mesh maya = skin.skinned;
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
