// The second process of the service, and the end of both.
#include <windows.h>

#include <tlhelp32.h>

#include <algorithm>
#include <chrono>
#include <string>
#include <utility>

#include "service/lifecycle/processes.h"
#include "service/lifecycle/shared_state.h"
#include "tests/service/idle_program.h"
#include "tests/service/program.h"
#include "tests/support/platform.h"
#include "tests/support/process_use.h"
#include "tests/support/started_process.h"
#include "tests/support/timed_tries.h"
#include "tests/support/waiting.h"
#include "tests/support/window_search.h"

namespace kvn::service_test {
namespace {

using platform::UniqueKernelObject;
using service::SharedMemory;
using test::Await;
using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds kEndTime{2};

// A top-level window of the process, or null.
HWND WindowOf(DWORD process) {
    return test::FindTopLevelWindowOf(process, [](HWND) { return true; });
}

class WatcherTest : public ServiceProgramTest {
protected:
    // The watcher's process, once it watches.
    DWORD AwaitWatcherOtherThan(DWORD process) {
        const auto find = [=, this]() -> DWORD {
            const DWORD found = memory.State().watcherProcess;
            return found == process || RunningProcesses() < 2 ? 0 : found;
        };
        return Await("a watcher", find, std::chrono::seconds{30});
    }

    // Suspends threads of the service, as if they hung; `isMain`: the one of the window, or else all others.
    static void Suspend(bool isMain) {
        const DWORD process = ServiceProcess();
        const DWORD main = GetWindowThreadProcessId(Window(), nullptr);
        const UniqueKernelObject snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0));
        THREADENTRY32 entry{};
        entry.dwSize = sizeof entry;
        for (BOOL more = Thread32First(snapshot.Get(), &entry); more; more = Thread32Next(snapshot.Get(), &entry)) {
            if (entry.th32OwnerProcessID != process || (entry.th32ThreadID == main) != isMain) continue;
            SuspendThread(UniqueKernelObject(OpenThread(THREAD_SUSPEND_RESUME, FALSE, entry.th32ThreadID)).Get());
        }
    }
    bool IsEverythingReleased() {
        return std::ranges::all_of(memory.State().held.counts, [](const auto& count) { return count == 0; });
    }
    // The current time for starting and ending a program on this machine.
    Clock::duration CostOfAStart() const {
        const auto begin = Clock::now();
        EXPECT_EQ(Run({L"--version"}).exitCode, 0U);
        return Clock::now() - begin;
    }

    // A service that holds a key, with threads that hang, ends in time once it is asked to, and releases the key.
    template <typename Ask>
    void ExpectEndInTime(bool hangsMainThread, const Ask& ask) {
        test::ExpectInTime([&](std::size_t /*earlier*/) {
            StartService();
            AwaitWatcherOtherThan(0);
            memory.State().held.counts[VK_F13] = 1;
            const auto allowed = kEndTime + CostOfAStart();
            Suspend(hangsMainThread);
            const auto begin = Clock::now();
            ask();
            EXPECT_TRUE(test::ComesTrue([this] { return RunningProcesses() == 0; }));
            const auto taken = Clock::now() - begin;
            EXPECT_TRUE(IsEverythingReleased());
            EXPECT_EQ(Window(), nullptr);
            return test::TimedTry{taken, allowed};
        });
    }

    // The private memory of a process, once it is the same before and after another program has run.
    double SettledKilobytes(HANDLE process, const char* program, const char* option) const {
        double now = 0;
        return Await("a process to settle", [&] {
            const auto use = test::UseOf(process, program, option);
            const double before = std::exchange(now, use ? use->privateKilobytes : 0);
            EXPECT_EQ(Run({L"--version"}).exitCode, 0U);
            return now == before ? now : 0;
        });
    }

    SharedMemory memory;
};

TEST_F(WatcherTest, AServiceThatIsKilledIsStartedAgainWithItsMouse) {
    StartService();
    AwaitWatcherOtherThan(0);
    const DWORD first = ServiceProcess();
    EXPECT_EQ(Run({L"--pause"}).exitCode, 0U);
    Kill(first);
    AwaitServiceOtherThan(first);
    auto status = Status();
    EXPECT_EQ(status["vid"], "1234");
    EXPECT_EQ(status["paused"], "no");
    EXPECT_EQ(Run({L"--quit"}).exitCode, 0U);
    EXPECT_TRUE(test::ComesTrue([this] { return RunningProcesses() == 0; }));
}

TEST_F(WatcherTest, KeysThatAKilledServiceHeldAreReleased) {
    StartService();
    AwaitWatcherOtherThan(0);
    const DWORD first = ServiceProcess();
    memory.State().held.counts[VK_F13] = 1;
    Kill(first);
    Await("the release", [this] { return memory.State().held.counts[VK_F13] == 0; });
    AwaitServiceOtherThan(first);
}

TEST_F(WatcherTest, AWatcherThatIsKilledIsReplaced) {
    StartService();
    const DWORD watched = ServiceProcess();
    const DWORD watcher = AwaitWatcherOtherThan(0);
    Kill(watcher);
    AwaitWatcherOtherThan(watcher);
    EXPECT_EQ(ServiceProcess(), watched);
    Kill(watched);
    AwaitServiceOtherThan(watched);
}

