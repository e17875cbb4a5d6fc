#include "service/tray/try_window.h"

#include <commctrl.h>

#include <algorithm>
#include <array>

#include "platform/boundary.h"
#include "platform/device_context.h"
#include "platform/list_view.h"
#include "platform/module.h"
#include "platform/subclass.h"
#include "platform/window_class.h"
#include "platform/window_text.h"
#include "service/resources/service_resource.h"
#include "service/resources/service_texts.h"

namespace kvn::service {
namespace {

// Lengths at 96 dots per inch.
constexpr SIZE kFirstSize{600, 340}, kLeastSize{380, 240};
constexpr int kMargin = 11, kGap = 7, kLineHeight = 16;
constexpr SIZE kButtonSize{88, 26};

constexpr DWORD kStyles = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN;
// Stays above the programs in which people try the buttons.
constexpr DWORD kExtendedStyles = WS_EX_TOPMOST | WS_EX_CONTROLPARENT;
constexpr DWORD kListStyles = LVS_REPORT | LVS_SINGLESEL | LVS_SHOWSELALWAYS | LVS_NOSORTHEADER | WS_TABSTOP;

struct ColumnRow {
    unsigned titleId;
    int percent;  // of the list's width
};

constexpr std::array kColumns{
    ColumnRow{IDS_TRY_COLUMN_CONTROL, 20},
    ColumnRow{IDS_TRY_COLUMN_EFFECT, 40},
    ColumnRow{IDS_TRY_COLUMN_PROFILE, 20},
    ColumnRow{IDS_TRY_COLUMN_PROGRAM, 20},
};

bool RegisterTryClass(WNDPROC procedure) {
    return platform::RegisterWindowClass(kTryWindowClass, procedure,
                                         {.icon = LoadIconW(platform::ThisModule(), MAKEINTRESOURCEW(IDI_SERVICE)),
                                          .cursor = LoadCursorW(nullptr, IDC_ARROW),
                                          .background = GetSysColorBrush(COLOR_BTNFACE)});
}

bool LoadListViews() {
    const INITCOMMONCONTROLSEX needed{sizeof needed, ICC_LISTVIEW_CLASSES};
    return InitCommonControlsEx(&needed) != FALSE;
}

void AddColumns(HWND list) {
    std::array<platform::ListColumn, kColumns.size()> columns{};
    std::ranges::transform(kColumns, columns.begin(), [](const ColumnRow& row) {
        return platform::ListColumn{row.titleId, 0};
    });
    platform::AddListColumns(list, platform::ThisModule(), columns);
}

// Screen readers read out the row that has the focus.
void MakeCurrent(HWND list, int row) {
    LVITEMW item{};
    item.mask = LVIF_STATE;
    item.state = item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    SendMessageW(list, LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
    SendMessageW(list, LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
}

void Place(HWND control, int left, int top, int width, int height) {
    SetWindowPos(control, nullptr, left, top, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace

bool TryWindow::Create() {
    if (!LoadListViews() || !RegisterTryClass(Procedure)) return false;
    window.Reset(CreateWindowExW(kExtendedStyles, kTryWindowClass, Text(IDS_TRY_TITLE).c_str(), kStyles, CW_USEDEFAULT,
                                 CW_USEDEFAULT, kFirstSize.cx, kFirstSize.cy, nullptr, nullptr, platform::ThisModule(),
                                 nullptr));
    if (!window || !MakeControls()) return false;
    SetWindowLongPtrW(window.Get(), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    UseDpi(DpiOf(window.Get()));
    SetWindowPos(window.Get(), nullptr, 0, 0, Pixels(kFirstSize.cx), Pixels(kFirstSize.cy),
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    return true;
}

// In tab order; a label comes directly before its control, so that screen readers pair them.
bool TryWindow::MakeControls() {
    const HWND explanation = MakeControl(WC_STATICW, IDS_TRY_EXPLANATION, SS_LEFT | SS_NOPREFIX, kTryExplanation);
    const HWND label = MakeControl(WC_STATICW, IDS_TRY_PRESSES, SS_LEFT, kTryLabel);
    const HWND list = MakeControl(WC_LISTVIEWW, 0, kListStyles, kTryList);
    const HWND button = MakeControl(WC_BUTTONW, IDS_TRY_CLOSE, BS_PUSHBUTTON | WS_TABSTOP, IDCANCEL);
    if (!explanation || !label || !list || !button) return false;
    SetWindowLongPtrW(list, GWL_EXSTYLE, WS_EX_CLIENTEDGE);
    platform::SelectFullRows(list);
    AddColumns(list);
    lastFocus = list;
    return true;
}

HWND TryWindow::MakeControl(const wchar_t* windowClass, unsigned textId, DWORD style, int id) {
    const std::wstring text = textId == 0 ? std::wstring() : Text(textId);
    return CreateWindowExW(0, windowClass, text.c_str(), WS_CHILD | WS_VISIBLE | style, 0, 0, 0, 0, window.Get(),
                           reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), platform::ThisModule(), nullptr);
}

void TryWindow::UseDpi(UINT chosenDpi) {
    dpi = chosenDpi;
    UniqueFont previous = std::move(font);
    font = MessageFont(dpi);
    for (const int id : {kTryExplanation, kTryLabel, kTryList, IDCANCEL}) {
        SendMessageW(Control(id), WM_SETFONT, reinterpret_cast<WPARAM>(font.Get()), TRUE);
    }
    LayOut();
}

// From the top: the explanation, the label, the list, and the button at the lower right.
void TryWindow::LayOut() const {
    RECT area{};
    GetClientRect(window.Get(), &area);
    const int margin = Pixels(kMargin);
    const int gap = Pixels(kGap);
    const int line = Pixels(kLineHeight);
    const int width = std::max<int>(area.right - 2 * margin, 0);
    const int textHeight = HeightOfExplanation(width);
    const int listTop = margin + textHeight + gap + line;
    const int buttonTop = area.bottom - margin - Pixels(kButtonSize.cy);
    Place(Control(kTryExplanation), margin, margin, width, textHeight);
    Place(Control(kTryLabel), margin, margin + textHeight + gap, width, line);
    Place(Control(kTryList), margin, listTop, width, std::max(buttonTop - gap - listTop, 0));
    Place(Control(IDCANCEL), area.right - margin - Pixels(kButtonSize.cx), buttonTop, Pixels(kButtonSize.cx),
          Pixels(kButtonSize.cy));
    SizeColumns(width);
}

int TryWindow::HeightOfExplanation(int width) const {
    const HWND explanation = Control(kTryExplanation);
    constexpr int kLongestText = 1000;
    const std::wstring text = platform::WindowText(explanation, kLongestText);
    const platform::WindowDeviceContext context(explanation);
    if (!context || !font) return Pixels(2 * kLineHeight);
    const platform::SelectedObject selected(context.Get(), font.Get());
    RECT area{0, 0, width, 0};
    return DrawTextW(context.Get(), text.c_str(), -1, &area, DT_CALCRECT | DT_WORDBREAK | DT_NOPREFIX);
}

// Leaves room for a scroll bar.
void TryWindow::SizeColumns(int width) const {
    const int room = std::max(width - GetSystemMetrics(SM_CXVSCROLL) - Pixels(kGap), 0);
    WPARAM index = 0;
    for (const ColumnRow& row : kColumns) {
        SendMessageW(Control(kTryList), LVM_SETCOLUMNWIDTH, index++, room * row.percent / 100);
    }
}

void TryWindow::ComeToFront() const {
    ShowWindow(window.Get(), IsIconic(window.Get()) ? SW_RESTORE : SW_SHOW);
    SetForegroundWindow(window.Get());
}

void TryWindow::Add(const ShownPress& press) const {
    const HWND list = Control(kTryList);
    if (platform::ListRowCount(list) >= kMostPressesShown) platform::DeleteListRow(list, 0);
    const int row = platform::InsertListRow(list, kMostPressesShown, press.control);
    int column = 1;
    for (const std::wstring* const text : {&press.effect, &press.profile, &press.program}) {
        platform::SetListText(list, row, column++, *text);
    }
    MakeCurrent(list, row);
}

std::optional<LRESULT> TryWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_SIZE:
            LayOut();
            return 0;
        case WM_GETMINMAXINFO:
            OnLimits(*reinterpret_cast<MINMAXINFO*>(lParam));
            return 0;
        case kDpiChangedMessage:
            OnDpiChanged(LOWORD(wParam), *reinterpret_cast<const RECT*>(lParam));
            return 0;
        case WM_ACTIVATE:
            OnActivation(LOWORD(wParam) != WA_INACTIVE);
            return 0;
        case WM_COMMAND:
            OnCommand(LOWORD(wParam));
            return 0;
        case kComeToFrontMessage:
            ComeToFront();
            return 0;
        case WM_NCDESTROY:
            static_cast<void>(window.Release());
            return std::nullopt;
        default:
            return std::nullopt;
    }
}

void TryWindow::OnLimits(MINMAXINFO& limits) const {
    limits.ptMinTrackSize = {Pixels(kLeastSize.cx), Pixels(kLeastSize.cy)};
}

void TryWindow::OnDpiChanged(UINT changedDpi, const RECT& place) {
    UseDpi(changedDpi);
    SetWindowPos(window.Get(), nullptr, place.left, place.top, place.right - place.left, place.bottom - place.top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

// When the window comes back, the same control gets the keyboard focus again.
void TryWindow::OnActivation(bool isActive) {
    if (isActive) {
        SetFocus(lastFocus);
    } else if (const HWND focus = GetFocus(); IsChild(window.Get(), focus)) {
        lastFocus = focus;
    }
}

// Esc and the button send IDCANCEL. Enter sends IDOK, which closes the window only if the button has the focus: a mouse
// button under test may type Enter.
void TryWindow::OnCommand(UINT command) {
    const bool isEnterOnButton = command == IDOK && GetFocus() == Control(IDCANCEL);
    if (command == IDCANCEL || isEnterOnButton) DestroyWindow(window.Get());
}

LRESULT CALLBACK TryWindow::Procedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    auto* const self = platform::ObjectOf<TryWindow>(handle);
    std::optional<LRESULT> answer;
    if (self != nullptr) platform::Completes([&] { answer = self->OnMessage(message, wParam, lParam); });
    return answer ? *answer : DefWindowProcW(handle, message, wParam, lParam);
}

}  // namespace kvn::service
