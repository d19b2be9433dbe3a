#include "check/testRun.h"
#include "documentedErrors.h"
#include "tools/Disassemble.h"
#include "tools/ListResources.h"
#include "zent/check/readManifest.h"
#include "zent/proxies/Registry.h"
#include "zent/values/resource.h"
#include "zent/values/ResourceWriter.h"

#include <filesystem>
#include <iostream>
#include <regex>
#include <sstream>

namespace zent::test {
namespace {

Curve curve(unsigned degree, unsigned form, std::size_t points, std::vector<float> knots) {
    return Curve(degree, form, std::vector<vec3>(points, vec3(1.0f)), std::move(knots), mat4(1.0f));
}

Surface surface(unsigned degree, unsigned formV, std::size_t points, std::vector<float> knotsU,
                std::vector<float> knotsV) {
    return Surface(degree, degree, kFormOpen, formV, std::move(knotsU), std::move(knotsV),
                   std::vector<vec3>(points, vec3(1.0f)), mat4(1.0f));
}

class ErrorsDocument : public RunTest {
protected:
    ErrorsDocument() : path_(testing::TempDir() + "errors") {
        for (std::unique_ptr<Proxy>& proxy : makeProxies()) {
            add(std::move(proxy));
        }
        settings.ignoreDeformer = false;
    }
    ~ErrorsDocument() override {
        std::filesystem::remove(path_);
        Element::storage() = ResourceStorage();
    }

    void name(const char* block, unsigned int id) {
        words_.emplace_back(block, R"({"id": )" + std::to_string(id) + "}");
    }

    void loadBlocks() {
        ResourceWriter writer;
        const std::vector<float> cubicKnots{0, 0, 0, 1, 1, 1};
        const Mesh quad({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}}, mat4(1.0f));
        Lattice lattice;
        const auto addLattice = [&](unsigned s, unsigned t, unsigned u, std::size_t points) {
            lattice.s = s;
            lattice.t = t;
            lattice.u = u;
            lattice.points.assign(points, vec3(0.0f));
            return writer.add(lattice);
        };
        name("@short", writer.addBytes(std::string(16, '\0')));
        ResourceWriter cut;
        cut.add(curve(3, kFormOpen, 4, cubicKnots));
        name("@cut", writer.addBytes(cut.bytes().substr(24, 100)));
        name("@badValue", writer.addBytes(std::string(24, '\0') + '\x09' + std::string(7, '\0')));
        name("@end", writer.add(std::vector<unsigned char>{28}));
        name("@pushThenEnd", writer.add(std::vector<unsigned char>{0, 0, 28}));
        name("@mesh", writer.add(quad));
        name("@pair", writer.add(Mesh({{0, 0, 0}, {1, 0, 0}}, mat4(1.0f))));
        name("@noMesh", writer.add(Mesh()));
        name("@curve", writer.add(curve(3, kFormOpen, 4, cubicKnots)));
        name("@degree7", writer.add(curve(7, kFormOpen, 8, std::vector<float>(14))));
        name("@fewKnots", writer.add(curve(3, kFormOpen, 4, {0, 1, 2})));
        name("@fewPoints", writer.add(curve(3, kFormOpen, 2, cubicKnots)));
        name("@manyPoints", writer.add(curve(1, kFormOpen, 5, {0, 1, 2})));
        name("@noPoints", writer.add(curve(1, kFormOpen, 0, {})));
        name("@open", writer.add(curve(3, kFormOpen, 7, {})));
        name("@periodic", writer.add(curve(3, kFormPeriodic, 7, {})));
        name("@flat", writer.add(surface(0, kFormOpen, 4, {0, 1}, {0, 1})));
        name("@threePoints", writer.add(surface(1, kFormOpen, 3, {0, 1}, {0, 1})));
        name("@cubic", writer.add(surface(3, kFormOpen, 16, cubicKnots, cubicKnots)));
        name("@periodicV", writer.add(Surface(5, 3, kFormOpen, kFormPeriodic, {0, 0, 0, 0, 0, 1, 1, 1, 1, 1},
                                              cubicKnots, std::vector<vec3>(24), mat4(1.0f))));
        name("@edge", writer.add(std::vector<unsigned int>{0, 1, 2}));
        name("@loop", writer.add(std::vector<unsigned int>{0, 1, 2, 0}));
        name("@twice", writer.add(std::vector<unsigned int>{1, 1}));
        name("@bindings", writer.add(WireBindings(4)));
        name("@none", writer.add(std::vector<unsigned int>{}));
        name("@farEdge", writer.add(std::vector<unsigned int>{0, 1, 9}));
        name("@wrapped", addLattice(65536, 65536, 8, 0));
        name("@wide", addLattice(12, 1, 1, 12));
        name("@farDelta", writer.add(DeltaList{{9, vec3(1.0f)}}));
        name("@farFactor", writer.add(WeightMap{{9, 1.0f}}));
        name("@farWeight", writer.add(SkinWeights{{9, 0, 1.0f}}));
        name("@farInfluence", writer.add(SkinWeights{{0, 5, 1.0f}}));
        words_.emplace_back("@I", "[1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1]");
        words_.emplace_back("@uvs", "[[0, 0], [1, 0], [1, 1], [0, 1]]");
        words_.emplace_back("@0", "[0, 0, 0]");
        words_.emplace_back("@1", "[1, 1, 1]");
        writer.write(path_);
    }

