#include "bench/stopwatch.h"

#include <algorithm>
#include <chrono>

namespace kvn::bench {

double Measure(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

double FastestOf(const std::vector<double>& samples) {
    return *std::min_element(samples.begin(), samples.end());
}

bool HasSettled(std::vector<double> samples) {
    constexpr std::ptrdiff_t kThird = 2;
    constexpr double kNearlyTheSame = 1.05;
    if (std::ssize(samples) <= kThird) return false;
    std::nth_element(samples.begin(), samples.begin() + kThird, samples.end());
    return samples[kThird] <= kNearlyTheSame * FastestOf(samples);
}

}  // namespace kvn::bench
