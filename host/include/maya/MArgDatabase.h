#pragma once

#include <maya/MArgList.h>
#include <maya/MSyntax.h>

#include <map>
#include <string>
#include <vector>

/// A command's call, parsed by its syntax. A value that was not given, or that is none of the type asked for, leaves
/// the caller's variable as it was.
class OPENMAYA_EXPORT MArgDatabase {
public:
    MArgDatabase(const MSyntax& syntax, const MArgList& arguments, MStatus* status = nullptr);

    bool isFlagSet(const char* flag, MStatus* status = nullptr) const;
    MStatus getFlagArgument(const char* flag, unsigned int index, bool& value) const;
    MStatus getFlagArgument(const char* flag, unsigned int index, int& value) const;
    MStatus getFlagArgument(const char* flag, unsigned int index, unsigned int& value) const;
    MStatus getFlagArgument(const char* flag, unsigned int index, double& value) const;
    MStatus getFlagArgument(const char* flag, unsigned int index, MString& value) const;
    MStatus getCommandArgument(unsigned int index, bool& value) const;
    MStatus getCommandArgument(unsigned int index, int& value) const;
    MStatus getCommandArgument(unsigned int index, unsigned int& value) const;
    MStatus getCommandArgument(unsigned int index, double& value) const;
    MStatus getCommandArgument(unsigned int index, MString& value) const;

    /// The stand-in's own: what is wrong with the call, empty for nothing.
    const std::string& problem() const { return problem_; }

private:
    const std::string* flagValue(const char* flag, unsigned int index) const;
    const std::string* argumentValue(unsigned int index) const;

    MSyntax syntax_;
    std::map<std::string, std::string> flagValues_; // by long name
    std::vector<std::string> arguments_;
    std::string problem_;
};
