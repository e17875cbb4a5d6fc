#include "tests/end_to_end/gesture_driver.h"

#include <commctrl.h>

#include "resources/resource.h"
#include "tests/end_to_end/combo_driver.h"
#include "tests/end_to_end/input.h"
#include "tests/end_to_end/text.h"
#include "tests/end_to_end/waiting.h"
#include "tests/end_to_end/windows_of_process.h"

namespace kvn::end_to_end {
namespace {

constexpr int kGestureTab = 1;
constexpr wchar_t kDialogClass[] = L"#32770";

class HeldKey {
public:
    explicit HeldKey(WORD keyToHold) : key(keyToHold) { HoldKey(key); }
    ~HeldKey() { LetGoOfKey(key); }
    HeldKey(const HeldKey&) = delete;
    HeldKey& operator=(const HeldKey&) = delete;

private:
    WORD key;
};

}  // namespace

GestureList::GestureList(const Sheet& sheet) : pane(sheet.GesturePane()) {
    sheet.ClickTab(kGestureTab);
    WaitFor("the list of gestures", [this] { return IsWindowVisible(List()) != FALSE; });
}

HWND GestureList::List() const {
    return Control(IDC_GESTURES_LIST);
}

std::vector<GestureRow> GestureList::Rows() const {
    std::vector<GestureRow> rows(static_cast<std::size_t>(Send(List(), LVM_GETITEMCOUNT)));
    for (std::size_t row = 0; row < rows.size(); ++row) {
        for (std::size_t column = 0; column < rows[row].size(); ++column) {
            rows[row][column] = Narrow(ReadListText(List(), static_cast<int>(row), static_cast<int>(column)));
        }
    }
    return rows;
}

void GestureList::Click(int button) const {
    end_to_end::Click(Control(button));
}

POINT GestureList::PlaceOf(int row) const {
    POINT middle = MiddleOf(ReadRectangle(List(), LVM_GETITEMRECT, static_cast<WPARAM>(row)));
    MapWindowPoints(List(), nullptr, &middle, 1);
    return middle;
}

void GestureList::Select(int row) const {
    ClickAt(PlaceOf(row));
    WaitFor("the selection of a row", [&] {
        return Send(List(), LVM_GETSELECTEDCOUNT) == 1 &&
               Send(List(), LVM_GETITEMSTATE, static_cast<WPARAM>(row), LVIS_SELECTED) != 0;
    });
}

void GestureList::SelectUpTo(int row, int selectedCount) const {
    const HeldKey shift(VK_LSHIFT);
    ClickAt(PlaceOf(row));
    WaitFor("the selection of rows", [&] { return Send(List(), LVM_GETSELECTEDCOUNT) == selectedCount; });
}

void GestureList::DoubleClick(int row) const {
    DoubleClickAt(PlaceOf(row));
}

GestureEditor::GestureEditor(DWORD hostProcessId) : Dialog(hostProcessId, L"Edit gesture"), processId(hostProcessId) {
    WaitFor("the focus in the editor", [this] { return FocusOf(Window()) == Control(IDC_GESTURE_FUNCTION); });
}

std::string GestureEditor::Stroke() const {
    return Narrow(TextOf(Control(IDC_GESTURE_STROKE)));
}

std::string GestureEditor::Function() const {
    return Narrow(ChosenText(Control(IDC_GESTURE_FUNCTION)));
}

std::string GestureEditor::Memo() const {
    return Narrow(TextOf(Control(IDC_GESTURE_MEMO)));
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
    WaitFor("the function", [&] { return ChosenData(Control(IDC_GESTURE_FUNCTION)) == code; });
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
    return FindTrail(processId);
}

// It is the only dialog without a title.
HWND FindTrail(DWORD processId) {
    return FindTopLevel(processId,
                        [](HWND window) { return ClassOf(window) == kDialogClass && TitleOf(window).empty(); });
}

}  // namespace kvn::end_to_end
