#include "zent/check/readManifest.h"

#include "zent/check/plainJson.h"

#include <algorithm>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

namespace zent {

namespace {

constexpr std::size_t kMostMarks = std::size_t{1} << 14;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF"; // which the library passes over, too

/// Takes no notice of what a text holds, and throws what the parser finds wrong.
class SyntaxOnly : public nlohmann::json_sax<json> {
public:
    bool null() override { return true; }
    bool boolean(bool) override { return true; }
    bool number_integer(number_integer_t) override { return true; }
    bool number_unsigned(number_unsigned_t) override { return true; }
    bool number_float(number_float_t, const string_t&) override { return true; }
    bool string(string_t&) override { return true; }
    bool binary(binary_t&) override { return true; }
    bool key(string_t&) override { return true; }
    bool start_object(std::size_t) override { return true; }
    bool end_object() override { return true; }
    bool start_array(std::size_t) override { return true; }
    bool end_array() override { return true; }
    bool parse_error(std::size_t, const std::string&, const nlohmann::detail::exception& error) override {
        throw error; // NOLINT(cert-err60-cpp): its text is all that is asked for
    }
};

[[noreturn]] void failChanged() {
    throw std::runtime_error("the manifest changed while it was read");
}

} // namespace

TextWindow::TextWindow(std::istream& file, std::size_t chunk)
    : file_(&file), chunk_(chunk), keepsAll_(file.tellg() != std::istream::pos_type(0)), text_(chunk) {
    file.clear(); // a pipe does not tell where it is
}

char TextWindow::next() {
    for (;;) {
        moveTo(passSpace(at(), end()));
        if (at() != end()) {
            return *at();
        }
        if (!grow()) {
            return '\0';
        }
    }
}

bool TextWindow::grow() {
    if (!keepsAll_) {
        std::copy(at(), end(), text_.begin());
        offset_ += at_;
        size_ -= at_;
        at_ = 0;
    }
    if (text_.size() - size_ < chunk_ / 2) {
        text_.resize(2 * text_.size());
    }
    file_->read(text_.data() + size_, static_cast<std::streamsize>(text_.size() - size_));
    size_ += static_cast<std::size_t>(file_->gcount());
    return file_->gcount() > 0;
}

void TextWindow::seek(std::size_t offset) {
    if (offset < offset_ || offset > offset_ + size_) {
        file_->clear();
        file_->seekg(static_cast<std::streamoff>(offset));
        offset_ = offset;
        size_ = 0;
    }
    at_ = offset - offset_;
}

Manifest::Manifest(std::istream& file, std::size_t chunk) : window_(file, chunk) {
    while (window_.end() - window_.at() < static_cast<std::ptrdiff_t>(kByteOrderMark.size()) && window_.grow()) {
    }
    const std::string_view start(window_.at(), static_cast<std::size_t>(window_.end() - window_.at()));
    if (start.substr(0, kByteOrderMark.size()) == kByteOrderMark) {
        window_.moveTo(window_.at() + kByteOrderMark.size());
    }
    isList_ = window_.next() == '[';
    if (isList_) {
        if (!findRecords()) {
            passWithLibrary();
            failChanged();
        }
        return;
    }
    window_.seek(0);
    std::string text;
    do {
        text.append(window_.at(), window_.end());
        window_.moveTo(window_.end());
    } while (window_.grow());
    whole_ = json::parse(text);
}

/// False where the library has to tell what is wrong.
bool Manifest::findRecords() {
    window_.moveTo(window_.at() + 1);
    for (char letter = window_.next(); letter != ']'; letter = window_.next()) {
        if (records_ > 0) {
            if (letter != ',') {
                return false;
            }
            window_.moveTo(window_.at() + 1);
            window_.next();
        }
        addMark();
        if (!passRecord()) {
            return false;
        }
        ++records_;
    }
    window_.moveTo(window_.at() + 1);
    window_.next();
    if (window_.at() != window_.end()) {
        passWithLibrary(); // which takes a zero for the end
    }
    return true;
}

void Manifest::addMark() {
    if (marks_.size() == kMostMarks && records_ % step_ == 0) {
        for (std::size_t i = 0; i < kMostMarks / 2; ++i) {
            marks_[i] = marks_[2 * i];
        }
        marks_.resize(kMostMarks / 2);
        step_ *= 2;
    }
    if (records_ % step_ == 0) {
        marks_.push_back(window_.offset());
    }
}

bool Manifest::passRecord() {
    for (;;) {
        const char* at = window_.at();
        const Read read = passPlain(at, window_.end());
        if (read == Read::whole) {
            window_.moveTo(at);
            return true;
        }
        if (read == Read::other) {
            break;
        }
        if (!window_.grow()) {
            return false;
        }
    }
    // At the start and at the end of a text the library takes what it takes nowhere else: a byte order mark, a zero.
    const char* end = nullptr;
    if (!findOddEnd(end) || *window_.at() == kByteOrderMark.front() || std::find(window_.at(), end, '\0') != end ||
        !json::accept(window_.at(), end)) {
        return false;
    }
    window_.moveTo(end);
    return true;
}

/// Of a record that is not plain.
bool Manifest::findOddEnd(const char*& end) {
    for (;;) {
        end = window_.at();
        if (passAny(end, window_.end()) == Read::whole) {
            return true;
        }
        if (!window_.grow()) {
            return false;
        }
    }
}

/// Throws what the library finds wrong with the file.
void Manifest::passWithLibrary() {
    SyntaxOnly syntax;
    window_.seek(0);
    if (window_.keepsAll()) {
        while (window_.grow()) {
        }
        json::sax_parse(window_.at(), window_.end(), &syntax);
        return;
    }
    window_.file().clear();
    window_.file().seekg(0);
    json::sax_parse(window_.file(), &syntax);
}

json Manifest::readRecord() {
    json record;
    for (;;) {
        const char* at = window_.at();
        const Read read = readPlain(at, window_.end(), record);
        if (read == Read::whole) {
            window_.moveTo(at);
            return record;
        }
        if (read == Read::other) {
            break;
        }
        if (!window_.grow()) {
            failChanged();
        }
    }
    const char* end = nullptr;
    if (!findOddEnd(end)) {
        failChanged();
    }
    record = json::parse(window_.at(), end);
    window_.moveTo(end);
    return record;
}

void Manifest::forEach(const std::function<bool(json&&)>& take) {
    for (json& record : whole_) {
        if (!take(std::move(record))) {
            return;
        }
    }
    if (isList_) {
        forEach(0, records_, take);
    }
}

void Manifest::forEach(std::size_t first, std::size_t count, const std::function<bool(json&&)>& take) {
    for (std::size_t i = 0; i < count; ++i) {
        if (i == 0) {
            window_.seek(marks_.at(first / step_));
        } else {
            if (window_.next() != ',') {
                failChanged();
            }
            window_.moveTo(window_.at() + 1);
            window_.next();
        }
        if (!take(readRecord())) {
            return;
        }
    }
}

void Manifest::readFrom(std::istream& file) {
    if (!window_.keepsAll()) {
        window_ = TextWindow(file, window_.chunk());
    }
}

} // namespace zent
