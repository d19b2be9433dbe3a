#pragma once

#include "zent/check/Run.h"

#include <maya/MArgDatabase.h>
#include <maya/MComputation.h>
#include <maya/MString.h>
#include <maya/MSyntax.h>

#include <chrono>
#include <cstddef>
#include <string>
#include <vector>

/// What the commands that check a manifest have in common: the call MANIFEST RESOURCE with its flags, and where they
/// show what they have to say.
namespace zent {

struct Flag {
    const char* shortName;
    const char* longName;
    MSyntax::MArgType type;
};

std::string toStd(const MString& text);

/// The seven flags.
const std::vector<Flag>& checkFlags();

/// The two arguments and the seven flags.
void addCheckSyntax(MSyntax& syntax);

/// The settings with what the flags say; sets `namescope`, and points the Log at a file or at Maya's messages.
void readCheckFlags(const MArgDatabase& database, RunSettings& settings);

/// Maya's progress bar, for as long as this lives.
class MayaProgress : public RunProgress {
public:
    explicit MayaProgress(std::size_t records);
    MayaProgress(const MayaProgress&) = delete;
    MayaProgress& operator=(const MayaProgress&) = delete;
    ~MayaProgress();

    void beginRecord(const std::string& node, const std::string& method) override;
    void beginPoints() override;

private:
    using Clock = std::chrono::steady_clock;

    void show();

    MComputation computation_;
    int record_ = 0;
    const std::string* node_ = nullptr; ///< both for as long as the run is at that record
    const std::string* method_ = nullptr;
    Clock::time_point shown_;
};

/// Maya's messages, and its progress bar.
Display mayaDisplay(RunProgress* progress = nullptr);

/// Ends a call: closes the Log, and marks the resource storage as not loaded.
void endCheckCall();

} // namespace zent
