#!/bin/sh
# The whole check of the sources: format, direction of the includes, clang-tidy.
# All three run, so that one look shows everything; fails when one of them did.
# Use: lint.sh [format|includes|tidy]...     "lint.sh formatieren" formats the sources instead
set -eu
cd "$(dirname "$0")/.."
jobs="${JOBS:-$(nproc)}"

# The sources below the given folders, one a line: the tracked ones, or every one there is where
# this is no repository of git's. What is deleted but not yet committed is left out.
quellen() {
    if git rev-parse --git-dir >/dev/null 2>&1; then
        git ls-files -- "$@"
    else
        find "$@" -type f
    fi | grep -E '\.(cpp|h)$' | while IFS= read -r datei; do
        [ ! -f "$datei" ] || echo "$datei"
    done
}

alle_quellen() {
    quellen src tests tools bench
}

# Those of src/ that the release build compiles (no windows where there is no Qt).
gebaute_quellen() {
    quellen src | while IFS= read -r datei; do
        ! grep -qF "/$datei\"" build/release/compile_commands.json || echo "$datei"
    done
}

pruefe_format() {
    alle_quellen | xargs -d '\n' -r clang-format --dry-run -Werror
}

pruefe_formatieren() {
    alle_quellen | xargs -d '\n' -r clang-format -i
}

pruefe_includes() {
    tools/include_richtung_test.sh && tools/include_richtung.sh
}

pruefe_tidy() {
    # Configured anew each time: files may have come since the last build.
    tools/bauen.sh release help >/dev/null || return 1
    if grep -q '/src/ui/qt/' build/release/compile_commands.json; then
        cmake --build build/release --target kalvora_qt_autogen >/dev/null || return 1
    fi
    meldungen="$(mktemp)"
    stand=0
    gebaute_quellen | xargs -d '\n' -r -n 3 -P "$jobs" clang-tidy -p build/release --quiet 2>"$meldungen" || stand=$?
    # Of the other stream only what is no count of suppressed warnings.
    grep -Ev '^[0-9]+ warnings?( and [0-9]+ errors?)? generated\.$' "$meldungen" >&2 || true
    rm -f "$meldungen"
    return "$stand"
}

[ $# -gt 0 ] || set -- format includes tidy
if [ -z "$(alle_quellen)" ]; then
    echo "lint: no sources found"
    exit 1
fi
ergebnis=0
for pruefung in "$@"; do
    echo "lint: $pruefung"
    if ! "pruefe_$pruefung"; then
        echo "lint: $pruefung found faults"
        ergebnis=1
    fi
done
[ $ergebnis -ne 0 ] || echo "lint: done, nothing found"
exit $ergebnis
