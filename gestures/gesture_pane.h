// The pane "Allocate gesture function": the gestures of the selected profile, to add, edit and delete. Row i of its
// list is gesture i of the profile.
#pragma once

#include <windows.h>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "gestures/gesture_edit_dialog.h"
#include "model/mouse_settings.h"
#include "platform/command_table.h"
#include "platform/message_box.h"
#include "platform/pane.h"

namespace kvn::gestures {

// The services that the pane needs from its page.
class IGesturePaneOwner : public platform::IPaneOwner {
public:
    // The numbers of the selected profile as the page shows them at this moment, applied or not.
    virtual model::SettingValues ShownValues() const = 0;

protected:
    ~IGesturePaneOwner() = default;
};

class GesturePane final : public platform::Pane {
public:
    GesturePane(model::MouseSettings& mouseSettings, const platform::MessageBoxes& messageBoxes,
                IGesturePaneOwner& paneOwner);

    // Gives the list its columns and takes over the messages of the pane.
    void SetUp();

    // Shows the gestures of the selected profile.
    void ShowProfile();

private:
    static const platform::CommandRow<GesturePane> kCommands[3];

    void OnCommand(UINT control, UINT notification) override;
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnListNotification(const NMHDR& header);
    void OnDoubleClick();
    void OnAdd();
    void OnEdit();
    void OnDelete();

    void OpenGestureEditor(GestureEditMode mode);
    void AddGesture(const model::GestureEntry& gesture, const std::wstring& functionText);
    void ReplaceGesture(const model::GestureEntry& gesture, const std::wstring& functionText);
    void SetDetails(int row, const model::GestureEntry& gesture, const std::wstring& functionText) const;
    void InsertRow(int row, const model::GestureEntry& gesture, const std::wstring& functionText) const;

    // The index of the first selected row; nothing if no row with a gesture is selected.
    std::optional<std::size_t> SelectedGesture() const;
    void EnableForSelection() const;
    std::vector<model::GestureEntry>& Gestures() const { return settings.Selected().gestures; }

    model::MouseSettings& settings;
    const platform::MessageBoxes& boxes;
    IGesturePaneOwner& owner;
    GestureEditDialog editor;
    HWND list = nullptr;
    bool isFilled = false;  // the list has a row for every gesture
};

}  // namespace kvn::gestures
