// The fixture of all tests of the page: a user with an attached mouse, a running service, and the loaded module.
#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "resources/resource.h"
#include "tests/support/combo_contents.h"
#include "tests/support/fake_service.h"
#include "tests/support/message_box_watcher.h"
#include "tests/support/module_under_test.h"
#include "tests/support/mouse_on_registry.h"
#include "tests/support/opened_sheet.h"
#include "tests/support/real_input.h"
#include "tests/support/replaced_import.h"
#include "tests/support/sandboxed_user.h"
#include "tests/support/waiting.h"
#include "tests/support/written_profiles.h"

namespace kvn::test {

inline constexpr int kSlotControls[] = {IDC_PANE_LEFT,    IDC_PANE_RIGHT,     IDC_PANE_CENTER,    IDC_PANE_BUTTON4,
                                        IDC_PANE_BUTTON5, IDC_PANE_TILT_LEFT, IDC_PANE_TILT_RIGHT};

inline constexpr wchar_t kCaption[] = L"KORVEN mouse settings tool";

class PageTest : public testing::Test {
protected:
    ~PageTest() override {
        sheet.reset();
        module.UnloadWholly();
    }
    void TearDown() override { sheet.reset(); }

    // Publishes the mouse and opens the sheet; Open waits until it is there, Start does not.
    OpenedSheet& Start(int extensions = 1, int pagesOfEach = 1);
    OpenedSheet& Open();
    // Cancels the sheet and waits for its end.
    void Close();

    std::wstring ProfilePath() const { return user.SettingsFolder() + L"\\" + mouse.Name() + L".xml"; }
    void WriteProfiles(const std::vector<std::string>& profiles, int selected = 0) const;
    std::string SavedElement(const std::string& element, int profile = 0) const {
        return ElementIn(ReadFileText(ProfilePath()), profile, element);
    }
    // The model's values in the registry. A test forgets them to see what is written next.
    std::map<std::wstring, StoredValue> ModelValues() const { return StoredValues(mouse.Key()); }
    void ForgetModelValues() const { RegDeleteTreeW(HKEY_CURRENT_USER, mouse.Key().c_str()); }

    // Actions of the user. Each waits until the sheet's thread has finished it, or has a modal dialog open. Gives the
    // focus to the combo box, chooses the entry with this number and confirms.
    void Choose(int control, int data) const;
    void SetFocusTo(HWND control) const;
    void Click(int paneControl) const;
    void MoveTrackbar(int control, int position) const;
    void ChooseProfile(int index) const;
    // Presses Apply, and expects that every page that was shown notifies the service once.
    void ApplySuccessfully();

    std::optional<int> Chosen(int control) const { return SelectedData(sheet->PaneControl(control)); }
    int Position(int control) const;
    bool IsEnabled(int control) const { return IsWindowEnabled(sheet->PaneControl(control)) != FALSE; }

    SandboxedUser user;
    PublishedMouse mouse;
    std::optional<FakeService> service{std::in_place};
    ModuleUnderTest module;
    std::optional<OpenedSheet> sheet;
};

// Expects a box with the module's caption, an OK button and the exclamation icon.
void ExpectWarning(const MessageBoxSeen& seen, const std::wstring& text);

}  // namespace kvn::test
