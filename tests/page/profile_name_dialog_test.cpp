// The dialog itself, opened without a page, with the module's resources.
#include "profiles/profile_name_dialog.h"

#include <gtest/gtest.h>

#include <future>

#include "resources/resource.h"
#include "tests/support/message_box_watcher.h"
#include "tests/support/module_under_test.h"
#include "tests/support/profile_dialogs.h"
#include "tests/support/real_input.h"
#include "tests/support/waiting.h"
#include "tests/support/window_search.h"

namespace kvn::test {
namespace {

using profiles::ProfileNameMode;

constexpr wchar_t kHighSurrogate = 0xD83D;
constexpr wchar_t kLowSurrogate = 0xDE00;
const std::wstring kSurrogatePair{kHighSurrogate, kLowSurrogate};

class ProfileNameDialogTest : public testing::Test {
protected:
    void Open(ProfileNameMode mode, const std::wstring& name = L"") {
        request = {name, mode};
        accepted =
            std::async(std::launch::async, [this] { return RunProfileNameDialog(module.Handle(), nullptr, request); });
        dialog = AwaitNameDialog();
        SendMessageW(dialog, WM_NULL, 0, 0);
    }
    bool AwaitEnd() {
        if (accepted.wait_for(kPatience) != std::future_status::ready) throw NeverHappened("the end of the dialog");
        return accepted.get();
    }
    bool Close(int button) {
        PostMessageW(GetDlgItem(dialog, button), BM_CLICK, 0, 0);
        return AwaitEnd();
    }
    // What comes of this text in a dialog of this mode.
    std::wstring Accepted(ProfileNameMode mode, const std::wstring& text, const std::wstring& before = L"") {
        Open(mode, before);
        EnterName(dialog, text);
        EXPECT_TRUE(Close(IDOK));
        return request.name;
    }
    void TearDown() override {
        if (accepted.valid()) PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
    }

    HWND Field() const { return GetDlgItem(dialog, IDC_PROFILE_NAME); }
    std::pair<DWORD, DWORD> Selection() const {
        DWORD begin = 99;
        DWORD end = 99;
        SendMessageW(Field(), EM_GETSEL, reinterpret_cast<WPARAM>(&begin), reinterpret_cast<LPARAM>(&end));
        return {begin, end};
    }
    HWND Focus() const {
        GUITHREADINFO info{};
        info.cbSize = sizeof info;
        GetGUIThreadInfo(GetWindowThreadProcessId(dialog, nullptr), &info);
        return info.hwndFocus;
    }
    void Type(const std::wstring& text) const {
        for (const wchar_t character : text) SendMessageW(Field(), WM_CHAR, character, 1);
    }

