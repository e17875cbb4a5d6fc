// The pages that ours is compared with.
#pragma once

#include <windows.h>

#include <prsht.h>

namespace kvn::bench {

// The windows of our page without anything in them: the same templates, two tabs, the panes in their places.
HPROPSHEETPAGE EmptyPage();

// The empty page with what nobody who writes such a page can leave out, done in the shortest way: TinyXML parses the
// profile file, the combo boxes get their texts, the service's program is asked for, the picture is loaded and drawn;
// and an apply reads every control.
HPROPSHEETPAGE BarePage();

}  // namespace kvn::bench
