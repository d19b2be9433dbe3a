#pragma once

#include "zent/expression/Value.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace zent {

/// The native functions of the expression machine. A function's number is the 16-bit complement of its index in the
/// table, so that the numbers lie above every position in the byte code: 0xFFFF is the first, 0xFFDB the last.
class Builtin {
public:
    /// Gets a pointer to its first argument, and reads as many as it needs.
    using Function = std::function<Value(Value*)>;
    /// The same, as the machine calls it; the result may take the place of an argument.
    using Native = void (*)(const Value* args, Value& result);

    /// Fills the two tables below the first time; they fill themselves at their first use, too.
    static void init();

    /// The function of a number. Throws std::runtime_error, "there is no built-in NUMBER", for one that does not exist.
    static const Function& get_function(unsigned short id);
    /// The same function, with no object around it. Throws as `get_function`.
    static Native native(unsigned short id);
    /// The same for a call with so many arguments; null where it reads more of them.
    static Native nativeOf(unsigned short id, unsigned count);
    /// How many arguments the function reads. Throws as `get_function`.
    static unsigned arity(unsigned short id);
    /// The name of a number, null if there is none. "abs" has two numbers, and the map below knows the higher index.
    static const char* name(unsigned short id);

    static const std::vector<Function>& natives();
    /// From name to number.
    static const std::map<std::string, unsigned short>& LUT_address();
};

} // namespace zent
