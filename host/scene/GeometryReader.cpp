#include "scene/GeometryReader.h"

#include "scene/fromBlock.h"
#include "scene/geometryForms.h"
#include "scene/values.h"

#include <zent/values/resource.h>

#include <fmt/format.h>

#include <any>
#include <fstream>
#include <limits>
#include <stdexcept>

namespace scene {

struct GeometryReader::Resources {
    zent::ResourceStorage storage;
    std::map<unsigned int, std::shared_ptr<const Object>> made;
};

GeometryReader::GeometryReader(std::string resourceFile) : resourceFile_(std::move(resourceFile)) {}

GeometryReader::~GeometryReader() = default;

GeometryReader::Resources& GeometryReader::resources(const Slot& slot) {
    if (resources_ == nullptr) {
        if (!std::ifstream(resourceFile_).is_open()) {
            failAt(slot, resourceFile_.empty() ? "lies in a resource file, and none was given"
                                               : fmt::format("cannot read resource file \"{}\"", resourceFile_));
        }
        resources_ = std::make_unique<Resources>();
        try {
            resources_->storage.load(resourceFile_);
        } catch (const std::length_error&) {
            failAt(slot, fmt::format("\"{}\" is no resource file: its table has impossible sizes", resourceFile_));
        }
    }
    return *resources_;
}

const std::vector<unsigned int>& GeometryReader::indexList(const Slot& slot, unsigned int id) {
    zent::ResourceStorage& storage = resources(slot).storage;
    try {
        return storage.get<std::vector<unsigned int>>(id);
    } catch (const std::exception& error) {
        failAt(slot, fmt::format("block {} of the resource file: {}", id, error.what()));
    }
}

template <class T>
std::shared_ptr<const Object> GeometryReader::readBlock(const Slot& slot, unsigned int id) {
    Resources& blocks = resources(slot);
    std::shared_ptr<const Object>& made = blocks.made[id];
    try {
        if (made == nullptr) {
            made = fromBlock(blocks.storage.get<BlockOf<T>>(id));
        }
    } catch (const std::exception& error) {
        failAt(slot, fmt::format("block {} of the resource file: {}", id, error.what()));
    }
    if (made->type != T::kType) {
        failAt(slot, fmt::format("block {} of the resource file is in use for another kind of geometry", id));
    }
    return made;
}

template <class T>
std::shared_ptr<const Object> GeometryReader::read(const Slot& slot, const Json& value) {
    for (const auto& [key, member] : members(requireObject(slot, "geometry", value))) {
        if (key == "id") {
            const unsigned int id = readCount(slot, "id", member, std::numeric_limits<unsigned int>::max());
            return withMembers<T>(
                slot, readBlock<T>(slot, id), value,
                [this, &slot](unsigned int list) -> const std::vector<unsigned int>& { return indexList(slot, list); });
        }
    }
    return readGeometryForm<T>(slot, value);
}

template std::shared_ptr<const Object> GeometryReader::read<MeshData>(const Slot&, const Json&);
template std::shared_ptr<const Object> GeometryReader::read<CurveData>(const Slot&, const Json&);
template std::shared_ptr<const Object> GeometryReader::read<SurfaceData>(const Slot&, const Json&);
template std::shared_ptr<const Object> GeometryReader::read<LatticeData>(const Slot&, const Json&);

} // namespace scene
