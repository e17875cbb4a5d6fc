#include "service/input/attached_mice.h"

#include <algorithm>
#include <array>
#include <cwchar>
#include <utility>

namespace kvn::service {
namespace {

constexpr USHORT kGenericDesktop = 1;
constexpr USHORT kMouseUsage = 2;

struct FlagRow {
    std::uint32_t flag;
    std::uint32_t button;  // the bit of the button's slot; 0 if it is not a button
    bool isUse;            // shows which mouse is in use: touchpads never do this
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

// In the order of the slots.
constexpr std::array<std::uint32_t, 5> kReleaseFlags{RI_MOUSE_BUTTON_1_UP, RI_MOUSE_BUTTON_2_UP, RI_MOUSE_BUTTON_3_UP,
                                                     RI_MOUSE_BUTTON_4_UP, RI_MOUSE_BUTTON_5_UP};

std::wstring NameOf(HANDLE device) {
    UINT length = 0;
    GetRawInputDeviceInfoW(device, RIDI_DEVICENAME, nullptr, &length);
    std::wstring name(length, L'\0');
    const UINT copied = GetRawInputDeviceInfoW(device, RIDI_DEVICENAME, name.data(), &length);
    if (copied == 0 || copied == static_cast<UINT>(-1)) return {};
    name.resize(std::wcslen(name.c_str()));
    return name;
}

// Nothing if the device is not a mouse or is already gone.
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

std::uint32_t ReleasesIn(std::uint32_t flags) {
    std::uint32_t buttons = 0;
    for (std::size_t slot = 0; slot < kReleaseFlags.size(); ++slot) {
        if ((flags & kReleaseFlags[slot]) != 0) buttons |= 1U << slot;
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

// Input made by programs has no device.
void AttachedMice::OnInput(HRAWINPUT input) {
    RAWINPUT data{};
    UINT bytes = sizeof data;
    const UINT copied = GetRawInputData(input, RID_INPUT, &data, &bytes, sizeof(RAWINPUTHEADER));
    if (copied == static_cast<UINT>(-1) || data.header.dwType != RIM_TYPEMOUSE) return;
    const std::uint32_t flags = data.data.mouse.usButtonFlags;
    const ButtonChange change{PressesIn(flags), ReleasesIn(flags), static_cast<std::uint32_t>(GetMessageTime())};
    if (flags == 0 || !choice.Take(data.header.hDevice, change.pressed, ShowUse(flags))) return;
    ReportChange();
    if ((change.pressed | change.released) != 0 && outlets.onButtons) outlets.onButtons(change);
}

void AttachedMice::OnDeviceChange(WPARAM change, HANDLE device) {
    if (change == GIDC_ARRIVAL) Attach(device);
    if (change == GIDC_REMOVAL) choice.Detach(device);
    ReportChange();
}

void AttachedMice::List() {
    for (const RAWINPUTDEVICELIST& listed : ListDevices()) Attach(listed.hDevice);
    choice.ChooseMostCapable();
    ReportChange();
}

void AttachedMice::Attach(HANDLE device) {
    if (const auto facts = FactsOf(device)) choice.Attach(device, *facts);
}

void AttachedMice::ReportChange() {
    const std::optional<model::DeviceRecord> chosen = choice.Chosen();
    if (!chosen || (current && IsSameMouse(*current, *chosen))) return;
    current = chosen;
    if (outlets.onMouse) outlets.onMouse(*chosen);
}

}  // namespace kvn::service
