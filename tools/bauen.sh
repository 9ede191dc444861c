#!/bin/sh
# Configures and builds a preset. Use: bauen.sh <preset> [target]...
# Ninja where it is installed; a folder that is configured already keeps its generator.
# WERROR=ON makes warnings errors, JOBS sets the number of compilations at once.
set -eu
cd "$(dirname "$0")/.."
preset="$1"
shift
# Called from make: its flags are not meant for the build's own make.
unset MAKEFLAGS MFLAGS MAKELEVEL

if [ -z "${CMAKE_GENERATOR:-}" ] && command -v ninja >/dev/null 2>&1; then
    export CMAKE_GENERATOR=Ninja
fi
cmake --preset "$preset" -DKALVORA_WERROR="${WERROR:-OFF}"

ziele=""
for ziel in "$@"; do ziele="$ziele --target $ziel"; done
# shellcheck disable=SC2086 # a list of options
cmake --build "build/$preset" --parallel "${JOBS:-$(nproc)}" $ziele
