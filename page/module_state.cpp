#include "page/module_state.h"

#include "page/korven_panel.h"

namespace kvn::page {
namespace {

ULONG serverReferences = 0;
std::shared_ptr<IPropertyPanel> currentPanel;

}  // namespace

void AddServerReference() {
    ++serverReferences;
}
void ReleaseServerReference() {
    --serverReferences;
}
bool HasServerReferences() {
    return serverReferences != 0;
}

void MakeCurrentPanel() noexcept {
    try {
        currentPanel = std::make_shared<KorvenPanel>();
    } catch (...) {
        currentPanel.reset();
    }
}

IPropertyPanel* CurrentPanel() noexcept {
    if (!currentPanel) MakeCurrentPanel();
    return currentPanel.get();
}

std::shared_ptr<IPropertyPanel> TakeCurrentPanel() noexcept {
    CurrentPanel();
    return std::move(currentPanel);
}

}  // namespace kvn::page
