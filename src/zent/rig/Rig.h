#pragma once

#include "zent/math/types.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace zent::rig {

class Graph;

/// What a plug of a rig holds.
enum class Type : unsigned char { numbers, mesh, curve, surface, lattice };

/// An input or an output of a rig, by the name of Maya's plug.
struct PlugInfo {
    std::string name;
    Type type = Type::numbers;
    std::size_t size = 0; ///< numbers: 1, 2, 3, 4, or 16 of a matrix; of a shape its points
};

/// A plug of a rig, or some of its numbers: "ctrl.translate", "ctrl.translate.translateX". It stays right as long as
/// the rig lives.
struct PlugId {
    std::uint32_t index = 0; ///< in `inputs()` or `outputs()`
    std::uint32_t first = 0; ///< of its numbers
    std::uint32_t count = 0;
};

/// A record of the manifest, or one that the rig adds for a matrix of the DAG.
struct RecordInfo {
    static constexpr std::size_t kAdded = ~std::size_t{0};

    std::string node;
    std::string method;
    std::size_t index = kAdded;       ///< the record's place in the manifest, from 0
    std::vector<std::size_t> sources; ///< the records that it reads, by their place in `records()`
    std::vector<std::size_t> outputs; ///< its own, by their place in `Rig::outputs()`
};

/// A rig outside Maya: the records of a manifest, evaluated from the controls down with their own values in between. A
/// record's argument whose plug is fed by another record's output is read from there; what no record makes is an input,
/// and has the scene's value until it is set. docs/rig.md tells what is followed, and what is not.
///
/// Distances are scene units, angles radians; a matrix is 16 numbers, row after row as Maya prints it. A rig is for one
/// thread at a time; different rigs do not disturb each other.
class __attribute__((visibility("default"))) Rig {
public:
    /// Of files: a manifest (JSON), its resource file ("" for none) and a scene file (docs/scene-file.md). `nameSpace`
    /// is put before every level of a plug's path. Throws std::runtime_error where one cannot be read. Only one rig is
    /// made at a time, whatever thread asks. The scene is not kept: a rig holds all that it needs.
    static Rig load(const std::string& manifest, const std::string& resource, const std::string& scene,
                    const std::string& nameSpace = "");

    explicit Rig(Graph&& graph);
    Rig(Rig&& other) noexcept;
    Rig& operator=(Rig&& other) noexcept;
    ~Rig();

    /// In an order of evaluation. Records that cannot be read are not among them, see `notes()`.
    const std::vector<RecordInfo>& records() const;
    const std::vector<PlugInfo>& inputs() const;
    const std::vector<PlugInfo>& outputs() const;
    /// What an evaluation leaves out, in words: records that cannot be read, cycles and where they are cut, connections
    /// between types that do not fit, plugs of node types that no method computes.
    const std::vector<std::string>& notes() const;

    /// By a plug's name, with as much of the node's path as tells it from others. Throws std::runtime_error, with the
    /// nearest name, where there is none.
    PlugId input(std::string_view plug) const;
    PlugId output(std::string_view plug) const;

    /// Sets numbers of an input; `count` is the plug's. What is the same as before changes nothing. Throws
    /// std::runtime_error for another number, and for an input that is a shape.
    void setNumbers(PlugId input, const float* numbers, std::size_t count);
    void set(PlugId input, float value) { setNumbers(input, &value, 1); }
    void set(PlugId input, vec3 value) { setNumbers(input, &value.x, 3); }
    void set(PlugId input, const mat4& value) { setNumbers(input, &value[0][0], 16); }
    /// Sets the points of an input that is a shape, in its own space. Throws std::runtime_error for another number of
    /// points, and for an input that is none.
    void setPoints(PlugId input, const vec3* points, std::size_t count);

    /// How many threads an evaluation may use: 1, which it begins with, is the caller's alone, 0 all that the machine
    /// has. Branches that read nothing of one another are evaluated side by side, and the points of a mesh's deformer
    /// are shared out, where that gains; all results are the same bit for bit. The next evaluation measures what each
    /// record costs, and takes some times as long.
    void setThreads(unsigned int threads);
    unsigned int threads() const;

    /// Evaluates the records that depend on an input that changed, and returns how many there were; the first call
    /// evaluates all. Throws std::runtime_error, naming the record, where one cannot be evaluated, after all others
    /// that do not depend on it.
    std::size_t evaluate();

    /// Numbers of an output; `size` tells how many there are. Throws std::runtime_error where the last evaluation did
    /// not make it, or it is a shape.
    const float* numbers(PlugId output) const;
    vec3 vector(PlugId output) const;
    mat4 matrix(PlugId output) const;
    /// Points of an output that is a shape, in its own space, and its object-to-world matrix.
    const std::vector<vec3>& points(PlugId output) const;
    mat4 shapeMatrix(PlugId output) const;

    Graph& graph() { return *graph_; }
    const Graph& graph() const { return *graph_; }

private:
    std::unique_ptr<Graph> graph_;
};

} // namespace zent::rig
