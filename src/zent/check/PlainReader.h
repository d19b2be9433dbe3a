#pragma once

#include "zent/check/plainJson.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

namespace zent {

namespace plain {

constexpr int kMostDepth = 64;
constexpr std::ptrdiff_t kMostDigits = 200;       // with these and two digits of an exponent, no number overflows
constexpr std::ptrdiff_t kMostIntegerDigits = 18; // which 64 bits hold

inline bool isDigit(char letter) {
    return letter >= '0' && letter <= '9';
}

/// Whether a letter of a text stands for itself.
constexpr bool isOrdinary(char letter) {
    const auto code = static_cast<unsigned char>(letter);
    return code >= 0x20 && code < 0x80 && letter != '"' && letter != '\\';
}

struct Ordinary {
    std::array<bool, 256> is{};
    constexpr Ordinary() {
        for (std::size_t i = 0; i < is.size(); ++i) {
            is[i] = isOrdinary(static_cast<char>(i));
        }
    }
};
constexpr Ordinary kOrdinary;

/// What a short escape stands for; zero for any other.
inline char unescaped(char letter) {
    switch (letter) {
    case '"':
    case '\\':
    case '/':
        return letter;
    case 'b':
        return '\b';
    case 'f':
        return '\f';
    case 'n':
        return '\n';
    case 'r':
        return '\r';
    case 't':
        return '\t';
    default:
        return '\0';
    }
}

/// Where a number ends, and whether it is an integer.
struct Number {
    const char* end = nullptr;
    bool isInteger = true;
};

} // namespace plain

/// Takes values off a text. `Builds`: it makes them, too.
template <class Json, bool Builds>
class PlainReader {
public:
    PlainReader(const char* at, const char* end) : at_(at), end_(end) {}

    const char* at() const { return at_; }

    Read value(Json& value, int depth = 0) {
        if (at_ == end_) {
            return Read::cut;
        }
        switch (*at_) {
        case '{':
            return depth == plain::kMostDepth ? Read::other : object(value, depth + 1);
        case '[':
            return depth == plain::kMostDepth ? Read::other : array(value, depth + 1);
        case '"': {
            std::string text;
            const Read read = string(text);
            if constexpr (Builds) {
                if (read == Read::whole) {
                    value = std::move(text);
                }
            }
            return read;
        }
        case 't':
            return word("true", value, true);
        case 'f':
            return word("false", value, false);
        case 'n':
            return word("null", value, nullptr);
        default:
            return number(value);
        }
    }

private:
    /// The next letter that is no space, in `letter`.
    Read next(char& letter) {
        at_ = passSpace(at_, end_);
        if (at_ == end_) {
            return Read::cut;
        }
        letter = *at_;
        return Read::whole;
    }

    Read object(Json& value, int depth) {
        typename Json::object_t* members = nullptr;
        if constexpr (Builds) {
            value = Json(Json::value_t::object);
            members = value.template get_ptr<typename Json::object_t*>();
        }
        ++at_;
        char letter = '\0';
        Read read = next(letter);
        if (read == Read::whole && letter == '}') {
            ++at_;
            return Read::whole;
        }
        std::string key;
        Json ignored;
        while (read == Read::whole) {
            if (letter != '"') {
                return Read::other;
            }
            if ((read = string(key)) != Read::whole || (read = next(letter)) != Read::whole) {
                return read;
            }
            if (letter != ':') {
                return Read::other;
            }
            ++at_;
            if ((read = next(letter)) != Read::whole) {
                return read;
            }
            if constexpr (Builds) {
                read = this->value((*members)[std::move(key)], depth);
            } else {
                read = this->value(ignored, depth);
            }
            if (read != Read::whole || (read = next(letter)) != Read::whole) {
                return read;
            }
            ++at_;
            if (letter == '}') {
                return Read::whole;
            }
            if (letter != ',') {
                return Read::other;
            }
            read = next(letter);
        }
        return read;
    }

