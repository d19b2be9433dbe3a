#pragma once

#define OPENMAYA_EXPORT __attribute__((visibility("default")))

class MSyntax;

using int2 = int[2];

/// Makes a command's object, for MFnPlugin::registerCommand.
using MCreatorFunction = void* (*)();
using MCreateSyntaxFunction = MSyntax (*)();
