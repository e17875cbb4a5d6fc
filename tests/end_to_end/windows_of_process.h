// Windows of another process: finding and clicking them.
#pragma once

#include <windows.h>

#include "tests/support/window_messages.h"
#include "tests/support/window_search.h"

namespace kvn::end_to_end {

using test::ClassOf;
using test::Describe;
using test::FindTopLevelWindowOf;
using test::FocusOf;
using test::kDialogClass;
using test::Send;
using test::TextOf;
using test::TitleOf;

RECT ScreenRectangle(HWND window);
void Click(HWND window);

POINT MiddleOf(const RECT& area);

}  // namespace kvn::end_to_end
