#include "zent/expression/Assembly.h"

#include "zent/expression/Builtin.h"
#include "zent/expression/Opcode.h"

#include <gtest/gtest.h>

#include <cstring>
#include <fstream>
#include <random>
#include <regex>
#include <sstream>
#include <stdexcept>

namespace zent {
namespace {

using Bytes = std::vector<unsigned char>;

TEST(Assembly, LiteralsLabelsAndBuiltinsBecomeBytes) {
    const Program program = assemble("start:  const 2.5   # the first constant\n"
                                     "        const 2\n"
                                     "        const 2.5\n"
                                     "        const [7]\n"
                                     "        const (1, -0.5, 1e3)\n"
                                     "\n"
                                     "  a: b: call 3 abs\n"
                                     "        call 1 start\n"
                                     "        jump done\n"
                                     "        back start\n"
                                     "        byte 200\n"
                                     "done:   end");
    EXPECT_EQ(program.code, (Bytes{0,    0,  0, 1,    0,    0,  0, 7, 0,  2, 23, 3,   0xFF,
                                   0xEC, 23, 1, 0x00, 0x00, 25, 0, 4, 27, 0, 24, 200, 28}));
    ASSERT_EQ(program.constants.size(), 3U);
    EXPECT_EQ(std::get<double>(program.constants[0]), 2.5);
    EXPECT_EQ(std::get<int>(program.constants[1]), 2);
    EXPECT_EQ(std::get<ValueVector>(program.constants[2]).z, 1000.0);
}

TEST(Assembly, DisassemblyShowsConstantsAndBuiltins) {
    const Bytes code{0, 1, 0, 2, 23, 1, 0xFF, 0xF9, 23, 2, 0xFF, 0xDF, 27, 0, 20, 22, 3, 99, 26, 0};
    const std::vector<Value> constants{true, 3.0};
    EXPECT_EQ(disassemble(code, &constants), "    0: const [1]         # 3.0\n"
                                             "    2: const [2]         # beyond the 2 constants\n"
                                             "    4: call 1 65529      # abs\n"
                                             "    8: call 2 atan2\n"
                                             "   12: back -5\n"
                                             "   15: getoutput 3\n"
                                             "   17: byte 99           # no operation\n"
                                             "   18: byte 26           # an instruction cut off\n"
                                             "   19: byte 0            # an instruction cut off\n");
}

/// The first two cells of the rows of a document's table whose first cell is a number, as the third is for those of
/// built-in functions.
std::vector<std::vector<std::string>> documentedRows(const std::string& heading) {
    std::ifstream file(ZENT_DOCS "/byte-code.md");
    std::vector<std::vector<std::string>> rows;
    bool isAsked = false;
    for (std::string line; std::getline(file, line);) {
        if (line.rfind("## ", 0) == 0) {
            isAsked = line == "## " + heading;
        }
        std::smatch cells;
        if (isAsked && std::regex_search(line, cells, std::regex(R"(^\| ([0-9]+) \| `(\w+)` \| ([^|]*?) ?\|)"))) {
            rows.push_back({cells[1], cells[2], cells[3]});
        }
    }
    return rows;
}

TEST(Assembly, TheDocumentHasEveryNumber) {
    const auto instructions = documentedRows("Instructions");
    ASSERT_EQ(instructions.size(), kLastOpcode + 1U);
    for (std::size_t opcode = 0; opcode < instructions.size(); ++opcode) {
        const auto& row = instructions[opcode];
        EXPECT_EQ(row[0], std::to_string(opcode));
        std::istringstream text(disassemble({static_cast<unsigned char>(opcode), 1, 0, 0}));
        std::string position, name, operand;
        text >> position >> name >> operand;
        EXPECT_EQ(name, row[1]);
        EXPECT_EQ(operand.empty() || operand == "1:", row[2].empty()) << row[1];
    }
    const auto functions = documentedRows("Built-in functions");
    ASSERT_EQ(functions.size(), Builtin::natives().size());
    for (const auto& row : functions) {
        const auto number = static_cast<unsigned short>(std::stoul(row[0]));
        EXPECT_STREQ(Builtin::name(number), row[1].c_str());
        EXPECT_EQ(std::to_string(Builtin::arity(number)), row[2]) << row[1];
    }
}

TEST(Assembly, AnyBytesComeBackFromTheirDisassembly) {
    std::mt19937 random(7);
    for (int round = 0; round < 200; ++round) {
        Bytes code(1 + random() % 300);
        for (unsigned char& byte : code) {
            byte = static_cast<unsigned char>(random() % (round % 2 == 0 ? 32 : 256));
        }
        ASSERT_EQ(assemble(disassemble(code)).code, code) << disassemble(code);
    }
}

TEST(Assembly, ErrorsNameTheLine) {
    const std::pair<const char*, const char*> cases[] = {
        {"end\nfoo", "line 2: there is no instruction foo"},
        {"end 1", "line 1: the instruction takes no operand"},
        {"load 256", "line 1: an operand is a number from 0 to 255, not 256"},
        {"const x", "line 1: not a constant: x"},
        {"const (1, 2)", "line 1: not a constant: (1, 2)"},
        {"\njump nowhere", "line 2: no label or built-in: nowhere"},
        {"jump sin", "line 1: no label or built-in: sin"},
        {"a: end\na: end", "line 2: the label a stands twice"},
        {"a: jump a", "line 1: out of reach: a"},
        {"back -2147483648", "line 1: out of reach: -2147483648"},
    };
    for (const auto& [source, text] : cases) {
        try {
            assemble(source);
            ADD_FAILURE() << source;
        } catch (const std::runtime_error& error) {
            EXPECT_STREQ(error.what(), text);
        }
    }
}

// A stored value: the alternative's bytes, the index at byte 24, padding of any kind.
template <class T>
Value stored(const T& alternative, char index) {
    char record[kStoredValueSize];
    std::memset(record, 0x5A, sizeof(record));
    std::memcpy(record, &alternative, sizeof(T));
    record[24] = index;
    return valueFromBytes(record);
}

TEST(Value, ReadsStoredRecords) {
    EXPECT_EQ(std::get<bool>(stored('\0', 0)), false);
    EXPECT_EQ(std::get<bool>(stored('\1', 0)), true);
    EXPECT_EQ(std::get<bool>(stored('\x80', 0)), true);
    EXPECT_EQ(std::get<int>(stored(-7, 1)), -7);
    EXPECT_EQ(std::get<double>(stored(0.1, 2)), 0.1);
    EXPECT_EQ(toText(stored(ValueVector{1.0, -0.0, 1e100}, 3)), "(1.0, -0.0, 1e+100)");
    EXPECT_EQ(toText(stored(0, 4)), "unknown kind 4");
    EXPECT_EQ(toText(stored(0, '\xFF')), "unknown kind 255");
}

} // namespace
} // namespace zent
