#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

namespace zent {

/// What a difference is measured in.
enum class Unit : unsigned char { value, degrees, distance };
inline constexpr std::array<const char*, 3> kUnitNames{"value", "degrees", "distance"};

/// Where a value stands in an output: the place in the list for a list, then the component; the point of a shape.
struct Where {
    std::array<std::uint32_t, 3> indices{};
    unsigned int count = 0;

    Where with(std::uint32_t index) const;
};

/// More values than these have a histogram.
inline constexpr std::size_t kFewValues = 16;

/// How many values are how far off, in half decades from 1e-7 on.
struct Histogram {
    static constexpr int kFrom = -7;
    static constexpr int kPerDecade = 2;
    static constexpr std::size_t kBins = 28;

    std::uint64_t below = 0;
    std::array<std::uint64_t, kBins> counts{};

    void add(double error);
};

/// How far off the values of one output are, as docs/results-format.md tells it.
struct Statistics {
    std::string output;
    std::string type;
    Unit unit = Unit::value;
    std::uint64_t count = 0;
    std::uint64_t over = 0;
    std::uint64_t notFinite = 0;
    double sum = 0.0;
    double sumOfSquares = 0.0;
    double greatest = 0.0;
    Where at; ///< empty where nothing was measured
    bool hasHistogram = false;
    Histogram histogram;
    std::string note;

    /// One value: its difference, which is not finite where the value on either side is not.
    void add(double error, bool matches, const Where& where);
    bool isMeasured() const { return count > notFinite; }
    double mean() const { return sum / static_cast<double>(count - notFinite); }
    double rms() const;
    /// The greatest difference as it is held against the tolerance: radians for degrees.
    double size() const;
};

} // namespace zent
