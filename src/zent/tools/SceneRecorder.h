#pragma once

#include "zent/values/ResourceWriter.h"

#include <maya/MObject.h>
#include <maya/MPlug.h>
#include <nlohmann/json.hpp>

#include <map>
#include <set>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace zent {

/// Gathers plugs of the open scene and tells them as a scene file, each with what it is evaluated to now.
///
/// A plug stands in the file with the levels above it and no more of their other parts than a name needs; a compound or
/// a multi that is itself asked for stands there whole. What lies upstream of what is read comes along as far as a
/// chain of records follows it, transforms without a record included. Connections are kept between the nodes that are
/// read, and into what is read of them, with the conversions on the way; but none that would change what a plug reads.
class SceneRecorder {
public:
    /// What the records of a manifest read. Names that lead nowhere are left out, as the check will find. Throws the
    /// JSON library's exceptions where the manifest is none.
    explicit SceneRecorder(const nlohmann::json& manifest);

    /// The scene. Large shapes go into blocks, and "resource" names their file, unless there are none.
    nlohmann::ordered_json scene(ResourceWriter& shapes, const std::string& resource) const;

private:
    /// A plug and what is needed of the plugs below it, by logical index or, of a compound, by position.
    struct Part {
        MPlug plug;
        bool isWhole = false;
        bool isPlaceholder = false; ///< its data comes over a connection
        bool hasTopology = false;
        std::map<unsigned int, Part> below;
    };
    struct Record {
        MObject node;
        std::map<unsigned int, Part> attributes; ///< in the order of the node's own
        std::unordered_map<std::string, unsigned int> positions;
    };

    void addName(const std::string& name, bool asSourceMesh);
    void addNamesakes(const std::string& name);
    Record& recordOf(const MObject& node);
    Part& add(const MPlug& plug);
    /// Whether a plug stands in the file, itself or with what is below it; null for none.
    const Part* find(const MPlug& plug) const;
    void addSource(Part& part, bool asSourceMesh);
    void addUpstream();
    void addConnections();
    void addConnectionsInto(const MPlug& fed);
    bool addConnection(const MPlug& source, const MPlug& fed);

    static nlohmann::ordered_json told(const Part& part, ResourceWriter& shapes);
    static nlohmann::ordered_json toldData(const Part& part, ResourceWriter& shapes);
    static nlohmann::ordered_json toldShape(const Part& part, const MObject& data, ResourceWriter& shapes);

    std::map<std::string, Record> nodes_; ///< by full path
    std::set<std::pair<std::string, std::string>> connections_;
    std::set<std::pair<std::string, bool>> names_;           ///< that were added
    std::vector<MPlug> read_;                                ///< the plugs of those names
    std::unordered_multimap<std::string, MObject> dagNodes_; ///< by their own names, once a name led nowhere
};

} // namespace zent
