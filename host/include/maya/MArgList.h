#pragma once

#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MStringArray.h>

/// The words of a command's call, flags with a leading "-".
class OPENMAYA_EXPORT MArgList {
public:
    unsigned int length(MStatus* status = nullptr) const;
    MStatus addArg(const MString& word);
    MString asString(unsigned int index, MStatus* status = nullptr) const;

private:
    MStringArray words_;
};
