#include "zent/rig/Upstream.h"

#include "zent/methods/plugName.h"
#include "zent/methods/SceneNode.h"
#include "zent/values/Select.h"

#include <maya/MFn.h>
#include <maya/MFnDagNode.h>

#include <array>
#include <string>

namespace zent::rig {

namespace {

/// What a node hands on as it is, points without a matrix where the output has its own.
struct Passage {
    const char* type;
    const char* output; ///< up to an index
    const char* input;
};
constexpr std::array<Passage, 8> kPassages{{{"mesh", "outMesh", "inMesh"},
                                            {"mesh", "worldMesh", "inMesh"},
                                            {"nurbsCurve", "local", "create"},
                                            {"nurbsCurve", "worldSpace", "create"},
                                            {"nurbsSurface", "local", "create"},
                                            {"nurbsSurface", "worldSpace", "create"},
                                            {"lattice", "latticeOutput", "latticeInput"},
                                            {"lattice", "worldLattice", "latticeInput"}}};

std::optional<Step> passage(const MPlug& plug) {
    const SceneNode node(plug.node());
    const std::string name = longPlugName(plug);
    if (node.type() == "unitConversion" && name == "output") {
        const MPlug factor = node.plug("conversionFactor");
        const MPlug input = node.plug("input");
        if (!input.isNull()) {
            return Step{input, factor.isNull() ? 1.0f : float_value(factor)};
        }
    }
    if (node.type() == "groupParts" && name == "outputGeometry") {
        const MPlug input = node.plug("inputGeometry");
        return input.isNull() ? std::nullopt : std::optional(Step{input});
    }
    for (const Passage& row : kPassages) {
        if (node.type() == row.type && name.substr(0, name.find('[')) == row.output) {
            const MPlug input = node.plug(row.input);
            return input.isNull() || !isFed(input) ? std::nullopt : std::optional(Step{input, 1.0f, true});
        }
    }
    return std::nullopt;
}

/// The plug that stands below a source where another one stands below what it feeds.
std::optional<MPlug> sourceBelow(const MPlug& plug) {
    if (plug.isDestination()) {
        return plug.sourceWithConversion();
    }
    MPlug above;
    if (plug.isElement()) {
        above = plug.array();
    } else if (plug.isChild()) {
        above = plug.parent();
    }
    if (above.isNull()) {
        return std::nullopt;
    }
    const std::optional<MPlug> source = sourceBelow(above);
    if (!source) {
        return std::nullopt;
    }
    MPlug below;
    if (plug.isElement()) {
        below = source->isArray() ? source->elementByLogicalIndex(plug.logicalIndex()) : MPlug();
    } else {
        unsigned int place = 0;
        while (place < above.numChildren() && above.child(place) != plug) {
            ++place;
        }
        below = place < source->numChildren() ? source->child(place) : MPlug();
    }
    return below.isNull() ? std::nullopt : std::optional(below);
}

} // namespace

std::optional<Step> stepUp(const MPlug& plug) {
    if (std::optional<MPlug> source = sourceBelow(plug)) {
        return Step{*source};
    }
    return passage(plug);
}

std::optional<MPlug> matrixAbove(const MPlug& plug) {
    const std::string name = longPlugName(plug);
    const MObject object = plug.node();
    if ((name != "parentMatrix[0]" && name != "worldMatrix[0]") || !object.hasFn(MFn::kDagNode)) {
        return std::nullopt;
    }
    if (name == "worldMatrix[0]" && !SceneNode(object).plug("matrix").isNull()) {
        return std::nullopt;
    }
    return worldMatrixAbove(object);
}

std::optional<MPlug> worldMatrixAbove(const MObject& object) {
    const MFnDagNode node(object);
    const MObject parent = node.parentCount() == 0 ? MObject::kNullObj : node.parent(0);
    const MPlug above = parent.isNull() ? MPlug() : SceneNode(parent).plug("worldMatrix");
    return above.isNull() || !above.isArray() ? std::nullopt : std::optional(above.elementByLogicalIndex(0));
}

std::vector<MPlug> numbersIn(const MPlug& plug) {
    std::vector<MPlug> children;
    if (!plug.isCompound() || plug.isArray() || plug.numChildren() < 2 || plug.numChildren() > 4) {
        return children;
    }
    for (unsigned int i = 0; i < plug.numChildren(); ++i) {
        const MPlug child = plug.child(i);
        if (child.isArray() || child.isCompound()) {
            return {};
        }
        children.push_back(child);
    }
    return children;
}

std::vector<float> valuesOf(const MPlug& plug, std::size_t count) {
    std::vector<float> values;
    if (count == 16) {
        const mat4 matrix = mat4_value(plug);
        values.assign(&matrix[0][0], &matrix[0][0] + 16);
        return values;
    }
    if (const std::vector<MPlug> children = numbersIn(plug); !children.empty()) {
        for (const MPlug& child : children) {
            values.push_back(float_value(child));
        }
    } else if (count == 2) {
        const vec2 value = vec2_value(plug);
        values = {value.x, value.y};
    } else if (count == 3) {
        const vec3 value = vec3_value(plug);
        values = {value.x, value.y, value.z};
    } else {
        values = {float_value(plug)};
    }
    return values;
}

} // namespace zent::rig
