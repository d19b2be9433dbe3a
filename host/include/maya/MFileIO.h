#pragma once

#include <maya/MString.h>

/// The open scene's file.
class OPENMAYA_EXPORT MFileIO {
public:
    /// Its path; of the stand-in as its driver was given it, empty for none.
    static MString currentFile();
};
