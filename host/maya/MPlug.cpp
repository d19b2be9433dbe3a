#include <maya/MPlug.h>
#include <maya/MPlugArray.h>

#include "Scene.h"
#include "setStatus.h"

#include <limits>
#include <unordered_set>
#include <vector>

using scene::Scene;
using scene::Slot;

namespace {

/// The plug that a reader's value comes from, null if it is not of the kind that the reader takes.
const Slot* valueOf(const Slot* slot, std::initializer_list<Slot::Kind> kinds, MStatus* status) {
    const Slot* value = slot == nullptr ? nullptr : &scene::evaluated(*slot);
    bool fits = false;
    for (const Slot::Kind kind : kinds) {
        fits = fits || (value != nullptr && value->kind == kind);
    }
    return setStatus(status, fits) ? value : nullptr;
}

/// Geometry that is null here stays null, whatever a connection would bring.
MObject dataOf(const Slot* slot, MStatus* status) {
    const Slot* value = valueOf(slot, {Slot::Kind::data}, status);
    if (value == nullptr || slot->data == nullptr) {
        return MObject::kNullObj;
    }
    return MObject(value->data.get());
}

constexpr const char* kIn = "input";
constexpr const char* kOut = "output";

/// Whether a plug is one of the two ends of a node that only turns one unit into another.
bool isOfConversion(const Slot& slot, const char* end) {
    const std::string& type = slot.node->typeName;
    return slot.name == end &&
           (type == "unitConversion" || type == "timeToUnitConversion" || type == "unitToTimeConversion");
}

MPlug found(Slot* slot, MStatus* status) {
    setStatus(status, slot != nullptr);
    return MPlug(slot);
}

MString mayaText(const std::string& text) {
    return MString(text.c_str(), static_cast<int>(text.size()));
}

} // namespace

bool MPlug::isArray() const {
    return slot_ != nullptr && slot_->kind == Slot::Kind::multi;
}

bool MPlug::isElement() const {
    return slot_ != nullptr && slot_->isElement;
}

bool MPlug::isCompound() const {
    return slot_ != nullptr && slot_->kind == Slot::Kind::compound;
}

bool MPlug::isChild() const {
    return slot_ != nullptr && slot_->parent != nullptr && !slot_->isElement;
}

bool MPlug::isDestination(MStatus* status) const {
    return setStatus(status, slot_ != nullptr) && slot_->source != nullptr;
}

MObject MPlug::node(MStatus* status) const {
    return setStatus(status, slot_ != nullptr) ? MObject(slot_->node) : MObject::kNullObj;
}

MObject MPlug::attribute(MStatus* status) const {
    return setStatus(status, slot_ != nullptr) ? MObject(slot_) : MObject::kNullObj;
}

bool MPlug::isSource(MStatus* status) const {
    return setStatus(status, slot_ != nullptr) && !Scene::current().destinations(*slot_).empty();
}

bool MPlug::isConnected(MStatus* status) const {
    return isDestination(status) || isSource(status);
}

MPlug MPlug::source(MStatus* status) const {
    if (!setStatus(status, slot_ != nullptr)) {
        return {};
    }
    Slot* source = slot_->source;
    std::unordered_set<const Slot*> passed;
    while (source != nullptr && passed.insert(source).second && isOfConversion(*source, kOut)) {
        const Slot* input = source->node->attribute(kIn);
        if (input == nullptr || input->source == nullptr) {
            break;
        }
        source = input->source;
    }
    return MPlug(source);
}

MPlug MPlug::sourceWithConversion(MStatus* status) const {
    return setStatus(status, slot_ != nullptr) ? MPlug(slot_->source) : MPlug();
}

bool MPlug::destinations(MPlugArray& plugs, MStatus* status) const {
    plugs.clear();
    if (!setStatus(status, slot_ != nullptr)) {
        return false;
    }
    std::unordered_set<const Slot*> passed;
    std::vector<const Slot*> open{slot_};
    while (!open.empty()) {
        const Slot* source = open.back();
        open.pop_back();
        for (Slot* destination : Scene::current().destinations(*source)) {
            const Slot* beyond = isOfConversion(*destination, kIn) ? destination->node->attribute(kOut) : nullptr;
            if (beyond == nullptr || !MPlug(destination->node->attribute(kOut)).isSource()) {
                plugs.append(MPlug(destination));
            } else if (passed.insert(beyond).second) {
                open.push_back(beyond);
            }
        }
    }
    return plugs.length() > 0;
}

bool MPlug::destinationsWithConversions(MPlugArray& plugs, MStatus* status) const {
    return connectedTo(plugs, false, true, status);
}

