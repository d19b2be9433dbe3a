#include "zent/expression/Assembly.h"

#include "zent/expression/Builtin.h"
#include "zent/expression/Opcode.h"
#include "zent/math/require.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <map>
#include <optional>
#include <sstream>
#include <string_view>

namespace zent {

namespace {

enum class Operand { None, Constant, Byte, Call, Forward, Back };

struct Instruction {
    std::string_view mnemonic;
    Operand operand = Operand::None;
};

// By opcode.
constexpr std::array<Instruction, kLastOpcode + 1> kInstructions{{
    {"const", Operand::Constant},
    {"vector"},
    {"component", Operand::Byte},
    {"add"},
    {"sub"},
    {"mul"},
    {"div"},
    {"mod"},
    {"neg"},
    {"not"},
    {"eq"},
    {"gt"},
    {"lt"},
    {"and"},
    {"or"},
    {"true"},
    {"false"},
    {"pop"},
    {"load", Operand::Byte},
    {"store", Operand::Byte},
    {"output", Operand::Byte},
    {"input", Operand::Byte},
    {"getoutput", Operand::Byte},
    {"call", Operand::Call},
    {"return"},
    {"jump", Operand::Forward},
    {"unless", Operand::Forward},
    {"back", Operand::Back},
    {"end"},
}};

constexpr std::string_view kRawByte = "byte";

int operandSize(Operand operand) {
    constexpr std::array<int, 6> kSizes{0, 1, 1, 3, 2, 2};
    return kSizes[static_cast<std::size_t>(operand)];
}

template <class T>
std::optional<T> parseNumber(std::string_view text) {
    T number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) {
        return std::nullopt;
    }
    return number;
}

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t\r");
    return first == std::string_view::npos ? std::string_view{}
                                           : text.substr(first, text.find_last_not_of(" \t\r") + 1 - first);
}

// Cuts the first word off a text.
std::string_view takeWord(std::string_view& text) {
    text = trimmed(text);
    const std::string_view word = text.substr(0, text.find_first_of(" \t"));
    text = trimmed(text.substr(word.size()));
    return word;
}

std::optional<Value> parseVector(std::string_view text) {
    std::array<double, 3> components{};
    for (std::size_t i = 0; i < 3; ++i) {
        const std::size_t comma = i < 2 ? text.find(',') : text.size();
        const auto number = parseNumber<double>(trimmed(text.substr(0, comma)));
        if (comma == std::string_view::npos || !number) {
            return std::nullopt;
        }
        components[i] = *number;
        text.remove_prefix(i < 2 ? comma + 1 : comma);
    }
    return ValueVector{components[0], components[1], components[2]};
}

std::optional<Value> parseLiteral(std::string_view text) {
    if (text == "true" || text == "false") {
        return text == "true";
    }
    if (text.size() > 2 && text.front() == '(' && text.back() == ')') {
        return parseVector(text.substr(1, text.size() - 2));
    }
    if (const auto integer = parseNumber<int>(text)) {
        return *integer;
    }
    if (const auto number = parseNumber<double>(text)) {
        return *number;
    }
    return std::nullopt;
}

class Assembler {
public:
    Program assemble(const std::string& source) {
        std::istringstream lines(source);
        for (std::string line; std::getline(lines, line);) {
            ++line_;
            assembleLine(std::string_view(line).substr(0, line.find('#')));
        }
        for (const Reference& reference : references_) {
            resolve(reference);
        }
        return std::move(program_);
    }

private:
    // An operand of two bytes that waits for the positions of all labels.
    struct Reference {
        int line;
        std::size_t position; // of the two bytes
        Operand operand;
        std::string target;
    };

    [[noreturn]] void failLine(const std::string& what) const { fail("line " + std::to_string(line_) + ": " + what); }

    void assembleLine(std::string_view text) {
        std::string_view word = takeWord(text);
        for (; !word.empty() && word.back() == ':'; word = takeWord(text)) {
            word.remove_suffix(1);
            if (!labels_.emplace(word, static_cast<int>(program_.code.size())).second) {
                failLine("the label " + std::string(word) + " stands twice");
            }
        }
        if (word == kRawByte) {
            program_.code.push_back(byte(text));
        } else if (!word.empty()) {
            assembleInstruction(word, text);
        }
    }

