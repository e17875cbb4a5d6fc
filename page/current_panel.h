// The panel that waits for its page: made when the shell asks for the page, taken when the page opens.
#pragma once

#include <memory>

#include "page/property_panel.h"

namespace kvn::page {

// Makes a new panel the current one. The current panel becomes null when there is no memory for one.
void MakeCurrentPanel() noexcept;

// The panel for the page that comes next; made now when a page has taken the last one. Null without memory.
[[nodiscard]] IPropertyPanel* CurrentPanel() noexcept;

// Hands the current panel to the page that opens, which gives it up with its window. Null without memory.
[[nodiscard]] std::shared_ptr<IPropertyPanel> TakeCurrentPanel() noexcept;

}  // namespace kvn::page
