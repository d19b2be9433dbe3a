#include "zent/values/resource.h"

#include "zent/geometry/transform.h"
#include "zent/math/require.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <type_traits>
#include <utility>

// The file's numbers are little-endian, as on every machine that Maya runs on, and are copied as they stand.
namespace zent {
namespace {

constexpr std::size_t kOffsetSize = sizeof(std::uint64_t);

/// What a vector says of a size that it cannot have.
[[noreturn]] void failLength() {
    throw std::length_error("cannot create std::vector larger than max_size()");
}

/// The size of a file that stands at its start; nothing for a pipe, which cannot tell.
std::optional<std::size_t> sizeOf(std::ifstream& file) {
    file.seekg(0, std::ios::end);
    const std::streamoff end = file.tellg();
    file.clear();
    if (end < 0) {
        return std::nullopt;
    }
    file.seekg(0);
    return static_cast<std::size_t>(end);
}

/// The first numbers of the file: the count of blocks, then the offsets, as the sizes between them.
std::vector<std::size_t> readBlockSizes(std::istream& stream, std::size_t fileSize, const std::string& path) {
    std::uint64_t count = 0;
    stream.read(reinterpret_cast<char*>(&count), kOffsetSize);
    if (count >> 59 != 0) {
        failLength();
    }
    if (count != 0 && fileSize / kOffsetSize < count + 2) {
        fail("resource file \"" + path + "\": " + std::to_string(fileSize) + " bytes cannot hold the table of " +
             std::to_string(count) + " blocks");
    }
    std::vector<std::uint64_t> offsets(count + 1);
    stream.read(reinterpret_cast<char*>(offsets.data()), static_cast<std::streamsize>(offsets.size() * kOffsetSize));
    std::vector<std::size_t> sizes(count);
    for (std::size_t i = 0; i < count; ++i) {
        sizes[i] = offsets[i + 1] - offsets[i];
    }
    return sizes;
}

void requireSizes(const std::vector<std::size_t>& sizes, std::size_t fileSize, const std::string& path) {
    const std::size_t head = (sizes.size() + 2) * kOffsetSize;
    std::size_t available = (fileSize < head ? 0 : fileSize - head) + kMostMissingBytes;
    for (std::size_t i = 0; i < sizes.size(); ++i) {
        if (static_cast<std::int64_t>(sizes[i]) < 0) {
            failLength();
        }
        if (sizes[i] > available) {
            fail("resource file \"" + path + "\": block " + std::to_string(i) + " has a size of " +
                 std::to_string(sizes[i]) + " bytes and ends beyond the file's end");
        }
        available -= sizes[i];
    }
}

std::size_t readBlocks(std::istream& stream, std::size_t fileSize, const std::string& path,
                       const std::function<void(unsigned int, std::vector<char>&&)>& take) {
    const std::vector<std::size_t> sizes = readBlockSizes(stream, fileSize, path);
    requireSizes(sizes, fileSize, path);
    for (std::size_t i = 0; i < sizes.size(); ++i) {
        std::vector<char> bytes(sizes[i]);
        stream.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        take(static_cast<unsigned int>(i), std::move(bytes));
    }
    return sizes.size();
}

/// Takes numbers off a block, front to back.
class BlockReader {
public:
    explicit BlockReader(const std::vector<char>& bytes) : bytes_(bytes) {}

    /// The block holds `size` bytes from its start, which `what` needs.
    void require(std::size_t size, const std::string& what) const {
        if (bytes_.size() < size) {
            fail(std::to_string(bytes_.size()) + " bytes, " + what + " needs " + std::to_string(size));
        }
    }

    template <class T>
    T take() {
        static_assert(std::is_trivially_copyable_v<T>);
        T value{};
        std::memcpy(&value, bytes_.data() + position_, sizeof(T));
        position_ += sizeof(T);
        return value;
    }

    template <class T>
    std::vector<T> takeList(std::size_t count) {
        static_assert(std::is_trivially_copyable_v<T>);
        std::vector<T> list(count);
        if (count != 0) {
            std::memcpy(list.data(), bytes_.data() + position_, count * sizeof(T));
        }
        position_ += count * sizeof(T);
        return list;
    }

