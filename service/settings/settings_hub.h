// Determines the profile in force: reads registry and profile file of the mouse, follows them and the program in front,
// and reports every change. A separate thread does the work.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "model/device_record.h"
#include "platform/unique_resource.h"
#include "service/input/mouse_activity.h"
#include "service/settings/profile_in_force.h"
#include "service/settings/profile_numbers.h"

namespace kvn::service {

class HubWorker;

class SettingsHub {
public:
    using Outlets = HubOutlets;

    // Both are borrowed and must outlive the hub.
    SettingsHub(MouseActivity& mouseActivity, ProfileNumbers& profileNames, Outlets chosenOutlets);
    ~SettingsHub();  // waits at most a second for a thread that is waiting for a drive
    SettingsHub(const SettingsHub&) = delete;
    SettingsHub& operator=(const SettingsHub&) = delete;

    [[nodiscard]] bool Start();

    // From any other thread; none of these waits for the work.
    void UseMouse(const model::DeviceRecord& mouse);
    bool HasTakenMouse() const;  // the profile in force is that of the mouse named last
    void Reread();               // the page reports that the settings have changed
    bool HasReread() const;      // the settings that were stored at the last report are in force
    void ForceAutomatic();
    // False: there is no such profile, or none was read yet.
    [[nodiscard]] bool Force(const std::wstring& profileName);

    ProfileInForce InForce() const;
    std::vector<std::wstring> ProfileNames() const;  // in the order of the file
    std::wstring ForcedProfile() const;              // empty: automatic
    std::wstring ProgramInFront() const;  // its path, if Windows reports it; the service's windows never count
    std::uint64_t SwitchCount() const;    // of the profile in force

private:
    std::shared_ptr<HubWorker> worker;  // shared with its thread
    platform::UniqueKernelObject thread;
    std::atomic<std::uint64_t> orderedMice = 0;
    std::atomic<std::uint64_t> orderedReadings = 0;
};

}  // namespace kvn::service
