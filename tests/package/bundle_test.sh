#!/usr/bin/env bash
# Builds the bundle for a real Windows machine and uses it in a Windows of its own: a Wine prefix with a display that nobody
# sees. More arguments choose tests.
set -euo pipefail
# shellcheck source=scripts/common.sh
. "$(dirname "$0")/../../scripts/common.sh"

state=$build/bundle-test

own_prefix=
display_pid=

finish() {
    local status=$?
    trap - EXIT
    [ -z "$own_prefix" ] || wineserver -k || true
    [ -z "$display_pid" ] || kill "$display_pid" 2>/dev/null || true
    chmod -R u+w "$state" || true
    rm -rf "$state"
    exit "$status"
}
trap finish EXIT
trap 'exit 130' INT
trap 'exit 143' TERM

rm -rf "$state"
mkdir -p "$state"
"$root/scripts/windows-bundle"

use_wine_prefix bundle
own_prefix=yes
start_display "$state"
prepare_wine_prefix x11
cd "$root"
PYTHONPATH=packaging PYTHONDONTWRITEBYTECODE=1 python3 tests/package/bundle_test.py "$build"/KvnMouse-*-tests.zip "$state" "$@"
