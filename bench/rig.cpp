// A rig as a production has it, of 300 joints and 1,500 records: four limbs with IK, twists and fingers, a spline
// spine, 40 pose drivers, a face, 20 blend shapes and a skin of 50,000 points. Every evaluation is one of all records:
// the root moves. Without and with the two deformers:
//   bareSum         the node functions alone, one after the other: the yardstick
//   evaluateSerial  at most 1.2 times bareSum; 2,000 a second without the deformers, 60 with them
//   evaluateTwo     the same on two threads
//   jsonRecords     the functions called by way of the records, as a check calls them

#include "maya/Scene.h"
#include "scene/sceneFile.h"
#include "zent/check/entries.h"
#include "zent/proxies/PointWalk.h"
#include "zent/proxies/Registry.h"
#include "zent/rig/Graph.h"
#include "zent/values/Element.h"
#include "zent/values/resource.h"
#include "zent/values/ResourceWriter.h"

#include <benchmark/benchmark.h>
#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <vector>

namespace {

using namespace zent;

constexpr unsigned kPoints = 50000;
constexpr unsigned kJoints = 300;
constexpr unsigned kShapes = 20;
constexpr unsigned kPoses = 5;

const json kZero = {0, 0, 0};
const json kOne = {1, 1, 1};
const json kUnit = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

/// The manifest, the scene and the resource file of a biped, in a folder of their own.
class Biped {
public:
    explicit Biped(bool hasSkin)
        : folder_(std::filesystem::temp_directory_path() / (hasSkin ? "zent_biped" : "zent_bones")) {
        build();
        if (hasSkin) {
            skin();
        }
        std::filesystem::create_directories(folder_);
        std::ofstream(path("manifest.json")) << records;
        std::ofstream(path("scene.json")) << json{{"nodes", nodes_}, {"connections", links_}};
        resource_.write(path("resource.bin"));
    }
    ~Biped() { std::filesystem::remove_all(folder_); }
    Biped(const Biped&) = delete;
    Biped& operator=(const Biped&) = delete;

    std::string path(const char* name) const { return (folder_ / name).string(); }

    json records = json::array();

private:
    /// An entry of an argument: a plug or a literal, with its logical indices.
    struct Entry {
        unsigned attribute;
        json value;
        json indices = nullptr;
    };
    void record(const std::string& node, const char* method, const std::vector<std::string>& results,
                const std::vector<Entry>& entries) {
        json made{{"node_name", node}, {"method", method}, {"results", json::array()}, {"arguments", json::array()}};
        for (const std::string& plug : results) {
            made["results"].push_back({{"attribute", 0}, {"name", plug}});
        }
        for (const Entry& entry : entries) {
            made["arguments"].push_back(
                {{"attribute", entry.attribute}, {entry.value.is_string() ? "name" : "value", entry.value}});
            if (!entry.indices.is_null()) {
                made["arguments"].back()["indices"] = entry.indices;
            }
        }
        records.push_back(std::move(made));
    }
    std::string plug(const std::string& node, const std::string& attribute, const json& value) {
        nodes_[node][attribute] = value;
        return node + "." + attribute;
    }
    std::string worldOf(const std::string& node) { return node + ".worldMatrix[0]"; }
    void worldMatrix(const std::string& node, const json& parent) {
        const json matrix{{"matrix", kUnit}};
        plug(node, "matrix", matrix);
        plug(node, "worldMatrix", {{"multi", json::array({matrix})}});
        record(node, "worldMatrix", {worldOf(node)}, {{0, parent}, {1, node + ".matrix"}});
    }
    void control(const std::string& node, const json& parent, const json& translate) {
        record(node, "transform", {node + ".matrix"},
               {{0, plug(node, "translate", translate)},
                {1, plug(node, "rotate", kZero)},
                {2, 0},
                {3, kOne},
                {4, kZero},
                {5, kZero},
                {6, kZero},
                {7, kZero},
                {8, kZero}});
        worldMatrix(node, parent);
    }
    /// `rotate` and `translate` are plugs or literals.
    void joint(const std::string& node, const json& parentWorld, const json& translate, const json& rotate) {
        joints_.push_back(node);
        record(node, "joint", {node + ".matrix"},
               {{0, translate}, {1, rotate}, {2, kOne}, {3, 0}, {4, kZero}, {5, kOne}, {6, true}});
        worldMatrix(node, parentWorld);
    }
    std::string inverseOf(const std::string& node) {
        const std::string name = node + "Inverse";
        if (!nodes_.contains(name)) {
            plug(name, "outputMatrix", {{"matrix", kUnit}});
            record(name, "inverseMatrix", {name + ".outputMatrix"}, {{0, worldOf(node)}});
        }
        return name + ".outputMatrix";
    }

