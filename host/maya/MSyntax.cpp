#include <maya/MSyntax.h>

namespace {

std::string withoutDash(const std::string& name) {
    return name.empty() || name.front() != '-' ? name : name.substr(1);
}

} // namespace

MStatus MSyntax::addArg(MArgType type) {
    arguments_.push_back(type);
    return MStatus::kSuccess;
}

MStatus MSyntax::addFlag(const char* shortName, const char* longName, MArgType type) {
    if (findFlag(shortName) != nullptr || findFlag(longName) != nullptr) {
        return MStatus::kInvalidParameter;
    }
    flags_.push_back({withoutDash(shortName), withoutDash(longName), type});
    return MStatus::kSuccess;
}

const MSyntax::Flag* MSyntax::findFlag(const std::string& name) const {
    const std::string bare = withoutDash(name);
    for (const Flag& flag : flags_) {
        if (flag.shortName == bare || flag.longName == bare) {
            return &flag;
        }
    }
    return nullptr;
}
