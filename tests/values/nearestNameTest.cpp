#include "zent/values/nearestName.h"

#include <gtest/gtest.h>

namespace zent {
namespace {

TEST(NearestName, IsTheOneWithTheFewestSlips) {
    const std::vector<std::string> names{"clamp", "multMatrix", "multiplyDivide1D", "multiplyDivide3D", "joint"};
    const std::pair<const char*, const char*> rows[] = {
        {"clmap", "clamp"},                       // swapped
        {"multMatrx", "multMatrix"},              // left out
        {"jointt", "joint"},                      // added
        {"multiplyDivide2D", "multiplyDivide1D"}, // the first of equals
        {"MULTmatrix", "multMatrix"},
        {"pint", ""}, // two of five letters are too many
        {"skinMesh", ""},
        {"", ""},
    };
    for (const auto& [written, meant] : rows) {
        EXPECT_EQ(nearestName(written, names), meant) << written;
    }
    EXPECT_EQ(nearestNameHint("clmp", names), ", did you mean \"clamp\"?");
    EXPECT_EQ(nearestNameHint("skinMesh", names), "");
}

} // namespace
} // namespace zent
