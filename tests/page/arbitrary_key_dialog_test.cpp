// The dialog itself, opened without a page, with the module's resources.
#include "gestures/arbitrary_key_dialog.h"

#include <gtest/gtest.h>

#include <imm.h>

#include <cstring>
#include <future>
#include <vector>

#include "model/key_names.h"
#include "resources/resource.h"
#include "tests/support/combo_contents.h"
#include "tests/support/key_dialog.h"
#include "tests/support/module_under_test.h"
#include "tests/support/real_input.h"
#include "tests/support/replaced_import.h"
#include "tests/support/waiting.h"
#include "tests/support/window_search.h"

namespace kvn::test {
namespace {

using gestures::ShiftKeys;

using Codes = std::array<model::KeyCode, 3>;

constexpr int kInputs[] = {IDC_KEYS_INPUT1, IDC_KEYS_INPUT2, IDC_KEYS_INPUT3};

class ArbitraryKeyDialogTest : public testing::Test {
protected:
    void Open(const Codes& codes = {-2, -2, -2}, ShiftKeys shiftKeys = ShiftKeys::Offered) {
        keys.codes = codes;
        accepted = std::async(std::launch::async, [=, this] {
            const auto answer = gestures::RunArbitraryKeyDialog(module.Handle(), nullptr, {{codes}, shiftKeys});
            if (answer) keys = *answer;
            return answer.has_value();
        });
        dialog = AwaitKeyDialog();
    }

    // Presses a button, waits for the dialog's end, and returns its result.
    bool Close(int button) {
        PostMessageW(GetDlgItem(dialog, button), BM_CLICK, 0, 0);
        return AwaitEnd();
    }
    bool AwaitEnd() {
        if (accepted.wait_for(kPatience) != std::future_status::ready) {
            throw NeverHappened("the end of the arbitrary-key dialog");
        }
        return accepted.get();
    }

    void TearDown() override {
        if (accepted.valid()) PostMessageW(dialog, WM_COMMAND, IDC_KEYS_CANCEL, 0);
    }

    HWND Input(int number) const { return GetDlgItem(dialog, kInputs[number - 1]); }
    HWND Field(int number) const {
        COMBOBOXINFO info{};
        info.cbSize = sizeof info;
        GetComboBoxInfo(Input(number), &info);
        return info.hwndItem;
    }
    std::wstring Shown(int number) const { return TextOf(Input(number)); }
    void Enter(int number, const std::wstring& text) const { EnterKey(dialog, kInputs[number - 1], text); }

    // The text after a real press of the key in a field that showed "?". An ignored key leaves the "?".
    std::wstring PressInField(int number, WORD key) const {
        BringToFront(dialog);
        const HWND field = Field(number);
        PostMessageW(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(Input(number)), TRUE);
        Await("the focus in the field", [&] { return FocusOf(dialog) == field; });
        Enter(number, L"?");
        HoldKey(key);
        AwaitInputTaken(dialog);
        LetGoOfKey(key);
        AwaitInputTaken(dialog);
        return Shown(number);
    }

    // Hands a key-down to the field as its own message, without a keyboard.
    LRESULT SendKey(int number, WPARAM key, UINT message = WM_KEYDOWN) const {
        return SendMessageW(Field(number), message, key, 0);
    }

