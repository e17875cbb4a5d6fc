#include "page/current_panel.h"

#include <utility>

#include "page/korven_panel.h"

namespace kvn::page {
namespace {

std::shared_ptr<IPropertyPanel> currentPanel;

}  // namespace

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
    if (!currentPanel) MakeCurrentPanel();
    return std::move(currentPanel);
}

}  // namespace kvn::page
