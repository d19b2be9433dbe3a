#pragma once

#include <maya/MStatus.h>

#include <string>
#include <vector>

/// The arguments and flags that a command takes.
class OPENMAYA_EXPORT MSyntax {
public:
    enum MArgType {
        kInvalidArgType,
        kNoArg,
        kBoolean,
        kLong,
        kDouble,
        kString,
        kUnsigned,
        kDistance,
        kAngle,
        kTime,
        kSelectionItem,
        kLastArgType
    };

    /// The stand-in's own: a flag with one argument, or none for kNoArg.
    struct Flag {
        std::string shortName;
        std::string longName;
        MArgType type;
    };

    MStatus addArg(MArgType type);
    MStatus addFlag(const char* shortName, const char* longName, MArgType type = kNoArg);

    /// The stand-in's own.
    const std::vector<MArgType>& arguments() const { return arguments_; }
    const std::vector<Flag>& flags() const { return flags_; }
    /// The flag of a short or long name, with or without its "-"; null for none.
    const Flag* findFlag(const std::string& name) const;

private:
    std::vector<MArgType> arguments_;
    std::vector<Flag> flags_;
};