    std::size_t remaining() const { return bytes_.size() - position_; }

private:
    const std::vector<char>& bytes_;
    std::size_t position_ = 0;
};

constexpr std::size_t kMeshHead = 64;
constexpr std::size_t kCurveHead = 80;
constexpr std::size_t kSurfaceHead = 92;
constexpr std::size_t kLatticeHead = 76;

static_assert(sizeof(vec3) == 12 && sizeof(mat3) == 36 && sizeof(mat4) == 64, "records are stored as they stand");

} // namespace

std::optional<std::size_t> readResourceBlocks(const std::string& path,
                                              const std::function<void(unsigned int, std::vector<char>&&)>& take) {
    std::error_code ignored;
    std::ifstream file(path, std::ios::binary);
    if (!file || std::filesystem::is_directory(path, ignored)) {
        return std::nullopt;
    }
    if (const std::optional<std::size_t> size = sizeOf(file)) {
        return readBlocks(file, *size, path, take);
    }
    std::stringstream copy;
    copy << file.rdbuf();
    return readBlocks(copy, copy.str().size(), path, take);
}

void LoadResource(Mesh& mesh, const std::vector<char>& bytes) {
    BlockReader reader(bytes);
    reader.require(kMeshHead, "the head of a mesh");
    const auto matrix = reader.take<mat4>();
    mesh = Mesh(reader.takeList<vec3>(reader.remaining() / sizeof(vec3)), matrix);
}

void LoadResource(Curve& curve, const std::vector<char>& bytes) {
    BlockReader reader(bytes);
    reader.require(kCurveHead, "the head of a curve");
    const auto degree = reader.take<std::uint32_t>();
    const auto form = reader.take<std::uint32_t>();
    const std::size_t cvCount = reader.take<std::uint32_t>();
    const std::size_t knotCount = reader.take<std::uint32_t>();
    const auto matrix = reader.take<mat4>();
    reader.require(kCurveHead + 12 * cvCount + 4 * knotCount, "a curve of " + std::to_string(cvCount) +
                                                                  " control points and " + std::to_string(knotCount) +
                                                                  " knots");
    auto cv = reader.takeList<vec3>(cvCount);
    auto knots = reader.takeList<float>(knotCount);
    curve = Curve(degree, form, std::move(cv), std::move(knots), matrix);
}

void LoadResource(Surface& surface, const std::vector<char>& bytes) {
    BlockReader reader(bytes);
    reader.require(kSurfaceHead, "the head of a surface");
    const auto degreeU = reader.take<std::uint32_t>();
    const auto degreeV = reader.take<std::uint32_t>();
    const auto formU = reader.take<std::uint32_t>();
    const auto formV = reader.take<std::uint32_t>();
    const std::size_t cvCount = reader.take<std::uint32_t>();
    const std::size_t knotCountU = reader.take<std::uint32_t>();
    const std::size_t knotCountV = reader.take<std::uint32_t>();
    const auto matrix = reader.take<mat4>();
    reader.require(kSurfaceHead + 12 * cvCount + 4 * (knotCountU + knotCountV),
                   "a surface of " + std::to_string(cvCount) + " control points and " +
                       std::to_string(knotCountU + knotCountV) + " knots");
    auto cv = reader.takeList<vec3>(cvCount);
    auto knotsU = reader.takeList<float>(knotCountU);
    auto knotsV = reader.takeList<float>(knotCountV);
    surface = Surface(degreeU, degreeV, formU, formV, std::move(knotsU), std::move(knotsV), std::move(cv), matrix);
}

void LoadResource(Lattice& lattice, const std::vector<char>& bytes) {
    BlockReader reader(bytes);
    reader.require(kLatticeHead, "the head of a lattice");
    setTransform(lattice, reader.take<mat4>());
    lattice.s = reader.take<std::uint32_t>();
    lattice.t = reader.take<std::uint32_t>();
    lattice.u = reader.take<std::uint32_t>();
    const unsigned count = lattice.s * lattice.t * lattice.u; // deliberately in 32 bits
    reader.require(kLatticeHead + std::size_t{12} * count, "a lattice of " + std::to_string(lattice.s) + " by " +
                                                               std::to_string(lattice.t) + " by " +
                                                               std::to_string(lattice.u) + " points");
    lattice.points = reader.takeList<vec3>(count);
}

void LoadResource(WeightMap& map, const std::vector<char>& bytes) {
    BlockReader reader(bytes);
    map.clear();
    for (std::size_t count = bytes.size() / 8; count != 0; --count) {
        const auto key = reader.take<std::uint32_t>();
        map.emplace_hint(map.end(), key, reader.take<float>());
    }
}

void LoadResource(DeltaList& deltas, const std::vector<char>& bytes) {
    BlockReader reader(bytes);
    deltas.resize(bytes.size() / 16);
    for (auto& [index, delta] : deltas) {
        index = reader.take<std::uint32_t>();
        delta = reader.take<vec3>();
    }
}

void LoadResource(SkinWeights& weights, const std::vector<char>& bytes) {
    BlockReader reader(bytes);
    weights.resize(bytes.size() / 12);
    for (auto& [point, influence, weight] : weights) {
        point = reader.take<std::uint32_t>();
        influence = reader.take<std::uint32_t>();
        weight = reader.take<float>();
    }
}

void LoadResource(WireBindings& bindings, const std::vector<char>& bytes) {
    BlockReader reader(bytes);
    bindings.resize(bytes.size() / 44);
    for (auto& [unused, parameter, frame] : bindings) {
        unused = reader.take<float>();
        parameter = reader.take<float>();
        frame = reader.take<mat3>();
    }
}

void LoadResource(std::vector<unsigned int>& numbers, const std::vector<char>& bytes) {
    numbers = BlockReader(bytes).takeList<unsigned int>(bytes.size() / 4);
}

void LoadResource(std::vector<unsigned char>& code, const std::vector<char>& bytes) {
    code.assign(bytes.begin(), bytes.end());
}

void LoadResource(std::vector<Value>& constants, const std::vector<char>& bytes) {
    constants.clear();
    constants.reserve(bytes.size() / kStoredValueSize);
    for (std::size_t i = 0; i < bytes.size() / kStoredValueSize; ++i) {
        constants.push_back(valueFromBytes(bytes.data() + i * kStoredValueSize));
    }
}

void ResourceStorage::load(const std::string& path) {
    loaded = false;
    const std::optional<std::size_t> count =
        readResourceBlocks(path, [this](unsigned int id, std::vector<char>&& bytes) { raw_[id] = std::move(bytes); });
    if (!count) {
        return;
    }
    values_.resize(*count);
    std::fill(values_.begin(), values_.end(),
              std::any(nullptr)); // also those that an earlier file's blocks were parsed to
    loaded = true;
}

void ResourceStorage::requireBlock(unsigned int id) const {
    if (id >= values_.size()) {
        fail("there is no resource block " + std::to_string(id) + ", " + std::to_string(values_.size()) +
             " are loaded");
    }
}

template <class T>
const T& ResourceStorage::get(unsigned int id) {
    requireBlock(id);
    if (const auto raw = raw_.find(id); raw != raw_.end()) {
        T record{};
        try {
            LoadResource(record, raw->second);
        } catch (const std::runtime_error& error) {
            fail("resource block " + std::to_string(id) + ": " + error.what());
        }
        values_[id] = std::move(record);
        raw_.erase(raw);
    }
    return std::any_cast<const T&>(values_[id]);
}

template const Mesh& ResourceStorage::get(unsigned int);
template const Curve& ResourceStorage::get(unsigned int);
template const Surface& ResourceStorage::get(unsigned int);
template const Lattice& ResourceStorage::get(unsigned int);
template const WeightMap& ResourceStorage::get(unsigned int);
template const DeltaList& ResourceStorage::get(unsigned int);
template const SkinWeights& ResourceStorage::get(unsigned int);
template const WireBindings& ResourceStorage::get(unsigned int);
template const std::vector<unsigned int>& ResourceStorage::get(unsigned int);
template const std::vector<unsigned char>& ResourceStorage::get(unsigned int);
template const std::vector<Value>& ResourceStorage::get(unsigned int);

} // namespace zent
