// "Arbitrary key": the dialog in which a key combination is pressed, and what becomes of it.
#include "resources/resource.h"
#include "tests/end_to_end/input.h"
#include "tests/end_to_end/key_dialog.h"
#include "tests/end_to_end/profile_text.h"
#include "tests/end_to_end/stored_state.h"
#include "tests/end_to_end/waiting.h"
#include "tests/end_to_end/windows_of_process.h"
#include "tests/end_to_end/world.h"

namespace kvn::end_to_end {
namespace {

constexpr int kArbitraryKey = 37;

class ArbitraryKeys : public EndToEndTest {
protected:
    void SetUp() override {
        EndToEndTest::SetUp();
        WriteFileBytes(ProfileFile(), ProfileFileText({{}}));
    }
};

TEST_F(ArbitraryKeys, PressedKeysAreShownInBracketsWrittenAndSaved) {
    const Sheet sheet = OpenSheetWithService();
    sheet.ChooseByMouse(IDC_PANE_CENTER, kArbitraryKey);
    const KeyDialog dialog(sheet.ProcessId());
    dialog.Press(IDC_KEYS_INPUT1, VK_LCONTROL, L"Left Ctrl");
    dialog.MoveTo(IDC_KEYS_INPUT2);
    dialog.Press(IDC_KEYS_INPUT2, 'V', L"V");
    dialog.CloseWith(IDC_KEYS_OK);

    WaitFor("the combination in the chooser",
            [&] { return sheet.ChosenText(IDC_PANE_CENTER) == L"Arbitrary key[Left Ctrl+V]"; });
    EXPECT_EQ(ModelValues(), RegistryValues());
    sheet.Apply();
    EXPECT_EQ(ModelValues(),
              (RegistryValues{{"BindKeyCenter", "37"}, {"BindKeyCenter_etcKey", UnterminatedText(L"Left Ctrl+V")}}));
    EXPECT_EQ(ReadFileBytes(ProfileFile()),
              ProfileFileText({{"Default", {{"tbutton", "37"}, {"tbutton_etcKey", "Left Ctrl+V"}}}}));
    sheet.Close(IDOK);
    EXPECT_EQ(HostExitCode(), 0U);

    const Sheet reopened = OpenSheet();
    EXPECT_EQ(reopened.ChosenText(IDC_PANE_CENTER), L"Arbitrary key[Left Ctrl+V]");
    reopened.Close(IDCANCEL);
    EXPECT_EQ(HostExitCode(), 0U);
}

TEST_F(ArbitraryKeys, LeftAndRightModifiersAreToldApart) {
    const Sheet sheet = OpenSheetWithService();
    sheet.ChooseByMouse(IDC_PANE_RIGHT, kArbitraryKey);
    const KeyDialog dialog(sheet.ProcessId());
    dialog.Press(IDC_KEYS_INPUT1, VK_LSHIFT, L"Left Shift");
    dialog.Press(IDC_KEYS_INPUT1, VK_RCONTROL, L"Right Ctrl");
    dialog.MoveTo(IDC_KEYS_INPUT2);
    dialog.Press(IDC_KEYS_INPUT2, VK_RSHIFT, L"Right Shift");
    dialog.MoveTo(IDC_KEYS_INPUT3);
    dialog.Press(IDC_KEYS_INPUT3, VK_LMENU, L"Left Alt");
    dialog.Press(IDC_KEYS_INPUT3, VK_F5, L"F5");
    dialog.CloseWith(IDC_KEYS_OK);
    sheet.Apply();

    EXPECT_EQ(ModelValues()["BindKeyRight_etcKey"], UnterminatedText(L"Right Ctrl+Right Shift+F5"));
    sheet.Close(IDCANCEL);
    EXPECT_EQ(HostExitCode(), 0U);
}

TEST_F(ArbitraryKeys, CancelledDialogKeepsTheKeysThatWereThere) {
    WriteFileBytes(ProfileFile(),
                   ProfileFileText({{"Default", {{"button4", "37"}, {"button4_etcKey", "Left Alt+F4"}}}}));
    const Sheet sheet = OpenSheetWithService();
    EXPECT_EQ(sheet.ChosenText(IDC_PANE_BUTTON4), L"Arbitrary key[Left Alt+F4]");
    sheet.ChooseByMouse(IDC_PANE_BUTTON4, kArbitraryKey);
    const KeyDialog dialog(sheet.ProcessId());
    dialog.Expect(IDC_KEYS_INPUT1, L"Left Alt");
    dialog.Expect(IDC_KEYS_INPUT2, L"F4");
    dialog.Expect(IDC_KEYS_INPUT3, L"");
    dialog.Press(IDC_KEYS_INPUT1, 'A', L"A");
    dialog.CloseWith(IDC_KEYS_CANCEL);

    EXPECT_EQ(sheet.ChosenText(IDC_PANE_BUTTON4), L"Arbitrary key[Left Alt+F4]");
    sheet.Close(IDOK);
    EXPECT_EQ(HostExitCode(), 0U);
    EXPECT_EQ(ModelValues(), RegistryValues());
}

TEST_F(ArbitraryKeys, TiltTakesNoShiftKey) {
    const Sheet sheet = OpenSheetWithService();
    sheet.ChooseByMouse(IDC_PANE_TILT_LEFT, kArbitraryKey);
    const KeyDialog dialog(sheet.ProcessId());
    dialog.Press(IDC_KEYS_INPUT1, VK_LCONTROL, L"Left Ctrl");
    dialog.MoveTo(IDC_KEYS_INPUT2);
    PressKey(VK_LSHIFT);
    dialog.MoveTo(IDC_KEYS_INPUT3);
    EXPECT_EQ(TextOf(dialog.Control(IDC_KEYS_INPUT2)), L"");
    // Shift, Left Shift and Right Shift are missing from the 48 listed keys.
    EXPECT_EQ(Send(dialog.Control(IDC_KEYS_INPUT1), CB_GETCOUNT), 45);
    dialog.CloseWith(IDC_KEYS_OK);

    WaitFor("the combination in the chooser",
            [&] { return sheet.ChosenText(IDC_PANE_TILT_LEFT) == L"Arbitrary key[Left Ctrl]"; });
    sheet.Close(IDCANCEL);
    EXPECT_EQ(HostExitCode(), 0U);
}

TEST_F(ArbitraryKeys, DialogOpenedByKeysIsClosedByEscape) {
    const Sheet sheet = OpenSheetWithService();
    sheet.MoveFocusTo(IDC_PANE_CENTER);
    const HWND chooser = sheet.Control(IDC_PANE_CENTER);
    PressTogether({VK_LMENU, VK_DOWN});
    WaitFor("the list to open", [&] { return Send(chooser, CB_GETDROPPEDSTATE) != 0; });
    PressKey(VK_END);
    PressKey(VK_UP);
    WaitFor("the entry", [&] { return sheet.Chosen(IDC_PANE_CENTER) == kArbitraryKey; });
    PressKey(VK_RETURN);
    const KeyDialog dialog(sheet.ProcessId());
    PressKey(VK_ESCAPE);
    dialog.WaitUntilClosed();
    WaitFor("the sheet in the foreground", [&] { return GetForegroundWindow() == sheet.Window(); });
    sheet.Close(IDCANCEL);
    EXPECT_EQ(HostExitCode(), 0U);
}

}  // namespace
}  // namespace kvn::end_to_end
