#!/bin/sh
# Runs each fuzz target for FUZZ_SECONDS (default 30) on a corpus of its own, started from
# tests/fuzz/seeds/<target>/ where there is one. Inputs that break something are kept in
# build/fuzz/funde/. Use: fuzz.sh [target]...
set -eu
cd "$(dirname "$0")/.."
sekunden="${FUZZ_SECONDS:-30}"
funde="build/fuzz/funde"
mkdir -p "$funde"

if [ $# -eq 0 ]; then
    for quelle in tests/fuzz/*.cpp; do
        [ -f "$quelle" ] && set -- "$@" "$(basename "$quelle" .cpp)"
    done
fi
[ $# -gt 0 ] || echo "No fuzz targets."

ergebnis=0
for ziel in "$@"; do
    korpus="$(mktemp -d)"
    protokoll="build/fuzz/$ziel.log"
    set -- "$korpus"
    [ ! -d "tests/fuzz/seeds/$ziel" ] || set -- "$korpus" "tests/fuzz/seeds/$ziel"
    if "build/fuzz/bin/$ziel" -max_total_time="$sekunden" -timeout=10 -rss_limit_mb=2048 -print_final_stats=1 \
        -artifact_prefix="$funde/$ziel-" "$@" >"$protokoll" 2>&1; then
        laeufe="$(sed -n 's/^stat::number_of_executed_units: *//p' "$protokoll")"
        echo "fuzz: $ziel: nothing found in ${laeufe:-?} runs"
    else
        ergebnis=1
        tail -n 60 "$protokoll"
        echo "fuzz: $ziel: FAULT, input in $funde, report in $protokoll"
    fi
    rm -rf "$korpus"
done
exit $ergebnis
