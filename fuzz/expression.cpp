// Any byte code over any constants ends in outputs or in one of the stated exceptions. The input is
//
//     the number of inputs, the number of constants, for each constant its index and 8 bytes, the code
//
// and the number of instructions is bounded, since a loop without end is the program's own.
#include "zent/expression/VM.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <stdexcept>

namespace {

constexpr std::uint64_t kInstructions = 20000;
constexpr std::size_t kConstantSize = 9;
constexpr std::size_t kMaxOutputs = 256;

// A stored value of the index and the 8 bytes, which also stand in the second and third double.
zent::Value constantOf(const std::uint8_t* bytes) {
    char record[zent::kStoredValueSize] = {};
    for (std::size_t offset = 0; offset < 24; offset += 8) {
        std::memcpy(record + offset, bytes + 1, 8);
    }
    record[24] = static_cast<char>(bytes[0]);
    return zent::valueFromBytes(record);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) {
        return 0;
    }
    zent::VM::Floats inputs;
    for (int slot = 0; slot < data[0] % 20; ++slot) {
        inputs.push_back(static_cast<float>(slot) * 0.75f - 2.0f);
    }
    const std::size_t count = std::min<std::size_t>(data[1] % 16, (size - 2) / kConstantSize);
    const std::uint8_t* code = data + 2 + count * kConstantSize;
    try {
        std::vector<zent::Value> constants;
        for (std::size_t i = 0; i < count; ++i) {
            constants.push_back(constantOf(data + 2 + i * kConstantSize));
        }
        zent::VM machine(std::vector<unsigned char>(code, data + size), std::move(constants));
        if (machine.executeAtMost(kInstructions, std::move(inputs)).size() > kMaxOutputs) {
            std::abort();
        }
    } catch (const std::out_of_range&) {
    } catch (const std::bad_variant_access&) {
    } catch (const std::runtime_error&) {
    }
    return 0;
}
