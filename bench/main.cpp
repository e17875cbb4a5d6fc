// Prints one line per figure. Exit codes: 0 every figure is within its limit, 1 one is not, 2 wrong options.
#include <cstdio>
#include <string_view>

#include "bench/benches.h"
#include "bench/key_window.h"

namespace {

bool BenchServiceAlone() {
    kvn::bench::Report report(false);
    kvn::bench::BenchService(report);
    return report.Finish();
}

bool BenchAll(bool isQuick) {
    kvn::bench::Report report(isQuick);
    kvn::bench::BenchLoading(report);
    kvn::bench::BenchOpenPage(report);
    kvn::bench::BenchPageCounts(report);
    kvn::bench::BenchProfileFile(report);
    kvn::bench::BenchProfileEditor(report);
    kvn::bench::BenchGestures(report);
    kvn::bench::BenchStartMenu(report);
    kvn::bench::BenchService(report);
    return report.Finish();
}

}  // namespace

int main(int count, char** words) {
    const std::string_view option = count > 1 ? words[1] : "";
    if (option == "--where") {
        kvn::bench::ShowWhereOpeningGoes();
        return 0;
    }
    if (option == kvn::bench::kKeyWindowOption) {
        kvn::bench::RunKeyWindow();
        return 0;
    }
    if (option == "--service") return BenchServiceAlone() ? 0 : 1;
    if (!option.empty() && option != "--quick") {
        std::printf("kvn_bench [--quick | --service | --where]\n");
        return 2;
    }
    return BenchAll(option == "--quick") ? 0 : 1;
}
