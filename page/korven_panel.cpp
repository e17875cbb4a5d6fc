#include "page/korven_panel.h"

#include <commctrl.h>
#include <shellapi.h>

#include <algorithm>
#include <array>
#include <span>
#include <utility>

#include "model/registry_access.h"
#include "model/settings_store.h"
#include "page/module_state.h"
#include "page/page_change.h"
#include "page/service_folder.h"
#include "platform/boundary.h"
#include "platform/combo_box.h"
#include "platform/module.h"
#include "platform/paused_redraw.h"
#include "platform/raised_flag.h"
#include "platform/service_messages.h"
#include "platform/texts.h"
#include "resources/resource.h"

namespace kvn::page {
namespace {

constexpr wchar_t kHelpFile[] = L"KvnUtilHelp.htm";
constexpr wchar_t kPictureFolder[] = L"MouseImage\\";
constexpr COLORREF kWarningColour = RGB(255, 0, 0);
constexpr INT_PTR kLastShellExecuteError = 32;

enum Tab { kButtonTab, kGestureTab };
constexpr std::array<UINT, 2> kTabTitles{IDS_TAB_BUTTONS, IDS_TAB_GESTURES};

// Combo-box notifications that come with a change; the others only report the focus or that a list has closed.
constexpr std::array<UINT, 7> kChangingNotifications{CBN_SELCHANGE, CBN_DBLCLK,  CBN_EDITCHANGE, CBN_EDITUPDATE,
                                                     CBN_DROPDOWN,  CBN_CLOSEUP, CBN_SELENDOK};

bool IsComboBox(HWND window) {
    std::array<wchar_t, 16> className{};
    GetClassNameW(window, className.data(), static_cast<int>(className.size()));
    return lstrcmpiW(className.data(), WC_COMBOBOXW) == 0;
}

}  // namespace

const platform::CommandRow<KorvenPanel, UINT> KorvenPanel::kCommands[] = {
    {IDC_PANE_HELP, &KorvenPanel::OnHelpCommand},
    {IDC_PANE_RESET, &KorvenPanel::OnResetCommand},
    {IDC_PAGE_PROFILE, &KorvenPanel::OnProfileCommand},
    {IDC_PAGE_EDIT_PROFILE, &KorvenPanel::OnEditProfileCommand},
};

KorvenPanel::KorvenPanel()
    : boxes(platform::ThisModule(), IDS_CAPTION),
      buttonPane(settings, boxes, *this),
      gesturePane(settings, boxes, *this) {}

KorvenPanel::~KorvenPanel() {
    if (pageWindow != nullptr) ReleaseModuleOfPage();
}

bool KorvenPanel::CanAddPage(LPFNADDPROPSHEETPAGE /*addPage*/, LPARAM /*parameter*/) {
    return platform::IsServiceAvailable();
}

void KorvenPanel::OnInitDialog(HINSTANCE module, HWND page) {
    pageWindow = page;
    if (!platform::Completes([&] { SetUpPage(module); })) boxes.Warn(page, IDS_SETTINGS_FAILED);
}

void KorvenPanel::SetUpPage(HINSTANCE module) {
    // Before any message box: while one is open, the service may send other initial values.
    settings.initialValues = model::InitialValuesOf(model::NewProfileRecord());
    ReadDevice();
    LoadProfiles();
    CreatePanes(module);
    FillProfileCombo();
    RepairProfiles();
    buttonPane.Fill(settings.Selected());
    gesturePane.ShowProfile();
    buttonPane.DisableMissingCapabilities();
    FindServiceFiles();
}

void KorvenPanel::ReadDevice() {
    if (auto device = model::ReadCurrentDevice()) {
        settings.device = std::move(*device);
    } else {
        boxes.Warn(pageWindow, IDS_DEVICE_FAILED);
    }
}

void KorvenPanel::LoadProfiles() {
    if (!model::LoadMouseSettings(settings)) boxes.Warn(pageWindow, IDS_SETTINGS_FAILED);
}

void KorvenPanel::CreatePanes(HINSTANCE module) {
    const HWND tab = Control(IDC_PAGE_TAB);
    for (std::size_t i = 0; i < kTabTitles.size(); ++i) {
        std::wstring title = platform::LoadText(module, kTabTitles[i]);
        TCITEMW item{};
        item.mask = TCIF_TEXT;
        item.pszText = title.data();
        SendMessageW(tab, TCM_INSERTITEMW, i, reinterpret_cast<LPARAM>(&item));
    }
    buttonPaneWindow = buttonPane.Create(module, pageWindow);
    gesturePaneWindow = gesturePane.Create(module, pageWindow);
    PlacePane(buttonPaneWindow, Control(IDC_PAGE_EDIT_PROFILE));
    PlacePane(gesturePaneWindow, buttonPaneWindow);
    ShowWindow(buttonPaneWindow, SW_SHOW);
    buttonPane.SetUp();
    gesturePane.SetUp();
}

// Lays the pane onto the tab control's display area, above it and directly after `previous` in the tab order.
void KorvenPanel::PlacePane(HWND pane, HWND previous) const {
    const HWND tab = Control(IDC_PAGE_TAB);
    RECT area{};
    GetClientRect(tab, &area);
    SendMessageW(tab, TCM_ADJUSTRECT, FALSE, reinterpret_cast<LPARAM>(&area));
    MapWindowPoints(tab, pageWindow, reinterpret_cast<POINT*>(&area), 2);
    SetWindowPos(pane, previous, area.left, area.top, area.right - area.left, area.bottom - area.top, SWP_NOACTIVATE);
}

void KorvenPanel::FillProfileCombo() {
    const HWND combo = Control(IDC_PAGE_PROFILE);
    const platform::PausedRedraw pause(combo);
    SendMessageW(combo, CB_RESETCONTENT, 0, 0);
    for (const model::ProfileRecord& profile : settings.profiles) {
        SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(profile.name.c_str()));
    }
    SelectInProfileCombo();
}

