// The pane "Allocate gesture function": the gestures of the selected profile, to add, edit and delete. Row i of its
// list is gesture i of the profile.
#pragma once

#include <windows.h>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "gestures/gesture_edit_dialog.h"
#include "gestures/gesture_mgr.h"
#include "gestures/gesture_trail_overlay.h"
#include "model/mouse_settings.h"
#include "platform/message_box.h"

namespace kvn::gestures {

// What the pane asks of its page.
class IGesturePaneOwner {
public:
    // Told of every command and scroll in the pane, so that the page can count as changed.
    virtual void OnPaneCommand(HWND pane, WPARAM wParam, LPARAM lParam) = 0;
    virtual void OnPaneScroll(HWND trackbar) = 0;
    // The numbers of the selected profile as the page shows them at this moment, applied or not.
    virtual model::SettingValues ShownValues() const = 0;

protected:
    ~IGesturePaneOwner() = default;
};

class GesturePane {
public:
    GesturePane(model::MouseSettings& mouseSettings, const platform::MessageBoxes& messageBoxes,
                CGestureMgr& gestureManager, GestureTrailOverlay& trailOverlay, IGesturePaneOwner& paneOwner);
    GesturePane(const GesturePane&) = delete;
    GesturePane& operator=(const GesturePane&) = delete;

    // Makes the pane's window as a hidden child of the page; null when it cannot.
    HWND Create(HINSTANCE module, HWND page);

    // Gives the list its columns and takes over the messages of the pane.
    void SetUp();

    // Shows the gestures of the selected profile.
    void ShowProfile();

private:
    using CommandHandler = void (GesturePane::*)();
    struct CommandRow {
        int control;
        CommandHandler handler;
    };
    static const CommandRow kCommands[];

    static LRESULT CALLBACK PaneProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam);
    void OnCommand(int control);
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

    // The index of the first selected row; nothing when no row with a gesture is selected.
    std::optional<std::size_t> SelectedGesture() const;
    void EnableForSelection() const;
    void Enable(int control, bool enable) const;
    std::vector<model::GestureEntry>& Gestures() const { return settings.Selected().gestures; }
    HWND List() const;

    model::MouseSettings& settings;
    const platform::MessageBoxes& boxes;
    IGesturePaneOwner& owner;
    GestureEditDialog editor;

    HINSTANCE resources = nullptr;
    HWND pane = nullptr;
    WNDPROC previousProcedure = nullptr;
};

}  // namespace kvn::gestures
