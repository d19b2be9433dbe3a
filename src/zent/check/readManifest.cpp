#include "zent/check/readManifest.h"

#include <array>
#include <utility>

namespace zent {

namespace {

/// Counts the items of the list that a text is, and throws what the parser finds wrong.
class Syntax : public nlohmann::json_sax<json> {
public:
    bool isList = false;
    std::size_t items = 0;

    bool null() override { return count(); }
    bool boolean(bool) override { return count(); }
    bool number_integer(number_integer_t) override { return count(); }
    bool number_unsigned(number_unsigned_t) override { return count(); }
    bool number_float(number_float_t, const string_t&) override { return count(); }
    bool string(string_t&) override { return count(); }
    bool binary(binary_t&) override { return count(); }
    bool key(string_t&) override { return true; }
    bool start_object(std::size_t) override { return open(); }
    bool end_object() override { return close(); }
    bool start_array(std::size_t) override {
        isList = isList || depth_ == 0;
        return open();
    }
    bool end_array() override { return close(); }
    bool parse_error(std::size_t, const std::string&, const nlohmann::detail::exception& error) override {
        throw error; // NOLINT(cert-err60-cpp): its text is all that is asked for
    }

private:
    bool count() {
        items += depth_ == 1 ? 1 : 0;
        return true;
    }
    bool open() {
        count();
        ++depth_;
        return true;
    }
    bool close() {
        --depth_;
        return true;
    }

    std::size_t depth_ = 0;
};

bool isSpace(char letter) {
    return letter == ' ' || letter == '\t' || letter == '\n' || letter == '\r';
}

/// The end of the item that begins at `at`, in a list of right syntax.
const char* endOfItem(const char* at) {
    std::size_t depth = 0;
    for (;; ++at) {
        switch (*at) {
        case '"':
            for (++at; *at != '"'; ++at) {
                at += *at == '\\' ? 1 : 0;
            }
            break;
        case '{':
        case '[':
            ++depth;
            break;
        case '}':
        case ']':
        case ',':
            if (depth == 0) {
                return at;
            }
            depth -= *at == ',' ? 0 : 1;
            break;
        default:
            break;
        }
    }
}

} // namespace

Manifest::Manifest(std::istream& file) {
    std::array<char, 1U << 16> chunk{};
    while (file.read(chunk.data(), chunk.size()) || file.gcount() > 0) {
        text_.append(chunk.data(), static_cast<std::size_t>(file.gcount()));
    }
    Syntax syntax;
    json::sax_parse(text_, &syntax);
    isList_ = syntax.isList;
    records_ = syntax.items;
    if (!isList_) {
        whole_ = json::parse(text_);
        text_.clear();
    }
}

void Manifest::forEach(const std::function<bool(json&&)>& take) {
    for (json& record : whole_) {
        if (!take(std::move(record))) {
            return;
        }
    }
    if (!isList_) {
        return;
    }
    const char* at = text_.c_str() + text_.find('[');
    for (std::size_t i = 0; i < records_; ++i) {
        const char* begin = at + 1; // behind the bracket or the comma
        while (isSpace(*begin)) {
            ++begin;
        }
        at = endOfItem(begin);
        if (!take(json::parse(begin, at))) {
            return;
        }
    }
}

} // namespace zent
