#pragma once

#include "zent/proxies/MethodInfo.h"
#include "zent/proxies/Proxy.h"

#include <memory>

namespace zent {

/// A row of the registry. Each adapter's source makes its own, with
///
///     template Method method<ProxyClamp>();
///
/// so that the registry needs to know the class's name only. P has `MethodInfo info() const`, which may leave out the
/// name.
struct Method {
    std::unique_ptr<Proxy> (*make)();
    MethodInfo (*describe)();
};

template <class P>
Method method();

} // namespace zent
