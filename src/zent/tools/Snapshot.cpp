#include "zent/tools/Snapshot.h"

#include "zent/methods/WholeFiles.h"
#include "zent/tools/flags.h"
#include "zent/tools/SceneRecorder.h"
#include "zent/values/Select.h"

#include <fmt/format.h>

#include <maya/MAnimControl.h>
#include <maya/MArgDatabase.h>
#include <maya/MGlobal.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>
#include <stdexcept>

namespace zent {

namespace {

constexpr double kMostFrames = 1e6;

constexpr Flag kManifest{"m", "manifest", MSyntax::kString};
constexpr Flag kResource{"r", "resource", MSyntax::kString};
constexpr Flag kOutput{"o", "output", MSyntax::kString};
constexpr Flag kNamespace{"ns", "namespace", MSyntax::kString};
constexpr Flag kFrames{"f", "frames", MSyntax::kString};
constexpr Flag kStep{"st", "step", MSyntax::kDouble};

nlohmann::json readManifest(const std::string& path) {
    std::ifstream file(path);
    if (path.empty() || !file.is_open() || std::filesystem::is_directory(path)) {
        throw std::runtime_error("cannot open file " + path);
    }
    std::stringstream text;
    text << file.rdbuf();
    return nlohmann::json::parse(text.str());
}

/// "1-24" or "-3--1" or "7".
std::vector<double> framesOf(const std::string& text, double step) {
    double first = 0.0;
    double last = 0.0;
    int end = -1;
    if (std::sscanf(text.c_str(), "%lf%n-%lf%n", &first, &end, &last, &end) == 1) {
        last = first;
    }
    if (end != static_cast<int>(text.size()) || !(first <= last) || !(step > 0.0)) {
        throw std::runtime_error(
            fmt::format("frames should be such as \"1-24\", in steps above 0, not \"{}\" in steps of {}", text, step));
    }
    if (!((last - first) / step < kMostFrames)) {
        throw std::runtime_error(fmt::format("frames \"{}\" in steps of {} are too many", text, step));
    }
    std::vector<double> frames;
    for (double i = 0.0; first + i * step <= last; i += 1.0) {
        frames.push_back(first + i * step);
    }
    return frames;
}

/// The file of a frame: "####" in the name gives way to its number, or ".1" stands before the extension.
std::string fileOf(const std::string& output, double frame) {
    const std::size_t first = output.find('#');
    if (first != std::string::npos) {
        const std::size_t last = std::min(output.find_first_not_of('#', first), output.size());
        return output.substr(0, first) + fmt::format("{:0{}}", frame, last - first) + output.substr(last);
    }
    std::filesystem::path path(output);
    const std::string extension = path.extension().string();
    path.replace_extension();
    return path.string() + "." + fmt::format("{}", frame) + extension;
}

/// The scene's time, which comes back in the end.
class Clock {
public:
    Clock() : time_(MAnimControl::currentTime()) {}
    Clock(const Clock&) = delete;
    Clock& operator=(const Clock&) = delete;
    ~Clock() { MAnimControl::setCurrentTime(time_); }

    void goTo(double frame) { MAnimControl::setCurrentTime(MTime(frame, frameUnit())); }

private:
    /// A frame is counted in the scene's own unit, where that has frames.
    MTime::Unit frameUnit() const { return time_.unit() > MTime::kMilliseconds ? time_.unit() : MTime::kFilm; }

    MTime time_;
};

int snapshot(const MArgDatabase& database) {
    const std::string output = flagText(database, kOutput);
    if (output.empty()) {
        throw std::runtime_error("-output is missing");
    }
    const nlohmann::json manifest = readManifest(flagText(database, kManifest));
    namescope = flagText(database, kNamespace);
    const std::vector<std::string> inputs{flagText(database, kManifest), flagText(database, kResource), openScene()};
    const auto write = [&](const std::string& path) {
        WholeFiles files(inputs);
        addSnapshot(manifest, path, files);
        files.put();
    };
    if (!database.isFlagSet(kFrames.longName)) {
        write(output);
        return 1;
    }
    double step = 1.0;
    if (database.isFlagSet(kStep.longName)) {
        database.getFlagArgument(kStep.longName, 0, step);
    }
    Clock clock;
    int files = 0;
    for (const double frame : framesOf(flagText(database, kFrames), step)) {
        clock.goTo(frame);
        write(fileOf(output, frame));
        ++files;
    }
    return files;
}

} // namespace

void addSnapshot(const nlohmann::json& manifest, const std::string& output, WholeFiles& files) {
    ResourceWriter shapes;
    const std::string shapesFile = output + ".bin";
    const std::string name = std::filesystem::path(shapesFile).filename().string();
    const std::string scene = SceneRecorder(manifest).scene(shapes, name).dump(1) + "\n";
    if (shapes.size() > 0) {
        files.add(shapesFile, shapes.bytes());
    }
    files.add(output, scene);
}

void* ZentSnapshot::creator() {
    return new ZentSnapshot;
}

MSyntax ZentSnapshot::createSyntax() {
    MSyntax syntax;
    for (const Flag& flag : {kManifest, kResource, kOutput, kNamespace, kFrames, kStep}) {
        syntax.addFlag(flag.shortName, flag.longName, flag.type);
    }
    return syntax;
}

MStatus ZentSnapshot::doIt(const MArgList& args) {
    const MArgDatabase database(syntax(), args);
    const std::string earlier = namescope;
    MStatus status;
    try {
        setResult(snapshot(database));
    } catch (const std::exception& error) {
        MGlobal::displayError(toMaya(std::string(kName) + ": " + error.what()));
        status = MStatus::kFailure;
    }
    namescope = earlier;
    return status;
}

} // namespace zent
