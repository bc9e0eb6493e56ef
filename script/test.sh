#!/usr/bin/env bash
# Builds and tests everything; what is wrong is printed, the whole of it is in build/test-*.log.
#
#   script/test.sh           formatting; unit tests and lints; the same unit tests under the address and
#                            undefined-behaviour sanitizers; the released program on a real desktop session;
#                            installing it, and its Debian package; a short run of every fuzz target
#   script/test.sh --quick   formatting, and every test of the development build once
#   script/test.sh --clang   the same, built by clang
#
# The last line counts what passed and failed: every test, and every build and check as one more.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

quick=false
development=dev # the preset of the development build
case "${1:-}" in
"") ;;
--quick) quick=true ;;
--clang) quick=true development=clang ;;
--help)
    print_help "$0"
    exit 0
    ;;
*)
    echo "test: unknown option $1 (see --help)" >&2
    exit 2
    ;;
esac

passed=0
failed=0

# show_end LOG: what a person needs to see of a failed step.
show_end() {
    tail -n 60 "$1"
    echo "== the whole log: $1"
}

# check NAME COMMAND...: one step that passes or fails as a whole.
check() {
    local name=$1 log=build/test-$1.log
    shift
    echo "== $name"
    if "$@" </dev/null >"$log" 2>&1; then
        passed=$((passed + 1))
    else
        failed=$((failed + 1))
        show_end "$log"
        return 1
    fi
}

# run_tests NAME PRESET [CTEST OPTION...]: runs the preset's tests and adds up what CTest reports.
run_tests() {
    local name=$1 preset=$2 log=build/test-$1.log report=$PWD/build/test-$1.xml status=0 right wrong
    shift 2
    echo "== $name"
    rm -f "$report"
    ctest --preset "$preset" --parallel "$(nproc)" --output-junit "$report" "$@" </dev/null >"$log" 2>&1 || status=$?
    read -r right wrong < <(count_tests "$report")
    if ((status != 0)); then
        show_end "$log"
        ((wrong > 0)) || wrong=1
    fi
    echo "   $right passed, $wrong failed"
    passed=$((passed + right))
    failed=$((failed + wrong))
}

# Prints "PASSED FAILED". A test that did not run has failed, and so has a run without tests or without a report.
count_tests() {
    python3 - "$1" <<'PYTHON'
import sys
import xml.etree.ElementTree as tree
try:
    cases = tree.parse(sys.argv[1]).getroot().findall("testcase")
except (OSError, tree.ParseError):
    cases = []
passed = sum(case.get("status") == "run" for case in cases)
print(passed, len(cases) - passed if cases else 1)
PYTHON
}

check_format() {
    find src tests bench \( -name '*.cpp' -o -name '*.h' \) -print0 |
        xargs --null --no-run-if-empty clang-format --dry-run -Werror
}

# The package is not meant for Debian's own archive, and so closes no bug of its.
check_package() {
    script/package.sh &&
        lintian --allow-root --fail-on error,warning --suppress-tags initial-upload-closes-no-bugs build/wrenfold_*.deb
}

# Every target goes on from its corpus for a few seconds; what it finds stays in build/fuzz.
run_fuzz_targets() {
    local program name
    for program in build/fuzz/fuzz_*; do
        name=${program##*/fuzz_}
        mkdir -p "build/fuzz/found/$name"
        check "fuzz-$name" "$program" -max_total_time=10 -timeout=10 -rss_limit_mb=2048 \
            -dict="tests/fuzz/$name.dict" -artifact_prefix="build/fuzz/found/$name-" "build/fuzz/found/$name" "tests/fuzz/corpus/$name" || true
    done
}

script/setup.sh
mkdir -p build

check format check_format || true

if check "build-$development" build_preset "$development" -DWRENFOLD_WARNINGS_AS_ERRORS=ON; then
    if $quick; then
        run_tests "$development" "$development"
    else
        run_tests dev dev --label-exclude '^desktop$'
    fi
fi

if ! $quick; then
    if check build-asan build_preset asan -DWRENFOLD_WARNINGS_AS_ERRORS=ON; then
        run_tests asan asan
    fi
    if check build-release build_preset release -DWRENFOLD_WARNINGS_AS_ERRORS=ON; then
        # The development build knows the desktop tests; they test the program that they are given.
        WRENFOLD_TESTED_PROGRAM=$PWD/build/release/wrenfold run_tests desktop dev --label-regex '^desktop$'
        check install python3 -B tests/install_test.py || true
        check package check_package || true
    fi
    # Fuzz targets join in as soon as there are any.
    if [[ -f tests/fuzz/CMakeLists.txt ]] && check build-fuzz build_preset fuzz -DWRENFOLD_WARNINGS_AS_ERRORS=ON; then
        run_fuzz_targets
    fi
fi

echo
echo "$passed passed, $failed failed"
((failed == 0))
