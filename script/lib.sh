# What the scripts share. Sourced, never run; it leaves the shell in the project's folder.
# shellcheck shell=bash

cd "$(dirname "${BASH_SOURCE[0]}")/.." || exit

# The lines of a script's head comment, as its help text.
print_help() {
    sed -n '2,/^[^#]/{s/^# \{0,1\}//p}' "$1"
}

# build_preset PRESET [CMAKE OPTION...]: configures the preset and builds it.
build_preset() {
    cmake --preset "$@" && cmake --build --preset "$1" --parallel "$(nproc)"
}
