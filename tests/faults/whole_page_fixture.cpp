#include "tests/faults/whole_page_fixture.h"

#include <commctrl.h>
#include <objbase.h>
#include <objidl.h>

#include <gdiplus.h>

#include <filesystem>

#include "tests/support/combo_contents.h"
#include "tests/support/list_contents.h"
#include "tests/support/written_picture.h"
#include "tests/support/written_profiles.h"

namespace kvn::test {
namespace {

using platform::ServiceMessage;

constexpr Gdiplus::ARGB kBlack = 0xFF000000;

void WriteShortcut(const std::wstring& path) {
    void* made = nullptr;
    if (FAILED(CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkW, &made))) return;
    const ComPointer<IShellLinkW> link(static_cast<IShellLinkW*>(made));
    link->SetPath(L"C:\\windows\\notepad.exe");
    if (FAILED(link->QueryInterface(IID_IPersistFile, &made))) return;
    const ComPointer<IPersistFile> file(static_cast<IPersistFile*>(made));
    file->Save(path.c_str(), TRUE);
}

}  // namespace

void WholePageTest::SetUp() {
    ASSERT_TRUE(apartment.emplace());
    PublishMouse(mouse);
    std::filesystem::create_directories(folder + L"\\MouseImage");
    std::filesystem::create_directories(folder + L"\\Programs");
    WritePng(folder + L"\\MouseImage\\" + mouse.image + L".png", kBlack);
    WritePng(folder + L"\\MouseImage\\" + mouse.image + L"_2.png", kBlack);
    WriteShortcut(folder + L"\\Programs\\Editor.lnk");
    UseDialogs();
    // Whole tours load libraries and fill caches that stay. The first test of a process needs three of them.
    static int tours = 3;
    for (; tours > 0; --tours) {
        StartOver();
        ASSERT_TRUE(GoThroughThePage());
        page.Close();
    }
    tours = 1;
    WarmUp(memory, page);
    leaks.emplace(module, memory, page);
    // The part that the test examines begins here.
    service.emplace();
    helpFiles.clear();
    page.ForgetMessages();
}

void WholePageTest::TearDown() {
    page.Close();
    service.emplace();  // without one no page can be added
    if (leaks && !HasFailure()) leaks->ExpectNothing();
    apartment.reset();
}

void WholePageTest::UseDialogs() {
    page.WhenDialogOpens(IDD_ARBITRARY_KEY, [](HWND dialog) {
        SetDlgItemTextW(dialog, IDC_KEYS_INPUT1, L"Left Ctrl");
        Press(dialog, IDC_KEYS_OK);
    });
    page.WhenDialogOpens(IDD_PROFILE_NAME, [](HWND dialog) {
        SetDlgItemTextW(dialog, IDC_PROFILE_NAME, L"Third");
        Press(dialog, IDOK);
    });
    page.WhenDialogOpens(IDD_EDIT_GESTURE, [this](HWND editor) { DrawGesture(editor); });
    page.WhenDialogOpens(IDD_EDIT_PROFILE, [](HWND dialog) {
        SelectRow(GetDlgItem(dialog, IDC_PROFILES_LIST), 0);
        Press(dialog, IDC_PROFILES_ADD_PROGRAM);
        Press(dialog, IDC_PROFILES_ADD);
        Press(dialog, IDOK);
    });
    page.WhenDialogOpens(IDD_SELECT_PROGRAM, [](HWND dialog) { Press(dialog, IDC_PROGRAMS_SELECT_WINDOW); });
    page.WhenDialogOpens(IDD_REGISTER_PROGRAM, [](HWND dialog) {
        SetDlgItemTextW(dialog, IDC_PROGRAM_PATH, L"C:\\windows\\regedit.exe");
        Press(dialog, IDOK);
    });
}

void WholePageTest::DrawGesture(HWND editor) {
    KillTimer(editor, kCaptureTimer);
    SendMessageW(editor, WM_COMMAND, MAKEWPARAM(IDC_GESTURE_STROKE, STN_CLICKED), 0);
    SetCursorPos(400, 300);
    service->ReplyTo(ServiceMessage::IsButtonHeld, 1);
    Tick(editor);
    for (const LONG x : {500, 600, 700}) {
        SetCursorPos(x, 300);
        Tick(editor);
    }
    service->ReplyTo(ServiceMessage::IsButtonHeld, 0);
    Tick(editor);
    Tick(editor);
    const HWND functions = GetDlgItem(editor, IDC_GESTURE_FUNCTION);
    SelectData(functions, 5);
    Press(editor, IDOK);
}

void WholePageTest::StartOver() const {
    const std::string first = ProfileText(
        "Default", {{"tbutton", "36"}, {"Application", "<name>n</name><path>C:\\windows\\notepad.exe</path>"}});
    WriteFileText(ProfilePath(), ProfileFileText({first, ProfileText("Second", {{"rbutton", "5"}})}));
    RegDeleteTreeW(HKEY_CURRENT_USER, mouse.Key().c_str());
}

bool WholePageTest::GoThroughThePage() {
    page.Add();
    page.Open();
    Press(page.ButtonPane(), IDC_PANE_HELP);
    for (const int control : {IDC_PANE_RIGHT, IDC_PANE_LEFT}) {
        SendMessageW(page.PaneControl(control), WM_SETFOCUS, 0, 0);
        SendMessageW(page.PaneControl(control), WM_KILLFOCUS, 0, 0);
    }
    page.Choose(IDC_PANE_BUTTON4, 37);
    Press(page.GesturePane(), IDC_GESTURES_ADD);
    Press(page.Window(), IDC_PAGE_EDIT_PROFILE);
    return page.Apply();
}

void WholePageTest::CloseAndExpectNoLeak() {
    page.Close();
    leaks->ExpectNoBlocks();
}

void WholePageTest::ExpectNoDamage() const {
    EXPECT_EQ(AccessViolations::Seen(), 0);
    EXPECT_EQ(BarePage::Escapes(), 0);
    EXPECT_EQ(page.StuckDialogs(), 0);
}

void WholePageTest::ExpectWholeTour(const Saved& whole) {
    StartOver();
    EXPECT_TRUE(GoThroughThePage());
    EXPECT_EQ(State().file, whole.file);
    EXPECT_TRUE(State() == whole);
    page.Close();
}

WholePageTest::Saved WholePageTest::State() const {
    return {ReadFileText(ProfilePath()), StoredValues(mouse.Key())};
}

WholePageTest::Saved WholePageTest::StateAfterTour() {
    StartOver();
    EXPECT_TRUE(GoThroughThePage());
    Saved state = State();
    page.Close();
    return state;
}

}  // namespace kvn::test
