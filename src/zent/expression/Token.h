#pragma once

#include <string>
#include <vector>

namespace zent {

/// Where something stands in a text; both count from 1, the column in characters.
struct SourcePlace {
    int line = 1;
    int column = 1;
};

/// A word of Maya's expression language.
struct Token {
    enum class Kind {
        Integer,
        Float,
        Variable,  ///< $name
        Name,      ///< a word, or an attribute: sin, ball.translateX, group|ns:ball.weights[2], .I[0]
        Symbol,    ///< an operator or a bracket
        Component, ///< .x, .y or .z behind a variable or a bracket
        Text,      ///< "..."
        Unknown,   ///< what the language does not have, or what does not end; the text tells it
        End
    };

    Kind kind;
    std::string text;
    SourcePlace place;

    bool is(const char* symbol) const { return kind == Kind::Symbol && text == symbol; }
};

/// The tokens of a text; the last one is the end. Never fails: what is no token becomes one that is unknown, so that
/// errors are told in the order of the text.
std::vector<Token> tokenize(const std::string& source);

} // namespace zent
