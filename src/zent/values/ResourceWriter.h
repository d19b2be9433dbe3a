#pragma once

#include "zent/expression/Value.h"
#include "zent/geometry/shapes.h"
#include "zent/geometry/weights.h"

#include <string>
#include <vector>

namespace zent {

/// Builds a resource file block by block, in the forms that `LoadResource` reads. Each `add` returns the block's
/// number, the "id" of a manifest. Mesh, Curve and Surface are written with a last matrix row of 0, 0, 0, 1.
class ResourceWriter {
public:
    unsigned int add(const Mesh& mesh);
    unsigned int add(const Curve& curve);
    unsigned int add(const Surface& surface);
    unsigned int add(const Lattice& lattice);
    unsigned int add(const WeightMap& map);
    unsigned int add(const DeltaList& deltas);
    unsigned int add(const SkinWeights& weights);
    unsigned int add(const WireBindings& bindings);
    unsigned int add(const std::vector<unsigned int>& numbers);
    unsigned int add(const std::vector<unsigned char>& code);
    unsigned int add(const std::vector<Value>& constants);
    /// A block as it stands, well-formed or not.
    unsigned int addBytes(std::string bytes);

    std::size_t size() const { return blocks_.size(); }
    /// The whole file.
    std::string bytes() const;
    /// Throws std::runtime_error if the file cannot be written.
    void write(const std::string& path) const;

private:
    std::string table() const;

    std::vector<std::string> blocks_;
};

} // namespace zent
