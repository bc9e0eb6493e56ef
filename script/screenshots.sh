#!/usr/bin/env bash
# Builds Wren Fold and takes pictures of its windows in each of their states, light and dark, at 1x and 2x, on
# virtual displays of its own: docs/pictures/. Takes some five minutes.
#
#   script/screenshots.sh          all pictures anew
#   script/screenshots.sh --help   this text
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

if [[ ${1:-} == --help ]]; then
    print_help "$0"
    exit 0
fi

script/setup.sh
build_preset release
mkdir -p docs/pictures
rm -f docs/pictures/*.png
exec python3 -B tests/desktop/screenshots.py build/release/wrenfold docs/pictures
