#!/usr/bin/env bash
# Runs the service's tests in a Windows of their own: a display that nobody sees, a mouse and a keyboard on it, and a Wine
# prefix with programs to open. $1 is the folder of the programs; the rest goes to the test program, for example
# --gtest_filter=DrawingGesturesTest.* With KVN_LOCALE=ja_JP.UTF-8 in the environment the user is Japanese; KVN_TEST_PROGRAM names
# another copy of the test program.
set -euo pipefail
# shellcheck source=scripts/common.sh
. "$(dirname "$0")/../../scripts/common.sh"

programs=$1
shift
state=$build/service-end-to-end
tests=${KVN_TEST_PROGRAM:-service_end_to_end_tests}

own_prefix=
display_pid=
hands_pid=

finish() {
    local status=$?
    trap - EXIT INT TERM
    [ -z "$hands_pid" ] || kill "$hands_pid" 2>/dev/null || true
    [ -z "$own_prefix" ] || wineserver -k || true
    [ -z "$display_pid" ] || kill "$display_pid" 2>/dev/null || true
    exit "$status"
}
trap finish EXIT
trap 'exit 130' INT
trap 'exit 143' TERM

start_hands() {
    python3 "$root/tests/service_end_to_end/x_input.py" "$state/port" &
    hands_pid=$!
    wait_until 20 "$hands_pid" test -s "$state/port"
    KVN_X_INPUT_PORT=$(<"$state/port")
    export KVN_X_INPUT_PORT
}

# Programs that functions open, each replaced by one that only says that it was opened.
plant_programs() {
    local windows=$WINEPREFIX/drive_c/windows program
    for program in explorer.exe system32/magnify.exe system32/control.exe system32/browser.exe; do
        cp "$programs/service_opened_program.exe" "$windows/$program"
    done
}

rm -rf "$state"
mkdir -p "$state"
use_wine_prefix service-end-to-end
own_prefix=yes
export WINEDLLOVERRIDES="$WINEDLLOVERRIDES;control.exe=n"  # the planted one
start_display "$state"
prepare_wine_prefix x11
plant_programs
start_hands
cd "$programs"
env LC_ALL="${KVN_LOCALE:-$LC_ALL}" wine "$tests.exe" "$@"
