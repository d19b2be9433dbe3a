#include "scene/sceneFile.h"

#include <stdexcept>

namespace scene {

void readSceneFile(const std::string& path, const std::string&, Scene&) {
    throw std::runtime_error("cannot read scene " + path);
}

} // namespace scene
