#pragma once

#include <pybind11/pybind11.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

/// What a function is called with: its parameters, the values that Python gave, and their numbers.
namespace zent::python {

namespace py = pybind11;

/// What stands in for an argument that is left out.
enum class Default : std::uint8_t {
    none,     ///< it must be given
    number,   ///< each component is the number; of a list as many entries as the longest list has
    identity, ///< the identity matrix; of a list as above
    empty     ///< an empty list or map
};

/// A parameter of a function, as a table writes it: NAME, NAME:rad for radians, then =NUMBER, =I or =[] for a default.
struct Parameter {
    std::string name;
    std::string unit; ///< "rad", or empty
    Default kind = Default::none;
    float number = 0.0f;
    std::string type;        ///< for a docstring: "(3,) floats"
    std::string annotation;  ///< for a stub: "Array"
    std::string defaultText; ///< as Python writes it
    PyObject* key = nullptr; ///< the interned name, kept for ever
};

enum class Number : std::uint8_t { single, integer, counter, truth };

/// How the numbers of one argument or result lie.
struct Layout {
    Number number = Number::single;
    std::size_t rank = 0;         ///< 0 a number, 1 a vector, 2 a matrix
    std::size_t size[2] = {1, 1}; ///< of each dimension
    bool isList = false;
    std::size_t least = 0; ///< entries of a list
    std::size_t most = SIZE_MAX;

    std::size_t numbers() const { return size[0] * size[1]; }
    std::size_t bytes() const { return numbers() * (number == Number::truth ? 1 : 4); }
};

/// One call of a function: which values there are, and how many rows they ask for.
class Call {
public:
    Call(const char* function, const std::vector<Parameter>& parameters, PyObject* const* values)
        : function_(function), parameters_(parameters), values_(values) {}

    /// Null where it was left out.
    PyObject* value(std::size_t argument) const { return values_[argument]; }
    const Parameter& parameter(std::size_t argument) const { return parameters_[argument]; }

    /// An argument with one more leading dimension. All of them have as many rows.
    void takeRows(std::size_t argument, std::size_t rows);
    void takeLength(std::size_t entries) { longest_ = entries > longest_ ? entries : longest_; }

    bool isBatch() const { return isBatch_; }
    std::size_t rows() const { return rows_; }
    std::size_t longest() const { return longest_; }

    /// "pointConstraint: offset: TEXT", as a TypeError or a ValueError.
    [[noreturn]] void failType(std::size_t argument, const std::string& text) const;
    [[noreturn]] void failValue(std::size_t argument, const std::string& text) const;
    /// The exception that is set in Python, with the argument's name.
    [[noreturn]] void failAsPython(std::size_t argument) const;

    std::size_t row = 0; ///< which one is being evaluated

private:
    std::string named(std::size_t argument, const std::string& text) const;

    const char* function_;
    const std::vector<Parameter>& parameters_;
    PyObject* const* values_;
    bool isBatch_ = false;
    std::size_t rows_ = 1;
    std::size_t rowsFrom_ = 0;
    std::size_t longest_ = 0;
};

/// The numbers of one argument: for one row or for each, a number, a vector, a matrix, or a list of them.
class Numbers {
public:
    Numbers() = default;
    Numbers(const Numbers&) = delete;
    Numbers& operator=(const Numbers&) = delete;

    /// Floats take any real number; integers and truth values take no floats. Throws a TypeError or a ValueError.
    void read(Call& call, std::size_t argument, const Layout& layout);
    /// The same of a value that is a part of an argument, without a default.
    void read(Call& call, std::size_t argument, PyObject* value, const Layout& layout);
    /// After all arguments are read: an omitted list gets its entries.
    void settle(const Call& call, std::size_t argument, const Layout& layout);

    const unsigned char* at(std::size_t row) const { return data_ + row * stride_; }
    std::size_t entries() const { return entries_; } ///< of a list, the same in each row
    bool isRepeated() const { return stride_ == 0; }
    bool hasRows() const { return hasRows_; }
    std::size_t rows() const { return rows_; }

private:
    bool readDirectly(Call& call, std::size_t argument, PyObject* value, const Layout& layout);
    void readArray(Call& call, std::size_t argument, PyObject* value, const Layout& layout);
    void fill(const Parameter& parameter, const Layout& layout, std::size_t entries);

    py::object keep_;
    std::vector<unsigned char> own_;
    unsigned char few_[64] = {};
    const unsigned char* data_ = few_;
    std::size_t stride_ = 0;
    std::size_t entries_ = 1;
    std::size_t rows_ = 1;
    bool hasRows_ = false;
    bool isOmitted_ = false;
};

/// A new array; `rows` and `entries` where it has such dimensions.
py::object newArray(const Layout& layout, const std::size_t* rows, const std::size_t* entries, void*& data);
/// The same over memory that is filled already, which it keeps.
py::object arrayOver(const Layout& layout, const std::size_t* rows, const std::size_t* entries,
                     std::unique_ptr<unsigned char[]> data);
/// One number as Python has it.
py::object toPython(Number number, const void* data);

} // namespace zent::python