    Read array(Json& value, int depth) {
        typename Json::array_t* items = nullptr;
        if constexpr (Builds) {
            value = Json(Json::value_t::array);
            items = value.template get_ptr<typename Json::array_t*>();
            items->reserve(16); // a matrix
        }
        ++at_;
        char letter = '\0';
        Read read = next(letter);
        if (read == Read::whole && letter == ']') {
            ++at_;
            return Read::whole;
        }
        Json ignored;
        while (read == Read::whole) {
            if constexpr (Builds) {
                read = this->value(items->emplace_back(), depth);
            } else {
                read = this->value(ignored, depth);
            }
            if (read != Read::whole || (read = next(letter)) != Read::whole) {
                return read;
            }
            ++at_;
            if (letter == ']') {
                return Read::whole;
            }
            if (letter != ',') {
                return Read::other;
            }
            read = next(letter);
        }
        return read;
    }

    Read string(std::string& text) {
        const char* begin = ++at_;
        if constexpr (Builds) {
            text.clear();
        }
        for (;;) {
            while (at_ != end_ && plain::kOrdinary.is[static_cast<unsigned char>(*at_)]) {
                ++at_;
            }
            if (at_ == end_) {
                return Read::cut;
            }
            if constexpr (Builds) {
                text.append(begin, at_);
            }
            if (*at_ == '"') {
                ++at_;
                return Read::whole;
            }
            if (*at_ != '\\') {
                return Read::other;
            }
            if (++at_ == end_) {
                return Read::cut;
            }
            const char letter = plain::unescaped(*at_);
            if (letter == '\0') {
                return Read::other;
            }
            if constexpr (Builds) {
                text += letter;
            }
            begin = ++at_;
        }
    }

    template <class Value>
    Read word(std::string_view word, Json& value, Value meaning) {
        const std::string_view text(at_, std::min(static_cast<std::size_t>(end_ - at_), word.size()));
        if (text != word.substr(0, text.size())) {
            return Read::other;
        }
        if (text.size() != word.size()) {
            return Read::cut;
        }
        at_ += word.size();
        if constexpr (Builds) {
            value = meaning;
        }
        return Read::whole;
    }

    const char* digits(const char* at) const {
        while (at != end_ && plain::isDigit(*at)) {
            ++at;
        }
        return at;
    }

    Read findNumber(plain::Number& number) const {
        const char* at = at_ + (*at_ == '-' ? 1 : 0);
        const char* begin = at;
        at = digits(at);
        if (at == end_) {
            return Read::cut;
        }
        if (at == begin || (*begin == '0' && at - begin > 1)) {
            return Read::other;
        }
        if (*at == '.') {
            begin = ++at;
            at = digits(at);
            if (at == end_) {
                return Read::cut;
            }
            if (at == begin) {
                return Read::other;
            }
            number.isInteger = false;
        }
        const std::ptrdiff_t size = at - at_;
        if (*at == 'e' || *at == 'E') {
            ++at;
            at += at != end_ && (*at == '+' || *at == '-') ? 1 : 0;
            begin = at;
            at = digits(at);
            if (at == end_) {
                return Read::cut;
            }
            if (at == begin || at - begin > 2) {
                return Read::other;
            }
            number.isInteger = false;
        }
        number.end = at;
        return size > (number.isInteger ? plain::kMostIntegerDigits : plain::kMostDigits) ? Read::other : Read::whole;
    }

    Read number(Json& value) {
        plain::Number number;
        const Read read = findNumber(number);
        if (read != Read::whole) {
            return read;
        }
        if constexpr (Builds) {
            if (!number.isInteger) {
                double real = 0.0;
                if (std::from_chars(at_, number.end, real).ec != std::errc()) {
                    return Read::other; // too small for a double
                }
                value = real;
            } else if (*at_ == '-') {
                value = integer<std::int64_t>(number);
            } else {
                value = integer<std::uint64_t>(number);
            }
        }
        at_ = number.end;
        return Read::whole;
    }

    template <class Integer>
    Integer integer(const plain::Number& number) const {
        Integer value = 0;
        std::from_chars(at_, number.end, value);
        return value;
    }

    const char* at_;
    const char* end_;
};

/// A value that is whole ends where `at` is then; else `at` stays.
template <bool Builds, class Json>
Read takePlain(const char*& at, const char* end, Json& value) {
    PlainReader<Json, Builds> reader(at, end);
    const Read read = reader.value(value);
    if (read == Read::whole) {
        at = reader.at();
    }
    return read;
}

} // namespace zent
