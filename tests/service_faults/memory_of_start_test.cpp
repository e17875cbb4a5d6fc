// The start of the service without memory: every allocation in this process, and some of the whole program.
#include <windows.h>

#include <shellapi.h>

#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <exception>
#include <string>
#include <vector>

#include "platform/boundary.h"
#include "platform/service_protocol.h"
#include "platform/system_library.h"
#include "service/lifecycle/processes.h"
#include "service/lifecycle/session_lock.h"
#include "service/page/service_window.h"
#include "tests/service_faults/application_fixture.h"
#include "tests/service_faults/refused_memory.h"
#include "tests/service_faults/refused_program.h"
#include "tests/support/replaced_import.h"
#include "tests/support/started_process.h"
#include "tests/support/waiting.h"

namespace kvn::test {
namespace {

using platform::UniqueKernelObject;

// The Windows objects that a start has created and not released.
class MemoryOfStartTest : public ApplicationTest {
protected:
    void StartAndEnd() {
        try {
            isStarted = Start();
            EXPECT_TRUE(!isStarted || Probe() == 1);
        } catch (const std::exception&) {
            isStarted = false;
        }
        End();
    }
    void ExpectNothingLeft() const {
        EXPECT_EQ(Window(), nullptr);
        EXPECT_FALSE(hasIcon);
        EXPECT_EQ(hooks, 0);
        EXPECT_TRUE(IsNothingHeld());
    }

    bool isStarted = false;
    bool hasIcon = false;
    std::atomic<int> hooks = 0;
    const ReplacedImport<"Shell_NotifyIconW", BOOL(DWORD, NOTIFYICONDATAW*)> notify{
        GetModuleHandleW(nullptr), [this](DWORD what, NOTIFYICONDATAW*) -> BOOL {
            if (what == NIM_ADD || what == NIM_DELETE) hasIcon = what == NIM_ADD;
            return TRUE;
        }};
    const ReplacedImport<"SetWindowsHookExW", HHOOK(int, HOOKPROC, HINSTANCE, DWORD)> install{
        GetModuleHandleW(nullptr), [this](int kind, HOOKPROC procedure, HINSTANCE module, DWORD thread) {
            ++hooks;
            return SetWindowsHookExA(kind, procedure, module, thread);
        }};
    BOOL(WINAPI* const unhook)
    (HHOOK) = platform::SystemFunction<BOOL WINAPI(HHOOK)>(L"user32.dll", "UnhookWindowsHookEx");
    const ReplacedImport<"UnhookWindowsHookEx", BOOL(HHOOK)> remove{GetModuleHandleW(nullptr), [this](HHOOK hook) {
                                                                        --hooks;
                                                                        return unhook(hook);
                                                                    }};
};

TEST_F(MemoryOfStartTest, AStartSucceedsOrLeavesNothingBehind) {
    SweepRefusals(
        Whose::This, 1, [&] { StartAndEnd(); },
        [&](int number) {
            SCOPED_TRACE(number);
            ExpectNothingLeft();
        });
    EXPECT_TRUE(isStarted) << "the last start has all memory";
}

TEST_F(MemoryOfStartTest, AStartWhoseThreadsFindNoMemorySucceeds) {
    constexpr int kStep = 40;
    SweepRefusals(
        Whose::Others, kStep, [&] { StartAndEnd(); },
        [&](int number) {
            SCOPED_TRACE(number);
            EXPECT_TRUE(isStarted);
            ExpectNothingLeft();
        });
}

// The memory that an exception frees goes to the reserve before anything else can take it.
TEST(MemoryReserveTest, IsThereForTheNextExceptionOfTheSameCall) {
    const auto throwing = [] { std::vector<char>(100'000).front() = 1; };
    constexpr std::size_t kPartOfReserve = 8 * 1024;
    void* others = nullptr;
    RefusedMemory::RefuseOne(Whose::This, 1);
    static_cast<void>(platform::Completes(throwing));  // a thread's first exception keeps some memory
    RefusedMemory::RefuseFrom(Whose::This, 1);
    const bool isComplete = platform::Completes([&] {
        static_cast<void>(platform::Completes(throwing));
        others = std::malloc(kPartOfReserve);
    });
    EXPECT_TRUE(RefusedMemory::StopRefusing());
    EXPECT_TRUE(isComplete);
    EXPECT_EQ(others, nullptr);
    std::free(others);
}

// The finished program, with only its memory refused.
class MemoryOfProgramTest : public testing::Test {
protected:
    ~MemoryOfProgramTest() override {
        TerminateJobObject(job.Get(), 1);
        RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\KORVEN\\MouseUtility");
    }

    void Start(Whose whose, int number, bool isFromThereOn) {
        SetEnvironmentVariableW(kRefusedVariable, RefusalText(whose, number, isFromThereOn).c_str());
        StartedProcess started = StartProcess(
            service::ProgramFolder() + L"service_without_memory.exe --mouse beef:0001:5:1", CREATE_SUSPENDED);
        SetEnvironmentVariableW(kRefusedVariable, nullptr);
        ASSERT_TRUE(started.process);
        process = std::move(started.process);
        AssignProcessToJobObject(job.Get(), process.Get());
        ResumeThread(started.thread.Get());
    }
    bool HasEnded() const { return WaitForSingleObject(process.Get(), 0) == WAIT_OBJECT_0; }
    static bool Answers() {
        DWORD_PTR answer = 0;
        const HWND window = service::FindRunningService();
        return window != nullptr &&
               SendMessageTimeoutW(window, static_cast<UINT>(platform::ServiceMessage::Probe), 0, 0, SMTO_NORMAL,
                                   kPatienceMilliseconds, &answer) != 0 &&
               answer == 1;
    }
    int RunningProcesses() const {
        JOBOBJECT_BASIC_ACCOUNTING_INFORMATION account{};
        QueryInformationJobObject(job.Get(), JobObjectBasicAccountingInformation, &account, sizeof account, nullptr);
        return static_cast<int>(account.ActiveProcesses);
    }
    // Whether it started to work; then it can be ended like any other.
    bool StartsWorking() {
        EXPECT_TRUE(ComesTrue([this] { return HasEnded() || Answers(); })) << "the start hangs";
        if (HasEnded()) return false;
        PostMessageW(service::FindRunningService(), WM_CLOSE, 0, 0);
        return true;
    }
    void ExpectNothingLeft() const {
        EXPECT_TRUE(ComesTrue([this] { return RunningProcesses() == 0; }));
        EXPECT_EQ(service::FindRunningService(), nullptr);
        EXPECT_FALSE(service::SessionLock::IsTaken());
    }

    UniqueKernelObject job{CreateJobObjectW(nullptr, nullptr)};
    UniqueKernelObject process;
};

TEST_F(MemoryOfProgramTest, StartsWorkingOrEndsAndLeavesNothingBehind) {
    constexpr int kStep = 6, kMost = 300;
    int inARow = 0;
    for (int number = 1; number < kMost && inARow < 3; number += kStep) {
        SCOPED_TRACE(number);
        Start(Whose::This, number, number % 2 == 0);
        inARow = StartsWorking() ? inARow + 1 : 0;
        ExpectNothingLeft();
        if (HasFailure()) return;
    }
    EXPECT_EQ(inARow, 3) << "it works with all memory";
}

}  // namespace
}  // namespace kvn::test
