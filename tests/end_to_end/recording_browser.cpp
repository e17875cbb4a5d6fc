// Plays the browser that opens the help page: started as "recording_browser RECORD FILE", writes FILE's name into the
// file RECORD. It has no console, whose window could take the front from the page.
#include <windows.h>

#include <cstdlib>
#include <string>

#include "tests/end_to_end/stored_state.h"
#include "tests/support/narrow_text.h"

int WINAPI wWinMain(HINSTANCE, HINSTANCE, wchar_t*, int) {
    if (__argc != 3) return 1;
    kvn::end_to_end::WriteFileBytes(__wargv[1], kvn::test::Narrow(__wargv[2]));
    return 0;
}
