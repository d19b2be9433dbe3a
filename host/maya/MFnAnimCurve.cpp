#include <maya/MFnAnimCurve.h>

#include <maya/MAngle.h>
#include <maya/MFn.h>
#include <maya/MPlug.h>

#include "Node.h"
#include "setStatus.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace {

constexpr std::array<const char*, MFnAnimCurve::kAnimCurveUnknown> kCurveTypes{
    "animCurveTA", "animCurveTL", "animCurveTT", "animCurveTU",
    "animCurveUA", "animCurveUL", "animCurveUT", "animCurveUU"};

/// The attribute counts types otherwise than the function set.
constexpr std::array<int, 12> kTangentNumbers{0, 1, 2, 3, 9, 5, 6, 7, 10, 16, 17, 18};

MPlug elementOf(const MPlug& multi, unsigned int position) {
    return multi.isNull() || position >= multi.numElements() ? MPlug() : multi.elementByPhysicalIndex(position);
}

/// The element of the key's logical index; a null plug where the multi does not list it.
MPlug listed(const MObject& node, const char* multi, const MPlug& key) {
    const scene::Slot* slot = static_cast<const scene::Node*>(node.object())->attribute(multi);
    return slot == nullptr || key.isNull() ? MPlug()
                                           : MPlug(scene::existingElement(scene::evaluated(*slot), key.logicalIndex()));
}

} // namespace

MFnAnimCurve::MFnAnimCurve(const MObject& node, MStatus* status) : MFnDependencyNode(node) {
    setStatus(status, animCurveType() != kAnimCurveUnknown);
}

MFnAnimCurve::AnimCurveType MFnAnimCurve::animCurveType(MStatus* status) const {
    const MString type = typeName();
    const auto found = std::find_if(kCurveTypes.begin(), kCurveTypes.end(),
                                    [&type](const char* name) { return std::strcmp(name, type.asChar()) == 0; });
    setStatus(status, found != kCurveTypes.end());
    return static_cast<AnimCurveType>(found - kCurveTypes.begin());
}

bool MFnAnimCurve::isTimeInput(MStatus* status) const {
    return animCurveType(status) < kAnimCurveUA;
}

unsigned int MFnAnimCurve::numKeys(MStatus* status) const {
    const MPlug keys = findPlug("keyTimeValue", true, status);
    return keys.isArray() ? keys.numElements() : 0;
}

MTime MFnAnimCurve::time(unsigned int index, MStatus* status) const {
    const MPlug key = elementOf(findPlug("keyTimeValue", true), index);
    return setStatus(status, key.numChildren() == 2) ? key.child(0).asMTime(status) : MTime();
}

double MFnAnimCurve::unitlessInput(unsigned int index, MStatus* status) const {
    const MPlug key = elementOf(findPlug("keyTimeValue", true), index);
    return setStatus(status, key.numChildren() == 2) ? key.child(0).asDouble(status) : 0.0;
}

double MFnAnimCurve::value(unsigned int index, MStatus* status) const {
    const MPlug key = elementOf(findPlug("keyTimeValue", true), index);
    if (!setStatus(status, key.numChildren() == 2)) {
        return 0.0;
    }
    const MPlug plug = key.child(1);
    return plug.attribute().apiType() == MFn::kDoubleAngleAttribute ? plug.asMAngle(status).asRadians()
                                                                    : plug.asDouble(status);
}

MFnAnimCurve::TangentType MFnAnimCurve::tangentType(unsigned int index, const char* multi, MStatus* status) const {
    const MPlug key = elementOf(findPlug("keyTimeValue", true), index);
    if (!setStatus(status, !key.isNull())) {
        return kTangentGlobal;
    }
    const MPlug type = listed(object_, multi, key);
    const int number = type.isNull() ? kTangentFixed : type.asInt();
    const auto found = std::find(kTangentNumbers.begin(), kTangentNumbers.end(), number);
    setStatus(status, found != kTangentNumbers.end());
    return found == kTangentNumbers.end() ? kTangentGlobal : static_cast<TangentType>(found - kTangentNumbers.begin());
}

MFnAnimCurve::TangentType MFnAnimCurve::inTangentType(unsigned int index, MStatus* status) const {
    return tangentType(index, "keyTanInType", status);
}

MFnAnimCurve::TangentType MFnAnimCurve::outTangentType(unsigned int index, MStatus* status) const {
    return tangentType(index, "keyTanOutType", status);
}

double MFnAnimCurve::inputOf(unsigned int index) const {
    return isTimeInput() ? time(index).as(time(0).unit()) : unitlessInput(index);
}

MStatus MFnAnimCurve::getTangent(unsigned int index, TangentValue& x, TangentValue& y, bool inTangent) const {
    const MPlug key = elementOf(findPlug("keyTimeValue", true), index);
    if (key.isNull()) {
        return MStatus::kFailure;
    }
    const MPlug toldX = listed(object_, inTangent ? "keyTanInX" : "keyTanOutX", key);
    const MPlug toldY = listed(object_, inTangent ? "keyTanInY" : "keyTanOutY", key);
    if (!toldX.isNull() && !toldY.isNull()) {
        x = toldX.asDouble();
        y = toldY.asDouble();
        return MStatus::kSuccess;
    }
    // The neighbour on that side or, at an end, the one on the other.
    const unsigned int keys = numKeys();
    const bool isEarlier = keys > 1 && (index + 1 == keys || (inTangent && index > 0));
    const unsigned int left = isEarlier ? index - 1 : index;
    const unsigned int right = std::min(left + 1, keys - 1);
    const double run = keys > 1 ? inputOf(right) - inputOf(left) : 1.0;
    switch (inTangent ? inTangentType(index) : outTangentType(index)) {
    case kTangentLinear: {
        const AnimCurveType type = animCurveType();
        const bool isAngle = type == kAnimCurveTA || type == kAnimCurveUA;
        x = run;
        y = value(right) - value(left);
        y = isAngle ? MAngle(y).asDegrees() : y;
        return MStatus::kSuccess;
    }
    case kTangentFlat:
        x = run;
        y = 0.0;
        return MStatus::kSuccess;
    case kTangentStep:
    case kTangentStepNext:
        x = 0.0;
        y = 0.0;
        return MStatus::kSuccess;
    default: // by rules of Maya's own
        return MStatus::kFailure;
    }
}

bool MFnAnimCurve::isWeighted(MStatus* status) const {
    const MPlug weighted = findPlug("weightedTangents", true, status);
    return !weighted.isNull() && weighted.asBool();
}

MFnAnimCurve::InfinityType MFnAnimCurve::infinityType(const char* attribute, MStatus* status) const {
    const MPlug infinity = findPlug(attribute, true, status);
    return infinity.isNull() ? kConstant : static_cast<InfinityType>(infinity.asInt(status));
}

MFnAnimCurve::InfinityType MFnAnimCurve::preInfinityType(MStatus* status) const {
    return infinityType("preInfinity", status);
}

MFnAnimCurve::InfinityType MFnAnimCurve::postInfinityType(MStatus* status) const {
    return infinityType("postInfinity", status);
}
