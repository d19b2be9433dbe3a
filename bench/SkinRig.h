#pragma once

#include "zent/nodes/skin.h"
#include "zent/values/Element.h"
#include "zent/values/resource.h"
#include "zent/values/ResourceWriter.h"

#include <cmath>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace zent::bench {

constexpr unsigned kPoints = 100000;
constexpr unsigned kInfluences = 60;
constexpr unsigned kInfluencesPerPoint = 4;

/// Points of a shape without a matrix.
inline Mesh cloud(float phase = 0.0f) {
    std::vector<vec3> points;
    for (unsigned i = 0; i < kPoints; ++i) {
        const float t = static_cast<float>(i) + phase;
        points.emplace_back(std::sin(0.37f * t), std::sin(0.11f * t), std::sin(0.23f * t));
    }
    return Mesh(std::move(points), mat4(1.0f));
}

/// Neighbours with the same influences, as a smooth bind leaves them, or none with its neighbour's.
enum class Neighbours { alike, apart };

struct SkinRig {
    Mesh mesh = cloud();
    std::vector<mat4> matrix;
    std::vector<mat4> bindPreMatrix;
    SkinWeights weights;

    explicit SkinRig(Neighbours neighbours = Neighbours::alike) {
        for (unsigned i = 0; i < kInfluences; ++i) {
            const auto t = static_cast<float>(i);
            mat4 m = glm::mat4_cast(glm::angleAxis(0.1f * t, glm::normalize(vec3(1.0f, t, 2.0f))));
            m[3] = vec4(t, -t, 0.5f * t, 1.0f);
            bindPreMatrix.push_back(glm::inverse(m));
            m[3] += vec4(1.0f, 0.0f, 0.0f, 0.0f);
            matrix.push_back(m);
        }
        for (unsigned i = 0; i < kPoints; ++i) {
            const unsigned first = neighbours == Neighbours::alike ? i / 97 : i * 2654435761u >> 7;
            for (unsigned k = 0; k < kInfluencesPerPoint; ++k) {
                weights.emplace_back(i, (first + 7 * k) % kInfluences, 0.1f * static_cast<float>(k + 1));
            }
        }
    }

    Mesh skinned() const { return skinMesh(1.0f, mesh, mat4(1.0f), matrix, bindPreMatrix, weights); }
};

/// Makes what was added the storage of the run.
inline void store(ResourceWriter& writer) {
    const auto path = std::filesystem::temp_directory_path() / "zent_bench.bin";
    writer.write(path.string());
    Element::storage().load(path.string());
    std::filesystem::remove(path);
}

/// The record of a skin that matches, whose large lists are the run's storage afterwards.
inline json skinRecord(const SkinRig& rig) {
    const auto entry = [](unsigned attribute, json value) {
        return json{{"attribute", attribute}, {"value", std::move(value)}};
    };
    const auto numbers = [](const mat4& m) { return json(std::vector<float>(&m[0][0], &m[0][0] + 16)); };
    ResourceWriter writer;
    writer.add(rig.skinned());
    writer.add(rig.mesh);
    writer.add(rig.weights);
    store(writer);
    json arguments = {entry(0, 1.0), entry(1, {{"id", 1}}), entry(2, numbers(mat4(1.0f)))};
    for (unsigned i = 0; i < kInfluences; ++i) {
        arguments.push_back(entry(3, numbers(rig.matrix[i])));
        arguments.push_back(entry(4, numbers(rig.bindPreMatrix[i])));
    }
    arguments.push_back(entry(5, {{"id", 2}}));
    return {{"node_name", "skin"},
            {"method", "skinMesh"},
            {"results", {entry(0, {{"id", 0}})}},
            {"arguments", std::move(arguments)}};
}

} // namespace zent::bench
