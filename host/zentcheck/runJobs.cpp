#include "zentcheck/runJobs.h"

#include "maya/Display.h"
#include "zent/check/Check.h"
#include "zent/check/CheckCall.h"
#include "zent/check/plainJson.h"
#include "zent/check/readManifest.h"
#include "zent/tools/Report.h"
#include "zent/tools/ReportCall.h"
#include "zent/values/Log.h"
#include "zent/values/Port.h"
#include "zent/values/resource.h"
#include "zent/values/Select.h"
#include "zentcheck/StretchWorkers.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <maya/MArgList.h>
#include <maya/MGlobal.h>

#include <algorithm>
#include <chrono>
#include <exception>
#include <filesystem>
#include <fstream>
#include <memory>
#include <set>
#include <stdexcept>

namespace host {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t kMostInStretch = 256;    // so that what it says fits into a pipe
constexpr std::size_t kStretchesOfWorker = 64; // so that none waits long for the others at the end
constexpr std::string_view kSamples = "\"samples\":";

/// Tells where a worker is.
class StretchProgress : public zent::RunProgress {
public:
    explicit StretchProgress(Outlet& outlet) : outlet_(outlet) {}

    void startAt(std::size_t index) { index_ = index; }
    void beginRecord(const std::string& node, const std::string& method) override {
        constexpr auto kBetween = std::chrono::milliseconds(20);
        name_ = node + "(" + method + ")";
        ++index_;
        if (Clock::now() - told_ > kBetween) {
            tell();
        }
    }
    void beginPoints() override { tell(); }

private:
    void tell() {
        outlet_.put(Message(Said::progress).add(index_).addText(name_));
        outlet_.flush();
        told_ = Clock::now();
    }

    Outlet& outlet_;
    std::size_t index_ = 0; ///< from 1 on
    std::string name_;
    Clock::time_point told_ = Clock::now();
};

/// Sends a worker's records.
class StretchObserver : public zent::ReportObserver {
public:
    StretchObserver(const zent::ReportCall& call, zent::ResultsWriter& writer, Outlet& outlet)
        : ReportObserver(call.report, writer), outlet_(outlet) {
        if (!call.results.empty()) {
            writer.open([this](std::string_view line) { text_ = line; });
        }
    }

    using ReportObserver::startAt;

    bool endRecord(zent::RecordEnd end) override {
        const std::size_t before = sampled_;
        const bool goesOn = ReportObserver::endRecord(end);
        sampled_ = sampled();
        const zent::RecordLine& record = line();
        Message message(Said::record);
        message.add(record.outcome).add(record.warning).add(end == zent::RecordEnd::unknown).add(before != sampled_);
        message.addText(record.node).addText(record.method);
        const zent::Statistics* worst = worstOf(record);
        message.add(worst != nullptr);
        if (worst != nullptr) {
            message.add(worst->unit).add(worst->greatest).addText(worst->output);
        }
        outlet_.put(message.addText(text_));
        text_ = {};
        return goesOn;
    }

private:
    /// The first of those that are furthest off.
    static const zent::Statistics* worstOf(const zent::RecordLine& record) {
        const zent::Statistics* worst = nullptr;
        for (std::size_t i = 0; record.statistics != nullptr && i < record.statistics->size(); ++i) {
            const zent::Statistics& one = (*record.statistics)[i];
            if (one.isMeasured() && (worst == nullptr || one.size() > worst->size())) {
                worst = &one;
            }
        }
        return worst;
    }

    Outlet& outlet_;
    std::string_view text_;
    std::size_t sampled_ = 0;
};

/// A line of the results without the samples of a curve.
std::string withoutSamples(std::string_view line) {
    const char* const end = line.data() + line.size();
    for (const char* item = line.data() + 1; item < end;) {
        const char* next = item;
        if (zent::passAny(next, end) != zent::Read::whole) {
            break;
        }
        if (std::string_view(item, static_cast<std::size_t>(next - item)).substr(0, kSamples.size()) == kSamples) {
            return std::string(line.data(), item - 1) + std::string(next, end); // with the comma before it
        }
        item = next + 1;
    }
    return std::string(line);
}

/// One call, on both sides.
class JobsCall {
public:
    JobsCall(bool isReport, std::string manifest, std::string resource, Terminal& terminal)
        : isReport_(isReport), call_(std::move(manifest), std::move(resource)), terminal_(terminal) {
        call_.run = isReport ? call_.run : zent::RunSettings();
    }

