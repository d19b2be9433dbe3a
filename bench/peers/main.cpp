// The product beside its peers: the same work on the same inputs, results held against each other first, then the
// processor time of both in turn. Prints a table in Markdown.
//
//     bench_peers [WORD]    only the rows whose name holds WORD
#include "Pair.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <vector>

namespace zent::peers {

namespace {

constexpr int kRepetitions = 15;
constexpr double kSample = 0.02; // seconds of processor time

std::string& filter() {
    static std::string word;
    return word;
}

double processorTime() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

double timeOf(const std::function<void()>& run, std::size_t calls) {
    const double start = processorTime();
    for (std::size_t i = 0; i < calls; ++i) {
        run();
    }
    return (processorTime() - start) / static_cast<double>(calls);
}

// How many calls fill a sample; warms up, too.
std::size_t callsFor(const std::function<void()>& run) {
    timeOf(run, 1);
    return std::max<std::size_t>(1, static_cast<std::size_t>(kSample / std::max(timeOf(run, 2), 1e-9)));
}

double median(std::vector<double> numbers) {
    std::sort(numbers.begin(), numbers.end());
    return numbers[numbers.size() / 2];
}

std::string shown(double seconds) {
    struct Unit {
        double size;
        const char* name;
    };
    constexpr std::array<Unit, 3> kUnits{{{1e-3, "ms"}, {1e-6, "us"}, {1e-9, "ns"}}};
    const auto* unit = std::find_if(kUnits.begin(), kUnits.end() - 1, [&](const Unit& u) { return seconds >= u.size; });
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.3g %s", seconds / unit->size, unit->name);
    return text.data();
}

} // namespace

void measure(const Pair& pair) {
    if (pair.name.find(filter()) == std::string::npos) {
        return;
    }
    const std::size_t productCalls = callsFor(pair.product);
    const std::size_t peerCalls = callsFor(pair.theirs);
    std::vector<double> product;
    std::vector<double> peer;
    std::vector<double> ratios;
    for (int i = 0; i < kRepetitions; ++i) {
        product.push_back(timeOf(pair.product, productCalls) / static_cast<double>(pair.work));
        peer.push_back(timeOf(pair.theirs, peerCalls) / static_cast<double>(pair.work));
        ratios.push_back(product.back() / peer.back());
    }
    const double least = *std::min_element(product.begin(), product.end());
    const double leastOfPeer = *std::min_element(peer.begin(), peer.end());
    std::printf("| %s | %s | %s, %s | %s, %s | %.2f, %.2f |\n", pair.name.c_str(), pair.peer.c_str(),
                shown(least).c_str(), shown(median(product)).c_str(), shown(leastOfPeer).c_str(),
                shown(median(peer)).c_str(), least / leastOfPeer, median(ratios));
    std::fflush(stdout);
}

void requireAgreement(const std::string& name, bool agree) {
    if (!agree) {
        std::fprintf(stderr, "bench_peers: %s: the results do not agree\n", name.c_str());
        std::exit(1);
    }
}

} // namespace zent::peers

int main(int count, char** words) {
    using namespace zent::peers;
    if (count > 1) {
        filter() = words[1];
    }
    std::puts("| Work | Peer | Product: least, median | Peer: least, median | Ratio of least, median ratio |");
    std::puts("|---|---|---|---|---|");
    expressionPeers();
    curvePeers();
    deformerPeers();
    clusterPeers();
    ikPeers();
    recordPeers();
    surfacePeers();
}
