#include <maya/MFnComponentListData.h>
#include <maya/MFnDoubleIndexedComponent.h>
#include <maya/MFnPointArrayData.h>
#include <maya/MFnSingleIndexedComponent.h>
#include <maya/MFnTripleIndexedComponent.h>

#include "Data.h"
#include "setStatus.h"

#include <initializer_list>

using scene::Component;

namespace {

const Component* asComponent(const MObject& object) {
    for (const MFn::Type type : {MFn::kCurveCVComponent, MFn::kSurfaceCVComponent, MFn::kLatticeComponent,
                                 MFn::kMeshEdgeComponent, MFn::kMeshPolygonComponent, MFn::kMeshVertComponent}) {
        if (object.apiType() == type) {
            return static_cast<const Component*>(object.object());
        }
    }
    return nullptr;
}

const Component* asComponent(const MObject& object, std::size_t directions) {
    const Component* component = asComponent(object);
    return component != nullptr && component->directions == directions ? component : nullptr;
}

/// One list of indices for each direction.
MStatus copyIndices(const MObject& object, std::initializer_list<MIntArray*> lists) {
    const Component* component = asComponent(object, lists.size());
    if (component == nullptr) {
        return MStatus::kFailure;
    }
    std::size_t direction = 0;
    for (MIntArray* list : lists) {
        list->setLength(static_cast<unsigned int>(component->count()));
        for (int i = 0; i < component->count(); ++i) {
            (*list)[static_cast<unsigned int>(i)] = component->at(i)[direction];
        }
        ++direction;
    }
    return MStatus::kSuccess;
}

} // namespace

MFnComponent::MFnComponent(const MObject& component, MStatus* status) : MFnBase(component) {
    setStatus(status, asComponent(component) != nullptr);
}

MFn::Type MFnComponent::componentType(MStatus* status) const {
    return setStatus(status, asComponent(object_) != nullptr) ? object_.apiType() : MFn::kInvalid;
}

int MFnComponent::elementCount(MStatus* status) const {
    const Component* component = asComponent(object_);
    return setStatus(status, component != nullptr) ? component->count() : 0;
}

bool MFnComponent::isEmpty(MStatus* status) const {
    return elementCount(status) == 0;
}

bool MFnComponent::isComplete(MStatus* status) const {
    const Component* component = asComponent(object_);
    return setStatus(status, component != nullptr) && component->isComplete;
}

MFnSingleIndexedComponent::MFnSingleIndexedComponent(const MObject& component, MStatus* status)
    : MFnComponent(component) {
    setStatus(status, asComponent(component, 1) != nullptr);
}

int MFnSingleIndexedComponent::element(int position, MStatus* status) const {
    const Component* component = asComponent(object_, 1);
    const bool isThere = component != nullptr && position >= 0 && position < component->count();
    return setStatus(status, isThere) ? component->at(position)[0] : 0;
}

MStatus MFnSingleIndexedComponent::getElements(MIntArray& elements) const {
    return copyIndices(object_, {&elements});
}

MFnDoubleIndexedComponent::MFnDoubleIndexedComponent(const MObject& component, MStatus* status)
    : MFnComponent(component) {
    setStatus(status, asComponent(component, 2) != nullptr);
}

MStatus MFnDoubleIndexedComponent::getElements(MIntArray& u, MIntArray& v) const {
    return copyIndices(object_, {&u, &v});
}

MFnTripleIndexedComponent::MFnTripleIndexedComponent(const MObject& component, MStatus* status)
    : MFnComponent(component) {
    setStatus(status, asComponent(component, 3) != nullptr);
}

MStatus MFnTripleIndexedComponent::getElements(MIntArray& s, MIntArray& t, MIntArray& u) const {
    return copyIndices(object_, {&s, &t, &u});
}

MFnComponentListData::MFnComponentListData(const MObject& data, MStatus* status) : MFnBase(data) {
    setStatus(status, scene::as<scene::ComponentListData>(data) != nullptr);
}

unsigned int MFnComponentListData::length(MStatus* status) const {
    const auto* list = scene::as<scene::ComponentListData>(object_);
    return setStatus(status, list != nullptr) ? static_cast<unsigned int>(list->components.size()) : 0;
}

MObject MFnComponentListData::operator[](unsigned int index) const {
    return index < length() ? MObject(&scene::as<scene::ComponentListData>(object_)->components[index])
                            : MObject::kNullObj;
}

MFnPointArrayData::MFnPointArrayData(const MObject& data, MStatus* status) : MFnBase(data) {
    setStatus(status, scene::as<scene::PointArrayData>(data) != nullptr);
}

unsigned int MFnPointArrayData::length(MStatus* status) const {
    const auto* data = scene::as<scene::PointArrayData>(object_);
    return setStatus(status, data != nullptr) ? data->points.length() : 0;
}

MStatus MFnPointArrayData::copyTo(MPointArray& points) const {
    const auto* data = scene::as<scene::PointArrayData>(object_);
    if (data == nullptr) {
        return MStatus::kFailure;
    }
    points = data->points;
    return MStatus::kSuccess;
}
