#pragma once

#include <cstddef>
#include <functional>
#include <string>

namespace zent::peers {

/// One row of the table: the product beside a peer that does the same work.
struct Pair {
    std::string name; ///< "skin, 100,000 points"
    std::string peer; ///< "Eigen, for this processor"
    std::function<void()> product;
    std::function<void()> theirs;
    /// How many pieces of work one call does; times are given for one piece.
    std::size_t work = 1;
};

/// Takes processor time of the two in turn, many times over, and prints a row of the table: the least and the median
/// time of each, and the ratios product / peer of both. A name that does not hold the filter is left out.
void measure(const Pair& pair);

/// Ends the program with a text where the two do not come to the same result: there is nothing to compare then.
void requireAgreement(const std::string& name, bool agree);

void expressionPeers();
void clusterPeers();
void curvePeers();
void deformerPeers();
void ikPeers();
void recordPeers();
void surfacePeers();

} // namespace zent::peers
