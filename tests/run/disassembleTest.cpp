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

TEST(CompileExpression, ShowsTheCodeBesideTheText) {
    const std::string path = writeFile("squash.mel", "ball.scaleY = max(0.1, ball.translateY / 2);\n");
    const Outcome shown = zentcheck("--compile-expression '" + path + "'");
    EXPECT_EQ(shown.status, 0) << shown.err;
    EXPECT_EQ(shown.out, "# input 0: ball.translateY\n# output 0: ball.scaleY\n"
                         "#   1  ball.scaleY = max(0.1, ball.translateY / 2);\n"
                         "    0: const 0.1\n    2: input 0\n    4: const 2\n    6: div\n    7: call 2 max\n"
                         "   11: output 0\n   13: end\n");
    const std::string slots = " --outputs 'o.x;ball.scaleY' --inputs 'time;ball.translateY'";
    EXPECT_NE(zentcheck("--compile-expression '" + path + "'" + slots).out.find("input 1\n"), std::string::npos);
    const Outcome refused = zentcheck("--compile-expression '" + path + "' --inputs time --outputs ball.scaleY");
    EXPECT_EQ(refused.status, 2);
    EXPECT_EQ(refused.err, "error: " + path +
                               ": line 1, column 24: ball.translateY: none of the expression's inputs: "
                               "connect it, or name it among them\n");
    EXPECT_EQ(zentcheck("--compile-expression '" + path + ".none'").status, 2);
}

} // namespace
} // namespace zent::test
