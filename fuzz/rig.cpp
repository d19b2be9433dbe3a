// Any manifest, scene and resource file, in this order, make a rig that can be evaluated and played, or are refused.
#include "support/input.h"

#include "zent/proxies/Registry.h"
#include "zent/rig/Rig.h"

#include <cstdlib>
#include <stdexcept>

namespace {

enum Part { kManifest, kScene, kResource, kParts };

/// Expressions that may run for ever, and poses whose matrices would only take time, are left to the target of runs.
std::string withoutEndless(const std::string& manifest) {
    fuzz::Json records = fuzz::Json::parse(manifest, nullptr, false);
    if (records.is_array()) {
        fuzz::Json kept = fuzz::Json::array();
        for (fuzz::Json& record : records) {
            const auto method = record.is_object() ? record.find("method") : record.end();
            if (!record.is_object() || method == record.end() ||
                (*method != "expression" && *method != "weightDriverPoses")) {
                kept.push_back(std::move(record));
            }
        }
        return kept.dump(-1, ' ', false, fuzz::Json::error_handler_t::replace);
    }
    return manifest;
}

void play(zent::rig::Rig& rig) {
    for (int frame = 0; frame < 2; ++frame) {
        for (std::uint32_t i = 0; i < rig.inputs().size(); ++i) {
            const zent::rig::PlugInfo& info = rig.inputs()[i];
            const std::vector<float> numbers(info.type == zent::rig::Type::numbers ? info.size : 3 * info.size,
                                             0.5f + static_cast<float>(frame));
            const zent::rig::PlugId id{i, 0, static_cast<std::uint32_t>(info.size)};
            if (info.type == zent::rig::Type::numbers) {
                rig.setNumbers(id, numbers.data(), numbers.size());
            } else {
                const std::vector<zent::vec3> points(info.size, zent::vec3(0.5f));
                rig.setPoints(id, points.data(), points.size());
            }
        }
        try {
            rig.evaluate();
        } catch (const std::runtime_error&) { // the others are evaluated
        }
        for (std::uint32_t i = 0; i < rig.outputs().size(); ++i) {
            try {
                const zent::rig::PlugId id{i, 0, 0};
                volatile float read = rig.outputs()[i].type == zent::rig::Type::numbers
                                          ? *rig.numbers(id)
                                          : static_cast<float>(rig.points(id).size());
                static_cast<void>(read);
            } catch (const std::runtime_error&) {
            }
        }
        if (frame == 1 && rig.evaluate() != 0) {
            std::abort(); // nothing has changed
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static fuzz::MemoryFile files[kParts];
    const std::vector<std::string> contents = fuzz::split(data, size, kParts);
    if (fuzz::isMostlyMissing(contents[kResource])) {
        return 0;
    }
    try {
        zent::rig::Rig rig =
            zent::rig::Rig::load(files[kManifest].write(withoutEndless(contents[kManifest])),
                                 contents[kResource].empty() ? "" : files[kResource].write(contents[kResource]),
                                 files[kScene].write(contents[kScene]));
        play(rig);
    } catch (const std::runtime_error&) {
    }
    return 0;
}

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t room, unsigned seed) {
    static const std::vector<std::string> kWords = [] {
        std::vector<std::string> list{"n.a0", "n.a1", "n.a2", "n.a3[0]", "|m|mShape.a0", "n.a0X", "n"};
        for (const auto& proxy : zent::makeProxies()) {
            list.push_back(proxy->name());
        }
        return list;
    }();
    fuzz::Random random(seed);
    std::vector<std::string> files = fuzz::split(data, size, kParts);
    const auto kind = random() % 16;
    if (kind < 8) {
        files[kManifest] = fuzz::mutateJson(files[kManifest], random, kWords);
    } else if (kind < 13) {
        files[kScene] = fuzz::mutateJson(files[kScene], random, kWords);
    } else {
        files[kResource] = fuzz::mutateResource(files[kResource], random);
    }
    return fuzz::put(files, data, size, room);
}
