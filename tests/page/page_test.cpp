#include "tests/page/page_test.h"

#include <commctrl.h>

namespace kvn::test {

using platform::ServiceMessage;

PropertySheetSession& PageTest::Start(int extensions, int pagesOfEach) {
    PublishMouse(mouse);
    return session.emplace(module, extensions, pagesOfEach);
}

PropertySheetSession& PageTest::Open() {
    Start().AwaitOpen();
    return *session;
}

void PageTest::Close() {
    session->PressCancel();
    session->AwaitClosed();
    session.reset();
}

void PageTest::WriteProfiles(const std::vector<std::string>& profiles, int selected) const {
    WriteFileText(ProfilePath(), ProfileFileText(profiles, selected));
}

void PageTest::SetFocusTo(HWND control) const {
    session->Run([=] { SetFocus(control); });
}

void PageTest::Choose(int control, int data) const {
    const HWND combo = session->PaneControl(control);
    SetFocusTo(combo);
    session->Start([=] {
        const HWND pane = GetParent(combo);
        const auto report = [=](WORD notification) {
            SendMessageW(pane, WM_COMMAND, MAKEWPARAM(control, notification), reinterpret_cast<LPARAM>(combo));
        };
        SendMessageW(combo, CB_SETCURSEL, static_cast<WPARAM>(IndexOfData(combo, data)), 0);
        report(CBN_SELENDOK);
        report(CBN_SELCHANGE);
    });
    session->Settle();
}

void PageTest::Click(int paneControl) const {
    PostMessageW(session->PaneControl(paneControl), BM_CLICK, 0, 0);
    session->Settle();
}

void PageTest::MoveTrackbar(int control, int position) const {
    const HWND trackbar = session->PaneControl(control);
    session->Run([=] {
        SendMessageW(trackbar, TBM_SETPOS, TRUE, position);
        SendMessageW(GetParent(trackbar), WM_HSCROLL, MAKEWPARAM(TB_THUMBTRACK, position),
                     reinterpret_cast<LPARAM>(trackbar));
    });
}

void PageTest::ChooseProfile(int index) const {
    const HWND combo = session->PageControl(IDC_PAGE_PROFILE);
    session->Run([=] {
        SendMessageW(combo, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
        SendMessageW(GetParent(combo), WM_COMMAND, MAKEWPARAM(IDC_PAGE_PROFILE, CBN_SELCHANGE),
                     reinterpret_cast<LPARAM>(combo));
    });
}

void PageTest::ApplySuccessfully() {
    const std::size_t before = service->CountOf(ServiceMessage::SettingsChanged);
    session->PressApply();
    Await("the service to hear of the apply",
          [&] { return service->CountOf(ServiceMessage::SettingsChanged) == before + 1; });
    EXPECT_TRUE(session->IsQuiet());
}

int PageTest::Position(int control) const {
    return static_cast<int>(SendMessageW(session->PaneControl(control), TBM_GETPOS, 0, 0));
}

void ExpectWarning(const MessageBoxSeen& seen, const std::wstring& text) {
    EXPECT_EQ(kCaption, seen.caption);
    EXPECT_EQ(text, seen.text);
    EXPECT_EQ(static_cast<UINT>(MB_ICONEXCLAMATION), seen.icon);
    // The only button of an OK box has the id of Cancel or of OK, by Windows version; there is one in any case.
    EXPECT_EQ(1U, seen.buttons.size());
}

}  // namespace kvn::test
