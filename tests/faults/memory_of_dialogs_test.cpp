// Memory that is refused while the page's dialogs open, are worked and closed.
#include <windows.h>

#include <commctrl.h>

#include <string>
#include <tuple>

#include "resources/resource.h"
#include "tests/faults/memory_fault_fixture.h"
#include "tests/support/combo_contents.h"
#include "tests/support/list_contents.h"
#include "tests/support/window_search.h"

namespace kvn::test {
namespace {

constexpr UINT_PTR kCaptureTimer = 221;

class MemoryOfDialogsTest : public MemoryFaultTest {
protected:
    void SetUp() override {
        MemoryFaultTest::SetUp();
        page.WhenDialogOpens(IDD_ARBITRARY_KEY, [](HWND dialog) {
            // The other keys stay as the dialog shows them.
            SetDlgItemTextW(dialog, IDC_KEYS_INPUT1, L"Left Alt");
            Press(dialog, IDC_KEYS_OK);
        });
        page.WhenDialogOpens(IDD_PROFILE_NAME, [](HWND dialog) {
            SetDlgItemTextW(dialog, IDC_PROFILE_NAME, L"a name that takes memory");
            Press(dialog, IDOK);
        });
    }

    // Works a dialog of the page with memory refused and then applies the page. What is saved is what the dialog found
    // or what it makes when nothing is refused, and nothing else.
    void WorkInEveryRound(const std::function<void()>& work, const std::function<void(bool isMade)>& check = {}) {
        Reopen();
        const std::string found = StateAfterApply().file;
        work();
        const std::string made = StateAfterApply().file;
        ASSERT_NE(made, found) << "the work changes nothing";
        Reopen();
        const int before = page.OpenedDialogs();
        SweepRefusals({[] {}, work,
                       [&] {
                           const std::string saved = StateAfterApply().file;
                           EXPECT_TRUE(saved == found || saved == made) << saved;
                           if (check) check(saved == made);
                           if (saved == made) Reopen();
                       }});
        CloseAndExpectNoLeak();
        EXPECT_GT(page.OpenedDialogs(), before);
    }

    // A new page, on the earlier profiles.
    void Reopen() {
        CloseAndExpectNoLeak();
        WriteProfilesOfEveryKind();
        page.AddAndOpen();
    }

    SavedState StateAfterApply() {
        ExpectSuccessfulApply();
        return State();
    }

    HWND Gestures() const { return GetDlgItem(page.GesturePane(), IDC_GESTURES_LIST); }

