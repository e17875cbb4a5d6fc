// Message boxes of this process: waits for one, reads it and answers it as a user would.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace kvn::test {

// The visible parts of a message box.
struct MessageBoxSeen {
    std::wstring caption;
    std::wstring text;
    UINT icon = 0;             // MB_ICONEXCLAMATION, MB_ICONINFORMATION or another; 0 when there is none
    std::vector<int> buttons;  // the buttons' ids from left to right
    HWND owner = nullptr;
};

// The open message box; null when there is none.
HWND OpenMessageBox();

// The text of a message box of any process.
std::wstring TextOfMessageBox(HWND box);

// Waits for a message box, presses one of its buttons and waits until it is gone. Returns the content of the box.
// `expected` names the box in the failure of a test that waits too long.
MessageBoxSeen AnswerMessageBox(const std::string& expected, int button);

}  // namespace kvn::test
