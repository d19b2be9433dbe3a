#include "run/zentcheck.h"

#include <gtest/gtest.h>

#include <regex>

namespace zent::test {
namespace {

const std::string kArm = ZENT_EXAMPLES "/arm/";

int count(const std::string& text, const std::string& part) {
    int found = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + part.size())) {
        ++found;
    }
    return found;
}

Outcome check(const std::string& manifest, const std::string& options) {
    return zentcheck("--ignore-deformer false --stop-on-first-error false " + options + " --scene " + kArm +
                     "scene.json " + kArm + manifest + " " + kArm + "resource.bin");
}

// The script computes the scene in double precision, with nothing of the library.
TEST(ArmTest, EveryRecordMatchesAnIndependentComputation) {
    const Outcome outcome = check("manifest.json", "--verbose 1");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, ""); // no method is ignored
    const int records = count(readFile(kArm + "manifest.json"), "\"method\"");
    EXPECT_GE(records, 50);
    EXPECT_EQ(count(outcome.out, "====== start running "), records);
    EXPECT_EQ(count(outcome.out, "====== end running "), records);
    EXPECT_EQ(count(outcome.out, "\n"), 2 * records); // and nothing else
}

TEST(ArmTest, TheFaultsAreReported) {
    const Outcome outcome = check("faults.json", "");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(count(outcome.out, "maya output: "), 3);
    std::size_t at = 0;
    for (const char* line : {"===== unmatch on reachRatio(multiplyDivide1D) =====\n",
                             "===== unmatch on wristTurns(orientConstraint) =====\n", "error index: 80\n",
                             "===== unmatch on armSkin(skinMesh) =====\n"}) {
        at = outcome.out.find(line, at);
        ASSERT_NE(at, std::string::npos) << line << outcome.out;
    }
}

TEST(ArmTest, AManifestOfItsSceneHasItsMethodsAndMatches) {
    const std::string arm = std::string(ZENT_EXAMPLES) + "/arm";
    const std::string scene = "--scene " + arm + "/scene.json --scene-resource " + arm + "/resource.bin ";
    const std::string made = writeFile("made.json", "") + " " + writeFile("made.bin", "");
    const Outcome notes = zentcheck(scene + "--make-manifest " + made);
    EXPECT_EQ(notes.status, 0) << notes.err;
    const std::string manifest = readFile(made.substr(0, made.find(' ')));
    const std::regex method("\"method\": \"(\\w+)\"");
    const std::string byHand = readFile(arm + "/manifest.json");
    for (std::sregex_iterator name(byHand.begin(), byHand.end(), method), end; name != end; ++name) {
        EXPECT_NE(manifest.find((*name)[0].str()), std::string::npos) << (*name)[1] << "\n" << notes.out;
    }
    const Outcome checked = zentcheck(scene + "--ignore-deformer false " + made);
    EXPECT_EQ(checked.status, 0) << checked.out << checked.err;
    EXPECT_EQ(zentcheck("--lint " + scene + made).status, 0);
    const Outcome unnamed = zentcheck("--scene " + arm + "/scene.json " + made);
    EXPECT_EQ(unnamed.status, 2);
    EXPECT_NE(unnamed.err.find("--scene-resource names it"), std::string::npos) << unnamed.err;
}

} // namespace
} // namespace zent::test
