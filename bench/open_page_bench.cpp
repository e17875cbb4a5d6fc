#include <algorithm>
#include <cstdio>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "bench/benches.h"
#include "bench/import_watch.h"
#include "bench/property_sheet.h"
#include "bench/reference_page.h"
#include "bench/running_service.h"
#include "bench/stopwatch.h"
#include "bench/stored_profiles.h"

namespace kvn::bench {
namespace {

constexpr int kRounds = 25;
constexpr std::size_t kShownProfiles = 10;
// The target ratios. A bare page has to parse the same file and draw the same picture, an empty one does neither.
struct Limits {
    double idle;
    double reaction;
};
const std::map<std::size_t, Limits> kLimits{{1, {1.5, 2}}, {10, {1.6, 2.3}}, {100, {2.3, 3.6}}};
constexpr double kBareLimit = 1.2;
constexpr std::size_t kShownImports = 20;

using Samples = std::vector<double>;

// The same moment of many openings.
Samples At(const std::vector<OpeningTimes>& openings, double OpeningTimes::*time) {
    Samples samples;
    for (const OpeningTimes& opening : openings) samples.push_back(opening.*time);
    return samples;
}

void BenchOpening(Report& report, std::size_t profileCount) {
    const StoredProfiles profiles(profileCount);
    std::vector<OpeningTimes> ours;
    std::vector<OpeningTimes> empty;
    std::vector<OpeningTimes> bare;
    const auto hasSettled = [](const auto& openings) { return HasSettled(At(openings, &OpeningTimes::idle)); };
    report.Repeat(kRounds, [&] {
        ours.push_back(OpenSheet(OurPage));
        empty.push_back(OpenSheet(EmptyPage));
        bare.push_back(OpenSheet(BarePage));
        return hasSettled(ours) && hasSettled(empty) && hasSettled(bare);
    });
    const auto add = [&](const std::string& name, double OpeningTimes::*time, const std::string& reference,
                         const std::vector<OpeningTimes>& theirs, double limit) {
        report.Add({name, "ms", FastestOf(At(ours, time)), reference, FastestOf(At(theirs, time)), limit});
    };
    const Limits& limits = kLimits.at(profileCount);
    const std::string with = std::to_string(profileCount) + (profileCount == 1 ? " profile" : " profiles");
    add("open the page with " + with, &OpeningTimes::idle, "the same sheet with an empty page", empty, limits.idle);
    add("  the same", &OpeningTimes::idle, "the same sheet with a bare page", bare, kBareLimit);
    add("first paint with " + with, &OpeningTimes::firstPaint, "the same sheet with an empty page", empty,
        limits.reaction);
    add("first key with " + with, &OpeningTimes::firstInput, "the same sheet with an empty page", empty,
        limits.reaction);
}

bool IsReady(const RunningService& service) {
    return service.Runs() && PageModule() != nullptr;
}

}  // namespace

void BenchOpenPage(Report& report) {
    const RunningService service;
    if (!IsReady(service)) return report.AddMissing("opening the page, without the service or the DLL");
    for (const auto& [count, limits] : kLimits) BenchOpening(report, count);
}

void ShowWhereOpeningGoes() {
    const RunningService service;
    if (!IsReady(service)) return;
    const StoredProfiles profiles(kShownProfiles);
    OpenSheet(OurPage);

    // The fastest opening for each import: the module calls the same functions every time.
    std::map<std::string, ImportCalls> fastest;
    std::optional<ImportWatch> watch;
    const auto collect = [&](HWND) {
        for (const ImportCalls& calls : watch->Calls()) {
            ImportCalls& best = fastest.try_emplace(calls.name, calls).first->second;
            best.milliseconds = std::min(best.milliseconds, calls.milliseconds);
        }
        watch.reset();
    };
    for (int round = 0; round < kRounds; ++round) {
        OpenSheet(OurPage, {[&] { watch.emplace(PageModule()); }, collect});
    }
    std::vector<ImportCalls> shown;
    shown.reserve(fastest.size());
    for (const auto& [name, calls] : fastest) shown.push_back(calls);
    std::sort(shown.begin(), shown.end(),
              [](const ImportCalls& a, const ImportCalls& b) { return a.milliseconds > b.milliseconds; });
    shown.resize(std::min(shown.size(), kShownImports));
    std::printf("%-24s %8s %8s   in one opening with %zu profiles\n", "function", "calls", "ms", kShownProfiles);
    for (const ImportCalls& calls : shown) {
        std::printf("%-24s %8zu %8.3f\n", calls.name.c_str(), calls.count, calls.milliseconds);
    }
}

}  // namespace kvn::bench
