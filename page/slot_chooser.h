// The combo box in which the function of one mouse control is chosen.
#pragma once

#include <windows.h>

#include <functional>
#include <optional>
#include <vector>

#include "model/function_catalogue.h"
#include "model/profile.h"
#include "platform/combo_box.h"

namespace kvn::page {

class SlotChooser {
public:
    // Told when the keyboard focus comes to the chooser (true) and when it leaves.
    using FocusListener = std::function<void(bool hasFocus)>;

    SlotChooser() = default;
    SlotChooser(const SlotChooser&) = delete;
    SlotChooser& operator=(const SlotChooser&) = delete;

    // Takes the combo box over and offers it these functions.
    void SetUp(model::ButtonSlot buttonSlot, HWND comboBox, HINSTANCE module,
               const std::vector<model::CatalogueRow>& functions, FocusListener focusListener);

    // Selects the function; none when it is not offered.
    void Select(model::FunctionCode function) const;

    // The keys that "Arbitrary key" shows in brackets; its text alone when there are none.
    void ShowArbitraryKeys(const model::EtcKey& keys) const;

    std::optional<model::FunctionCode> Selected() const;
    int SelectedIndex() const;
    void SelectIndex(int index) const;

    // What is selected now has passed the rules, or stands in the profile.
    void Confirm();
    // Selects what was confirmed last.
    void TakeBack() const { SelectIndex(confirmedIndex); }

    // Closes the list if it is open, without confirming.
    void LeaveList() const;
    // To be called with every notification of the combo box, before anything else is done about it.
    void OnNotification(UINT notification) { list.OnNotification(combo, notification); }

    // The index of "Left click", if it is offered.
    std::optional<int> IndexOfLeftClick() const;

    model::ButtonSlot Slot() const { return slot; }
    HWND Window() const { return combo; }

private:
    static LRESULT CALLBACK ComboProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    model::ButtonSlot slot{};
    HWND combo = nullptr;
    WNDPROC previousProcedure = nullptr;
    HINSTANCE resources = nullptr;
    FocusListener onFocusChanged;
    platform::OpenedList list;
    int confirmedIndex = -1;
};

}  // namespace kvn::page
