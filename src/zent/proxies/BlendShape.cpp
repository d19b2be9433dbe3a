#include "zent/nodes/blendShape.h"
#include "zent/math/require.h"
#include "zent/proxies/Binding.h"
#include "zent/proxies/ProxyDeformer.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

namespace zent {
namespace {

/// Counts the points of whole shapes, the deltas and the factors of a record: one block or plug may stand for many
/// targets.
class EntryCount {
public:
    template <class T>
    void add(const T& shape) {
        addEntries(pointsOf(shape).size());
    }
    void add(const DeltaList& deltas) { addEntries(deltas.size()); }
    void add(const WeightMap& factors) { addEntries(factors.size()); }

private:
    static constexpr std::size_t kMost = std::size_t{1} << 24;

    void addEntries(std::size_t entries) {
        count_ += entries;
        if (count_ > kMost) {
            fail(fmt::format("the targets hold more than {} points, deltas and factors", kMost));
        }
    }

    std::size_t count_ = 0;
};

/// The items of a port by their first two logical indices; a later one replaces an earlier one.
template <class Item>
std::map<ItemIndex, Item> readItems(const Port& port, EntryCount& count) {
    std::map<ItemIndex, Item> items;
    for (const Element& element : port.elements()) {
        Item& item = items[element.indexPair()];
        item = element.get<Item>();
        count.add(item);
    }
    return items;
}

std::map<unsigned int, WeightMap> readWeightMaps(const Port& port, EntryCount& count) {
    std::map<unsigned int, WeightMap> maps;
    for (const Element& element : port.elements()) {
        WeightMap& map = maps[element.index(0)];
        map = element.get<WeightMap>();
        count.add(map);
    }
    return maps;
}

template <class Item>
std::map<ItemIndex, std::reference_wrapper<const Item>> referTo(const std::map<ItemIndex, Item>& items) {
    std::map<ItemIndex, std::reference_wrapper<const Item>> references;
    for (const auto& [index, item] : items) {
        references.emplace_hint(references.end(), index, item);
    }
    return references;
}

std::string itemName(const char* list, const ItemIndex& index) {
    return fmt::format("{}[{}][{}]", list, index.first, index.second);
}

} // namespace

/// The adapter of `blendShape<T>`; T is Mesh, Curve or Surface.
template <class T>
class ProxyBlendShape : public ProxyDeformer<T> {
public:
    json closure(const Arguments& args, const std::vector<Port>& ports) const override;
    std::string name() const override { return std::string("blendShape") + shapeName<T>(); }
    void init(const Arguments& args, const std::vector<Port>& ports) override;
    void deform(T& point, unsigned int index) const override;
    MethodInfo info() const {
        return this->deformerInfo(
            argumentsOfTypes<float, T, WeightMap, std::map<ItemIndex, T>, std::map<ItemIndex, DeltaList>,
                             std::map<unsigned int, WeightMap>>());
    }

private:
    /// What one point needs, by ascending index: its places in whole shapes, its deltas, its factors. There may be many
    /// millions of these, so that they become the maps of a shape of one point only when that point's turn comes.
    struct VtxAttribute {
        std::vector<std::pair<ItemIndex, vec3>> shapes;
        std::vector<std::pair<ItemIndex, vec3>> deltas;
        std::vector<std::pair<unsigned int, float>> weightMaps;
    };

    void split_attributes(const std::map<ItemIndex, T>& shapes, const std::map<ItemIndex, DeltaList>& deltas,
                          const std::map<unsigned int, WeightMap>& weightMaps);

    /// The weights of the targets that have something for the point; the others would only be passed over.
    WeightMap weightsOf(const VtxAttribute& attribute) const;

