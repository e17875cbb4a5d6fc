// The page's dialog procedure: the messages that it forwards, and when it reports a change to the sheet.
#include <windows.h>

#include <commctrl.h>

#include "platform/device_context.h"
#include "tests/support/page_fixture.h"
#include "tests/support/tab_contents.h"
#include "tests/support/window_search.h"

namespace kvn::test {
namespace {

using platform::ServiceMessage;

class PropertyPageTest : public PageTest {
protected:
    // The answer of the page's dialog procedure itself.
    INT_PTR AskProcedure(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
        INT_PTR answer = -1;
        sheet->Run([&, page = sheet->Page()] {
            const auto procedure = reinterpret_cast<DLGPROC>(GetWindowLongPtrW(page, DWLP_DLGPROC));
            answer = procedure(page, message, wParam, lParam);
        });
        return answer;
    }

    INT_PTR AskNotify(UINT code) const {
        NMHDR header{sheet->Sheet(), 0, code};
        return AskProcedure(WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&header));
    }

    void ReportFromPane(int control, WORD notification) const {
        SendMessageW(sheet->ButtonPane(), WM_COMMAND, MAKEWPARAM(control, notification),
                     reinterpret_cast<LPARAM>(sheet->PaneControl(control)));
    }

    void SelectTab(int index) const {
        const HWND tab = sheet->PageControl(IDC_PAGE_TAB);
        sheet->Run([=] { SendMessageW(tab, TCM_SETCURSEL, static_cast<WPARAM>(index), 0); });
        AskNotify(TCN_SELCHANGE);
    }

    bool IsShown(HWND window) const { return (GetWindowLongW(window, GWL_STYLE) & WS_VISIBLE) != 0; }
};

TEST_F(PropertyPageTest, IsTitledAfterTheMouse) {
    Open();
    const HWND tab = reinterpret_cast<HWND>(SendMessageW(sheet->Sheet(), PSM_GETTABCONTROL, 0, 0));
    EXPECT_EQ(TabTextsOf(tab), (std::vector<std::wstring>{L"KORVEN Tarsel 3"}));
}

TEST_F(PropertyPageTest, KeepsTheSheetsDescriptionInItsUserData) {
    Open();
    const auto* described = reinterpret_cast<const PROPSHEETPAGEW*>(GetWindowLongPtrW(sheet->Page(), DWLP_USER));
    ASSERT_NE(described, nullptr);
    EXPECT_EQ(described->dwSize, 88U);
    EXPECT_EQ(described->hInstance, module.Handle());
}

TEST_F(PropertyPageTest, AnswersEachMessageAsTheDialogManagerExpects) {
    Open();
    EXPECT_EQ(AskProcedure(WM_CREATE), TRUE);
    EXPECT_EQ(AskProcedure(WM_PAINT), FALSE);
    EXPECT_EQ(AskProcedure(WM_COPYDATA), TRUE);
    EXPECT_EQ(AskNotify(PSN_SETACTIVE), TRUE);
    EXPECT_EQ(AskNotify(PSN_KILLACTIVE), TRUE);
    EXPECT_EQ(AskNotify(PSN_RESET), TRUE);
    EXPECT_EQ(AskNotify(TCN_SELCHANGE), TRUE);
    EXPECT_EQ(AskNotify(PSN_APPLY), TRUE);
    EXPECT_EQ(AskProcedure(WM_HSCROLL, 0, 0), TRUE);
    EXPECT_EQ(AskProcedure(WM_COMMAND, MAKEWPARAM(IDC_PAGE_PROFILE, CBN_KILLFOCUS), 0), TRUE);
    for (const UINT message : {WM_SIZE, WM_LBUTTONDOWN, WM_KEYDOWN, WM_TIMER, WM_VSCROLL, WM_DESTROY, WM_APP}) {
        EXPECT_EQ(AskProcedure(message), FALSE) << message;
    }
}

TEST_F(PropertyPageTest, AnswersItsFirstAndItsLastMessageWithTrue) {
    Open();
    EXPECT_EQ(AskProcedure(WM_INITDIALOG, 0, GetWindowLongPtrW(sheet->Page(), DWLP_USER)), TRUE);
    static DLGPROC procedure;
    static INT_PTR lastAnswer;
    lastAnswer = -1;
    sheet->Run([page = sheet->Page()] {
        const DLGPROC asking = [](HWND window, UINT message, WPARAM wParam, LPARAM lParam) -> INT_PTR {
            const INT_PTR answer = procedure(window, message, wParam, lParam);
            if (message == WM_NCDESTROY) lastAnswer = answer;
            return answer;
        };
        procedure = reinterpret_cast<DLGPROC>(GetWindowLongPtrW(page, DWLP_DLGPROC));
        SetWindowLongPtrW(page, DWLP_DLGPROC, reinterpret_cast<LONG_PTR>(asking));
    });
    Close();
    EXPECT_EQ(lastAnswer, TRUE);
    EXPECT_EQ(module.CanUnloadNow(), S_OK);
}

TEST_F(PropertyPageTest, FailedApplyAnswersNoChangePage) {
    Open();
    const ReplacedImport<"RegSetValueExW", decltype(RegSetValueExW)> failing(
        module.Handle(), [](HKEY, LPCWSTR, DWORD, DWORD, const BYTE*, DWORD) { return ERROR_ACCESS_DENIED; });
    Choose(IDC_PANE_RIGHT, 5);
    INT_PTR answer = -1;
    LONG_PTR result = 0;
    sheet->Start([&, page = sheet->Page()] {
        SetWindowLongPtrW(page, DWLP_MSGRESULT, 0);
        NMHDR header{GetParent(page), 0, PSN_APPLY};
        const auto procedure = reinterpret_cast<DLGPROC>(GetWindowLongPtrW(page, DWLP_DLGPROC));
        answer = procedure(page, WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&header));
        result = GetWindowLongPtrW(page, DWLP_MSGRESULT);  // the next message to the page clears it
    });
    AnswerMessageBox("Settings failed.", IDOK);
    sheet->Settle();
    EXPECT_EQ(answer, TRUE);
    EXPECT_EQ(result, PSNRET_INVALID_NOCHANGEPAGE);
}

