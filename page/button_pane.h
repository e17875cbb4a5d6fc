// The pane "Allocate button function": the mouse picture, a chooser per mouse control, and the scroll settings.
#pragma once

#include <windows.h>

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "model/mouse_settings.h"
#include "page/mouse_picture.h"
#include "page/slot_chooser.h"
#include "platform/message_box.h"

namespace kvn::page {

// What the pane asks of its page.
class IButtonPaneOwner {
public:
    virtual void OnHelp() = 0;
    virtual void OnReset() = 0;
    // Told of every command and scroll in the pane, so that the page can count as changed.
    virtual void OnPaneCommand(HWND pane, WPARAM wParam, LPARAM lParam) = 0;
    virtual void OnPaneScroll(HWND trackbar) = 0;

protected:
    ~IButtonPaneOwner() = default;
};

class ButtonPane {
public:
    ButtonPane(model::MouseSettings& mouseSettings, const platform::MessageBoxes& messageBoxes,
               IButtonPaneOwner& paneOwner);
    ButtonPane(const ButtonPane&) = delete;
    ButtonPane& operator=(const ButtonPane&) = delete;

    // Makes the pane's window as a hidden child of the page; null when it cannot.
    HWND Create(HINSTANCE module, HWND page);

    // Gives every control its choices and ranges and takes over the messages of the pane and its choosers.
    void SetUp();

    // Shows the settings. Those of the profile stay as they are.
    void Fill(const model::ProfileSettings& shown);

    // Disables what this mouse does not have.
    void DisableMissingCapabilities();

    // The settings as the user sees them: the numbers that a control shows, everything else as in `base`. A chooser
    // without a selection holds a code that it does not offer and keeps it.
    model::ProfileSettings Read(const model::ProfileSettings& base) const;

    // Loads the pictures of the mouse from the folder and draws the plain one.
    void LoadPictures(const std::wstring& folder);

    // Draws the picture with the slot's control marked, or the plain one.
    void ShowPicture(std::optional<model::ButtonSlot> marked);

private:
    static LRESULT CALLBACK PaneProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam);
    void OnCommand(UINT control, UINT notification);
    void OnChooserNotification(SlotChooser& chooser, UINT notification);

    // The rules that keep one "Left click" and at most one "Gesture function", and the key dialog of "Arbitrary key".
    void OnChoiceConfirmed(SlotChooser& changed);
    // When no chooser holds "Left click" any longer, tells the user and gives it to the changed one. True when it did.
    bool PutBackLeftClick(const SlotChooser& changed) const;
    void RegisterArbitraryKey(SlotChooser& chooser);

    void FillRevolutionCount(std::int32_t count);
    void OnRevolutionCountChosen();
    void EnableFlyingSpeeds(bool enable) const;
    void Enable(int control, bool enable) const;
    HWND Control(int control) const { return GetDlgItem(pane, control); }

    model::MouseSettings& settings;
    const platform::MessageBoxes& boxes;
    IButtonPaneOwner& owner;

    HINSTANCE resources = nullptr;
    HWND pane = nullptr;
    WNDPROC previousProcedure = nullptr;
    std::array<SlotChooser, model::kButtonSlotCount> choosers;
    // Index 0 is the plain mouse, index k the mouse with its k-th control marked.
    std::vector<MousePicture> pictures;
    // The index that a chooser had selected when the focus came to it or its choice was last confirmed.
    int earlierIndex = 0;
};

}  // namespace kvn::page
