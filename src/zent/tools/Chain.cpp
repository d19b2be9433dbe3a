#include "zent/tools/Chain.h"

#include "zent/check/Check.h"
#include "zent/check/entries.h"
#include "zent/rig/buildGraph.h"
#include "zent/rig/Graph.h"
#include "zent/values/Compare.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>
#include <utility>

namespace zent {

namespace {

/// A point of an evaluated shape in world space.
template <class T>
vec3 worldPoint(const Slot& slot, unsigned int index) {
    const T& shape = *static_cast<const T*>(slot.place);
    return toWorld(shape, pointsOf(shape)[index]);
}

using PointOf = vec3 (*)(const Slot& slot, unsigned int index);

PointOf pointOf(const Slot& slot) {
    switch (slot.kind) {
    case Slot::Kind::mesh:
        return &worldPoint<Mesh>;
    case Slot::Kind::curve:
        return &worldPoint<Curve>;
    case Slot::Kind::surface:
        return &worldPoint<Surface>;
    default:
        return &worldPoint<Lattice>;
    }
}

unsigned int pointsIn(const Slot& slot) {
    switch (slot.kind) {
    case Slot::Kind::mesh:
        return pointCount(*static_cast<const Mesh*>(slot.place));
    case Slot::Kind::curve:
        return pointCount(*static_cast<const Curve*>(slot.place));
    case Slot::Kind::surface:
        return pointCount(*static_cast<const Surface*>(slot.place));
    case Slot::Kind::lattice:
        return pointCount(*static_cast<const Lattice*>(slot.place));
    default:
        return 0;
    }
}

/// The verdict on a shape's points is that of a check: a point that differs at no distance, or by NaN, is none that is
/// reported.
class Points {
public:
    explicit Points(const Tolerance& tolerance) : tolerance_(tolerance) {
        statistics.output = "outputGeometry[0]";
        statistics.type = "Vertex";
        statistics.unit = Unit::distance;
    }
    void add(const PointPair& point) {
        const bool agrees = point.agree(tolerance_.epsilon) || isWithin(point, tolerance_.relative);
        measurePoint(point, agrees, statistics);
        isOff = isOff || (!agrees && point.distance() > 0.0f);
    }

