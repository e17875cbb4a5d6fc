#include "tools/control_panel/sheet_actions.h"

#include <windows.h>

#include <commctrl.h>
#include <prsht.h>

#include <exception>

#include "platform/unique_resource.h"
#include "resources/resource.h"
#include "tools/control_panel/host_error.h"
#include "tools/control_panel/sheet.h"
#include "tools/control_panel/sheet_search.h"

namespace kvn::control_panel {
namespace {

constexpr UINT kTickMilliseconds = 100;
constexpr unsigned kTickLimit = 300;  // half a minute, for a sheet that does not open or never stops changing

SheetDriver* activeDriver = nullptr;  // a timer without a window has no other way to carry it

// Any of these ends a message box, whatever its buttons are; the page's own dialogs know IDCANCEL.
constexpr WPARAM kRefusals[] = {IDCANCEL, IDNO, IDOK};

void SelectTab(HWND page, int index) {
    const HWND tabs = GetDlgItem(page, IDC_PAGE_TAB);
    if (!tabs || index >= TabCtrl_GetItemCount(tabs)) {
        throw HostError{L"The page has no tab " + std::to_wstring(index) + L"."};
    }
    // Unlike TCM_SETCURSEL, this notifies the page, as a click does.
    TabCtrl_SetCurFocus(tabs, index);
}

void FocusControl(HWND sheet, HWND page, int id) {
    const HWND control = FindVisibleControl(page, id);
    if (!control) throw HostError{L"The page shows no control " + std::to_wstring(id) + L"."};
    SendMessageW(sheet, WM_CHANGEUISTATE, MAKEWPARAM(UIS_CLEAR, UISF_HIDEFOCUS), 0);
    SendMessageW(sheet, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(control), TRUE);
}

void MakeReadyFile(const std::wstring& path) {
    const platform::UniqueFile file(
        CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file) throw HostError{path + L" cannot be made."};
}

}  // namespace

SheetDriver::SheetDriver(const Options& wanted)
    : options(wanted), timer(SetTimer(nullptr, 0, kTickMilliseconds, &OnTimer)) {
    activeDriver = this;
}

SheetDriver::~SheetDriver() {
    KillTimer(nullptr, timer);
    activeDriver = nullptr;
}

void SheetDriver::CheckOutcome() const {
    if (failure) throw HostError{*failure};
    if (!options.screenshot.empty() && !isClosing) throw HostError{L"The sheet closed before its picture was taken."};
}

void CALLBACK SheetDriver::OnTimer(HWND, UINT, UINT_PTR, DWORD) {
    SheetDriver& driver = *activeDriver;
    try {
        driver.OnTick();
    } catch (const HostError& error) {
        driver.failure = error.text;
        driver.isClosing = true;
    } catch (const std::exception&) {
        driver.failure = L"Out of memory.";
        driver.isClosing = true;
    }
}

void SheetDriver::OnTick() {
    if (isClosing) return Close();
    if (!options.screenshot.empty()) {
        if (++ticks > kTickLimit) throw HostError{L"The sheet did not come to rest."};
        if (const HWND dialog = FindDialogAbove(SheetTitle())) {
            throw HostError{L"A dialog is open above the sheet: " + DescribeDialog(dialog) + L"."};
        }
    }
    const HWND sheet = FindSheet(SheetTitle());
    const HWND page = sheet ? PropSheet_GetCurrentPageHwnd(sheet) : nullptr;
    if (!page || !IsWindowVisible(page)) return;
    if (!isPrepared) return Prepare(sheet, page);
    if (!options.screenshot.empty()) TakePicture(sheet);
}

void SheetDriver::Prepare(HWND sheet, HWND page) {
    isPrepared = true;
    SetForegroundWindow(sheet);
    // If a dialog is active from the start, Wine still paints its title as inactive.
    if (GetForegroundWindow() == sheet) SendMessageW(sheet, WM_NCACTIVATE, TRUE, 0);
    if (options.tab) SelectTab(page, *options.tab);
    if (options.focus) FocusControl(sheet, page, *options.focus);
    if (!options.readyFile.empty()) MakeReadyFile(options.readyFile);
}

// Two equal copies in a row: the sheet has finished painting.
void SheetDriver::TakePicture(HWND sheet) {
    RECT rectangle{};
    GetWindowRect(sheet, &rectangle);
    Picture picture = CopyScreen(rectangle);
    if (picture == lastPicture) {
        SavePng(picture, options.screenshot);
        isClosing = true;
    }
    lastPicture = std::move(picture);
}

// Repeated at each tick until the sheet's modal loop has ended: dialogs above the sheet must close first.
void SheetDriver::Close() {
    if (const HWND dialog = FindDialogAbove(SheetTitle())) {
        for (const WPARAM button : kRefusals) PostMessageW(dialog, WM_COMMAND, button, 0);
    } else if (const HWND sheet = FindSheet(SheetTitle())) {
        PropSheet_PressButton(sheet, PSBTN_CANCEL);
    }
}

}  // namespace kvn::control_panel