TEST_F(PropertyPageTest, OnlyTheWarningTextIsRedAndTransparent) {
    Open();
    const platform::WindowDeviceContext screen(nullptr);
    const HDC context = screen.Get();
    SetBkMode(context, OPAQUE);
    const HWND ordinary = sheet->PaneControl(IDC_PANE_HORIZONTAL_SLOW);
    const auto paint = [&](HWND control) {
        return AskProcedure(WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(context), reinterpret_cast<LPARAM>(control));
    };
    EXPECT_EQ(paint(ordinary), 0);
    EXPECT_EQ(GetBkMode(context), OPAQUE);
    EXPECT_EQ(GetTextColor(context), RGB(0, 0, 0));

    const HWND warning = sheet->PaneControl(IDC_PAGE_WARNING_TEXT);
    EXPECT_EQ(paint(warning), reinterpret_cast<INT_PTR>(GetStockObject(NULL_BRUSH)));
    EXPECT_EQ(GetBkMode(context), TRANSPARENT);
    EXPECT_EQ(GetTextColor(context), RGB(255, 0, 0));
}

TEST_F(PropertyPageTest, TabsSwitchThePanes) {
    Open();
    EXPECT_TRUE(IsShown(sheet->ButtonPane()));
    EXPECT_FALSE(IsShown(sheet->GesturePane()));
    SelectTab(1);
    EXPECT_FALSE(IsShown(sheet->ButtonPane()));
    EXPECT_TRUE(IsShown(sheet->GesturePane()));
    SelectTab(0);
    EXPECT_TRUE(IsShown(sheet->ButtonPane()));
    EXPECT_FALSE(IsShown(sheet->GesturePane()));
}

TEST_F(PropertyPageTest, NoSelectedTabLeavesThePanesAlone) {
    Open();
    SelectTab(1);
    SelectTab(-1);
    EXPECT_FALSE(IsShown(sheet->ButtonPane()));
    EXPECT_TRUE(IsShown(sheet->GesturePane()));
}

TEST_F(PropertyPageTest, AnotherTabLeavesThePanesAlone) {
    Open();
    wchar_t title[] = L"Third";
    TCITEMW item{};
    item.mask = TCIF_TEXT;
    item.pszText = title;
    const HWND tab = sheet->PageControl(IDC_PAGE_TAB);
    sheet->Run([&] { SendMessageW(tab, TCM_INSERTITEMW, 2, reinterpret_cast<LPARAM>(&item)); });
    SelectTab(2);
    EXPECT_TRUE(IsShown(sheet->ButtonPane()));
    EXPECT_FALSE(IsShown(sheet->GesturePane()));
}