    ModuleUnderTest module;
    model::EtcKey keys;  // the dialog's input, and then its answer
    std::future<bool> accepted;
    HWND dialog = nullptr;
};

TEST_F(ArbitraryKeyDialogTest, IsTitledAndStartsInTheFirstField) {
    Open();
    EXPECT_EQ(TextOf(dialog), L"Register arbitrary key");
    EXPECT_TRUE(ComesTrue([&] { return FocusOf(dialog) == Field(1) || FocusOf(dialog) == Input(1); }));
    EXPECT_FALSE(Close(IDC_KEYS_CANCEL));
}

TEST_F(ArbitraryKeyDialogTest, ListsTheListedKeysInTheirOrder) {
    Open();
    std::vector<ComboEntry> expected;
    for (const model::KeyNameRow& row : model::kKeyNameTable) {
        if (row.listed) expected.push_back({row.name, row.code});
    }
    EXPECT_EQ(expected.front(), (ComboEntry{L"Enter key", 0}));
    for (const int number : {1, 2, 3}) EXPECT_EQ(EntriesOf(Input(number)), expected) << number;
}

TEST_F(ArbitraryKeyDialogTest, ListsNoShiftKeyWhenTheyAreExcluded) {
    Open({-2, -2, -2}, ShiftKeys::Excluded);
    for (const int number : {1, 2, 3}) {
        for (const int shift : {16, 160, 161}) EXPECT_EQ(IndexOfData(Input(number), shift), -1) << number;
        EXPECT_GE(IndexOfData(Input(number), 162), 0);
    }
}

TEST_F(ArbitraryKeyDialogTest, ListsTheShiftKeysOtherwise) {
    Open();
    for (const int shift : {16, 160, 161}) EXPECT_GE(IndexOfData(Input(1), shift), 0);
    EXPECT_EQ(PressInField(1, 'A'), L"A");
}

TEST_F(ArbitraryKeyDialogTest, ShowsTheKeysThatItIsGiven) {
    Open({162, -2, 65});
    EXPECT_EQ(SelectedData(Input(1)), 162);
    EXPECT_EQ(Shown(1), L"Left Ctrl");
    EXPECT_EQ(SelectedData(Input(2)), std::nullopt);
    EXPECT_EQ(Shown(2), L"");
    EXPECT_EQ(SelectedData(Input(3)), std::nullopt);
    EXPECT_EQ(Shown(3), L"A");
    EXPECT_TRUE(Close(IDC_KEYS_OK));
    EXPECT_EQ(keys.codes, (Codes{162, -2, 65}));
}

TEST_F(ArbitraryKeyDialogTest, ShowsNoExcludedOrUnknownKey) {
    Open({160, 7, 16}, ShiftKeys::Excluded);
    for (const int number : {1, 2, 3}) EXPECT_EQ(Shown(number), L"");
    EXPECT_TRUE(Close(IDC_KEYS_OK));
    EXPECT_EQ(keys.codes, (Codes{-2, -2, -2}));
}

TEST_F(ArbitraryKeyDialogTest, PressedKeyIsShownByItsNameAndStored) {
    Open();
    EXPECT_EQ(PressInField(2, 'A'), L"A");
    EXPECT_EQ(SelectedData(Input(2)), std::nullopt);
    EXPECT_EQ(PressInField(3, VK_F12), L"F12");
    EXPECT_TRUE(Close(IDC_KEYS_OK));
    EXPECT_EQ(keys.codes, (Codes{-2, 65, 123}));
}

TEST_F(ArbitraryKeyDialogTest, PressedKeyReplacesAndSelectsTheWholeText) {
    Open();
    PressInField(1, 'A');
    EXPECT_EQ(PressInField(1, VK_SPACE), L"Space");
    DWORD begin = 99;
    DWORD end = 0;
    SendMessageW(Field(1), EM_GETSEL, reinterpret_cast<WPARAM>(&begin), reinterpret_cast<LPARAM>(&end));
    EXPECT_EQ(begin, 0U);
    EXPECT_EQ(end, 5U);
}

TEST_F(ArbitraryKeyDialogTest, PressedModifiersAreShownWithTheirSide) {
    struct Row {
        WORD key;
        const wchar_t* name;
    };
    Open();
    for (const Row& row :
         {Row{VK_LSHIFT, L"Left Shift"}, Row{VK_RSHIFT, L"Right Shift"}, Row{VK_LCONTROL, L"Left Ctrl"},
          Row{VK_RCONTROL, L"Right Ctrl"}, Row{VK_LMENU, L"Left Alt"}, Row{VK_RMENU, L"Right Alt"}}) {
        EXPECT_EQ(PressInField(1, row.key), row.name);
    }
}

TEST_F(ArbitraryKeyDialogTest, ModifierWithoutASideIsPickedFromTheList) {
    Open();
    SelectData(Input(1), 16);
    EXPECT_EQ(Shown(1), L"Shift");
    EXPECT_TRUE(Close(IDC_KEYS_OK));
    EXPECT_EQ(keys.codes, (Codes{16, -2, -2}));
}

TEST_F(ArbitraryKeyDialogTest, ExcludedShiftKeysAreIgnored) {
    Open({-2, -2, -2}, ShiftKeys::Excluded);
    EXPECT_EQ(PressInField(1, VK_LSHIFT), L"?");
    EXPECT_EQ(PressInField(1, VK_RSHIFT), L"?");
    EXPECT_EQ(PressInField(1, VK_LCONTROL), L"Left Ctrl");
}

// Some programs send the code of one side, which no keyboard reports.
TEST_F(ArbitraryKeyDialogTest, TheSidesOfAnExcludedShiftAreIgnoredAsSuch) {
    Open({-2, -2, -2}, ShiftKeys::Excluded);
    Enter(1, L"?");
    for (const WPARAM key : {WPARAM{VK_LSHIFT}, WPARAM{VK_RSHIFT}}) {
        EXPECT_EQ(SendMessageW(Field(1), WM_KEYDOWN, key, 0), 1);
        EXPECT_EQ(Shown(1), L"?");
    }
    EXPECT_EQ(SendMessageW(Field(1), WM_KEYDOWN, VK_LCONTROL, 0), 1);
    EXPECT_EQ(Shown(1), L"Left Ctrl");
}

TEST_F(ArbitraryKeyDialogTest, IgnoredAndUnknownKeysAreSwallowed) {
    Open();
    Enter(1, L"?");
    EXPECT_EQ(SendKey(1, 0xF4), 1);
    EXPECT_EQ(Shown(1), L"?");
    EXPECT_EQ(SendKey(1, 'B', WM_SYSKEYDOWN), 1);
    EXPECT_EQ(Shown(1), L"B");
    EXPECT_EQ(SendKey(1, 7), 1);
    EXPECT_EQ(Shown(1), L"");
}

TEST_F(ArbitraryKeyDialogTest, UnknownKeyTakesTheNameOfAnotherThatIsDown) {
    Open();
    const DWORD own = GetCurrentThreadId();
    const DWORD other = GetWindowThreadProcessId(dialog, nullptr);
    AttachThreadInput(own, other, TRUE);
    BYTE state[256]{};
    state[std::size_t{'Q'}] = 0x80;
    state[VK_F1] = 0x80;
    state[std::size_t{'B'}] = 0x81;
    SetKeyboardState(state);
    SendKey(1, 7);
    EXPECT_EQ(Shown(1), L"Q");
    state[std::size_t{'Q'}] = 0x81;
    state[VK_F1] = 0;
    SetKeyboardState(state);
    SendKey(1, 7);
    EXPECT_EQ(Shown(1), L"");
    state[6] = 0x80;
    SetKeyboardState(state);
    SendKey(1, 7);
    EXPECT_EQ(Shown(1), L"") << "the other key that is down has no name either";
    const BYTE released[256]{};
    SetKeyboardState(const_cast<BYTE*>(released));
    AttachThreadInput(own, other, FALSE);
}

TEST_F(ArbitraryKeyDialogTest, CharactersAreNeverTyped) {
    Open();
    Enter(1, L"");
    EXPECT_EQ(SendMessageW(Field(1), WM_CHAR, 'x', 0), 1);
    EXPECT_EQ(Shown(1), L"");
}

TEST_F(ArbitraryKeyDialogTest, TextsThatAreNoNameStoreNoKey) {
    Open({65, 66, 67});
    Enter(1, L"left ctrl");
    Enter(2, L"A ");
    Enter(3, L"");
    EXPECT_TRUE(Close(IDC_KEYS_OK));
    EXPECT_EQ(keys.codes, (Codes{-2, -2, -2}));
}

TEST_F(ArbitraryKeyDialogTest, LongTextStoresNoKey) {
    Open();
    Enter(1, std::wstring(5000, L'A'));
    EXPECT_TRUE(Close(IDC_KEYS_OK));
    EXPECT_EQ(keys.codes, (Codes{-2, -2, -2}));
}

TEST_F(ArbitraryKeyDialogTest, PromptStoresZero) {
    Open();
    Enter(2, L"Enter key");
    EXPECT_TRUE(Close(IDC_KEYS_OK));
    EXPECT_EQ(keys.codes, (Codes{-2, 0, -2}));
}

TEST_F(ArbitraryKeyDialogTest, ClearThenOkStoresThePrompt) {
    Open({162, -2, 65});
    SendMessageW(dialog, WM_COMMAND, IDC_KEYS_CLEAR, 0);
    for (const int number : {1, 2, 3}) EXPECT_EQ(Shown(number), L"Enter key");
    EXPECT_TRUE(Close(IDC_KEYS_OK));
    EXPECT_EQ(keys.codes, (Codes{0, 0, 0}));
}

TEST_F(ArbitraryKeyDialogTest, CancelIsNotAccepted) {
    Open({162, -2, 65});
    Enter(1, L"B");
    EXPECT_FALSE(Close(IDC_KEYS_CANCEL));
    EXPECT_EQ(keys.codes, (Codes{162, -2, 65}));
}

TEST_F(ArbitraryKeyDialogTest, ClosingTheWindowCancels) {
    for (const WPARAM close : {WPARAM{SC_CLOSE}, WPARAM{SC_CLOSE | 3}}) {
        Open({65, 66, 67});
        PostMessageW(dialog, WM_SYSCOMMAND, close, 0);
        EXPECT_FALSE(AwaitEnd());
        EXPECT_EQ(keys.codes, (Codes{65, 66, 67}));
    }
}

TEST_F(ArbitraryKeyDialogTest, EscapeCancels) {
    Open({65, 66, 67});
    PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
    EXPECT_FALSE(AwaitEnd());
}

TEST_F(ArbitraryKeyDialogTest, EachOpeningStartsAfresh) {
    Open({65, -2, -2}, ShiftKeys::Excluded);
    EXPECT_FALSE(Close(IDC_KEYS_CANCEL));
    Open({-2, 160, -2}, ShiftKeys::Offered);
    EXPECT_EQ(Shown(1), L"");
    EXPECT_EQ(Shown(2), L"Left Shift");
    EXPECT_EQ(PressInField(3, VK_LSHIFT), L"Left Shift");
    EXPECT_TRUE(Close(IDC_KEYS_OK));
    EXPECT_EQ(keys.codes, (Codes{-2, 160, 160}));
}

TEST_F(ArbitraryKeyDialogTest, ItsEndHasEveryWindowPaintedAgain) {
    int everyWindow = 0;
    const ReplacedImport<"InvalidateRect", decltype(InvalidateRect)> invalidate(
        GetModuleHandleW(nullptr), [&](HWND window, const RECT* area, WINBOOL erases) -> WINBOOL {
            everyWindow += window == nullptr && area == nullptr && erases ? 1 : 0;
            return TRUE;
        });
    ASSERT_TRUE(invalidate.IsInPlace());
    Open();
    EXPECT_EQ(everyWindow, 0);
    EXPECT_FALSE(Close(IDC_KEYS_CANCEL));
    EXPECT_EQ(everyWindow, 1);
}

TEST_F(ArbitraryKeyDialogTest, SwitchesTheInputMethodOffAndOnForTheThread) {
    struct Call {
        HWND window;
        BOOL enable;
        bool operator==(const Call&) const = default;
    };
    std::vector<Call> calls;
    const ReplacedImport<"WINNLSEnableIME", BOOL(HWND, BOOL)> enable(GetModuleHandleW(nullptr),
                                                                     [&](HWND window, BOOL isEnabled) {
                                                                         calls.push_back({window, isEnabled});
                                                                         return TRUE;
                                                                     });
    ASSERT_TRUE(enable.IsInPlace());
    Open();
    EXPECT_EQ(calls, (std::vector<Call>{{nullptr, FALSE}}));
    EXPECT_FALSE(Close(IDC_KEYS_CANCEL));
    EXPECT_EQ(calls, (std::vector<Call>{{nullptr, FALSE}, {nullptr, TRUE}}));
}

// Replaces the function that separates windows from the input method editor, and records its arguments.
std::vector<HWND> partedFrom;
BOOL WINAPI PartFromContext(HWND window, HIMC context, DWORD flags) {
    EXPECT_EQ(context, nullptr);
    EXPECT_EQ(flags, static_cast<DWORD>(IACE_CHILDREN));
    partedFrom.push_back(window);
    return TRUE;
}

TEST_F(ArbitraryKeyDialogTest, FieldsAreFreeOfTheInputMethod) {
    partedFrom.clear();
    const ReplacedImport<"GetProcAddress", decltype(GetProcAddress)> find(
        GetModuleHandleW(nullptr), [](HMODULE library, LPCSTR name) {
            if (std::strcmp(name, "ImmAssociateContextEx") != 0) return GetProcAddress(library, name);
            return reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&PartFromContext));
        });
    ASSERT_TRUE(find.IsInPlace());
    Open();
    EXPECT_EQ(partedFrom, (std::vector<HWND>{Input(1), Input(2), Input(3)}));
    EXPECT_FALSE(Close(IDC_KEYS_CANCEL));
}

TEST_F(ArbitraryKeyDialogTest, OpensWithoutTheInputMethodsLibrary) {
    const ReplacedImport<"GetProcAddress", decltype(GetProcAddress)> find(
        GetModuleHandleW(nullptr), [](HMODULE library, LPCSTR name) {
            return std::strcmp(name, "ImmAssociateContextEx") == 0 ? nullptr : GetProcAddress(library, name);
        });
    Open({'A', -2, -2});
    EXPECT_EQ(Shown(1), L"A");
    EXPECT_TRUE(Close(IDC_KEYS_OK));
}

}  // namespace
}  // namespace kvn::test
