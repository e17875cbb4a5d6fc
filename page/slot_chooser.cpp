#include "page/slot_chooser.h"

#include <utility>

#include "gestures/function_combo.h"
#include "platform/boundary.h"
#include "platform/subclass.h"

namespace kvn::page {

void SlotChooser::SetUp(model::ButtonSlot buttonSlot, HWND comboBox, HINSTANCE module,
                        const std::vector<model::CatalogueRow>& functions, FocusListener focusListener) {
    onFocusChanged = std::move(focusListener);
    slot = buttonSlot;
    combo = comboBox;
    resources = module;
    gestures::AddFunctions(combo, resources, functions);
    previousProcedure = platform::Subclass(combo, ComboProcedure, this);
}

void SlotChooser::Select(model::FunctionCode function) const {
    platform::SelectComboData(combo, function);
}

void SlotChooser::ShowArbitraryKeys(const model::EtcKey& keys) const {
    gestures::ShowArbitraryKeys(combo, resources, keys);
}

std::optional<model::FunctionCode> SlotChooser::Selected() const {
    return platform::SelectedComboData(combo);
}

int SlotChooser::SelectedIndex() const {
    return static_cast<int>(SendMessageW(combo, CB_GETCURSEL, 0, 0));
}

void SlotChooser::SelectIndex(int index) const {
    SendMessageW(combo, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
}

void SlotChooser::Confirm() {
    list.Confirm();
    confirmedIndex = SelectedIndex();
}

void SlotChooser::LeaveList() const {
    platform::LeaveList(combo);
}

std::optional<int> SlotChooser::IndexOfLeftClick() const {
    return platform::FindComboData(combo, model::kFunctionLeftClick);
}

LRESULT CALLBACK SlotChooser::ComboProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return platform::AtBoundary<LRESULT>(0, [&]() -> LRESULT {
        const SlotChooser& chooser = *platform::ObjectOf<SlotChooser>(window);
        switch (message) {
            case WM_SETFOCUS:
                chooser.onFocusChanged(true);
                break;
            case WM_KILLFOCUS:
                chooser.onFocusChanged(false);
                break;
            case WM_DESTROY:
            case WM_NCDESTROY:
                // docs/kept-behaviour.md: this is how hosts notice that the page is going away.
                PostQuitMessage(0);
                return 0;
            default:
                break;
        }
        return CallWindowProcW(chooser.previousProcedure, window, message, wParam, lParam);
    });
}

}  // namespace kvn::page
