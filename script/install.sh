#!/usr/bin/env bash
# Installs Wren Fold from these sources, or removes it again.
#
#   script/install.sh                        for you alone, below ~/.local
#   script/install.sh --system               for everyone on this computer, below /usr/local; asks for root's rights
#   script/install.sh --uninstall            removes what the first one put there
#   script/install.sh --uninstall --system   removes what the second one put there
#   script/install.sh --help                 this text
#
# It builds first; what has been built before needs no network. Tasks and settings are never touched.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

prefix=$HOME/.local
data=${XDG_DATA_HOME:-$HOME/.local/share}
uninstall=false
for option in "$@"; do
    case $option in
    --system) prefix=/usr/local ;;
    --uninstall) uninstall=true ;;
    --help)
        print_help "$0"
        exit 0
        ;;
    *)
        echo "install: unknown option $option (see --help)" >&2
        exit 2
        ;;
    esac
done

# What was put there, one path a line, folders with a slash at the end and before what is in them.
list=$prefix/share/wrenfold/installed
as_owner=()
if [[ $prefix == /usr/local && $EUID != 0 ]]; then
    as_owner=(sudo)
fi

build() {
    [[ -x build/release/wrenfold ]] || script/setup.sh
    build_preset release
}

# remove_installed: removes what the list names, and of the folders those that hold nothing else now.
remove_installed() {
    local path
    while IFS= read -r path; do
        if [[ $path == */ ]]; then
            "${as_owner[@]}" rmdir --ignore-fail-on-non-empty -- "$path"
        else
            "${as_owner[@]}" rm -f -- "$path"
        fi
    done < <(tac "$list")
}

# put: copies an installation made aside, so that what was not there before is known.
put() {
    local folder stage path
    folder=$(mktemp --directory)
    stage=$folder/root
    # shellcheck disable=SC2064 # The folder of now.
    trap "rm -rf '$folder'" EXIT
    DESTDIR=$stage cmake --install build/release --prefix "$prefix" --strip >build/install.log
    mkdir -p "$stage$(dirname "$list")"
    while IFS= read -r path; do
        if [[ ! -d $stage$path ]]; then
            echo "$path"
        elif [[ ! -d $path ]]; then
            echo "$path/"
        fi
    done < <(find "$stage" -mindepth 1 -printf '/%P\n' | sort; echo "$list") >"$folder/installed"
    mv "$folder/installed" "$stage$list"
    while IFS= read -r path; do
        if [[ $path == */ ]]; then
            "${as_owner[@]}" install --directory --mode=755 "$path"
        elif [[ -x $stage$path ]]; then
            "${as_owner[@]}" install --mode=755 "$stage$path" "$path"
        else
            "${as_owner[@]}" install --mode=644 "$stage$path" "$path"
        fi
    done <"$stage$list"
}

# What desktops keep of the folders is brought up to date where there is such a thing.
refresh_caches() {
    local share=$prefix/share
    if [[ -f $share/applications/mimeinfo.cache ]] && command -v update-desktop-database >/dev/null; then
        "${as_owner[@]}" update-desktop-database "$share/applications"
    fi
    if [[ -f $share/icons/hicolor/icon-theme.cache ]] && command -v gtk-update-icon-cache >/dev/null; then
        "${as_owner[@]}" gtk-update-icon-cache --quiet --force --ignore-theme-index "$share/icons/hicolor"
    elif [[ -d $share/icons/hicolor ]]; then
        "${as_owner[@]}" touch "$share/icons/hicolor" # By which desktops see that something in it has changed.
    fi
    # The message bus does not see a folder that was not there when it started.
    if command -v dbus-send >/dev/null; then
        dbus-send --session --type=method_call --dest=org.freedesktop.DBus /org/freedesktop/DBus \
            org.freedesktop.DBus.ReloadConfig 2>/dev/null || true
    fi
}

if $uninstall; then
    if [[ ! -f $list ]]; then
        echo "install: nothing was installed below $prefix by this script" >&2
        exit 1
    fi
    remove_installed
    refresh_caches
    echo "Removed from $prefix. Your tasks and settings stay in ${XDG_CONFIG_HOME:-$HOME/.config}/Wrenfold,"
    echo "candidates for tasks in $data/Wrenfold."
    exit 0
fi

build
if [[ -f $list ]]; then
    remove_installed
fi
put
refresh_caches
echo "Installed: $prefix/bin/wrenfold, and an entry in the desktop's menu."
if [[ :$PATH: != *:$prefix/bin:* ]]; then
    echo "A terminal finds it by that name when $prefix/bin is in its PATH."
fi
