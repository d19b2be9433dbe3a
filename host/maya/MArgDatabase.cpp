#include <maya/MArgDatabase.h>

#include "setStatus.h"

#include <charconv>
#include <optional>
#include <type_traits>

namespace {

std::optional<bool> parseBool(const std::string& text) {
    if (text == "true" || text == "on" || text == "yes" || text == "1") {
        return true;
    }
    if (text == "false" || text == "off" || text == "no" || text == "0") {
        return false;
    }
    return std::nullopt;
}

template <class T>
std::optional<T> parseWord(const std::string& text) {
    if constexpr (std::is_same_v<T, bool>) {
        return parseBool(text);
    } else if constexpr (std::is_same_v<T, MString>) {
        return MString(text.c_str());
    } else {
        T number{};
        const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), number);
        const bool whole = error == std::errc() && stop == text.data() + text.size();
        return whole ? std::optional<T>(number) : std::nullopt;
    }
}

template <class T>
MStatus assign(const std::string* word, T& value) {
    const std::optional<T> parsed = word == nullptr ? std::nullopt : parseWord<T>(*word);
    if (!parsed) {
        return MStatus::kFailure;
    }
    value = *parsed;
    return MStatus::kSuccess;
}

/// What a word should have been, null if it is right.
const char* expected(MSyntax::MArgType type, const std::string& word) {
    switch (type) {
    case MSyntax::kBoolean:
        return parseWord<bool>(word) ? nullptr : "true or false";
    case MSyntax::kLong:
        return parseWord<int>(word) ? nullptr : "a whole number";
    case MSyntax::kUnsigned:
        return parseWord<unsigned int>(word) ? nullptr : "a whole number, not negative";
    case MSyntax::kDouble:
    case MSyntax::kDistance:
    case MSyntax::kAngle:
    case MSyntax::kTime:
        return parseWord<double>(word) ? nullptr : "a number";
    default:
        return nullptr;
    }
}

} // namespace

MArgDatabase::MArgDatabase(const MSyntax& syntax, const MArgList& arguments, MStatus* status) : syntax_(syntax) {
    for (unsigned int i = 0; i < arguments.length() && problem_.empty(); ++i) {
        const std::string word = arguments.asString(i).asChar();
        if (word.size() < 2 || word.front() != '-') {
            const std::vector<MSyntax::MArgType>& types = syntax.arguments();
            const std::size_t position = arguments_.size();
            if (position >= types.size()) {
                problem_ = "too many arguments: " + word;
            } else if (const char* form = expected(types[position], word)) {
                problem_ = "argument " + word + " should be " + form;
            }
            arguments_.push_back(word);
            continue;
        }
        const MSyntax::Flag* flag = syntax.findFlag(word);
        if (flag == nullptr) {
            problem_ = "unknown flag " + word;
        } else if (flag->type == MSyntax::kNoArg) {
            flagValues_[flag->longName].clear();
        } else if (++i == arguments.length()) {
            problem_ = "flag " + word + " needs a value";
        } else {
            const std::string value = arguments.asString(i).asChar();
            if (const char* form = expected(flag->type, value)) {
                problem_ = "flag " + word + " should be " + form + ", not " + value;
            }
            flagValues_[flag->longName] = value;
        }
    }
    setStatus(status, problem_.empty());
}

bool MArgDatabase::isFlagSet(const char* flag, MStatus* status) const {
    const MSyntax::Flag* known = syntax_.findFlag(flag);
    return setStatus(status, known != nullptr) && flagValues_.count(known->longName) > 0;
}

const std::string* MArgDatabase::flagValue(const char* flag, unsigned int index) const {
    const MSyntax::Flag* known = syntax_.findFlag(flag);
    const auto found = known == nullptr ? flagValues_.end() : flagValues_.find(known->longName);
    return found == flagValues_.end() || index > 0 ? nullptr : &found->second;
}

const std::string* MArgDatabase::argumentValue(unsigned int index) const {
    return index < arguments_.size() ? &arguments_[index] : nullptr;
}

MStatus MArgDatabase::getFlagArgument(const char* flag, unsigned int index, bool& value) const {
    return assign(flagValue(flag, index), value);
}

MStatus MArgDatabase::getFlagArgument(const char* flag, unsigned int index, int& value) const {
    return assign(flagValue(flag, index), value);
}

MStatus MArgDatabase::getFlagArgument(const char* flag, unsigned int index, unsigned int& value) const {
    return assign(flagValue(flag, index), value);
}

MStatus MArgDatabase::getFlagArgument(const char* flag, unsigned int index, double& value) const {
    return assign(flagValue(flag, index), value);
}

MStatus MArgDatabase::getFlagArgument(const char* flag, unsigned int index, MString& value) const {
    return assign(flagValue(flag, index), value);
}

MStatus MArgDatabase::getCommandArgument(unsigned int index, bool& value) const {
    return assign(argumentValue(index), value);
}

MStatus MArgDatabase::getCommandArgument(unsigned int index, int& value) const {
    return assign(argumentValue(index), value);
}

MStatus MArgDatabase::getCommandArgument(unsigned int index, unsigned int& value) const {
    return assign(argumentValue(index), value);
}

MStatus MArgDatabase::getCommandArgument(unsigned int index, double& value) const {
    return assign(argumentValue(index), value);
}

MStatus MArgDatabase::getCommandArgument(unsigned int index, MString& value) const {
    return assign(argumentValue(index), value);
}
