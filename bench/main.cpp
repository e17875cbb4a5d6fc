// Prints one line per figure. Exit codes: 0 if every figure is within its limit, 1 if not, 2 for wrong options.
#include <algorithm>
#include <array>
#include <cstdio>
#include <string_view>
#include <vector>

#include "bench/benches.h"
#include "bench/key_window.h"

namespace {

using Group = void(kvn::bench::Report&);

bool Bench(Group* run, bool isQuick) {
    kvn::bench::Report report(isQuick);
    run(report);
    return report.Finish();
}

void BenchPageAndService(kvn::bench::Report& report) {
    kvn::bench::BenchLoading(report);
    kvn::bench::BenchOpenPage(report);
    kvn::bench::BenchPageCounts(report);
    kvn::bench::BenchProfileFile(report);
    kvn::bench::BenchProfileEditor(report);
    kvn::bench::BenchGestures(report);
    kvn::bench::BenchStartMenu(report);
    kvn::bench::BenchService(report);
}

struct NamedGroup {
    std::string_view option;
    Group* run;
};

constexpr std::array<NamedGroup, 3> kGroups{NamedGroup{"", BenchPageAndService},
                                            {"--service", kvn::bench::BenchService},
                                            {"--presses", kvn::bench::BenchPresses}};

}  // namespace

int main(int count, char** words) {
    std::vector<std::string_view> options(words + 1, words + count);
    const bool isQuick = std::erase(options, "--quick") > 0;
    const std::string_view option = options.empty() ? "" : options.front();
    if (option == "--where") {
        kvn::bench::ShowWhereOpeningGoes();
        return 0;
    }
    if (option == kvn::bench::kKeyWindowOption) {
        kvn::bench::RunKeyWindow();
        return 0;
    }
    const auto group = std::ranges::find(kGroups, option, &NamedGroup::option);
    if (group == kGroups.end() || options.size() > 1) {
        std::printf("kvn_bench [--service | --presses] [--quick]\nkvn_bench --where\n");
        return 2;
    }
    return Bench(group->run, isQuick) ? 0 : 1;
}
