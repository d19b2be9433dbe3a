// Any byte code over any constants ends in outputs or in one of the stated exceptions, and in the same ones when it is
// decoded as early as can be and when it never is. The input is
//
//     the number of inputs, the number of constants, for each constant its index and 8 bytes, the code
//
// and the number of instructions is bounded, since a loop without end is the program's own.
#include "zent/expression/VM.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string>

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

struct Outcome {
    zent::VM::Floats outputs;
    std::string error;
};

Outcome outcomeOf(std::vector<unsigned char> code, std::vector<zent::Value> constants, const zent::VM::Floats& inputs,
                  unsigned warmUp) {
    try {
        zent::VM machine(std::move(code), std::move(constants), warmUp);
        return {machine.executeAtMost(kInstructions, inputs), ""};
    } catch (const std::out_of_range& error) {
        return {{}, std::string("range ") + error.what()};
    } catch (const std::bad_variant_access& error) {
        return {{}, std::string("variant ") + error.what()};
    } catch (const std::runtime_error& error) {
        return {{}, error.what()};
    }
}

bool areEqual(float a, float b) {
    return a == b || (std::isnan(a) && std::isnan(b));
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
    const std::vector<unsigned char> code(data + 2 + count * kConstantSize, data + size);
    std::vector<zent::Value> constants;
    for (std::size_t i = 0; i < count; ++i) {
        constants.push_back(constantOf(data + 2 + i * kConstantSize));
    }
    const Outcome bytes = outcomeOf(code, constants, inputs, zent::VM::kNever);
    const Outcome decoded = outcomeOf(code, constants, inputs, 1);
    if (bytes.outputs.size() > kMaxOutputs || bytes.error != decoded.error ||
        !std::equal(bytes.outputs.begin(), bytes.outputs.end(), decoded.outputs.begin(), decoded.outputs.end(),
                    areEqual)) {
        std::abort();
    }
    return 0;
}
