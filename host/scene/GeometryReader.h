#pragma once

#include "maya/Data.h"
#include "maya/Slot.h"
#include "scene/Json.h"

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace scene {

/// Reads the geometry of a scene file, whether it is told in place or lies in a block of a resource file. The resource
/// file is read when the first block is asked for, and plugs that ask for one block share it.
class GeometryReader {
public:
    explicit GeometryReader(std::string resourceFile);
    GeometryReader(const GeometryReader&) = delete;
    GeometryReader& operator=(const GeometryReader&) = delete;
    ~GeometryReader();

    /// Another resource file than that of the constructor, before any geometry is read.
    void setFile(std::string resourceFile) { resourceFile_ = std::move(resourceFile); }

    /// T is MeshData, CurveData, SurfaceData or LatticeData.
    template <class T>
    std::shared_ptr<const Object> read(const Slot& slot, const Json& value);

private:
    struct Resources;

    Resources& resources(const Slot& slot);
    const std::vector<unsigned int>& indexList(const Slot& slot, unsigned int id);

    template <class T>
    std::shared_ptr<const Object> readBlock(const Slot& slot, unsigned int id);

    std::string resourceFile_;
    std::unique_ptr<Resources> resources_;
};

} // namespace scene
