#!/usr/bin/env bash
# Builds the installer and tries it in a Windows of its own: a Wine prefix with a display that nobody sees and the
# stand-in service, which publishes the sample mouse. $1 is the folder of the programs, $2 the version they have.
set -euo pipefail
# shellcheck source=scripts/common.sh
. "$(dirname "$0")/../../scripts/common.sh"

programs=$1
version=$2
state=$build/package-test
service=$programs/service/KvnMouseAplDouble.exe

own_prefix=
display_pid=
service_pid=

finish() {
    local status=$?
    trap - EXIT
    [ -z "$service_pid" ] || timeout 20 wine "$service" --quit || kill "$service_pid" || true
    [ -z "$own_prefix" ] || wineserver -k || true
    [ -z "$display_pid" ] || kill "$display_pid" 2>/dev/null || true
    rm -rf "$state"
    exit "$status"
}
trap finish EXIT
trap 'exit 130' INT
trap 'exit 143' TERM

start_service() {
    setsid wine "$service" --ready-file "$(windows_path "$state/ready")" --log "$(windows_path "$state/service.log")" \
        >/dev/null 2>&1 &
    service_pid=$!
    wait_until 60 "$service_pid" test -e "$state/ready"
}

rm -rf "$state"
mkdir -p "$state"
"$root/scripts/package"

use_wine_prefix package
own_prefix=yes
start_display "$state"
prepare_wine_prefix x11
start_service
cd "$root"
PYTHONPATH=packaging PYTHONDONTWRITEBYTECODE=1 python3 tests/package/package_test.py "$programs" "$version" "$state"
