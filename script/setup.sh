#!/usr/bin/env bash
# Installs what building, running and testing needs: the packages of cmake/packages.txt that are missing here.
# With nothing missing it asks for no rights and no network.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

if ! command -v dpkg-query >/dev/null; then
    echo "setup: this is no Debian system; what cmake/packages.txt names is yours to install" >&2
    exit 0
fi

missing=()
while read -r name; do
    status=$(dpkg-query --show --showformat='${db:Status-Abbrev}' "$name" 2>/dev/null || true)
    [[ $status == ii* ]] || missing+=("$name")
done < <(grep -v -e '^#' -e '^[[:space:]]*$' cmake/packages.txt)

if ((${#missing[@]} == 0)); then
    echo "setup: every package is here"
    exit 0
fi

as_root=(env)
if ((EUID != 0)); then
    command -v sudo >/dev/null || {
        echo "setup: root's rights are needed to install: ${missing[*]}" >&2
        exit 1
    }
    as_root=(sudo env)
fi
echo "setup: installing ${missing[*]}"
"${as_root[@]}" apt-get update --quiet
"${as_root[@]}" DEBIAN_FRONTEND=noninteractive apt-get install --yes --quiet --no-install-recommends "${missing[@]}"
