#pragma once

#include "maya/Scene.h"
#include "scene/GeometryReader.h"
#include "scene/Json.h"

#include <functional>
#include <string>
#include <string_view>

namespace scene {

/// Gives a new plug the kind and the value that a scene file tells, with all that lies below it.
void readAttribute(Scene& scene, GeometryReader& geometry, Slot& slot, const Json& value);

/// Throws std::runtime_error where an object of attributes or children has two of one name, or one that is no name; a
/// special name may be allowed besides.
void requireDistinctNames(const Json& object, const std::function<std::string()>& owner, std::string_view special = {});

} // namespace scene
