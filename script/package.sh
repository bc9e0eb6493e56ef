#!/usr/bin/env bash
# Builds Wren Fold and packs it for Debian: build/wrenfold_VERSION_ARCHITECTURE.deb, named in the last line.
#
#   script/package.sh          makes the package
#   script/package.sh --help   this text
#
# To install it: apt install ./build/wrenfold_*.deb
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

case "${1:-}" in
"") ;;
--help)
    print_help "$0"
    exit 0
    ;;
*)
    echo "package: unknown option $1 (see --help)" >&2
    exit 2
    ;;
esac

script/setup.sh
build_preset release
rm -f build/wrenfold_*.deb
cpack --config build/release/CPackConfig.cmake -B build/release/package
mv build/release/package/wrenfold_*.deb build
ls build/wrenfold_*.deb
