#include "service/driver/mouse_driver.h"

#include <mutex>

#include "platform/boundary.h"
#include "service/input/key_sending.h"
#include "service/settings/published_mouse.h"

namespace kvn::service {
namespace {

using model::ButtonSlot;

// The start does not wait longer for the settings.
constexpr DWORD kSettingsMilliseconds = 2'000;
constexpr DWORD kHubMilliseconds = 500;
constexpr DWORD kPollMilliseconds = 5;

// Waits a moment for the hub to carry out an order. A busy hub does it later.
template <typename Condition>
void AwaitHub(const Condition& isMet) {
    for (DWORD waited = 0; waited < kHubMilliseconds && !isMet(); waited += kPollMilliseconds) Sleep(kPollMilliseconds);
}

}  // namespace

MouseDriver::MouseDriver(HeldList& held, Outlets chosenOutlets)
    : outlets(std::move(chosenOutlets)),
      performer(held, {.onDone =
                           [this](const Order& order, const std::wstring& done) {
                               if (order.isOfPress) log.Write(order, names.NameOf(order.profile), done);
                           },
                       .onStroke = [this](const Order& order) { outlets.onStroke(order); }}),
      hook(performer, activity),
      hasSettings(CreateEventW(nullptr, TRUE, FALSE, nullptr)),
      hub(activity, names,
          {.onProfile = [this](const ProfileInForce& profile) { OnProfile(profile); },
           .onWindowInFront = [this](HWND) { hook.WindowInFront(); },
           .onProblem = [this](SettingsProblem problem,
                               const std::wstring& path) { outlets.onProblem(problem, path); }}),
      mice({.onMouse = [this](const model::DeviceRecord& attached) { OnAttached(attached); },
            .onButtons = [this](const ButtonChange& change) { hookCheck.OnButtons(window, change); }}),
      hookCheck({.lastPressOfHook = [this] { return hook.LastPress(); },
                 .heldButtons = [this] { return hook.HeldButtons(); },
                 .onBlind = [this] { Reinstall(); },
                 .onReleaseMissed = [this](ButtonSlot button) { OnReleaseMissed(button); }}) {}

MouseDriver::~MouseDriver() = default;

bool MouseDriver::Start(HWND messageWindow, const std::optional<ChosenMouse>& choice) {
    window = messageWindow;
    if (!performer.Start() || !hub.Start()) return false;
    // The mouse that is attached at the start is taken once, below.
    isChosen = true;
    mice.Watch(window);
    isChosen = choice.has_value();
    Take(choice ? choice->mouse : mice.Current());
    hook.Swapped(GetSystemMetrics(SM_SWAPBUTTON) != 0);
    hook.Start();
    if (mouse) AwaitSettings();
    return true;
}

void MouseDriver::AwaitSettings() const {
    WaitForSingleObject(hasSettings.Get(), kSettingsMilliseconds);
}

void MouseDriver::Choose(const ChosenMouse& choice) {
    isChosen = true;
    Take(choice.mouse);
    if (mouse) AwaitHub([this] { return hub.HasTakenMouse(); });
}

void MouseDriver::Reread() {
    hub.Reread();
    if (mouse) AwaitHub([this] { return hub.HasReread(); });
}

void MouseDriver::OnAttached(const model::DeviceRecord& attached) {
    if (!isChosen) Take(attached);
}

void MouseDriver::Take(const std::optional<model::DeviceRecord>& taken) {
    const std::optional<model::DeviceRecord> previous = std::exchange(mouse, taken);
    Publish();
    UseSettings(previous);
    outlets.onChange();
}

void MouseDriver::Publish() const {
    if (mouse && isSessionActive) static_cast<void>(PublishMouse(*mouse));
}

void MouseDriver::UseSettings(const std::optional<model::DeviceRecord>& previous) {
    if (mouse) hub.UseMouse(*mouse);
    const std::lock_guard lock(settingsSection);
    hasMouse = mouse.has_value();
    if (!mouse) hook.Use(EngineSettings{});
    // The hub reports nothing if it already has this mouse.
    if (mouse && !previous) hook.Use(hub.InForce().settings);
}

// On the hub's thread.
void MouseDriver::OnProfile(const ProfileInForce& profile) {
    {
        const std::lock_guard lock(settingsSection);
        if (hasMouse) hook.Use(profile.settings);
    }
    SetEvent(hasSettings.Get());
    outlets.onChange();
}

void MouseDriver::Pause(bool pause) {
    isPaused = pause;
    hook.Pause(pause);
    outlets.onChange();
}

bool MouseDriver::Force(const std::wstring& profile) {
    if (profile.empty()) {
        hub.ForceAutomatic();
    } else if (!hub.Force(profile)) {
        return false;
    }
    AwaitHub([&] { return hub.ForcedProfile() == profile; });
    return true;
}

void MouseDriver::LeaveSession(bool isStillActive) {
    isSessionActive = isStillActive;
    hook.LeaveSession();
}

void MouseDriver::ReturnToSession() {
    isSessionActive = true;
    Publish();
    hook.Swapped(GetSystemMetrics(SM_SWAPBUTTON) != 0);
    Reinstall();
}

void MouseDriver::Reinstall() {
    ++reinstalled;
    hook.Reinstall();
}

// A hook that misses a release may be gone.
void MouseDriver::OnReleaseMissed(ButtonSlot physicalButton) {
    Reinstall();
    hook.ReleaseMissed(physicalButton);
}

// Without a hook Windows itself knows the buttons.
bool MouseDriver::IsHeld(ButtonSlot physicalButton) {
    const auto slot = static_cast<std::size_t>(physicalButton);
    hook.Question(physicalButton);
    if (!hook.IsInstalled()) return GetAsyncKeyState(kButtonKeys[slot]) < 0;
    return (hook.HeldButtons() >> slot & 1U) != 0;
}

// The hub keeps the profile of a mouse that is no longer attached.
Status MouseDriver::CurrentStatus() const {
    const ProfileInForce inForce = mouse ? hub.InForce() : ProfileInForce{};
    return {.mouse = mouse,
            .profile = inForce.name,
            .why = inForce.why,
            .isPaused = isPaused,
            .isHookAlive = hook.IsInstalled(),
            .reinstalled = reinstalled,
            .presses = hook.PressCount(),
            .actions = performer.ActionCount(),
            .switches = hub.SwitchCount()};
}

std::optional<LRESULT> MouseDriver::OnMessage(const Message& message) {
    switch (message.id) {
        case WM_INPUT:
            mice.OnInput(reinterpret_cast<HRAWINPUT>(message.lParam));
            return std::nullopt;  // Windows needs it too
        case WM_INPUT_DEVICE_CHANGE:
            mice.OnDeviceChange(message.wParam, reinterpret_cast<HANDLE>(message.lParam));
            return 0;
        default:
            return hookCheck.OnMessage(message);
    }
}

}  // namespace kvn::service
