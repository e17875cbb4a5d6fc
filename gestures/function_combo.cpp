#include "gestures/function_combo.h"

#include "platform/combo_box.h"
#include "platform/paused_redraw.h"
#include "platform/texts.h"

namespace kvn::gestures {

void AddFunctions(HWND combo, HINSTANCE module, const std::vector<model::CatalogueRow>& functions) {
    const platform::PausedRedraw pause(combo);
    for (const model::CatalogueRow& row : functions) {
        platform::AddComboItem(combo, platform::LoadText(module, row.textId), row.code);
    }
}

void ShowArbitraryKeys(HWND combo, HINSTANCE module, const model::EtcKey& keys) {
    const auto index = platform::FindComboData(combo, model::kFunctionArbitraryKey);
    if (!index) return;
    const std::wstring name = platform::LoadText(module, IDS_FUNCTION_ARBITRARY_KEY);
    platform::ReplaceComboText(combo, *index, model::ArbitraryKeyLabel(name, keys));
}

}  // namespace kvn::gestures
