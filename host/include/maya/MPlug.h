#pragma once

#include <maya/MAngle.h>
#include <maya/MDataHandle.h>
#include <maya/MObject.h>
#include <maya/MString.h>
#include <maya/MTime.h>

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
    bool operator==(const MPlug& other) const { return slot_ == other.slot_; }
    bool operator!=(const MPlug& other) const { return slot_ != other.slot_; }

    MObject node(MStatus* status = nullptr) const;
    MObject attribute(MStatus* status = nullptr) const;
    /// The plug that feeds this one, a null plug for none.
    MPlug source(MStatus* status = nullptr) const;
    unsigned int numChildren(MStatus* status = nullptr) const;
    MPlug child(unsigned int index, MStatus* status = nullptr) const;
    unsigned int numElements(MStatus* status = nullptr) const;
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