    void build() {
        control("root", kUnit, {0, 0, 0});
        spine();
        for (const char* side : {"leftArm", "rightArm", "leftLeg", "rightLeg"}) {
            limb(side, std::string(side).find("Arm") != std::string::npos ? "spine11" : "root");
        }
        face();
        poses();
    }
    void spine();
    void limb(const std::string& side, const std::string& parent);
    void face();
    void driven(const std::string& node, const std::string& parent, const std::string& driver, float length);
    void poses();
    void skin();

    std::filesystem::path folder_;
    json nodes_ = json::object();
    ResourceWriter resource_;
    json links_ = json::array();
    std::vector<std::string> joints_;
    std::vector<std::string> shapeWeights_;
};

void Biped::spine() {
    std::vector<Entry> points{
        {0, plug("spineCurve", "base",
                 {{"curve",
                   {{"degree", 3},
                    {"form", "open"},
                    {"knots", {0, 0, 0, 1, 2, 3, 3, 3}},
                    {"points", {{0, 100, 0}, {0, 110, 1}, {0, 120, 2}, {0, 130, 2}, {0, 140, 1}, {0, 150, 0}}}}}})}};
    nodes_["spineCurve"]["local"] = nodes_["spineCurve"]["base"];
    for (unsigned i = 0; i < 6; ++i) {
        const std::string name = fmt::format("spineControl{}", i);
        control(name, worldOf("root"), {0, 100 + 10 * static_cast<int>(i), i % 3});
        const std::string place = plug(name + "Place", "outputTranslate", kZero);
        record(name + "Place", "decomposeMatrixTranslate", {place}, {{0, worldOf(name)}});
        points.push_back({1, place, json::array({i})});
    }
    record("spineCurve", "curve_from_cv", {"spineCurve.local"}, points);
    std::vector<std::string> rotates;
    std::vector<Entry> entries{{0, "spineCurve.local"},
                               {1, false},
                               {2, true},
                               {3, 2},
                               {4, 3},
                               {5, 4},
                               {6, {0, 0, 1}},
                               {7, {0, 0, 1}},
                               {8, worldOf("spineControl0")},
                               {9, worldOf("spineControl5")},
                               {10, 0},
                               {11, {0, 4.2, 0}},
                               {12, plug("spineHandle", "twist", 0.1)},
                               {13, worldOf("root")}};
    constexpr unsigned kCount = 12;
    const json bone = {0, 4.2, 0};
    const std::vector<std::pair<unsigned, json>> channels{{14, kZero}, {15, bone}, {16, 0},
                                                          {17, kOne},  {18, kOne}, {19, true}};
    for (const auto& [attribute, value] : channels) {
        for (unsigned i = attribute == 15 ? 1 : 0; i < kCount; ++i) {
            entries.push_back({attribute, value});
        }
    }
    for (unsigned i = 0; i < kCount; ++i) {
        rotates.push_back(plug(fmt::format("spine{}", i), "rotate", kZero));
    }
    record("spineHandle", "ikSplineSolver", rotates, entries);
    records.back()["results"].push_back({{"attribute", 1}, {"name", plug("spine0", "translate", {0, 100, 0})}});
    for (unsigned i = 0; i < kCount; ++i) {
        joint(fmt::format("spine{}", i), worldOf(i == 0 ? "root" : fmt::format("spine{}", i - 1)),
              i == 0 ? json("spine0.translate") : bone, rotates[i]);
    }
}

void Biped::limb(const std::string& side, const std::string& parent) {
    const std::string upper = side + "Upper";
    const std::string lower = side + "Lower";
    const std::string hand = side + "Hand";
    const json bone = {25, 0, 0};
    joint(side + "Base", worldOf(parent), {8, 0, 0}, plug(side + "Base", "rotate", {0, 0.1, 0}));
    control(side + "Control", worldOf("root"), {48, 110, 5});
    control(side + "Pole", worldOf("root"), {20, 100, -40});
    const std::string pole = plug(side + "Points", "constraintTranslate", kZero);
    record(side + "Points", "poleVectorConstraint", {pole},
           {{0, inverseOf("root")},
            {1, bone},
            {2, worldOf(side + "Base")},
            {3, worldOf("root")},
            {4, side + "Pole.translate"},
            {5, kZero}});
    const std::string upperRotate = plug(upper, "rotate", kZero);
    const std::string lowerRotate = plug(lower, "rotate", kZero);
    std::vector<Entry> solver{
        {0, worldOf("root")},       {1, side + "Control.translate"}, {2, bone}, {3, pole}, {4, 0.0},
        {5, worldOf(side + "Base")}};
    const std::vector<std::pair<unsigned, json>> channels{{6, kZero}, {7, {0, 0.3, 0}}, {8, bone}, {9, 0},
                                                          {10, kOne}, {11, kOne},       {12, true}};
    for (const auto& [attribute, value] : channels) {
        solver.push_back({attribute, value});
        solver.push_back({attribute, value});
    }
    record(side + "Handle", "ikRPsolver", {upperRotate, lowerRotate}, solver);
    joint(upper, worldOf(side + "Base"), bone, upperRotate);
    joint(lower, worldOf(upper), bone, lowerRotate);
    const std::string turn = plug(side + "Turns", "constraintRotate", kZero);
    record(side + "Turns", "orientConstraint", {turn},
           {{0, inverseOf(lower)},
            {1, 0},
            {2, kZero},
            {3, kZero},
            {4, 1},
            {5, 0.3},
            {5, 0.7},
            {6, kZero},
            {7, worldOf(upper)},
            {7, worldOf("root")},
            {8, lowerRotate},
            {8, side + "Control.rotate"},
            {9, 0},
            {9, 0},
            {10, kZero},
            {10, kZero}});
    joint(hand, worldOf(lower), bone, turn);
    for (unsigned i = 0; i < 6; ++i) { // twists between the two ends of a bone
        const std::string node = fmt::format("{}Twist{}", side, i);
        const std::string from = i < 3 ? side + "Base" : upper;
        const float share = 0.25f * static_cast<float>(i % 3 + 1);
        const std::string translate = plug(node + "Parent", "constraintTranslate", kZero);
        const std::string rotate = plug(node + "Parent", "constraintRotate", kZero);
        const json rotates = {i < 3 ? json(upperRotate) : json(lowerRotate), i < 3 ? json(lowerRotate) : json(turn)};
        const json parents = {worldOf(from), worldOf(i < 3 ? upper : lower)};
        std::vector<Entry> moving{{0, inverseOf(from)}, {1, kZero}, {2, kZero}, {4, kZero}};
        std::vector<Entry> turning{{0, inverseOf(from)}, {1, 0}, {2, kZero}, {3, 2}, {5, kZero}};
        for (unsigned k = 0; k < 2; ++k) {
            const float weight = k == 0 ? 1.0f - share : share;
            for (const Entry& entry : std::vector<Entry>{{3, weight},
                                                         {5, parents[k]},
                                                         {6, bone},
                                                         {7, kZero},
                                                         {8, kZero},
                                                         {9, rotates[k]},
                                                         {10, 0},
                                                         {11, kOne},
                                                         {12, kOne},
                                                         {13, true},
                                                         {14, kZero}}) {
                moving.push_back(entry);
            }
            for (const Entry& entry :
                 std::vector<Entry>{{4, weight}, {6, parents[k]}, {7, rotates[k]}, {8, kZero}, {9, 0}, {10, kZero}}) {
                turning.push_back(entry);
            }
        }
        record(node + "Parent", "parentConstraintTranslate", {translate}, moving);
        record(node + "Parent", "parentConstraintRotate", {rotate}, turning);
        joint(node, worldOf(from), translate, rotate);
    }
    for (unsigned finger = 0; finger < 5; ++finger) {
        const std::string curl = plug(fmt::format("{}Curl{}", side, finger), "curl", 0.2);
        for (unsigned i = 0; i < 4; ++i) {
            driven(fmt::format("{}Finger{}_{}", side, finger, i),
                   i == 0 ? hand : fmt::format("{}Finger{}_{}", side, finger, i - 1), curl, 2.0f);
        }
    }
}

/// A joint that turns by a key curve, a range and a sum.
void Biped::driven(const std::string& node, const std::string& parent, const std::string& driver, float length) {
    const std::string keyed = plug(node + "Keys", "output", 0);
    std::vector<Entry> keys{{0, driver}};
    for (unsigned i = 0; i < 3; ++i) {
        const float t = static_cast<float>(i) - 1.0f;
        for (const Entry& entry : std::vector<Entry>{
                 {1, t}, {2, 0.4f * t * t}, {3, 1.0f}, {4, 0.2f}, {5, 18}, {6, 1.0f}, {7, 0.2f}, {8, 18}}) {
            keys.push_back(entry);
        }
    }
    keys.insert(keys.end(), {{9, 0}, {10, 0}, {11, false}});
    record(node + "Keys", "animCurve", {keyed}, keys);
    const std::string scaled = plug(node + "Scale", "output", 0);
    record(node + "Scale", "multDoubleLinear", {scaled}, {{0, keyed}, {1, 0.8f}});
    const std::string rotate = plug(node, "rotate", kZero);
    record(node + "Sum", "plusMinusAverage3D", {rotate},
           {{0, plug(node + "Sum", "own", {0.05, 0, 0})}, {0, {0, 0, 0.1}}, {1, 1}});
    records.back()["arguments"].push_back({{"attribute", 0}, {"name", plug(node + "Sum", "keyed", kZero)}});
    record(node + "Blend", "multiplyDivide3D", {node + "Sum.keyed"},
           {{0, plug(node + "Blend", "input1", {1, 0, 0.5})}, {1, {0.5, 0.5, 0.5}}, {2, 1}});
    joint(node, worldOf(parent), {length, 0, 0}, rotate);
    links_.push_back({scaled, node + "Blend.input1.input1X"});
}

void Biped::face() {
    control("head", worldOf("spine11"), {0, 10, 0});
    const std::string smile = plug("faceControl", "smile", 0.3);
    for (unsigned i = 0; i < 68; ++i) {
        driven(fmt::format("face{}", i), "head", smile, 4.0f);
    }
    for (unsigned i = 0; joints_.size() < kJoints; ++i) {
        const std::string node = fmt::format("muscle{}", i);
        const std::string translate = plug(node, "translate", {0, 0, 2});
        record(node + "Range", "setRange3D", {translate},
               {{0, i % 2 == 0 ? "leftArmControl.translate" : "rightLegControl.translate"},
                {1, kZero},
                {2, {100, 100, 100}},
                {3, {1, 0, 0}},
                {4, {3, 1, 1}}});
        joint(node, worldOf(joints_[12 + i % 100]), translate, kZero);
    }
}

void Biped::poses() {
    for (unsigned i = 0; i < 40; ++i) {
        const std::string node = fmt::format("poses{}", i);
        json outputs = json::array();
        std::vector<std::string> results;
        std::vector<Entry> entries{{0, 0},
                                   {1, 0},
                                   {2, 0},
                                   {3, false},
                                   {4, worldOf(joints_[12 + 7 * i])},
                                   {5, inverseOf(joints_[12 + 7 * i - 1])}};
        for (unsigned k = 0; k < kPoses; ++k) {
            const double angle = 0.4 * static_cast<double>(k);
            const json pose = {std::cos(angle),
                               std::sin(angle),
                               0,
                               0,
                               -std::sin(angle),
                               std::cos(angle),
                               0,
                               0,
                               0,
                               0,
                               1,
                               0,
                               0,
                               0,
                               0,
                               1};
            for (const auto& [attribute, value] :
                 std::vector<std::pair<unsigned, json>>{{6, pose}, {7, kUnit}, {8, 0}}) {
                entries.push_back({attribute, value});
            }
            outputs.push_back(0.2);
            results.push_back(fmt::format("{}.output[{}]", node, k));
        }
        entries.push_back({9, kZero});
        plug(node, "output", {{"multi", outputs}});
        record(node, "weightDriverDrivers", results, entries);
        if (shapeWeights_.size() < kShapes) {
            shapeWeights_.push_back(plug(node + "Weight", "output", 0));
            record(node + "Weight", "blendWeighted", {shapeWeights_.back()},
                   {{0, results[1], {0}}, {0, results[2], {1}}, {1, 0.5, {1}}});
        }
    }
}

void Biped::skin() {
    std::vector<vec3> points;
    for (unsigned i = 0; i < kPoints; ++i) {
        const float t = static_cast<float>(i);
        points.emplace_back(std::sin(0.37f * t), 200.0f * t / static_cast<float>(kPoints), std::sin(0.23f * t));
    }
    const json mesh{{"mesh", {{"id", resource_.add(Mesh(std::move(points), mat4(1.0f)))}}}};
    const std::string bound = plug("body", "outMesh", mesh);
    std::vector<Entry> shapes{{0, 1.0}, {1, bound}};
    SkinWeights weights;
    for (unsigned i = 0; i < kPoints; ++i) {
        for (unsigned k = 0; k < 4; ++k) {
            weights.emplace_back(i, (i / 167 + 5 * k) % kJoints, 0.1f * static_cast<float>(k + 1));
        }
    }
    for (unsigned k = 0; k < kShapes; ++k) { // each moves a twentieth of the points
        DeltaList deltas;
        for (unsigned i = k * kPoints / kShapes; i < (k + 1) * kPoints / kShapes; ++i) {
            deltas.emplace_back(i, vec3(0.1f, 0.0f, 0.01f * static_cast<float>(i % 7)));
        }
        shapes.push_back({2, shapeWeights_[k], {k}});
        shapes.push_back({4, {{"id", resource_.add(deltas)}}, {k, 6000}});
    }
    plug("bodyShapes", "outputGeometry", {{"multi", json::array({mesh})}});
    record("bodyShapes", "blendShapeMesh", {"bodyShapes.outputGeometry[0]"}, shapes);
    std::vector<Entry> entries{{0, 1.0}, {1, "bodyShapes.outputGeometry[0]"}, {2, kUnit}};
    for (const std::string& joint : joints_) {
        entries.push_back({3, worldOf(joint)});
        entries.push_back({4, kUnit});
    }
    entries.push_back({5, {{"id", resource_.add(weights)}}});
    plug("bodySkin", "outputGeometry", {{"multi", json::array({mesh})}});
    record("bodySkin", "skinMesh", {"bodySkin.outputGeometry[0]"}, entries);
}

// ---- measuring -----------------------------------------------------------------------------------------------------

const Biped& biped(bool hasSkin) {
    static const Biped whole(true);
    static const Biped bones(false);
    return hasSkin ? whole : bones;
}

rig::Rig rigOf(const Biped& files) {
    return rig::Rig::load(files.path("manifest.json"), files.path("resource.bin"), files.path("scene.json"));
}

void bareSum(benchmark::State& state) {
    rig::Rig rig = rigOf(biped(state.range(0) != 0));
    std::vector<rig::Node>& nodes = rig.graph().nodes;
    for (auto _ : state) {
        for (rig::Node& node : nodes) {
            node.evaluation->evaluate();
        }
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()));
}

