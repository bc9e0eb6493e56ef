# Debian systems in folders, for the scripts that need a clean one. Sourced behind lib.sh; needs root and debootstrap.
#
#   make_chroot FOLDER SUITE [PACKAGE...]   FOLDER becomes a minimal system of that suite with those packages
#   in_chroot FOLDER COMMAND...             runs it there as root, with the network, in the folder /
#
# Commands run in a process and a mount namespace of their own: when the first one ends, whatever it started ends with
# it and nothing stays mounted, so the folder can be removed at any time. What it needs of the source tree is copied
# in, or bound by `in_chroot_with SOURCE TARGET FOLDER COMMAND...`.
# shellcheck shell=bash

# Where Debian packages come from on this machine, from the computer's own settings of apt.
debian_mirror() {
    local mirror
    # shellcheck disable=SC2016 # apt expands it.
    mirror=$(apt-get indextargets --format '$(REPO_URI)' 'Created-By: Packages' 'Label: Debian' | head -n 1)
    [[ -n $mirror ]] || {
        echo "chroot: apt knows no Debian mirror here; run apt-get update" >&2
        return 1
    }
    echo "$mirror"
}

# chroot_base SUITE: prints the folder of a minimal system, made on the first call and kept for the next ones.
# Copy it, never change it.
chroot_base() {
    local suite=$1 cache=${XDG_CACHE_HOME:-$HOME/.cache}/wrenfold mirror base
    base=$cache/$suite
    if [[ ! -d $base ]]; then
        mirror=$(debian_mirror) || return
        mkdir -p "$cache"
        rm -rf "$base.new"
        debootstrap --variant=minbase "$suite" "$base.new" "$mirror" >&2 || return
        # The same patience with dates, and the same proxy, as this computer's apt.
        apt-config dump --format '%F "%v";%n' Acquire::Check-Date Acquire::Check-Valid-Until Acquire::http::Proxy \
            >"$base.new/etc/apt/apt.conf.d/90computer"
        mv "$base.new" "$base" # A base that is here is a whole one.
    fi
    echo "$base"
}

make_chroot() {
    local folder=$1 suite=$2 base
    shift 2
    base=$(chroot_base "$suite") || return
    rm -rf "$folder"
    mkdir -p "$(dirname "$folder")"
    cp --archive --reflink=auto "$base" "$folder" || return
    # Services do not start in it.
    printf '#!/bin/sh\nexit 101\n' >"$folder/usr/sbin/policy-rc.d"
    chmod +x "$folder/usr/sbin/policy-rc.d"
    in_chroot "$folder" apt-get update --quiet || return
    install_in_chroot "$folder" "$@"
}

# install_in_chroot FOLDER [PACKAGE...]: names or files in the chroot, with what they depend on and nothing else.
install_in_chroot() {
    local folder=$1
    shift
    (($# == 0)) || in_chroot "$folder" env DEBIAN_FRONTEND=noninteractive \
        apt-get install --yes --quiet --no-install-recommends "$@"
}

in_chroot() {
    in_chroot_with "" "" "$@"
}

# in_chroot_with SOURCE TARGET FOLDER COMMAND...: the same with SOURCE bound at TARGET, a path in the chroot.
in_chroot_with() {
    unshare --mount --pid --fork --kill-child --propagation private -- bash -euc "$enter_chroot" in_chroot "$@"
}

# exec_in_chroot_with SOURCE TARGET FOLDER COMMAND...: the command takes the place of this shell, gets its signals and
# may be seen from outside. What it leaves running goes on.
exec_in_chroot_with() {
    exec unshare --mount --propagation private -- bash -euc "$enter_chroot" in_chroot "$@"
}

# shellcheck disable=SC2016 # The shell inside expands them.
enter_chroot='
    source=$1 target=$2 folder=$3
    shift 3
    cp --dereference /etc/resolv.conf "$folder/etc/resolv.conf"
    mount --bind "$folder" "$folder" # A system expects its root to be a mount.
    mount --rbind /dev "$folder/dev"
    mount -t tmpfs -o mode=1777 tmpfs "$folder/dev/shm"
    mount -t proc proc "$folder/proc"
    mount -t tmpfs -o mode=1777 tmpfs "$folder/tmp"
    if [[ -n $source ]]; then
        mkdir -p "$folder$target"
        mount --bind "$source" "$folder$target"
    fi
    exec chroot "$folder" env --ignore-environment PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LC_ALL=C.UTF-8 \
        TERM="${TERM:-dumb}" "$@"
'
