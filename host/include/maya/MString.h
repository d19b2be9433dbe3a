#pragma once

#include <maya/MStatus.h>

#include <string>

class MStringArray;

/// A text.
class OPENMAYA_EXPORT MString {
public:
    MString() = default;
    MString(const char* text) : text_(text) {}
    MString(const char* text, int length) : text_(text, static_cast<std::size_t>(length)) {}

    const char* asChar() const { return text_.c_str(); }
    const char* asUTF8() const { return text_.c_str(); }
    unsigned int length() const { return static_cast<unsigned int>(text_.size()); }
    unsigned int numChars() const { return length(); }

    /// The whole text as a number; 0 where it is none.
    int asInt() const;
    double asDouble() const;
    /// The parts between separators; empty ones are left out.
    MStatus split(char separator, MStringArray& parts) const;
    /// Characters `first` to `last`, both included.
    MString substring(int first, int last) const;
    /// The position of a character's first (last) occurrence, -1 for none.
    int index(char character) const;
    int rindex(char character) const;
    void clear() { text_.clear(); }

    MString& operator+=(const MString& other) {
        text_ += other.text_;
        return *this;
    }
    MString operator+(const MString& other) const { return MString(*this) += other; }
    bool operator==(const MString& other) const { return text_ == other.text_; }
    bool operator!=(const MString& other) const { return text_ != other.text_; }

private:
    std::string text_;
};

inline MString operator+(const char* left, const MString& right) {
    return MString(left) + right;
}
inline bool operator==(const char* left, const MString& right) {
    return right == left;
}
