#pragma once

#include "zent/proxies/MethodInfo.h"
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
/// A new adapter of one method; null where there is none.
std::unique_ptr<Proxy> makeProxy(const std::string& method);

/// The same for one who makes many, by method name.
const std::map<std::string, std::unique_ptr<Proxy> (*)()>& proxyMakers();

/// What each method reads, in the same order.
std::vector<MethodInfo> methodInfos();

} // namespace zent
