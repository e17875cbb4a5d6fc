// The fixture of the tests of gestures: an open gesture pane, its editor, and a hand that draws.
#pragma once

#include <string>
#include <vector>

#include "tests/support/list_contents.h"
#include "tests/support/page_fixture.h"

namespace kvn::test {

struct GestureText {
    std::string stroke;
    int function;
    std::string memo;
    std::string keys;
};

inline const std::vector<GestureText> kTwoGestures{{"U", 3, "one page back", ""}, {"RD", 37, "paste", "Left Ctrl+V"}};

// A profile whose wheel button has the gesture function, with these gestures.
std::string GestureProfile(const std::vector<GestureText>& gestures, const std::string& name = "Default");

// This number of gestures, all different.
std::vector<GestureText> ManyGestures(int count);

inline constexpr wchar_t kEditorTitle[] = L"Edit gesture";
inline constexpr UINT_PTR kCaptureTimer = 221;

using RowTexts = std::vector<std::wstring>;  // the three columns

class GestureTest : public PageTest {
protected:
    // Opens the page with one profile of these gestures.
    void OpenWith(const std::vector<GestureText>& gestures);

    HWND List() const { return GetDlgItem(sheet->GesturePane(), IDC_GESTURES_LIST); }
    HWND PaneButton(int control) const { return GetDlgItem(sheet->GesturePane(), control); }
    bool IsButtonEnabled(int control) const { return IsWindowEnabled(PaneButton(control)) != FALSE; }

    int RowCount() const { return RowCountOf(List()); }
    RowTexts Row(int row) const { return TextsOfRow(List(), row, 3); }
    void SelectRow(int row, bool select = true) const { test::SelectRow(List(), row, select); }

    // Sends the button's command, even if the button is disabled.
    void Command(int control) const;
    // Brings the gesture pane to the front.
    void ShowGestureTab() const;
    // The list of gestures that was applied.
    StoredValue StoredGestures() const { return ModelValues().at(L"Gesture"); }

    // Opens the editor by a button of the pane, and stops its timer, so that the test makes every tick itself.
    HWND OpenEditor(int control = IDC_GESTURES_ADD) const;
    HWND OpenEditorWithTimer(int control = IDC_GESTURES_ADD) const;
    HWND EditRow(int row) const;
    // Presses a button of the editor and waits until the editor has closed.
    void CloseEditor(HWND editor, int button) const;
    // Presses OK and expects that the editor stays.
    void ExpectOkIgnored(HWND editor) const;
    HWND OpenEditorWindow() const;

    std::wstring Stroke(HWND editor) const;
    void ClickStroke(HWND editor) const;
    void ChooseFunction(HWND editor, int function) const;
    static void TypeMemo(HWND editor, const std::wstring& memo);

    static void Tick(HWND editor) { SendMessageW(editor, WM_TIMER, kCaptureTimer, 0); }
    void HoldGestureButton(HWND editor);
    void ReleaseGestureButton(HWND editor);
    // Three steps of 60 pixels, with a tick each, for every letter.
    static void Draw(HWND editor, const std::string& letters);
    // All steps: click, hold, draw, release.
    void Record(HWND editor, const std::string& letters);

    // The overlay of an editor; null if there is none.
    static HWND OverlayOf(HWND editor);

    // Records the module's clicks instead of making them.
    std::vector<DWORD> clicks;

private:
    const ReplacedImport<"mouse_event", void(DWORD, DWORD, DWORD, DWORD, ULONG_PTR)> recordedClicks{
        module.Handle(), [this](DWORD flags, DWORD x, DWORD y, DWORD data, ULONG_PTR /*extra*/) {
            EXPECT_EQ(x + y + data, 0U);
            clicks.push_back(flags);
        }};
};

}  // namespace kvn::test
