#pragma once

#include <maya/MAngle.h>
#include <maya/MDataHandle.h>
#include <maya/MIntArray.h>
#include <maya/MObject.h>
#include <maya/MString.h>
#include <maya/MTime.h>

class MPlugArray;
namespace scene {
struct Slot;
}

/// An attribute of a node, or an element or child of one. Reading a plug that a connection feeds reads its source.
class OPENMAYA_EXPORT MPlug {
public:
    MPlug() = default;
    /// The stand-in's own.
    explicit MPlug(scene::Slot* slot) : slot_(slot) {}

    bool isNull() const { return slot_ == nullptr; }
    bool isArray() const;
    bool isElement() const;
    bool isCompound() const;
    bool isChild() const;
    bool isDestination(MStatus* status = nullptr) const;
    bool isSource(MStatus* status = nullptr) const;
    bool isConnected(MStatus* status = nullptr) const;
    bool operator==(const MPlug& other) const { return slot_ == other.slot_; }
    bool operator!=(const MPlug& other) const { return slot_ != other.slot_; }

    MObject node(MStatus* status = nullptr) const;
    MObject attribute(MStatus* status = nullptr) const;
    /// The plug that feeds this one, a null plug for none; `source` looks through unit conversion nodes.
    MPlug source(MStatus* status = nullptr) const;
    MPlug sourceWithConversion(MStatus* status = nullptr) const;
    /// Replaces a list by the plugs that this one feeds, and tells whether there are any; `destinations` looks through
    /// unit conversion nodes.
    bool destinations(MPlugArray& plugs, MStatus* status = nullptr) const;
    bool destinationsWithConversions(MPlugArray& plugs, MStatus* status = nullptr) const;
    /// Replaces a list by what feeds this plug (`asDestination`) and what it feeds (`asSource`), and tells whether
    /// there is anything.
    bool connectedTo(MPlugArray& plugs, bool asDestination, bool asSource, MStatus* status = nullptr) const;
    /// The compound or the multi that this one belongs to; a null plug for a child, or an element, of neither.
    MPlug parent(MStatus* status = nullptr) const;
    MPlug array(MStatus* status = nullptr) const;
    unsigned int numChildren(MStatus* status = nullptr) const;
    MPlug child(unsigned int index, MStatus* status = nullptr) const;
    unsigned int numElements(MStatus* status = nullptr) const;
    unsigned int evaluateNumElements(MStatus* status = nullptr) const { return numElements(status); }
    /// Replaces a list by the logical indices of the elements that the scene has or that are connected, in ascending
    /// order, and tells how many there are.
    unsigned int getExistingArrayAttributeIndices(MIntArray& indices, MStatus* status = nullptr) const;
    MPlug elementByPhysicalIndex(unsigned int position, MStatus* status = nullptr) const;
    /// The element of a logical index, with the default value where the scene has none; a null plug if this is no
    /// array.
    MPlug elementByLogicalIndex(unsigned int index, MStatus* status = nullptr) const;
    unsigned int logicalIndex(MStatus* status = nullptr) const;

    /// "node.attribute[3].child".
    MString name(MStatus* status = nullptr) const;
    /// The attribute's name with the indices that it needs to be told from its neighbours.
    MString partialName(bool includeNodeName = false, bool includeNonMandatoryIndices = false,
                        bool includeInstancedIndices = false, bool useAlias = false, bool useFullAttributePath = false,
                        bool useLongNames = false, MStatus* status = nullptr) const;

    double asDouble(MStatus* status = nullptr) const;
    float asFloat(MStatus* status = nullptr) const;
    int asInt(MStatus* status = nullptr) const;
    bool asBool(MStatus* status = nullptr) const;
    MString asString(MStatus* status = nullptr) const;
    MAngle asMAngle(MStatus* status = nullptr) const;
    MTime asMTime(MStatus* status = nullptr) const;
    MObject asMObject(MStatus* status = nullptr) const;
    MDataHandle asMDataHandle(MStatus* status = nullptr) const;

private:
    scene::Slot* slot_ = nullptr;
};
