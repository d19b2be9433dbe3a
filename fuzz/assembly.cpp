// Any bytes come back from their disassembly, and any text is a program or a std::runtime_error.
#include "zent/expression/Assembly.h"

#include <cstdint>
#include <cstdlib>
#include <stdexcept>

namespace {

void requireRoundTrip(const std::vector<unsigned char>& code, const std::vector<zent::Value>* constants) {
    if (zent::assemble(zent::disassemble(code, constants)).code != code) {
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    requireRoundTrip({data, data + size}, nullptr);
    try {
        const zent::Program program = zent::assemble(std::string(data, data + size));
        requireRoundTrip(program.code, &program.constants);
    } catch (const std::runtime_error&) {
    }
    return 0;
}
