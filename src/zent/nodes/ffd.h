#pragma once

#include "zent/geometry/shapes.h"

#include <functional>
#include <vector>

namespace zent {

/// Maya's ffd, in place: a point's place in the undeformed lattice, whose own space runs from -0.5 to 0.5, weighs the
/// lattice's points by Bernstein polynomials. T is Mesh or Surface; points are in object space, both matrices go from a
/// lattice's space to the world.
///
/// `local` limits the polynomials to a window of `influenceS` by `influenceT` by `influenceU` lattice points around the
/// point. A point outside the lattice extrapolates. Throws std::runtime_error, before a point is moved, for a window of
/// more than eleven points in a direction, or a lattice of fewer points than its counts speak for.
template <class T>
T& ffd(T& geometry, Lattice const& lattice, mat4 deformedLatticeMatrix, mat4 baseLatticeMatrix, bool local,
       unsigned int influenceS, unsigned int influenceT, unsigned int influenceU);
extern template Mesh& ffd(Mesh&, Lattice const&, mat4, mat4, bool, unsigned int, unsigned int, unsigned int);
extern template Surface& ffd(Surface&, Lattice const&, mat4, mat4, bool, unsigned int, unsigned int, unsigned int);

/// The same for a caller that goes point by point: set up once for the shape's transform and its inverse. The lattice
/// must outlive the result. Throws as `ffd` does.
std::function<vec3(vec3)> pointFFD(mat4 const& objectToWorld, mat4 const& worldToObject, Lattice const& lattice,
                                   mat4 const& deformedLatticeMatrix, mat4 const& baseLatticeMatrix, bool local,
                                   unsigned int influenceS, unsigned int influenceT, unsigned int influenceU);

/// The same for a caller that sets it up time and again, in the room of what it made before.
void pointFFD(std::function<vec3(vec3)>& made, mat4 const& objectToWorld, mat4 const& worldToObject,
              Lattice const& lattice, mat4 const& deformedLatticeMatrix, mat4 const& baseLatticeMatrix, bool local,
              unsigned int influenceS, unsigned int influenceT, unsigned int influenceU);

/// The same for the points that `indices` names, in any order; an index beyond the points names none.
template <class T>
T& ffdPartial(T& geometry, std::vector<unsigned int> indices, Lattice const& lattice, mat4 deformedLatticeMatrix,
              mat4 baseLatticeMatrix, bool local, unsigned int influenceS, unsigned int influenceT,
              unsigned int influenceU);
extern template Mesh& ffdPartial(Mesh&, std::vector<unsigned int>, Lattice const&, mat4, mat4, bool, unsigned int,
                                 unsigned int, unsigned int);

Mesh& ffdMesh(Mesh& geometry, Lattice const& lattice, mat4 deformedLatticeMatrix, mat4 baseLatticeMatrix, bool local,
              unsigned int influenceS, unsigned int influenceT, unsigned int influenceU);
Surface& ffdSurface(Surface& geometry, Lattice const& lattice, mat4 deformedLatticeMatrix, mat4 baseLatticeMatrix,
                    bool local, unsigned int influenceS, unsigned int influenceT, unsigned int influenceU);
Mesh& ffdPartialMesh(Mesh& geometry, std::vector<unsigned int> indices, Lattice const& lattice,
                     mat4 deformedLatticeMatrix, mat4 baseLatticeMatrix, bool local, unsigned int influenceS,
                     unsigned int influenceT, unsigned int influenceU);

/// The binomial coefficient, 0 for k above n. Throws std::runtime_error for n or k above 10.
unsigned int binomial(unsigned int n, unsigned int k);

/// x to the power n; 1 for n of 0, whatever x.
float pown(float x, unsigned int n);

} // namespace zent
