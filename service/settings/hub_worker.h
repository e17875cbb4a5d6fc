// The hub's thread: it waits for orders, for changes of registry and files and for the program in front, and determines
// the profile in force after each.
#pragma once

#include <windows.h>

#include <atomic>
#include <cstdint>
#include <optional>
#include <string>

#include "platform/unique_resource.h"
#include "service/input/mouse_activity.h"
#include "service/settings/change_watch.h"
#include "service/settings/front_program.h"
#include "service/settings/hub_exchange.h"
#include "service/settings/profile_in_force.h"
#include "service/settings/profile_numbers.h"
#include "service/settings/profile_store.h"
#include "service/settings/program_path.h"
#include "service/settings/reading_schedule.h"

namespace kvn::service {

class HubWorker {
public:
    HubWorker(MouseActivity& mouseActivity, ProfileNumbers& profileNames, HubOutlets chosenOutlets);
    HubWorker(const HubWorker&) = delete;
    HubWorker& operator=(const HubWorker&) = delete;
    ~HubWorker() = default;

    // False if its events could not be created.
    bool CanStart() const { return exchange.OrderCame() && activity.wake; }
    // The body of the thread, until it is asked to stop.
    void Run();
    // From another thread. A thread that is waiting for a drive ends later, and calls no outlet any more.
    void RequestStop();

    HubExchange& Exchange() { return exchange; }

private:
    void Wait();
    void NoteSignal(HANDLE signal);
    void WatchFolder();
    DWORD WaitMilliseconds();
    std::optional<std::uint64_t> NextLook();
    bool IsMouseInUse() const;

    void TakeOrders();
    void UseMouse(const model::DeviceRecord& used);
    void ReadIfDue();
    void Read();
    void ReportSetAside();
    void LookIfDue();
    void ReportProgram();
    void WorkOutProfile();
    void Publish(const ProfileInForce& next);
    // Makes no call once the thread has been asked to end.
    template <typename Outlet, typename... Arguments>
    void Call(const Outlet& outlet, const Arguments&... arguments) {
        if (outlet && !isStopping) outlet(arguments...);
    }
    void ReportNames();

    MouseActivity& activity;
    ProfileNumbers& names;
    const HubOutlets outlets;
    HubExchange exchange;
    std::atomic<bool> isStopping = false;

    // Used only on the hub's thread.
    std::optional<OrderedMouse> orderedMouse;  // not in use yet
    std::uint64_t mouseNumber = 0;
    std::uint64_t readingNumber = 0;
    std::optional<model::DeviceRecord> mouse;
    ProfileStore store;
    bool isProfileStale = false;  // something has changed since it was chosen
    bool isFileUnreadable = false;
    std::wstring forced;
    FrontProgram front;
    ProgramComparison frontComparison;
    ReadingSchedule schedule;
    std::optional<KeyWatch> keyWatch;
    FolderWatch folderWatch;
    std::uint64_t lastLook = 0;
    std::uint64_t lastWindowEvent = 0;
    std::optional<EngineSettings> inForce;
};

}  // namespace kvn::service
