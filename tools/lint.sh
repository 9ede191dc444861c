#!/bin/sh
# The whole check of the sources: format, direction of the includes, clang-tidy.
# All three run, so that one look shows everything; fails when one of them did.
# Use: lint.sh [format|includes|tidy]...
set -eu
cd "$(dirname "$0")/.."
jobs="${JOBS:-$(nproc)}"

# Tracked sources below the given folders, NUL-separated.
quellen() {
    git ls-files -z -- "$@"
}

pruefe_format() {
    quellen '*.cpp' '*.h' | xargs -0 -r clang-format --dry-run -Werror
}

pruefe_includes() {
    tools/include_richtung_test.sh && tools/include_richtung.sh
}

# The front ends' sources count only where they are part of the build (no Qt, no windows).
pruefe_tidy() {
    [ -f build/release/compile_commands.json ] || tools/bauen.sh release help >/dev/null || return 1
    if grep -q '/src/ui/qt/' build/release/compile_commands.json; then
        cmake --build build/release --target kalvora_qt_autogen >/dev/null || return 1
    fi
    liste="$(mktemp)"
    quellen 'src/*.cpp' 'tools/*.cpp' >"$liste"
    tr '\0' '\n' <"$liste" | while IFS= read -r datei; do
        grep -qF "/$datei\"" build/release/compile_commands.json && printf '%s\0' "$datei"
    done | xargs -0 -r -n 3 -P "$jobs" clang-tidy -p build/release --quiet 2>"$liste" && stand=0 || stand=$?
    # Of the other stream only what is no count of suppressed warnings.
    grep -Ev '^[0-9]+ warnings?( and [0-9]+ errors?)? generated\.$' "$liste" >&2 || true
    rm -f "$liste"
    return $stand
}

[ $# -gt 0 ] || set -- format includes tidy
ergebnis=0
for pruefung in "$@"; do
    echo "lint: $pruefung"
    if ! "pruefe_$pruefung"; then
        echo "lint: $pruefung found faults"
        ergebnis=1
    fi
done
[ $ergebnis -ne 0 ] || echo "lint: nothing found"
exit $ergebnis
