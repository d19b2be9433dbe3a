#include "zent/expression/Token.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>
#include <utility>

namespace zent {

namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

bool isWordPart(char c) {
    return isLetter(c) || isDigit(c);
}

bool isHexDigit(char c) {
    return isDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

bool continuesCharacter(char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

// Longer ones first.
constexpr std::array<std::string_view, 37> kSymbols{
    "<<", ">>", "<=", ">=", "==", "!=", "&&", "||", "++", "--", "+=", "-=", "*=", "/=", "%=", "^=", "+", "-", "*",
    "/",  "%",  "^",  "!",  "<",  ">",  "=",  "?",  ":",  "(",  ")",  "{",  "}",  "[",  "]",  ",",  ";", "`"};

// Words that end before a colon: in `$a ? on : off` it is no namespace's.
constexpr std::array<std::string_view, 8> kWholeWords{"true", "false", "on", "off", "yes", "no", "time", "frame"};

class Tokenizer {
public:
    explicit Tokenizer(std::string_view source) : source_(source) {}

    std::vector<Token> tokenize() {
        while (skipBlanks()) {
            takeToken();
        }
        add(Token::Kind::End, 0);
        return std::move(tokens_);
    }

private:
    char at(std::size_t ahead) const { return position_ + ahead < source_.size() ? source_[position_ + ahead] : '\0'; }

    void advance(std::size_t count) {
        for (; count > 0; --count, ++position_) {
            if (source_[position_] == '\n') {
                place_ = {place_.line + 1, 1};
            } else if (!continuesCharacter(source_[position_])) {
                ++place_.column;
            }
        }
    }

    // False at the end of the text.
    bool skipBlanks() {
        for (; position_ < source_.size(); advance(1)) {
            if (at(0) == '/' && at(1) == '/') {
                advance(std::min(source_.find('\n', position_), source_.size()) - position_);
            } else if (at(0) == '/' && at(1) == '*') {
                const std::size_t end = source_.find("*/", position_ + 2);
                if (end == std::string_view::npos) {
                    addNamed(Token::Kind::Unknown, "a comment without end", source_.size() - position_);
                } else {
                    advance(end + 1 - position_); // to the closing slash
                    continue;
                }
            }
            if (position_ >= source_.size() || std::string_view(" \t\r\n\f\v").find(at(0)) == std::string_view::npos) {
                break;
            }
        }
        return position_ < source_.size();
    }

    void takeToken() {
        const char c = at(0);
        if (c == '$' && isLetter(at(1))) {
            add(Token::Kind::Variable, wordFrom(1));
        } else if (c == '.' && isOneOf(at(1), "xyz") && !isWordPart(at(2)) && mayHaveComponent()) {
            add(Token::Kind::Component, 2);
        } else if (isDigit(c) || (c == '.' && isDigit(at(1)))) {
            takeNumber();
        } else if (const std::size_t length = nameLength(); length > 0) {
            add(Token::Kind::Name, length);
        } else if (c == '"') {
            takeText();
        } else {
            takeSymbol();
        }
    }

    static bool isOneOf(char c, std::string_view characters) {
        return c != '\0' && characters.find(c) != std::string_view::npos;
    }

    bool mayHaveComponent() const {
        return !tokens_.empty() && (tokens_.back().kind == Token::Kind::Variable || tokens_.back().is(")") ||
                                    tokens_.back().is(">>") || tokens_.back().is("]"));
    }

    // Where the word that starts at `from` ends.
    std::size_t wordFrom(std::size_t from) const {
        while (isWordPart(at(from))) {
            ++from;
        }
        return from;
    }

    std::size_t digitsFrom(std::size_t from) const {
        while (isDigit(at(from))) {
            ++from;
        }
        return from;
    }

    void takeNumber() {
        if (at(0) == '0' && isOneOf(at(1), "xX") && isHexDigit(at(2))) {
            std::size_t end = 2;
            while (isHexDigit(at(end))) {
                ++end;
            }
            return add(Token::Kind::Integer, end);
        }
        std::size_t end = digitsFrom(0);
        bool isFloat = false;
        if (at(end) == '.') {
            isFloat = true;
            end = digitsFrom(end + 1);
        }
        if (isOneOf(at(end), "eE")) {
            const std::size_t exponent = end + (isOneOf(at(end + 1), "+-") ? 2 : 1);
            if (isDigit(at(exponent))) {
                isFloat = true;
                end = digitsFrom(exponent);
            }
        }
        if (isWordPart(at(end))) {
            return add(Token::Kind::Unknown, wordFrom(end)); // 2x
        }
        add(isFloat ? Token::Kind::Float : Token::Kind::Integer, end);
    }

    // A name with its namespaces and the path before it: |group|ns:ball. 0 if there is none.
    std::size_t nodeLength() const {
        std::size_t end = 0;
        for (;;) {
            std::size_t start = end;
            const bool isWhole = end > 0 && std::find(kWholeWords.begin(), kWholeWords.end(),
                                                      source_.substr(position_, end)) != kWholeWords.end();
            if (!isWhole && ((at(start) == ':' && start > 0) || (at(start) == '|' && at(start + 1) != '|'))) {
                ++start;
            } else if (end > 0) {
                return end;
            }
            if (!isLetter(at(start))) {
                return end;
            }
            end = wordFrom(start);
        }
    }

    std::size_t nameLength() const {
        std::size_t end = nodeLength();
        if (end == 0 && at(0) != '.') {
            return 0;
        }
        while (at(end) == '.' && isLetter(at(end + 1))) {
            end = wordFrom(end + 1);
            while (at(end) == '[') {
                const std::size_t digits = digitsFrom(end + 1);
                if (digits == end + 1 || at(digits) != ']') {
                    break;
                }
                end = digits + 1;
            }
        }
        return end;
    }

    void takeText() {
        std::size_t end = 1;
        while (position_ + end < source_.size() && at(end) != '"' && at(end) != '\n') {
            end += at(end) == '\\' ? 2U : 1U;
        }
        end = std::min(end, source_.size() - position_);
        if (at(end) == '"') {
            addNamed(Token::Kind::Text, "a string", end + 1);
        } else {
            addNamed(Token::Kind::Unknown, "a string without end", end);
        }
    }

    void takeSymbol() {
        for (const std::string_view symbol : kSymbols) {
            if (source_.substr(position_, symbol.size()) == symbol) {
                return add(Token::Kind::Symbol, symbol.size());
            }
        }
        const auto first = static_cast<unsigned char>(at(0));
        const std::size_t length = first < 0x80U ? 1 : first < 0xE0U ? 2 : 3;
        // Of others, the bytes are told: they may be ill-formed.
        bool isCharacter = first < 0x80U ? first >= 0x20U && first != 0x7FU
                                         : first >= 0xC2U && first < 0xF0U && first != 0xE0U && first != 0xEDU;
        for (std::size_t i = 1; i < length; ++i) {
            isCharacter = isCharacter && continuesCharacter(at(i));
        }
        if (isCharacter) {
            add(Token::Kind::Unknown, length);
        } else {
            addNamed(Token::Kind::Unknown, "byte " + std::to_string(first), 1);
        }
    }

    void add(Token::Kind kind, std::size_t length) {
        addNamed(kind, std::string(source_.substr(position_, length)), length);
    }

    void addNamed(Token::Kind kind, std::string text, std::size_t length) {
        tokens_.push_back({kind, std::move(text), place_});
        advance(length);
    }

    std::string_view source_;
    std::size_t position_ = 0;
    SourcePlace place_;
    std::vector<Token> tokens_;
};

} // namespace

std::vector<Token> tokenize(const std::string& source) {
    return Tokenizer(source).tokenize();
}

} // namespace zent
