// The dialog itself, opened without a page, with the module's resources.
#include "profiles/profile_name_dialog.h"

#include <gtest/gtest.h>

#include <future>
#include <optional>

#include "resources/resource.h"
#include "tests/page/surrogates.h"
#include "tests/support/message_box_watcher.h"
#include "tests/support/module_under_test.h"
#include "tests/support/profile_dialogs.h"
#include "tests/support/real_input.h"
#include "tests/support/waiting.h"
#include "tests/support/window_search.h"

namespace kvn::test {
namespace {

using profiles::ProfileNameMode;

const std::wstring kSurrogatePair{kHighSurrogate, kLowSurrogate};

class ProfileNameDialogTest : public testing::Test {
protected:
    void Open(ProfileNameMode mode, const std::wstring& name = L"") {
        answer = std::async(std::launch::async, [=, this] {
            return profiles::RunProfileNameDialog(module.Handle(), nullptr, {mode, name});
        });
        dialog = AwaitNameDialog();
        SendMessageW(dialog, WM_NULL, 0, 0);
    }
    std::optional<std::wstring> AwaitEnd() {
        if (answer.wait_for(kPatience) != std::future_status::ready) throw NeverHappened("the end of the dialog");
        return answer.get();
    }
    std::optional<std::wstring> Close(int button) {
        PostMessageW(GetDlgItem(dialog, button), BM_CLICK, 0, 0);
        return AwaitEnd();
    }
    // What comes of this text in a dialog of this mode.
    std::optional<std::wstring> Accepted(ProfileNameMode mode, const std::wstring& text,
                                         const std::wstring& before = L"") {
        Open(mode, before);
        EnterName(dialog, text);
        return Close(IDOK);
    }
    void TearDown() override {
        if (answer.valid()) PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
    }

    HWND Field() const { return GetDlgItem(dialog, IDC_PROFILE_NAME); }
    std::pair<DWORD, DWORD> Selection() const {
        DWORD begin = 99;
        DWORD end = 99;
        SendMessageW(Field(), EM_GETSEL, reinterpret_cast<WPARAM>(&begin), reinterpret_cast<LPARAM>(&end));
        return {begin, end};
    }
    void Type(const std::wstring& text) const {
        for (const wchar_t character : text) SendMessageW(Field(), WM_CHAR, character, 1);
    }

