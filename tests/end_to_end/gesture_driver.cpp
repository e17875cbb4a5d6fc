#include "tests/end_to_end/gesture_driver.h"

#include "resources/resource.h"
#include "tests/end_to_end/combo_driver.h"
#include "tests/end_to_end/input.h"
#include "tests/end_to_end/story_waiting.h"
#include "tests/end_to_end/windows_of_process.h"
#include "tests/support/combo_contents.h"
#include "tests/support/narrow_text.h"

namespace kvn::end_to_end {
namespace {

constexpr int kGestureTab = 1;

}  // namespace

GestureList::GestureList(const Sheet& sheet) : pane(sheet.GesturePane()), list(GetDlgItem(pane, IDC_GESTURES_LIST)) {
    sheet.ClickTab(kGestureTab);
    WaitFor("the list of gestures", [this] { return IsWindowVisible(list.Window()) != FALSE; });
}

void GestureList::Click(int button) const {
    end_to_end::Click(Control(button));
}

GestureEditor::GestureEditor(DWORD hostProcessId) : Dialog(hostProcessId, L"Edit gesture") {
    WaitFor("the focus in the editor", [this] { return FocusOf(Window()) == Control(IDC_GESTURE_FUNCTION); });
}

std::string GestureEditor::Stroke() const {
    return test::Narrow(TextOf(Control(IDC_GESTURE_STROKE)));
}

std::string GestureEditor::Function() const {
    return test::Narrow(test::SelectedText(Control(IDC_GESTURE_FUNCTION)));
}

std::string GestureEditor::Memo() const {
    return test::Narrow(TextOf(Control(IDC_GESTURE_MEMO)));
}

void GestureEditor::ExpectStroke(const std::string& text) const {
    WaitFor("the stroke \"" + text + '"', [&] { return Stroke() == text; });
}

void GestureEditor::ClickStroke() const {
    Click(IDC_GESTURE_STROKE);
    ExpectStroke("Start");
}

void GestureEditor::ChooseFunction(int code) const {
    ChooseByMouse(Control(IDC_GESTURE_FUNCTION), code);
    WaitFor("the function", [&] { return test::SelectedData(Control(IDC_GESTURE_FUNCTION)) == code; });
}

void GestureEditor::TypeMemo(const std::string& keys) const {
    Click(IDC_GESTURE_MEMO);
    WaitFor("the caret", [this] { return FocusOf(Window()) == Control(IDC_GESTURE_MEMO); });
    const std::string before = Memo();
    for (const char key : keys) PressKey(static_cast<WORD>(key));
    WaitFor("the memo", [&] { return Memo().size() == before.size() + keys.size(); });
}

void GestureEditor::CloseWith(int button) const {
    Click(button);
    WaitUntilClosed();
}

HWND GestureEditor::Trail() const {
    return FindTrail(ProcessId());
}

// It is the only dialog without a title.
HWND FindTrail(DWORD processId) {
    return FindTopLevelWindowOf(processId,
                                [](HWND window) { return ClassOf(window) == kDialogClass && TitleOf(window).empty(); });
}

}  // namespace kvn::end_to_end
