#!/usr/bin/env bash
# Builds what is released, and tests it in a separate Windows. $1 is the folder of the programs, $2 their version; more
# arguments choose tests.
set -euo pipefail
# shellcheck source=tests/support/own_windows.sh
. "$(dirname "$0")/../support/own_windows.sh"

programs=$1
version=$2

"$root/scripts/package"
claim_windows package
open_windows
cd "$root"
PYTHONPATH=packaging PYTHONDONTWRITEBYTECODE=1 \
    python3 tests/package/package_test.py "$programs" "$version" "$state" "${@:3}"
