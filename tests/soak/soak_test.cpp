// A long life in one process: the page is opened, everything in it edited, applied and closed, again and again.
#include <windows.h>

#include <psapi.h>

#include <algorithm>
#include <array>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iterator>

#include "tests/support/access_violations.h"
#include "tests/support/function_codes.h"
#include "tests/support/gesture_fixture.h"
#include "tests/support/key_dialog.h"
#include "tests/support/lasting_cost.h"
#include "tests/support/module_memory.h"
#include "tests/support/platform.h"
#include "tests/support/profile_dialogs.h"
#include "tests/support/resource_use.h"
#include "tests/support/window_search.h"

namespace kvn::test {
namespace {

constexpr int kWarmUpRounds = 10;
constexpr int kRoundsByDefault = 25;
constexpr int kReports = 10;
// For what comes and goes at other times; less than one a round.
constexpr std::size_t kSlack = 3;
constexpr std::size_t kSlackOfRuntimeBlocks = 10;
constexpr std::size_t kSlackBytes = 2000;
// What the choosers cost in an opening, with what the heap needs for each block, and how unevenly a heap grows.
constexpr std::size_t kLargestCost = std::size_t{24} * 1024;
constexpr std::size_t kAllocatorSlack = std::size_t{512} * 1024;
// How often a round makes one by the name of a language or a code page.
constexpr std::size_t kLocalesOfARound = 7;

// The rounds after the warm-up; the environment may ask for more.
int Rounds() {
    const char* const asked = std::getenv("KVN_SOAK_ROUNDS");
    return asked == nullptr ? kRoundsByDefault : std::atoi(asked);
}

std::filesystem::path ServiceProgram() {
    std::array<wchar_t, MAX_PATH> program{};
    GetModuleFileNameW(nullptr, program.data(), MAX_PATH);
    return std::filesystem::path(program.data()).parent_path() / L"service" / L"KvnMouseAplDouble.exe";
}

// The input method has these windows in every thread: Windows, Wine 8 and Wine 10 one or two of them.
constexpr std::array kOfEveryThread{L"IME", L"MSCTFIME UI", L"Wine IME"};

void MakeLocale() {
    if (const _locale_t made = _create_locale(LC_CTYPE, ".1252")) _free_locale(made);
}

// Windows of the sheet's thread that the sheet has left behind.
struct WindowsLeft {
    std::size_t dropLists = 0;
    std::size_t others = 0;
};

BOOL CALLBACK CountLeft(HWND window, LPARAM counts) {
    auto& left = *reinterpret_cast<WindowsLeft*>(counts);
    const std::wstring name = ClassOf(window);
    if (name == L"ComboLBox") {
        ++left.dropLists;
    } else if (std::find(kOfEveryThread.begin(), kOfEveryThread.end(), name) == kOfEveryThread.end()) {
        ++left.others;
    }
    return TRUE;
}

class SoakTest : public GestureTest {
protected:
    void SetUp() override {
        ASSERT_TRUE(std::filesystem::exists(pictureFolder)) << "the stand-in service is not built";
        mouse.image = L"KvnSample";
        WriteProfiles({GestureProfile(kTwoGestures), GestureProfile(kTwoGestures, "second")});
    }

    void RunRound(int round) {
        // What the test itself remembers of a round.
        service.emplace();
        clicks.clear();
        Open();
        CountComboEntries();
        EditButtons(round);
        EditGestures();
        EditProfiles();
        Reset();
        ChooseProfile(round % 2);
        ApplySuccessfully();
        WindowsLeft left;
        sheet->WhenClosed([&] { EnumThreadWindows(GetCurrentThreadId(), CountLeft, reinterpret_cast<LPARAM>(&left)); });
        if (round % 2 == 0) {
            sheet->PressOk();
        } else {
            sheet->PressCancel();
        }
        sheet->AwaitClosed();
        sheet.reset();
        // The choosers' lists stay until the thread ends, for the same reason as their texts.
        EXPECT_EQ(left.dropLists, std::size(kSlotControls)) << "in round " << round;
        EXPECT_EQ(left.others, 0U) << "in round " << round;
    }

    void Report(int round, const ResourceUse& use) const {
        std::printf("after %4d rounds: %s\n", round, Describe(use).c_str());
        std::fflush(stdout);
    }

    void ExpectFlat(const ResourceUse& before, const ResourceUse& after, std::size_t rounds) const {
        // What each opening costs because it has always been so: the choosers never hear of their own end, which leaves
        // their texts and some blocks of each behind; and the dialog manager is told that the end of the page's window
        // was dealt with, which leaves one block and the dialog's font behind.
        const LastingCost ofWindows =
            CostOf([this] { ShowUnheardChoosers(std::size(kSlotControls), comboEntries); }).Of(rounds);
        EXPECT_LE(after.processHeap.blocks, before.processHeap.blocks + ofWindows.processBlocks + rounds + kSlack);
        EXPECT_LE(after.gdiObjects, before.gdiObjects + ofWindows.gdiObjects + rounds + kSlack);
        EXPECT_LE(after.privateBytes,
                  before.privateBytes + rounds * kLargestCost + kAllocatorSlack + StepOfPrivateMemory());

        // Wine 10's C library loses names whenever it makes a locale. The module's own memory has no such excuse.
        const LastingCost ofLocales = CostOf(MakeLocale).Of(rounds * kLocalesOfARound);
        EXPECT_EQ(memory.LiveBlocks(), 0U);
        EXPECT_LE(after.runtimeHeap.blocks,
                  before.runtimeHeap.blocks + ofLocales.runtimeBlocks + kSlackOfRuntimeBlocks);
        EXPECT_LE(after.runtimeHeap.bytes, before.runtimeHeap.bytes + ofLocales.runtimeBytes + kSlackBytes);
        EXPECT_LE(after.windows, before.windows);
        EXPECT_LE(after.kernelHandles, before.kernelHandles + kSlack);
        EXPECT_LE(after.userObjects, before.userObjects + kSlack);
    }

private:
    ModuleMemory memory{module.Handle()};
    std::size_t comboEntries = 0;  // of all seven choosers
    // The service that answers is in this process: the page is told that it is the stand-in, which has pictures.
    std::filesystem::path serviceProgram = ServiceProgram();
    std::filesystem::path pictureFolder = serviceProgram.parent_path() / L"MouseImage";
    ReplacedImport<"GetModuleFileNameExW", decltype(GetModuleFileNameExW)> fileName{
        module.Handle(), [this](HANDLE, HMODULE, LPWSTR buffer, DWORD size) {
            lstrcpynW(buffer, serviceProgram.c_str(), static_cast<int>(size));
            return static_cast<DWORD>(serviceProgram.native().size());
        }};

