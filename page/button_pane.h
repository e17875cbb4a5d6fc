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
#include "platform/pane.h"

namespace kvn::page {

// The services that the pane needs from its page.
class IButtonPaneOwner : public platform::IPaneOwner {
public:
    virtual void OnHelp() = 0;
    virtual void OnReset() = 0;

protected:
    ~IButtonPaneOwner() = default;
};

class ButtonPane final : public platform::Pane {
public:
    ButtonPane(model::MouseSettings& mouseSettings, const platform::MessageBoxes& messageBoxes,
               IButtonPaneOwner& paneOwner);

    // Gives every control its choices and ranges, and takes over the messages of the pane and its choosers.
    void SetUp();

    // Shows the settings without changing those of the profile.
    void Fill(const model::ProfileSettings& shown);

    // Disables the controls that this mouse does not have.
    void DisableMissingCapabilities();

    // The settings as the user sees them: the numbers that a control shows, everything else as in `base`. A chooser
    // without a selection holds a code that it does not offer and keeps it. If the pane could not be filled completely,
    // this returns `base` unchanged.
    model::ProfileSettings Read(const model::ProfileSettings& base) const;

    // Like Read, for settings that are about to be stored: first closes open lists, and undoes unconfirmed choices that
    // break the rules. So the stored settings have a "Left click" and at most one "Gesture function", unless the
    // profile broke these rules already when it was read.
    model::ProfileSettings ReadConfirmed(const model::ProfileSettings& base);

    // Loads the pictures of the mouse from the folder and draws the plain one.
    void LoadPictures(const std::wstring& folder);

    // Draws the picture with the slot's control marked, or the plain one.
    void ShowPicture(std::optional<model::ButtonSlot> marked);

private:
    void OnCommand(UINT control, UINT notification) override;
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnChooserNotification(SlotChooser& chooser, UINT notification);

    // The rules that keep one "Left click" and at most one "Gesture function", and the key dialog of "Arbitrary key".
    void OnChoiceConfirmed(SlotChooser& changed);
    // If no chooser has "Left click" any more, shows a message and gives it to the changed one. True if it did.
    bool PutBackLeftClick(const SlotChooser& changed) const;
    void RegisterArbitraryKey(SlotChooser& chooser);

    // The functions that the choosers have selected; nothing for a chooser without a selection.
    using SlotFunctions =
        model::EnumArray<model::ButtonSlot, std::optional<model::FunctionCode>, model::kButtonSlotCount>;
    SlotFunctions SelectedFunctions() const;
    static bool HasLeftClick(const SlotFunctions& functions);
    static int GestureCount(const SlotFunctions& functions);
    model::ProfileSettings ReadWith(const SlotFunctions& functions, const model::ProfileSettings& base) const;
    void LeaveLists() const;

    void FillRevolutionCount(std::int32_t count);
    void OnRevolutionNotification(UINT notification);
    void OnRevolutionCountChosen();
    void EnableFlyingSpeeds(bool enable) const;
    void Enable(int control, bool enable) const;

    model::MouseSettings& settings;
    const platform::MessageBoxes& boxes;
    IButtonPaneOwner& owner;

    model::EnumArray<model::ButtonSlot, SlotChooser, model::kButtonSlotCount> choosers;
    // Declared before the pictures, which must be destroyed first.
    std::optional<GdiplusSession> gdiplus;
    // Index 0 is the plain mouse, index k the mouse with its k-th control marked. None without GDI+.
    std::vector<MousePicture> pictures;
    platform::OpenedList revolutionList;
    // The index that a chooser had selected when it got the focus, or when its choice was last confirmed.
    int earlierIndex = 0;
    bool isFilled = false;
};

}  // namespace kvn::page