    float envelope = 0.0f;
    WeightMap weights;
    std::vector<VtxAttribute> attributes;
};

template <class T>
void ProxyBlendShape<T>::init(const Arguments& args, const std::vector<Port>& ports) {
    ProxyDeformer<T>::init(args, ports);
    envelope = read<float>(args, 0);
    this->readInput(args, 1);
    weights = read<WeightMap>(args, 2);
    EntryCount count;
    const auto shapes = readItems<T>(args.get(3), count);
    const auto deltas = readItems<DeltaList>(args.get(4), count);
    split_attributes(shapes, deltas, readWeightMaps(args.get(5), count));
}

template <class T>
void ProxyBlendShape<T>::split_attributes(const std::map<ItemIndex, T>& shapes,
                                          const std::map<ItemIndex, DeltaList>& deltas,
                                          const std::map<unsigned int, WeightMap>& weightMaps) {
    // A periodic curve's overlap has its records here, unlike in the other deformers: deliberate.
    attributes.assign(std::is_same_v<T, Curve> ? pointsOf(this->input).size() : pointCount(this->input), {});
    for (const auto& [index, shape] : shapes) {
        requireConsistent(shape, itemName("shapes", index).c_str());
        const unsigned int count = std::min(pointCount(shape), pointCount(this->input));
        for (unsigned int i = 0; i < count; ++i) {
            attributes[i].shapes.emplace_back(index, pointsOf(shape)[i]);
        }
    }
    for (const auto& [index, list] : deltas) {
        const std::string name = itemName("deltas", index);
        for (std::size_t k = 0; k < list.size(); ++k) {
            const auto& [vertex, delta] = list[k];
            requireIndex(name.c_str(), k, vertex, attributes.size(), "inputGeometry");
            // Of a point that stands twice the last delta counts, where the whole-shape function applies both.
            auto& own = attributes[vertex].deltas;
            if (own.empty() || own.back().first != index) {
                own.emplace_back(index, delta);
            }
            own.back().second = delta;
        }
    }
    for (const auto& [target, factors] : weightMaps) {
        const std::string name = fmt::format("weight map[{}]", target);
        std::size_t position = 0;
        for (const auto& [vertex, factor] : factors) {
            requireIndex(name.c_str(), position++, vertex, attributes.size(), "inputGeometry");
            attributes[vertex].weightMaps.emplace_back(target, factor);
        }
    }
}

template <class T>
WeightMap ProxyBlendShape<T>::weightsOf(const VtxAttribute& attribute) const {
    WeightMap own;
    const auto add = [&](const auto& items) {
        for (const auto& [index, item] : items) {
            if (const auto weight = weights.find(index.first); weight != weights.end()) {
                own.insert(*weight);
            }
        }
    };
    add(attribute.shapes);
    add(attribute.deltas);
    return own;
}

template <class T>
void ProxyBlendShape<T>::deform(T& point, unsigned int index) const {
    const VtxAttribute& attribute = attributes.at(index);
    // Each list names the point as point 0.
    std::map<ItemIndex, T> shapes;
    for (const auto& [item, place] : attribute.shapes) {
        shapes.emplace_hint(shapes.end(), item, onePointShape<T>(place, mat4(1.0f)));
    }
    std::map<ItemIndex, DeltaList> deltas;
    for (const auto& [item, delta] : attribute.deltas) {
        deltas.emplace_hint(deltas.end(), item, DeltaList{{0u, delta}});
    }
    TargetWeightMaps weightMaps;
    for (const auto& [target, factor] : attribute.weightMaps) {
        weightMaps.emplace_hint(weightMaps.end(), target, WeightMap{{0u, factor}});
    }
    point = blendShape<T>(envelope, point, weightsOf(attribute), referTo(shapes), referTo(deltas), weightMaps);
}

template <class T>
json ProxyBlendShape<T>::closure(const Arguments& args, const std::vector<Port>& ports) const {
    json report = this->deformerClosure("blendShape", envelope, args, ports);
    static_cast<void>(attributes.at(this->cursor)); // a point without a record has no closure either
    report["inputs"].push_back(typedValue("weight", "FloatMap", json(weights)));
    return report;
}

template Method method<ProxyBlendShape<Mesh>>();
template Method method<ProxyBlendShape<Curve>>();
template Method method<ProxyBlendShape<Surface>>();

} // namespace zent
