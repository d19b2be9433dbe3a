#pragma once

#include "zent/proxies/PointWalk.h"
#include "zent/results/Statistics.h"
#include "zent/values/json.h"

#include <vector>

namespace zent {

/// What matches: `epsilon` as the comparison has it; and numbers and distances within `relative` times the larger
/// magnitude, of points the length, unless it is 0.
struct Tolerance {
    float epsilon = 0.001f;
    double relative = 0.0;
};

/// The differences of two results that the comparison takes, one by one; one entry for each of Maya's outputs. Of lists
/// and shapes that differ in size, what both have is measured, and a note tells it. Entries that are there already are
/// used again.
void measure(const json& maya, const json& zent, const Tolerance& tolerance, std::vector<Statistics>& statistics);

/// Whether all that was measured matches.
bool matches(const std::vector<Statistics>& statistics);

/// One point of a deformer.
void measurePoint(const PointPair& point, bool matches, Statistics& statistics);
bool isWithin(const PointPair& point, double relative);

} // namespace zent
