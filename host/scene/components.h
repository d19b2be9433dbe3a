#pragma once

#include "maya/Data.h"
#include "maya/Slot.h"

#include <string>

namespace scene {

/// The components of a text such as "vtx[7]", "e[0:3]", "cv[0:3][2]": vtx, e and f of a mesh, cv of a curve (one index)
/// or a surface (two), pt of a lattice (three). "[*]" in every direction stands for all there are.
Component readComponent(const Slot& slot, const std::string& text);

} // namespace scene
