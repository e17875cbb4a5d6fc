// Which profile is in force: reads registry and profile file of the mouse, follows them and the program in front, and
// says so at every change. A thread of its own does the work.
#pragma once

#include <windows.h>

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "model/device_record.h"
#include "service/engine/engine_settings.h"
#include "service/input/mouse_activity.h"

namespace kvn::service {

enum class Why : std::uint8_t { Selected, Program, Forced };

struct ProfileInForce {
    EngineSettings settings;
    std::wstring name;
    Why why = Why::Selected;
};

enum class SettingsProblem : std::uint8_t { FileUnreadable, FileSetAside };

class SettingsHub {
public:
    // Called on the hub's thread.
    struct Outlets {
        std::function<void(const ProfileInForce&)> onProfile;  // it is another one, or has other settings
        std::function<void(HWND)> onWindowInFront;             // another one, not the service's own
        // Once for each problem until it is gone. The text is the path of the file, or of the one that it was set aside
        // as.
        std::function<void(SettingsProblem, const std::wstring& path)> onProblem;
    };

    // Puts its own event into the activity, whose writer must end before the hub does.
    SettingsHub(MouseActivity& mouseActivity, Outlets chosenOutlets);
    ~SettingsHub();
    SettingsHub(const SettingsHub&) = delete;
    SettingsHub& operator=(const SettingsHub&) = delete;

    bool Start();

    // From any other thread; none of them waits for the work.
    void UseMouse(const model::DeviceRecord& mouse);
    bool HasTakenMouse() const;  // the profile in force is that of the mouse named last
    void Reread();               // the page says that the settings have changed
    void ForceAutomatic();
    bool Force(const std::wstring& profileName);  // false: there is no such profile, or none was read yet

    ProfileInForce InForce() const;
    std::vector<std::wstring> ProfileNames() const;    // in the order of the file
    std::wstring ForcedProfile() const;                // empty: automatic
    std::wstring NameOf(std::uint32_t profile) const;  // of the number in EngineSettings
    std::wstring ProgramInFront() const;               // its path, if Windows says it; the service's own never counts
    std::uint64_t SwitchCount() const;                 // of the profile in force

private:
    class Worker;
    std::unique_ptr<Worker> worker;
    std::atomic<std::uint64_t> orderedMice = 0;
};

}  // namespace kvn::service
