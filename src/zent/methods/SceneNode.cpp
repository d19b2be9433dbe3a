#include "zent/methods/SceneNode.h"

#include "zent/check/CheckCall.h"
#include "zent/methods/plugName.h"
#include "zent/values/Select.h"

#include <boost/algorithm/string/predicate.hpp>
#include <boost/algorithm/string/replace.hpp>
#include <fmt/format.h>

#include <maya/MAngle.h>
#include <maya/MDagPath.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MIntArray.h>
#include <maya/MPlugArray.h>

#include <algorithm>

namespace zent {

namespace {

MPlug childOf(const MPlug& plug, const std::string& name) {
    for (unsigned int i = 0; i < plug.numChildren(); ++i) {
        if (lastAttribute(longPlugName(plug.child(i))) == name) {
            return plug.child(i);
        }
    }
    return {};
}

/// A part of a path: "target[*]" is the attribute "target" and the index "*"; no index where there are no brackets.
struct PathPart {
    std::string attribute;
    std::string index;
    bool hasIndex = false;
};

PathPart takePart(std::string& path) {
    PathPart part;
    // A "." may stand in brackets.
    const std::size_t end = path.find_first_of("[.");
    part.attribute = path.substr(0, end);
    path.erase(0, end);
    if (!path.empty() && path.front() == '[') {
        const std::size_t close = path.find(']');
        part.hasIndex = true;
        part.index = path.substr(1, close - 1);
        path.erase(0, close + 1);
    }
    path.erase(0, 1); // the "." before the next one
    return part;
}

double sortKey(const SceneNode& node, const MPlug& multi, unsigned int index, const std::string& by) {
    const MPlug element = multi.elementByLogicalIndex(index);
    if (by.empty()) {
        return numberOf(element, 0.0);
    }
    const MPlug child = childOf(element, by);
    return numberOf(child.isNull() ? node.plug(by).elementByLogicalIndex(index) : child, 0.0);
}

/// The indices that the index of a part stands for.
std::vector<unsigned int> indicesFor(const SceneNode& node, const MPlug& multi, const std::string& index,
                                     unsigned int geometry) {
    if (index == "g") {
        return {geometry};
    }
    if (std::isdigit(static_cast<unsigned char>(index.front())) != 0) {
        return {static_cast<unsigned int>(std::stoul(index))};
    }
    if (index.front() == '=') {
        return indicesOf(node.plug(index.substr(1)));
    }
    std::vector<unsigned int> indices =
        indicesOf(index.front() == '.' && index.size() > 1 ? node.plug(index.substr(1)) : multi);
    if (index.front() == '.') {
        indices.resize(std::min<std::size_t>(indices.size(), 1));
    } else if (index == ">") {
        indices.erase(std::remove_if(indices.begin(), indices.end(),
                                     [&](unsigned int i) { return !isFed(multi.elementByLogicalIndex(i)); }),
                      indices.end());
    } else if (index.front() == '^') {
        std::vector<std::pair<double, unsigned int>> keyed;
        for (const unsigned int i : indices) {
            keyed.emplace_back(sortKey(node, multi, i, index.substr(1)), i);
        }
        std::stable_sort(keyed.begin(), keyed.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
        std::transform(keyed.begin(), keyed.end(), indices.begin(), [](const auto& key) { return key.second; });
    }
    return indices;
}

bool tellsIndex(const std::string& index) {
    return index == "#" || index == ">";
}

void addNumbers(const MPlug& plug, std::vector<double>& numbers) {
    if (plug.isCompound() && !plug.isArray()) {
        for (unsigned int i = 0; i < plug.numChildren(); ++i) {
            addNumbers(plug.child(i), numbers);
        }
    } else if (!plug.isArray()) {
        const auto type = static_cast<int>(plug.attribute().apiType());
        const bool isAngle = type == MFn::kDoubleAngleAttribute || type == MFn::kFloatAngleAttribute;
        numbers.push_back(isAngle ? plug.asMAngle().asRadians() : static_cast<double>(float_value(plug)));
    }
}

template <class Test>
bool anyAround(const MPlug& plug, Test test) {
    if (plug.isNull()) {
        return false;
    }
    if (test(plug)) {
        return true;
    }
    for (unsigned int i = 0; plug.isCompound() && !plug.isArray() && i < plug.numChildren(); ++i) {
        if (test(plug.child(i))) {
            return true;
        }
    }
    for (const unsigned int index : plug.isArray() ? indicesOf(plug) : std::vector<unsigned int>()) {
        if (test(plug.elementByLogicalIndex(index))) {
            return true;
        }
    }
    return plug.isChild() && !plug.parent().isNull() && test(plug.parent());
}

} // namespace

SceneNode::SceneNode(const MObject& object) : object_(object), type_(toStd(MFnDependencyNode(object).typeName())) {}

std::string SceneNode::name() const {
    if (MDagPath path; object_.hasFn(MFn::kDagNode) && MDagPath::getAPathTo(object_, path) == MStatus::kSuccess) {
        return toStd(path.partialPathName());
    }
    return toStd(MFnDependencyNode(object_).name());
}

MPlug SceneNode::plug(const std::string& attribute) const {
    return MFnDependencyNode(object_).findPlug(toMaya(attribute), true);
}

SceneNode SceneNode::sourceOf(const std::string& attribute) const {
    const MPlug fed = plug(attribute);
    const MPlug source = fed.isNull() ? MPlug() : fed.source();
    if (source.isNull()) {
        throw LeftOut(fmt::format("nothing is connected to {}", attribute));
    }
    return SceneNode(source.node());
}

std::vector<unsigned int> indicesOf(const MPlug& multi) {
    MIntArray indices;
    if (!multi.isNull() && multi.isArray()) {
        multi.getExistingArrayAttributeIndices(indices);
    }
    std::vector<unsigned int> list;
    for (unsigned int i = 0; i < indices.length(); ++i) {
        list.push_back(static_cast<unsigned int>(indices[i]));
    }
    return list;
}

std::vector<FoundPlug> findPlugs(const SceneNode& node, const std::string& path, unsigned int geometry) {
    std::vector<FoundPlug> found;
    std::string rest = path;
    for (bool isFirst = true; !rest.empty(); isFirst = false) {
        const PathPart part = takePart(rest);
        std::vector<FoundPlug> next;
        if (isFirst) {
            found.push_back({{}, node.plug(part.attribute)});
        }
        for (FoundPlug& from : found) {
            const MPlug plug = isFirst ? from.plug : childOf(from.plug, part.attribute);
            if (plug.isNull()) {
                throw LeftOut(fmt::format("it has no plug {}", path));
            }
            if (!part.hasIndex) {
                next.push_back({std::move(from.indices), plug});
                continue;
            }
            if (!plug.isArray()) {
                throw LeftOut(fmt::format("its {} is no multi", part.attribute));
            }
            for (const unsigned int index : indicesFor(node, plug, part.index, geometry)) {
                next.push_back({from.indices, plug.elementByLogicalIndex(index)});
                if (tellsIndex(part.index)) {
                    next.back().indices.push_back(index);
                }
            }
        }
        found = std::move(next);
    }
    return found;
}

MPlug findPlug(const SceneNode& node, const std::string& path, unsigned int geometry) {
    try {
        const std::vector<FoundPlug> found = findPlugs(node, path, geometry);
        return found.empty() ? MPlug() : found.front().plug;
    } catch (const LeftOut&) {
        return {};
    }
}

std::vector<double> numbersOf(const MPlug& plug) {
    std::vector<double> numbers;
    addNumbers(plug, numbers);
    return numbers;
}

double numberOf(const MPlug& plug, double otherwise) {
    const std::vector<double> numbers = plug.isNull() ? std::vector<double>() : numbersOf(plug);
    return numbers.empty() ? otherwise : numbers.front();
}

bool isFed(const MPlug& plug) {
    return anyAround(plug, [](const MPlug& part) { return part.isDestination(); });
}

bool feeds(const MPlug& plug) {
    return anyAround(plug, [](const MPlug& part) { return part.isSource(); });
}

bool PlugNames::isInside(const std::string& nodeName) const {
    const std::size_t start = nodeName.front() == '|' ? 1 : 0;
    for (std::size_t at = start; at != std::string::npos && at <= nodeName.size();) {
        if (nodeName.compare(at, namespace_.size() + 1, namespace_ + ":") != 0) {
            return false;
        }
        at = nodeName.find('|', at);
        at = at == std::string::npos ? at : at + 1;
    }
    return true;
}

std::string PlugNames::nodeName(const SceneNode& node) const {
    std::string name = node.name();
    if (namespace_.empty()) {
        return name;
    }
    if (!isInside(name)) {
        throw LeftOut(fmt::format("{} is outside the namespace {}", name, namespace_));
    }
    boost::algorithm::replace_all(name, "|" + namespace_ + ":", "|");
    return boost::algorithm::starts_with(name, "|") ? name : name.substr(namespace_.size() + 1);
}

std::string PlugNames::plugName(const MPlug& plug) const {
    std::string name = nodeName(SceneNode(plug.node())) + "." + longPlugName(plug);
    // By the look-up itself: a name that leads elsewhere would be read without an error.
    namescope = namespace_;
    bool isFound = false;
    try {
        isFound = selectPlug(name) == plug;
    } catch (const std::runtime_error&) {
    }
    namescope.clear();
    if (!isFound) {
        throw LeftOut(fmt::format("{} is not found by its name", name));
    }
    return name;
}

} // namespace zent
