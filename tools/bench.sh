#!/bin/sh
# Runs the benchmarks of the release build; options go to each of the programs
# (e.g. --benchmark_filter=...). Windows are measured offscreen unless a platform is named.
set -eu
cd "$(dirname "$0")/.."
export QT_QPA_PLATFORM="${QT_QPA_PLATFORM:-offscreen}"

vorhanden="$(cmake --build build/release --target help)"
for name in kalvora_bench kalvora_prozessbench kalvora_qtbench; do
    case "$vorhanden" in
    *"$name"*) cmake --build build/release --target "$name" --parallel "$(nproc)" ;;
    esac
done

gelaufen=0
for name in kalvora_bench kalvora_prozessbench kalvora_qtbench; do
    programm="build/release/bin/$name"
    [ -x "$programm" ] || continue
    echo "== $name"
    "$programm" "$@"
    gelaufen=$((gelaufen + 1))
done
[ $gelaufen -gt 0 ] || { echo "No benchmark was built (libbenchmark-dev, libsqlite3-dev)."; exit 1; }
