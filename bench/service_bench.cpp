#include <windows.h>

#include <array>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "bench/benches.h"
#include "bench/heap_count.h"
#include "bench/import_watch.h"
#include "bench/plain_hook.h"
#include "bench/service_hook.h"
#include "bench/stopwatch.h"
#include "platform/service_messages.h"
#include "platform/service_protocol.h"
#include "platform/unique_resource.h"
#include "service/input/hook_loop.h"
#include "tests/support/process_use.h"
#include "tests/support/started_process.h"

namespace kvn::bench {
namespace {

using model::ButtonSlot;
using service::EngineSettings;

// Decisions.

constexpr int kDecisions = 160;  // for their orders there is room

constexpr std::array<std::string_view, 7> kLocks{
    "EnterCriticalSection",     "TryEnterCriticalSection",   "AcquireSRWLockExclusive",  "AcquireSRWLockShared",
    "SleepConditionVariableCS", "SleepConditionVariableSRW", "InitializeCriticalSection"};
constexpr std::array<std::string_view, 9> kWaits{"WaitForSingleObject",
                                                 "WaitForSingleObjectEx",
                                                 "WaitForMultipleObjects",
                                                 "WaitForMultipleObjectsEx",
                                                 "MsgWaitForMultipleObjectsEx",
                                                 "Sleep",
                                                 "SleepEx",
                                                 "SendMessageW",
                                                 "SendMessageTimeoutW"};

// How often the decisions call any of these functions.
double CallsAmong(std::span<const std::string_view> names, const std::function<void()>& decide) {
    const ImportWatch watch(GetModuleHandleW(nullptr), names);
    decide();
    return static_cast<double>(watch.CountOf(""));
}

struct HookEvent {
    WPARAM message;
    DWORD data;  // the high word of MSLLHOOKSTRUCT::mouseData
};

// A press and a release of a button with a function, a flick that starts flying scroll, a push of a tilt with a
// function, which stops it, and a press without a function.
constexpr HookEvent kTurn{WM_MOUSEWHEEL, WHEEL_DELTA};
constexpr std::array kEvents{
    HookEvent{WM_XBUTTONDOWN, XBUTTON1},    HookEvent{WM_XBUTTONUP, XBUTTON1}, kTurn, kTurn, kTurn, kTurn, kTurn, kTurn,
    HookEvent{WM_MOUSEHWHEEL, WHEEL_DELTA}, HookEvent{WM_RBUTTONDOWN, 0}};

void Decide(service::HookLoop& loop, int decisions) {
    MSLLHOOKSTRUCT details{};
    for (int decision = 0; decision < decisions; ++decision) {
        const HookEvent& event = kEvents[static_cast<std::size_t>(decision) % kEvents.size()];
        details.mouseData = event.data << 16U;
        ++details.time;
        loop.Keeps(event.message, details);
    }
}

// Nothing carries out the decisions, since the hands' own heap use must not count.
struct Decider {
    Decider() {
        EngineSettings settings;
        settings.controlCount = model::kButtonSlotCount;
        settings.functions[ButtonSlot::Button4] = kEscape;
        settings.functions[ButtonSlot::TiltRight] = kEscape;
        settings.flying.flicks = 1;
        loop.Send(settings);
        Decide(loop, 1);
    }

    service::HeldList held;
    service::Performer performer{held, {}};
    service::MouseActivity activity;
    service::HookLoop loop{performer, activity};
};

void BenchDecisions(Report& report) {
    Decider first;
    const std::size_t before = HeapAllocations();
    Decide(first.loop, kDecisions);
    const auto allocations = static_cast<double>(HeapAllocations() - before);
    Decider second;
    const double locks = CallsAmong(kLocks, [&] { Decide(second.loop, kDecisions); });
    Decider third;
    const double waits = CallsAmong(kWaits, [&] { Decide(third.loop, kDecisions); });
    report.Add({"160 decisions of the hook: allocations", "", allocations, "decisions", kDecisions, 0});
    report.Add({"  locks", "", locks, "decisions", kDecisions, 0});
    report.Add({"  waits", "", waits, "decisions", kDecisions, 0});
}

// Moves.

constexpr int kMoveRounds = 20;
constexpr int kMovesOfOneRound = 5'000;  // 100,000 in all rounds
constexpr double kMoveLimit = 1.1;

double MoveOften() {
    INPUT move{};
    move.type = INPUT_MOUSE;
    move.mi.dwFlags = MOUSEEVENTF_MOVE;
    return Measure([&] {
        for (int i = 0; i < kMovesOfOneRound; ++i) {
            move.mi.dx = i % 2 == 0 ? 1 : -1;
            SendInput(1, &move, sizeof move);
        }
    });
}

void BenchMoves(Report& report) {
    report.Compare(
        "5000 moves through the hook", "a hook that only passes on", kMoveLimit, kMoveRounds,
        [] {
            const ServiceHook hook(kEscape);
            return MoveOften();
        },
        [] {
            const PlainHook hook(PlainHook::Kind::PassesOn);
            return MoveOften();
        });
}

// The finished program.

constexpr wchar_t kProgramFile[] = L"service\\KvnMouseApl.exe";
constexpr DWORD kPatience = 10'000;

platform::UniqueKernelObject StartProgram(const std::wstring& options) {
    return std::move(test::StartProcess(std::wstring(kProgramFile) + L' ' + options).process);
}

class ServiceProgram {
public:
    ServiceProgram() : process(StartProgram(L"--mouse be4c:0001:5:0")) {
        for (DWORD waited = 0; platform::FindService() == nullptr && waited < kPatience; waited += 10) Sleep(10);
    }
    ServiceProgram(const ServiceProgram&) = delete;
    ServiceProgram& operator=(const ServiceProgram&) = delete;
    ~ServiceProgram() {
        const platform::UniqueKernelObject quit = StartProgram(L"--quit");
        if (quit) WaitForSingleObject(quit.Get(), kPatience);
    }

