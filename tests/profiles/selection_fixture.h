// The fixture of the tests of the two dialogs: a separate Start menu, a fresh module, and the dialog on a thread with a
// hidden owner.
#pragma once

#include <gtest/gtest.h>

#include <windows.h>

#include <commctrl.h>

#include <atomic>
#include <future>
#include <optional>
#include <string>
#include <vector>

#include "model/profile.h"
#include "resources/resource.h"
#include "tests/profiles/start_menu.h"
#include "tests/support/list_contents.h"
#include "tests/support/module_under_test.h"
#include "tests/support/owning_types.h"
#include "tests/support/waiting.h"

namespace kvn::test {

// One loading of the library with the selection of programs.
class SelectionModule {
public:
    SelectionModule();

    HMODULE Handle() const { return module.Get(); }
    bool SelectPrograms(HINSTANCE resources, HWND owner, std::vector<model::ApplicationEntry>& chosen) const;

private:
    UniqueModule module;
};

class SelectionTest : public testing::Test {
protected:
    using Programs = std::vector<model::ApplicationEntry>;

    void TearDown() override;

    // Opens the dialog and waits until it is ready.
    void Open();
    // Presses a button of a dialog without waiting for the result.
    void Press(int button) const;
    static void Press(HWND pressedDialog, int button);
    // Waits for the end of the dialog, and returns its result.
    bool AwaitEnd();
    bool Close(int button) {
        Press(button);
        return AwaitEnd();
    }
    bool StaysOpen() const;

    // Presses "Select window", and returns the dialog with the proposal.
    HWND OpenWindowDialog() const;
    static std::wstring ProposalOf(HWND windowDialog);

    HWND List() const { return GetDlgItem(dialog, IDC_PROGRAMS_LIST); }
    int RowCount() const { return RowCountOf(List()); }
    std::wstring Cell(int row, int column) const { return CellText(List(), row, column); }
    int ImageOf(int row) const { return ImageOfRow(List(), row); }
    void Select(int row, bool selected = true) const { SelectRow(List(), row, selected); }
    // Simulates a click at this point of the list, by the notification that the list would send.
    void ClickAt(POINT point) const;
    void ClickRow(int row) const;
    void ClickEmptySpace() const;

    const StartMenu menu;
    const ModuleUnderTest resources;
    std::optional<SelectionModule> module{std::in_place};
    Programs chosen;
    std::future<bool> accepted;
    std::atomic<HWND> owner = nullptr;
    HWND dialog = nullptr;
};

}  // namespace kvn::test
