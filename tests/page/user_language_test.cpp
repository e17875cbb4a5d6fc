// The page for users of several languages, and what is the same for all of them. Wine takes the user's language from
// the environment, so each has a copy of this program; KVN_EXPECTED_LANGUAGE names the language in which the copy must
// find everything.
#include <windows.h>

#include <commctrl.h>

#include <cstdlib>

#include "tests/page/module_texts.h"
#include "tests/support/page_fixture.h"
#include "tests/support/profile_dialogs.h"
#include "tests/support/tab_contents.h"
#include "tests/support/window_search.h"

namespace kvn::test {
namespace {

using namespace std::string_literals;

WORD ExpectedLanguage() {
    const char* number = std::getenv("KVN_EXPECTED_LANGUAGE");
    return number == nullptr ? WORD{0} : static_cast<WORD>(std::atoi(number));
}

class UserLanguageTest : public PageTest {
protected:
    std::wstring Text(UINT id) const { return texts.at(id); }

    // Expects the texts of a dialog's template in its window: the caption, and each control's.
    void ExpectTexts(LPCWSTR dialog, HWND window) const {
        SCOPED_TRACE(DialogName(dialog));
        const DialogTemplate expected = TemplateIn(module.Handle(), dialog, language);
        EXPECT_EQ(TextOf(window), expected.caption);
        std::vector<std::wstring> written;
        for (const TemplateControl& control : expected.controls) {
            if (control.IsStatic() || control.IsButton()) written.push_back(control.text);
        }
        std::vector<std::wstring> shown;
        for (HWND child = GetWindow(window, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
            const std::wstring kind = ClassOf(child);
            if (kind == L"Static" || kind == L"Button") shown.push_back(TextOf(child));
        }
        EXPECT_EQ(shown, written);
    }
    std::wstring TabTitle(int tab) const {
        return TabTextsOf(sheet->PageControl(IDC_PAGE_TAB)).at(static_cast<std::size_t>(tab));
    }
    void ExpectWarningInLanguage(UINT text) const {
        const MessageBoxSeen seen = AnswerMessageBox("the warning", IDOK);
        EXPECT_EQ(seen.caption, Text(IDS_CAPTION));
        EXPECT_EQ(seen.text, Text(text));
    }

    const WORD language = ExpectedLanguage();
    const std::map<UINT, std::wstring> texts = TextsIn(module.Handle(), language);
};

TEST_F(UserLanguageTest, WindowsFindsTheTextsAndDialogsOfOneLanguage) {
    ASSERT_FALSE(texts.empty()) << "KVN_EXPECTED_LANGUAGE names no language of the module";
    for (const auto& [id, text] : texts) EXPECT_EQ(module.Text(id), text) << id;
    for (const LPCWSTR dialog : kDialogNames) {
        EXPECT_EQ(FindResourceW(module.Handle(), dialog, MAKEINTRESOURCEW(5)),
                  FindResourceExW(module.Handle(), MAKEINTRESOURCEW(5), dialog, language))
            << DialogName(dialog);
    }
}

TEST_F(UserLanguageTest, PageSpeaksIt) {
    Open();
    // The sheet removes the page's caption.
    ExpectTexts(MAKEINTRESOURCEW(IDD_BUTTON_PANE), sheet->ButtonPane());
    ExpectTexts(MAKEINTRESOURCEW(IDD_GESTURE_PANE), sheet->GesturePane());
    EXPECT_EQ(TabTitle(0), Text(IDS_TAB_BUTTONS));
    EXPECT_EQ(TabTitle(1), Text(IDS_TAB_GESTURES));
    EXPECT_EQ(SelectedText(sheet->PaneControl(IDC_PANE_RIGHT)), Text(IDS_FUNCTION_RIGHT_CLICK));
    Choose(IDC_PANE_LEFT, 2);
    ExpectWarningInLanguage(IDS_LEFT_CLICK_MISSING);
}

TEST_F(UserLanguageTest, ProfileEditorSpeaksItAndKnowsTheDefaultProfile) {
    WriteProfiles({ProfileText("Default"), ProfileText("Games")});
    Open();
    PostMessageW(sheet->PageControl(IDC_PAGE_EDIT_PROFILE), BM_CLICK, 0, 0);
    const auto editor = ProfileEditorDialog::Await();
    ExpectTexts(MAKEINTRESOURCEW(IDD_EDIT_PROFILE), editor.Window());
    editor.SelectProfiles({0});
    editor.Press(IDC_PROFILES_RENAME);
    ExpectWarningInLanguage(IDS_DEFAULT_PROFILE_RENAME);
    editor.Press(IDC_PROFILES_DELETE);
    EXPECT_EQ(AnswerMessageBox("the question", IDYES).text, Text(IDS_CONFIRM_DELETE));
    ExpectWarningInLanguage(IDS_DEFAULT_PROFILE_DELETE);
    EXPECT_EQ(editor.Profiles(), (std::vector<std::wstring>{L"Default", L"Games"}));
    editor.Close(IDCANCEL);
}

TEST_F(UserLanguageTest, LimitIsReportedWithItsNumber) {
    std::vector<std::string> profiles{ProfileText("Default")};
    while (profiles.size() < 100) profiles.push_back(ProfileText("p" + std::to_string(profiles.size())));
    WriteProfiles(profiles);
    Open();
    PostMessageW(sheet->PageControl(IDC_PAGE_EDIT_PROFILE), BM_CLICK, 0, 0);
    const auto editor = ProfileEditorDialog::Await();
    editor.Press(IDC_PROFILES_ADD);
    std::wstring expected = Text(IDS_ITEM_LIMIT);
    expected.replace(expected.find(L"%d"), 2, L"100");
    EXPECT_EQ(AnswerMessageBox("the limit", IDOK).text, expected);
    editor.Close(IDCANCEL);
}

TEST_F(UserLanguageTest, NewProfileFileIsTheSameInEveryLanguage) {
    Open();
    ApplySuccessfully();
    EXPECT_EQ(SavedElement("profname"), "Default");
    for (const char character : ReadFileText(ProfilePath())) EXPECT_LT(static_cast<unsigned char>(character), 0x80);
}

TEST_F(UserLanguageTest, KeysAndGesturesOfAnyLanguagesFileAreReadAndWrittenAlike) {
    const std::string gesture =
        "<Gesture><Key>UD</Key><Function>37</Function><Memo>memo</Memo>"
        "<EtcKey>Arbitrary key[Left Ctrl+A]</EtcKey></Gesture>";
    std::string profile = ProfileText("Games", {{"button4", "37"}, {"button4_etcKey", "Arbitrary key[Left Ctrl+V]"}});
    profile.insert(profile.rfind("</profile>"), gesture);
    WriteProfiles({ProfileText("Default"), profile});
    Open();
    ChooseProfile(1);
    EXPECT_EQ(SelectedText(sheet->PaneControl(IDC_PANE_BUTTON4)), Text(IDS_FUNCTION_ARBITRARY_KEY) + L"[Left Ctrl+V]");
    ApplySuccessfully();
    EXPECT_EQ(SavedElement("button4_etcKey", 1), "Left Ctrl+V");
    const std::string saved = ReadFileText(ProfilePath());
    EXPECT_NE(saved.find("<Key>UD</Key>"), std::string::npos);
    EXPECT_NE(saved.find("<EtcKey>Left Ctrl+A</EtcKey>"), std::string::npos);
    const auto values = ModelValues();
    EXPECT_EQ(values.at(L"BindKeyMinus_etcKey"), StoredText(L"Left Ctrl+V"));
    EXPECT_EQ(values.at(L"Gesture"), StoredList(L"UD\t37\tmemo\tLeft Ctrl+A\0\0"s));
}

}  // namespace
}  // namespace kvn::test