TEST_F(WatcherTest, AServiceThatKeepsEndingIsGivenUp) {
    StartService();
    AwaitWatcherOtherThan(0);
    for (int restart = 0; restart < 3; ++restart) {
        const DWORD killed = ServiceProcess();
        Kill(killed);
        AwaitServiceOtherThan(killed);
    }
    Kill(ServiceProcess());
    EXPECT_TRUE(test::ComesTrue([this] { return RunningProcesses() == 0; }, std::chrono::seconds{30}));
    EXPECT_EQ(Window(), nullptr);
}

TEST_F(WatcherTest, AServiceWhoseWindowHangsIsEndedByQuit) {
    ExpectEndInTime(true, [this] { EXPECT_EQ(Run({L"--quit"}).exitCode, 0U); });
}

TEST_F(WatcherTest, AServiceWhoseThreadsHangEndsInTimeAtQuit) {
    ExpectEndInTime(false, [] { PostMessageW(Window(), WM_CLOSE, 0, 0); });
    EXPECT_EQ(Run({L"--quit"}).exitCode, 0U);
}

TEST_F(WatcherTest, AServiceWhoseThreadsHangEndsInTimeWithTheSession) {
    ExpectEndInTime(false, [] {
        EXPECT_EQ(Send(WM_QUERYENDSESSION), TRUE);
        PostMessageW(Window(), WM_ENDSESSION, TRUE, 0);
    });
}

TEST_F(WatcherTest, TheLogIsContinuedAndAForcedProfileIsNot) {
    const std::wstring log = service::ProgramFolder() + L"watcher_test.log";
    StartService();
    AwaitWatcherOtherThan(0);
    EXPECT_EQ(Run({L"--log", log}).exitCode, 0U);
    EXPECT_EQ(Run({L"--profile", L"Default"}).exitCode, 0U);
    const DWORD first = ServiceProcess();
    const std::wstring arguments = memory.State().Arguments();
    EXPECT_NE(arguments.find(L"--log"), std::wstring::npos);
    EXPECT_TRUE(DeleteFileW(log.c_str()) || GetLastError() == ERROR_SHARING_VIOLATION);
    Kill(first);
    AwaitServiceOtherThan(first);
    Await("the log", [&] { return GetFileAttributesW(log.c_str()) != INVALID_FILE_ATTRIBUTES; });
    EXPECT_EQ(memory.State().Arguments(), arguments);
    EXPECT_EQ(Status()["why"], "selected");
    EXPECT_EQ(Run({L"--quit"}).exitCode, 0U);
    DeleteFileW(log.c_str());
}

TEST_F(WatcherTest, TheWatcherHasNoWindow) {
    StartService();
    EXPECT_EQ(WindowOf(AwaitWatcherOtherThan(0)), nullptr);
    EXPECT_NE(WindowOf(ServiceProcess()), nullptr);
}

// The names of the libraries that a process has loaded, in quotation marks.
std::wstring LibrariesOf(DWORD process) {
    const platform::UniqueFile snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPMODULE, process));
    MODULEENTRY32W entry{};
    entry.dwSize = sizeof entry;
    std::wstring names;
    Module32FirstW(snapshot.Get(), &entry);  // the program itself
    while (Module32NextW(snapshot.Get(), &entry)) names += L" \"" + std::wstring(entry.szModule) + L'"';
    return names;
}

// A program that only loads these libraries.
class IdleProgram {
public:
    explicit IdleProgram(const std::wstring& libraries)
        : process(test::StartProcess(service::ProgramFolder() + L"idle_program.exe" + libraries).process) {
        Await("the idle program", [this] { return WaitForSingleObject(ready.Get(), 0) == WAIT_OBJECT_0; });
    }
    IdleProgram(const IdleProgram&) = delete;
    IdleProgram& operator=(const IdleProgram&) = delete;
    ~IdleProgram() { TerminateProcess(process.Get(), 0); }

    HANDLE Process() const { return process.Get(); }

private:
    const UniqueKernelObject ready{CreateEventW(nullptr, TRUE, FALSE, kIdleProgramIsReady)};
    const UniqueKernelObject process;
};

// Under Wine the libraries' own data count too, which Windows shares among all programs. So under Wine the watcher is
// compared with a program that does nothing.
TEST_F(WatcherTest, TheWatcherTakesLessThanTwoMegabytes) {
    constexpr double kLimit = 2'048;
    StartService();
    const DWORD id = AwaitWatcherOtherThan(0);
    const UniqueKernelObject watcher(
        OpenProcess(PROCESS_QUERY_INFORMATION | PROCESS_VM_READ | PROCESS_DUP_HANDLE, FALSE, id));
    double taken = SettledKilobytes(watcher.Get(), "KvnMouseApl.exe", "--watch");
    if (test::RunsUnderWine()) {
        const IdleProgram idle(LibrariesOf(id));
        taken -= SettledKilobytes(idle.Process(), "idle_program.exe", ".dll");
    }
    EXPECT_LT(taken, kLimit);
}

}  // namespace
}  // namespace kvn::service_test
