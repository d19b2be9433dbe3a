#include "scene/geometryForms.h"

#include "scene/values.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstring>
#include <initializer_list>
#include <limits>
#include <string_view>

namespace scene {

namespace {

constexpr unsigned int kMaxDegree = 7;

/// Takes the members of a geometry's object by name; what nobody takes is a mistake.
class Fields {
public:
    Fields(const Slot& slot, const Json& value) : slot_(slot), value_(value) {
        for (auto member = members(value).begin(); member != members(value).end(); ++member) {
            if (find(member->first.c_str()) != &member->second) {
                failAt(slot, fmt::format("the geometry has two \"{}\"", member->first));
            }
        }
    }

    /// The member of a name, null for none.
    const Json* find(const char* name) const {
        for (const auto& [key, member] : members(value_)) {
            if (key == name) {
                return &member;
            }
        }
        return nullptr;
    }

    const Json& get(const char* name) const {
        const Json* member = find(name);
        if (member == nullptr) {
            failAt(slot_, fmt::format("the geometry has no \"{}\"", name));
        }
        return *member;
    }

    void requireOnly(std::initializer_list<std::string_view> names) const {
        for (const auto& [key, member] : members(value_)) {
            if (std::find(names.begin(), names.end(), key) == names.end()) {
                failAt(slot_, fmt::format("the geometry has no use for \"{}\"", key));
            }
        }
    }

private:
    const Slot& slot_;
    const Json& value_;
};

template <class T>
std::shared_ptr<T> newGeometry(const Slot& slot, const Fields& fields) {
    auto data = std::make_shared<T>();
    data->type = T::kType;
    if (const Json* matrix = fields.find("matrix")) {
        data->transform = readMatrix(slot, "matrix", *matrix);
    }
    return data;
}

MPointArray readPoints(const Slot& slot, const Json& value) {
    MPointArray points;
    for (const Json& point : requireList(slot, "points", value)) {
        points.append(readPoint(slot, "points", point));
    }
    return points;
}

MDoubleArray readKnots(const Slot& slot, const char* name, const Json& value) {
    MDoubleArray knots;
    for (const Json& knot : requireList(slot, name, value)) {
        knots.append(readNumber(slot, name, knot));
    }
    return knots;
}

int readForm(const Slot& slot, const Json& value) {
    return readWord(slot, "form", value, {"open", "closed", "periodic"});
}

int readDegree(const Slot& slot, const Json& value) {
    const unsigned int degree = readCount(slot, "degree", value, kMaxDegree);
    if (degree == 0) {
        failAt(slot, "\"degree\" should be at least 1");
    }
    return static_cast<int>(degree);
}

/// The control points of one direction that a number of knots stands for.
unsigned int pointsOf(const Slot& slot, const char* name, int degree, unsigned int knots) {
    const auto order = static_cast<unsigned int>(degree);
    if (knots < 2 * order) {
        failAt(slot, fmt::format("\"{}\" has {} entries, degree {} needs {} or more", name, knots, degree, 2 * order));
    }
    return knots - order + 1;
}

void requirePoints(const Slot& slot, unsigned int points, unsigned long long needed, const char* what) {
    if (points != needed) {
        failAt(slot, fmt::format("\"points\" has {} entries, {} need {}", points, what, needed));
    }
}

/// Lists of indices below `bound`.
Lists readIndexLists(const Slot& slot, const char* name, const Json& value, std::size_t bound) {
    Lists lists;
    for (const Json& item : requireList(slot, name, value)) {
        for (const Json& index : requireList(slot, name, item)) {
            if (!index.is_number_unsigned() || index.get<std::uint64_t>() >= bound) {
                failAt(slot, fmt::format("\"{}\"[{}] holds {}, which is no index below {}", name, lists.size(),
                                         index.dump(), bound));
            }
            lists.values.push_back(index.get<int>());
        }
        lists.ends.push_back(lists.values.size());
    }
    return lists;
}

UvSet readUvSet(const Slot& slot, const std::string& name, const Json& value, const Lists& polygons) {
    const Fields fields(slot, requireObject(slot, name.c_str(), value));
    fields.requireOnly({"uvs", "polygons"});
    UvSet set;
    for (const Json& uv : requireList(slot, "uvs", fields.get("uvs"))) {
        requireList(slot, "uvs", uv, 2);
        set.uvs.push_back(
            {static_cast<float>(readNumber(slot, "uvs", uv[0])), static_cast<float>(readNumber(slot, "uvs", uv[1]))});
    }
    set.polygons = readIndexLists(slot, "polygons", fields.get("polygons"), set.uvs.size());
    if (set.polygons.size() != polygons.size()) {
        failAt(slot, fmt::format("UV set \"{}\" has {} polygons, the mesh has {}", name, set.polygons.size(),
                                 polygons.size()));
    }
    for (std::size_t i = 0; i < polygons.size(); ++i) {
        if (set.polygons.length(i) != 0 && set.polygons.length(i) != polygons.length(i)) {
            failAt(slot, fmt::format("polygon {} of UV set \"{}\" has {} entries, its vertices are {}", i, name,
                                     set.polygons.length(i), polygons.length(i)));
        }
    }
    return set;
}

/// The polygons and UV sets of a mesh in one list of numbers, as docs/scene-file.md tells of it.
class TopologyList {
public:
    TopologyList(const Slot& slot, const std::vector<unsigned int>& numbers) : slot_(slot), numbers_(numbers) {}

