#!/usr/bin/env bash
# Builds what is released and tries it in a Windows of its own: a Wine prefix with a display that nobody sees. $1 is the
# folder of the programs, $2 the version they have; more arguments choose tests.
set -euo pipefail
# shellcheck source=scripts/common.sh
. "$(dirname "$0")/../../scripts/common.sh"

programs=$1
version=$2
state=$build/package-test

own_prefix=
display_pid=

finish() {
    local status=$?
    trap - EXIT
    [ -z "$own_prefix" ] || wineserver -k || true
    [ -z "$display_pid" ] || kill "$display_pid" 2>/dev/null || true
    rm -rf "$state"
    exit "$status"
}
trap finish EXIT
trap 'exit 130' INT
trap 'exit 143' TERM

rm -rf "$state"
mkdir -p "$state"
"$root/scripts/package"

use_wine_prefix package
own_prefix=yes
start_display "$state"
prepare_wine_prefix x11
cd "$root"
PYTHONPATH=packaging PYTHONDONTWRITEBYTECODE=1 \
    python3 tests/package/package_test.py "$programs" "$version" "$state" "${@:3}"
