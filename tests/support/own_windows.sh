# shellcheck shell=bash
# A separate Windows for a test: a Wine prefix, a virtual display, and a folder $state for files. All of it ends with the
# script, the processes in $helper_pids first. Source it after `set -euo pipefail`.
# shellcheck source=scripts/common.sh
. "$(dirname "${BASH_SOURCE[0]}")/../../scripts/common.sh"

state=
display_pid=
helper_pids=()

finish() {
    local status=$?
    trap - EXIT INT TERM
    [ ${#helper_pids[@]} -eq 0 ] || kill "${helper_pids[@]}" 2>/dev/null || true
    [ -z "$state" ] || wineserver -k || true  # never the user's own Wine
    [ -z "$display_pid" ] || kill "$display_pid" 2>/dev/null || true
    if [ -n "$state" ]; then
        chmod -R u+w "$state" || true
        rm -rf "$state"
    fi
    exit "$status"
}
trap finish EXIT
trap 'exit 130' INT
trap 'exit 143' TERM

# Sets the environment for the Wine prefix of this name, and makes the folder.
claim_windows() {
    use_wine_prefix "$1"
    state=$build/$1-test
    rm -rf "$state"
    mkdir -p "$state"
}

# Starts the display and Wine.
open_windows() {
    start_display "$state"
    prepare_wine_prefix x11
}

# Starts the mouse and the keyboard of the display, for the programs' XDisplay.
start_hands() {
    python3 "$root/tests/support/x_input.py" "$state/port" &
    helper_pids+=($!)
    wait_until 20 $! test -s "$state/port"
    KVN_X_INPUT_PORT=$(<"$state/port")
    export KVN_X_INPUT_PORT
}