    void read(MeshData& mesh, const Json& names) {
        const unsigned int count = takeCount();
        mesh.polygons = takeLists(count, mesh.points->length());
        for (const Json& name : requireList(slot_, "uvSets", names)) {
            UvSet set;
            set.uvs.resize(takeCount());
            for (auto& [u, v] : set.uvs) {
                u = takeFloat();
                v = takeFloat();
            }
            set.polygons = takeLists(count, set.uvs.size());
            for (std::size_t i = 0; i < count; ++i) {
                if (set.polygons.length(i) != 0 && set.polygons.length(i) != mesh.polygons.length(i)) {
                    failAt(slot_, fmt::format("polygon {} of a UV set has {} entries, its vertices are {}", i,
                                              set.polygons.length(i), mesh.polygons.length(i)));
                }
            }
            mesh.uvSets.emplace_back(readText(slot_, "uvSets", name), std::move(set));
        }
        if (at_ != numbers_.size()) {
            failAt(slot_, fmt::format("\"topology\" has {} numbers, its counts ask for {}", numbers_.size(), at_));
        }
    }

private:
    unsigned int take() {
        if (at_ == numbers_.size()) {
            failAt(slot_, fmt::format("\"topology\" ends after {} numbers, its counts ask for more", at_));
        }
        return numbers_[at_++];
    }
    float takeFloat() {
        const unsigned int bits = take();
        float value = 0.0f;
        std::memcpy(&value, &bits, sizeof value);
        return value;
    }
    /// No more than there are numbers left.
    unsigned int takeCount() {
        const unsigned int count = take();
        if (count > numbers_.size() - at_) {
            failAt(slot_, fmt::format("\"topology\" has {} numbers, its counts ask for more", numbers_.size()));
        }
        return count;
    }
    Lists takeLists(std::size_t count, std::size_t bound) {
        Lists lists;
        std::size_t end = 0;
        for (std::size_t i = 0; i < count; ++i) {
            end += take();
            lists.ends.push_back(end);
        }
        if (end > numbers_.size() - at_) {
            failAt(slot_, fmt::format("\"topology\" has {} numbers, its counts ask for more", numbers_.size()));
        }
        for (std::size_t i = 0; i < end; ++i) {
            const unsigned int index = take();
            if (index >= bound) {
                failAt(slot_, fmt::format("\"topology\" holds {}, which is no index below {}", index, bound));
            }
            lists.values.push_back(static_cast<int>(index));
        }
        return lists;
    }