void evaluate(benchmark::State& state, unsigned threads) {
    rig::Rig rig = rigOf(biped(state.range(0) != 0));
    rig.setThreads(threads);
    std::vector<rig::PlugId> controls;
    for (const rig::PlugInfo& input : rig.inputs()) {
        if (input.type == rig::Type::numbers) {
            controls.push_back(rig.input(input.name));
        }
    }
    std::vector<float> numbers(16);
    std::size_t evaluated = 0;
    float x = 0.0f;
    for (auto _ : state) {
        std::fill(numbers.begin(), numbers.end(), x);
        for (const rig::PlugId control : controls) {
            rig.setNumbers(control, numbers.data(), control.count);
        }
        evaluated = rig.evaluate();
        x = x < 1.0f ? x + 0.01f : 0.0f;
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()));
    state.counters["records"] = static_cast<double>(rig.records().size());
    state.counters["evaluated"] = static_cast<double>(evaluated);
}
void evaluateSerial(benchmark::State& state) {
    evaluate(state, 1);
}
void evaluateTwo(benchmark::State& state) {
    evaluate(state, 2);
}

void jsonRecords(benchmark::State& state) {
    const Biped& files = biped(state.range(0) != 0);
    Element::storage().load(files.path("resource.bin"));
    scene::readSceneFile(files.path("scene.json"), files.path("resource.bin"), scene::Scene::current());
    struct Call {
        RecordEntries entries;
        std::unique_ptr<Proxy> proxy;
    };
    std::vector<Call> calls;
    json records = files.records;
    for (json& record : records) {
        const std::string method = record["method"];
        calls.push_back({takeEntries(record), proxyMakers().at(method)()});
    }
    for (auto _ : state) {
        for (const Call& call : calls) {
            if (!call.proxy->isDeformer()) {
                benchmark::DoNotOptimize(call.proxy->zentResult(call.entries.args));
                continue;
            }
            call.proxy->init(call.entries.args, call.entries.ports);
            const std::unique_ptr<PointWalk> walk = walkOf(*call.proxy);
            for (unsigned i = 0; i < walk->count(); ++i) {
                benchmark::DoNotOptimize(walk->zent(i));
            }
        }
    }
    scene::Scene::current().clear();
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()));
}

BENCHMARK(bareSum)->Arg(0)->Arg(1)->ArgName("skin")->Unit(benchmark::kMicrosecond);
BENCHMARK(evaluateSerial)->Arg(0)->Arg(1)->ArgName("skin")->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(evaluateTwo)->Arg(0)->Arg(1)->ArgName("skin")->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(jsonRecords)->Arg(0)->Arg(1)->ArgName("skin")->Unit(benchmark::kMicrosecond);

} // namespace