    bool Runs() const { return process && platform::FindService() != nullptr; }

    test::ProcessUse Use() const {
        return test::UseOf(process.Get(), "KvnMouseApl.exe", "be4c:0001:5:0").value_or(test::ProcessUse{-1, -1, -1});
    }

private:
    platform::UniqueKernelObject process;
};

void SendButton4(DWORD flag) {
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = flag;
    input.mi.mouseData = XBUTTON1;
    SendInput(1, &input, sizeof input);
}

void ClickButton4() {
    SendButton4(MOUSEEVENTF_XDOWN);
    SendButton4(MOUSEEVENTF_XUP);
}

// Sends mouse events and all messages of a page.
void UseService(int times) {
    using platform::ServiceMessage;
    const HWND service = platform::FindService();
    for (int time = 0; time < times; ++time) {
        ClickButton4();
        for (const auto message : {ServiceMessage::Probe, ServiceMessage::GestureEditBegin,
                                   ServiceMessage::IsButtonHeld, ServiceMessage::GestureEditEnd}) {
            SendMessageW(service, static_cast<UINT>(message), 0, 0);
        }
        if (time % 10 == 0) SendMessageW(service, static_cast<UINT>(ServiceMessage::SettingsChanged), 0, 0);
    }
}

constexpr double kFullRest = 60'000, kQuickRest = 10'000;
constexpr DWORD kUntilItRests = 1'500;

void BenchRest(Report& report, const ServiceProgram& service) {
    const double rest = report.IsQuick() ? kQuickRest : kFullRest;
    Sleep(kUntilItRests);
    const double before = service.Use().processorMilliseconds;
    if (before < 0) return report.AddMissing("the use of the processor");
    Sleep(static_cast<DWORD>(rest));
    report.Add({"processor time without input", "ms", service.Use().processorMilliseconds - before,
                "the time that passed", rest, 0});
}

// Long enough that the service does all its timed work, both during events and after them.
void WarmUp(DWORD milliseconds) {
    constexpr int kRoundsOfOneBurst = 1'000;
    for (const DWORD begin = GetTickCount(); GetTickCount() - begin < milliseconds;) {
        UseService(kRoundsOfOneBurst);
        Sleep(kUntilItRests);
    }
}

void BenchPrivateMemory(Report& report, const ServiceProgram& service) {
    constexpr DWORD kFullWarmUp = 60'000;
    constexpr DWORD kQuickWarmUp = 10'000;
    constexpr int kFullMore = 20'000;
    constexpr int kQuickMore = 3'000;
    WarmUp(report.IsQuick() ? kQuickWarmUp : kFullWarmUp);
    const double first = service.Use().privateKilobytes;
    UseService(report.IsQuick() ? kQuickMore : kFullMore);
    Sleep(kUntilItRests);
    report.Add(
        {"private memory after many events", "KB", service.Use().privateKilobytes, "after the warm-up", first, 1});
}

void BenchSize(Report& report) {
    constexpr double kMostKilobytes = 700;
    WIN32_FILE_ATTRIBUTE_DATA file{};
    if (!GetFileAttributesExW(kProgramFile, GetFileExInfoStandard, &file)) return report.AddMissing("the program");
    report.Add({"size of the service", "KB", file.nFileSizeLow / 1024.0, "what it may have", kMostKilobytes, 1});
}

}  // namespace

void BenchService(Report& report) {
    BenchDecisions(report);
    BenchMoves(report);
    BenchSize(report);
    const ServiceProgram service;
    if (!service.Runs()) return report.AddMissing("the finished service");
    BenchPrivateMemory(report, service);
    BenchRest(report, service);
}

}  // namespace kvn::bench
