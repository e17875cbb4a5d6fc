#!/usr/bin/env bash
# Builds the bundle for a real Windows machine, and uses it in a separate Windows. Arguments choose tests.
set -euo pipefail
# shellcheck source=tests/support/own_windows.sh
. "$(dirname "$0")/../support/own_windows.sh"

"$root/scripts/windows-bundle"
claim_windows bundle
open_windows
cd "$root"
PYTHONPATH=packaging PYTHONDONTWRITEBYTECODE=1 python3 tests/package/bundle_test.py "$build"/KvnMouse-*-tests.zip "$state" "$@"
