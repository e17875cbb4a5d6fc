// Adding programs to a profile: the editor itself, opened without a page, with the choice of programs replaced.
#include <gtest/gtest.h>

#include <windows.h>

#include <shellapi.h>

#include <future>
#include <utility>

#include "model/settings_store.h"
#include "profiles/profile_editor.h"
#include "resources/resource.h"
#include "tests/support/page_fixture.h"
#include "tests/support/profile_dialogs.h"

namespace kvn::test {
namespace {

using model::ApplicationEntry;
using Entries = std::vector<ApplicationEntry>;
using Paths = std::vector<std::wstring>;

constexpr wchar_t kRegistered[] = L"Already registered.";
constexpr wchar_t kUsedElsewhere[] = L"Being used by another profile.";
constexpr wchar_t kLimitReached[] = L"It is not possible to register more than 100 items.";

ApplicationEntry Program(const std::wstring& name) {
    return {name, L"C:\\" + name + L".exe"};
}

Entries Programs(int first, int count) {
    Entries entries;
    for (int i = first; i < first + count; ++i) entries.push_back(Program(L"p" + std::to_wstring(i)));
    return entries;
}

class AddingProgramsTest : public testing::Test, private profiles::IProfileDisplay {
protected:
    void AddProfile(const std::wstring& name, const Entries& programs = {}) {
        model::ProfileRecord profile = model::DefaultProfileRecord();
        profile.name = name;
        profile.settings.applications = programs;
        settings.profiles.push_back(profile);
    }
    // Opens the editor and selects a profile. The first argument is the user's later choice.
    void Open(const Entries& chosen, int profile, bool isAccepted = true) {
        context.choosePrograms = [=, this](HINSTANCE, HWND owner) {
            choices += 1;
            chooserOwner = owner;
            return isAccepted ? std::optional(chosen) : std::nullopt;
        };
        settings.profileFilePath = user.SettingsFolder() + L"\\profiles.xml";
        WriteFileText(settings.profileFilePath, "");
        EXPECT_TRUE(model::SaveProfiles(settings));
        fileBefore = ReadFileText(settings.profileFilePath);
        ended = std::async(std::launch::async, [this] { RunProfileEditor(context); });
        editor = ProfileEditorDialog::Await();
        editor->SelectProfiles({profile});
    }
    void PressAdd() const { editor->Press(IDC_PROFILES_ADD_PROGRAM); }
    void ExpectMessage(const std::wstring& text) const {
        const MessageBoxSeen seen = AnswerMessageBox("about a program", IDOK);
        ExpectWarning(seen, text);
        EXPECT_EQ(seen.owner, editor->Window());
    }
    void AwaitRows(std::size_t count) const {
        EXPECT_TRUE(ComesTrue([&] { return editor->Programs().size() == count; })) << editor->Programs().size();
    }
    // The dialog ignores commands while another one runs, so this waits until all have ended.
    void Close(int button) {
        SendMessageW(editor->Window(), WM_NULL, 0, 0);
        EXPECT_EQ(OpenMessageBox(), nullptr);
        editor->Close(button);
        ASSERT_EQ(ended.wait_for(kPatience), std::future_status::ready);
        ended.get();
    }
    void TearDown() override {
        if (ended.valid()) PostMessageW(editor->Window(), WM_COMMAND, IDCANCEL, 0);
    }
    Paths PathsOf(std::size_t profile) const {
        Paths paths;
        for (const ApplicationEntry& entry : settings.profiles[profile].settings.applications) {
            paths.push_back(entry.path);
        }
        return paths;
    }
    std::string File() const { return ReadFileText(settings.profileFilePath); }

    void ShowProfiles() override { ++shownProfiles; }
    void ShowSelectedProfile() override { ++shownSelections; }

