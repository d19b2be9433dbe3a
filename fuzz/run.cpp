// Any manifest, scene and resource file, in this order, make a run that ends, and leaves nothing behind. Deformers run,
// and all that a record reads is reported; one run in four writes a results file, which has a line for each record.
#include "support/input.h"

#include "maya/Commands.h"
#include "maya/Scene.h"
#include "scene/sceneFile.h"
#include "zent/check/Check.h"
#include "zent/expression/VM.h"
#include "zent/proxies/Plain.h"
#include "zent/proxies/Registry.h"
#include "zent/results/ResultsReader.h"
#include "zent/tools/Report.h"
#include "zent/values/Port.h"
#include "zent/values/resource.h"

#include <maya/MFnPlugin.h>

#include <cstdlib>
#include <fstream>
#include <memory>
#include <stdexcept>

namespace {

enum Part { kManifest, kScene, kResource, kParts };

std::vector<std::string> words() {
    std::vector<std::string> list{"n.a0",         "n.a1",  "n.a2", "n.a3[0]",   "n.a4[1]",
                                  "|m|mShape.a0", "n.a0X", "n",    "node_name", "n.a7[7].a"};
    for (const auto& proxy : zent::makeProxies()) {
        list.push_back(proxy->name());
    }
    return list;
}

/// The adapter of expressions, which ends one that never would: a loop without end is the program's own.
zent::VM::Floats runBounded(zent::VM::Floats inputs, std::vector<unsigned char> code,
                            std::vector<zent::Value> constants) {
    constexpr std::uint64_t kInstructions = 20000;
    return zent::VM(std::move(code), std::move(constants)).executeAtMost(kInstructions, std::move(inputs));
}

class BoundedExpression : public zent::Plain<runBounded> {
public:
    BoundedExpression() : Plain("expression", "output") {}
};

/// The adapter of pose interpolators, which passes over those whose matrices would only take time.
class BoundedPoses : public zent::Proxy {
    zent::json mayaResult(const std::vector<zent::Port>& ports) const override { return whole_->mayaResult(ports); }
    zent::json zentResult(const zent::Arguments& args) const override {
        constexpr unsigned int kMostPoses = 64;
        constexpr unsigned int kTooMany = 4096; // beyond them there are no matrices
        for (const unsigned int attribute : {3, 4}) {
            for (const zent::Element& element : args.get(attribute).elements()) {
                if (element.index(0) >= kMostPoses && element.index(0) < kTooMany) {
                    throw std::runtime_error("many poses");
                }
            }
        }
        return whole_->zentResult(args);
    }
    std::string name() const override { return whole_->name(); }

    std::unique_ptr<zent::Proxy> whole_ = zent::makeProxy("weightDriverPoses");
};

void registerCommand() {
    zent::ZentCheck::initProxies();
    zent::ZentCheck::addProxy(std::make_unique<BoundedPoses>());
    zent::ZentCheck::addProxy(std::make_unique<BoundedExpression>());
    MObject plugin;
    MFnPlugin(plugin).registerCommand(zent::ZentCheck::name, zent::ZentCheck::creator, zent::ZentCheck::createSyntax);
    MFnPlugin(plugin).registerCommand(zent::ZentReport::kName, zent::ZentReport::creator,
                                      zent::ZentReport::createSyntax);
}

/// A report goes on to the end: its results file is whole.
void report(const std::string& manifest, const std::string& resource) {
    static fuzz::MemoryFile file;
    const std::string& results = file.write("");
    host::runCommand(zent::ZentReport::kName, {"-v", "2", "-rs", results, manifest, resource});
    std::ifstream in(results);
    zent::ResultsReader reader(in);
    zent::ResultRecord record;
    std::uint64_t records = 0;
    while (reader.next(record)) {
        if (record.index != records++) {
            std::abort();
        }
    }
    if (records != reader.header().records || reader.malformedLines() > 0 || !reader.isComplete()) {
        std::abort();
    }
}

/// The storage of a new process.
void resetStorage() {
    delete zent::Element::pResource;
    zent::Element::pResource = nullptr;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    registerCommand();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static fuzz::MemoryFile files[kParts];
    const std::vector<std::string> contents = fuzz::split(data, size, kParts);
    if (fuzz::isMostlyMissing(contents[kResource])) {
        return 0;
    }
    const std::string& manifest = files[kManifest].write(contents[kManifest]);
    const std::string& resource = files[kResource].write(contents[kResource]);
    try {
        if (!contents[kScene].empty()) {
            scene::readSceneFile(files[kScene].write(contents[kScene]), resource, scene::Scene::current());
        }
        if (size % 4 == 0) {
            report(manifest, resource);
        } else {
            host::runCommand("ZentCheck", {"-id", "false", "-x", "false", "-v", "2", manifest, resource});
        }
    } catch (const std::runtime_error&) {
    }
    scene::Scene::current().clear();
    resetStorage();
    return 0;
}

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t room, unsigned seed) {
    static const std::vector<std::string> kWords = words();
    fuzz::Random random(seed);
    std::vector<std::string> files = fuzz::split(data, size, kParts);
    const auto kind = random() % 32;
    if (kind < 18 || (kind < 22 && files[kScene].empty())) {
        files[kManifest] = fuzz::mutateJson(files[kManifest], random, kWords);
    } else if (kind < 22) {
        files[kScene] = fuzz::mutateJson(files[kScene], random, kWords);
    } else if (kind < 31) {
        files[kResource] = fuzz::mutateResource(files[kResource], random);
    } else {
        std::string& file = files[random() % kParts];
        file = fuzz::mutateBytes(file, file.size() + 64);
    }
    return fuzz::put(files, data, size, room);
}
