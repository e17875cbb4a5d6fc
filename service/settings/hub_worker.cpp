#include "service/settings/hub_worker.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "model/registry_values.h"
#include "platform/boundary.h"
#include "service/settings/profile_choice.h"
#include "service/settings/settings_block.h"

namespace kvn::service {
namespace {

constexpr std::uint64_t kLookEvery = 500;
constexpr std::uint64_t kLookAfterLastEvent = 1000;
constexpr DWORD kPauseAfterFailure = 100;

using UniqueEventHook = platform::Owned<HWINEVENTHOOK, &UnhookWinEvent>;

// The event needs no work here: the message that brings it has already woken the thread.
void CALLBACK OnWindowEvent(HWINEVENTHOOK, DWORD, HWND, LONG, LONG, DWORD, DWORD) {}

UniqueEventHook FollowWindowsInFront() {
    return UniqueEventHook(SetWinEventHook(EVENT_SYSTEM_FOREGROUND, EVENT_SYSTEM_FOREGROUND, nullptr, OnWindowEvent, 0,
                                           0, WINEVENT_OUTOFCONTEXT | WINEVENT_SKIPOWNPROCESS));
}

void TakeMessages() {
    MSG message{};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
}

std::vector<std::wstring> NamesOf(const model::ProfileSet& profiles) {
    std::vector<std::wstring> names;
    for (const model::ProfileRecord& profile : profiles) names.push_back(profile.name);
    return names;
}

}  // namespace

HubWorker::HubWorker(MouseActivity& mouseActivity, ProfileNumbers& profileNames, HubOutlets chosenOutlets)
    : activity(mouseActivity), names(profileNames), outlets(std::move(chosenOutlets)) {}

void HubWorker::RequestStop() {
    isStopping = true;
    SetEvent(exchange.OrderCame());
}

// Each step is guarded alone: if one fails for lack of memory, the others still run, and it is repeated later.
void HubWorker::Run() {
    const UniqueEventHook followed = FollowWindowsInFront();
    while (true) {
        for (const auto step : {&HubWorker::TakeOrders, &HubWorker::ReadIfDue, &HubWorker::LookIfDue,
                                &HubWorker::WorkOutProfile, &HubWorker::Wait}) {
            if (isStopping) return;
            if (!platform::Completes([&] { (this->*step)(); })) Sleep(kPauseAfterFailure);
        }
    }
}

void HubWorker::Wait() {
    std::vector<HANDLE> signals{exchange.OrderCame(), activity.wake.Get()};
    if (keyWatch && keyWatch->Signal()) signals.push_back(keyWatch->Signal());
    for (const HANDLE signal : folderWatch.Signals()) signals.push_back(signal);

    const auto count = static_cast<DWORD>(signals.size());
    const DWORD first =
        MsgWaitForMultipleObjectsEx(count, signals.data(), WaitMilliseconds(), QS_ALLINPUT, MWMO_INPUTAVAILABLE);
    activity.isSomeoneAsleep = false;
    if (first < WAIT_OBJECT_0 + count) return NoteSignal(signals[first - WAIT_OBJECT_0]);
    if (first != WAIT_OBJECT_0 + count) return;
    TakeMessages();
    lastWindowEvent = GetTickCount64();
    lastLook = 0;
}

void HubWorker::NoteSignal(HANDLE signal) {
    if (signal == exchange.OrderCame() || signal == activity.wake.Get()) return;
    schedule.NoteChange(GetTickCount64());
    if (keyWatch && signal == keyWatch->Signal()) {
        keyWatch.emplace();
    } else {
        WatchFolder();
    }
}

// A deleted folder stays until its last handle is closed, so the old watch ends before the new one begins.
void HubWorker::WatchFolder() {
    folderWatch = FolderWatch();
    folderWatch = FolderWatch(store.Folder());
}

// Reads the event's time before the clock, so that an event in between is not in the future.
bool HubWorker::IsMouseInUse() const {
    const std::uint32_t lastEvent = activity.lastEvent;
    return GetTickCount() - lastEvent <= kLookAfterLastEvent;
}

// Nothing while the mouse rests: its next event wakes the thread.
std::optional<std::uint64_t> HubWorker::NextLook() {
    const auto isInUse = [this] { return IsMouseInUse() || GetTickCount64() - lastWindowEvent <= kLookAfterLastEvent; };
    if (isInUse()) return lastLook + kLookEvery;
    activity.isSomeoneAsleep = true;
    if (!isInUse()) return std::nullopt;
    activity.isSomeoneAsleep = false;
    return lastLook + kLookEvery;
}

DWORD HubWorker::WaitMilliseconds() {
    if (orderedMouse || (mouse && isProfileStale)) return kPauseAfterFailure;
    const std::optional<std::uint64_t> look = NextLook();
    const std::optional<std::uint64_t> reading = schedule.Due();
    if (!look && !reading) return INFINITE;
    const std::uint64_t now = GetTickCount64();
    const std::uint64_t next = std::min(look.value_or(UINT64_MAX), reading.value_or(UINT64_MAX));
    return next > now ? static_cast<DWORD>(next - now) : 0;
}

void HubWorker::TakeOrders() {
    HubOrders orders = exchange.TakeOrders();
    if (orders.reading != 0) {
        readingNumber = orders.reading;
        schedule.ReadAtOnce(GetTickCount64());
    }
    if (orders.forced) {
        forced = std::move(*orders.forced);
        isProfileStale = true;
    }
    if (orders.mouse) orderedMouse = std::move(orders.mouse);
    if (!orderedMouse) return;
    UseMouse(orderedMouse->record);
    mouseNumber = orderedMouse->number;
    orderedMouse.reset();
}

void HubWorker::UseMouse(const model::DeviceRecord& used) {
    const bool isOtherModel = !mouse || mouse->vid != used.vid || mouse->pid != used.pid;
    if (isOtherModel) {
        store = ProfileStore(used.vid, used.pid);
        isFileUnreadable = false;
    }
    mouse = used;
    schedule.ReadAtOnce(GetTickCount64());
}

void HubWorker::ReadIfDue() {
    if (!schedule.IsDue(GetTickCount64())) return;
    schedule.NoteReading();
    if (mouse && !platform::Completes([this] { Read(); })) schedule.NoteFailure(GetTickCount64());
}

// Renews the watches first, so that a change during the reading causes another one.
void HubWorker::Read() {
    keyWatch.emplace();
    WatchFolder();
    const bool wasUnreadable = std::exchange(isFileUnreadable, !store.Read());
    isProfileStale = true;
    if (isFileUnreadable) schedule.NoteFailure(GetTickCount64());
    frontComparison.Forget();
    ReportNames();
    ReportSetAside();
    if (isFileUnreadable && !wasUnreadable) Call(outlets.onProblem, SettingsProblem::FileUnreadable, store.FilePath());
}

void HubWorker::ReportSetAside() {
    for (const std::wstring& path : store.TakeNewlySetAside()) {
        Call(outlets.onProblem, SettingsProblem::FileSetAside, path);
    }
}

void HubWorker::LookIfDue() {
    const std::uint64_t now = GetTickCount64();
    if (now < lastLook + kLookEvery) return;
    lastLook = now;
    const FrontProgram::Change change = front.Look();
    if (change.isOtherProgram) {
        isProfileStale = true;
        frontComparison.SetProgram(front.Program());
        ReportProgram();
    }
    if (change.isOtherWindow) Call(outlets.onWindowInFront, front.Window());
}

void HubWorker::ReportProgram() {
    std::wstring program = front.Program();
    exchange.Report([&](HubReport& report) { report.programInFront.swap(program); });
}

void HubWorker::WorkOutProfile() {
    if (!mouse || !isProfileStale) return;
    const ProfileChoice choice = ChooseProfile(store.Profiles(), store.Selected(), forced, frontComparison);
    ProfileInForce next;
    next.name = store.Profiles()[choice.profile].name;
    next.why = choice.why;
    const std::uint32_t number = names.NumberOf(model::MouseModelName(mouse->vid, mouse->pid), next.name);
    next.settings = SettingsBlock(store.SettingsOf(choice.profile), *mouse, number);
    Publish(next);
    isProfileStale = false;
}

void HubWorker::Publish(const ProfileInForce& next) {
    const bool isOtherProfile = inForce && inForce->profile != next.settings.profile;
    const bool isNews = !inForce || *inForce != next.settings;
    ProfileInForce reported = next;
    std::wstring reportedForced = next.why == Why::Forced ? next.name : std::wstring();
    exchange.Report([&](HubReport& report) {
        std::swap(report.inForce, reported);
        report.forced.swap(reportedForced);
        if (isOtherProfile) ++report.switches;
    });
    // If the outlet fails, it is called again.
    if (isNews) Call(outlets.onProfile, next);
    inForce = next.settings;
    exchange.Report([this](HubReport& report) {
        report.mouseNumber = mouseNumber;
        report.readingNumber = readingNumber;
    });
}

void HubWorker::ReportNames() {
    HubReport::Names profiles = std::make_shared<std::vector<std::wstring>>(NamesOf(store.Profiles()));
    exchange.Report([&](HubReport& report) { report.profiles.swap(profiles); });
}

}  // namespace kvn::service
