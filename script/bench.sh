#!/usr/bin/env bash
# Builds the benchmarks with full optimisation, runs them and prints one table: each figure beside its budget, MISSED
# where it is over. Takes some minutes; nothing else should run meanwhile. Fails when a budget is missed.
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
table=build/bench-table.txt
: >build/bench.log
printf '%-70s %8s %-3s %-9s %-13s %s\n' what median '' budget min-max 'ratio of (ms or MB)' | tee "$table"
for program in "${programs[@]}"; do
    "$program" 2>>build/bench.log | tee -a "$table" || {
        tail -n 20 build/bench.log
        exit 1
    }
done

missed=$(grep -c ' MISSED$' "$table" || true)
echo
echo "$(grep -c '<=' "$table") budgets, $missed missed"
((missed == 0))
