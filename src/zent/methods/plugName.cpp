#include "zent/methods/plugName.h"

#include "zent/check/CheckCall.h"
#include "zent/values/Select.h"

#include <boost/algorithm/string/split.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <stdexcept>
#include <vector>

namespace zent {

namespace {

std::vector<std::string> stepsOf(const std::string& path) {
    std::vector<std::string> parts;
    boost::algorithm::split(parts, path, [](char letter) { return letter == '.'; });
    return parts;
}

std::string withoutIndex(const std::string& part) {
    return part.substr(0, part.find('['));
}

/// "name" or "name[3]".
bool isPart(const std::string& part) {
    const std::size_t open = part.find('[');
    if (part.empty() || open == 0) {
        return false;
    }
    if (open == std::string::npos) {
        return part.find(']') == std::string::npos;
    }
    return part.size() > open + 2 && part.find(']') == part.size() - 1 &&
           std::all_of(part.begin() + static_cast<std::ptrdiff_t>(open) + 1, part.end() - 1,
                       [](unsigned char letter) { return std::isdigit(letter) != 0; });
}

} // namespace

std::string lastAttribute(const std::string& name) {
    return withoutIndex(stepsOf(name).back());
}

std::string longPlugName(const MPlug& plug) {
    return toStd(plug.partialName(false, true, true, false, true, true));
}

std::string plugNameProblem(const std::string& name) {
    const std::size_t dot = name.find('.');
    if (dot == 0 || dot == std::string::npos) {
        return fmt::format("\"{}\" is no plug's name: it should be \"node.attribute\"", name);
    }
    for (const std::string& part : stepsOf(name.substr(dot + 1))) {
        if (!isPart(part)) {
            return fmt::format("\"{}\" is no plug's name: \"{}\" is no attribute and no element", name, part);
        }
    }
    return "";
}

std::string plugLookUpProblem(const std::string& name) {
    // Each part must lead on from the one before. The look-up itself passes over a part that does not.
    std::string path = name.substr(0, name.find('.'));
    std::string before;
    try {
        for (const std::string& part : stepsOf(name.substr(path.size() + 1))) {
            path += "." + part;
            const std::string now = longPlugName(selectPlug(path));
            if (now == before || (part.back() == ']' && now.back() != ']')) {
                return fmt::format("\"{}\" leads nowhere in \"{}\": what is read is \"{}\"", part, name, now);
            }
            before = now;
        }
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "";
}

} // namespace zent
