// What the tests of the gestures start from: an open gesture pane, its editor, and a hand that draws.
#pragma once

#include <string>
#include <vector>

#include "tests/page/page_test.h"

namespace kvn::test {

struct GestureText {
    std::string stroke;
    int function;
    std::string memo;
    std::string keys;
};

// A profile whose wheel button has the gesture function, with these gestures.
std::string GestureProfile(const std::vector<GestureText>& gestures, const std::string& name = "Default");

// So many gestures, all different.
std::vector<GestureText> ManyGestures(int count);

using RowTexts = std::vector<std::wstring>;  // the three columns

class GestureTest : public PageTest {
protected:
    // Opens the page with one profile of these gestures.
    void OpenWith(const std::vector<GestureText>& gestures);

    HWND List() const { return GetDlgItem(sheet->GesturePane(), IDC_GESTURES_LIST); }
    HWND PaneButton(int control) const { return GetDlgItem(sheet->GesturePane(), control); }
    bool IsButtonEnabled(int control) const { return IsWindowEnabled(PaneButton(control)) != FALSE; }

    int RowCount() const;
    RowTexts Row(int row) const;
    void SelectRow(int row, bool select = true) const;

    // As a press of the button does, even if it is disabled.
    void Command(int control) const;
    void SaysNothingIsSelected(int control) const;

    // Has the editor opened by a button of the pane.
    HWND OpenEditor(int control = IDC_GESTURES_ADD) const;
    // Presses a button of the editor and waits until the editor is gone.
    void CloseEditor(HWND editor, int button) const;
    // Presses OK and expects that the editor stays.
    void ExpectOkIgnored(HWND editor) const;
    HWND OpenEditorWindow() const;

    std::wstring Stroke(HWND editor) const;
    void ClickStroke(HWND editor) const;
    void ChooseFunction(HWND editor, int function) const;
    static void TypeMemo(HWND editor, const std::wstring& memo);

    // One tick of the editor's timer; the timer's own ticks between change nothing.
    static void Tick(HWND editor) { SendMessageW(editor, WM_TIMER, 221, 0); }
    void HoldGestureButton(HWND editor);
    void ReleaseGestureButton(HWND editor);
    // Three steps of 60 pixels, with a tick each, for every letter.
    static void Draw(HWND editor, const std::string& letters);
    // The whole of it: click, hold, draw, release.
    void Record(HWND editor, const std::string& letters);

    // The overlay of an editor; null when there is none.
    static HWND OverlayOf(HWND editor);
};

}  // namespace kvn::test