TEST_F(PropertyPageTest, ApplyIsDisabledUntilSomethingChanges) {
    Open();
    EXPECT_FALSE(sheet->IsApplyEnabled());
}

TEST_F(PropertyPageTest, ComboNotificationsMarkAChangeExceptFocusAndAbandonedLists) {
    Open();
    for (const int control : {IDC_PANE_RIGHT, IDC_PANE_TILT_LEFT, IDC_PANE_REVOLUTION_COUNT}) {
        // Zero, CBN_SETFOCUS, CBN_KILLFOCUS, CBN_SELENDCANCEL and larger numbers.
        for (const WORD quiet : {WORD{0}, WORD{3}, WORD{4}, WORD{10}, WORD{11}, WORD{0x7FFF}}) {
            ReportFromPane(control, quiet);
            EXPECT_FALSE(sheet->IsApplyEnabled()) << control << " " << quiet;
        }
        for (const WORD changing : {WORD{1}, WORD{2}, WORD{5}, WORD{6}, WORD{7}, WORD{8}, WORD{9}}) {
            ReportFromPane(control, changing);
            EXPECT_TRUE(sheet->IsApplyEnabled()) << control << " " << changing;
            SendMessageW(sheet->Sheet(), PSM_UNCHANGED, reinterpret_cast<WPARAM>(sheet->Page()), 0);
            ASSERT_FALSE(sheet->IsApplyEnabled());
        }
    }
}

TEST_F(PropertyPageTest, ProfileComboFollowsTheSameRule) {
    Open();
    const HWND combo = sheet->PageControl(IDC_PAGE_PROFILE);
    const auto report = [&](WORD notification) {
        SendMessageW(sheet->Page(), WM_COMMAND, MAKEWPARAM(IDC_PAGE_PROFILE, notification),
                     reinterpret_cast<LPARAM>(combo));
    };
    for (const WORD quiet : {WORD{CBN_SETFOCUS}, WORD{CBN_KILLFOCUS}, WORD{CBN_SELENDCANCEL}}) report(quiet);
    EXPECT_FALSE(sheet->IsApplyEnabled());
    report(CBN_SELCHANGE);
    EXPECT_TRUE(sheet->IsApplyEnabled());
}

TEST_F(PropertyPageTest, EveryTrackbarMarksAChange) {
    Open();
    for (const int control : {IDC_PANE_HORIZONTAL_SPEED, IDC_PANE_FLYING_SPEED, IDC_PANE_REVOLUTION_SPEED}) {
        MoveTrackbar(control, 7);
        EXPECT_TRUE(sheet->IsApplyEnabled()) << control;
        SendMessageW(sheet->Sheet(), PSM_UNCHANGED, reinterpret_cast<WPARAM>(sheet->Page()), 0);
    }
}

TEST_F(PropertyPageTest, HelpMarksNoChange) {
    Open();
    Click(IDC_PANE_HELP);
    EXPECT_TRUE(sheet->IsQuiet());
    EXPECT_FALSE(sheet->IsApplyEnabled());
    SendMessageW(sheet->Page(), WM_COMMAND, IDC_PANE_HELP, 0);
    EXPECT_FALSE(sheet->IsApplyEnabled());
}

TEST_F(PropertyPageTest, CommandsOfOtherControlsMarkAChange) {
    Open();
    SendMessageW(sheet->Page(), WM_COMMAND, 4711, 0);
    EXPECT_TRUE(sheet->IsApplyEnabled());
}

TEST_F(PropertyPageTest, NumbersThatDoNotMarkAChangeForAComboDoSoForOtherControls) {
    Open();
    const auto expectChange = [&](HWND window, int control, WORD notification) {
        SendMessageW(window, WM_COMMAND, MAKEWPARAM(control, notification), 0);
        EXPECT_TRUE(sheet->IsApplyEnabled()) << control << " " << notification;
        SendMessageW(sheet->Sheet(), PSM_UNCHANGED, reinterpret_cast<WPARAM>(sheet->Page()), 0);
    };
    for (const WORD notification : {WORD{0}, WORD{3}, WORD{4}, WORD{10}}) {
        expectChange(sheet->ButtonPane(), IDC_PANE_PICTURE, notification);
        // The page searches its own controls, which include no chooser.
        expectChange(sheet->Page(), IDC_PANE_LEFT, notification);
    }
}

