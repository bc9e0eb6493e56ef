#!/usr/bin/env bash
# Makes the Debian package and tries it on a clean Debian 12, a minimal system in a folder: there it is installed with
# what it depends on and nothing else, used by an ordinary user, started again, started by the message bus, and removed.
# Needs root's rights, and the network for Debian's packages.
#
#   script/test_package.sh          the last line says that all is well
#   script/test_package.sh --help   this text
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"
# shellcheck source=chroot.sh
source script/chroot.sh

system=$PWD/build/package-system
runtime=/run/user/1000
document=$system/home/tester/.config/Wrenfold/Wrenfold.State.v1

# As the user, on the display of the session that tests/desktop/package_test.py makes.
run_as_user() {
    exec_in_chroot_with "$XDG_RUNTIME_DIR" "$runtime" "$system" setpriv --reuid=tester --regid=tester --clear-groups \
        env HOME=/home/tester XDG_RUNTIME_DIR="$runtime" DISPLAY="$DISPLAY" TZ="$TZ" \
        DBUS_SESSION_BUS_ADDRESS="$DBUS_SESSION_BUS_ADDRESS" "$@"
}

# What is in the system, but for the user's data and for what every use of apt leaves there.
list_files() {
    (cd "$system" && find . -mindepth 1 \( -path ./home -o -path ./root -o -path ./var/cache -o -path ./var/lib/apt -o -path ./var/lib/dpkg \
        -o -path ./var/log -o -path ./tmp \) -prune -o -print | sort)
}

case "${1:-}" in
"") ;;
--help)
    print_help "$0"
    exit 0
    ;;
--run-as-user) # For the test that this script calls.
    shift
    run_as_user "$@"
    ;;
*)
    echo "test_package: unknown option $1 (see --help)" >&2
    exit 2
    ;;
esac

script/package.sh
trap 'rm -rf "$system"' EXIT
make_chroot "$system" bookworm
in_chroot "$system" useradd --uid 1000 --create-home tester
mkdir -p "$system$runtime"
list_files >build/package-files-before

cp build/wrenfold_*.deb "$system/root/wrenfold.deb"
install_in_chroot "$system" /root/wrenfold.deb
in_chroot "$system" wrenfold --version
python3 -B tests/desktop/package_test.py

# What a desktop has anyway.
install_in_chroot "$system" dbus-daemon libglib2.0-bin
python3 -B tests/desktop/package_test.py bus

in_chroot "$system" env DEBIAN_FRONTEND=noninteractive apt-get purge --yes --quiet --auto-remove wrenfold dbus-daemon libglib2.0-bin
list_files >build/package-files-after
if ! diff build/package-files-before build/package-files-after; then
    echo "test_package: removing the package has left something behind" >&2
    exit 1
fi
if [[ ! -s $document ]]; then
    echo "test_package: removing the package has taken the user's tasks along" >&2
    exit 1
fi
echo "The package is well."
