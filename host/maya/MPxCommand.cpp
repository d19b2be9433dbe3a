#include <maya/MPxCommand.h>

#include "Commands.h"

MPxCommand::MPxCommand() = default;
MPxCommand::~MPxCommand() = default;

MStatus MPxCommand::doIt(const MArgList&) {
    return MStatus::kSuccess;
}

MStatus MPxCommand::undoIt() {
    return MStatus::kSuccess;
}

MStatus MPxCommand::redoIt() {
    return MStatus::kSuccess;
}

bool MPxCommand::isUndoable() const {
    return false;
}

bool MPxCommand::hasSyntax() const {
    return false;
}

MSyntax MPxCommand::syntax() const {
    return host::runningCall().syntax;
}

void MPxCommand::setResult(bool result) {
    host::runningCall().result = result;
}

void MPxCommand::setResult(int result) {
    host::runningCall().result = result;
}

void MPxCommand::setResult(double result) {
    host::runningCall().result = result;
}

void MPxCommand::setResult(const MString& result) {
    host::runningCall().result = std::string(result.asChar());
}

void MPxCommand::clearResult() {
    host::runningCall().result = {};
}
