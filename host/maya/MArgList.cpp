#include <maya/MArgList.h>

#include "setStatus.h"

unsigned int MArgList::length(MStatus* status) const {
    setStatus(status, true);
    return words_.length();
}

MStatus MArgList::addArg(const MString& word) {
    words_.append(word);
    return MStatus::kSuccess;
}

MString MArgList::asString(unsigned int index, MStatus* status) const {
    return setStatus(status, index < words_.length()) ? words_[index] : MString();
}
