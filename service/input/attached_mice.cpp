#include "service/input/attached_mice.h"

#include <algorithm>
#include <array>
#include <utility>

namespace kvn::service {
namespace {

constexpr USHORT kGenericDesktop = 1;
constexpr USHORT kMouseUsage = 2;

struct FlagRow {
    std::uint32_t flag;
    std::uint32_t button;  // the bit of the button's slot, or 0 for what is none
    bool isUse;            // shows which mouse is being used: a touchpad does none of it
};

constexpr std::array<FlagRow, 7> kFlags{{
    {RI_MOUSE_BUTTON_1_DOWN, 1U << 0U, false},
    {RI_MOUSE_BUTTON_2_DOWN, 1U << 1U, false},
    {RI_MOUSE_BUTTON_3_DOWN, 1U << 2U, true},
    {RI_MOUSE_BUTTON_4_DOWN, 1U << 3U, true},
    {RI_MOUSE_BUTTON_5_DOWN, 1U << 4U, true},
    {RI_MOUSE_WHEEL, 0, true},
    {RI_MOUSE_HWHEEL, 0, true},
}};

bool IsSame(const model::DeviceRecord& left, const model::DeviceRecord& right) {
    const auto tied = [](const model::DeviceRecord& record) {
        return std::tie(record.hasTilt, record.buttonCount, record.vid, record.pid, record.mouseImage,
                        record.mouseFlag);
    };
    return tied(left) == tied(right);
}

std::wstring NameOf(HANDLE device) {
    UINT length = 0;
    GetRawInputDeviceInfoW(device, RIDI_DEVICENAME, nullptr, &length);
    std::wstring name(length, L'\0');
    const UINT copied = GetRawInputDeviceInfoW(device, RIDI_DEVICENAME, name.data(), &length);
    if (copied == 0 || copied == static_cast<UINT>(-1)) return {};
    return name.c_str();
}

// Nothing for a device that is no mouse, or is gone already.
std::optional<MouseFacts> FactsOf(HANDLE device) {
    RID_DEVICE_INFO info{};
    info.cbSize = sizeof info;
    UINT bytes = sizeof info;
    const UINT copied = GetRawInputDeviceInfoW(device, RIDI_DEVICEINFO, &info, &bytes);
    if (copied == static_cast<UINT>(-1) || info.dwType != RIM_TYPEMOUSE) return std::nullopt;
    return MouseFacts{.deviceName = NameOf(device),
                      .buttons = info.mouse.dwNumberOfButtons,
                      .hasHorizontalWheel = info.mouse.fHasHorizontalWheel != FALSE};
}

std::vector<RAWINPUTDEVICELIST> ListDevices() {
    UINT count = 0;
    GetRawInputDeviceList(nullptr, &count, sizeof(RAWINPUTDEVICELIST));
    std::vector<RAWINPUTDEVICELIST> devices(count);
    const UINT listed = count == 0 ? 0 : GetRawInputDeviceList(devices.data(), &count, sizeof(RAWINPUTDEVICELIST));
    devices.resize(listed == static_cast<UINT>(-1) ? 0 : listed);
    return devices;
}

std::uint32_t PressesIn(std::uint32_t flags) {
    std::uint32_t buttons = 0;
    for (const FlagRow& row : kFlags) {
        if ((flags & row.flag) != 0) buttons |= row.button;
    }
    return buttons;
}

bool ShowUse(std::uint32_t flags) {
    return std::ranges::any_of(kFlags, [=](const FlagRow& row) { return row.isUse && (flags & row.flag) != 0; });
}

}  // namespace

AttachedMice::AttachedMice(Outlets chosenOutlets) : outlets(std::move(chosenOutlets)) {}

bool AttachedMice::Watch(HWND window) {
    const RAWINPUTDEVICE wanted{.usUsagePage = kGenericDesktop,
                                .usUsage = kMouseUsage,
                                .dwFlags = RIDEV_INPUTSINK | RIDEV_DEVNOTIFY,
                                .hwndTarget = window};
    const bool isRegistered = RegisterRawInputDevices(&wanted, 1, sizeof wanted) != FALSE;
    List();
    return isRegistered;
}

void AttachedMice::OnInput(HRAWINPUT input) {
    RAWINPUT data{};
    UINT bytes = sizeof data;
    const UINT copied = GetRawInputData(input, RID_INPUT, &data, &bytes, sizeof(RAWINPUTHEADER));
    if (copied == static_cast<UINT>(-1) || data.header.dwType != RIM_TYPEMOUSE) return;
    if (data.data.mouse.usButtonFlags != 0) TakeFlags(data.header.hDevice, data.data.mouse.usButtonFlags);
}

void AttachedMice::OnDeviceChange(WPARAM change, HANDLE device) {
    if (change == GIDC_ARRIVAL) Arrive(device);
    if (change == GIDC_REMOVAL) Remove(device);
}

// At the start nobody knows which mouse will be used.
void AttachedMice::List() {
    mice.clear();
    for (const RAWINPUTDEVICELIST& listed : ListDevices()) {
        if (auto facts = FactsOf(listed.hDevice)) mice.push_back({listed.hDevice, std::move(*facts)});
    }
    UseMostCapable();
}

void AttachedMice::Arrive(HANDLE device) {
    auto facts = FactsOf(device);
    if (!facts) return;
    countedButtons[facts->deviceName] = pressedButtons[facts->deviceName];
    Mouse* known = Find(device);
    if (known == nullptr) known = &mice.emplace_back(Mouse{device, {}});
    known->facts = std::move(*facts);
    if (currentDevice == nullptr || currentDevice == device) Publish(*known);
}

// The values of the last mouse stay.
void AttachedMice::Remove(HANDLE device) {
    std::erase_if(mice, [=](const Mouse& mouse) { return mouse.handle == device; });
    if (currentDevice != device) return;
    currentDevice = nullptr;
    UseMostCapable();
}

// Input that programs make has no device.
void AttachedMice::TakeFlags(HANDLE device, std::uint32_t flags) {
    Mouse* const mouse = Find(device);
    if (mouse == nullptr) return;
    const std::uint32_t presses = PressesIn(flags);
    NotePressed(*mouse, presses);
    if (ShowUse(flags) && currentDevice != device) Publish(*mouse);
    if (presses != 0 && outlets.onPress) outlets.onPress(static_cast<std::uint32_t>(GetMessageTime()));
}

void AttachedMice::NotePressed(const Mouse& mouse, std::uint32_t buttons) {
    if (buttons != 0) pressedButtons[mouse.facts.deviceName] |= buttons;
}

void AttachedMice::UseMostCapable() {
    const auto buttonsOf = [this](const Mouse& mouse) { return Describe(mouse).buttonCount; };
    const auto best = std::ranges::max_element(mice, {}, buttonsOf);
    if (best != mice.end()) Publish(*best);
}

void AttachedMice::Publish(const Mouse& mouse) {
    currentDevice = mouse.handle;
    const model::DeviceRecord described = Describe(mouse);
    if (current && IsSame(*current, described)) return;
    current = described;
    if (outlets.onMouse) outlets.onMouse(described);
}

model::DeviceRecord AttachedMice::Describe(const Mouse& mouse) const {
    const auto counted = countedButtons.find(mouse.facts.deviceName);
    return DescribeMouse(mouse.facts, counted == countedButtons.end() ? 0 : counted->second);
}

AttachedMice::Mouse* AttachedMice::Find(HANDLE device) {
    const auto found = std::ranges::find(mice, device, &Mouse::handle);
    return found == mice.end() ? nullptr : &*found;
}

}  // namespace kvn::service
