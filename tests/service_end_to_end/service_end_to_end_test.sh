#!/usr/bin/env bash
# Runs the service's tests in a separate Windows: a virtual display with a mouse and a keyboard, and a Wine prefix with
# programs to open. $1 is the folder of the programs; the rest goes to the test program, for example
# --gtest_filter='DrawingGesturesTest.*'. With KVN_LOCALE=ja_JP.UTF-8 in the environment the user is Japanese. KVN_TEST_PROGRAM
# names another copy of the test program.
set -euo pipefail
# shellcheck source=tests/support/own_windows.sh
. "$(dirname "$0")/../support/own_windows.sh"

programs=$1
shift
tests=${KVN_TEST_PROGRAM:-service_end_to_end_tests}

# Programs that functions open, each replaced by one that only reports that it was opened.
plant_programs() {
    local windows=$WINEPREFIX/drive_c/windows program
    for program in explorer.exe system32/magnify.exe system32/control.exe system32/browser.exe; do
        cp "$programs/service_opened_program.exe" "$windows/$program"
    done
}

claim_windows service-end-to-end
export WINEDLLOVERRIDES="$WINEDLLOVERRIDES;control.exe=n"  # the planted one
open_windows
plant_programs
# Wine 10 confines the pointer to a window that covers the screen, as the page's trail does. That fails
# while another program's window holds a mouse button: then Wine tries endlessly, and the page does not answer.
run_again_if_wine_fails reg add 'HKCU\Software\Wine\X11 Driver' /v GrabPointer /d N /f
start_hands
cd "$programs"
env LC_ALL="${KVN_LOCALE:-$LC_ALL}" wine "$tests.exe" "$@"
