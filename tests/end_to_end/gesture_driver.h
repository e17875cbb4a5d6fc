// The list of gestures on the page's second tab and the dialog "Edit gesture", used as a user does.
#pragma once

#include <windows.h>

#include <array>
#include <string>
#include <vector>

#include "tests/end_to_end/list_driver.h"
#include "tests/end_to_end/sheet_driver.h"

namespace kvn::end_to_end {

// Stroke, function and memo of a row as the list shows them.
using GestureRow = std::array<std::string, 3>;

class GestureList {
public:
    // Opens the tab by a click and waits until the list is there.
    explicit GestureList(const Sheet& sheet);

    std::vector<GestureRow> Rows() const { return list.Rows<3>(); }
    bool IsEnabled(int button) const { return IsWindowEnabled(Control(button)) != FALSE; }
    void Click(int button) const;

    void Select(int row) const { list.Select(row); }
    void SelectUpTo(int row, std::size_t selectedCount) const { list.SelectUpTo(row, selectedCount); }
    void DoubleClick(int row) const { list.DoubleClick(row); }

private:
    HWND Control(int id) const { return GetDlgItem(pane, id); }

    HWND pane;
    ListDriver list;
};

// The open dialog.
class GestureEditor : public Dialog {
public:
    explicit GestureEditor(DWORD hostProcessId);

    std::string Stroke() const;
    std::string Function() const;
    std::string Memo() const;

    void ExpectStroke(const std::string& text) const;
    // Clicks "Input gesture" and waits until the field asks for the stroke.
    void ClickStroke() const;
    void ChooseFunction(int code) const;
    // Puts the caret into the field for the memo and types these keys: letters, which arrive in lower case, digits and
    // blanks.
    void TypeMemo(const std::string& keys) const;
    // Clicks OK or Cancel and waits until the dialog has closed.
    void CloseWith(int button) const;

    // The window that shows the trail of a stroke, or null.
    HWND Trail() const;
};

// Any window of the process that may be a trail.
HWND FindTrail(DWORD processId);

}  // namespace kvn::end_to_end
