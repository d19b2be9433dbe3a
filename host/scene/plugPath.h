#pragma once

#include "maya/Scene.h"

#include <string>

namespace scene {

/// The plug of a name such as "node.attribute[3].child". An element that its multi does not have is made. Throws
/// std::runtime_error for a plug that does not exist.
Slot& plugAt(Scene& scene, const std::string& name);

} // namespace scene
