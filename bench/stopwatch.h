// Taking time.
#pragma once

#include <functional>
#include <vector>

namespace kvn::bench {

// The milliseconds that the work takes.
double Measure(const std::function<void()>& work);

// The middle one; the upper of two. There must be one at least.
double MedianOf(std::vector<double> samples);

}  // namespace kvn::bench
