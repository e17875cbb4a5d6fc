#include "bench/stopwatch.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <utility>
#include <vector>

namespace kvn::bench {
namespace {

double MedianOf(std::vector<double> samples) {
    const auto middle = samples.begin() + static_cast<std::ptrdiff_t>(samples.size() / 2);
    std::nth_element(samples.begin(), middle, samples.end());
    return *middle;
}

}  // namespace

Comparison Compare(std::string name, std::string reference, double limit, int rounds,
                   const std::function<double()>& ours, const std::function<double()>& theirs) {
    std::vector<double> ourSamples;
    std::vector<double> theirSamples;
    for (int round = 0; round < rounds; ++round) {
        ourSamples.push_back(ours());
        theirSamples.push_back(theirs());
    }
    return {std::move(name), std::move(reference), MedianOf(ourSamples), MedianOf(theirSamples), limit};
}

double Measure(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

void Print(const Comparison& comparison) {
    std::printf("%-34s %9.2f ms  %-44s %9.2f ms  ratio %5.2f  (at most %.1f)\n", comparison.name.c_str(),
                comparison.ours, comparison.reference.c_str(), comparison.theirs, comparison.ours / comparison.theirs,
                comparison.limit);
}

}  // namespace kvn::bench
