#include <maya/MFnAttribute.h>

#include "setStatus.h"
#include "Slot.h"

#include <initializer_list>

namespace {

/// Attributes are referred to by a plug that has them.
const scene::Slot* asAttribute(const MObject& object) {
    for (const MFn::Type type :
         {MFn::kNumericAttribute, MFn::kDoubleAngleAttribute, MFn::kFloatAngleAttribute, MFn::kTimeAttribute,
          MFn::kTypedAttribute, MFn::kCompoundAttribute, MFn::kMatrixAttribute, MFn::kFloatMatrixAttribute,
          MFn::kMatrixFloatData, MFn::kMessageAttribute}) {
        if (object.apiType() == type) {
            return static_cast<const scene::Slot*>(object.object());
        }
    }
    return nullptr;
}

MString toMaya(const std::string& text) {
    return MString(text.c_str(), static_cast<int>(text.size()));
}

} // namespace

MFnAttribute::MFnAttribute(const MObject& attribute, MStatus* status) : MFnBase(attribute) {
    setStatus(status, asAttribute(attribute) != nullptr);
}

MString MFnAttribute::name(MStatus* status) const {
    const scene::Slot* slot = asAttribute(object_);
    return setStatus(status, slot != nullptr) ? toMaya(slot->name) : MString();
}

MString MFnAttribute::shortName(MStatus* status) const {
    const scene::Slot* slot = asAttribute(object_);
    const bool hasShort = slot != nullptr && slot->otherNames != nullptr && !slot->otherNames->shortName.empty();
    return hasShort ? toMaya(slot->otherNames->shortName) : name(status);
}

bool MFnAttribute::isArray(MStatus* status) const {
    const scene::Slot* slot = asAttribute(object_);
    return setStatus(status, slot != nullptr) && (slot->kind == scene::Slot::Kind::multi || slot->isElement);
}
