#include "zent/values/Compare.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cmath>

namespace zent::test {
namespace {

bool same(const char* maya, const char* zent, float epsilon = 0.001f) {
    return compare(json::parse(maya), json::parse(zent), epsilon);
}

TEST(CompareTest, HoldsEachTypeByItsComponents) {
    const struct {
        const char* maya;
        const char* zent;
        bool match;
    } cases[] = {
        {R"([{"type":"Float","value":1}])", R"([{"type":"Float","value":1.0005,"name":"x"}])", true},
        {R"([{"type":"Float","value":1}])", R"([{"type":"Vec2","value":1}])", false},
        {R"([{"type":"Float","value":1}])", R"([{"value":1}])", false},
        {R"([{"type":"Vec2","value":[1,2,9]}])", R"([{"type":"Vec2","value":[1,2,3]}])", true},
        {R"([{"type":"Vec3","value":[1,2,9]}])", R"([{"type":"Vec3","value":[1,2,3]}])", false},
        {R"([{"type":"Vertex","value":[1,2,9]}])", R"([{"type":"Vertex","value":[1,2,3]}])", false},
        {R"([{"type":"Vec4","value":[1,2,3,4]}])", R"([{"type":"Vec4","value":[1,2,3,5]}])", false},
        {R"([{"type":"Mat4","value":[0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,1]}])",
         R"([{"type":"Mat4","value":[0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,2]}])", false},
        // The node function's list may be the longer one, and only that one.
        {R"([{"type":"Float[]","value":[1,2]}])", R"([{"type":"Float[]","value":[1,2,3]}])", true},
        {R"([{"type":"Float[]","value":[1,2,3]}])", R"([{"type":"Float[]","value":[1,2]}])", false},
        {R"([{"type":"Float[]","value":[]}])", R"([{"type":"Float[]","value":7}])", true},
        {R"([{"type":"Vec2[][]","value":[[[1,2]],[]]}])", R"([{"type":"Vec2[][]","value":[[[1,2],[3,4]],[[5,6]]]}])",
         true},
        {R"([{"type":"Vec2[][]","value":[[[1,2]]]}])", R"([{"type":"Vec2[][]","value":[[[1,3]]]}])", false},
        {R"([])", R"(null)", true},
        {R"([{"type":"Float","value":1}])", R"([])", false},
    };
    for (const auto& row : cases) {
        EXPECT_EQ(same(row.maya, row.zent), row.match) << row.maya << " against " << row.zent;
    }
}

TEST(CompareTest, IsStrict) {
    EXPECT_FALSE(check(1.0f, 1.0f, 0.0f));
    EXPECT_FALSE(check(1.0f, 1.5f, 0.5f));
    EXPECT_FALSE(check(NAN, NAN, 1.0f));
    EXPECT_FALSE(check(INFINITY, INFINITY, 1.0f));
    EXPECT_FALSE(check(vec3(0.0f, NAN, 0.0f), vec3(0.0f), 1.0f));
    // Narrowed before the difference is taken: as doubles these are further apart than epsilon.
    EXPECT_TRUE(same(R"([{"type":"Float","value":16777216}])", R"([{"type":"Float","value":16777217}])", 0.5f));
}

TEST(CompareTest, ThrowsOnWhatItCannotRead) {
    const auto textOf = [](const char* maya, const char* zent) -> std::string {
        try {
            same(maya, zent);
        } catch (const std::exception& error) {
            return error.what();
        }
        return {};
    };
    EXPECT_EQ(textOf(R"([{"type":"Int","value":1}])", R"([{"type":"Int","value":1}])"), "cannot compare Int");
    EXPECT_EQ(textOf(R"([{"type":"X[]","value":[1]}])", R"([{"type":"X[]","value":[1]}])"), "cannot compare X");
    EXPECT_EQ(textOf(R"([{"type":"X[]","value":[]}])", R"([{"type":"X[]","value":[1]}])"), "");
    EXPECT_EQ(textOf(R"([{"value":1}])", R"([{"value":1}])"),
              "[json.exception.type_error.302] type must be string, but is null");
    EXPECT_EQ(textOf(R"([{"type":"Vec3","value":[1,2]}])", R"([{"type":"Vec3","value":[1,2]}])"),
              "[json.exception.type_error.302] type must be number, but is null");
    EXPECT_EQ(textOf(R"([3])", R"([3])"),
              "[json.exception.type_error.305] cannot use operator[] with a string argument with number");
}

} // namespace
} // namespace zent::test
