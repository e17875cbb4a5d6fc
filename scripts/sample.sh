# shellcheck shell=bash
# Includes common.sh, and adds what it takes to show the page: its programs, the service or its scripted double with the
# sample mouse, and the end of all programs that were started. Meant to be sourced by a script that sets $state, a folder
# for its files, and $own_prefix if it uses a separate Wine prefix.
# shellcheck source=scripts/common.sh
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"

programs=$build/windows
# shellcheck disable=SC2034  # for the scripts that source this file
module=$programs/KvnMouseUtil.dll panel=$programs/control_panel.exe

own_prefix=
service=
display_pid=
service_pid=
panel_pid=

# Ends the started programs, the last one first.
finish() {
    local status=$?
    trap - EXIT INT TERM
    [ -z "$panel_pid" ] || kill "$panel_pid" 2>/dev/null || true
    if [ -n "$service_pid" ]; then
        timeout 20 wine "$service" --quit || kill "$service_pid" 2>/dev/null || true
    fi
    [ -z "$own_prefix" ] || wineserver -k || true  # never the user's own Wine
    [ -z "$display_pid" ] || kill "$display_pid" 2>/dev/null || true
    exit "$status"
}
trap finish EXIT
trap 'exit 130' INT
trap 'exit 143' TERM

build_programs() {
    "$root/scripts/setup"
    [ -e "$programs/build.ninja" ] || (cd "$root" && cmake --preset windows)
    cmake --build "$programs" -j "$jobs" --target KvnMouseUtil control_panel KvnMouseApl KvnMouseAplDouble -- --quiet
}

# Starts the double and waits until it is ready; the arguments are its options. Its log is then in $service_log.
start_service() {
    local ready_file=${state:?}/service-is-ready
    service=$programs/service/KvnMouseAplDouble.exe
    service_log=$state/service.log
    rm -f "$ready_file" "$service_log"
    setsid wine "$service" --ready-file "$(windows_path "$ready_file")" --log "$(windows_path "$service_log")" "$@" &
    service_pid=$!
    wait_until 60 "$service_pid" test -e "$ready_file" && return
    if kill -0 "$service_pid" 2>/dev/null; then
        echo "The service was not ready in time; its log: $service_log" >&2
        exit 1
    fi
    # It has printed why it ended: wrong options, or --help.
    local status=0
    wait "$service_pid" || status=$?
    service_pid=
    exit "$status"
}

service_answers() {
    timeout 20 wine "$service" --status >/dev/null 2>&1
}

# Starts the real service with the sample mouse and waits until it answers; the arguments are more options. $service_log then
# gets a line for each press that it acts on.
start_real_service() {
    service=$programs/service/KvnMouseApl.exe
    service_log=$state/service.log
    rm -f "$service_log"
    setsid wine "$service" --mouse 1234:5678:7:1:KvnSample --log "$(windows_path "$service_log")" "$@" &
    service_pid=$!
    wait_until 60 "$service_pid" service_answers && return
    # It has printed why it ended: wrong options, or --help.
    local status=0
    kill "$service_pid" 2>/dev/null || wait "$service_pid" || status=$?
    service_pid=
    exit "$status"
}