TEST_F(PropertyPageTest, ScrollsOfThePageItselfMarkAChange) {
    Open();
    SendMessageW(sheet->Page(), WM_HSCROLL, 0, reinterpret_cast<LPARAM>(sheet->PaneControl(IDC_PANE_HELP)));
    EXPECT_FALSE(sheet->IsApplyEnabled());
    SendMessageW(sheet->Page(), WM_HSCROLL, 0, reinterpret_cast<LPARAM>(sheet->PaneControl(IDC_PANE_FLYING_SPEED)));
    EXPECT_TRUE(sheet->IsApplyEnabled());
}

TEST_F(PropertyPageTest, TwoExtensionsGiveTwoIndependentPages) {
    Start(2).AwaitOpen();
    EXPECT_EQ(sheet->PageCount(), 2U);
    SendMessageW(sheet->Sheet(), PSM_SETCURSEL, 1, 0);
    sheet->Settle();
    ASSERT_NE(sheet->Page(1), nullptr);
    EXPECT_NE(sheet->Page(1), sheet->Page(0));
    ASSERT_NE(sheet->ButtonPane(1), nullptr);
    EXPECT_EQ(DataOf(GetDlgItem(sheet->ButtonPane(1), IDC_PANE_LEFT)),
              DataOf(GetDlgItem(sheet->ButtonPane(0), IDC_PANE_LEFT)));

    SendMessageW(sheet->Sheet(), PSM_SETCURSEL, 0, 0);
    Choose(IDC_PANE_RIGHT, 12);
    EXPECT_EQ(SelectedData(GetDlgItem(sheet->ButtonPane(1), IDC_PANE_RIGHT)), 2);
    Close();
    EXPECT_EQ(module.CanUnloadNow(), S_OK);
}

TEST_F(PropertyPageTest, AnExtensionThatIsAskedTwiceGivesTwoWorkingPages) {
    Start(1, 2).AwaitOpen();
    EXPECT_EQ(sheet->AddPagesResults(), (std::vector<HRESULT>{S_OK, S_OK}));
    EXPECT_EQ(sheet->PageCount(), 2U);
    SendMessageW(sheet->Sheet(), PSM_SETCURSEL, 1, 0);
    sheet->Settle();
    ASSERT_NE(sheet->ButtonPane(1), nullptr);
    EXPECT_EQ(SelectedData(GetDlgItem(sheet->ButtonPane(1), IDC_PANE_LEFT)), 1);
    sheet->PressOk();
    EXPECT_EQ(sheet->AwaitClosed(), 1);
    EXPECT_EQ(service->CountOf(ServiceMessage::SettingsChanged), 2U);
    EXPECT_EQ(module.CanUnloadNow(), S_OK);
}

TEST_F(PropertyPageTest, AnInstanceThatIsMadeLaterLeavesTheOpenPageAlone) {
    Open();
    Choose(IDC_PANE_RIGHT, 12);
    sheet->Run([&] {
        void* object = nullptr;
        const ComPointer<IClassFactory> factory = module.Factory();
        ASSERT_EQ(factory->CreateInstance(nullptr, IID_IUnknown, &object), S_OK);
        static_cast<IUnknown*>(object)->Release();
    });
    EXPECT_EQ(Chosen(IDC_PANE_RIGHT), 12);
    ApplySuccessfully();
    EXPECT_EQ(SavedElement("rbutton"), "12");
    Close();
    EXPECT_EQ(module.CanUnloadNow(), S_OK);
}

TEST_F(PropertyPageTest, OkAppliesAndClosesAndCancelOnlyCloses) {
    Open();
    Choose(IDC_PANE_RIGHT, 12);
    sheet->PressOk();
    EXPECT_EQ(sheet->AwaitClosed(), 1);
    EXPECT_EQ(SavedElement("rbutton"), "12");
    EXPECT_EQ(service->CountOf(ServiceMessage::SettingsChanged), 1U);

    Open();
    Choose(IDC_PANE_RIGHT, 13);
    sheet->PressCancel();
    EXPECT_EQ(sheet->AwaitClosed(), 0);
    EXPECT_EQ(SavedElement("rbutton"), "12");
    EXPECT_EQ(service->CountOf(ServiceMessage::SettingsChanged), 1U);
}

}  // namespace
}  // namespace kvn::test
