// The main function of tests that open windows. If a test hangs, the program ends after a while and names the test and
// its open dialogs.
#include <gtest/gtest.h>

#include <windows.h>

#include <cstdio>
#include <string>

#include "platform/unique_resource.h"
#include "tests/support/window_search.h"

namespace kvn::test {
namespace {

constexpr DWORD kLongestTestMilliseconds = 150'000;

std::wstring DescribeOpenDialogs() {
    std::wstring described;
    FindTopLevelWindow([&](HWND window) {
        if (IsWindowVisible(window)) described += L"  " + ClassOf(window) + L" \"" + TitleOf(window) + L"\"\n";
        return false;
    });
    return described;
}

// Waits for a reaction that has begun.
void EndTimer(HANDLE timer) {
    DeleteTimerQueueTimer(nullptr, timer, INVALID_HANDLE_VALUE);
}

class Watchdog : public testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo& test) override {
        name = std::string(test.test_suite_name()) + "." + test.name();
        CreateTimerQueueTimer(timer.Receive(), nullptr, OnHang, this, kLongestTestMilliseconds, 0, WT_EXECUTEONLYONCE);
    }
    void OnTestEnd(const testing::TestInfo& /*test*/) override { timer.Reset(); }
    static void CALLBACK OnHang(void* watchdog, BOOLEAN /*fired*/) {
        std::fprintf(stderr, "%s hangs. Open windows:\n%ls", static_cast<Watchdog*>(watchdog)->name.c_str(),
                     DescribeOpenDialogs().c_str());
        std::fflush(stderr);
        TerminateProcess(GetCurrentProcess(), 3);
    }

    std::string name;
    platform::Owned<HANDLE, &EndTimer> timer;
};

}  // namespace
}  // namespace kvn::test

int main(int argumentCount, char** arguments) {
    testing::InitGoogleTest(&argumentCount, arguments);
    testing::UnitTest::GetInstance()->listeners().Append(new kvn::test::Watchdog);
    return RUN_ALL_TESTS();
}
