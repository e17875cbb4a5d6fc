// "Help".
#include "resources/resource.h"
#include "tests/end_to_end/input.h"
#include "tests/end_to_end/page_world.h"
#include "tests/end_to_end/stored_state.h"
#include "tests/end_to_end/story_waiting.h"
#include "tests/end_to_end/windows_of_process.h"
#include "tests/support/narrow_text.h"
#include "tests/support/platform.h"

namespace kvn::end_to_end {
namespace {

constexpr wchar_t kBrowserClass[] = L"KvnEndToEndBrowser";

class HelpTest : public EndToEndTest {
protected:
    // The browser for .htm files: it records which file it has to open.
    std::wstring BrowserCommand() const {
        return L'"' + ProgramFolder() + L"recording_browser.exe\" \"" + Record() + L"\" \"%1\"";
    }
    std::wstring Record() const { return Scratch() + L"opened"; }
};

TEST_F(HelpTest, OpensThePageBesideTheServiceAndChangesNothing) {
    if (!test::RunsUnderWine()) GTEST_SKIP() << "on Windows no program may choose the user's browser";
    const TemporaryText association(HKEY_CLASSES_ROOT, L".htm", L"", kBrowserClass);
    const TemporaryText command(HKEY_CLASSES_ROOT, std::wstring(kBrowserClass) + L"\\shell\\open\\command", L"",
                                BrowserCommand());
    const Sheet sheet = OpenSheetWithService();
    sheet.Click(IDC_PANE_HELP);

    WaitFor("the help page to be opened", [&] { return Exists(Record()) && !ReadFileBytes(Record()).empty(); });
    EXPECT_EQ(ReadFileBytes(Record()), test::Narrow(ProgramFolder() + L"service\\KvnUtilHelp.htm"));
    // A key is handled after everything that the click caused.
    EXPECT_EQ(sheet.MoveFocus(1), IDC_PAGE_TAB);
    EXPECT_FALSE(sheet.CanApply());
    sheet.Close(IDCANCEL);
    EXPECT_EQ(HostExitCode(), 0U);
    RegDeleteTreeW(HKEY_CLASSES_ROOT, kBrowserClass);
}

}  // namespace
}  // namespace kvn::end_to_end