    ModuleUnderTest module;
    profiles::ProfileNameRequest request;
    std::future<bool> accepted;
    HWND dialog = nullptr;
};

TEST_F(ProfileNameDialogTest, TitleTellsTheMode) {
    const std::vector<std::pair<std::uint32_t, std::wstring>> rows = {
        {0, L"Add profile"},  {1, L"Change profile name"}, {2, L"Delete profile"},
        {3, L"Copy profile"}, {4, L"Add new profile"},     {0xFFFFFFFF, L"Add new profile"}};
    for (const auto& [mode, title] : rows) {
        Open(static_cast<ProfileNameMode>(mode));
        EXPECT_EQ(title, TextOf(dialog)) << mode;
        EXPECT_FALSE(Close(IDCANCEL));
    }
}

TEST_F(ProfileNameDialogTest, OnlyRenamingAndCopyingStartWithTheName) {
    for (const auto mode : {ProfileNameMode::Rename, ProfileNameMode::Copy}) {
        Open(mode, L"Drawing");
        EXPECT_EQ(L"Drawing", TextOf(Field()));
        EXPECT_EQ((std::pair<DWORD, DWORD>{0, 7}), Selection());
        EXPECT_FALSE(Close(IDCANCEL));
    }
    for (const auto mode : {ProfileNameMode::Add, ProfileNameMode::Delete, static_cast<ProfileNameMode>(4)}) {
        Open(mode, L"Drawing");
        EXPECT_EQ(L"", TextOf(Field()));
        EXPECT_FALSE(Close(IDCANCEL));
    }
}

TEST_F(ProfileNameDialogTest, FieldHasTheFocus) {
    for (const auto mode : {ProfileNameMode::Add, ProfileNameMode::Rename}) {
        Open(mode, L"Drawing");
        EXPECT_TRUE(ComesTrue([&] { return Focus() == Field(); }));
        EXPECT_FALSE(Close(IDCANCEL));
    }
}

TEST_F(ProfileNameDialogTest, TypingReplacesTheOldName) {
    Open(ProfileNameMode::Rename, L"Drawing");
    Type(L"Games");
    EXPECT_EQ(L"Games", TextOf(Field()));
    EXPECT_TRUE(Close(IDOK));
    EXPECT_EQ(L"Games", request.name);
}

TEST_F(ProfileNameDialogTest, OkStoresTheTextAsItStands) {
    EXPECT_EQ(L" Two words ", Accepted(ProfileNameMode::Add, L" Two words "));
    EXPECT_EQ(L"Other", Accepted(ProfileNameMode::Rename, L"Other", L"Drawing"));
    EXPECT_EQ(L"Other", Accepted(ProfileNameMode::Copy, L"Other", L"Drawing"));
    EXPECT_EQ(L"\x304B\x306A", Accepted(ProfileNameMode::Add, L"\x304B\x306A"));
}

TEST_F(ProfileNameDialogTest, EmptyTextIsAccepted) {
    for (const auto mode : {ProfileNameMode::Add, ProfileNameMode::Rename, ProfileNameMode::Copy}) {
        EXPECT_EQ(L"", Accepted(mode, L"", L"Drawing"));
    }
}

TEST_F(ProfileNameDialogTest, OtherModesStoreNothing) {
    for (const auto mode : {ProfileNameMode::Delete, static_cast<ProfileNameMode>(4)}) {
        EXPECT_EQ(L"Drawing", Accepted(mode, L"Other", L"Drawing"));
    }
}

TEST_F(ProfileNameDialogTest, LongTextIsCutTo254Characters) {
    const std::wstring text = std::wstring(250, L'a') + L"bcdefgh" + std::wstring(43, L'i');
    ASSERT_EQ(300U, text.size());
    EXPECT_EQ(text.substr(0, 254), Accepted(ProfileNameMode::Add, text));
    EXPECT_EQ(text.substr(0, 254), Accepted(ProfileNameMode::Add, text.substr(0, 255)));
    EXPECT_EQ(text.substr(0, 254), Accepted(ProfileNameMode::Add, text.substr(0, 254)));
    EXPECT_EQ(text.substr(0, 253), Accepted(ProfileNameMode::Add, text.substr(0, 253)));
}

TEST_F(ProfileNameDialogTest, LongNameIsOfferedWholeAndCutAfterwards) {
    const std::wstring name(300, L'n');
    Open(ProfileNameMode::Rename, name);
    EXPECT_EQ(name, TextOf(Field()));
    EXPECT_TRUE(Close(IDOK));
    EXPECT_EQ(name.substr(0, 254), request.name);
}

TEST_F(ProfileNameDialogTest, SurrogatePairsAreNeverCutInTwo) {
    const std::wstring fits = std::wstring(252, L'a') + kSurrogatePair;
    EXPECT_EQ(fits, Accepted(ProfileNameMode::Add, fits));
    EXPECT_EQ(fits, Accepted(ProfileNameMode::Add, fits + L"more"));
    const std::wstring fitsNot = std::wstring(253, L'a');
    EXPECT_EQ(fitsNot, Accepted(ProfileNameMode::Add, fitsNot + kSurrogatePair));
    EXPECT_EQ(fitsNot, Accepted(ProfileNameMode::Add, fitsNot + kSurrogatePair + L"more"));
}

TEST_F(ProfileNameDialogTest, TypingStopsAt254Characters) {
    Open(ProfileNameMode::Add);
    Type(std::wstring(260, L'a'));
    EXPECT_EQ(std::wstring(254, L'a'), TextOf(Field()));
    EXPECT_TRUE(Close(IDOK));
    EXPECT_EQ(std::wstring(254, L'a'), request.name);
}

TEST_F(ProfileNameDialogTest, PairThatTheLimitOfTypingCutInTwoIsLeftOut) {
    Open(ProfileNameMode::Add);
    Type(std::wstring(253, L'a') + kSurrogatePair);
    EXPECT_TRUE(Close(IDOK));
    EXPECT_EQ(std::wstring(253, L'a'), request.name);
}

TEST_F(ProfileNameDialogTest, CancelLeavesTheRequestUntouched) {
    for (const auto mode : {ProfileNameMode::Add, ProfileNameMode::Rename, ProfileNameMode::Copy}) {
        Open(mode, L"Drawing");
        EnterName(dialog, L"Other");
        EXPECT_FALSE(Close(IDCANCEL));
        EXPECT_EQ(L"Drawing", request.name);
        EXPECT_EQ(mode, request.mode);
    }
}

TEST_F(ProfileNameDialogTest, ClosingTheWindowCancels) {
    Open(ProfileNameMode::Rename, L"Drawing");
    EnterName(dialog, L"Other");
    PostMessageW(dialog, WM_SYSCOMMAND, SC_CLOSE, 0);
    EXPECT_FALSE(AwaitEnd());
    EXPECT_EQ(L"Drawing", request.name);
}

TEST_F(ProfileNameDialogTest, EnterAcceptsAndEscapeCancels) {
    Open(ProfileNameMode::Rename, L"Drawing");
    BringToFront(dialog);
    Type(L"Games");
    PressKey(VK_RETURN);
    EXPECT_TRUE(AwaitEnd());
    EXPECT_EQ(L"Games", request.name);
    Open(ProfileNameMode::Rename, L"Drawing");
    BringToFront(dialog);
    PressKey(VK_ESCAPE);
    EXPECT_FALSE(AwaitEnd());
}

TEST_F(ProfileNameDialogTest, OtherCommandsDoNothing) {
    Open(ProfileNameMode::Add);
    for (const WPARAM command : {WPARAM{0}, WPARAM{3}, WPARAM{IDC_PROFILE_NAME}, WPARAM{0xFFFF}}) {
        EXPECT_EQ(0, SendMessageW(dialog, WM_COMMAND, command, 0));
    }
    EXPECT_TRUE(IsWindow(dialog));
    EXPECT_EQ(nullptr, OpenMessageBox());
    EXPECT_TRUE(Close(IDOK));
}

}  // namespace
}  // namespace kvn::test
