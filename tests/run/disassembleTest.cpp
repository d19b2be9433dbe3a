#include "run/zentcheck.h"

#include <gtest/gtest.h>

namespace zent::test {
namespace {

TEST(Disassemble, ShowsABlockAndChecksNothing) {
    // A resource file: the number of blocks, the offsets 32, 34 and 66, the code "const [0]", and the integer 9 as a
    // stored value.
    std::string file(8, '\0');
    file[0] = 2;
    for (const char offset : {32, 34, 66}) {
        file += offset;
        file += std::string(7, '\0');
    }
    file += std::string("\0\0", 2) + '\x09' + std::string(31, '\0');
    file[34 + 24] = 1;
    const std::string path = writeFile("expression.bin", file);

    const Outcome shown = zentcheck("--disassemble '" + path + "' --block 0 --constants 1");
    EXPECT_EQ(shown.status, 0) << shown.err;
    EXPECT_EQ(shown.out, "    0: const [0]         # 9\n");
    EXPECT_EQ(zentcheck("--disassemble '" + path + "'").status, 2);
    EXPECT_EQ(zentcheck("--disassemble '" + path + "' --block 2").err,
              "error: there is no resource block 2, 2 are loaded\n");
}

} // namespace
} // namespace zent::test
