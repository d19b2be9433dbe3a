#include "zent/results/Statistics.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace zent {

namespace {

/// The lower ends of a histogram's bins.
std::array<double, Histogram::kBins> makeEdges() {
    std::array<double, Histogram::kBins> edges{};
    for (std::size_t i = 0; i < edges.size(); ++i) {
        edges[i] = std::pow(10.0, Histogram::kFrom + static_cast<double>(i) / Histogram::kPerDecade);
    }
    return edges;
}

const std::array<double, Histogram::kBins> kEdges = makeEdges();

} // namespace

Where Where::with(std::uint32_t index) const {
    Where where = *this;
    if (where.count < where.indices.size()) {
        where.indices[where.count++] = index;
    }
    return where;
}

void Histogram::add(double error) {
    if (error < kEdges.front()) {
        ++below;
        return;
    }
    const auto bin = std::distance(kEdges.begin(), std::upper_bound(kEdges.begin(), kEdges.end(), error)) - 1;
    ++counts[static_cast<std::size_t>(bin)];
}

void Statistics::add(double error, bool matches, const Where& where) {
    ++count;
    if (!std::isfinite(error)) {
        ++notFinite;
        return;
    }
    over += matches ? 0 : 1;
    sum += error;
    sumOfSquares += error * error;
    if (at.count == 0 || error > greatest) {
        greatest = error;
        at = where;
    }
    if (hasHistogram) {
        histogram.add(error);
    }
}

double Statistics::rms() const {
    return std::sqrt(sumOfSquares / static_cast<double>(count - notFinite));
}

double Statistics::size() const {
    constexpr double kRadians = 0.017453292519943295; // of a degree
    return unit == Unit::degrees ? greatest * kRadians : greatest;
}

} // namespace zent
