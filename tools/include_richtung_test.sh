#!/bin/sh
# Shows the include check a tree with known faults: it must name each of them, and nothing else.
set -eu
werkzeug="$(cd "$(dirname "$0")" && pwd)/include_richtung.sh"
baum="$(mktemp -d)"
trap 'rm -rf "$baum"' EXIT

# datei <path> <include>...: a source file with these includes, each as written
datei() {
    pfad="$baum/$1"
    shift
    mkdir -p "$(dirname "$pfad")"
    for i in "$@"; do printf '#include %s\n' "$i"; done >"$pfad"
}

datei base/text.h '<string>'
datei platform/file_system.h '"base/text.h"'
datei platform/posix/posix.cpp '"platform/file_system.h"' '<unistd.h>' '<sys/stat.h>'
datei plan/monat.h '"base/text.h"' '"files/zeilen.h"' '<qsort.hpp>'
datei files/zeilen.h '"base/text.h"'
datei files/nachbar.cpp '"zeilen.h"'
datei admin/verwaltung.h '"plan/monat.h"'
datei frame/programm.h '"admin/verwaltung.h"'
datei ui/konsole/skript.h '"frame/programm.h"' '<unistd.h>'
datei ui/qt/fenster.cpp '"frame/programm.h"' '<QWidget>' '<QtCore/QString>' '"ui_frmKalvora.h"' '"fenster.moc"'
datei app/konsole_main.cpp '"ui/konsole/skript.h"'
datei app/kalvora_main.cpp '"ui/qt/fenster.h"' '<QApplication>'

if ! "$werkzeug" "$baum" >"$baum/ausgabe"; then
    echo "a sound tree was refused:"; cat "$baum/ausgabe"; exit 1
fi

datei base/hoch.h '"files/zeilen.h"'
datei platform/hoch.h '"platform/posix/posix.h"'
datei files/hoch.cpp '<vector>' '  "plan/monat.h"'
datei plan/fenster.cpp '<QString>' '<QtWidgets/QLabel>' '<unistd.h>'
datei print/druck.cpp '"admin/verwaltung.h"'
datei safety/rollen.cpp '"frame/programm.h"'
datei ui/konsole/hoch.cpp '"ui/qt/fenster.h"' '"QWidget"'
datei app/konsole_teil.cpp '<QApplication>'
datei base/relativ.h '"../plan/monat.h"'
datei neu/etwas.h '<string>'

cat >"$baum/soll" <<'ENDE'
src/app/konsole_teil.cpp:1: Qt below the windows: <QApplication>
src/base/hoch.h:1: arrow upwards: base -> files (files/zeilen.h)
src/base/relativ.h:1: include from the root of src: "../plan/monat.h"
src/files/hoch.cpp:2: arrow upwards: files -> plan (plan/monat.h)
src/neu/etwas.h:0: lies on no floor
src/plan/fenster.cpp:1: Qt below the windows: <QString>
src/plan/fenster.cpp:2: Qt below the windows: <QtWidgets/QLabel>
src/plan/fenster.cpp:3: system call below the front ends: <unistd.h>
src/platform/hoch.h:1: arrow upwards: platform -> platform/posix (platform/posix/posix.h)
src/print/druck.cpp:1: arrow to a sibling: print -> admin (admin/verwaltung.h)
src/safety/rollen.cpp:1: arrow upwards: safety -> frame (frame/programm.h)
src/ui/konsole/hoch.cpp:1: arrow to a sibling: ui/konsole -> ui/qt (ui/qt/fenster.h)
src/ui/konsole/hoch.cpp:2: Qt below the windows: <QWidget>
13 include(s) in a forbidden direction
ENDE
if "$werkzeug" "$baum" >"$baum/ausgabe"; then
    echo "a faulty tree was accepted"; exit 1
fi
diff -u "$baum/soll" "$baum/ausgabe"
echo "Include check: every planted fault found"
