#pragma once

#include <maya/MTypes.h>

#include <functional>
#include <string>

namespace host {

/// Where the three display operations of MGlobal go.
struct Display {
    std::function<void(const std::string&)> info;
    std::function<void(const std::string&)> warning;
    std::function<void(const std::string&)> error;
};

/// Replaces the display; an operation without a function goes nowhere.
OPENMAYA_EXPORT void setDisplay(Display display);

} // namespace host
