#pragma once

#include "zent/proxies/Proxy.h"
#include "zent/proxies/Registry.h"
#include "zent/values/Port.h"

#include <stdexcept>
#include <string>
#include <vector>

namespace zent::test {

/// The registered adapter of a method.
inline Proxy& adapter(const std::string& method) {
    static const std::vector<std::unique_ptr<Proxy>> proxies = makeProxies();
    for (const std::unique_ptr<Proxy>& proxy : proxies) {
        if (proxy->name() == method) {
            return *proxy;
        }
    }
    throw std::runtime_error("no adapter of " + method);
}

/// Arguments from a list of ports, each a list of values. A value with logical indices is {"indices": [...], "value":
/// ...}.
inline Arguments argumentsOf(const json& ports) {
    Arguments args;
    for (unsigned int i = 0; i < ports.size(); ++i) {
        for (json value : ports[i]) {
            std::vector<unsigned int> indices;
            if (value.is_object() && value.contains("indices")) {
                indices = value["indices"].get<std::vector<unsigned int>>();
                value = json(value["value"]);
            }
            args.add(i, Element(std::move(value), std::move(indices)));
        }
    }
    return args;
}

/// Maya's ports in the same form.
inline std::vector<Port> portsOf(const json& list) {
    const Arguments args = argumentsOf(list);
    std::vector<Port> ports;
    for (unsigned int i = 0; i < list.size(); ++i) {
        ports.push_back(args.get(i));
    }
    return ports;
}

} // namespace zent::test
