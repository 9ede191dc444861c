#!/bin/sh
# Tries every fault in full on the built tests and writes docs/zuverlaessigkeit.md; some minutes.
# Use: zuverlaessigkeit.sh [preset]
set -eu
cd "$(dirname "$0")/.."
programm="build/${1:-release}/bin/kalvora_tests"
[ -x "$programm" ] || { echo "zuverlaessigkeit.sh: no $programm: make zuverlaessigkeit builds it" >&2; exit 1; }

ablage="$(mktemp -d)"
trap 'rm -rf "$ablage"' EXIT

# The rows that the tests of these names report.
zeilen() {
    KALVORA_ZUVERLAESSIGKEIT="$ablage/$1" "$programm" --gtest_brief=1 --gtest_filter="$2" >&2
    cat "$ablage/$1"
}

cat >"$ablage/bericht.md" <<'ENDE'
# Faults tried

```
make zuverlaessigkeit
```

builds the tests, tries every fault and writes this page. The tests that run with all others (`make test`) try the same faults on a
thinner set of calls and with fewer processes.

## Every call of the file system

The whole program does one thing on a disk in memory, and one of its calls of the file system goes wrong: each call in turn for the
faults that a call may meet, each changing call for a lost answer and for the end of the process, each write for a
short one. A power failure takes back what was not synced. Then the fault is over, and fresh processes look: one starts and reads
everything, makes an entry, and two others start behind it. The first run is judged by what the next start makes of it.

- **saved**: no message, or that of success (backup, restore and repair have one); a fresh process reads the new state.
- **told**: the user was refused or the program stopped, with a message. The disk holds the old state or, where the fault came behind
  the work, the new one.
- **ended**: the process was killed. The disk holds the old state or the new one.
- **lost**: neither old nor new, or old without a word. **No start**: a later start was refused, or the next entry did not arrive.

| Operation | Fault | Tried | Saved | Told, old | Told, new | Ended, old | Ended, new | Lost | No start |
|---|---|--:|--:|--:|--:|--:|--:|--:|--:|
ENDE
zeilen stoerungen '*Störungen.*' >>"$ablage/bericht.md"
cat >>"$ablage/bericht.md" <<'ENDE'

## Real processes and file systems

| Fault | Tried | Outcome |
|---|--:|---|
ENDE
zeilen prozesse 'Prozesse.*:Zwei_Plätze.*:Schaden.*:Blicke.*:*/Platte.*:PlatteUndUhr.*' >>"$ablage/bericht.md"
cat "$ablage/bericht.md" >docs/zuverlaessigkeit.md
echo "Written: docs/zuverlaessigkeit.md"
