#!/bin/bash
# SPDX-License-Identifier: MIT
# with_x11.sh <window manager or "none"> <command> [argument...]
# Runs the command on an X server of its own, with empty home and runtime folders, and ends what it started. The command
# finds the window manager's name in WRENFOLD_TEST_WINDOW_MANAGER. Its exit status is this script's.
set -eu

window_manager=$1
shift

place=$(mktemp -d)
started=()
end() {
    for ((index = ${#started[@]} - 1; index >= 0; --index)); do
        kill "${started[index]}" 2>/dev/null || true
        wait "${started[index]}" 2>/dev/null || true
    done
    rm -rf "$place"
}
trap end EXIT
trap 'exit 1' HUP INT TERM

mkdir -m 700 "$place/home" "$place/runtime"
export HOME=$place/home XDG_RUNTIME_DIR=$place/runtime NO_AT_BRIDGE=1 QT_QPA_PLATFORM=xcb
export WRENFOLD_TEST_WINDOW_MANAGER=$window_manager
unset XDG_CONFIG_HOME XDG_DATA_HOME XDG_CACHE_HOME XDG_STATE_HOME WAYLAND_DISPLAY SESSION_MANAGER
export DBUS_SESSION_BUS_ADDRESS=disabled:

mkfifo "$place/display"
Xvfb -displayfd 3 -nolisten tcp -noreset -screen 0 1280x800x24 3>"$place/display" 2>"$place/Xvfb.log" &
started+=($!)
if ! read -r number <"$place/display"; then
    cat "$place/Xvfb.log" >&2
    exit 1
fi
export DISPLAY=:$number

if [ "$window_manager" != none ]; then
    # A bus for its settings; the command does without.
    mkfifo "$place/bus"
    dbus-daemon --session --nofork --print-address=3 3>"$place/bus" 2>"$place/dbus-daemon.log" &
    started+=($!)
    if ! read -r bus <"$place/bus"; then
        cat "$place/dbus-daemon.log" >&2
        exit 1
    fi
    DBUS_SESSION_BUS_ADDRESS=$bus "$window_manager" >"$place/window_manager.log" 2>&1 &
    started+=($!)
    # openbox says that it is there before it reads its fonts, and forgets windows that ask to be shown meanwhile; what
    # it writes on the root later is waited for.
    case $window_manager in
    openbox) ready=_NET_CLIENT_LIST ;;
    *) ready=_NET_ACTIVE_WINDOW ;;
    esac
    deadline=$((SECONDS + 20))
    until xprop -root "$ready" | grep -q "^$ready("; do
        if ((SECONDS > deadline)); then
            echo "$window_manager does not manage the display:" >&2
            cat "$place/window_manager.log" >&2
            exit 1
        fi
        sleep 0.05 # UNAVOIDABLE: the pause between two looks
    done
fi

"$@"
