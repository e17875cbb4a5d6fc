#!/usr/bin/env bash
# Sets the Windows version that each copy of os_version_tests.exe finds. Arguments: pairs of a program and a version, as
# named in Wine's configuration.
set -euo pipefail

while [ $# -gt 0 ]; do
    timeout 60 wine reg add "HKCU\\Software\\Wine\\AppDefaults\\$1" /v Version /d "$2" /f >/dev/null
    shift 2
done
