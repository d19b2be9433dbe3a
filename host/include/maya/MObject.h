#pragma once

#include <maya/MFn.h>
#include <maya/MTypes.h>

namespace scene {
struct Object;
}

/// A node, an attribute or a piece of data of the scene, or nothing.
class OPENMAYA_EXPORT MObject {
public:
    static MObject kNullObj;

    MObject() = default;
    /// The stand-in's own: refers to an object that the scene owns.
    explicit MObject(const scene::Object* object) : object_(object) {}

    bool isNull() const { return object_ == nullptr; }
    MFn::Type apiType() const;
    /// Whether the functions of a type work on the object: those of a node work on one in the DAG, too.
    bool hasFn(MFn::Type type) const;
    bool operator==(const MObject& other) const { return object_ == other.object_; }
    bool operator!=(const MObject& other) const { return object_ != other.object_; }

    /// The stand-in's own.
    const scene::Object* object() const { return object_; }

private:
    const scene::Object* object_ = nullptr;
};
