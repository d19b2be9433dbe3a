#pragma once

#include "maya/Scene.h"

#include <string>

namespace scene {

/// Fills a scene from a scene file, whose form docs/scene-file.md tells; geometry that it leaves to a resource file
/// comes from `resource`. Throws std::runtime_error, naming the node and the attribute at fault.
void readSceneFile(const std::string& path, const std::string& resource, Scene& scene);

} // namespace scene
