#pragma once

#include <maya/MTypes.h>

#include <functional>
#include <string>

namespace host {

/// What MFileIO::currentFile tells.
OPENMAYA_EXPORT void setSceneFile(std::string path);

/// How far a computation is.
struct Progress {
    int greatest = 0;
    int amount = 0;
    std::string status;
};

/// Where the progress of computations goes; nowhere without a function.
OPENMAYA_EXPORT void setProgressDisplay(std::function<void(const Progress&)> display);

} // namespace host
