// The pages with which ours is compared.
#pragma once

#include <windows.h>

#include <prsht.h>

namespace kvn::bench {

// The windows of our page without anything in them: the same templates, two tabs, the panes in their places.
HPROPSHEETPAGE EmptyPage();

// The empty page with the work that no such page can avoid, done in the shortest way: TinyXML parses the profile file,
// the combo boxes get their texts, the service's program is looked up, and the picture is loaded and drawn; an apply
// reads every control.
HPROPSHEETPAGE BarePage();

}  // namespace kvn::bench