    void assembleInstruction(std::string_view mnemonic, std::string_view operands) {
        for (std::size_t opcode = 0; opcode < kInstructions.size(); ++opcode) {
            if (kInstructions[opcode].mnemonic == mnemonic) {
                program_.code.push_back(static_cast<unsigned char>(opcode));
                assembleOperands(kInstructions[opcode].operand, operands);
                return;
            }
        }
        failLine("there is no instruction " + std::string(mnemonic));
    }

    void assembleOperands(Operand operand, std::string_view text) {
        switch (operand) {
        case Operand::None:
            if (!text.empty()) {
                failLine("the instruction takes no operand");
            }
            break;
        case Operand::Constant:
            program_.code.push_back(constant(text));
            break;
        case Operand::Byte:
            program_.code.push_back(byte(text));
            break;
        case Operand::Call:
            program_.code.push_back(byte(takeWord(text)));
            [[fallthrough]];
        case Operand::Forward:
        case Operand::Back:
            references_.push_back({line_, program_.code.size(), operand, std::string(text)});
            program_.code.insert(program_.code.end(), 2, 0);
            break;
        }
    }

    unsigned char byte(std::string_view text) const {
        const auto number = parseNumber<unsigned char>(text);
        if (!number) {
            failLine("an operand is a number from 0 to 255, not " + std::string(text));
        }
        return *number;
    }

    unsigned char constant(std::string_view text) {
        if (text.size() > 2 && text.front() == '[' && text.back() == ']') {
            return byte(text.substr(1, text.size() - 2));
        }
        const auto literal = parseLiteral(text);
        if (!literal) {
            failLine("not a constant: " + std::string(text));
        }
        const auto [item, isNew] = pool_.emplace(toText(*literal), program_.constants.size());
        if (isNew) {
            program_.constants.push_back(*literal);
        }
        if (item->second > 0xFF) {
            failLine("an expression has at most 256 constants");
        }
        return static_cast<unsigned char>(item->second);
    }

    void resolve(const Reference& reference) {
        line_ = reference.line;
        const auto behind = static_cast<std::int64_t>(reference.position) + 2;
        const std::int64_t target = targetOf(reference);
        const std::int64_t operand = reference.operand == Operand::Call      ? target
                                     : reference.operand == Operand::Forward ? target - behind
                                                                             : behind - target;
        if (operand < 0 || operand > 0xFFFF) {
            failLine("out of reach: " + reference.target);
        }
        program_.code[reference.position] = static_cast<unsigned char>(operand >> 8);
        program_.code[reference.position + 1] = static_cast<unsigned char>(operand & 0xFF);
    }

    int targetOf(const Reference& reference) const {
        if (const auto label = labels_.find(reference.target); label != labels_.end()) {
            return label->second;
        }
        const auto& builtins = Builtin::LUT_address();
        const auto builtin = builtins.find(reference.target);
        if (reference.operand == Operand::Call && builtin != builtins.end()) {
            return builtin->second;
        }
        const auto number = parseNumber<int>(reference.target);
        if (!number) {
            failLine("no label or built-in: " + reference.target);
        }
        return *number;
    }

    Program program_;
    std::map<std::string, int, std::less<>> labels_;
    std::map<std::string, std::size_t> pool_;
    std::vector<Reference> references_;
    int line_ = 0;
};

class Disassembler {
public:
    Disassembler(const std::vector<unsigned char>& code, const std::vector<Value>* constants)
        : code_(code), constants_(constants) {}

    std::string disassemble() {
        for (std::size_t position = 0; position < code_.size();) {
            position = writeLine(position);
        }
        return out_.str();
    }

    // With the source's lines, and constants as they are.
    std::string list(const std::vector<SourceMark>& marks, const std::string& source) {
        areConstantsShown_ = true;
        std::vector<std::string> lines;
        std::istringstream text(source);
        for (std::string line; std::getline(text, line);) {
            lines.push_back(line.substr(0, line.find_last_not_of(" \t\r") + 1));
        }
        std::size_t shown = 0;
        auto mark = marks.begin();
        for (std::size_t position = 0; position < code_.size();) {
            for (; mark != marks.end() && mark->position <= position; ++mark) {
                const auto line = static_cast<std::size_t>(mark->line);
                writeSource(lines, std::min(shown + 1, line), line);
                shown = std::max(shown, line);
            }
            if (position + 1 == code_.size() || static_cast<Opcode>(code_[position]) == Opcode::End) {
                writeSource(lines, shown + 1, lines.size()); // brackets and comments
                shown = lines.size();
            }
            position = writeLine(position);
        }
        return out_.str();
    }

private:
    void writeSource(const std::vector<std::string>& lines, std::size_t first, std::size_t last) {
        for (std::size_t line = first; line <= last && line <= lines.size(); ++line) {
            if (!lines[line - 1].empty()) {
                const std::string number = std::to_string(line);
                out_ << '#' << std::string(number.size() < 4 ? 4 - number.size() : 0, ' ') << number << "  "
                     << lines[line - 1] << '\n';
            }
        }
    }

