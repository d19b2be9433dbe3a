#include "zent/nodes/blendShape.h"
#include "zent/math/require.h"
#include "zent/proxies/Binding.h"
#include "zent/proxies/ByPoint.h"
#include "zent/proxies/ProxyDeformer.h"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace zent {
namespace {

/// A whole shape of an item: its points, held elsewhere, and how many of them its counts speak for.
struct WholeShape {
    const std::vector<vec3>* points = nullptr;
    unsigned int count = 0;
};

/// Points of shapes that plugs hold. Those of one plug, which many entries may name in many ways, are held once.
class PlugPoints {
public:
    const std::vector<vec3>& hold(std::vector<vec3>&& points) {
        const std::string_view bytes(reinterpret_cast<const char*>(points.data()), points.size() * sizeof(vec3));
        if (const auto found = lists_.find(bytes); found != lists_.end()) {
            return found->second;
        }
        return lists_.emplace(bytes, std::move(points)).first->second; // the bytes move along
    }

private:
    std::unordered_map<std::string_view, std::vector<vec3>> lists_;
};

/// Blocks of the resource file, each one once, and the keys that stand for it.
template <class Block, class Key>
class Uses {
public:
    struct Use {
        const Block* block = nullptr;
        std::vector<Key> keys; ///< ascending
    };

    /// A later block replaces the earlier one of a key.
    void add(Key key, const Block& block) { blocks_[key] = &block; }
    const std::map<Key, const Block*>& blocks() const { return blocks_; }

    std::vector<Use> byBlock() const {
        std::vector<Use> uses;
        std::unordered_map<const Block*, std::size_t> places;
        for (const auto& [key, block] : blocks_) {
            const auto [place, isNew] = places.emplace(block, uses.size());
            if (isNew) {
                uses.push_back({block, {}});
            }
            uses[place->second].keys.push_back(key);
        }
        return uses;
    }

private:
    std::map<Key, const Block*> blocks_;
};

using DeltaUses = Uses<DeltaList, ItemIndex>;
using FactorUses = Uses<WeightMap, unsigned int>;

std::string itemName(const char* list, const ItemIndex& index) {
    return fmt::format("{}[{}][{}]", list, index.first, index.second);
}

} // namespace

/// The adapter of `blendShape<T>`; T is Mesh, Curve or Surface.
///
/// A block that stands for many items is kept once, and a point's items are put together when its turn comes, so that
/// memory goes by what the file and the scene hold, and not by how often the manifest names it.
template <class T>
class ProxyBlendShape : public ProxyDeformer<T> {
public:
    json closure(const Arguments& args, const std::vector<Port>& ports) const override;
    std::string name() const override { return std::string("blendShape") + shapeName<T>(); }
    void init(const Arguments& args, const std::vector<Port>& ports) override;
    void deform(T& point, unsigned int index) const override;
    std::unique_ptr<Evaluation> bind(const Arguments& args) override;
    Slot slot(unsigned int index, const EntryPlace& entry) override;
    void prepare() override;
    MethodInfo info() const {
        return this->deformerInfo(
            argumentsOfTypes<float, T, WeightMap, std::map<ItemIndex, T>, std::map<ItemIndex, DeltaList>,
                             std::map<unsigned int, WeightMap>>());
    }

protected:
    unsigned int inputArgument() const override { return 1; }

private:
    static constexpr unsigned int kNoFactors = ~0U;

    struct WholeItem {
        ItemIndex index;
        WholeShape shape;
        unsigned int factors; ///< the number of the target's weight map, or kNoFactors
    };
    struct PointDelta {
        unsigned int list;
        vec3 delta;
    };
    struct PointFactor {
        unsigned int map;
        float factor;
    };
    struct DeltaItem {
        ItemIndex index;
        vec3 delta;
    };
    using DeltaItems = svec<DeltaItem, 32>;

    std::map<ItemIndex, WholeShape> readShapes(const Port& port);
    void split_attributes(const std::map<ItemIndex, WholeShape>& shapes, const DeltaUses& deltas,
                          const FactorUses& factors);
    void splitDeltas(const DeltaUses& deltas);
    void splitFactors(const FactorUses& factors);
    std::size_t pointBound() const;
    DeltaItems deltasOf(unsigned int index) const;
    float factorOf(const WholeItem& item, unsigned int index) const;

    float envelope = 0.0f;
    WeightMap weights;
    PlugPoints plugPoints;
    std::map<ItemIndex, T> ownShapes;               ///< of items that may be overwritten
    std::vector<WholeItem> wholeItems;              ///< of targets with a weight, ascending
    std::vector<std::vector<ItemIndex>> deltaItems; ///< by list: the items that it stands for, ascending
    bool sharesLists = false;
    ByPoint<PointDelta> pointDeltas;
    ByPoint<PointFactor> pointFactors;
};

