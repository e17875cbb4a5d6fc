#include "gestures/function_combo.h"

#include <limits>

#include "platform/combo_box.h"
#include "platform/list_view.h"
#include "platform/texts.h"

namespace kvn::gestures {
namespace {

constexpr int kAllEntries = std::numeric_limits<int>::max();

}  // namespace

void AddFunctions(HWND combo, HINSTANCE module, const std::vector<model::CatalogueRow>& functions) {
    const platform::PausedRedraw pause(combo);
    for (const model::CatalogueRow& row : functions) {
        platform::AddComboItem(combo, platform::LoadText(module, row.textId), row.code);
    }
}

void ShowArbitraryKeys(HWND combo, HINSTANCE module, const model::EtcKey& keys) {
    const auto index = platform::FindComboData(combo, model::kFunctionArbitraryKey, kAllEntries);
    if (!index) return;
    const std::wstring name = platform::LoadText(module, IDS_FUNCTION_ARBITRARY_KEY);
    platform::ReplaceComboText(combo, *index, model::ArbitraryKeyLabel(name, keys));
}

}  // namespace kvn::gestures
