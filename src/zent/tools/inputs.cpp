#include "zent/tools/inputs.h"

#include "zent/methods/NodeTable.h"
#include "zent/nodes/animCurve.h"
#include "zent/proxies/Registry.h"
#include "zent/values/Port.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <set>
#include <utility>

namespace zent {

namespace {

struct Reading {
    const char* type;
    json (*read)(const Element& element);
};
template <class T>
json readAs(const Element& element) {
    return toJson(ValueType<T>::read(element));
}
constexpr std::array<Reading, 8> kReadings{{{"Float", readAs<float>},
                                            {"Int", readAs<int>},
                                            {"Bool", readAs<bool>},
                                            {"Vec2", readAs<vec2>},
                                            {"Vec3", readAs<vec3>},
                                            {"Vec4", readAs<vec4>},
                                            {"Mat4", readAs<mat4>},
                                            {"Euler", readAs<vec3>}}};

/// "targetRotate" of "target[*].targetRotate", "matrix" of "node.matrix[0]".
std::string lastName(const std::string& plug) {
    const std::string name = plug.substr(plug.rfind('.') + 1); // npos + 1 is 0
    return name.substr(0, name.find('['));
}

/// `source` is null where the table tells nothing.
std::string nameOf(const Source* source, const Port& port, unsigned int attribute) {
    if (source != nullptr && source->kind == Source::Kind::reader) {
        return source->text;
    }
    if (source != nullptr && source->kind == Source::Kind::plug) {
        const bool isWalked = !source->walk.empty() && source->walk != "<";
        return (isWalked ? source->walk + "." : "") + lastName(source->text);
    }
    const bool isPlug = !port.elements().empty() && port.elements().front().value().is_string();
    return isPlug ? lastName(port.elements().front().getString()) : "argument " + std::to_string(attribute);
}

/// How many of a row's plugs are those of the record: it tells the row of a channel.
std::size_t likeness(const NodeRow& row, const Arguments& args) {
    std::size_t count = 0;
    for (unsigned int i = 0; i < row.arguments.size(); ++i) {
        for (const Element& element : args.get(i).elements()) {
            const bool isPlug = element.value().is_string() && row.arguments[i].kind == Source::Kind::plug;
            count += isPlug && lastName(element.getString()) == lastName(row.arguments[i].text) ? 1 : 0;
        }
    }
    return count;
}

const NodeRow* rowOf(const std::string& method, const Arguments& args) {
    static const auto rows = [] {
        std::map<std::string, std::vector<const NodeRow*>> byMethod;
        for (const NodeRow& row : nodeTable()) {
            byMethod[row.method].push_back(&row);
        }
        return byMethod;
    }();
    const auto found = rows.find(method);
    if (found == rows.end()) {
        return nullptr;
    }
    return *std::max_element(found->second.begin(), found->second.end(), [&args](const NodeRow* a, const NodeRow* b) {
        return likeness(*a, args) < likeness(*b, args);
    });
}

const std::vector<ValueInfo>& argumentsOf(const std::string& method) {
    static const auto methods = [] {
        std::map<std::string, std::vector<ValueInfo>> byName;
        for (MethodInfo& info : methodInfos()) {
            byName[info.name] = std::move(info.arguments);
        }
        return byName;
    }();
    static const std::vector<ValueInfo> none;
    const auto found = methods.find(method);
    return found == methods.end() ? none : found->second;
}

json readEntry(const Element& element, const std::string& type) {
    const auto* const found = std::find_if(kReadings.begin(), kReadings.end(),
                                           [&type](const Reading& reading) { return reading.type == type; });
    if (found == kReadings.end()) {
        return nullptr; // a shape or a list that is not written out
    }
    try {
        return found->read(element);
    } catch (const std::exception&) {
        return nullptr;
    }
}

/// A list as it is, or its one item.
void put(json& object, const char* key, json&& list, bool isList) {
    if (!list.empty()) {
        object[key] = isList ? std::move(list) : std::move(list.front());
    }
}

json inputOf(const Port& port, const std::string& declared) {
    const std::string type = declared.substr(0, declared.find_first_of("[{"));
    json values = json::array();
    json plugs = json::array();
    json blocks = json::array();
    json indices = json::array();
    for (const Element& element : port.elements()) {
        const json& value = element.value();
        if (value.is_string()) {
            plugs.push_back(value);
        }
        if (value.is_object()) {
            blocks.push_back(value.value("id", json()));
        } else if (json read = readEntry(element, type); !read.is_null()) {
            values.push_back(std::move(read));
        }
        if (!element.indices().empty()) {
            indices.push_back(element.indices());
        }
    }
    json input{{"type", declared}};
    const bool isList = type != declared;
    if (isList && plugs.empty() && blocks.empty()) {
        input["value"] = std::move(values); // also an empty list
    } else {
        put(input, "value", std::move(values), isList);
    }
    put(input, "plug", std::move(plugs), isList);
    put(input, "block", std::move(blocks), isList);
    put(input, "indices", std::move(indices), true);
    return input;
}

} // namespace

json inputsOf(const std::string& method, const Arguments& args) {
    const NodeRow* row = rowOf(method, args);
    const std::vector<ValueInfo>& infos = argumentsOf(method);
    json inputs = json::array();
    for (unsigned int i = 0; i < infos.size(); ++i) {
        const Port& port = args.get(i);
        const bool isTold = row != nullptr && i < row->arguments.size();
        const Source* source = isTold ? &row->arguments[i] : nullptr;
        std::string type = infos[i].type;
        if (isTold && source->isAngle && type.rfind("Vec3", 0) == 0) {
            type.replace(0, 4, "Euler");
        }
        json input = inputOf(port, type);
        input["name"] = nameOf(source, port, i);
        inputs.push_back(std::move(input));
    }
    return inputs;
}

json samplesOf(const Arguments& args) {
    constexpr int kSteps = 200;
    constexpr std::ptrdiff_t kKeysBefore = 2;
    constexpr std::ptrdiff_t kKeysAfter = 2;
    constexpr double kMargin = 0.1; // of what is shown
    try {
        const auto at = args.get(0).read<float>();
        const auto times = args.get(1).getFloatVector<8>();
        const auto values = args.get(2).getFloatVector<8>();
        const auto inX = args.get(3).getFloatVector<8>();
        const auto inY = args.get(4).getFloatVector<8>();
        const auto inTypes = args.get(5).getIntVector<8>();
        const auto outX = args.get(6).getFloatVector<8>();
        const auto outY = args.get(7).getFloatVector<8>();
        const auto outTypes = args.get(8).getIntVector<8>();
        const auto pre = args.get(9).read<int>();
        const auto post = args.get(10).read<int>();
        const auto isWeighted = args.get(11).read<bool>();
        if (times.empty() || !std::isfinite(at)) {
            return nullptr;
        }
        const auto next = std::upper_bound(times.begin(), times.end(), at);
        const auto first = next - std::min(kKeysBefore, next - times.begin());
        const auto last = next + std::min(kKeysAfter, times.end() - next);
        double low = at;
        double high = at;
        std::set<float> inputs{at};
        json keys = json::array();
        for (auto key = first; key != last; ++key) {
            low = std::min<double>(low, *key);
            high = std::max<double>(high, *key);
            inputs.insert(*key);
            keys.push_back({*key, values[static_cast<std::size_t>(key - times.begin())]});
        }
        const double margin = high > low ? kMargin * (high - low) : 1.0;
        for (int i = 0; i <= kSteps; ++i) {
            inputs.insert(static_cast<float>(low - margin + i * (high - low + 2.0 * margin) / kSteps));
        }
        json points = json::array();
        for (const float x : inputs) {
            const float y = animCurve(x, times, values, inX, inY, inTypes, outX, outY, outTypes, pre, post, isWeighted);
            points.push_back({x, y});
        }
        return {{"points", std::move(points)}, {"keys", std::move(keys)}, {"at", at}};
    } catch (const std::exception&) {
        return nullptr;
    }
}

} // namespace zent
