// Any bytes are a resource file or a std::exception, each of its blocks is a record of each form or a
// std::runtime_error, and the lists of what it holds end.
#include "support/input.h"

#include "tools/Disassemble.h"
#include "tools/ListResources.h"
#include "zent/geometry/shapes.h"
#include "zent/values/resource.h"
#include "zent/values/ResourceWriter.h"

#include <algorithm>
#include <cstdlib>
#include <ostream>
#include <stdexcept>

namespace {

template <class Call>
void allowed(Call&& call) {
    try {
        call();
    } catch (const std::runtime_error&) {
    } catch (const std::length_error&) {
    } catch (const std::bad_any_cast&) {
    }
}

/// A list that was read and written stands in the file as before, but for a record that was not complete.
template <class Record>
void requireRoundTrip(const Record& record, const std::vector<char>& bytes) {
    zent::ResourceWriter writer;
    writer.add(record);
    const std::string file = writer.bytes();
    constexpr std::size_t kHead = 24;
    if (file.size() - kHead > bytes.size() || !std::equal(file.begin() + kHead, file.end(), bytes.begin())) {
        std::abort();
    }
}

template <class Shape>
void readShape(const std::vector<char>& bytes) {
    allowed([&] {
        Shape shape;
        zent::LoadResource(shape, bytes);
        zent::requireConsistent(shape, "shape");
        for (unsigned i = 0; i < zent::pointCount(shape); ++i) {
            static_cast<void>(zent::pointsOf(shape)[i]);
        }
    });
}

template <class Record>
void readList(const std::vector<char>& bytes) {
    Record record;
    zent::LoadResource(record, bytes);
    requireRoundTrip(record, bytes);
}

void readEachForm(const std::vector<char>& bytes) {
    readShape<zent::Mesh>(bytes);
    readShape<zent::Curve>(bytes);
    readShape<zent::Surface>(bytes);
    readShape<zent::Lattice>(bytes);
    zent::WeightMap map; // its order and its equal keys are lost
    zent::LoadResource(map, bytes);
    readList<zent::DeltaList>(bytes);
    readList<zent::SkinWeights>(bytes);
    readList<zent::WireBindings>(bytes);
    readList<std::vector<unsigned int>>(bytes);
    readList<std::vector<unsigned char>>(bytes);
    allowed([&] {
        std::vector<zent::Value> constants;
        zent::LoadResource(constants, bytes);
    });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static fuzz::MemoryFile memory;
    const std::string content(data, data + size);
    if (fuzz::isMostlyMissing(content)) {
        return 0;
    }
    const std::string& path = memory.write(content);
    std::ostream nowhere(nullptr);
    unsigned int count = 0;
    allowed([&] {
        zent::readResourceBlocks(path, [&](unsigned int, std::vector<char>&& bytes) {
            readEachForm(bytes);
            ++count;
        });
    });
    allowed([&] { zent::listResources(path, nowhere); });
    for (unsigned int block = 0; block < count && block < 4; ++block) {
        allowed([&] { zent::disassemble(path, block, block + 1, nowhere); });
    }
    return 0;
}

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t room, unsigned seed) {
    fuzz::Random random(seed);
    return fuzz::put({fuzz::mutateResource({data, data + size}, random)}, data, size, room);
}
