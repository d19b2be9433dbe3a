#include "zent/math/processor.h"

#include <gtest/gtest.h>

namespace zent {
namespace {

#ifdef ZENT_X86
TEST(Processor, HasWhatTheCompilerFinds) {
    EXPECT_EQ(processor().hasAvx2, __builtin_cpu_supports("avx2") != 0);
    EXPECT_EQ(processor().hasAvx512f, __builtin_cpu_supports("avx512f") != 0);
}
#endif

} // namespace
} // namespace zent
