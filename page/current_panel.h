// The panel that waits for its page: made when the shell asks for the page, taken when the page opens.
#pragma once

#include <memory>

#include "page/property_panel.h"

namespace kvn::page {

// Makes a new panel the current one. The current panel becomes null if there is no memory for one.
void MakeCurrentPanel() noexcept;

// The panel for the next page; created now if a page has taken the last one. Null if there is no memory.
[[nodiscard]] IPropertyPanel* CurrentPanel() noexcept;

// Gives the current panel to the page that opens, which keeps it as long as its window. Null if there is no memory.
[[nodiscard]] std::shared_ptr<IPropertyPanel> TakeCurrentPanel() noexcept;

}  // namespace kvn::page
