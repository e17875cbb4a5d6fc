# shellcheck shell=bash
# Shared by every script: the paths of the tree, installing Debian packages, preparing a Wine prefix.
# Meant to be sourced, with `set -euo pipefail` already in force.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=$root/build
# shellcheck disable=SC2034  # for the scripts that source this file
jobs=$(nproc)

# The folders of the product's code, for the checks.
# shellcheck disable=SC2034  # for the scripts that source this file
product_folders=(model platform gestures profiles page service)

# The packages of single commands, which `scripts/setup all` installs too.
# shellcheck disable=SC2034  # for the scripts that source this file
fuzz_packages=(clang libclang-rt-14-dev)
# shellcheck disable=SC2034
check_packages=(clang clang-format clang-tidy cppcheck shellcheck)
# shellcheck disable=SC2034
coverage_packages=(gcovr)
# shellcheck disable=SC2034
installer_packages=(wixl msitools)

# Runs a command with the rights to install packages.
as_root() {
    if [ "$(id -u)" -eq 0 ]; then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo "$@"
    else
        echo "Installing packages needs root or sudo: $*" >&2
        return 1
    fi
}

# Installs those of the named Debian packages that are missing.
install_packages() {
    local missing=() package
    for package in "$@"; do
        dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q '^install ok installed' || missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return
    echo "Installing: ${missing[*]}"
    mkdir -p "$build"
    # Scripts may run at the same time, Debian's installer may not.
    {
        flock 9
        # A package index may not have been read on a new machine, or may be older than the archive.
        as_root apt-get update -qq
        local log=$build/install-packages.log
        as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" \
            >"$log" 2>&1 || { tail -n 20 "$log"; return 1; }
    } 9>"$build/install-packages.lock"
}

# The path of a file for programs under Wine; $1 is its full path on this machine.
windows_path() {
    printf '%s' "Z:${1//\//\\}"
}

# Sets the environment in which Wine runs for this tree: a separate prefix and home below build/, no debugger, no
# browser or .NET engine. $1 names the prefix, so that simultaneous jobs do not share one.
use_wine_prefix() {
    export WINEPREFIX=$build/wine/$1/prefix HOME=$build/wine/$1/home WINEARCH=win64
    export WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml=;winemenubuilder.exe=d;winedbg.exe=d"
    export LC_ALL=C.UTF-8
    mkdir -p "$HOME"
}

# Keeps this shell, and every program that it starts from now on, on one processor: $1 says which one, 0 being the first; after
# the last one the first comes again. Wine's programs and its server answer each other thousands of times in an opening: on one
# processor that costs the same each time; across two it depends on whether the other one sleeps.
stay_on_one_processor() {
    local processors
    mapfile -t processors < <(python3 -c 'import os; print(*sorted(os.sched_getaffinity(0)), sep="\n")')
    taskset -cp "${processors[$1 % ${#processors[@]}]}" "$BASHPID" >/dev/null
}

# Runs a command of this script in the background, as a group of processes that kill_group ends; $! is the group.
start_group() {
    set -m
    "$@" &
    set +m
}

# Ends what start_group has started, $1, and waits until it has tidied up. Nothing happens if it has ended already.
kill_group() {
    kill -TERM -- "-$1" 2>/dev/null || true
    wait "$1" 2>/dev/null || true
}

# Runs a Windows program that can be run again, with its arguments. Rarely a new process of Wine ends before its first
# instruction, so the program is started up to three times.
run_again_if_wine_fails() {
    local attempt
    for attempt in 1 2 3; do
        wine "$@" >/dev/null 2>&1 && return
        echo "Wine failed at attempt $attempt of: $*" >&2
    done
    return 1
}

# Makes the prefix of use_wine_prefix if it is new, and starts its Wine. $1 is its graphics: `null` needs no display at all,
# `x11` draws on $DISPLAY and does not wait for a window manager.
prepare_wine_prefix() {
    local recipe=2  # count it up when a prefix is made in another way
    local ready=$WINEPREFIX/ready-for-$1-$recipe
    wineserver -k || true  # a killed run may have left one
    if [ ! -e "$ready" ]; then
        rm -rf "$WINEPREFIX"
        mkdir -p "$(dirname "$WINEPREFIX")"
        env -u DISPLAY wineboot -i >"$WINEPREFIX.log" 2>&1 || { cat "$WINEPREFIX.log"; return 1; }
        wineserver -w
        # Wine's Tahoma has Windows' own metrics; without them dialogs look different.
        cp /usr/share/wine/fonts/{tahoma,tahomabd,marlett}.ttf "$WINEPREFIX/drive_c/windows/Fonts/"
        if [ "$1" = null ]; then
            run_again_if_wine_fails reg add 'HKCU\Software\Wine\Drivers' /v Graphics /d null /f
        else
            run_again_if_wine_fails reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f
        fi
        wineserver -w
        touch "$ready"
    fi
    wineserver -p >/dev/null 2>&1 || [ $? -eq 2 ]  # 2: it is running already
    # The first program starts Wine's services. They stay, and would keep this script's output open.
    run_again_if_wine_fails cmd /c ver
}

# Waits until a condition holds: $1 is the longest time in seconds, $2 the process to wait for, the rest the condition.
wait_until() {
    local tries=$(($1 * 20)) process=$2
    shift 2
    until "$@"; do
        kill -0 "$process" 2>/dev/null && [ "$tries" -gt 0 ] || return 1
        tries=$((tries - 1))
        sleep 0.05
    done
}

# Starts a virtual display, sets $DISPLAY, and puts the X server's process into $display_pid; $1 is a folder for
# its files. The X server chooses a display number that is free. It runs under setsid, so that Ctrl-C reaches the script
# alone, which then ends everything in order. The empty screen is white.
start_display() {
    local number=$1/display-number
    rm -f "$number"
    setsid Xvfb -displayfd 3 -screen 0 1024x768x24 -wr -nolisten tcp 3>"$number" >"$1/xvfb.log" 2>&1 &
    display_pid=$!
    wait_until 20 "$display_pid" test -s "$number" || { cat "$1/xvfb.log" >&2; return 1; }
    DISPLAY=:$(<"$number")
    export DISPLAY
}