    /// The result; throws what ends a call.
    CommandResult run(unsigned int jobs, std::istream& file, const MArgDatabase& database) {
        zent::Manifest manifest(file);
        manifest_ = &manifest;
        zent::Element::storage().load(call_.resource);
        zent::readCheckFlags(database, call_.run);
        if (isReport_) {
            zent::readReportFlags(database, call_);
        }
        const auto start = Clock::now();
        zent::openResults(call_, manifest.size(), writer_);
        cut(jobs);
        try {
            StretchWorkers workers(
                jobs, stretches_, [this](Outlet& outlet) { prepare(outlet); },
                [this](std::size_t stretch, Outlet& outlet) { work(stretch, outlet); });
            hear(workers);
        } catch (const std::exception& error) {
            if (hasFailed_) {
                throw;
            }
            throw std::runtime_error(
                fmt::format("{}; of {} records, {} are known to have run", error.what(), manifest.size(), done_));
        }
        if (!isStopped_ && !ignored_.empty()) {
            MGlobal::displayWarning(zent::Run::ignoredText(ignored_).c_str());
        }
        if (!isReport_) {
            return matched_;
        }
        const std::chrono::duration<double> duration = Clock::now() - start;
        const nlohmann::json summary = summary_.json(records_ < manifest.size(), duration.count());
        writer_.write(zent::resultsLine({{"summary", summary}}));
        return zent::resultsLine(summary);
    }

    /// Throws where the results file could not be written.
    void close() {
        if (!writer_.close()) {
            throw std::runtime_error(writer_.problem());
        }
    }

private:
    void cut(unsigned int jobs) {
        const std::size_t size = manifest_->size();
        const std::size_t step = manifest_->step();
        length_ = std::clamp<std::size_t>(size / jobs / kStretchesOfWorker, 1, kMostInStretch);
        length_ = (length_ + step - 1) / step * step;
        // What is no list is walked by whoever takes it.
        stretches_ = manifest_->isList() ? (size + length_ - 1) / length_ : 1;
    }

    // In a worker.

    void prepare(Outlet& outlet) {
        setDisplay({{},
                    [&outlet](const std::string& text) { outlet.put(Message(Said::warning).addText(text)); },
                    [&outlet](const std::string& text) { outlet.put(Message(Said::error).addText(text)); }});
        zent::Log::setCustomPrintln(
            [&outlet](const std::string& line) { outlet.put(Message(Said::line).addText(line)); });
        ownFile_.open(call_.manifest);
        manifest_->readFrom(ownFile_);
        progress_ = std::make_unique<StretchProgress>(outlet);
        if (isReport_) {
            observer_ = std::make_unique<StretchObserver>(call_, ownWriter_, outlet);
        }
    }

    void work(std::size_t stretch, Outlet& outlet) {
        const std::size_t first = stretch * length_;
        progress_->startAt(first);
        if (observer_ != nullptr) {
            observer_->startAt(first);
        }
        try {
            zent::Run run(zent::ZentCheck::sProxies, call_.run, {{}, {}, {}, progress_.get()}, observer_.get());
            std::size_t records = 0;
            bool goesOn = true;
            const auto next = [&](zent::json&& record) {
                ++records;
                return goesOn = run.next(std::move(record));
            };
            if (manifest_->isList()) {
                manifest_->forEach(first, std::min(length_, manifest_->size() - first), next);
            } else {
                manifest_->forEach(next);
            }
            Message end(Said::endStretch);
            end.add(records).add(goesOn).add(run.isStopped()).add(run.matched()).add(run.ignored().size());
            for (const std::string& method : run.ignored()) {
                end.addText(method);
            }
            outlet.put(end);
        } catch (const std::exception& error) {
            outlet.put(Message(Said::failure).addText(error.what()));
        }
    }

    // In the process that has them.

    void hear(StretchWorkers& workers) {
        bool goesOn = true;
        while (goesOn) {
            std::optional<Message> message = workers.next();
            if (!message) {
                return;
            }
            switch (message->kind()) {
            case Said::beginStretch:
                break;
            case Said::progress: {
                const auto index = message->take<std::size_t>();
                terminal_.progress(static_cast<int>(index), static_cast<int>(manifest_->size()),
                                   std::string(message->takeText()));
                break;
            }
            case Said::line:
                write(std::string(message->takeText()));
                break;
            case Said::warning:
                MGlobal::displayWarning(zent::toMaya(std::string(message->takeText())));
                break;
            case Said::error:
                MGlobal::displayError(zent::toMaya(std::string(message->takeText())));
                break;
            case Said::record:
                takeRecord(*message);
                break;
            case Said::endStretch:
                goesOn = takeEnd(*message);
                break;
            case Said::failure:
                hasFailed_ = true;
                throw std::runtime_error(std::string(message->takeText()));
            }
        }
    }

