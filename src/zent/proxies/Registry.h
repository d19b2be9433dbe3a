#pragma once

#include "zent/proxies/Proxy.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace zent {

/// The adapters by method name.
using Registry = std::map<std::string, std::unique_ptr<Proxy>>;

/// One new adapter of each class, in the order in which they are registered.
std::vector<std::unique_ptr<Proxy>> makeProxies();

} // namespace zent