    void CountComboEntries() {
        comboEntries = 0;
        for (const int control : kSlotControls) {
            comboEntries += static_cast<std::size_t>(EntryCountOf(sheet->PaneControl(control)));
        }
    }

    void EditButtons(int round) const {
        Choose(IDC_PANE_CENTER, kGesture);
        // Functions that every slot offers.
        for (const int control : {IDC_PANE_RIGHT, IDC_PANE_BUTTON5, IDC_PANE_TILT_LEFT, IDC_PANE_TILT_RIGHT}) {
            Choose(control, 3 + (round + control) % 20);
        }
        Choose(IDC_PANE_BUTTON4, kKeys);
        const HWND keys = AwaitKeyDialog();
        EnterKey(keys, IDC_KEYS_INPUT1, round % 2 == 0 ? L"A" : L"B");
        CloseKeyDialog(keys, IDC_KEYS_OK);
        for (const int control : {IDC_PANE_HORIZONTAL_SPEED, IDC_PANE_FLYING_SPEED, IDC_PANE_REVOLUTION_SPEED}) {
            MoveTrackbar(control, 1 + round % 8);
        }
    }

    // One gesture is recorded, edited and deleted.
    void EditGestures() {
        ShowGestureTab();
        HWND editor = OpenEditor();
        Record(editor, "URDL");
        ChooseFunction(editor, 5);
        TypeMemo(editor, L"soaked");
        CloseEditor(editor, IDOK);
        const int newest = RowCount() - 1;
        editor = EditRow(newest);
        Record(editor, "LDR");
        CloseEditor(editor, IDOK);
        SelectRow(newest, false);
        SelectRow(newest);
        Command(IDC_GESTURES_DELETE);
        AnswerMessageBox("before a gesture goes", IDYES);
        sheet->Settle();
    }

    // A profile is added, renamed and copied, programs are offered to it; then all that goes again.
    void EditProfiles() const {
        PostMessageW(sheet->PageControl(IDC_PAGE_EDIT_PROFILE), BM_CLICK, 0, 0);
        const ProfileEditorDialog editor = ProfileEditorDialog::Await();
        sheet->Settle();
        Name(editor, IDC_PROFILES_ADD, L"third");
        editor.SelectProfiles({2});
        sheet->Settle();
        Name(editor, IDC_PROFILES_RENAME, L"renamed");
        editor.SelectProfiles({2});
        sheet->Settle();
        Name(editor, IDC_PROFILES_COPY, L"copied");
        editor.SelectProfiles({2});
        sheet->Settle();
        LookAtPrograms(editor);
        editor.SelectProfiles({2, 3});
        sheet->Settle();
        editor.Press(IDC_PROFILES_DELETE);
        AnswerMessageBox("before profiles go", IDYES);
        sheet->Settle();
        editor.Close(IDOK);
        sheet->Settle();
    }

    void Name(const ProfileEditorDialog& editor, int button, const std::wstring& name) const {
        editor.Press(button);
        const HWND dialog = AwaitNameDialog();
        sheet->Settle();
        EnterName(dialog, name);
        CloseNameDialog(dialog, IDOK);
        sheet->Settle();
    }

    void LookAtPrograms(const ProfileEditorDialog& editor) const {
        editor.Press(IDC_PROFILES_ADD_PROGRAM);
        const auto findChoice = [] {
            return FindTopLevelWindow([](HWND window) {
                return IsWindowVisible(window) && GetDlgItem(window, IDC_PROGRAMS_LIST) != nullptr;
            });
        };
        const HWND choice = Await("the choice of programs", findChoice);
        sheet->Settle();
        PostMessageW(GetDlgItem(choice, IDCANCEL), BM_CLICK, 0, 0);
        Await("the end of the choice", [=] { return !IsWindow(choice); });
        sheet->Settle();
    }

    void Reset() const {
        PostMessageW(sheet->PaneControl(IDC_PANE_RESET), BM_CLICK, 0, 0);
        AnswerMessageBox("before the reset", IDOK);
        sheet->Settle();
    }
};

TEST_F(SoakTest, MemoryAndObjectsStayFlat) {
    const AccessViolations violations;
    int round = 0;
    while (round < kWarmUpRounds) RunRound(round++);
    const ResourceUse before = MeasureResourceUse();
    Report(round, before);
    const int rounds = Rounds();
    const int reportEvery = std::max(rounds / kReports, 1);
    for (int done = 1; done <= rounds; ++done) {
        RunRound(round++);
        if (done % reportEvery == 0) Report(round, MeasureResourceUse());
    }
    ExpectFlat(before, MeasureResourceUse(), static_cast<std::size_t>(rounds));
    EXPECT_EQ(violations.Seen(), 0);
}

}  // namespace
}  // namespace kvn::test