    // Returns the position of the next instruction.
    std::size_t writeLine(std::size_t position) {
        const unsigned char opcode = code_[position];
        const Operand operand = opcode <= kLastOpcode ? kInstructions[opcode].operand : Operand::None;
        const std::size_t behind = position + 1 + static_cast<std::size_t>(operandSize(operand));
        std::string text;
        std::string comment;
        if (opcode > kLastOpcode || behind > code_.size()) {
            text = std::string(kRawByte) + " " + std::to_string(opcode);
            comment = opcode > kLastOpcode ? "no operation" : "an instruction cut off";
            write(position, text, comment);
            return position + 1;
        }
        text = kInstructions[opcode].mnemonic;
        switch (operand) {
        case Operand::None:
            break;
        case Operand::Constant:
            if (areConstantsShown_) {
                text += " " + constantComment(code_[position + 1]);
                break;
            }
            text += " [" + std::to_string(code_[position + 1]) + "]";
            comment = constantComment(code_[position + 1]);
            break;
        case Operand::Byte:
            text += " " + std::to_string(code_[position + 1]);
            break;
        case Operand::Call: {
            const int target = wordAt(position + 2);
            text += " " + std::to_string(code_[position + 1]) + " " + callTarget(target);
            comment = callComment(target);
            break;
        }
        case Operand::Forward:
            text += " " + std::to_string(static_cast<int>(behind) + wordAt(position + 1));
            break;
        case Operand::Back:
            text += " " + std::to_string(static_cast<int>(behind) - wordAt(position + 1));
            break;
        }
        write(position, text, comment);
        return behind;
    }

    void write(std::size_t position, const std::string& text, const std::string& comment) {
        const std::string label = std::to_string(position);
        out_ << std::string(label.size() < 5 ? 5 - label.size() : 0, ' ') << label << ": " << text;
        if (!comment.empty()) {
            out_ << std::string(text.size() < 16 ? 16 - text.size() : 0, ' ') << "  # " << comment;
        }
        out_ << '\n';
    }

    int wordAt(std::size_t position) const { return code_[position] << 8 | code_[position + 1]; }

    std::string constantComment(std::size_t index) const {
        if (constants_ == nullptr) {
            return {};
        }
        return index < constants_->size() ? toText((*constants_)[index])
                                          : "beyond the " + std::to_string(constants_->size()) + " constants";
    }

    bool isBuiltin(int target) const { return static_cast<std::size_t>(target) >= code_.size(); }

    // By name where the name has this number.
    std::string callTarget(int target) const {
        const char* name = isBuiltin(target) ? Builtin::name(static_cast<unsigned short>(target)) : nullptr;
        return name != nullptr && Builtin::LUT_address().at(name) == target ? name : std::to_string(target);
    }

    std::string callComment(int target) const {
        if (!isBuiltin(target)) {
            return {};
        }
        const char* name = Builtin::name(static_cast<unsigned short>(target));
        return name == nullptr ? "no built-in" : callTarget(target) == name ? "" : name;
    }

    const std::vector<unsigned char>& code_;
    const std::vector<Value>* constants_;
    bool areConstantsShown_ = false;
    std::ostringstream out_;
};

} // namespace

Program assemble(const std::string& source) {
    return Assembler().assemble(source);
}

std::string disassemble(const std::vector<unsigned char>& code, const std::vector<Value>* constants) {
    return Disassembler(code, constants).disassemble();
}

std::string listing(const Program& program, const std::vector<SourceMark>& marks, const std::string& source) {
    return Disassembler(program.code, &program.constants).list(marks, source);
}

std::size_t instructionSize(unsigned char opcode) {
    return opcode > kLastOpcode ? 1 : 1 + static_cast<std::size_t>(operandSize(kInstructions[opcode].operand));
}

} // namespace zent
