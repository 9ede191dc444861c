#!/bin/sh
# Runs all tests of a built preset, windows offscreen. Use: testen.sh [preset] [option of ctest]...
set -eu
cd "$(dirname "$0")/.."
preset="${1:-release}"
[ $# -eq 0 ] || shift

export QT_QPA_PLATFORM=offscreen
# Font and theme libraries below the windows keep memory until the end; that is not ours.
export LSAN_OPTIONS="suppressions=$PWD/tools/lsan.supp:print_suppressions=0"
export UBSAN_OPTIONS="print_stacktrace=1"
exec ctest --test-dir "build/$preset" --output-on-failure --no-tests=error -j"${JOBS:-$(nproc)}" "$@"
