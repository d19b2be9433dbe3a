#pragma once

#include "zent/proxies/Proxy.h"
#include "zent/proxies/Registry.h"
#include "zent/values/Compare.h"
#include "zent/values/Port.h"
#include "zent/values/resource.h"
#include "zent/values/ResourceWriter.h"

#include <gtest/gtest.h>

#include <filesystem>
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

/// Both sides of a method give the same outputs, the first one of this type: Maya's with these names, the node
/// function's without.
inline void expectBinding(const std::string& method, const std::vector<std::string>& plugs, const std::string& type,
                          const json& ports, const json& arguments, float tolerance) {
    SCOPED_TRACE(method);
    const Proxy& proxy = adapter(method);
    const json maya = proxy.mayaResult(portsOf(ports));
    const json zent = proxy.zentResult(argumentsOf(arguments));
    EXPECT_TRUE(compare(maya, zent, tolerance)) << maya << zent;
    EXPECT_FALSE(proxy.isDeformer());
    ASSERT_EQ(maya.size(), plugs.size());
    EXPECT_EQ(maya.at(0).at("type"), type);
    for (std::size_t i = 0; i < plugs.size(); ++i) {
        EXPECT_EQ(maya.at(i).at("name"), plugs[i]);
        EXPECT_FALSE(zent.at(i).contains("name"));
    }
}

/// Writes the blocks of a resource file and loads them.
inline void loadBlocksOf(const ResourceWriter& writer) {
    const std::string path = testing::TempDir() + "adapters";
    writer.write(path);
    Element::storage().load(path);
    std::filesystem::remove(path);
}

} // namespace zent::test
