// Taking time.
#pragma once

#include <functional>
#include <vector>

namespace kvn::bench {

// The milliseconds that the work takes.
double Measure(const std::function<void()>& work);

// The shortest. Other work on the machine can only add to the time of a measurement.
double FastestOf(const std::vector<double>& samples);

// Whether the shortest has been met often enough to be believed: the three shortest are nearly the same.
bool HasSettled(std::vector<double> samples);

}  // namespace kvn::bench
