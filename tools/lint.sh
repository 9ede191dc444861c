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

# The tracked sources that are part of the release build (no windows where there is no Qt).
gebaute_quellen() {
    quellen 'src/*.cpp' 'tools/*.cpp' | tr '\0' '\n' | while IFS= read -r datei; do
        ! grep -qF "/$datei\"" build/release/compile_commands.json || printf '%s\0' "$datei"
    done
}

pruefe_tidy() {
    [ -f build/release/compile_commands.json ] || tools/bauen.sh release help >/dev/null || return 1
    if grep -q '/src/ui/qt/' build/release/compile_commands.json; then
        cmake --build build/release --target kalvora_qt_autogen >/dev/null || return 1
    fi
    meldungen="$(mktemp)"
    stand=0
    gebaute_quellen | xargs -0 -r -n 3 -P "$jobs" clang-tidy -p build/release --quiet 2>"$meldungen" || stand=$?
    # Of the other stream only what is no count of suppressed warnings.
    grep -Ev '^[0-9]+ warnings?( and [0-9]+ errors?)? generated\.$' "$meldungen" >&2 || true
    rm -f "$meldungen"
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