    ModuleUnderTest module;
    std::future<std::optional<std::wstring>> answer;
    HWND dialog = nullptr;
};

TEST_F(ProfileNameDialogTest, TitleTellsTheMode) {
    const std::vector<std::pair<ProfileNameMode, std::wstring>> rows = {
        {ProfileNameMode::Add, L"Add profile"},
        {ProfileNameMode::Rename, L"Change profile name"},
        {ProfileNameMode::Copy, L"Copy profile"}};
    for (const auto& [mode, title] : rows) {
        Open(mode);
        EXPECT_EQ(TextOf(dialog), title);
        EXPECT_FALSE(Close(IDCANCEL));
    }
}

TEST_F(ProfileNameDialogTest, OnlyRenamingAndCopyingStartWithTheName) {
    for (const auto mode : {ProfileNameMode::Rename, ProfileNameMode::Copy}) {
        Open(mode, L"Drawing");
        EXPECT_EQ(TextOf(Field()), L"Drawing");
        EXPECT_EQ(Selection(), (std::pair<DWORD, DWORD>{0, 7}));
        EXPECT_FALSE(Close(IDCANCEL));
    }
    Open(ProfileNameMode::Add, L"Drawing");
    EXPECT_EQ(TextOf(Field()), L"");
    EXPECT_FALSE(Close(IDCANCEL));
}

TEST_F(ProfileNameDialogTest, FieldHasTheFocus) {
    for (const auto mode : {ProfileNameMode::Add, ProfileNameMode::Rename}) {
        Open(mode, L"Drawing");
        EXPECT_TRUE(ComesTrue([&] { return FocusOf(dialog) == Field(); }));
        EXPECT_FALSE(Close(IDCANCEL));
    }
}

TEST_F(ProfileNameDialogTest, TypingReplacesTheOldName) {
    Open(ProfileNameMode::Rename, L"Drawing");
    Type(L"Games");
    EXPECT_EQ(TextOf(Field()), L"Games");
    EXPECT_EQ(Close(IDOK), L"Games");
}

TEST_F(ProfileNameDialogTest, OkStoresTheTextAsItStands) {
    EXPECT_EQ(Accepted(ProfileNameMode::Add, L" Two words "), L" Two words ");
    EXPECT_EQ(Accepted(ProfileNameMode::Rename, L"Other", L"Drawing"), L"Other");
    EXPECT_EQ(Accepted(ProfileNameMode::Copy, L"Other", L"Drawing"), L"Other");
    EXPECT_EQ(Accepted(ProfileNameMode::Add, L"\x304B\x306A"), L"\x304B\x306A");
}

TEST_F(ProfileNameDialogTest, EmptyTextIsAccepted) {
    for (const auto mode : {ProfileNameMode::Add, ProfileNameMode::Rename, ProfileNameMode::Copy}) {
        EXPECT_EQ(Accepted(mode, L"", L"Drawing"), L"");
    }
}

TEST_F(ProfileNameDialogTest, LongTextIsCutTo254Characters) {
    const std::wstring text = std::wstring(250, L'a') + L"bcdefgh" + std::wstring(43, L'i');
    ASSERT_EQ(text.size(), 300U);
    EXPECT_EQ(Accepted(ProfileNameMode::Add, text), text.substr(0, 254));
    EXPECT_EQ(Accepted(ProfileNameMode::Add, text.substr(0, 255)), text.substr(0, 254));
    EXPECT_EQ(Accepted(ProfileNameMode::Add, text.substr(0, 254)), text.substr(0, 254));
    EXPECT_EQ(Accepted(ProfileNameMode::Add, text.substr(0, 253)), text.substr(0, 253));
}

TEST_F(ProfileNameDialogTest, LongNameIsOfferedWholeAndCutAfterwards) {
    const std::wstring name(300, L'n');
    Open(ProfileNameMode::Rename, name);
    EXPECT_EQ(TextOf(Field()), name);
    EXPECT_EQ(Close(IDOK), name.substr(0, 254));
}

TEST_F(ProfileNameDialogTest, SurrogatePairsAreNeverCutInTwo) {
    const std::wstring fits = std::wstring(252, L'a') + kSurrogatePair;
    EXPECT_EQ(Accepted(ProfileNameMode::Add, fits), fits);
    EXPECT_EQ(Accepted(ProfileNameMode::Add, fits + L"more"), fits);
    const std::wstring fitsNot = std::wstring(253, L'a');
    EXPECT_EQ(Accepted(ProfileNameMode::Add, fitsNot + kSurrogatePair), fitsNot);
    EXPECT_EQ(Accepted(ProfileNameMode::Add, fitsNot + kSurrogatePair + L"more"), fitsNot);
}

TEST_F(ProfileNameDialogTest, TypingStopsAt254Characters) {
    Open(ProfileNameMode::Add);
    Type(std::wstring(260, L'a'));
    EXPECT_EQ(TextOf(Field()), std::wstring(254, L'a'));
    EXPECT_EQ(Close(IDOK), std::wstring(254, L'a'));
}

TEST_F(ProfileNameDialogTest, PairThatTheLimitOfTypingCutInTwoIsLeftOut) {
    Open(ProfileNameMode::Add);
    Type(std::wstring(253, L'a') + kSurrogatePair);
    EXPECT_EQ(Close(IDOK), std::wstring(253, L'a'));
}

TEST_F(ProfileNameDialogTest, CancelAnswersNothing) {
    for (const auto mode : {ProfileNameMode::Add, ProfileNameMode::Rename, ProfileNameMode::Copy}) {
        Open(mode, L"Drawing");
        EnterName(dialog, L"Other");
        EXPECT_EQ(Close(IDCANCEL), std::nullopt);
    }
}

TEST_F(ProfileNameDialogTest, ClosingTheWindowCancels) {
    Open(ProfileNameMode::Rename, L"Drawing");
    EnterName(dialog, L"Other");
    PostMessageW(dialog, WM_SYSCOMMAND, SC_CLOSE, 0);
    EXPECT_EQ(AwaitEnd(), std::nullopt);
}

TEST_F(ProfileNameDialogTest, EnterAcceptsAndEscapeCancels) {
    Open(ProfileNameMode::Rename, L"Drawing");
    BringToFront(dialog);
    Type(L"Games");
    PressKey(VK_RETURN);
    EXPECT_EQ(AwaitEnd(), L"Games");
    Open(ProfileNameMode::Rename, L"Drawing");
    BringToFront(dialog);
    PressKey(VK_ESCAPE);
    EXPECT_FALSE(AwaitEnd());
}

TEST_F(ProfileNameDialogTest, OtherCommandsDoNothing) {
    Open(ProfileNameMode::Add);
    for (const WPARAM command : {WPARAM{0}, WPARAM{3}, WPARAM{IDC_PROFILE_NAME}, WPARAM{0xFFFF}}) {
        EXPECT_EQ(SendMessageW(dialog, WM_COMMAND, command, 0), 0);
    }
    EXPECT_TRUE(IsWindow(dialog));
    EXPECT_EQ(OpenMessageBox(), nullptr);
    EXPECT_TRUE(Close(IDOK));
}

}  // namespace
}  // namespace kvn::test
