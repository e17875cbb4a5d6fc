#include <algorithm>
#include <array>
#include <cstdio>
#include <numeric>
#include <optional>
#include <string>
#include <vector>

#include "bench/benches.h"
#include "bench/import_watch.h"
#include "bench/property_sheet.h"
#include "bench/running_service.h"
#include "bench/stopwatch.h"
#include "bench/stored_profiles.h"

namespace kvn::bench {
namespace {

constexpr int kRounds = 25;
constexpr std::array<std::size_t, 3> kProfileCounts{1, 10, 100};
constexpr double kOpeningLimit = 1.5;
constexpr double kManyProfilesLimit = 2.0;
constexpr std::size_t kShownImports = 20;

double MedianTime(const std::vector<OpeningTimes>& openings, double OpeningTimes::*time) {
    std::vector<double> samples;
    for (const OpeningTimes& opening : openings) samples.push_back(opening.*time);
    return MedianOf(samples);
}

void BenchOpening(Report& report, std::size_t profileCount) {
    const StoredProfiles profiles(profileCount);
    OpenSheet(OurPage);
    OpenSheet(EmptyPage);
    std::vector<OpeningTimes> ours;
    std::vector<OpeningTimes> theirs;
    for (int round = 0; round < report.Rounds(kRounds); ++round) {
        ours.push_back(OpenSheet(OurPage));
        theirs.push_back(OpenSheet(EmptyPage));
    }
    const double limit = profileCount == kProfileCounts.back() ? kManyProfilesLimit : kOpeningLimit;
    const std::string with = " with " + std::to_string(profileCount) + (profileCount == 1 ? " profile" : " profiles");
    const auto add = [&](const std::string& name, double OpeningTimes::*time) {
        report.Add({name + with, "ms", MedianTime(ours, time), "the same sheet with an empty page",
                    MedianTime(theirs, time), limit});
    };
    add("open the page", &OpeningTimes::idle);
    add("  until its first paint", &OpeningTimes::firstPaint);
    add("  until its first key", &OpeningTimes::firstInput);
}

bool IsReady(const RunningService& service) {
    return service.Runs() && PageModule() != nullptr;
}

}  // namespace

void BenchOpenPage(Report& report) {
    const RunningService service;
    if (!IsReady(service)) return report.AddMissing("opening the page, without the service or the DLL");
    for (const std::size_t count : kProfileCounts) BenchOpening(report, count);
}

void ShowWhereOpeningGoes() {
    const RunningService service;
    if (!IsReady(service)) return;
    const StoredProfiles profiles(kProfileCounts[1]);
    OpenSheet(OurPage);
    OpenSheet(EmptyPage);

    std::optional<ImportWatch> watch;
    std::vector<ImportCalls> calls;
    const SheetWork watched{[&] { watch.emplace(PageModule()); },
                            [&](HWND) {
                                calls = watch->Calls();
                                watch.reset();
                            }};
    const OpeningTimes opening = OpenSheet(OurPage, watched);
    const double inImports = std::accumulate(
        calls.begin(), calls.end(), 0.0, [](double sum, const ImportCalls& each) { return sum + each.milliseconds; });
    std::printf("One opening with %zu profiles: %.2f ms, of which %.2f ms in functions that the page calls.\n",
                kProfileCounts[1], opening.idle, inImports);
    std::printf("%-32s %8s %10s\n", "function", "calls", "ms");
    for (std::size_t i = 0; i < std::min(calls.size(), kShownImports); ++i) {
        std::printf("%-32s %8zu %10.3f\n", calls[i].name.c_str(), calls[i].count, calls[i].milliseconds);
    }
    std::printf("The same sheet with an empty page: %.2f ms.\n", OpenSheet(EmptyPage).idle);
}

}  // namespace kvn::bench
