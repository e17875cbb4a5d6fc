// The open dialog "Register arbitrary key".
#pragma once

#include <string>

#include "resources/resource.h"
#include "tests/end_to_end/input.h"
#include "tests/end_to_end/sheet_driver.h"
#include "tests/end_to_end/story_waiting.h"
#include "tests/end_to_end/windows_of_process.h"
#include "tests/support/narrow_text.h"

namespace kvn::end_to_end {

class KeyDialog : public Dialog {
public:
    explicit KeyDialog(DWORD hostProcessId) : Dialog(hostProcessId, L"Register arbitrary key") {
        WaitForFocus(IDC_KEYS_INPUT1);
    }

    // Presses a key in the field that has the focus, and waits for what it shows.
    void Press(int input, WORD key, const wchar_t* name) const {
        PressKey(key);
        Expect(input, name);
    }
    void MoveTo(int input) const {
        PressKey(VK_TAB);
        WaitForFocus(input);
    }
    void Expect(int input, const std::wstring& text) const {
        WaitFor("the field to show " + test::Narrow(text), [&] { return TextOf(Control(input)) == text; });
    }
    void CloseWith(int button) const {
        Click(button);
        WaitUntilClosed();
    }

private:
    // The field is the combo box's child.
    void WaitForFocus(int input) const {
        WaitFor("the focus in input " + std::to_string(input),
                [&] { return GetParent(FocusOf(Window())) == Control(input); });
    }
};

}  // namespace kvn::end_to_end
