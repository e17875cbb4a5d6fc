#include "tests/support/page_fixture.h"

#include <commctrl.h>

namespace kvn::test {

using platform::ServiceMessage;

OpenedSheet& PageTest::Start(int extensions, int pagesOfEach) {
    PublishMouse(mouse);
    return sheet.emplace(module, extensions, pagesOfEach);
}

OpenedSheet& PageTest::Open() {
    Start().AwaitOpen();
    return *sheet;
}

void PageTest::Close() {
    sheet->PressCancel();
    sheet->AwaitClosed();
    sheet.reset();
}

void PageTest::WriteProfiles(const std::vector<std::string>& profiles, int selected) const {
    WriteFileText(ProfilePath(), ProfileFileText(profiles, selected));
}

void PageTest::SetFocusTo(HWND control) const {
    sheet->Run([=] { SetFocus(control); });
}

void PageTest::Choose(int control, int data) const {
    const HWND combo = sheet->PaneControl(control);
    SetFocusTo(combo);
    sheet->Start([=] {
        const HWND pane = GetParent(combo);
        const auto report = [=](WORD notification) {
            SendMessageW(pane, WM_COMMAND, MAKEWPARAM(control, notification), reinterpret_cast<LPARAM>(combo));
        };
        SelectData(combo, data);
        report(CBN_SELENDOK);
        report(CBN_SELCHANGE);
    });
    sheet->Settle();
}

void PageTest::Click(int paneControl) const {
    PostMessageW(sheet->PaneControl(paneControl), BM_CLICK, 0, 0);
    sheet->Settle();
}

void PageTest::MoveTrackbar(int control, int position) const {
    const HWND trackbar = sheet->PaneControl(control);
    sheet->Run([=] {
        SendMessageW(trackbar, TBM_SETPOS, TRUE, position);
        SendMessageW(GetParent(trackbar), WM_HSCROLL, MAKEWPARAM(TB_THUMBTRACK, position),
                     reinterpret_cast<LPARAM>(trackbar));
    });
}

void PageTest::ChooseProfile(int index) const {
    const HWND combo = sheet->PageControl(IDC_PAGE_PROFILE);
    sheet->Run([=] {
        SendMessageW(combo, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
        SendMessageW(GetParent(combo), WM_COMMAND, MAKEWPARAM(IDC_PAGE_PROFILE, CBN_SELCHANGE),
                     reinterpret_cast<LPARAM>(combo));
    });
}

void PageTest::ApplySuccessfully() {
    const std::size_t before = service->CountOf(ServiceMessage::SettingsChanged);
    sheet->PressApply();
    EXPECT_TRUE(sheet->IsQuiet());
    EXPECT_EQ(service->CountOf(ServiceMessage::SettingsChanged), before + sheet->ShownPageCount());
}

int PageTest::Position(int control) const {
    return static_cast<int>(SendMessageW(sheet->PaneControl(control), TBM_GETPOS, 0, 0));
}

void ExpectWarning(const MessageBoxSeen& seen, const std::wstring& text) {
    EXPECT_EQ(seen.caption, kCaption);
    EXPECT_EQ(seen.text, text);
    EXPECT_EQ(seen.icon, static_cast<UINT>(MB_ICONEXCLAMATION));
    // The only button of an OK box has the id of Cancel or OK, depending on the Windows version.
    EXPECT_EQ(seen.buttons.size(), 1U);
}

}  // namespace kvn::test
