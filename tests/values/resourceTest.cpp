#include "zent/values/resource.h"

#include "tools/ListResources.h"
#include "zent/values/ResourceWriter.h"

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <sys/stat.h>
#include <thread>

namespace zent::test {
namespace {

class ResourceTest : public testing::Test {
protected:
    ResourceTest() : path_(testing::TempDir() + "resource") {}
    ~ResourceTest() override { std::filesystem::remove(path_); }

    void load(const std::string& bytes) {
        std::ofstream(path_, std::ios::binary) << bytes;
        storage_.load(path_);
    }
    void load(const ResourceWriter& writer) { load(writer.bytes()); }

    /// What `load` or another call throws.
    template <class Call>
    static std::string textOf(Call call) {
        try {
            call();
            return "";
        } catch (const std::exception& error) {
            return error.what();
        }
    }

    std::string path_;
    ResourceStorage storage_;
};

std::string number64(std::uint64_t number) {
    return {reinterpret_cast<const char*>(&number), 8};
}
std::string number32(std::uint32_t number) {
    return {reinterpret_cast<const char*>(&number), 4};
}

std::string file(std::initializer_list<std::uint64_t> table, const std::string& blocks = "") {
    std::string bytes;
    for (const std::uint64_t number : table) {
        bytes += number64(number);
    }
    return bytes + blocks;
}

const std::string kLength = "cannot create std::vector larger than max_size()";
const mat4 kMatrix{1.0f, 2.0f, 0.0f, 0.0f, 0.0f, 4.0f, 0.0f, 0.0f, 0.0f, 0.0f, 2.0f, 0.0f, 5.0f, 6.0f, 7.0f, 1.0f};

TEST_F(ResourceTest, ReadsEveryFormOfABlock) {
    Lattice lattice;
    lattice.s = 2;
    lattice.t = lattice.u = 1;
    lattice.points = {vec3(1.0f), vec3(2.0f)};
    lattice.translation = vec3(3.0f);
    const WeightMap map{{7, 0.5f}, {2, 0.25f}};
    const DeltaList deltas{{4, vec3(1.0f, 2.0f, 3.0f)}, {0, vec3(4.0f)}};
    const SkinWeights skin{{5, 1, 0.75f}, {6, 0, 0.25f}};
    const WireBindings wire{{9.0f, 0.5f, glm::mat3(kMatrix)}};
    const std::vector<unsigned int> numbers{3, 1, 2};
    const std::vector<unsigned char> code{0, 255, 28};
    const std::vector<Value> constants{true, -7, 2.5, ValueVector{1.0, 2.0, 3.0}};
    ResourceWriter writer;
    writer.add(Mesh({vec3(1.0f), vec3(2.0f), vec3(3.0f)}, kMatrix));
    writer.add(Curve(1, kFormClosed, {vec3(1.0f), vec3(2.0f)}, {0.0f, 1.0f}, kMatrix));
    writer.add(
        Surface(1, 2, kFormOpen, kFormPeriodic, {0, 1}, {2, 3, 4, 5}, std::vector<vec3>(6, vec3(2.0f)), kMatrix));
    writer.add(lattice);
    writer.add(map);
    writer.add(deltas);
    writer.add(skin);
    writer.add(wire);
    writer.add(numbers);
    writer.add(code);
    EXPECT_EQ(writer.add(constants), 10u);
    load(writer);
    EXPECT_TRUE(storage_.loaded);

    const Mesh& mesh = storage_.get<Mesh>(0);
    EXPECT_EQ(mesh.points[1], vec3(2.0f));
    EXPECT_EQ(mesh.matrixLinear[0], vec3(1.0f, 2.0f, 0.0f));
    EXPECT_EQ(mesh.inverseLinear[0], vec3(1.0f, -0.5f, 0.0f));
    EXPECT_EQ(mesh.inverseTranslation, vec3(-5.0f, 1.0f, -3.5f));
    const Curve& curve = storage_.get<Curve>(1);
    EXPECT_EQ(curve.form, kFormClosed);
    EXPECT_EQ(curve.knots, (std::vector<float>{0, 1}));
    EXPECT_EQ(curve.inverseTranslation, mesh.inverseTranslation);
    const Surface& surface = storage_.get<Surface>(2);
    EXPECT_EQ(surface.degreeV, 2u);
    EXPECT_EQ(surface.formV, kFormPeriodic);
    EXPECT_EQ(surface.knotsV, (std::vector<float>{2, 3, 4, 5}));
    EXPECT_EQ(surface.cv[5], vec3(2.0f));
    EXPECT_EQ(storage_.get<Lattice>(3).s, 2u);
    EXPECT_EQ(storage_.get<Lattice>(3).points, lattice.points);
    EXPECT_EQ(storage_.get<Lattice>(3).translation, vec3(3.0f));
    EXPECT_EQ(storage_.get<WeightMap>(4), map);
    EXPECT_EQ(storage_.get<DeltaList>(5), deltas);
    EXPECT_EQ(storage_.get<SkinWeights>(6), skin);
    EXPECT_EQ(storage_.get<WireBindings>(7), wire);
    EXPECT_EQ(storage_.get<std::vector<unsigned int>>(8), numbers);
    EXPECT_EQ(storage_.get<std::vector<unsigned char>>(9), code);
    EXPECT_EQ(std::get<ValueVector>(storage_.get<std::vector<Value>>(10)[3]).z, 3.0);

    EXPECT_THROW(storage_.get<Curve>(0), std::bad_any_cast); // its first reader has fixed it
    EXPECT_EQ(&storage_.get<Mesh>(0), &mesh);

    std::ostringstream list;
    listResources(path_, list);
    for (const char* line :
         {"     0          100 bytes  mesh: 3 points\n", "curve: degree 1, form 2, 2 control points\n",
          "surface: degrees 1 and 2, forms 1 and 3, 2 by 3 control points\n", "lattice: 2 by 1 by 1 points",
          "weight map: 2\n", "deltas: 2\n", "skin weights: 2\n", "wire bindings: 1\n",
          "    10          128 bytes  constants: 4\n", "3 bytes  byte code\n"}) {
        EXPECT_NE(list.str().find(line), std::string::npos) << line << "in\n" << list.str();
    }
}

TEST_F(ResourceTest, TakesOffsetsByTheirDifferencesAlone) {
    load(file({2, 1000, 1004, 1008}, number32(7) + number32(8)));
    EXPECT_EQ(storage_.get<std::vector<unsigned int>>(1), std::vector<unsigned int>{8});
    load(file({0, 16}));
    EXPECT_TRUE(storage_.loaded);
    EXPECT_EQ(textOf([&] { storage_.get<Mesh>(0); }), "there is no resource block 0, 0 are loaded");
}

TEST_F(ResourceTest, DropsWhatIsTooMuchAndKeepsTheFirstOfEqualKeys) {
    const std::string identity(reinterpret_cast<const char*>(&kMatrix), 64);
    ResourceWriter writer;
    writer.addBytes(identity);
    writer.addBytes(identity + std::string(6, 'x'));
    writer.addBytes(number32(3) + number32(0x3f800000) + number32(3) + number32(0x40000000) + "tail");
    writer.addBytes(number32(5) + "xyz");
    writer.addBytes(number32(3) + number32(1) + number32(0) + number32(0) + identity + "surplus");
    writer.addBytes(identity + number32(65536) + number32(65536) + number32(3)); // 0 in 32 bits
    load(writer);
    EXPECT_TRUE(storage_.get<Mesh>(0).points.empty());
    EXPECT_TRUE(storage_.get<Mesh>(1).points.empty());
    EXPECT_EQ(storage_.get<WeightMap>(2), (WeightMap{{3, 1.0f}}));
    EXPECT_EQ(storage_.get<std::vector<unsigned int>>(3), std::vector<unsigned int>{5});
    EXPECT_TRUE(storage_.get<Curve>(4).cv.empty());
    EXPECT_EQ(storage_.get<Lattice>(5).t, 65536u);
}

TEST_F(ResourceTest, RefusesBlocksThatCannotHoldTheirRecord) {
    const std::string matrix(reinterpret_cast<const char*>(&kMatrix), 64);
    const std::string huge = number32(0xFFFFFFFF);
    ResourceWriter writer;
    writer.addBytes(std::string(63, '\0'));
    writer.addBytes(number32(3) + number32(1) + huge + huge + matrix);
    writer.addBytes(number32(3) + number32(3) + number32(1) + number32(1) + huge + huge + huge + matrix);
    writer.addBytes(matrix + number32(2) + number32(3) + number32(4) + std::string(287, '\0'));
    load(writer);
    EXPECT_EQ(textOf([&] { storage_.get<Mesh>(0); }), "resource block 0: 63 bytes, the head of a mesh needs 64");
    EXPECT_EQ(textOf([&] { storage_.get<Curve>(0); }), "resource block 0: 63 bytes, the head of a curve needs 80");
    EXPECT_EQ(
        textOf([&] { storage_.get<Curve>(1); }),
        "resource block 1: 80 bytes, a curve of 4294967295 control points and 4294967295 knots needs 68719476800");
    EXPECT_EQ(textOf([&] { storage_.get<Surface>(2); }),
              "resource block 2: 92 bytes, a surface of 4294967295 control points and 8589934590 knots needs "
              "85899345992");
    EXPECT_EQ(textOf([&] { storage_.get<Lattice>(3); }),
              "resource block 3: 363 bytes, a lattice of 2 by 3 by 4 points needs 364");
    EXPECT_TRUE(storage_.get<WeightMap>(0).count(0)); // a refused block is still there for another reader
}

TEST_F(ResourceTest, ShortFilesReadAsZeros) {
    load(file({2, 0, 4, 12}, number32(7) + number32(8))); // four bytes are missing
    EXPECT_EQ(storage_.get<std::vector<unsigned int>>(1), (std::vector<unsigned int>{8, 0}));
    load("");
    EXPECT_TRUE(storage_.loaded);
}

TEST_F(ResourceTest, RefusesAbsurdTablesBeforeItAllocates) {
    const std::uint64_t exbi = std::uint64_t{1} << 60;
    const struct {
        std::string bytes, text;
    } rows[] = {
        {file({std::uint64_t{1} << 59, 0}), kLength},
        {file({(std::uint64_t{1} << 59) - 1, 0}), "cannot hold the table of 576460752303423487 blocks"},
        {file({2, 0, 4}), "cannot hold the table of 2 blocks"},
        {file({1, 8, 0}), kLength},
        {file({2, 0, exbi, 0}), "block 0 has a size of 1152921504606846976 bytes and ends beyond the file's end"},
        {file({2, 0, 4, (std::uint64_t{16} << 20) + 5}, "four"), "block 1 has a size of 16777217 bytes and ends"},
        {file({2, 0, 4, (std::uint64_t{16} << 20) + 4}, "four"), ""},
        {file({4, 0, 3 * exbi, 6 * exbi, 6 * exbi, 6 * exbi}), "block 0"}, // the sum does not wrap
        {"{\n  \"nodes\": []", kLength},                                   // a manifest by mistake
    };
    for (const auto& row : rows) {
        const std::string text = textOf([&] { load(row.bytes); });
        EXPECT_TRUE(row.text.empty() ? text.empty() : text.find(row.text) != std::string::npos) << text;
        EXPECT_EQ(storage_.loaded, text.empty());
    }
}

TEST_F(ResourceTest, KeepsItsBlocksWhereAFileDoesNotOpen) {
    load(file({1, 0, 4}, number32(7)));
    EXPECT_EQ(storage_.get<std::vector<unsigned int>>(0).front(), 7u);
    for (const std::string& path : {path_ + ".missing", testing::TempDir()}) {
        storage_.load(path);
        EXPECT_FALSE(storage_.loaded);
        EXPECT_EQ(storage_.get<std::vector<unsigned int>>(0).front(), 7u);
    }
    load(file({1, 0, 4}, number32(9))); // another file replaces what was parsed, and its type
    EXPECT_EQ(storage_.get<std::vector<unsigned char>>(0).front(), 9u);
    load(file({0, 0}));
    EXPECT_THROW(storage_.get<std::vector<unsigned char>>(0), std::runtime_error);
}

TEST_F(ResourceTest, ReadsAPipe) {
    ASSERT_EQ(mkfifo(path_.c_str(), 0600), 0);
    std::thread writer([this] { std::ofstream(path_, std::ios::binary) << file({1, 0, 4}, number32(7)); });
    storage_.load(path_);
    writer.join();
    EXPECT_EQ(storage_.get<std::vector<unsigned int>>(0).front(), 7u);
}

} // namespace
} // namespace zent::test
