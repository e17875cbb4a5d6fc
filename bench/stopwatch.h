// Measuring two pieces of work against each other.
#pragma once

#include <functional>
#include <string>

namespace kvn::bench {

struct Comparison {
    std::string name;
    std::string reference;
    double ours = 0;    // median, milliseconds
    double theirs = 0;  // median, milliseconds
    double limit = 0;   // the ratio aimed at
};

// Runs both pieces of work in turns and compares their medians. Each work returns the milliseconds that count.
Comparison Compare(std::string name, std::string reference, double limit, int rounds,
                   const std::function<double()>& ours, const std::function<double()>& theirs);

// The milliseconds that the work takes.
double Measure(const std::function<void()>& work);

void Print(const Comparison& comparison);

}  // namespace kvn::bench
