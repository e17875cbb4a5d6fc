// "Arbitrary key": the dialog in which a key combination is pressed, and what becomes of it.
#include "resources/resource.h"
#include "tests/end_to_end/input.h"
#include "tests/end_to_end/key_dialog_driver.h"
#include "tests/end_to_end/page_world.h"
#include "tests/end_to_end/profile_text.h"
#include "tests/end_to_end/stored_state.h"
#include "tests/end_to_end/story_waiting.h"
#include "tests/end_to_end/windows_of_process.h"
#include "tests/support/function_codes.h"

namespace kvn::end_to_end {
namespace {

using enum test::Function;

class ArbitraryKeysTest : public EndToEndTest {
protected:
    void SetUp() override {
        EndToEndTest::SetUp();
        WriteFileBytes(ProfileFile(), ProfileFileText({{}}));
    }
};

TEST_F(ArbitraryKeysTest, PressedKeysAreShownInBracketsWrittenAndSaved) {
    const Sheet sheet = OpenSheetWithService();
    sheet.ChooseByMouse(IDC_PANE_CENTER, kKeys);
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

TEST_F(ArbitraryKeysTest, LeftAndRightModifiersAreToldApart) {
    const Sheet sheet = OpenSheetWithService();
    sheet.ChooseByMouse(IDC_PANE_RIGHT, kKeys);
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

}  // namespace
}  // namespace kvn::end_to_end