void KorvenPanel::SelectInProfileCombo() {
    profileList.Confirm();
    SendMessageW(Control(IDC_PAGE_PROFILE), CB_SETCURSEL, settings.selectedProfile, 0);
}

void KorvenPanel::ShowProfiles() {
    FillProfileCombo();
    ShowGestures();
}

void KorvenPanel::ShowSelectedProfile() {
    SelectInProfileCombo();
    ShowGestures();
}

// The combo box and the list of gestures always show the same profile, so that a command for a row acts on its gesture.
void KorvenPanel::ShowGestures() {
    platform::Completes([this] { gesturePane.ShowProfile(); });
}

void KorvenPanel::RepairProfiles() {
    const auto repaired = model::RepairAbnormalValues(settings.profiles, settings.initialValues);
    if (repaired.empty()) return;
    std::wstring message = platform::LoadText(platform::ThisModule(), IDS_ABNORMAL_VALUES) + L'\n';
    for (const model::AbnormalValue& value : repaired) {
        message += settings.profiles[value.profile].name;
        message += platform::LoadText(platform::ThisModule(), RowOf(value.field).labelId) + L'\n';
    }
    boxes.WarnText(pageWindow, message);
}

void KorvenPanel::FindServiceFiles() {
    const std::wstring folder = ServiceFolder();
    if (folder.empty()) return;
    helpFile = folder + kHelpFile;
    buttonPane.LoadPictures(folder + kPictureFolder);
}

bool KorvenPanel::OnApply(HINSTANCE /*module*/, HWND page) {
    if (settings.profiles.empty()) return true;
    // An exception counts as a failure.
    const bool isSaved = platform::AtBoundary(false, [this] {
        platform::LeaveList(Control(IDC_PAGE_PROFILE));
        StorePane();
        return SaveSettings();
    });
    if (isSaved) {
        platform::NotifySettingsChanged();
        return true;
    }
    boxes.Warn(page, IDS_SETTINGS_FAILED);
    return false;
}

void KorvenPanel::StorePane() {
    model::ProfileSettings& selected = settings.Selected();
    selected = model::CheckedCopy(buttonPane.ReadConfirmed(selected));
}

bool KorvenPanel::SaveSettings() {
    return model::WriteRegistryValues(settings) && model::SaveProfiles(settings);
}

bool KorvenPanel::OnHScroll(HWND trackbar) {
    return IsChangingControl(static_cast<UINT>(GetDlgCtrlID(trackbar)));
}

bool KorvenPanel::IsChangingControl(UINT controlId) {
    if (controlId == IDC_PANE_HELP) return false;
    if (controlId == IDC_PANE_RESET) return !resetDeclined;
    return true;
}

bool KorvenPanel::OnCommandChanged(HWND window, WPARAM wParam, LPARAM /*lParam*/) {
    const UINT control = LOWORD(wParam);
    const UINT notification = HIWORD(wParam);
    const HWND sender = GetDlgItem(window, static_cast<int>(control));
    const bool isQuiet = sender != nullptr && IsComboBox(sender) &&
                         std::ranges::find(kChangingNotifications, notification) == kChangingNotifications.end();
    return !isQuiet && IsChangingControl(control);
}

void KorvenPanel::OnCommand(WPARAM wParam, LPARAM /*lParam*/, HWND /*page*/) {
    platform::CarryOutCommand(*this, kCommands, LOWORD(wParam), UINT{HIWORD(wParam)});
}

