#include "Session.h"

#include <maya/MComputation.h>
#include <maya/MFileIO.h>

#include <utility>

namespace host {
namespace {

std::string& sceneFile() {
    static std::string path;
    return path;
}

struct ProgressState {
    std::function<void(const Progress&)> display;
    Progress progress;
};

ProgressState& progressState() {
    static ProgressState state;
    return state;
}

} // namespace

void setSceneFile(std::string path) {
    sceneFile() = std::move(path);
}

void setProgressDisplay(std::function<void(const Progress&)> display) {
    progressState().display = std::move(display);
}

} // namespace host

MString MFileIO::currentFile() {
    return host::sceneFile().c_str();
}

void MComputation::beginComputation(bool, bool, bool) {
    host::progressState().progress = {};
}

void MComputation::endComputation() {
    host::progressState().progress = {};
}

void MComputation::setProgressRange(int, int greatest) {
    host::progressState().progress.greatest = greatest;
}

void MComputation::setProgress(int amount) {
    host::ProgressState& state = host::progressState();
    state.progress.amount = amount;
    if (state.display) {
        state.display(state.progress);
    }
}

void MComputation::setProgressStatus(const MString& status) {
    host::progressState().progress.status = status.asChar();
}
