// The one table of all figures.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace kvn::bench {

struct Figure {
    std::string name;
    std::string unit;  // of both values
    double ours = 0;
    std::string reference;  // what `theirs` measures
    double theirs = 0;
    double limit = 0;  // the largest good ratio
};

class Report {
public:
    // A quick run takes fewer samples.
    explicit Report(bool isQuick);

    bool IsQuick() const { return quick; }
    // Repeats a round of measurements this many times, or fewer in a quick run. On a busy machine it adds some rounds
    // until the results settle. The round returns whether they have.
    void Repeat(int fullRounds, const std::function<bool()>& round) const;

    // Prints a line at once.
    void Add(const Figure& figure);

    // Runs both pieces of work in turns and compares the fastest runs. Each returns the milliseconds that count.
    void Compare(const std::string& name, const std::string& reference, double limit, int fullRounds,
                 const std::function<double()>& ours, const std::function<double()>& theirs);

    // A group of figures that could not be measured.
    void AddMissing(const std::string& what);

    // Prints the outcome in the last line; false if a figure is over its limit or missing.
    bool Finish() const;

private:
    bool quick;
    std::vector<std::string> over;
    std::vector<std::string> missing;
};

}  // namespace kvn::bench
