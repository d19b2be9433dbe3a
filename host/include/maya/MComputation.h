#pragma once

#include <maya/MString.h>

/// A long computation, for the progress bar.
class OPENMAYA_EXPORT MComputation {
public:
    void beginComputation(bool showProgressBar = false, bool isInterruptable = true, bool useWaitCursor = true);
    void endComputation();
    void setProgressRange(int least, int greatest);
    void setProgress(int amount);
    void setProgressStatus(const MString& status);
};
