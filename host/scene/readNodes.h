#pragma once

#include "scene/GeometryReader.h"
#include "scene/Json.h"

#include <filesystem>
#include <vector>

namespace scene {

class Scene;

inline constexpr const char* kResourceKey = "resource";
inline constexpr const char* kResourceForm =
    "\"resource\" should be the name of a file beside the scene, and stand before \"nodes\"";
inline constexpr const char* kNodesForm = "\"nodes\" should be an object of nodes by their names";

/// Reads the nodes of a scene file's text, each as soon as its own text ends, so that no more than one is in memory.
/// What is left over is all but the nodes. The folder is where the file lies. Throws std::runtime_error.
Json readNodes(const std::vector<char>& text, std::filesystem::path folder, GeometryReader& geometry, Scene& scene);

} // namespace scene
