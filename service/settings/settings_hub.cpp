#include "service/settings/settings_hub.h"

#include <algorithm>
#include <utility>

#include "platform/thread_start.h"
#include "service/settings/hub_worker.h"

namespace kvn::service {
namespace {

constexpr DWORD kLongestFarewell = 1'000;  // milliseconds

}  // namespace

SettingsHub::SettingsHub(MouseActivity& mouseActivity, ProfileNumbers& profileNames, Outlets chosenOutlets)
    : worker(std::make_shared<HubWorker>(mouseActivity, profileNames, std::move(chosenOutlets))) {}

SettingsHub::~SettingsHub() {
    worker->RequestStop();
    if (thread) WaitForSingleObject(thread.Get(), kLongestFarewell);
}

bool SettingsHub::Start() {
    if (!worker->CanStart()) return false;
    thread = platform::StartThread(
        worker, +[](HubWorker& started) { started.Run(); }, THREAD_PRIORITY_NORMAL);
    return static_cast<bool>(thread);
}

void SettingsHub::UseMouse(const model::DeviceRecord& mouse) {
    worker->Exchange().Order([&](HubOrders& orders) { orders.mouse = {mouse, ++orderedMice}; });
}

bool SettingsHub::HasTakenMouse() const {
    return worker->Exchange().Ask([this](const HubReport& report) { return report.mouseNumber == orderedMice; });
}

void SettingsHub::Reread() {
    worker->Exchange().Order([this](HubOrders& orders) { orders.reading = ++orderedReadings; });
}

bool SettingsHub::HasReread() const {
    return worker->Exchange().Ask([this](const HubReport& report) { return report.readingNumber == orderedReadings; });
}

void SettingsHub::ForceAutomatic() {
    worker->Exchange().Order([](HubOrders& orders) { orders.forced = std::wstring(); });
}

bool SettingsHub::Force(const std::wstring& profileName) {
    const HubReport::Names known = worker->Exchange().Ask([](const HubReport& report) { return report.profiles; });
    if (profileName.empty() || std::ranges::find(*known, profileName) == known->end()) return false;
    worker->Exchange().Order([&](HubOrders& orders) { orders.forced = profileName; });
    return true;
}

ProfileInForce SettingsHub::InForce() const {
    return worker->Exchange().Ask([](const HubReport& report) { return report.inForce; });
}

std::vector<std::wstring> SettingsHub::ProfileNames() const {
    return *worker->Exchange().Ask([](const HubReport& report) { return report.profiles; });
}

std::wstring SettingsHub::ForcedProfile() const {
    return worker->Exchange().Ask([](const HubReport& report) { return report.forced; });
}

std::wstring SettingsHub::ProgramInFront() const {
    return worker->Exchange().Ask([](const HubReport& report) { return report.programInFront; });
}

std::uint64_t SettingsHub::SwitchCount() const {
    return worker->Exchange().Ask([](const HubReport& report) { return report.switches; });
}

}  // namespace kvn::service
