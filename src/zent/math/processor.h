#pragma once

#if defined(__GNUC__) && defined(__x86_64__)
#define ZENT_X86

namespace zent {

/// What the processor has, and the system keeps between threads. Asked here, since the compiler's own support for the
/// question asks for all that there is whenever a program or a library is loaded, which takes a virtual machine long.
struct Processor {
    bool hasAvx2 = false;
    bool hasAvx512f = false;
};

const Processor& processor();

} // namespace zent

#endif