void KorvenPanel::OnProfileCommand(UINT notification) {
    if (notification == CBN_DROPDOWN) platform::WidenDropList(Control(IDC_PAGE_PROFILE));
    const bool isGivenBack = profileList.OnNotification(Control(IDC_PAGE_PROFILE), notification);
    if (isGivenBack || notification == CBN_SELCHANGE) OnProfileChosen();
}

void KorvenPanel::OnProfileChosen() {
    const LRESULT chosen = SendMessageW(Control(IDC_PAGE_PROFILE), CB_GETCURSEL, 0, 0);
    if (chosen < 0 || static_cast<std::size_t>(chosen) >= settings.profiles.size()) return;
    const auto index = static_cast<std::size_t>(chosen);
    model::ProfileSettings shown;
    const bool canChange = platform::Completes([&] {
        StorePane();
        shown = model::CheckedCopy(settings.profiles[index].settings);
    });
    if (!canChange) return SelectInProfileCombo();
    settings.selectedProfile = index;
    // The gestures are shown even if filling the button pane fails: their rows belong to the selected profile.
    platform::Completes([&] { buttonPane.Fill(shown); });
    ShowGestures();
}

void KorvenPanel::OnEditProfileCommand(UINT notification) {
    if (notification != BN_CLICKED || isEditingProfiles) return;
    const platform::RaisedFlag flag(isEditingProfiles);
    profiles::RunProfileEditor({platform::ThisModule(), pageWindow, settings, boxes, *this});
}

void KorvenPanel::OnHelpCommand(UINT /*notification*/) {
    OnHelp();
}

void KorvenPanel::OnResetCommand(UINT /*notification*/) {
    OnReset();
}

void KorvenPanel::OnHelp() {
    if (helpFile.empty()) return;
    const auto result =
        reinterpret_cast<INT_PTR>(ShellExecuteW(nullptr, L"open", helpFile.c_str(), nullptr, nullptr, SW_SHOWNORMAL));
    if (result <= kLastShellExecuteError) boxes.Warn(pageWindow, IDS_HELP_FAILED);
}

void KorvenPanel::OnReset() {
    resetDeclined = boxes.Show(pageWindow, IDS_CONFIRM_RESET, MB_OKCANCEL | MB_ICONINFORMATION) != IDOK;
    if (resetDeclined) return;
    model::ProfileSettings initial;
    initial.values = settings.initialValues;
    buttonPane.Fill(initial);
}

void KorvenPanel::OnPaneCommand(HWND pane, WPARAM wParam, LPARAM lParam) {
    if (OnCommandChanged(pane, wParam, lParam)) MarkPageChanged(pageWindow);
}

void KorvenPanel::OnPaneScroll(HWND trackbar) {
    if (OnHScroll(trackbar)) MarkPageChanged(pageWindow);
}

model::SettingValues KorvenPanel::ShownValues() const {
    return buttonPane.Read(settings.Selected()).values;
}

void KorvenPanel::OnCopyData(HWND sender, const COPYDATASTRUCT* data) {
    if (sender == nullptr || sender != platform::FindService()) return;
    if (data == nullptr || data->lpData == nullptr) return;
    const std::span bytes(static_cast<const std::byte*>(data->lpData), data->cbData);
    if (const auto values = model::InitialValuesFromRecord(bytes)) settings.initialValues = *values;
}

void KorvenPanel::OnPaint(HWND /*page*/) {}

HBRUSH KorvenPanel::OnCtlColorStatic(HDC deviceContext, HWND control) {
    if (GetDlgCtrlID(control) != IDC_PAGE_WARNING_TEXT) return nullptr;
    SetBkMode(deviceContext, TRANSPARENT);
    SetTextColor(deviceContext, kWarningColour);
    return static_cast<HBRUSH>(GetStockObject(NULL_BRUSH));
}

void KorvenPanel::OnTabChanged(HWND /*page*/, WPARAM /*wParam*/, const NMHDR* /*header*/) {
    const LRESULT tab = SendMessageW(Control(IDC_PAGE_TAB), TCM_GETCURSEL, 0, 0);
    if (tab != kButtonTab && tab != kGestureTab) return;
    ShowPane(buttonPaneWindow, tab == kButtonTab);
    ShowPane(gesturePaneWindow, tab == kGestureTab);
}

// A pane that is hidden gives the focus to the tabs, so that the keyboard still works.
void KorvenPanel::ShowPane(HWND pane, bool show) const {
    if (!show && IsChild(pane, GetFocus())) {
        SendMessageW(pageWindow, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(Control(IDC_PAGE_TAB)), TRUE);
    }
    ShowWindow(pane, show ? SW_SHOW : SW_HIDE);
}

}  // namespace kvn::page
