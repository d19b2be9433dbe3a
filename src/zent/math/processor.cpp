#include "zent/math/processor.h"

#ifdef ZENT_X86

#include <cpuid.h>

#include <cstdint>

namespace zent {

namespace {

// The registers that the system saves: bits 1 and 2 are those of SSE and AVX, 5 to 7 those of AVX-512.
std::uint64_t savedRegisters() {
    std::uint32_t low = 0;
    std::uint32_t high = 0;
    __asm__("xgetbv" : "=a"(low), "=d"(high) : "c"(0));
    return static_cast<std::uint64_t>(high) << 32U | low;
}

Processor ask() {
    Processor found;
    unsigned a = 0;
    unsigned b = 0;
    unsigned c = 0;
    unsigned d = 0;
    if (__get_cpuid(1, &a, &b, &c, &d) == 0 || (c & bit_OSXSAVE) == 0 || __get_cpuid_count(7, 0, &a, &b, &c, &d) == 0) {
        return found;
    }
    constexpr std::uint64_t kAvx = 0x6;
    constexpr std::uint64_t kAvx512 = 0xE6;
    const std::uint64_t saved = savedRegisters();
    found.hasAvx2 = (b & bit_AVX2) != 0 && (saved & kAvx) == kAvx;
    found.hasAvx512f = (b & bit_AVX512F) != 0 && (saved & kAvx512) == kAvx512;
    return found;
}

} // namespace

const Processor& processor() {
    static const Processor found = ask();
    return found;
}

} // namespace zent

#endif
