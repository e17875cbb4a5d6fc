// The watcher while Windows functions fail.
#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>

#include "platform/service_protocol.h"
#include "service/lifecycle/shared_state.h"
#include "service/lifecycle/watcher.h"
#include "tests/support/replaced_import.h"
#include "tests/support/waiting.h"

namespace kvn::test {
namespace {

constexpr DWORD kNoProcess = 0xFFFF'FFF0;  // Windows gives small multiples of 4 first

using CreateCall = BOOL(LPCWSTR, LPWSTR, LPSECURITY_ATTRIBUTES, LPSECURITY_ATTRIBUTES, BOOL, DWORD, LPVOID, LPCWSTR,
                        LPSTARTUPINFOW, LPPROCESS_INFORMATION);

// Replaces the service in everything that the watcher does.
class WatcherFaultTest : public testing::Test {
protected:
    WatcherFaultTest() { memory.State().hasEnded = 0; }
    ~WatcherFaultTest() override {
        memory.State().hasEnded = 0;
        memory.State().watcherProcess = 0;
        memory.State().held.counts[VK_F13] = 0;
    }

    // A service that exists and ends at once, according to its handles.
    static BOOL EndAtOnce(PROCESS_INFORMATION& started) {
        started.hProcess = CreateEventW(nullptr, TRUE, TRUE, nullptr);
        started.hThread = CreateEventW(nullptr, TRUE, TRUE, nullptr);
        started.dwProcessId = kNoProcess;
        return TRUE;
    }

    service::SharedMemory memory;
    int starts = 0;
    std::function<BOOL(PROCESS_INFORMATION&)> onStart = EndAtOnce;
    const ReplacedImport<"CreateProcessW", CreateCall> create{
        GetModuleHandleW(nullptr), [this](LPCWSTR, LPWSTR, LPSECURITY_ATTRIBUTES, LPSECURITY_ATTRIBUTES, BOOL, DWORD,
                                          LPVOID, LPCWSTR, LPSTARTUPINFOW, LPPROCESS_INFORMATION started) {
            ++starts;
            return onStart(*started);
        }};
    int reports = 0;
    const ReplacedImport<"ReportEventW", BOOL(HANDLE, WORD, WORD, DWORD, PSID, WORD, DWORD, LPCWSTR*, LPVOID)> report{
        GetModuleHandleW(nullptr), [this](HANDLE, WORD type, WORD, DWORD, PSID, WORD texts, DWORD, LPCWSTR*, LPVOID) {
            reports += type == EVENTLOG_ERROR_TYPE && texts == 1 ? 1 : 0;
            return TRUE;
        }};
};

TEST_F(WatcherFaultTest, AServiceThatEndsRepeatedlyIsReportedAndGivenUp) {
    memory.State().held.counts[VK_F13] = 1;
    service::WatchService(kNoProcess);
    EXPECT_EQ(starts, 3);
    EXPECT_EQ(reports, 1);
    EXPECT_EQ(memory.State().held.counts[VK_F13], 0);
}

TEST_F(WatcherFaultTest, AServiceThatCannotBeStartedNowIsTriedAgainAndDoesNotCount) {
    onStart = [this](PROCESS_INFORMATION& started) {
        if (starts <= 2) return FALSE;
        memory.State().hasEnded = 1;
        return EndAtOnce(started);
    };
    service::WatchService(kNoProcess);
    EXPECT_EQ(starts, 3);
    EXPECT_EQ(reports, 0);
}

TEST_F(WatcherFaultTest, NothingIsReleasedOfAServiceInAnUnknownState) {
    memory.State().held.counts[VK_F13] = 1;
    const ReplacedImport<"OpenProcess", HANDLE(DWORD, BOOL, DWORD)> open{GetModuleHandleW(nullptr),
                                                                         [](DWORD, BOOL, DWORD) -> HANDLE {
                                                                             SetLastError(ERROR_NOT_ENOUGH_MEMORY);
                                                                             return nullptr;
                                                                         }};
    ASSERT_TRUE(open.IsInPlace());
    service::WatchService(GetCurrentProcessId());
    EXPECT_EQ(memory.State().held.counts[VK_F13], 1);
    EXPECT_EQ(starts, 0);
}

TEST_F(WatcherFaultTest, AWatcherThatCannotBeStartedIsTriedAgainForAsLongAsTheServiceLives) {
    onStart = [](PROCESS_INFORMATION&) { return FALSE; };
    service::Watcher watcher(memory);
    watcher.Start(0);
    EXPECT_EQ(watcher.Process(), nullptr);
    EXPECT_LE(watcher.MillisecondsToRetry(), 1'000U);
    constexpr int kTries = 12;
    for (int attempt = 0; attempt < kTries; ++attempt) {
        watcher.Replace();
        EXPECT_LE(watcher.MillisecondsToRetry(), 60'000U);
    }
    EXPECT_GT(watcher.MillisecondsToRetry(), 1'000U);
}

}  // namespace
}  // namespace kvn::test
