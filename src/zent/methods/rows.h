#pragma once

namespace zent {

/// A row as it is written down: lists are separated by ";".
struct WrittenRow {
    const char* method;
    const char* types;
    const char* results;
    const char* arguments;
    const char* guards;
};

/// The rows of `kWrittenRows`, up to one without a method.
extern const WrittenRow kWrittenRows[];

} // namespace zent