    void AddGesture() {
        page.WhenDialogOpens(IDD_EDIT_GESTURE, [](HWND dialog) {
            SetDlgItemTextW(dialog, IDC_GESTURE_STROKE, L"UDUD");
            SetDlgItemTextW(dialog, IDC_GESTURE_MEMO, L"a memo that takes memory, too");
            const HWND functions = GetDlgItem(dialog, IDC_GESTURE_FUNCTION);
            SelectData(functions, 5);
            Press(dialog, IDOK);
        });
        Press(page.GesturePane(), IDC_GESTURES_ADD);
    }
};

TEST_F(MemoryOfDialogsTest, AGestureIsAddedWholeOrNotAtAll) {
    WorkInEveryRound([&] { AddGesture(); });
}

TEST_F(MemoryOfDialogsTest, AGestureIsEditedWholeOrNotAtAll) {
    // Memo, function and keys stay as the dialog shows them.
    page.WhenDialogOpens(IDD_EDIT_GESTURE, [](HWND dialog) {
        SetDlgItemTextW(dialog, IDC_GESTURE_STROKE, L"LDRULDRULDRU");
        Press(dialog, IDOK);
    });
    WorkInEveryRound([&] {
        SelectRows(Gestures(), {1});
        Press(page.GesturePane(), IDC_GESTURES_EDIT);
    });
}

TEST_F(MemoryOfDialogsTest, KeysOfAChooserAreStoredWholeOrNotAtAll) {
    WorkInEveryRound([&] { page.Choose(IDC_PANE_RIGHT, 37); });
}

TEST_F(MemoryOfDialogsTest, AProfileIsRenamedWholeOrNotAtAll) {
    page.WhenDialogOpens(IDD_EDIT_PROFILE, [this](HWND dialog) {
        SelectRows(GetDlgItem(dialog, IDC_PROFILES_LIST), {1});
        Press(dialog, IDC_PROFILES_RENAME);
        memory.StopRefusing();
        Press(dialog, IDOK);
    });
    WorkInEveryRound([&] { Press(page.Window(), IDC_PAGE_EDIT_PROFILE); });
}

TEST_F(MemoryOfDialogsTest, AProfileIsAddedWholeOrNotAtAll) {
    page.WhenDialogOpens(IDD_EDIT_PROFILE, [this](HWND dialog) {
        Press(dialog, IDC_PROFILES_ADD);
        memory.StopRefusing();
        Press(dialog, IDOK);
    });
    WorkInEveryRound([&] { Press(page.Window(), IDC_PAGE_EDIT_PROFILE); });
}

TEST_F(MemoryOfDialogsTest, AProfileIsCopiedWholeOrNotAtAll) {
    page.WhenDialogOpens(IDD_EDIT_PROFILE, [this](HWND dialog) {
        SelectRows(GetDlgItem(dialog, IDC_PROFILES_LIST), {0});
        Press(dialog, IDC_PROFILES_COPY);
        memory.StopRefusing();
        Press(dialog, IDOK);
    });
    WorkInEveryRound([&] { Press(page.Window(), IDC_PAGE_EDIT_PROFILE); });
}

// The rounds in shares, so that no test takes long.
class MemoryOfEditorSavingTest : public MemoryOfDialogsTest, public testing::WithParamInterface<std::tuple<bool, int>> {
protected:
    static constexpr int kShares = 3;
};

INSTANTIATE_TEST_SUITE_P(InShares, MemoryOfEditorSavingTest, testing::Combine(testing::Bool(), testing::Range(0, 3)));

TEST_P(MemoryOfEditorSavingTest, ARefusedSaveLeavesTheOldFileAndSaysSoOrTheNewOne) {
    page.WhenDialogOpens(IDD_PROFILE_NAME, [](HWND dialog) {
        const bool isLong = TextOf(GetDlgItem(dialog, IDC_PROFILE_NAME)).starts_with(L"a long");
        SetDlgItemTextW(dialog, IDC_PROFILE_NAME, isLong ? L"a short name" : L"a long, long name");
        Press(dialog, IDOK);
    });
    // Refuses only while OK is carried out.
    std::function<void(HWND)> ok = [](HWND dialog) { Press(dialog, IDOK); };
    page.WhenDialogOpens(IDD_EDIT_PROFILE, [&](HWND dialog) {
        SelectRows(GetDlgItem(dialog, IDC_PROFILES_LIST), {1});
        Press(dialog, IDC_PROFILES_RENAME);
        ok(dialog);
    });
    page.AddAndOpen();
    const auto rename = [&] { Press(page.Window(), IDC_PAGE_EDIT_PROFILE); };
    rename();
    const std::string longName = StateAfterApply().file;
    rename();
    const std::string shortName = StateAfterApply().file;
    ASSERT_NE(shortName, longName);
    const bool isAlone = std::get<0>(GetParam());
    const int share = std::get<1>(GetParam());
    bool wasRefused = true;
    for (int allocation = share + 1; wasRefused && !HasFailure(); allocation += kShares) {
        SCOPED_TRACE(std::to_string(allocation) + (isAlone ? " alone was refused" : " and all later were refused"));
        const std::string before = State().file;
        bool isDone = false;
        ok = [&](HWND dialog) {
            memory.Refuse(allocation, isAlone ? allocation : 1 << 20);
            Press(dialog, IDOK);
            wasRefused = memory.StopRefusing();
            isDone = page.HasEnded(dialog);
        };
        page.ForgetMessages();
        rename();
        // What was not saved leaves the editor open or is reported; a report takes memory, too.
        const bool isSaved = State().file == (before == longName ? shortName : longName);
        EXPECT_TRUE(isSaved || State().file == before);
        EXPECT_EQ(isDone && page.Messages().empty(), isSaved);
        for (const std::wstring& text : page.Messages()) EXPECT_EQ(text, L"Settings failed.");
        StateAfterApply();
    }
    CloseAndExpectNoLeak();
}

TEST_F(MemoryOfDialogsTest, AProgramIsAddedWholeOrNotAtAll) {
    int shown = 0;
    page.WhenDialogOpens(IDD_EDIT_PROFILE, [&](HWND dialog) {
        SelectRows(GetDlgItem(dialog, IDC_PROFILES_LIST), {1});
        Press(dialog, IDC_PROFILES_ADD_PROGRAM);
        memory.StopRefusing();
        shown = RowCountOf(GetDlgItem(dialog, IDC_PROFILES_PROGRAMS));
        Press(dialog, IDOK);
    });
    page.WhenDialogOpens(IDD_SELECT_PROGRAM, [](HWND dialog) { Press(dialog, IDC_PROGRAMS_SELECT_WINDOW); });
    page.WhenDialogOpens(IDD_REGISTER_PROGRAM, [](HWND dialog) {
        SetDlgItemTextW(dialog, IDC_PROGRAM_PATH, L"C:\\another path\\to\\another program.exe");
        Press(dialog, IDOK);
    });
    // A row that nothing is behind would shift all later ones.
    const auto work = [&] {
        shown = 0;
        Press(page.Window(), IDC_PAGE_EDIT_PROFILE);
    };
    WorkInEveryRound(work, [&](bool isMade) { EXPECT_EQ(shown, isMade ? 1 : 0); });
}

TEST_F(MemoryOfDialogsTest, AStrokeAfterARefusedOneIsRecorded) {
    const auto draw = [this](HWND editor) {
        const auto tick = [=] { SendMessageW(editor, WM_TIMER, kCaptureTimer, 0); };
        SendMessageW(editor, WM_COMMAND, MAKEWPARAM(IDC_GESTURE_STROKE, STN_CLICKED), 0);
        SetCursorPos(400, 300);
        service.ReplyTo(platform::ServiceMessage::IsButtonHeld, 1);
        tick();
        for (const POINT& to : {POINT{500, 300}, POINT{600, 300}, POINT{600, 400}, POINT{600, 500}}) {
            SetCursorPos(to.x, to.y);
            tick();
        }
        service.ReplyTo(platform::ServiceMessage::IsButtonHeld, 0);
        tick();
    };
    page.WhenDialogOpens(IDD_EDIT_GESTURE, [&](HWND editor) {
        KillTimer(editor, kCaptureTimer);
        const HWND field = GetDlgItem(editor, IDC_GESTURE_STROKE);
        SweepRefusals({[=] { SetWindowTextW(field, L""); }, [&] { draw(editor); },
                       [&] {
                           draw(editor);
                           EXPECT_EQ(TextOf(field), L"RD");
                       }});
    });
    page.AddAndOpen();
    Press(page.GesturePane(), IDC_GESTURES_ADD);
    EXPECT_EQ(page.OpenedDialogs(), 1);
    ExpectSuccessfulApply();
    CloseAndExpectNoLeak();
}

TEST_F(MemoryOfDialogsTest, AListThatWasNotFilledToItsEndTakesNewGesturesInTheirPlace) {
    page.AddAndOpen();
    const HWND profiles = page.PageControl(IDC_PAGE_PROFILE);
    const auto isHalfFilled = [&] { return SelectedIndex(profiles) == 0 && RowCountOf(Gestures()) == 1; };
    for (int allocation = 1; !isHalfFilled(); ++allocation) {
        page.ChooseProfile(1);
        memory.Refuse(allocation, 1 << 20);
        page.ChooseProfile(0);
        ASSERT_TRUE(memory.StopRefusing());
    }
    AddGesture();
    EXPECT_EQ(RowCountOf(Gestures()), 3);
    ExpectSuccessfulApply();
    CloseAndExpectNoLeak();
}

}  // namespace
}  // namespace kvn::test
