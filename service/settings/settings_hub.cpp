#include "service/settings/settings_hub.h"

#include <algorithm>
#include <utility>

#include "service/settings/hub_worker.h"

namespace kvn::service {

SettingsHub::SettingsHub(MouseActivity& mouseActivity, Outlets chosenOutlets)
    : worker(std::make_unique<HubWorker>(mouseActivity, std::move(chosenOutlets))) {}

// A thread that waits for a drive keeps what it works on; the program is about to end.
SettingsHub::~SettingsHub() {
    if (!worker->Stop()) static_cast<void>(worker.release());
}

bool SettingsHub::Start() {
    return worker->Start();
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
