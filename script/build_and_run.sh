#!/usr/bin/env bash
# Builds Wren Fold and runs it in this terminal, where its log appears. Ctrl+C ends it.
#
#   script/build_and_run.sh [ARGUMENT...]   the arguments are handed to the program
#   script/build_and_run.sh --logs          follows the log of the program that runs already (started by the desktop,
#                                           it logs to the journal); with none running, the same as without --logs
#   script/build_and_run.sh --help          this text
#
# Without a display the program runs on a virtual one with empty settings of its own, just long enough for a
# picture of the panel: build/panel.png.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

# Follows the log of the running program, if there is one, and does not come back then.
follow_running() {
    local process
    process=$(pgrep --euid "$EUID" --exact --newest wrenfold) || return 0
    if [[ $(readlink "/proc/$process/fd/2") != socket:* ]]; then
        echo "Wren Fold runs as process $process and logs to $(readlink "/proc/$process/fd/2")."
        exit 0
    fi
    exec journalctl --follow --output=cat "_PID=$process"
}

case "${1:-}" in
--help)
    print_help "$0"
    exit 0
    ;;
--logs)
    shift
    follow_running
    ;;
esac

script/setup.sh
build_preset release

if [[ -n ${DISPLAY:-}${WAYLAND_DISPLAY:-} ]]; then
    exec build/release/wrenfold "$@"
fi
exec python3 tests/desktop/panel_picture.py build/release/wrenfold build/panel.png "$@"
