// Any scene and resource file, in this order, make a manifest in which lint finds nothing that an export could have
// known, and a snapshot of what it reads, which opens. Lint also takes the scene file's text for a manifest.
#include "support/input.h"

#include "maya/Scene.h"
#include "scene/sceneFile.h"
#include "zent/methods/Exporter.h"
#include "zent/methods/Lint.h"
#include "zent/methods/NodeTable.h"
#include "zent/methods/WholeFiles.h"
#include "zent/tools/SceneRecorder.h"
#include "zent/values/Select.h"

#include <maya/MGlobal.h>
#include <maya/MSelectionList.h>

#include <cstdio>
#include <cstdlib>
#include <stdexcept>

namespace {

enum Part { kScene, kResource, kParts };

/// What an export takes as it finds it: an order that lists really have, or an element that Maya makes when it is read.
bool isOfTheScene(const zent::Mistake& mistake) {
    return mistake.text.find("should ascend") != std::string::npos ||
           mistake.text.find("has no element") != std::string::npos;
}

std::vector<std::string> words() {
    std::vector<std::string> list{"n.a",   "type", "groupParts", "ikRPsolver", "vtx[0:2]",
                                  "cv[*]", "|a|b", "time",       "left:a"};
    for (const zent::NodeRow& row : zent::nodeTable()) {
        list.push_back(row.types.front().name);
        for (const std::vector<zent::Source>* sources : {&row.results, &row.arguments}) {
            for (const zent::Source& source : *sources) {
                list.push_back(source.text.substr(0, source.text.find_first_of("[.")));
            }
        }
    }
    return list;
}

zent::json exported(bool isOfHistory) {
    zent::ExportSettings settings;
    settings.manifest = "m";
    settings.resource = "r";
    settings.onlySelected = isOfHistory;
    settings.withHistory = isOfHistory;
    zent::WholeFiles files; // nothing is put on the disk
    return zent::json::parse(zent::exportManifest(settings, files).manifest);
}

void requireOpens(const nlohmann::json& manifest) {
    static fuzz::MemoryFile scene;
    static fuzz::MemoryFile shapes;
    zent::ResourceWriter writer;
    const std::string& shapesPath = shapes.write("");
    const std::string text =
        zent::SceneRecorder(manifest).scene(writer, shapesPath.substr(shapesPath.rfind('/') + 1)).dump();
    shapes.write(writer.bytes());
    scene::Scene::current().clear();
    try {
        scene::readSceneFile(scene.write(text), "", scene::Scene::current());
    } catch (const std::runtime_error& error) {
        std::fprintf(stderr, "%s\n%s\n", error.what(), text.c_str());
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static fuzz::MemoryFile files[kParts];
    const std::vector<std::string> contents = fuzz::split(data, size, kParts);
    if (fuzz::isMostlyMissing(contents[kResource])) {
        return 0;
    }
    if (const zent::json text = zent::json::parse(contents[kScene], nullptr, false); text.is_structured()) {
        zent::lint(text, {});
    }
    try {
        scene::readSceneFile(files[kScene].write(contents[kScene]), files[kResource].write(contents[kResource]),
                             scene::Scene::current());
    } catch (const std::runtime_error&) {
        scene::Scene::current().clear();
        return 0;
    }
    exported(true);
    const zent::json manifest = exported(false);
    zent::LintSettings settings;
    settings.hasScene = true;
    for (const zent::Mistake& mistake : zent::lint(manifest, settings)) {
        if (!isOfTheScene(mistake)) {
            std::fprintf(stderr, "%s\n", mistake.inWords().c_str());
            std::abort();
        }
    }
    requireOpens(nlohmann::json::parse(manifest.dump()));
    scene::Scene::current().clear();
    return 0;
}

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t room, unsigned seed) {
    static const std::vector<std::string> kWords = words();
    fuzz::Random random(seed);
    std::vector<std::string> files = fuzz::split(data, size, kParts);
    const auto kind = random() % 16;
    if (kind < 13) {
        files[kScene] = fuzz::mutateJson(files[kScene], random, kWords);
    } else if (kind < 14) {
        files[kScene] = fuzz::mutateBytes(files[kScene], files[kScene].size() + 64);
    } else {
        files[kResource] = fuzz::mutateResource(files[kResource], random);
    }
    return fuzz::put(files, data, size, room);
}
