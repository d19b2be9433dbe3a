#pragma once

#include <initializer_list>
#include <vector>

/// What the API's arrays have in common. Not a class of the API: only the arrays derived from it are.
template <class T>
class MArrayOf {
public:
    MArrayOf() = default;
    explicit MArrayOf(unsigned int length) : values_(length) {}
    MArrayOf(unsigned int length, const T& value) : values_(length, value) {}
    MArrayOf(const T* values, unsigned int length) : values_(values, values + length) {}

    unsigned int length() const { return static_cast<unsigned int>(values_.size()); }
    void setLength(unsigned int length) { values_.resize(length); }
    void setSizeIncrement(unsigned int) {}
    void append(const T& value) { values_.push_back(value); }
    void clear() { values_.clear(); }
    void set(const T& value, unsigned int index) { values_[index] = value; }
    T& operator[](unsigned int index) { return values_[index]; }
    const T& operator[](unsigned int index) const { return values_[index]; }

private:
    std::vector<T> values_;
};
