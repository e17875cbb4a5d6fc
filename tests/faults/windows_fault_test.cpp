// Windows functions that always fail, and what the page does then.
#include <windows.h>

#include <objidl.h>

#include <cderr.h>
#include <commdlg.h>

#include <gdiplus.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <set>

#include "tests/faults/whole_page_fixture.h"
#include "tests/support/written_profiles.h"

namespace kvn::test {
namespace {

using WindowsFaultTest = WholePageTest;

class RefusedDialogTest : public WholePageTest, public testing::WithParamInterface<UINT> {};

INSTANTIATE_TEST_SUITE_P(EachOne, RefusedDialogTest,
                         testing::Values(IDD_EDIT_PROFILE, IDD_EDIT_GESTURE, IDD_PROFILE_NAME, IDD_SELECT_PROGRAM,
                                         IDD_ARBITRARY_KEY, IDD_REGISTER_PROGRAM));

TEST_P(RefusedDialogTest, IsLeftOutAndOpensTheNextTime) {
    const int before = page.OpenedDialogs();
    const Saved whole = StateAfterTour();
    const int dialogs = page.OpenedDialogs();
    StartOver();
    page.RefuseDialog(GetParam());
    EXPECT_TRUE(GoThroughThePage());
    EXPECT_LT(page.OpenedDialogs() - dialogs, dialogs - before);
    EXPECT_NE(State(), whole);
    ExpectNoDamage();
    page.Close();
    page.RefuseDialog(0);
    ExpectWholeTour(whole);
}

TEST_F(WindowsFaultTest, AnyMissingTextIsOnlyMissing) {
    std::set<UINT> used;
    UINT missing = 0;
    const ReplacedImport<"LoadStringW", decltype(LoadStringW)> load(
        module.Handle(), [&](HINSTANCE instance, UINT id, LPWSTR buffer, INT size) {
            used.insert(id);
            return id == missing ? 0 : LoadStringW(instance, id, buffer, size);
        });
    const Saved whole = StateAfterTour();
    const std::set<UINT> ids = used;
    EXPECT_GT(ids.size(), 50U);
    for (const UINT id : ids) {
        SCOPED_TRACE(id);
        missing = id;
        StartOver();
        page.AddAndOpen();
        EXPECT_TRUE(page.Apply());
        Press(page.GesturePane(), IDC_GESTURES_ADD);
        EXPECT_TRUE(page.Apply());
        ExpectNoDamage();
        CloseAndExpectNoLeak();
    }
    missing = 0;
    // Without the text for its folder, the file goes to the folder above.
    DeleteFileW((user.ApplicationData() + L"\\" + mouse.Name() + L".xml").c_str());
    ExpectWholeTour(whole);
}

TEST_F(WindowsFaultTest, AServiceWhoseProgramHasNoNameMakesHelpInertAndShowsNoPicture) {
    hasFileName = false;
    StartOver();
    EXPECT_TRUE(GoThroughThePage());
    EXPECT_TRUE(helpFiles.empty());
    EXPECT_EQ(SendMessageW(page.PaneControl(IDC_PANE_PICTURE), STM_GETIMAGE, IMAGE_BITMAP, 0), 0);
    ExpectNoDamage();
}

TEST_F(WindowsFaultTest, WithoutGdiplusThereAreNoPicturesButThereIsHelp) {
    const ReplacedImport<"GdiplusStartup", Gdiplus::Status(ULONG_PTR*, const Gdiplus::GdiplusStartupInput*,
                                                           Gdiplus::GdiplusStartupOutput*)>
        startup(module.Handle(), [](ULONG_PTR*, const Gdiplus::GdiplusStartupInput*, Gdiplus::GdiplusStartupOutput*) {
            return Gdiplus::Win32Error;
        });
    int shutdowns = 0;
    const ReplacedImport<"GdiplusShutdown", void(ULONG_PTR)> shutdown(module.Handle(), [&](ULONG_PTR) { ++shutdowns; });
    StartOver();
    EXPECT_TRUE(GoThroughThePage());
    EXPECT_EQ(SendMessageW(page.PaneControl(IDC_PANE_PICTURE), STM_GETIMAGE, IMAGE_BITMAP, 0), 0);
    EXPECT_EQ(helpFiles, std::vector<std::wstring>{folder + L"\\KvnUtilHelp.htm"});
    page.Close();
    EXPECT_EQ(shutdowns, 0) << "what was not started must not be shut down";
    ExpectNoDamage();
}

TEST_F(WindowsFaultTest, AFolderThatCannotBeMadeIsReportedAndTheNextApplyFindsIt) {
    StartOver();
    std::filesystem::remove_all(user.SettingsFolder());
    {
        const ReplacedImport<"SHCreateDirectory", int(HWND, PCWSTR)> create(
            module.Handle(), [](HWND, PCWSTR) -> int { return ERROR_ACCESS_DENIED; });
        page.AddAndOpen();
    }
    EXPECT_EQ(page.Messages(), std::vector<std::wstring>{L"Settings failed."});
    EXPECT_FALSE(page.Apply());
    std::filesystem::create_directories(user.SettingsFolder());
    EXPECT_TRUE(page.Apply());
    EXPECT_TRUE(FileExists(ProfilePath()));
    ExpectNoDamage();
}

// The dialog for files comes from a library that is loaded at its first use.
class OpenDialogFaultTest : public WholePageTest {
protected:
    void SetUp() override {
        WholePageTest::SetUp();
        page.WhenDialogOpens(IDD_SELECT_PROGRAM, [this](HWND dialog) {
            Press(dialog, IDC_PROGRAMS_REFERENCE);
            staysOpen = IsWindow(dialog) != FALSE && !page.HasEnded(dialog);
        });
    }
    void ExpectNothingChosen() {
        StartOver();
        EXPECT_TRUE(GoThroughThePage());
        EXPECT_TRUE(staysOpen);
        EXPECT_EQ(State().file.find("regedit"), std::string::npos);
        ExpectNoDamage();
    }

    bool staysOpen = false;
};

TEST_F(OpenDialogFaultTest, WithoutItsLibraryNothingIsChosen) {
    const ReplacedImport<"LoadLibraryW", decltype(LoadLibraryW)> load(module.Handle(),
                                                                      [](LPCWSTR) { return HMODULE{}; });
    ExpectNothingChosen();
}

TEST_F(OpenDialogFaultTest, WithoutItsFunctionNothingIsChosen) {
    const ReplacedImport<"GetProcAddress", decltype(GetProcAddress)> find(module.Handle(),
                                                                          [](HMODULE, LPCSTR) { return FARPROC{}; });
    ExpectNothingChosen();
}

BOOL WINAPI FailToOpen(OPENFILENAMEW* /*request*/) {
    return FALSE;
}

TEST_F(OpenDialogFaultTest, ThatFailsWithAnErrorChoosesNothing) {
    const ReplacedImport<"GetProcAddress", decltype(GetProcAddress)> find(
        module.Handle(), [](HMODULE library, LPCSTR name) -> FARPROC {
            if (std::strcmp(name, "GetOpenFileNameW") == 0)
                return reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&FailToOpen));
            return GetProcAddress(library, name);
        });
    ExpectNothingChosen();
}

}  // namespace
}  // namespace kvn::test
