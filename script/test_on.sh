#!/usr/bin/env bash
# Builds and tests what git tracks of this tree on a Debian release of its own, in a folder: build/on-SUITE. Needs
# root. The first time takes some 20 minutes; later the folder's packages and its build are used again.
#
#   script/test_on.sh SUITE    bookworm or trixie: script/test.sh --quick there, whose last line is this one's
#   script/test_on.sh --help   this text
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"
# shellcheck source=chroot.sh
source script/chroot.sh

case "${1:-}" in
bookworm | trixie) ;;
--help)
    print_help "$0"
    exit 0
    ;;
*)
    echo "test_on: a suite is needed, bookworm or trixie (see --help)" >&2
    exit 2
    ;;
esac

suite=$1
folder=build/on-$suite
if [[ ! -d $folder ]]; then
    make_chroot "$folder.new" "$suite"
    mv "$folder.new" "$folder" # A folder that is here is a whole system.
fi

# What is no longer tracked goes; the build of before stays.
tree=$folder/wrenfold
mkdir -p "$tree"
find "$tree" -mindepth 1 -maxdepth 1 ! -name build -exec rm -rf {} +
git ls-files -z | tar --create --null --files-from - | tar --extract --directory "$tree"

# It installs the packages that it needs.
in_chroot "$folder" /wrenfold/script/test.sh --quick
