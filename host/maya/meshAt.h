#pragma once

#include "Data.h"

#include <maya/MDagPath.h>

namespace scene {

/// The object that holds the mesh which a node, or one right below it, shows: the data of its "outMesh" or else of its
/// first attribute that has a mesh, itself or in an element. A null object for none.
MObject meshAt(const MDagPath& path);

} // namespace scene
