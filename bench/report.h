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
    std::string reference;  // what the other value measures
    double theirs = 0;
    double limit = 0;  // the ratio aimed at
};

class Report {
public:
    // A quick run takes fewer samples of everything.
    explicit Report(bool isQuick);

    bool IsQuick() const { return quick; }
    // Repeats a round of measurements as often as a full run does it, or less in a quick one; some times more often
    // when the machine is so busy that what the round has measured has not settled. The round returns whether it has.
    void Repeat(int fullRounds, const std::function<bool()>& round) const;

    // Prints a line at once.
    void Add(const Figure& figure);

    // Runs both pieces of work in turns and compares the fastest runs. Each work returns the milliseconds that count.
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
