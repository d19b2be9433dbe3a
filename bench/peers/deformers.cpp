#include "Pair.h"
namespace zent::peers {
void deformerPeers() {}
} // namespace zent::peers
