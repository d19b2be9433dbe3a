#include "tools/ListResources.h"

#include "zent/math/require.h"
#include "zent/values/resource.h"

#include <fmt/format.h>
#include <fmt/ostream.h>

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace zent {

namespace {

using Bytes = std::vector<char>;

/// A number that an index or a count would be: as a float it would be next to 0.
bool looksLikeIndex(unsigned int number) {
    return number < (1u << 24);
}

/// A number that a coordinate or a weight would be: an index read as a float is not.
bool looksLikeFloat(float number) {
    const float size = std::abs(number);
    return size == 0.0f || (size > 1e-20f && size < 1e20f);
}

bool looksLikePoint(vec3 point) {
    return looksLikeFloat(point.x) && looksLikeFloat(point.y) && looksLikeFloat(point.z);
}

bool looksLikePoints(const std::vector<vec3>& points) {
    return std::all_of(points.begin(), points.end(), looksLikePoint);
}

bool looksLikeMatrix(const mat3& matrix) {
    return looksLikePoint(matrix[0]) && looksLikePoint(matrix[1]) && looksLikePoint(matrix[2]);
}

bool looksLikeDirection(unsigned degree, unsigned form) {
    return degree >= 1 && degree <= 5 && form >= kFormOpen && form <= kFormPeriodic;
}

template <class T>
bool parses(T& record, const Bytes& bytes) {
    try {
        LoadResource(record, bytes);
        return true;
    } catch (const std::runtime_error&) {
        return false;
    }
}

// Each guess gives a description, or an empty text where the bytes cannot be that record.

std::string guessCurve(const Bytes& bytes) {
    Curve curve;
    const bool fits = parses(curve, bytes) && bytes.size() == 80 + 12 * curve.cv.size() + 4 * curve.knots.size() &&
                      looksLikeDirection(curve.degree, curve.form) &&
                      curve.knots.size() + 1 == curve.cv.size() + curve.degree;
    return fits ? fmt::format("curve: degree {}, form {}, {} control points", curve.degree, curve.form, curve.cv.size())
                : "";
}

std::string guessSurface(const Bytes& bytes) {
    Surface surface;
    const bool fits =
        parses(surface, bytes) &&
        bytes.size() == 92 + 12 * surface.cv.size() + 4 * (surface.knotsU.size() + surface.knotsV.size()) &&
        looksLikeDirection(surface.degreeU, surface.formU) && looksLikeDirection(surface.degreeV, surface.formV) &&
        surface.cv.size() == std::size_t{surface.cvCountU()} * surface.cvCountV();
    return fits ? fmt::format("surface: degrees {} and {}, forms {} and {}, {} by {} control points", surface.degreeU,
                              surface.degreeV, surface.formU, surface.formV, surface.cvCountU(), surface.cvCountV())
                : "";
}

std::string guessLattice(const Bytes& bytes) {
    Lattice lattice;
    const bool fits = parses(lattice, bytes) && !lattice.points.empty() &&
                      bytes.size() == 76 + 12 * lattice.points.size() && looksLikeMatrix(lattice.matrixLinear);
    return fits ? fmt::format("lattice: {} by {} by {} points", lattice.s, lattice.t, lattice.u) : "";
}

std::string guessMesh(const Bytes& bytes) {
    Mesh mesh;
    const bool fits = parses(mesh, bytes) && bytes.size() == 64 + 12 * mesh.points.size() &&
                      looksLikeMatrix(mesh.matrixLinear) && looksLikePoint(mesh.translation) &&
                      looksLikePoints(mesh.points);
    return fits ? fmt::format("mesh: {} points", mesh.points.size()) : "";
}

std::string guessConstants(const Bytes& bytes) {
    std::vector<Value> constants;
    const bool fits = bytes.size() % kStoredValueSize == 0 && parses(constants, bytes) &&
                      std::none_of(constants.begin(), constants.end(),
                                   [](const Value& value) { return std::holds_alternative<UnknownValue>(value); });
    return fits ? fmt::format("constants: {}", constants.size()) : "";
}

/// A list of records of one size, each of which looks right.
template <class List, class Test>
std::string guessList(const Bytes& bytes, std::size_t recordSize, const char* name, Test looksRight) {
    List list;
    const bool fits =
        bytes.size() % recordSize == 0 && parses(list, bytes) && std::all_of(list.begin(), list.end(), looksRight);
    return fits ? fmt::format("{}: {}", name, bytes.size() / recordSize) : "";
}

std::vector<std::string> guesses(const Bytes& bytes) {
    std::vector<std::string> texts{
        guessCurve(bytes),
        guessSurface(bytes),
        guessLattice(bytes),
        guessMesh(bytes),
        guessConstants(bytes),
        guessList<DeltaList>(
            bytes, 16, "deltas",
            [](const auto& delta) { return looksLikeIndex(delta.first) && looksLikePoint(delta.second); }),
        guessList<WeightMap>(
            bytes, 8, "weight map",
            [](const auto& weight) { return looksLikeIndex(weight.first) && looksLikeFloat(weight.second); }),
        guessList<SkinWeights>(bytes, 12, "skin weights",
                               [](const auto& weight) {
                                   return looksLikeIndex(std::get<0>(weight)) && looksLikeIndex(std::get<1>(weight)) &&
                                          looksLikeFloat(std::get<2>(weight));
                               }),
        guessList<WireBindings>(bytes, 44, "wire bindings",
                                [](const auto& binding) {
                                    return looksLikeFloat(std::get<1>(binding)) &&
                                           looksLikeMatrix(std::get<2>(binding));
                                }),
        guessList<std::vector<unsigned int>>(bytes, 4, "numbers", looksLikeIndex),
    };
    texts.erase(std::remove(texts.begin(), texts.end(), ""), texts.end());
    return texts;
}

std::string describe(const Bytes& bytes) {
    if (bytes.empty()) {
        return "any empty list";
    }
    const std::vector<std::string> texts = guesses(bytes);
    return texts.empty() ? "byte code" : fmt::format("{}", fmt::join(texts, "; or "));
}

} // namespace

void listResources(const std::string& file, std::ostream& out) {
    const auto count = readResourceBlocks(file, [&](unsigned int id, Bytes&& bytes) {
        fmt::print(out, "{:>6} {:>12} bytes  {}\n", id, bytes.size(), describe(bytes));
    });
    if (!count) {
        fail("cannot open resource file \"" + file + "\"");
    }
}

} // namespace zent
