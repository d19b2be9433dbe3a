#include "zent/values/ResourceWriter.h"

#include "zent/math/require.h"

#include <cstdint>
#include <cstring>
#include <fstream>
#include <type_traits>
#include <utility>
#include <variant>

namespace zent {

namespace {

/// Values one behind the other, as they stand in memory.
template <class... Values>
std::string image(const Values&... values) {
    static_assert((std::is_trivially_copyable_v<Values> && ...));
    std::string bytes;
    (bytes.append(reinterpret_cast<const char*>(&values), sizeof(values)), ...);
    return bytes;
}

template <class T>
std::string listImage(const std::vector<T>& values) {
    static_assert(std::is_trivially_copyable_v<T>);
    return std::string(reinterpret_cast<const char*>(values.data()), values.size() * sizeof(T));
}

template <class T>
std::uint32_t countOf(const std::vector<T>& list) {
    return static_cast<std::uint32_t>(list.size());
}

std::string storedValue(const Value& value) {
    std::string bytes(kStoredValueSize, '\0');
    std::visit([&](const auto& alternative) { std::memcpy(bytes.data(), &alternative, sizeof(alternative)); }, value);
    bytes[24] = static_cast<char>(value.index());
    return bytes;
}

} // namespace

unsigned int ResourceWriter::addBytes(std::string bytes) {
    blocks_.push_back(std::move(bytes));
    return static_cast<unsigned int>(blocks_.size() - 1);
}

unsigned int ResourceWriter::add(const Mesh& mesh) {
    return addBytes(image(matrixOf(mesh)) + listImage(mesh.points));
}

unsigned int ResourceWriter::add(const Curve& curve) {
    return addBytes(image(curve.degree, curve.form, countOf(curve.cv), countOf(curve.knots), matrixOf(curve)) +
                    listImage(curve.cv) + listImage(curve.knots));
}

unsigned int ResourceWriter::add(const Surface& surface) {
    return addBytes(image(surface.degreeU, surface.degreeV, surface.formU, surface.formV, countOf(surface.cv),
                          countOf(surface.knotsU), countOf(surface.knotsV), matrixOf(surface)) +
                    listImage(surface.cv) + listImage(surface.knotsU) + listImage(surface.knotsV));
}

unsigned int ResourceWriter::add(const Lattice& lattice) {
    return addBytes(image(matrixOf(lattice), lattice.s, lattice.t, lattice.u) + listImage(lattice.points));
}

unsigned int ResourceWriter::add(const WeightMap& map) {
    std::string bytes;
    for (const auto& [key, weight] : map) {
        bytes += image(key, weight);
    }
    return addBytes(std::move(bytes));
}

unsigned int ResourceWriter::add(const DeltaList& deltas) {
    std::string bytes;
    for (const auto& [index, delta] : deltas) {
        bytes += image(index, delta);
    }
    return addBytes(std::move(bytes));
}

unsigned int ResourceWriter::add(const SkinWeights& weights) {
    std::string bytes;
    for (const auto& [point, influence, weight] : weights) {
        bytes += image(point, influence, weight);
    }
    return addBytes(std::move(bytes));
}

unsigned int ResourceWriter::add(const WireBindings& bindings) {
    std::string bytes;
    for (const auto& [unused, parameter, frame] : bindings) {
        bytes += image(unused, parameter, frame);
    }
    return addBytes(std::move(bytes));
}

unsigned int ResourceWriter::add(const std::vector<unsigned int>& numbers) {
    return addBytes(listImage(numbers));
}

unsigned int ResourceWriter::add(const std::vector<unsigned char>& code) {
    return addBytes(listImage(code));
}

unsigned int ResourceWriter::add(const std::vector<Value>& constants) {
    std::string bytes;
    for (const Value& constant : constants) {
        bytes += storedValue(constant);
    }
    return addBytes(std::move(bytes));
}

std::string ResourceWriter::table() const {
    std::uint64_t offset = sizeof(std::uint64_t) * (blocks_.size() + 2);
    std::string table = image(std::uint64_t{blocks_.size()}, offset);
    for (const std::string& block : blocks_) {
        offset += block.size();
        table += image(offset);
    }
    return table;
}

std::string ResourceWriter::bytes() const {
    std::string file = table();
    for (const std::string& block : blocks_) {
        file += block;
    }
    return file;
}

void ResourceWriter::write(const std::string& path) const {
    std::ofstream stream(path, std::ios::binary);
    stream << table();
    for (const std::string& block : blocks_) {
        stream.write(block.data(), static_cast<std::streamsize>(block.size()));
    }
    stream.close();
    if (!stream) {
        fail("cannot write resource file \"" + path + "\"");
    }
}

} // namespace zent
