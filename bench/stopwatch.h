// Measures time.
#pragma once

#include <functional>
#include <vector>

namespace kvn::bench {

// The milliseconds that the work takes.
double Measure(const std::function<void()>& work);

// The shortest time. Other work on the machine can only lengthen a measurement.
double FastestOf(const std::vector<double>& samples);

// Whether the shortest time can be trusted: the three shortest are nearly the same.
bool HasSettled(std::vector<double> samples);

}  // namespace kvn::bench
