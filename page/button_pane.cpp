#include "page/button_pane.h"

#include <commctrl.h>

#include <algorithm>
#include <span>

#include "gestures/arbitrary_key_dialog.h"
#include "platform/combo_box.h"
#include "platform/number_text.h"
#include "platform/texts.h"
#include "resources/resource.h"

namespace kvn::page {
namespace {

using model::ButtonSlot;
using model::SettingField;

constexpr int kMaxRevolutionCount = 5;
constexpr wchar_t kPictureExtension[] = L".png";

struct ChooserRow {
    ButtonSlot slot;
    int control;
};
constexpr std::array<ChooserRow, model::kButtonSlotCount> kChoosers{{
    {ButtonSlot::Left, IDC_PANE_LEFT},
    {ButtonSlot::Right, IDC_PANE_RIGHT},
    {ButtonSlot::Center, IDC_PANE_CENTER},
    {ButtonSlot::Button4, IDC_PANE_BUTTON4},
    {ButtonSlot::Button5, IDC_PANE_BUTTON5},
    {ButtonSlot::TiltLeft, IDC_PANE_TILT_LEFT},
    {ButtonSlot::TiltRight, IDC_PANE_TILT_RIGHT},
}};

struct TrackbarRow {
    SettingField field;
    int control;
    int maximum;  // the minimum is 1
};
constexpr std::array<TrackbarRow, 3> kTrackbars{{
    {SettingField::HorizontalScrollSpeed, IDC_PANE_HORIZONTAL_SPEED, 8},
    {SettingField::FlyingScrollSpeed, IDC_PANE_FLYING_SPEED, 10},
    {SettingField::FlyingRevolutionSpeed, IDC_PANE_REVOLUTION_SPEED, 10},
}};

constexpr std::array kHorizontalScrollControls{IDC_PANE_HORIZONTAL_SPEED, IDC_PANE_HORIZONTAL_SLOW,
                                               IDC_PANE_HORIZONTAL_FAST,  IDC_PANE_HORIZONTAL_GROUP,
                                               IDC_PANE_TILT_LEFT,        IDC_PANE_TILT_RIGHT};
constexpr std::array kFlyingScrollControls{
    IDC_PANE_FLYING_GROUP,          IDC_PANE_REVOLUTION_COUNT_LABEL, IDC_PANE_REVOLUTION_COUNT,
    IDC_PANE_REVOLUTION_SPEED,      IDC_PANE_FLYING_SPEED,           IDC_PANE_REVOLUTION_SPEED_SLOW,
    IDC_PANE_REVOLUTION_SPEED_FAST, IDC_PANE_FLYING_SPEED_SLOW,      IDC_PANE_FLYING_SPEED_FAST};
// These controls mean nothing while the number of revolutions is "Invalid".
constexpr std::array kFlyingSpeedControls{IDC_PANE_FLYING_SPEED,           IDC_PANE_REVOLUTION_SPEED,
                                          IDC_PANE_REVOLUTION_SPEED_LABEL, IDC_PANE_FLYING_SPEED_LABEL,
                                          IDC_PANE_REVOLUTION_SPEED_SLOW,  IDC_PANE_REVOLUTION_SPEED_FAST,
                                          IDC_PANE_FLYING_SPEED_SLOW,      IDC_PANE_FLYING_SPEED_FAST};
constexpr std::array kButtonControls{IDC_PANE_LEFT, IDC_PANE_RIGHT, IDC_PANE_CENTER, IDC_PANE_BUTTON4,
                                     IDC_PANE_BUTTON5};

bool IsTilt(ButtonSlot slot) {
    return slot == ButtonSlot::TiltLeft || slot == ButtonSlot::TiltRight;
}

}  // namespace

ButtonPane::ButtonPane(model::MouseSettings& mouseSettings, const platform::MessageBoxes& messageBoxes,
                       IButtonPaneOwner& paneOwner)
    : Pane(IDD_BUTTON_PANE, paneOwner), settings(mouseSettings), boxes(messageBoxes), owner(paneOwner) {}

void ButtonPane::SetUp() {
    if (Window() == nullptr) return;
    const auto onMouse = model::FunctionsForSlot(settings.os, true);
    const auto notOnMouse = model::FunctionsForSlot(settings.os, false);
    for (const ChooserRow& row : kChoosers) {
        SlotChooser& chooser = choosers[row.slot];
        const auto showPicture = [this, slot = row.slot](bool hasFocus) {
            ShowPicture(hasFocus ? std::optional(slot) : std::nullopt);
        };
        chooser.SetUp(row.slot, Control(row.control), Module(), settings.IsOnMouse(row.slot) ? onMouse : notOnMouse,
                      showPicture);
    }
    for (const TrackbarRow& row : kTrackbars) {
        SendMessageW(Control(row.control), TBM_SETRANGE, TRUE, MAKELPARAM(1, row.maximum));
    }
    const HWND revolutions = Control(IDC_PANE_REVOLUTION_COUNT);
    platform::AddComboItem(revolutions, platform::LoadText(Module(), IDS_REVOLUTIONS_INVALID), model::kUnsetValue);
    for (int count = 1; count <= kMaxRevolutionCount; ++count) {
        platform::AddComboItem(revolutions, platform::NumberText(count), count);
    }
    TakeOver();
}

void ButtonPane::Fill(const model::ProfileSettings& shown) {
    isFilled = false;
    if (!HasTakenOver()) return;
    LeaveLists();
    for (SlotChooser& chooser : choosers.items) {
        const ButtonSlot slot = chooser.Slot();
        const model::FunctionCode function = shown.FunctionOf(slot);
        model::EtcKey keys;
        if (function == model::kFunctionArbitraryKey) keys = shown.etcKeys[slot];
        if (!settings.IsOnMouse(slot)) keys = model::WithoutShiftKeys(keys);
        chooser.ShowArbitraryKeys(keys);
        chooser.Select(function);
        chooser.Confirm();
    }
    for (const TrackbarRow& row : kTrackbars) {
        SendMessageW(Control(row.control), TBM_SETPOS, TRUE, shown[row.field]);
    }
    FillRevolutionCount(shown[SettingField::FlyingRevolutionCount]);
    isFilled = true;
}

void ButtonPane::FillRevolutionCount(std::int32_t count) {
    const bool isValid = count >= 1 && !settings.device.LacksFlyingScroll();
    SendMessageW(Control(IDC_PANE_REVOLUTION_COUNT), CB_SETCURSEL, isValid ? static_cast<WPARAM>(count) : 0, 0);
    EnableFlyingSpeeds(isValid);
}

void ButtonPane::DisableMissingCapabilities() {
    const auto disable = [this](std::span<const int> controls) {
        for (const int control : controls) Enable(control, false);
    };
    if (!settings.device.HasTiltWheel()) disable(kHorizontalScrollControls);
    if (settings.device.LacksFlyingScroll()) disable(kFlyingScrollControls);
    for (std::size_t i = 0; i < kButtonControls.size(); ++i) {
        if (settings.device.buttonCount < static_cast<int>(i) + 1) Enable(kButtonControls[i], false);
    }
}

model::ProfileSettings ButtonPane::Read(const model::ProfileSettings& base) const {
    return isFilled ? ReadWith(SelectedFunctions(), base) : base;
}

model::ProfileSettings ButtonPane::ReadConfirmed(const model::ProfileSettings& base) {
    if (!isFilled) return base;
    LeaveLists();
    const SlotFunctions functions = SelectedFunctions();
    if (HasLeftClick(functions) && GestureCount(functions) <= 1) return ReadWith(functions, base);
    for (const SlotChooser& chooser : choosers.items) chooser.TakeBack();
    return Read(base);
}

model::ProfileSettings ButtonPane::ReadWith(const SlotFunctions& functions, const model::ProfileSettings& base) const {
    model::ProfileSettings read = base;
    for (const SlotChooser& chooser : choosers.items) {
        if (const auto function = functions[chooser.Slot()]) read[RowOf(chooser.Slot()).field] = *function;
    }
    for (const TrackbarRow& row : kTrackbars) {
        read[row.field] = static_cast<std::int32_t>(SendMessageW(Control(row.control), TBM_GETPOS, 0, 0));
    }
    if (const auto count = platform::SelectedComboData(Control(IDC_PANE_REVOLUTION_COUNT))) {
        read[SettingField::FlyingRevolutionCount] = *count;
    }
    return read;
}

ButtonPane::SlotFunctions ButtonPane::SelectedFunctions() const {
    SlotFunctions functions;
    for (const SlotChooser& chooser : choosers.items) functions[chooser.Slot()] = chooser.Selected();
    return functions;
}

void ButtonPane::LeaveLists() const {
    for (const SlotChooser& chooser : choosers.items) chooser.LeaveList();
    platform::LeaveList(Control(IDC_PANE_REVOLUTION_COUNT));
}

void ButtonPane::LoadPictures(const std::wstring& folder) {
    if (Window() == nullptr) return;
    gdiplus.emplace();
    if (!*gdiplus) return;
    const HWND target = Control(IDC_PANE_PICTURE);
    const model::DeviceRecord& device = settings.device;
    // The pictures of the tilts exist whatever the button count says.
    const int count = (device.HasTiltWheel() ? model::kMaxButtonCount : device.buttonCount) + 1;
    const std::wstring stem = folder + device.mouseImage;
    pictures.emplace_back(target, stem + kPictureExtension);
    for (int k = 1; k < count; ++k) {
        pictures.emplace_back(target, (stem + L'_').append(platform::NumberText(k)).append(kPictureExtension));
    }
    ShowPicture(std::nullopt);
    InvalidateRect(Window(), nullptr, TRUE);
}

void ButtonPane::ShowPicture(std::optional<ButtonSlot> marked) {
    const std::size_t index = marked ? static_cast<std::size_t>(*marked) + 1 : 0;
    if (index < pictures.size() && IsWindow(Control(IDC_PANE_PICTURE))) pictures[index].Draw();
}

std::optional<LRESULT> ButtonPane::OnMessage(UINT message, WPARAM /*wParam*/, LPARAM /*lParam*/) {
    if (message == WM_DESTROY) ClearPicture(Control(IDC_PANE_PICTURE));
    return std::nullopt;
}

void ButtonPane::Enable(int control, bool enable) const {
    EnableWindow(Control(control), enable ? TRUE : FALSE);
}

void ButtonPane::OnCommand(UINT control, UINT notification) {
    if (control == IDC_PANE_HELP) return owner.OnHelp();
    if (control == IDC_PANE_RESET) return owner.OnReset();
    if (control == IDC_PANE_REVOLUTION_COUNT) return OnRevolutionNotification(notification);
    for (const ChooserRow& row : kChoosers) {
        if (control == static_cast<UINT>(row.control)) {
            OnChooserNotification(choosers[row.slot], notification);
        }
    }
}

void ButtonPane::OnChooserNotification(SlotChooser& chooser, UINT notification) {
    chooser.OnNotification(notification);
    switch (notification) {
        case CBN_DROPDOWN:
            platform::WidenDropList(chooser.Window());
            break;
        case CBN_SETFOCUS:
            earlierIndex = chooser.SelectedIndex();
            break;
        case CBN_KILLFOCUS:
            earlierIndex = 0;
            break;
        case CBN_SELENDOK:
            OnChoiceConfirmed(chooser);
            chooser.Confirm();
            earlierIndex = chooser.SelectedIndex();
            break;
        default:
            break;
    }
}

void ButtonPane::OnChoiceConfirmed(SlotChooser& changed) {
    // A message box takes the focus from the chooser, which clears the remembered choice.
    const int indexBefore = earlierIndex;
    int gestureCount = GestureCount(SelectedFunctions());

    // Putting "Left click" back counts as one gesture function fewer, whatever it replaced: docs/kept-behaviour.md.
    if (PutBackLeftClick(changed)) --gestureCount;
    if (gestureCount >= 2) {
        boxes.Warn(Window(), IDS_GESTURE_SLOT_TAKEN);
        changed.SelectIndex(indexBefore);
    }
    if (changed.Selected() == model::kFunctionArbitraryKey) RegisterArbitraryKey(changed);
}

bool ButtonPane::PutBackLeftClick(const SlotChooser& changed) const {
    if (HasLeftClick(SelectedFunctions())) return false;
    const auto leftClick = changed.IndexOfLeftClick();
    if (!leftClick) return false;
    boxes.Warn(Window(), IDS_LEFT_CLICK_MISSING);
    changed.SelectIndex(*leftClick);
    return true;
}

bool ButtonPane::HasLeftClick(const SlotFunctions& functions) {
    return std::ranges::find(functions.items, model::kFunctionLeftClick) != functions.items.end();
}

int ButtonPane::GestureCount(const SlotFunctions& functions) {
    return static_cast<int>(std::ranges::count(functions.items, model::kFunctionGesture));
}

void ButtonPane::RegisterArbitraryKey(SlotChooser& chooser) {
    const ButtonSlot slot = chooser.Slot();
    const auto shiftKeys = IsTilt(slot) ? gestures::ShiftKeys::Excluded : gestures::ShiftKeys::Offered;
    const auto keys =
        gestures::RunArbitraryKeyDialog(Module(), chooser.Window(), {settings.Selected().etcKeys[slot], shiftKeys});
    if (!keys) return;
    settings.Selected().etcKeys[slot] = *keys;
    chooser.ShowArbitraryKeys(*keys);
}

void ButtonPane::OnRevolutionNotification(UINT notification) {
    const bool isGivenBack = revolutionList.OnNotification(Control(IDC_PANE_REVOLUTION_COUNT), notification);
    if (isGivenBack || notification == CBN_SELCHANGE) OnRevolutionCountChosen();
}

void ButtonPane::OnRevolutionCountChosen() {
    const auto count = platform::SelectedComboData(Control(IDC_PANE_REVOLUTION_COUNT));
    if (count && !settings.device.LacksFlyingScroll()) EnableFlyingSpeeds(*count >= 1);
}

void ButtonPane::EnableFlyingSpeeds(bool enable) const {
    for (const int control : kFlyingSpeedControls) Enable(control, enable);
}

}  // namespace kvn::page