    const Slot& slot_;
    const std::vector<unsigned int>& numbers_;
    std::size_t at_ = 0;
};

void readTopology(const Slot& slot, const Fields& fields, MeshData& mesh) {
    if (const Json* polygons = fields.find("polygons")) {
        mesh.polygons = readIndexLists(slot, "polygons", *polygons, mesh.points->length());
    }
    if (const Json* sets = fields.find("uvSets")) {
        for (const auto& [name, set] : members(requireObject(slot, "uvSets", *sets))) {
            mesh.uvSets.emplace_back(name, readUvSet(slot, name, set, mesh.polygons));
        }
    }
}

} // namespace

template <>
std::shared_ptr<Object> readGeometryForm<MeshData>(const Slot& slot, const Json& value) {
    const Fields fields(slot, value);
    fields.requireOnly({"points", "matrix", "polygons", "uvSets"});
    auto mesh = newGeometry<MeshData>(slot, fields);
    for (const Json& item : requireList(slot, "points", fields.get("points"))) {
        const MPoint point = readPoint(slot, "points", item);
        mesh->points->append({static_cast<float>(point.x), static_cast<float>(point.y), static_cast<float>(point.z)});
    }
    readTopology(slot, fields, *mesh);
    return mesh;
}

template <>
std::shared_ptr<Object> readGeometryForm<CurveData>(const Slot& slot, const Json& value) {
    const Fields fields(slot, value);
    fields.requireOnly({"points", "matrix", "degree", "form", "knots"});
    auto curve = newGeometry<CurveData>(slot, fields);
    curve->degree = readDegree(slot, fields.get("degree"));
    curve->form = readForm(slot, fields.get("form"));
    curve->knots = readKnots(slot, "knots", fields.get("knots"));
    curve->points = readPoints(slot, fields.get("points"));
    requirePoints(slot, curve->points.length(), pointsOf(slot, "knots", curve->degree, curve->knots.length()),
                  "the degree and the knots");
    return curve;
}

template <>
std::shared_ptr<Object> readGeometryForm<SurfaceData>(const Slot& slot, const Json& value) {
    const Fields fields(slot, value);
    fields.requireOnly({"points", "matrix", "degree", "form", "knotsU", "knotsV"});
    auto surface = newGeometry<SurfaceData>(slot, fields);
    const Json& degrees = requireList(slot, "degree", fields.get("degree"), 2);
    const Json& forms = requireList(slot, "form", fields.get("form"), 2);
    unsigned long long needed = 1;
    for (std::size_t direction = 0; direction < 2; ++direction) {
        const char* name = direction == 0 ? "knotsU" : "knotsV";
        surface->degree[direction] = readDegree(slot, degrees[direction]);
        surface->form[direction] = readForm(slot, forms[direction]);
        surface->knots[direction] = readKnots(slot, name, fields.get(name));
        needed *= pointsOf(slot, name, surface->degree[direction], surface->knots[direction].length());
    }
    surface->points = readPoints(slot, fields.get("points"));
    requirePoints(slot, surface->points.length(), needed, "the degrees and the knots");
    return surface;
}

template <>
std::shared_ptr<Object> readGeometryForm<LatticeData>(const Slot& slot, const Json& value) {
    const Fields fields(slot, value);
    fields.requireOnly({"points", "matrix", "divisions"});
    auto lattice = newGeometry<LatticeData>(slot, fields);
    const Json& divisions = requireList(slot, "divisions", fields.get("divisions"), 3);
    unsigned long long needed = 1;
    for (std::size_t i = 0; i < 3; ++i) {
        lattice->divisions[i] = readCount(slot, "divisions", divisions[i], 0xFFFF);
        needed *= lattice->divisions[i];
    }
    lattice->points = readPoints(slot, fields.get("points"));
    requirePoints(slot, lattice->points.length(), needed, "the divisions");
    return lattice;
}

/// A copy of a block's geometry with what is told besides; the block's own where nothing is.
template <class T>
std::shared_ptr<T> copyWithMatrix(const Slot& slot, const Object& geometry, const Fields& fields) {
    auto copy = std::make_shared<T>(static_cast<const T&>(geometry));
    if (const Json* matrix = fields.find("matrix")) {
        copy->transform = readMatrix(slot, "matrix", *matrix);
    }
    return copy;
}

template <class T>
std::shared_ptr<const Object> withMembers(const Slot& slot, std::shared_ptr<const Object> geometry, const Json& value,
                                          const IndexListOf& /*indexListOf*/) {
    const Fields fields(slot, value);
    fields.requireOnly({"id", "matrix"});
    return value.size() == 1 ? geometry : copyWithMatrix<T>(slot, *geometry, fields);
}

template <>
std::shared_ptr<const Object> withMembers<MeshData>(const Slot& slot, std::shared_ptr<const Object> geometry,
                                                    const Json& value, const IndexListOf& indexListOf) {
    const Fields fields(slot, value);
    const Json* topology = fields.find("topology");
    fields.requireOnly({"id", "matrix", topology == nullptr ? "polygons" : "topology", "uvSets"});
    if (value.size() == 1) {
        return geometry;
    }
    auto mesh = copyWithMatrix<MeshData>(slot, *geometry, fields);
    if (topology != nullptr) {
        const Fields block(slot, requireObject(slot, "topology", *topology));
        block.requireOnly({"id"});
        const unsigned int id = readCount(slot, "id", block.get("id"), std::numeric_limits<unsigned int>::max());
        TopologyList(slot, indexListOf(id)).read(*mesh, fields.get("uvSets"));
    } else {
        readTopology(slot, fields, *mesh);
    }
    return mesh;
}

template std::shared_ptr<const Object> withMembers<CurveData>(const Slot&, std::shared_ptr<const Object>, const Json&,
                                                              const IndexListOf&);
template std::shared_ptr<const Object> withMembers<SurfaceData>(const Slot&, std::shared_ptr<const Object>, const Json&,
                                                                const IndexListOf&);
template std::shared_ptr<const Object> withMembers<LatticeData>(const Slot&, std::shared_ptr<const Object>, const Json&,
                                                                const IndexListOf&);

} // namespace scene
