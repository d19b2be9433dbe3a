#include "zentcheck/CommandFlags.h"

#include <charconv>
#include <cmath>

namespace host {

namespace {

template <class T>
bool isNumber(const std::string& text) {
    T number{};
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && stop == end && std::isfinite(static_cast<double>(number));
}

std::string checkBool(std::string& text) {
    return text == "true" || text == "false" ? "" : "should be true or false, not \"" + text + "\"";
}

std::string checkLevel(std::string& text) {
    return isNumber<unsigned int>(text) ? "" : "should be a whole number from 0 on, not \"" + text + "\"";
}

std::string checkSize(std::string& text) {
    return isNumber<double>(text) && text.front() != '-' ? "" : "should be a number from 0 on, not \"" + text + "\"";
}

std::string checkText(std::string&) {
    return "";
}

} // namespace

std::string checkNumber(std::string& text) {
    return isNumber<double>(text) ? "" : "should be a number, not \"" + text + "\"";
}

std::string checkPositive(std::string& text) {
    return isNumber<double>(text) && std::stod(text) > 0.0 ? "" : "should be a number above 0, not \"" + text + "\"";
}

std::string checkCount(std::string& text) {
    return isNumber<unsigned int>(text) && std::stoul(text) > 0
               ? ""
               : "should be a whole number from 1 on, not \"" + text + "\"";
}

const CommandFlags& commandFlags() {
    static constexpr CommandFlags flags{{
        {"--namespace", "-namespace", "NS", checkText, "Put this namespace before every node's name"},
        {"--output-directory", kLogFolder, "DIR", checkText, "Write the log into DIR/ZentCheckLog.txt"},
        {"--verbose", "-verbose", "N", checkLevel, "1: tell each record's start and end; 2: also its inputs [0]"},
        {"--ignore-deformer", "-ignoreDeformer", "BOOL", checkBool, "Leave out the deformers' records [true]"},
        {"--stop-on-first-error", "-stopOnFirstError", "BOOL", checkBool, "End at the first mismatch [true]"},
        {"--skip", "-skip", "\"a;b\"", checkText, "Leave out the records of these methods"},
        {"--epsilon", "-epsilon", "X", checkNumber, "Two numbers match if they differ by less than X [0.001]"},
        {"--warn", "-warn", "X", checkSize, "Mark records that match but are further off than X", true},
        {"--relative", "-relative", "R", checkSize, "Numbers also match within R times the larger one", true},
        {"--points", "-points", "N", checkLevel, "Write out shapes of up to N points [200000]", true},
    }};
    return flags;
}

} // namespace host
