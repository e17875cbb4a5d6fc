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
    // Called when the chooser gets the keyboard focus (true) and when it loses it.
    using FocusListener = std::function<void(bool hasFocus)>;

    SlotChooser() = default;
    SlotChooser(const SlotChooser&) = delete;
    SlotChooser& operator=(const SlotChooser&) = delete;

    // Takes over the combo box and offers these functions in it.
    void SetUp(model::ButtonSlot buttonSlot, HWND comboBox, HINSTANCE module,
               const std::vector<model::CatalogueRow>& functions, FocusListener focusListener);

    // Selects the function, or nothing if it is not offered.
    void Select(model::FunctionCode function) const;

    // Shows these keys in brackets after "Arbitrary key"; only its text if there are none.
    void ShowArbitraryKeys(const model::EtcKey& keys) const;

    std::optional<model::FunctionCode> Selected() const;
    int SelectedIndex() const;
    void SelectIndex(int index) const;

    // Call it when the current selection has passed the rules or comes from the profile.
    void Confirm();
    // Selects the last confirmed choice.
    void TakeBack() const { SelectIndex(confirmedIndex); }

    // Closes the list if it is open, without confirming.
    void LeaveList() const;
    // Call it with every notification of the combo box, before anything else handles it.
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
