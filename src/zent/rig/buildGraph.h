#pragma once

#include "zent/rig/Graph.h"
#include "zent/values/json.h"

namespace zent::rig {

/// The graph of a manifest's records over the open scene, with the resource file that `Element::storage()` has loaded;
/// evaluated once. What cannot be read is told in its notes.
Graph buildGraph(json manifest);

} // namespace zent::rig