template <class T>
void ProxyBlendShape<T>::init(const Arguments& args, const std::vector<Port>& ports) {
    ProxyDeformer<T>::init(args, ports);
    envelope = read<float>(args, 0);
    this->readInput(args, 1);
    weights = read<WeightMap>(args, 2);
    plugPoints = {};
    ownShapes.clear();
    const auto shapes = readShapes(args.get(3));
    DeltaUses deltas;
    for (const Element& element : args.get(4).elements()) {
        const ItemIndex index = element.indexPair();
        deltas.add(index, element.stored<DeltaList>());
    }
    FactorUses factors;
    for (const Element& element : args.get(5).elements()) {
        const unsigned int target = element.index(0);
        factors.add(target, element.stored<WeightMap>());
    }
    split_attributes(shapes, deltas, factors);
}

/// The items of a port by their first two logical indices; a later one replaces an earlier one.
template <class T>
std::map<ItemIndex, WholeShape> ProxyBlendShape<T>::readShapes(const Port& port) {
    std::map<ItemIndex, WholeShape> shapes;
    for (const Element& element : port.elements()) {
        WholeShape& shape = shapes[element.indexPair()];
        if (element.isPlug()) {
            T own = element.get<T>();
            shape.count = pointCount(own);
            shape.points = &plugPoints.hold(std::move(pointsOf(own)));
        } else {
            const T& stored = element.stored<T>();
            shape = {&pointsOf(stored), pointCount(stored)};
        }
    }
    return shapes;
}

/// Points of the input that have a record. A periodic curve's overlap does here, unlike in the other deformers:
/// deliberate.
template <class T>
std::size_t ProxyBlendShape<T>::pointBound() const {
    return std::is_same_v<T, Curve> ? pointsOf(this->input).size() : pointCount(this->input);
}

template <class T>
void ProxyBlendShape<T>::split_attributes(const std::map<ItemIndex, WholeShape>& shapes, const DeltaUses& deltas,
                                          const FactorUses& factors) {
    wholeItems.clear();
    for (const auto& [index, shape] : shapes) {
        const unsigned int count = std::min(shape.count, pointCount(this->input));
        requireAtLeast((itemName("shapes", index) + " control points").c_str(), shape.points->size(),
                       std::min(count, this->count()), "its count");
        if (weights.count(index.first) != 0) {
            wholeItems.push_back({index, {shape.points, count}, kNoFactors});
        }
    }
    splitDeltas(deltas);
    splitFactors(factors);
}

template <class T>
void ProxyBlendShape<T>::splitDeltas(const DeltaUses& deltas) {
    for (const auto& [index, list] : deltas.blocks()) {
        const std::string name = itemName("deltas", index);
        for (std::size_t k = 0; k < list->size(); ++k) {
            requireIndex(name.c_str(), k, (*list)[k].first, pointBound(), "inputGeometry");
        }
    }
    const auto uses = deltas.byBlock();
    deltaItems.clear();
    sharesLists = false;
    for (const auto& use : uses) {
        deltaItems.push_back(use.keys);
        sharesLists = sharesLists || use.keys.size() > 1;
    }
    pointDeltas = ByPoint<PointDelta>(std::min<std::size_t>(pointBound(), this->count()), [&](auto take) {
        for (unsigned int list = 0; list < uses.size(); ++list) {
            for (const auto& [vertex, delta] : *uses[list].block) {
                take(vertex, PointDelta{list, delta});
            }
        }
    });
}

template <class T>
void ProxyBlendShape<T>::splitFactors(const FactorUses& factors) {
    for (const auto& [target, map] : factors.blocks()) {
        const std::string name = fmt::format("weight map[{}]", target);
        std::size_t position = 0;
        for (const auto& [vertex, factor] : *map) {
            requireIndex(name.c_str(), position++, vertex, pointBound(), "inputGeometry");
        }
    }
    const auto uses = factors.byBlock();
    std::map<unsigned int, unsigned int> mapOf;
    for (unsigned int map = 0; map < uses.size(); ++map) {
        for (const unsigned int target : uses[map].keys) {
            mapOf.emplace(target, map);
        }
    }
    for (WholeItem& item : wholeItems) {
        if (const auto map = mapOf.find(item.index.first); map != mapOf.end()) {
            item.factors = map->second;
        }
    }
    pointFactors = ByPoint<PointFactor>(std::min<std::size_t>(pointBound(), this->count()), [&](auto take) {
        for (unsigned int map = 0; map < uses.size(); ++map) {
            for (const auto& [vertex, factor] : *uses[map].block) {
                take(vertex, PointFactor{map, factor});
            }
        }
    });
}

