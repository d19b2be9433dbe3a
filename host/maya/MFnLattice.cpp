#include <maya/MFnLattice.h>
#include <maya/MFnLatticeData.h>

#include "Data.h"
#include "setStatus.h"

using scene::LatticeData;

MFnLatticeData::MFnLatticeData(const MObject& data, MStatus* status) : MFnBase(data) {
    setStatus(status, scene::as<LatticeData>(data) != nullptr);
}

MObject MFnLatticeData::lattice(MStatus* status) const {
    return setStatus(status, scene::as<LatticeData>(object_) != nullptr) ? object_ : MObject::kNullObj;
}

MFnLattice::MFnLattice(const MObject& lattice, MStatus* status) : MFnBase(lattice) {
    setStatus(status, scene::as<LatticeData>(lattice) != nullptr);
}

MStatus MFnLattice::getDivisions(unsigned int& s, unsigned int& t, unsigned int& u) const {
    const auto* lattice = scene::as<LatticeData>(object_);
    if (lattice == nullptr) {
        return MStatus::kFailure;
    }
    s = lattice->divisions[0];
    t = lattice->divisions[1];
    u = lattice->divisions[2];
    return MStatus::kSuccess;
}

MPoint& MFnLattice::point(unsigned int s, unsigned int t, unsigned int u, MStatus* status) {
    static MPoint none;
    const auto* lattice = scene::as<LatticeData>(object_);
    const bool exists =
        lattice != nullptr && s < lattice->divisions[0] && t < lattice->divisions[1] && u < lattice->divisions[2];
    if (!setStatus(status, exists)) {
        return none = MPoint();
    }
    const unsigned int index = s + lattice->divisions[0] * (t + lattice->divisions[1] * u);
    return const_cast<MPoint&>(lattice->points[index]); // a scene's data is const to all but this call
}