    void write(const std::string& line) {
        try {
            zent::Log::println(line);
        } catch (const std::exception&) {
            hasFailed_ = true;
            throw;
        }
    }

    void takeRecord(Message& message) {
        zent::RecordLine record;
        record.index = records_++;
        record.outcome = message.take<zent::Outcome>();
        record.warning = message.take<bool>();
        const auto isUnknown = message.take<bool>();
        const auto isSampled = message.take<bool>();
        record.node = message.takeText();
        record.method = message.takeText();
        std::vector<zent::Statistics> statistics;
        if (message.take<bool>()) {
            zent::Statistics& worst = statistics.emplace_back();
            worst.unit = message.take<zent::Unit>();
            worst.greatest = message.take<double>();
            worst.output = message.takeText();
            worst.count = 1;
            record.statistics = &statistics;
        }
        summary_.add(record, isUnknown);
        std::string_view line = message.takeText();
        if (line.empty()) {
            return;
        }
        line.remove_suffix(1); // the writer ends lines
        samples_ += isSampled ? 1 : 0;
        const bool isOne = isSampled && samples_ > zent::ReportObserver::kMostSampled;
        writer_.write(isOne ? withoutSamples(line) : line);
    }

    bool takeEnd(Message& message) {
        done_ += message.take<std::size_t>();
        const auto goesOn = message.take<bool>();
        isStopped_ = message.take<bool>();
        const auto matched = message.take<bool>();
        matched_ = matched_ && matched;
        for (auto count = message.take<std::size_t>(); count > 0; --count) {
            ignored_.emplace(message.takeText());
        }
        return goesOn;
    }

    bool isReport_;
    zent::ReportCall call_;
    Terminal& terminal_;
    zent::Manifest* manifest_ = nullptr;
    zent::ResultsWriter writer_;
    std::size_t length_ = 1; ///< of a stretch, in records
    std::size_t stretches_ = 1;

    std::size_t done_ = 0;    ///< records of whole stretches
    std::size_t records_ = 0; ///< reported ones
    std::size_t samples_ = 0;
    bool isStopped_ = false;
    bool matched_ = true;
    bool hasFailed_ = false; ///< as it would without workers
    std::set<std::string> ignored_;
    zent::ResultsSummary summary_;

    // A worker's.
    std::ifstream ownFile_;
    zent::ResultsWriter ownWriter_;
    std::unique_ptr<StretchProgress> progress_;
    std::unique_ptr<StretchObserver> observer_;
};

} // namespace

CommandOutcome runJobs(unsigned int jobs, bool isReport, const std::vector<std::string>& words, Terminal& terminal) {
    MArgList arguments;
    for (const std::string& word : words) {
        arguments.addArg(word.c_str());
    }
    const MArgDatabase database(isReport ? zent::ZentReport::createSyntax() : zent::ZentCheck::createSyntax(),
                                arguments);
    if (!database.problem().empty()) {
        return {database.problem(), MStatus::kInvalidParameter, {}};
    }
    zent::ZentCheck::initProxies();
    zent::namescope.clear();
    MString manifest;
    MString resource;
    database.getCommandArgument(0, manifest);
    database.getCommandArgument(1, resource);
    std::ifstream file(manifest.asChar());
    std::error_code ignored;
    if (!file.is_open() || (!isReport && std::filesystem::is_directory(manifest.asChar(), ignored))) {
        MGlobal::displayError(MString("cannot open file ") + manifest);
        return {{}, MStatus::kFailure, {}};
    }
    CommandOutcome outcome;
    try {
        JobsCall call(isReport, zent::toStd(manifest), zent::toStd(resource), terminal);
        outcome.result = call.run(jobs, file, database);
        call.close();
    } catch (const std::exception& error) {
        MGlobal::displayError(error.what());
        outcome.status = MStatus::kFailure;
    }
    zent::endCheckCall();
    return outcome;
}

} // namespace host