    Statistics statistics;
    bool isOff = false;

private:
    const Tolerance& tolerance_;
};

bool isOff(const json& maya, const json& zent, const Tolerance& tolerance, std::vector<Statistics>& statistics) {
    measure(maya, zent, tolerance, statistics);
    return !compare(maya, zent, tolerance.epsilon) && !(tolerance.relative > 0.0 && matches(statistics));
}

std::string unitInWords(Unit unit) {
    return unit == Unit::degrees ? " degrees" : unit == Unit::distance ? " units" : "";
}

/// The manifest's records that a record reads, itself or over records that the rig adds.
std::vector<std::size_t> readsOf(const rig::Graph& graph, std::size_t place) {
    std::vector<std::size_t> reads;
    std::vector<std::size_t> open = graph.records[place].sources;
    std::set<std::size_t> passed;
    while (!open.empty()) {
        const std::size_t source = open.back();
        open.pop_back();
        if (!passed.insert(source).second) {
            continue;
        }
        const rig::RecordInfo& record = graph.records[source];
        if (record.index != rig::RecordInfo::kAdded) {
            reads.push_back(record.index);
        } else {
            open.insert(open.end(), record.sources.begin(), record.sources.end());
        }
    }
    std::sort(reads.begin(), reads.end());
    return reads;
}

} // namespace

double Chain::Worst::size() const {
    return statistics == nullptr                                    ? -1.0
           : statistics->notFinite > 0 || !statistics->note.empty() ? std::numeric_limits<double>::infinity()
           : statistics->isMeasured()                               ? statistics->size()
                                                                    : 0.0;
}

Chain::Chain(json manifest, const RunSettings& settings, const Tolerance& tolerance) {
    rig::Graph graph = rig::buildGraph(manifest);
    std::vector<json*> list;
    for (json& record : manifest) {
        list.push_back(&record);
    }
    for (std::size_t place = 0; place < graph.records.size(); ++place) {
        const rig::RecordInfo& info = graph.records[place];
        if (info.index == rig::RecordInfo::kAdded) {
            ++added_;
        } else {
            compare(graph, place, std::move(*list[info.index]), settings, tolerance);
        }
    }
    for (const rig::RecordInfo& info : graph.records) { // a cause comes before what it causes
        if (info.index != rig::RecordInfo::kAdded && isOff(info.index)) {
            tellCause(info.index);
        }
    }
    notes_ = std::move(graph.notes);
}

void Chain::compare(rig::Graph& graph, std::size_t place, json record, const RunSettings& settings,
                    const Tolerance& tolerance) {
    const rig::RecordInfo& info = graph.records[place];
    names_[info.index] = info.node;
    methods_[info.index] = info.method;
    Record& result = records_[info.index];
    for (const std::size_t output : info.outputs) {
        result.plugs.push_back(graph.outputInfos[output].name);
    }
    result.line.reads = readsOf(graph, place);
    result.line.outcome = Outcome::error;
    result.line.error = graph.nodes[place].problem;
    try {
        const RecordEntries entries = takeEntries(record);
        Proxy& proxy = *ZentCheck::sProxies.at(info.method);
        const bool isLeftOut = settings.skip.count(info.method) > 0 || (proxy.isDeformer() && settings.ignoreDeformer);
        if (isLeftOut) {
            result.line.outcome = Outcome::ignored;
            result.line.error.clear();
            return;
        }
        const rig::Output output{static_cast<std::uint32_t>(place), 0, 0};
        bool chainIsOff = false;
        std::vector<Statistics> own;
        if (!proxy.isDeformer()) {
            const json maya = proxy.mayaResult(entries.ports);
            result.ownIsOff = zent::isOff(maya, proxy.zentResult(entries.args), tolerance, own);
            json chained(json::value_t::array);
            if (result.line.error.empty()) {
                graph.nodes[place].evaluation->show(chained);
                chainIsOff = zent::isOff(maya, chained, tolerance, result.statistics);
            }
        } else {
            proxy.init(entries.args, entries.ports);
            const std::unique_ptr<PointWalk> walk = walkOf(proxy);
            Points ownPoints(tolerance);
            Points points(tolerance);
            const Slot shape = graph.valueOf(output);
            const PointOf chainedPoint = pointOf(shape);
            const unsigned int count = result.line.error.empty() ? std::min(walk->count(), pointsIn(shape)) : 0;
            for (unsigned int i = 0; i < walk->count(); ++i) {
                const PointPair point = walk->at(i);
                ownPoints.add(point);
                if (i < count) {
                    points.add({point.maya, chainedPoint(shape, i)});
                }
            }
            result.ownIsOff = ownPoints.isOff;
            if (count != walk->count()) {
                points.statistics.note = fmt::format("{} points, not {}", count, walk->count());
            }
            chainIsOff = points.isOff || !points.statistics.note.empty();
            result.statistics.push_back(std::move(points.statistics));
        }
        if (result.line.error.empty()) {
            result.line.outcome = chainIsOff ? Outcome::mismatch : Outcome::match;
        }
        result.line.isOwn = result.ownIsOff;
    } catch (const std::exception& error) {
        result.ownIsOff = true;
        result.line.isOwn = true;
        result.line.error = result.line.error.empty() ? error.what() : result.line.error;
    }
    result.line.statistics = &result.statistics;
}

const ChainLine* Chain::at(std::size_t index) const {
    const auto found = records_.find(index);
    return found == records_.end() ? nullptr : &found->second.line;
}

bool Chain::isOff(std::size_t index) const {
    const Outcome outcome = records_.at(index).line.outcome;
    return outcome == Outcome::mismatch || outcome == Outcome::error;
}

Chain::Worst Chain::worstOf(const Record& record) const {
    Worst worst;
    for (const Statistics& statistics : record.statistics) {
        const Worst here{&statistics, ""};
        if (here.size() > worst.size()) {
            worst = here;
        }
    }
    if (worst.statistics != nullptr) {
        worst.plug = record.plugs.empty() ? worst.statistics->output : record.plugs.front();
        if (record.plugs.size() > 1) {
            const auto place = static_cast<std::size_t>(worst.statistics - record.statistics.data());
            const std::size_t entry = record.statistics.size() == record.plugs.size() ? place
                                      : worst.statistics->at.count > 1 || worst.statistics->type == "Float[]"
                                          ? worst.statistics->at.indices[0]
                                          : 0;
            worst.plug = record.plugs[std::min(entry, record.plugs.size() - 1)];
        }
    }
    return worst;
}

/// "(0.03 degrees)", or what else there is to say.
std::string Chain::amountOf(std::size_t index) const {
    const Record& record = records_.at(index);
    const Worst worst = worstOf(record);
    if (!record.line.error.empty()) {
        return "an error";
    }
    if (worst.statistics == nullptr) {
        return "different";
    }
    if (!worst.statistics->note.empty()) {
        return worst.statistics->note;
    }
    return worst.statistics->notFinite > 0
               ? "no number"
               : fmt::format("{:.3g}{}", worst.statistics->greatest, unitInWords(worst.statistics->unit));
}

void Chain::tellCause(std::size_t index) {
    Record& record = records_.at(index);
    json path(json::value_t::array);
    std::string text;
    for (std::size_t now = index;;) {
        const Record& here = records_.at(now);
        const Worst worst = worstOf(here);
        const std::string plug = worst.plug.empty() ? names_[now] : worst.plug;
        json step{{"index", now}, {"node", names_[now]}, {"method", methods_[now]}, {"output", plug}};
        if (worst.statistics != nullptr && worst.statistics->isMeasured()) {
            step["value"] = worst.statistics->greatest;
            step["unit"] = kUnitNames[static_cast<std::size_t>(worst.statistics->unit)];
        }
        path.push_back(std::move(step));
        text += now == index ? fmt::format("{}({}) is off by {}", names_[now], methods_[now], amountOf(now))
                             : fmt::format("{} because {} is ({})", path.size() > 2 ? "," : "", plug, amountOf(now));
        if (here.ownIsOff) {
            text += now == index ? " in itself" : ", which is off in itself";
            break;
        }
        const auto further = [this](std::size_t a, std::size_t b) {
            return worstOf(records_.at(a)).size() < worstOf(records_.at(b)).size();
        };
        std::vector<std::size_t> causes;
        std::copy_if(here.line.reads.begin(), here.line.reads.end(), std::back_inserter(causes),
                     [this](std::size_t source) { return isOff(source); });
        if (causes.empty()) {
            const auto most = std::max_element(here.line.reads.begin(), here.line.reads.end(), further);
            text += most == here.line.reads.end()
                        ? ", which nothing that it reads explains"
                        : fmt::format("{} what it reads is off within the tolerance, the most {} ({})",
                                      now == index ? " because" : ", where", worstOf(records_.at(*most)).plug,
                                      amountOf(*most));
            break;
        }
        now = *std::max_element(causes.begin(), causes.end(), further);
    }
    record.line.path = std::move(path);
    record.line.why = text;
    lines_.push_back(std::move(text));
}

json Chain::summary() const {
    json summary{{"records", records_.size()},
                 {"match", 0},
                 {"mismatch", 0},
                 {"error", 0},
                 {"ignored", 0},
                 {"added", added_},
                 {"notes", notes_},
                 {"worst", nullptr}};
    double greatest = -1.0;
    for (const auto& [index, record] : records_) {
        json& count = summary[kOutcomeNames.at(static_cast<std::size_t>(record.line.outcome))];
        count = count.get<std::size_t>() + 1;
        const Worst worst = worstOf(record);
        if (worst.statistics != nullptr && worst.statistics->isMeasured() && worst.statistics->size() > greatest) {
            greatest = worst.statistics->size();
            summary["worst"] = {{"index", index},
                                {"node", names_.at(index)},
                                {"method", methods_.at(index)},
                                {"output", worst.plug},
                                {"unit", kUnitNames[static_cast<std::size_t>(worst.statistics->unit)]},
                                {"value", worst.statistics->greatest}};
        }
    }
    return summary;
}

} // namespace zent
