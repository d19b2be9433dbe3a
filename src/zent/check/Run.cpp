#include "zent/check/Run.h"

#include "zent/proxies/PointWalk.h"
#include "zent/values/Compare.h"
#include "zent/values/jsonAccess.h"
#include "zent/values/Log.h"
#include "zent/values/Port.h"

#include <fmt/format.h>

#include <exception>
#include <utility>

namespace zent {

namespace {

/// Records of this method are passed over without a trace, whatever "skip" says: deliberately hard-wired.
constexpr const char* kPassedOverMethod = "worldVisibility";

std::string text(const json& record, const char* key) {
    const json& value = member(record, key);
    return value.is_string() ? value.get_ref<const std::string&>() : value.get<std::string>(); // the latter throws
}

std::vector<unsigned int> takeIndices(const json& entry) {
    std::vector<unsigned int> indices;
    const auto found = entry.is_object() ? entry.find("indices") : entry.end();
    if (found == entry.end()) {
        return indices;
    }
    if (!found->is_array()) {
        return found->get<std::vector<unsigned int>>(); // throws
    }
    indices.reserve(found->size());
    for (const json& index : *found) {
        indices.push_back(toUnsigned(index));
    }
    return indices;
}

json takeValue(json& entry) {
    const auto name = entry.is_object() ? entry.find("name") : entry.end();
    return std::move(name != entry.end() ? *name : entry.at("value"));
}

/// Files each entry of a record's list under its attribute number. The entries are used up.
template <class File>
void fileEntries(json& record, const char* key, File file) {
    const auto list = record.find(key);
    if (list == record.end()) {
        return;
    }
    for (json& entry : *list) {
        const auto attribute = toldAt({key, std::nullopt}, [&entry] { return toUnsigned(entry.at("attribute")); });
        const Place place{key, attribute};
        auto indices = toldAt(place, [&entry] { return takeIndices(entry); });
        file(attribute, Element(takeValue(entry), std::move(indices), place));
    }
}

std::string dumped(const json& value) {
    return value.dump(-1, ' ', false, json::error_handler_t::strict);
}

unsigned reportMismatch(const json& closure, const json& maya, const json& zent) {
    Log::println("closure: " + dumped(closure));
    Log::println("maya output: " + dumped(maya));
    Log::println("zent output: " + dumped(zent));
    return Run::kMismatch;
}

} // namespace

Run::Run(Registry& registry, RunSettings settings, Display display)
    : registry_(registry), settings_(std::move(settings)), display_(std::move(display)) {}

bool Run::check(json manifest) const {
    bool matched = true;
    std::set<std::string> ignored;
    for (json& record : manifest) {
        const std::string node = text(record, "node_name");
        const std::string method = text(record, "method");
        if (method == kPassedOverMethod) {
            continue;
        }
        if (settings_.verbose != 0) {
            Log::println(fmt::format("====== start running {}({}) =====", node, method));
        }
        unsigned outcome = kMatch;
        try {
            if (settings_.skip.count(method) == 0) {
                outcome = checkSingle(std::move(record));
            }
        } catch (const std::exception& error) {
            Log::println(fmt::format("error on checking {}({}): {}", node, method, error.what()));
            throw std::exception();
        }
        if (outcome == kMismatch) {
            Log::println(fmt::format("===== unmatch on {}({}) =====", node, method));
            if (settings_.stopOnFirstError) {
                return false; // deliberately with no end line, and no warning about the methods ignored so far
            }
            matched = false;
        }
        if (outcome == kIgnored) {
            ignored.insert(method);
        }
        if (settings_.verbose != 0) {
            Log::println(fmt::format("====== end running {}({}) =====", node, method));
        }
    }
    if (!ignored.empty()) {
        display_.warning(fmt::format("ignored methods({}): [{}]", ignored.size(), fmt::join(ignored, ",")));
    }
    return matched;
}

unsigned Run::checkSingle(json record) const {
    const std::string method = text(record, "method");
    std::vector<Port> ports;
    fileEntries(record, "results",
                [&](unsigned int attribute, Element&& element) { addTo(ports, attribute, std::move(element)); });
    Arguments args;
    fileEntries(record, "arguments",
                [&](unsigned int attribute, Element&& element) { args.add(attribute, std::move(element)); });

    // Only here, so that a bad entry is told of even where nobody would read it: deliberate.
    const auto found = registry_.find(method);
    if (found == registry_.end()) {
        return kIgnored;
    }
    Proxy& proxy = *found->second;
    if (!proxy.isDeformer()) {
        return compareOnce(proxy, args, ports);
    }
    return settings_.ignoreDeformer ? unsigned{kIgnored} : comparePoints(proxy, args, ports);
}

unsigned Run::compareOnce(const Proxy& proxy, const Arguments& args, const std::vector<Port>& ports) const {
    if (settings_.verbose >= 2) {
        Log::println("Closure: " + dumped(proxy.closure(args, ports)));
    }
    const json maya = proxy.mayaResult(ports);
    const json zent = proxy.zentResult(args);
    if (compare(maya, zent, settings_.epsilon)) {
        return kMatch;
    }
    return reportMismatch(proxy.closure(args, ports), maya, zent);
}

// Only a distance above the worst so far is recorded, so that a point which differs at distance 0, or by NaN, leaves
// the record a match. That is deliberate, and so is the earlier point on a tie.
unsigned Run::comparePoints(Proxy& proxy, const Arguments& args, const std::vector<Port>& ports) const {
    int errorIndex = -1;
    float worstDistance = 0.0f;
    json worstMaya;
    json worstZent;
    json worstClosure;
    proxy.init(args, ports);
    const std::unique_ptr<PointWalk> walk = walkOf(proxy);
    for (; !proxy.isDone(); proxy.next()) {
        if (settings_.verbose >= 2) {
            const int index = proxy.index();
            Log::println(fmt::format("Closure on vtx[{}]: {}", index, dumped(proxy.closure(args, ports))));
        }
        const PointPair point = walk->at(static_cast<unsigned>(proxy.index()));
        if (point.agree(settings_.epsilon)) {
            continue;
        }
        if (point.distance() > worstDistance) {
            worstDistance = point.distance();
            errorIndex = proxy.index();
            worstMaya = proxy.mayaResult(ports);
            worstZent = proxy.zentResult(args);
            worstClosure = proxy.closure(args, ports);
        }
    }
    if (errorIndex < 0) {
        return kMatch;
    }
    Log::println("error index: " + std::to_string(errorIndex));
    return reportMismatch(worstClosure, worstMaya, worstZent);
}

} // namespace zent
