#!/usr/bin/env bash
# Builds the benchmarks with full optimisation and runs them, each printing its table.
#
#   script/bench.sh [NAME...]   only these, by the names of their files in bench/ (task_ordering_bench)
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

if [[ ${1:-} == --help ]]; then
    print_help "$0"
    exit 0
fi

script/setup.sh
mkdir -p build
build_preset bench >build/bench-build.log 2>&1 || {
    tail -n 40 build/bench-build.log
    exit 1
}

programs=("${@/#/build/bench/}")
(($# > 0)) || programs=(build/bench/*_bench)
for program in "${programs[@]}"; do
    printf '\n== %s\n' "${program##*/}"
    "$program"
done
