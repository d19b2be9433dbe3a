#include "run/zentcheck.h"

#include <gtest/gtest.h>

namespace zent::test {
namespace {

TEST(SchemaTest, TakesTheExamplesAndRefusesMistakes) {
    const Outcome outcome =
        run(ZENT_PYTHON " " ZENT_EXAMPLES "/../tests/run/schemas.py " ZENT_EXAMPLES "/../docs " ZENT_EXAMPLES);
    EXPECT_EQ(outcome.status, 0) << outcome.out << outcome.err;
    EXPECT_NE(outcome.out.find(" scenes, "), std::string::npos);
}

} // namespace
} // namespace zent::test