    SandboxedUser user;
    ModuleUnderTest module;
    platform::MessageBoxes boxes{module.Handle(), IDS_CAPTION};
    model::MouseSettings settings;
    profiles::ProfileEditorContext context{module.Handle(), nullptr, settings, boxes, *this};
    std::optional<ProfileEditorDialog> editor;
    std::string fileBefore;
    std::atomic<int> choices = 0;
    std::atomic<HWND> chooserOwner = nullptr;
    int shownProfiles = 0;
    int shownSelections = 0;
    std::future<void> ended;  // waits for the thread before the members above are destroyed
};

TEST_F(AddingProgramsTest, AppendsThemInTheirOrderWithNameIconAndPath) {
    AddProfile(L"Default");
    AddProfile(L"a", {Program(L"old")});
    const Entries chosen{{L"Notes", L"C:\\windows\\notepad.exe"}, {L"Ape", L"C:\\nowhere\\ape.exe"}};
    Open(chosen, 1);
    PressAdd();
    AwaitRows(3);
    EXPECT_TRUE((std::vector<ProgramRow>{{L"old", L"C:\\old.exe"},
                                         {L"Notes", L"C:\\windows\\notepad.exe", 0},
                                         {L"Ape", L"C:\\nowhere\\ape.exe"}}) == editor->Programs());
    EXPECT_EQ(chooserOwner, editor->Window());
    Close(IDOK);
    EXPECT_EQ(settings.profiles[1].settings.applications, (Entries{Program(L"old"), chosen[0], chosen[1]}));
    EXPECT_TRUE(settings.profiles[0].settings.applications.empty());
    EXPECT_EQ(choices, 1);
}

TEST_F(AddingProgramsTest, EndsWhenTheShellPumpsMessagesThatSelectAnotherProfile) {
    AddProfile(L"Default");
    AddProfile(L"a", {Program(L"own")});
    bool isNested = false;
    const ReplacedImport<"SHGetFileInfoW", decltype(SHGetFileInfoW)> lookup(
        GetModuleHandleW(nullptr), [&](const wchar_t* path, DWORD, SHFILEINFOW*, UINT, UINT) -> DWORD_PTR {
            if (path == Program(L"x").path && !std::exchange(isNested, true)) editor->SelectProfiles({1});
            return 0;
        });
    ASSERT_TRUE(lookup.IsInPlace());
    Open({Program(L"x"), Program(L"y")}, 0);
    PressAdd();
    AwaitRows(1);
    Close(IDOK);
    EXPECT_TRUE(isNested);
    EXPECT_EQ(PathsOf(0), (Paths{L"C:\\x.exe"}));
    EXPECT_EQ(PathsOf(1), (Paths{L"C:\\own.exe"}));
}

TEST_F(AddingProgramsTest, AloneIsKeptInMemoryAndNotWritten) {
    AddProfile(L"Default");
    Open({Program(L"x")}, 0);
    PressAdd();
    AwaitRows(1);
    Close(IDOK);
    EXPECT_EQ(PathsOf(0), (Paths{L"C:\\x.exe"}));
    EXPECT_EQ(File(), fileBefore);
    EXPECT_EQ(shownProfiles, 1);
    EXPECT_EQ(shownSelections, 0);
    EXPECT_TRUE(model::SaveProfiles(settings)) << "the next write includes them";
    EXPECT_NE(File().find("C:\\x.exe"), std::string::npos);
}

TEST_F(AddingProgramsTest, IsWrittenTogetherWithAnotherChange) {
    AddProfile(L"Default", {Program(L"old")});
    Open({Program(L"x")}, 0);
    PressAdd();
    AwaitRows(2);
    editor->SelectPrograms({0});
    editor->Press(IDC_PROFILES_DELETE_PROGRAM);
    AnswerMessageBox("before the deletion", IDYES);
    AwaitRows(1);
    Close(IDOK);
    EXPECT_NE(File().find("C:\\x.exe"), std::string::npos);
    EXPECT_EQ(File().find("C:\\old.exe"), std::string::npos);
}

TEST_F(AddingProgramsTest, IsDroppedByCancel) {
    AddProfile(L"Default");
    Open({Program(L"x")}, 0);
    PressAdd();
    AwaitRows(1);
    Close(IDCANCEL);
    EXPECT_TRUE(PathsOf(0).empty());
    EXPECT_EQ(shownProfiles, 0);
}

TEST_F(AddingProgramsTest, CancelledChoiceAddsNothing) {
    AddProfile(L"Default");
    Open({Program(L"x")}, 0, false);
    PressAdd();
    EXPECT_TRUE(ComesTrue([&] { return choices == 1; }));
    Close(IDOK);
    EXPECT_TRUE(PathsOf(0).empty());
}

TEST_F(AddingProgramsTest, AcceptedEmptyChoiceAddsNothing) {
    AddProfile(L"Default");
    Open({}, 0);
    PressAdd();
    EXPECT_TRUE(ComesTrue([&] { return choices == 1; }));
    Close(IDOK);
    EXPECT_TRUE(PathsOf(0).empty());
}

TEST_F(AddingProgramsTest, WhatTheProfileHasOrAnotherUsesIsSkippedAndTheRestAdded) {
    AddProfile(L"Default", {Program(L"used")});
    AddProfile(L"a", {Program(L"own")});
    AddProfile(L"b", {Program(L"later")});
    Open({Program(L"first"), Program(L"own"), Program(L"used"), Program(L"later"), Program(L"last")}, 1);
    PressAdd();
    ExpectMessage(kRegistered);
    ExpectMessage(kUsedElsewhere);
    ExpectMessage(kUsedElsewhere);
    AwaitRows(3);
    Close(IDOK);
    EXPECT_EQ(PathsOf(1), (Paths{L"C:\\own.exe", L"C:\\first.exe", L"C:\\last.exe"}));
    EXPECT_EQ(PathsOf(0), (Paths{L"C:\\used.exe"}));
}

TEST_F(AddingProgramsTest, SameProgramTwiceInOneChoiceIsAddedOnce) {
    AddProfile(L"Default");
    Open({Program(L"x"), {L"other name", L"C:\\x.exe"}}, 0);
    PressAdd();
    ExpectMessage(kRegistered);
    AwaitRows(1);
    Close(IDOK);
    EXPECT_EQ(PathsOf(0), (Paths{L"C:\\x.exe"}));
}

TEST_F(AddingProgramsTest, PathsThatDifferOnlyInCaseAreOneProgram) {
    AddProfile(L"Default", {{L"x", L"C:\\Program Files\\\x00C4hre\\X.EXE"}});
    AddProfile(L"a", {{L"y", L"C:\\Y.exe"}});
    Open({{L"x", L"c:\\program files\\\x00E4hre\\x.exe"}, {L"y", L"c:\\y.EXE"}}, 1);
    PressAdd();
    ExpectMessage(kUsedElsewhere);
    ExpectMessage(kRegistered);
    Close(IDOK);
    EXPECT_EQ(PathsOf(1), (Paths{L"C:\\Y.exe"}));
}

TEST_F(AddingProgramsTest, SimilarPathsAreDifferentPrograms) {
    AddProfile(L"Default", {Program(L"x")});
    AddProfile(L"a");
    Open({{L"x", L"C:\\x.exe "}, {L"x", L"D:\\x.exe"}, {L"x", L"C:/x.exe"}, {L"x", L"x.exe"}}, 1);
    PressAdd();
    AwaitRows(4);
    Close(IDOK);
}

TEST_F(AddingProgramsTest, FirstProfileThatHasItDecides) {
    AddProfile(L"Default");
    AddProfile(L"a", {Program(L"x")});
    AddProfile(L"b", {Program(L"x")});
    Open({Program(L"x")}, 2);
    PressAdd();
    ExpectMessage(kUsedElsewhere);
    Close(IDCANCEL);
    Open({Program(L"x")}, 1);
    PressAdd();
    ExpectMessage(kRegistered);
    Close(IDCANCEL);
}

TEST_F(AddingProgramsTest, ProgramOfADeletedProfileIsFreeAgain) {
    AddProfile(L"Default");
    AddProfile(L"a", {Program(L"x")});
    Open({Program(L"x")}, 1);
    editor->Press(IDC_PROFILES_DELETE);
    AnswerMessageBox("before the deletion", IDYES);
    EXPECT_TRUE(ComesTrue([&] { return editor->Profiles().size() == 1; }));
    SendMessageW(editor->Window(), WM_NULL, 0, 0);
    editor->SelectProfiles({0});
    PressAdd();
    AwaitRows(1);
    Close(IDOK);
    EXPECT_EQ(PathsOf(0), (Paths{L"C:\\x.exe"}));
    EXPECT_EQ(shownSelections, 1);
}

TEST_F(AddingProgramsTest, LimitEndsTheWholeAddition) {
    AddProfile(L"Default", Programs(0, 98));
    Open(Programs(200, 5), 0);
    PressAdd();
    ExpectMessage(kLimitReached);
    AwaitRows(100);
    Close(IDOK);
    const Paths paths = PathsOf(0);
    ASSERT_EQ(paths.size(), 100U);
    EXPECT_EQ(paths.back(), L"C:\\p201.exe");
}

TEST_F(AddingProgramsTest, ProgramInUseIsReportedBeforeTheLimit) {
    AddProfile(L"Default", Programs(0, 99));
    AddProfile(L"a", {Program(L"used")});
    Open({Program(L"new"), Program(L"used"), Program(L"p3"), Program(L"beyond"), Program(L"used")}, 0);
    PressAdd();
    ExpectMessage(kUsedElsewhere);
    ExpectMessage(kRegistered);
    ExpectMessage(kLimitReached);
    AwaitRows(100);
    Close(IDOK);
    EXPECT_EQ(PathsOf(0).back(), L"C:\\new.exe");
}

TEST_F(AddingProgramsTest, FullListAsksForNoChoice) {
    AddProfile(L"Default", Programs(0, 100));
    Open({Program(L"new")}, 0);
    PressAdd();
    ExpectMessage(kLimitReached);
    Close(IDOK);
    EXPECT_EQ(choices, 0);
    EXPECT_EQ(PathsOf(0).size(), 100U);
}

TEST_F(AddingProgramsTest, ChoiceThatFailsLeavesTheEditorOpen) {
    AddProfile(L"Default");
    Open({}, 0);
    context.choosePrograms = [this](HINSTANCE, HWND) -> std::optional<Entries> {
        choices += 1;
        throw std::bad_alloc();
    };
    PressAdd();
    EXPECT_TRUE(ComesTrue([&] { return choices == 1; }));
    Close(IDOK);
    EXPECT_EQ(shownProfiles, 1);
}

}  // namespace
}  // namespace kvn::test