/// The deltas of a point by ascending item. Of a point that stands twice in a list the last delta counts, where the
/// whole-shape function applies both.
template <class T>
typename ProxyBlendShape<T>::DeltaItems ProxyBlendShape<T>::deltasOf(unsigned int index) const {
    DeltaItems items;
    const auto own = pointDeltas.at(index);
    for (const PointDelta* entry = own.begin(); entry != own.end(); ++entry) {
        if (entry + 1 != own.end() && entry[1].list == entry->list) {
            continue;
        }
        for (const ItemIndex& item : deltaItems[entry->list]) {
            items.push_back({item, entry->delta});
        }
    }
    if (sharesLists) {
        std::sort(items.begin(), items.end(), [](const DeltaItem& a, const DeltaItem& b) { return a.index < b.index; });
    }
    return items;
}

template <class T>
float ProxyBlendShape<T>::factorOf(const WholeItem& item, unsigned int index) const {
    if (item.factors == kNoFactors) {
        return 1.0f;
    }
    const auto own = pointFactors.at(index);
    const auto found = std::lower_bound(own.begin(), own.end(), item.factors,
                                        [](const PointFactor& entry, unsigned int map) { return entry.map < map; });
    return found != own.end() && found->map == item.factors ? found->factor : 1.0f;
}

template <class T>
void ProxyBlendShape<T>::deform(T& point, unsigned int index) const {
    const DeltaItems deltas = deltasOf(index);
    if (!(envelope >= kThreshold)) {
        return;
    }
    const vec3 base = pointsOf(point)[0];
    vec3 result = base;
    auto whole = wholeItems.begin();
    auto delta = deltas.begin();
    PointItems items;
    while (whole != wholeItems.end() || delta != deltas.end()) {
        const bool isWhole =
            delta == deltas.end() || (whole != wholeItems.end() && whole->index.first <= delta->index.first);
        const unsigned int target = isWhole ? whole->index.first : delta->index.first;
        items.clear();
        for (; whole != wholeItems.end() && whole->index.first == target; ++whole) {
            if (index < whole->shape.count) {
                items.push_back({inBetweenValue(whole->index.second), false, (*whole->shape.points)[index],
                                 factorOf(*whole, index)});
            }
        }
        for (; delta != deltas.end() && delta->index.first == target; ++delta) {
            items.push_back({inBetweenValue(delta->index.second), true, delta->delta});
        }
        const auto weight = weights.find(target);
        if (weight != weights.end() && !items.empty()) {
            blendPointTarget<T>(result, envelope, base, weight->second, items);
        }
    }
    pointsOf(point)[0] = result;
}

/// An evaluation outlives the resource file.
template <class T>
std::unique_ptr<Evaluation> ProxyBlendShape<T>::bind(const Arguments& args) {
    std::unique_ptr<Evaluation> evaluation = ProxyDeformer<T>::bind(args);
    for (WholeItem& item : wholeItems) {
        item.shape.points = &plugPoints.hold(std::vector<vec3>(*item.shape.points));
    }
    return evaluation;
}

template <class T>
Slot ProxyBlendShape<T>::slot(unsigned int index, const EntryPlace& entry) {
    switch (index) {
    case 0:
        return entrySlot(envelope, entry);
    case 1:
        return entrySlot(this->input, entry);
    case 2:
        return entrySlot(weights, entry);
    case 3:
        break;
    default:
        return {};
    }
    for (WholeItem& item : wholeItems) {
        if (entry.indices.size() >= 2 && item.index == ItemIndex(entry.indices[0], entry.indices[1])) {
            T& own = ownShapes[item.index];
            pointsOf(own) = *item.shape.points;
            item.shape.points = &pointsOf(own);
            return slotOf(own);
        }
    }
    return {};
}

template <class T>
void ProxyBlendShape<T>::prepare() {
    for (const WholeItem& item : wholeItems) {
        if (item.shape.points->size() < item.shape.count) {
            throw std::runtime_error(itemName("shapes", item.index) + ": its number of points has changed");
        }
    }
}

template <class T>
json ProxyBlendShape<T>::closure(const Arguments& args, const std::vector<Port>& ports) const {
    json report = this->deformerClosure("blendShape", envelope, args, ports);
    static_cast<void>(pointDeltas.at(this->cursor)); // a point without a record has no closure either
    report["inputs"].push_back(typedValue("weight", "FloatMap", json(weights)));
    return report;
}

template Method method<ProxyBlendShape<Mesh>>();
template Method method<ProxyBlendShape<Curve>>();
template Method method<ProxyBlendShape<Surface>>();

} // namespace zent
