#include "maya/Commands.h"

#include <gtest/gtest.h>
#include <maya/MArgDatabase.h>
#include <maya/MFnPlugin.h>

namespace zent::test {
namespace {

MSyntax probeSyntax() {
    MSyntax syntax;
    syntax.addArg(MSyntax::kString);
    syntax.addArg(MSyntax::kLong);
    syntax.addFlag("t", "text", MSyntax::kString);
    syntax.addFlag("u", "unsigned", MSyntax::kUnsigned);
    syntax.addFlag("b", "boolean", MSyntax::kBoolean);
    syntax.addFlag("-d", "-double", MSyntax::kDouble);
    syntax.addFlag("n", "none");
    return syntax;
}

/// A command that yields what it read of its call.
class Probe : public MPxCommand {
public:
    static void* creator() { return new Probe; }

    MStatus doIt(const MArgList& arguments) override {
        const MArgDatabase database(syntax(), arguments);
        MString path("none");
        MString text("none");
        unsigned int number = 0;
        bool boolean = false;
        double real = 0.0;
        database.getCommandArgument(0, path);
        database.getFlagArgument("t", 0, text);
        database.getFlagArgument("unsigned", 0, number);
        database.getFlagArgument("-boolean", 0, boolean);
        database.getFlagArgument("d", 0, real);
        const std::string told = std::string(path.asChar()) + "|" + text.asChar() + "|" + std::to_string(number) +
                                 (boolean ? "|yes|" : "|no|") + std::to_string(real) +
                                 (database.isFlagSet("none") ? "|n" : "");
        setResult(MString(told.c_str()));
        return number == 404 ? MStatus::kFailure : MStatus::kSuccess;
    }
    bool hasSyntax() const override { return true; }
};

class CommandsTest : public testing::Test {
protected:
    CommandsTest() { plugin.registerCommand("probe", Probe::creator, probeSyntax); }
    ~CommandsTest() override { plugin.deregisterCommand("probe"); }

    MFnPlugin plugin{MObject::kNullObj, "Unknown", "Unknown", "Any"};
};

TEST_F(CommandsTest, ReadFlagsByShortAndLongName) {
    const std::pair<std::vector<std::string>, const char*> cases[] = {
        {{}, "none|none|0|no|0.000000"},
        {{"file", "7"}, "file|none|0|no|0.000000"},
        {{"-t", "a b", "file", "-unsigned", "3", "-b", "on", "-d", "-1.5"}, "file|a b|3|yes|-1.500000"},
        {{"-text", "-t", "-boolean", "false", "-double", "1e-3", "-none", "-"}, "-|-t|0|no|0.001000|n"},
        {{"-t", "", "-t", "last"}, "none|last|0|no|0.000000"},
    };
    for (const auto& [words, told] : cases) {
        const host::CommandOutcome outcome = host::runCommand("probe", words);
        EXPECT_EQ(outcome.problem, "");
        EXPECT_TRUE(outcome.status);
        EXPECT_EQ(std::get<std::string>(outcome.result), told);
    }
    EXPECT_TRUE(host::runCommand("probe", {"-u", "404"}).status.error());
}

TEST_F(CommandsTest, AreNotRunOnWordsThatDoNotFit) {
    const std::pair<std::vector<std::string>, const char*> cases[] = {
        {{"-x"}, "unknown flag -x"},
        {{"-u"}, "flag -u needs a value"},
        {{"-u", "-1"}, "flag -u should be a whole number, not negative, not -1"},
        {{"-u", "3x"}, "flag -u should be"},
        {{"-b", "maybe"}, "flag -b should be true or false, not maybe"},
        {{"-d", ""}, "flag -d should be a number"},
        {{"file", "x"}, "argument x should be a whole number"},
        {{"file", "1", "2"}, "too many arguments: 2"},
    };
    for (const auto& [words, problem] : cases) {
        const host::CommandOutcome outcome = host::runCommand("probe", words);
        EXPECT_EQ(outcome.problem.rfind(problem, 0), 0U) << outcome.problem;
        EXPECT_TRUE(std::holds_alternative<std::monostate>(outcome.result));
    }
}

TEST_F(CommandsTest, AreThereWhileTheyAreRegistered) {
    EXPECT_TRUE(plugin.registerCommand("probe", Probe::creator).error()); // the name is taken
    EXPECT_FALSE(plugin.deregisterCommand("probe").error());
    EXPECT_FALSE(host::hasCommand("probe"));
    EXPECT_EQ(host::runCommand("probe", {}).problem, "there is no command probe");
    EXPECT_TRUE(plugin.deregisterCommand("probe").error());
}

} // namespace
} // namespace zent::test
