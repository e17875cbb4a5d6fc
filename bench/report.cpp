#include "bench/report.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "bench/stopwatch.h"

namespace kvn::bench {
namespace {

constexpr int kQuickShare = 5;
constexpr int kFewestRounds = 3;
constexpr int kPatience = 4;

std::string Shown(double value) {
    char text[32];
    const bool isWhole = value == std::floor(value);
    const char* const format = isWhole ? "%.0f" : value < 0.1 ? "%.4f" : "%.2f";
    static_cast<void>(std::snprintf(text, sizeof text, format, value));
    return text;
}

std::string Shown(double value, const std::string& unit) {
    return unit.empty() ? Shown(value) : Shown(value) + ' ' + unit;
}

void PrintLine(const std::string& name, const std::string& ours, const std::string& reference,
               const std::string& theirs, const std::string& ratio, const std::string& limit, const char* verdict) {
    std::printf("%-40s %14s  %-46s %14s %8s %8s  %s\n", name.c_str(), ours.c_str(), reference.c_str(), theirs.c_str(),
                ratio.c_str(), limit.c_str(), verdict);
    static_cast<void>(std::fflush(stdout));
}

}  // namespace

Report::Report(bool isQuick) : quick(isQuick) {
    PrintLine("figure", "ours", "reference", "theirs", "ratio", "at most", "");
}

void Report::Repeat(int fullRounds, const std::function<bool()>& round) const {
    const int rounds = quick ? std::min(fullRounds, std::max(fullRounds / kQuickShare, kFewestRounds)) : fullRounds;
    const int most = rounds == 1 ? 1 : rounds * kPatience;
    for (int done = 1; !round() || done < rounds; ++done) {
        if (done >= most) return;
    }
}

void Report::Add(const Figure& figure) {
    // Zero is within any limit, even if the reference is zero too.
    const double ratio = figure.ours == 0 ? 0 : figure.ours / figure.theirs;
    const bool isOver = ratio > figure.limit;
    if (isOver) over.push_back(figure.name);
    PrintLine(figure.name, Shown(figure.ours, figure.unit), figure.reference, Shown(figure.theirs, figure.unit),
              Shown(ratio), Shown(figure.limit), isOver ? "OVER" : "ok");
}

void Report::Compare(const std::string& name, const std::string& reference, double limit, int fullRounds,
                     const std::function<double()>& ours, const std::function<double()>& theirs) {
    std::vector<double> ourSamples;
    std::vector<double> theirSamples;
    Repeat(fullRounds, [&] {
        ourSamples.push_back(ours());
        theirSamples.push_back(theirs());
        return HasSettled(ourSamples) && HasSettled(theirSamples);
    });
    Add({name, "ms", FastestOf(ourSamples), reference, FastestOf(theirSamples), limit});
}

void Report::AddMissing(const std::string& what) {
    missing.push_back(what);
}

bool Report::Finish() const {
    for (const std::string& each : missing) std::printf("could not be measured: %s\n", each.c_str());
    for (const std::string& each : over) std::printf("over its limit: %s\n", each.c_str());
    if (!missing.empty() || !over.empty()) return false;
    std::printf("every figure is within its limit\n");
    return true;
}

}  // namespace kvn::bench
