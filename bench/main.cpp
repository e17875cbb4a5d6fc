// Prints one line per figure.
#include <windows.h>

#include <cstdio>

#include "bench/benches.h"

int main() {
    kvn::bench::BenchProfileFile();
    kvn::bench::BenchOpenPage();
    kvn::bench::BenchGestures();
    kvn::bench::BenchStartMenu();
    kvn::bench::BenchProfileEditor();
    WIN32_FILE_ATTRIBUTE_DATA dll{};
    if (GetFileAttributesExW(L"KvnMouseUtil.dll", GetFileExInfoStandard, &dll)) {
        std::printf("%-34s %9lu bytes\n", "size of the DLL", static_cast<unsigned long>(dll.nFileSizeLow));
    }
    return 0;
}
