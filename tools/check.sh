#!/bin/bash
# Sets up a Debian 12 machine and runs every test: the form of the sources, GCC with the tools, Clang, no optimisation,
# sanitizers, a short fuzzing run, and the Windows build under Wine; then compares the digests of all results between
# the builds. Ends with a line that counts.
set -uo pipefail
cd "$(dirname "$0")/.." || exit 1
sh tools/setup.sh || exit 1

passed=0
failed=0
step() {  # step NAME COMMAND...
    local name=$1
    shift
    echo "== $name"
    local start=$SECONDS
    if "$@"; then
        passed=$((passed + 1))
        echo "== $name: passed in $((SECONDS - start)) s"
    else
        failed=$((failed + 1))
        echo "== $name: FAILED"
    fi
}

build() { cmake --preset "$1" >"/tmp/okt-$1.log" 2>&1 || { cat "/tmp/okt-$1.log"; return 1; }; cmake --build --preset "$1"; }
suite() { ctest --test-dir "$1" --output-on-failure --timeout 1500 -j "$(nproc)"; }
build_and_test() { build "$1" && suite "$2"; }
same_digests() {
    build/tests/okt_digest >/tmp/okt-digest-gcc
    build-clang/tests/okt_digest >/tmp/okt-digest-clang
    build-debug/tests/okt_digest >/tmp/okt-digest-unoptimised
    WINEPREFIX=$PWD/build-windows/wine WINEDEBUG=-all wine build-windows/okt_digest.exe | tr -d '\r' >/tmp/okt-digest-windows
    local result=0
    for other in clang unoptimised windows; do
        diff /tmp/okt-digest-gcc "/tmp/okt-digest-$other" >/tmp/okt-digest-diff ||
            { echo "GCC -O3 and $other differ:"; head -n 20 /tmp/okt-digest-diff; result=1; }
    done
    [ "$(wc -l </tmp/okt-digest-gcc)" -gt 0 ] || result=1
    return $result
}

step "form of the sources and the reference" sh tools/style.sh
step "GCC, tools, accuracy, installation" build_and_test dev build
step "Clang" build_and_test clang build-clang
export OKT_TEST_ELEMENTS=40000  # of each comparison with a model, in the two slow builds
step "no optimisation" build_and_test debug build-debug
step "sanitizers and twenty seconds of fuzzing" build_and_test sanitize build-sanitize
unset OKT_TEST_ELEMENTS
step "Windows under Wine" build_and_test windows build-windows
step "the same bits from every build" same_digests

echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ]
