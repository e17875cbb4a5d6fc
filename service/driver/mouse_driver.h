// Drives the mouse: the attached mice, the published one, its settings, the hook, and the threads that act.
#pragma once

#include <windows.h>

#include <atomic>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/critical_section.h"
#include "platform/unique_resource.h"
#include "service/driver/hook_check.h"
#include "service/driver/press_log.h"
#include "service/driver/status.h"
#include "service/input/attached_mice.h"
#include "service/input/hook_thread.h"
#include "service/input/mouse_activity.h"
#include "service/input/performer.h"
#include "service/options/mouse_option.h"
#include "service/page/message_handler.h"
#include "service/settings/profile_numbers.h"
#include "service/settings/settings_hub.h"

namespace kvn::service {

// Used on the thread of the service's window.
class MouseDriver : public IMessageHandler {
public:
    // From other threads.
    struct Outlets {
        std::function<void()> onChange;  // another profile is in force, or another mouse is attached
        std::function<void(const Order&)> onStroke;
        std::function<void(SettingsProblem, const std::wstring& path)> onProblem;
    };

    // The list is borrowed and must outlive the driver.
    MouseDriver(HeldList& held, Outlets chosenOutlets);
    virtual ~MouseDriver();  // releases everything
    MouseDriver(const MouseDriver&) = delete;
    MouseDriver& operator=(const MouseDriver&) = delete;

    // Watches the mice through this window, publishes one and takes its settings. `choice` is that of --mouse. False if
    // the mouse cannot be driven at all.
    [[nodiscard]] bool Start(HWND messageWindow, const std::optional<ChosenMouse>& choice);

    // Waits a moment for its settings to be in force.
    void Choose(const ChosenMouse& choice);
    // Waits a moment for the settings that are stored now to be in force.
    void Reread();
    void LogTo(const std::wstring& path) { log.WriteTo(path); }
    void Pause(bool pause);
    // An empty name means: by the program in front. Waits a moment for the profile to be in force; false if there is no
    // such profile.
    [[nodiscard]] bool Force(const std::wstring& profile);
    // The session was switched away, so another one publishes its mouse; or it is back.
    void LeaveSession(bool isStillActive);
    void ReturnToSession();
    void Reinstall();

    const std::optional<model::DeviceRecord>& Mouse() const { return mouse; }
    bool IsPaused() const { return isPaused; }
    bool IsHeld(model::ButtonSlot physicalButton);
    Status CurrentStatus() const;
    // The name of the profile with this number of EngineSettings; empty if none has it. From any thread.
    std::wstring NameOf(std::uint32_t profile) const { return names.NameOf(profile); }

    HookThread& Hook() { return hook; }
    SettingsHub& Settings() { return hub; }

    std::optional<LRESULT> OnMessage(const Message& message) override;

private:
    void OnAttached(const model::DeviceRecord& attached);
    void Take(const std::optional<model::DeviceRecord>& taken);
    void Publish() const;
    void UseSettings(const std::optional<model::DeviceRecord>& previous);
    void OnProfile(const ProfileInForce& profile);
    void AwaitSettings() const;
    void OnReleaseMissed(model::ButtonSlot physicalButton);

    Outlets outlets;
    HWND window = nullptr;
    MouseActivity activity;
    ProfileNumbers names;
    PressLog log;
    Performer performer;
    HookThread hook;
    platform::UniqueKernelObject hasSettings;  // an event
    // Guards the settings of the hook: those of the mouse's profile or, without a mouse, the natural ones.
    platform::CriticalSection settingsSection;
    bool hasMouse = false;
    SettingsHub hub;
    AttachedMice mice;
    HookCheck hookCheck;
    bool isChosen = false;
    bool isPaused = false;
    bool isSessionActive = true;
    std::uint64_t reinstalled = 0;
    std::optional<model::DeviceRecord> mouse;
};

}  // namespace kvn::service
