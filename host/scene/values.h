#pragma once

#include "maya/Slot.h"
#include "scene/Json.h"

#include <maya/MMatrix.h>
#include <maya/MPoint.h>

#include <initializer_list>
#include <string>

/// The plain values of a scene file. A value of the wrong form throws std::runtime_error with the plug it belongs to.
namespace scene {

[[noreturn]] void failAt(const Slot& slot, const std::string& text);

double readNumber(const Slot& slot, const char* name, const Json& value);
/// A whole number from 0 to `last`.
unsigned int readCount(const Slot& slot, const char* name, const Json& value, unsigned int last);
const std::string& readText(const Slot& slot, const char* name, const Json& value);
const Json& requireList(const Slot& slot, const char* name, const Json& value);
const Json& requireList(const Slot& slot, const char* name, const Json& value, std::size_t size);
const Json& requireObject(const Slot& slot, const char* name, const Json& value);
MMatrix readMatrix(const Slot& slot, const char* name, const Json& value);
MPoint readPoint(const Slot& slot, const char* name, const Json& value);

/// One of a few words, by its position among them, counted from 1.
int readWord(const Slot& slot, const char* name, const Json& value, std::initializer_list<const char*> words);

} // namespace scene
