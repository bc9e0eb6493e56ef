#!/bin/bash
# SPDX-License-Identifier: MIT
# with_sway.sh <command> [argument...]
# Runs the command in a session of sway without screen or input devices, with empty home and runtime folders, and ends
# what it started. The command finds WAYLAND_DISPLAY, SWAYSOCK and DISPLAY. Its exit status is this script's.
set -eu

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

mkdir -m 700 "$place/home" "$place/runtime" "$place/sway"
export HOME=$place/home XDG_RUNTIME_DIR=$place/runtime NO_AT_BRIDGE=1
unset XDG_CONFIG_HOME XDG_DATA_HOME XDG_CACHE_HOME XDG_STATE_HOME SESSION_MANAGER DISPLAY WAYLAND_DISPLAY SWAYSOCK
export DBUS_SESSION_BUS_ADDRESS=disabled:

# When it is ready, sway tells by the descriptor 3 where it listens.
cat >"$place/config" <<'CONFIG'
exec echo "$WAYLAND_DISPLAY $SWAYSOCK $DISPLAY" >&3
focus_follows_mouse no
CONFIG
mkfifo "$place/ready"

# It does not run for root.
as_user=()
if [ "$(id -u)" = 0 ]; then
    as_user=(setpriv --reuid=65534 --regid=65534 --clear-groups)
    chown 65534:65534 "$place/runtime" "$place/sway"
    chmod 711 "$place"
    chmod 644 "$place/config"
    mkdir -m 1777 /tmp/.X11-unix 2>/dev/null || true # Where sway would have to make it, it would be that user's.
fi
HOME=$place/sway WLR_BACKENDS=headless WLR_LIBINPUT_NO_DEVICES=1 WLR_RENDERER=pixman \
    "${as_user[@]}" sway --config "$place/config" 3>"$place/ready" 2>"$place/sway.log" &
started+=($!)
if ! read -r WAYLAND_DISPLAY SWAYSOCK DISPLAY <"$place/ready"; then
    cat "$place/sway.log" >&2
    exit 1
fi
export WAYLAND_DISPLAY SWAYSOCK DISPLAY

"$@"
