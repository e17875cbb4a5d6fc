#include "service/lifecycle/watcher.h"

#include <algorithm>
#include <array>

#include "platform/boundary.h"
#include "service/lifecycle/processes.h"
#include "service/resources/service_resource.h"
#include "service/resources/service_texts.h"

namespace kvn::service {
namespace {

using platform::UniqueKernelObject;

constexpr DWORD kEndMilliseconds = 2'000;
// After several watchers in a row that ended sooner than this, the next one is not started at once.
constexpr std::uint64_t kShortLifeMilliseconds = 2'000;
constexpr int kMostShortLives = 5;
// The time until the next attempt to start a watcher: usually, and after several short lives.
constexpr DWORD kRetryMilliseconds = 1'000, kLateRetryMilliseconds = 60'000;
// If a new service cannot be started for lack of memory, the watcher tries again once a second, this many times.
constexpr int kMostTries = 60;

UniqueKernelObject OpenEndEvent() {
    return UniqueKernelObject(CreateEventW(nullptr, FALSE, FALSE, kWatcherEndEvent));
}

UniqueKernelObject OpenToWait(std::uint32_t processId) {
    return UniqueKernelObject(processId == 0 ? nullptr : OpenProcess(SYNCHRONIZE, FALSE, processId));
}

// True if the service has ended; false if the watcher must end.
bool AwaitEnd(HANDLE service, HANDLE endEvent) {
    const std::array<HANDLE, 2> handles{endEvent, service};
    return WaitForMultipleObjects(static_cast<DWORD>(handles.size()), handles.data(), FALSE, INFINITE) ==
           WAIT_OBJECT_0 + 1;
}

UniqueKernelObject TryToStartService(const SharedState& shared) {
    UniqueKernelObject service;
    platform::Completes([&] {
        const std::wstring watchedBy = L"--watched-by " + std::to_wstring(GetCurrentProcessId());
        service = std::move(StartProcess(ProgramPath(), watchedBy + L' ' + shared.Arguments()).handle);
    });
    return service;
}

enum class Restart : std::uint8_t { Done, Impossible, Unwanted };

Restart StartServiceAgain(const SharedState& shared, HANDLE endEvent, UniqueKernelObject& service) {
    for (int attempt = 0; attempt < kMostTries; ++attempt) {
        service = TryToStartService(shared);
        if (service) return Restart::Done;
        if (WaitForSingleObject(endEvent, kRetryMilliseconds) == WAIT_OBJECT_0) return Restart::Unwanted;
    }
    return Restart::Impossible;
}

// Writes to Windows' application log.
void ReportGivingUp() {
    const platform::Owned<HANDLE, &DeregisterEventSource> source(RegisterEventSourceW(nullptr, L"KvnMouseApl"));
    if (!source) return;
    const std::wstring text = Text(IDS_EVENT_GIVEN_UP);
    const wchar_t* const texts = text.c_str();
    ReportEventW(source.Get(), EVENTLOG_ERROR_TYPE, 0, 1, nullptr, 1, 0, const_cast<const wchar_t**>(&texts), nullptr);
}

}  // namespace

bool RestartLimit::Allows(std::uint64_t now) {
    // The oldest of the last three.
    std::uint64_t& oldest = times[count % kRestarts];
    if (count >= kRestarts && now - oldest < kPeriodMilliseconds) return false;
    oldest = now;
    ++count;
    return true;
}

void WatchService(std::uint32_t serviceProcess) {
    SharedMemory memory;
    SharedState& shared = memory.State();
    if (!memory.IsShared()) return;
    UniqueKernelObject service = OpenToWait(serviceProcess);
    // A service that has ended cannot be opened any more. If it cannot be opened for another reason, its state is
    // unknown.
    if (!service && GetLastError() != ERROR_INVALID_PARAMETER) return;
    // Opened last: from here on other processes see that the service is watched.
    const UniqueKernelObject endEvent = OpenEndEvent();
    if (!endEvent) return;
    shared.watcherProcess = GetCurrentProcessId();
    RestartLimit limit;
    while (!service || AwaitEnd(service.Get(), endEvent.Get())) {
        ReleaseAll(shared.held);
        if (shared.hasEnded != 0) return;
        if (!limit.Allows(GetTickCount64())) return ReportGivingUp();
        const Restart restart = StartServiceAgain(shared, endEvent.Get(), service);
        if (restart == Restart::Impossible) ReportGivingUp();
        if (restart != Restart::Done) return;
    }
}

bool EndWatcher() {
    SharedMemory memory;
    const UniqueKernelObject watcher = OpenToWait(memory.State().watcherProcess);
    if (!watcher) return true;
    const UniqueKernelObject endEvent = OpenEndEvent();
    SetEvent(endEvent.Get());
    const bool hasEnded = WaitForSingleObject(watcher.Get(), kEndMilliseconds) == WAIT_OBJECT_0;
    // The event must not end the next watcher.
    ResetEvent(endEvent.Get());
    return hasEnded;
}

void Watcher::Start(std::uint32_t startedBy) {
    if (startedBy != 0 && Adopt(startedBy)) return;
    EndWatcher();
    shared.hasEnded = 0;
    StartAnother();
}

bool Watcher::Adopt(std::uint32_t processId) {
    if (shared.watcherProcess != processId) return false;
    process = OpenToWait(processId);
    startTime = GetTickCount64();
    return static_cast<bool>(process);
}

void Watcher::StartAnother() {
    startTime = GetTickCount64();
    StartedProcess started = StartProcess(ProgramPath(), L"--watch " + std::to_wstring(GetCurrentProcessId()));
    memory.KeepFor(started.handle.Get());
    shared.watcherProcess = started.id;
    process = std::move(started.handle);
}

void Watcher::Replace() {
    process.Reset();
    const bool wasShort = GetTickCount64() - startTime < kShortLifeMilliseconds;
    shortLives = wasShort ? shortLives + 1 : 0;
    if (shortLives < kMostShortLives) platform::Completes([this] { StartAnother(); });
}

DWORD Watcher::MillisecondsToRetry() const {
    if (process) return INFINITE;
    const std::uint64_t patience = shortLives < kMostShortLives ? kRetryMilliseconds : kLateRetryMilliseconds;
    const std::uint64_t waited = GetTickCount64() - startTime;
    return waited < patience ? static_cast<DWORD>(patience - waited) : 0;
}

}  // namespace kvn::service