bool MPlug::connectedTo(MPlugArray& plugs, bool asDestination, bool asSource, MStatus* status) const {
    plugs.clear();
    if (!setStatus(status, slot_ != nullptr)) {
        return false;
    }
    if (asDestination && slot_->source != nullptr) {
        plugs.append(MPlug(slot_->source));
    }
    if (asSource) {
        for (Slot* destination : Scene::current().destinations(*slot_)) {
            plugs.append(MPlug(destination));
        }
    }
    return plugs.length() > 0;
}

MPlug MPlug::parent(MStatus* status) const {
    return found(isChild() ? slot_->parent : nullptr, status);
}

MPlug MPlug::array(MStatus* status) const {
    return found(isElement() ? slot_->parent : nullptr, status);
}

unsigned int MPlug::getExistingArrayAttributeIndices(MIntArray& indices, MStatus* status) const {
    indices.clear();
    if (setStatus(status, isArray())) {
        for (const Slot* element : slot_->children) {
            indices.append(static_cast<int>(element->logicalIndex));
        }
    }
    return indices.length();
}

MPlug MPlug::elementByPhysicalIndex(unsigned int position, MStatus* status) const {
    return found(position < numElements() ? slot_->children[position] : nullptr, status);
}

unsigned int MPlug::numChildren(MStatus* status) const {
    return setStatus(status, isCompound()) ? static_cast<unsigned int>(slot_->children.size()) : 0;
}

MPlug MPlug::child(unsigned int index, MStatus* status) const {
    return found(index < numChildren() ? slot_->children[index] : nullptr, status);
}

unsigned int MPlug::numElements(MStatus* status) const {
    return setStatus(status, isArray()) ? static_cast<unsigned int>(slot_->children.size()) : 0;
}

MPlug MPlug::elementByLogicalIndex(unsigned int index, MStatus* status) const {
    return found(isArray() ? &scene::Scene::current().element(*slot_, index) : nullptr, status);
}

unsigned int MPlug::logicalIndex(MStatus* status) const {
    return setStatus(status, isElement()) ? slot_->logicalIndex : std::numeric_limits<unsigned int>::max();
}

MString MPlug::name(MStatus* status) const {
    return setStatus(status, slot_ != nullptr) ? mayaText(scene::fullName(*slot_)) : MString();
}

MString MPlug::partialName(bool includeNodeName, bool, bool, bool useAlias, bool useFullAttributePath,
                           bool useLongNames, MStatus* status) const {
    if (!setStatus(status, slot_ != nullptr)) {
        return {};
    }
    const std::string path = scene::plugName(*slot_, {useAlias, useFullAttributePath, useLongNames});
    return mayaText(includeNodeName ? slot_->node->name + "." + path : path);
}

double MPlug::asDouble(MStatus* status) const {
    const Slot* value = valueOf(slot_, {Slot::Kind::number, Slot::Kind::angle, Slot::Kind::time}, status);
    if (value == nullptr) {
        return 0.0;
    }
    return value->kind == Slot::Kind::angle ? asMAngle().asRadians() : value->number;
}

float MPlug::asFloat(MStatus* status) const {
    return static_cast<float>(asDouble(status));
}

int MPlug::asInt(MStatus* status) const {
    constexpr double kFirst = std::numeric_limits<int>::min();
    constexpr double kLast = std::numeric_limits<int>::max();
    const double number = asDouble(status);
    return number >= kLast ? std::numeric_limits<int>::max()
                           : (number > kFirst ? static_cast<int>(number) : std::numeric_limits<int>::min());
}

bool MPlug::asBool(MStatus* status) const {
    return asDouble(status) != 0.0;
}

MString MPlug::asString(MStatus* status) const {
    const auto* text = scene::as<scene::StringData>(dataOf(slot_, nullptr));
    return setStatus(status, text != nullptr) ? mayaText(text->text) : MString();
}

MAngle MPlug::asMAngle(MStatus* status) const {
    const Slot* value = valueOf(slot_, {Slot::Kind::angle}, status);
    return value == nullptr ? MAngle() : MAngle(value->number, static_cast<MAngle::Unit>(value->unit));
}

MTime MPlug::asMTime(MStatus* status) const {
    const Slot* value = valueOf(slot_, {Slot::Kind::time}, status);
    return value == nullptr ? MTime() : MTime(value->number, static_cast<MTime::Unit>(value->unit));
}

MObject MPlug::asMObject(MStatus* status) const {
    return dataOf(slot_, status);
}

MDataHandle MPlug::asMDataHandle(MStatus* status) const {
    return MDataHandle(dataOf(slot_, status));
}
