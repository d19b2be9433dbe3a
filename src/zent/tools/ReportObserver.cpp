#include "zent/tools/ReportObserver.h"

#include "zent/check/Check.h"
#include "zent/tools/Chain.h"
#include "zent/tools/inputs.h"
#include "zent/values/nearestName.h"
#include "zent/values/Port.h"

#include <maya/MDataHandle.h>
#include <maya/MFnMesh.h>
#include <maya/MIntArray.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace zent {

namespace {

json layoutJson(const ShapeLayout& layout) {
    const std::string kind = layout.kind;
    json value{{"kind", kind}, {"count", layout.points}};
    if (kind == "curve") {
        value.update({{"degree", layout.degrees[0]}, {"form", layout.forms[0]}, {"knots", layout.knots[0]}});
    } else if (kind == "surface") {
        value.update({{"degreeU", layout.degrees[0]},
                      {"degreeV", layout.degrees[1]},
                      {"formU", layout.forms[0]},
                      {"formV", layout.forms[1]},
                      {"knotsU", layout.knots[0]},
                      {"knotsV", layout.knots[1]}});
    } else if (kind == "lattice") {
        value["divisions"] = layout.divisions;
    }
    return value;
}

void append(std::vector<float>& numbers, vec3 point) {
    numbers.insert(numbers.end(), {point.x, point.y, point.z});
}

/// The faces of the mesh that a port's plug holds.
void readPolygons(const Port& port, ShapeLine& shapes) {
    const MDataHandle handle = port.castSingle().getMayaShape().asMDataHandle();
    const MFnMesh mesh(handle.asMesh());
    const int count = mesh.numPolygons();
    for (int polygon = 0; polygon < count; ++polygon) {
        MIntArray vertices;
        mesh.getPolygonVertices(polygon, vertices);
        shapes.polygonCounts.push_back(static_cast<std::int32_t>(vertices.length()));
        for (unsigned int i = 0; i < vertices.length(); ++i) {
            shapes.polygonVertices.push_back(vertices[i]);
        }
    }
}

} // namespace

void ReportObserver::beginRecord(const std::string& node, const std::string& method) {
    node_ = node;
    method_ = method;
    error_.clear();
    statistics_.clear();
    mismatch_.reset();
    shapes_.reset();
    inputs_ = nullptr;
    samples_ = nullptr;
    const std::uint64_t index = line_.index;
    line_ = RecordLine();
    line_.index = index;
    start_ = Clock::now();
}

bool ReportObserver::judge(const json& maya, const json& zent, bool matches) {
    measure(maya, zent, settings_.tolerance, statistics_);
    line_.statistics = &statistics_;
    return matches || (settings_.tolerance.relative > 0.0 && zent::matches(statistics_));
}

void ReportObserver::beginPoints(const PointWalk& walk, const std::vector<Port>& ports) {
    Statistics& statistics = statistics_.emplace_back();
    statistics.output = "outputGeometry[0]";
    statistics.type = "Vertex";
    statistics.unit = Unit::distance;
    statistics.hasHistogram = walk.count() > kFewValues;
    line_.statistics = &statistics_;
    ports_ = &ports;
    ShapeLine& shapes = shapes_.emplace();
    const ShapeLayout layout = walk.layout();
    keepsPoints_ = layout.points <= settings_.mostPoints && writer_.isOpen();
    shapes.layout =
        keepsPoints_ ? layoutJson(layout) : json{{"kind", layout.kind}, {"count", layout.points}, {"omitted", true}};
    if (keepsPoints_) {
        shapes.maya.reserve(3 * layout.points);
        shapes.zent.reserve(3 * layout.points);
    }
}

bool ReportObserver::judgePoint(const PointPair& point, bool matches) {
    matches = matches || isWithin(point, settings_.tolerance.relative);
    measurePoint(point, matches, statistics_.front());
    if (keepsPoints_) {
        append(shapes_->maya, point.maya);
        append(shapes_->zent, point.zent);
    }
    return matches;
}

void ReportObserver::mismatch(const Mismatch& mismatch, const Arguments& args) {
    if (!writer_.isOpen()) {
        return;
    }
    mismatch_ = mismatch;
    if (!shapes_ || !mismatch.closure.contains("inputs")) { // a deformer's closure has those of its worst point
        inputs_ = inputsOf(method_, args);
    }
    if (method_ == "animCurve" && sampled_ < kMostSampled) {
        ++sampled_;
        samples_ = samplesOf(args);
    }
    if (shapes_ && keepsPoints_) {
        completeShapes();
    }
}

/// A periodic curve's last points repeat the first ones; a mesh has faces where its plug tells them.
void ReportObserver::completeShapes() {
    const std::size_t numbers = 3 * shapes_->layout.at("count").get<std::size_t>();
    for (std::vector<float>* side : {&shapes_->maya, &shapes_->zent}) {
        for (std::size_t i = 0; side->size() < numbers; ++i) {
            side->push_back((*side)[i]);
        }
    }
    if (shapes_->layout.at("kind") == "mesh") {
        try {
            readPolygons(ports_->front(), *shapes_);
        } catch (const std::exception&) { // a block of the resource file has none
            shapes_->polygonCounts.clear();
            shapes_->polygonVertices.clear();
        }
    }
}

bool ReportObserver::survives(const std::exception& error) {
    error_ = error.what();
    return true;
}

bool ReportObserver::endRecord(RecordEnd end) {
    line_.node = node_;
    line_.method = method_;
    line_.seconds = std::chrono::duration<double>(Clock::now() - start_).count();
    switch (end) {
    case RecordEnd::match:
        line_.outcome = Outcome::match;
        line_.warning = std::any_of(statistics_.begin(), statistics_.end(), [this](const Statistics& statistics) {
            return statistics.notFinite > 0 || (statistics.isMeasured() && statistics.size() > settings_.warn);
        });
        break;
    case RecordEnd::mismatch:
        line_.outcome = Outcome::mismatch;
        break;
    case RecordEnd::error:
        line_.outcome = Outcome::error;
        line_.error = error_;
        line_.statistics = nullptr;
        break;
    case RecordEnd::unknown:
        line_.nearest = nearestMethod(method_);
        line_.outcome = Outcome::ignored;
        break;
    case RecordEnd::ignored:
        line_.outcome = Outcome::ignored;
        break;
    case RecordEnd::skipped:
        line_.outcome = Outcome::skipped;
        break;
    }
    if (end == RecordEnd::mismatch && mismatch_) {
        line_.point = mismatch_->errorIndex;
        line_.maya = &mismatch_->maya;
        line_.zent = &mismatch_->zent;
        line_.closure = &mismatch_->closure;
        line_.inputs = inputs_.is_null() ? nullptr : &inputs_;
        line_.samples = samples_.is_null() ? nullptr : &samples_;
        line_.shapes = shapes_ ? &*shapes_ : nullptr;
    }
    line_.chain = chain_ == nullptr ? nullptr : chain_->at(line_.index);
    writer_.write(line_);
    summary_.add(line_, end == RecordEnd::unknown);
    ++line_.index;
    return true;
}

const std::string& ReportObserver::nearestMethod(const std::string& method) {
    const auto [found, isNew] = nearest_.try_emplace(method);
    if (isNew) {
        std::vector<std::string> names;
        for (const auto& [name, proxy] : ZentCheck::sProxies) {
            names.push_back(name);
        }
        found->second = nearestName(method, names);
    }
    return found->second;
}

} // namespace zent