    json entries(std::string ports) const {
        for (const auto& [word, value] : words_) {
            ports = std::regex_replace(ports, std::regex(word + "\\b"), value);
        }
        json list = json::array();
        const json parsed = json::parse(ports);
        for (std::size_t attribute = 0; attribute < parsed.size(); ++attribute) {
            for (const json& value : parsed[attribute]) {
                json entry = value.is_object() && value.contains("value") ? value : json{{"value", value}};
                entry.emplace("attribute", attribute);
                list.push_back(std::move(entry));
            }
        }
        return list;
    }

    /// A manifest as it stands, or "METHOD RESULTS <- ARGUMENTS" for one record.
    std::string manifestOf(const std::string& row) const {
        if (row.front() == '[') {
            return row;
        }
        const std::size_t space = row.find(' ');
        const std::size_t arrow = row.find(" <- ");
        return json::array({{{"node_name", "n"},
                             {"method", row.substr(0, space)},
                             {"results", entries(row.substr(space, arrow - space))},
                             {"arguments", entries(row.substr(arrow + 4))}}})
            .dump();
    }

    /// What a call tells when it fails: the last line of its log, or else the exception's text.
    template <class Call>
    std::string toldBy(const Call& call) {
        lines.clear();
        try {
            call();
        } catch (const std::exception& error) {
            return lines.empty() ? error.what() : lines.back();
        }
        return "";
    }

    std::string path_;
    std::vector<std::pair<std::string, std::string>> words_;
};

TEST_F(ErrorsDocument, QuotesWhatRunsTell) {
    loadBlocks();
    std::vector<std::string> told;
    std::ifstream rows(std::string(ZENT_TESTS) + "/check/errors.txt");
    for (std::string text, row; std::getline(rows, text);) {
        if (text.empty() || text.front() == '#') {
            continue;
        }
        std::getline(rows >> std::ws, row);
        Element::storage().load(path_); // a block's first reader fixes its type
        told.push_back(toldBy([&] { check(manifestOf(row)); }));
        EXPECT_NE(told.back().find(text), std::string::npos) << told.back() << "\n  " << text;
    }
    ASSERT_GT(told.size(), 50U);

    const auto load = [this](const std::string& bytes) {
        std::ofstream(path_, std::ios::binary) << bytes;
        Element::storage().load(path_);
    };
    const auto number = [](std::uint64_t value) { return std::string(reinterpret_cast<const char*>(&value), 8); };
    told.push_back(toldBy([&] { load(number(5) + std::string(22, '\0')); }));
    told.push_back(toldBy([&] { load(number(1) + number(0) + number(900000000)); }));
    told.push_back(toldBy([&] { load(number(std::uint64_t{1} << 60)); }));
    told.push_back(toldBy([] { listResources("/no/such/file", std::cout); }));
    told.push_back(toldBy([] {
        std::stringstream file("[1, 2]");
        Manifest manifest(file, 2);
        file.str("[1");
        manifest.forEach([](json&&) { return true; });
    }));
    ResourceWriter large;
    large.add(Mesh(1U << 20));
    large.write(path_);
    told.push_back(toldBy([&] { disassemble(path_, 0, 0, std::cout); }));

    expectTold(documentedQuotes(std::string(ZENT_DOCS) + "/errors.md",
                                {"The manifest", "The resource file", "Shapes and curves", "Lists of arguments"}),
               told,
               {"cannot open file rig.json", // of the command and of the program
                "r.bin is no resource file: its table has impossible sizes"});
}

} // namespace
} // namespace zent::test
