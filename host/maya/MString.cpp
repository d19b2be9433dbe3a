#include <maya/MString.h>
#include <maya/MStringArray.h>

#include <charconv>
#include <cstdlib>

int MString::asInt() const {
    int number = 0;
    const char* end = text_.data() + text_.size();
    const auto [stop, error] = std::from_chars(text_.data(), end, number);
    return error == std::errc() && stop == end ? number : 0;
}

double MString::asDouble() const {
    char* stop = nullptr;
    const double number = std::strtod(text_.c_str(), &stop);
    return stop == text_.c_str() + text_.size() ? number : 0.0;
}

MStatus MString::split(char separator, MStringArray& parts) const {
    parts.clear();
    std::size_t start = 0;
    while (start < text_.size()) {
        const std::size_t end = std::min(text_.find(separator, start), text_.size());
        if (end > start) {
            parts.append(MString(text_.data() + start, static_cast<int>(end - start)));
        }
        start = end + 1;
    }
    return MStatus::kSuccess;
}

MString MString::substring(int first, int last) const {
    if (first < 0 || last < first || static_cast<std::size_t>(first) >= text_.size()) {
        return {};
    }
    return {text_.substr(static_cast<std::size_t>(first), static_cast<std::size_t>(last - first) + 1).c_str()};
}

int MString::index(char character) const {
    const std::size_t position = text_.find(character);
    return position == std::string::npos ? -1 : static_cast<int>(position);
}

int MString::rindex(char character) const {
    const std::size_t position = text_.rfind(character);
    return position == std::string::npos ? -1 : static_cast<int>(position);
}
