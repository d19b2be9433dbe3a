#include "zent/check/Run.h"

#include "zent/check/entries.h"
#include "zent/check/Mismatch.h"
#include "zent/values/Compare.h"
#include "zent/values/Log.h"
#include "zent/values/Port.h"

#include <fmt/format.h>

#include <exception>
#include <utility>

namespace zent {

namespace {

/// Records of this method are passed over without a trace, whatever "skip" says: deliberately hard-wired.
constexpr const char* kPassedOverMethod = "worldVisibility";

std::string dumped(const json& value) {
    return value.dump(-1, ' ', false, json::error_handler_t::strict);
}

} // namespace

Run::Run(Registry& registry, RunSettings settings, Display display, RunObserver* observer)
    : registry_(registry), settings_(std::move(settings)), display_(std::move(display)), observer_(observer) {}

bool Run::check(json manifest) {
    for (json& record : manifest) {
        if (!next(std::move(record))) {
            break;
        }
    }
    return end();
}

bool Run::next(json&& record) {
    std::string node;
    std::string method;
    RecordEnd end = RecordEnd::skipped;
    try {
        node = recordText(record, "node_name");
        method = recordText(record, "method");
    } catch (const std::exception& error) {
        if (observer_ == nullptr) {
            throw;
        }
        end = RecordEnd::error;
        observer_->beginRecord(node, method);
        fail(node, method, error);
    }
    if (end != RecordEnd::error) {
        if (display_.progress != nullptr) {
            display_.progress->beginRecord(node, method);
        }
        if (observer_ != nullptr) {
            observer_->beginRecord(node, method);
        }
        if (method != kPassedOverMethod) {
            end = run(std::move(record), node, method);
        }
    }
    const bool goesOn = observer_ == nullptr || observer_->endRecord(end);
    stopped_ = stopped_ || (settings_.stopOnFirstError && (end == RecordEnd::mismatch || end == RecordEnd::error));
    return goesOn && !stopped_;
}

RecordEnd Run::run(json&& record, const std::string& node, const std::string& method) {
    if (settings_.verbose != 0) {
        Log::println(fmt::format("====== start running {}({}) =====", node, method));
    }
    RecordEnd end = RecordEnd::skipped;
    try {
        if (settings_.skip.count(method) == 0) {
            const unsigned outcome = checkSingle(std::move(record));
            end = outcome == kMismatch ? RecordEnd::mismatch
                  : outcome == kMatch  ? RecordEnd::match
                                       : RecordEnd::ignored;
        }
    } catch (const std::exception& error) {
        end = fail(node, method, error);
    }
    if (end == RecordEnd::mismatch) {
        Log::println(fmt::format("===== unmatch on {}({}) =====", node, method));
        matched_ = false;
        if (settings_.stopOnFirstError) {
            return end; // deliberately with no end line
        }
    }
    if (end == RecordEnd::ignored) {
        ignored_.insert(method);
        end = registry_.count(method) == 0 ? RecordEnd::unknown : end;
    }
    if (settings_.verbose != 0 && end != RecordEnd::error) {
        Log::println(fmt::format("====== end running {}({}) =====", node, method));
    }
    return end;
}

RecordEnd Run::fail(const std::string& node, const std::string& method, const std::exception& error) {
    Log::println(fmt::format("error on checking {}({}): {}", node, method, error.what()));
    if (observer_ == nullptr || !observer_->survives(error)) {
        throw std::exception();
    }
    return RecordEnd::error;
}

bool Run::end() const {
    if (!stopped_ && !ignored_.empty()) { // deliberately no warning of those ignored before the run stopped
        display_.warning(ignoredText(ignored_));
    }
    return matched_;
}

std::string Run::ignoredText(const std::set<std::string>& methods) {
    return fmt::format("ignored methods({}): [{}]", methods.size(), fmt::join(methods, ","));
}

unsigned Run::checkSingle(json record) const {
    const std::string method = recordText(record, "method");
    const RecordEntries entries = takeEntries(record);
    const std::vector<Port>& ports = entries.ports;
    const Arguments& args = entries.args;

    // Only here, so that a bad entry is told of even where nobody would read it: deliberate.
    const auto found = registry_.find(method);
    if (found == registry_.end()) {
        return kIgnored;
    }
    Proxy& proxy = *found->second;
    if (!proxy.isDeformer()) {
        return compareOnce(proxy, args, ports);
    }
    return settings_.ignoreDeformer ? unsigned{kIgnored} : comparePoints(proxy, args, ports);
}

unsigned Run::compareOnce(const Proxy& proxy, const Arguments& args, const std::vector<Port>& ports) const {
    if (settings_.verbose >= 2) {
        Log::println("Closure: " + dumped(proxy.closure(args, ports)));
    }
    json maya = proxy.mayaResult(ports);
    json zent = proxy.zentResult(args);
    bool matches = compare(maya, zent, settings_.epsilon);
    if (observer_ != nullptr) {
        matches = observer_->judge(maya, zent, matches);
    }
    if (matches) {
        return kMatch;
    }
    return reportMismatch({-1, std::move(maya), std::move(zent), proxy.closure(args, ports)}, args);
}

// Only a distance above the worst so far is recorded, so that a point which differs at distance 0, or by NaN, leaves
// the record a match. That is deliberate, and so is the earlier point on a tie.
unsigned Run::comparePoints(Proxy& proxy, const Arguments& args, const std::vector<Port>& ports) const {
    float worstDistance = 0.0f;
    Mismatch worst;
    proxy.init(args, ports);
    const std::unique_ptr<PointWalk> walk = walkOf(proxy);
    if (display_.progress != nullptr) {
        display_.progress->beginPoints();
    }
    if (observer_ != nullptr) {
        observer_->beginPoints(*walk, ports);
    }
    // Points that agree are passed over where nobody is told of them.
    const bool tellsOfAll = observer_ != nullptr || settings_.verbose >= 2;
    const auto goOn = [&] {
        if (!tellsOfAll) {
            const auto index = static_cast<unsigned>(proxy.index());
            for (unsigned left = walk->firstOff(index, settings_.epsilon) - index; left != 0; --left) {
                proxy.next();
            }
        }
        return !proxy.isDone();
    };
    for (; goOn(); proxy.next()) {
        if (settings_.verbose >= 2) {
            const int index = proxy.index();
            Log::println(fmt::format("Closure on vtx[{}]: {}", index, dumped(proxy.closure(args, ports))));
        }
        const PointPair point = walk->at(static_cast<unsigned>(proxy.index()));
        bool agrees = point.agree(settings_.epsilon);
        if (observer_ != nullptr) {
            agrees = observer_->judgePoint(point, agrees);
        }
        if (!agrees && point.distance() > worstDistance) {
            worstDistance = point.distance();
            worst = {proxy.index(), proxy.mayaResult(ports), proxy.zentResult(args), proxy.closure(args, ports)};
        }
    }
    if (worst.errorIndex < 0) {
        return kMatch;
    }
    Log::println("error index: " + std::to_string(worst.errorIndex));
    return reportMismatch(worst, args);
}

unsigned Run::reportMismatch(const Mismatch& mismatch, const Arguments& args) const {
    Log::println("closure: " + dumped(mismatch.closure));
    Log::println("maya output: " + dumped(mismatch.maya));
    Log::println("zent output: " + dumped(mismatch.zent));
    if (observer_ != nullptr) {
        observer_->mismatch(mismatch, args);
    }
    return kMismatch;
}

} // namespace zent
