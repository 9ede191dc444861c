#!/bin/sh
# Two workstations on one shared folder, each through a mount of its own and saving once a second: what a
# workstation has shown as saved, a fresh one must show too, or its user was told.
# Use: freigaben.sh [-p preset] [-s seconds] [-o FOLDER] [FOLDER1 FOLDER2]
#   -o  where the transcripts and the data are left; they are thrown away when left out
#   FOLDER1, FOLDER2: two ways to the same empty folder, such as two mounts of one NFS or SMB share
#   without them the script mounts a temporary folder twice through sshfs, where the machine can
set -eu
cd "$(dirname "$0")/.."
preset=release
sekunden=300
ergebnis=""
while getopts p:s:o: option; do
    case "$option" in
    p) preset="$OPTARG" ;;
    s) sekunden="$OPTARG" ;;
    o) ergebnis="$OPTARG" ;;
    *) exit 2 ;;
    esac
done
shift $((OPTIND - 1))
bin="$PWD/build/$preset/bin"
for programm in kalvora-konsole kalvora-firma; do
    [ -x "$bin/$programm" ] || { echo "$bin/$programm is missing: run \"make build\" first." >&2; exit 1; }
done

ablage="$(mktemp -d)"
aufraeumen() {
    for n in 1 2; do
        [ -d "$ablage/sicht$n" ] && mountpoint -q "$ablage/sicht$n" && fusermount3 -u "$ablage/sicht$n"
    done
    rm -rf "$ablage"
}
trap aufraeumen EXIT
trap 'exit 1' INT TERM

uebersprungen() {
    echo "Skipped: $1. Give two mounts of one share as arguments to try it."
    exit 0
}

sftp_server() {
    for pfad in /usr/lib/openssh/sftp-server /usr/lib/ssh/sftp-server /usr/libexec/openssh/sftp-server; do
        [ ! -x "$pfad" ] || { echo "$pfad"; return 0; }
    done
    return 1
}

# Mounts the folder through a server of its own, which needs no daemon and no login.
einhaengen() {
    mkdir "$ablage/sicht$1"
    mkfifo "$ablage/rohr$1"
    sshfs ":$ablage/platte" "$ablage/sicht$1" -o passive -f <"$ablage/rohr$1" 2>>"$ablage/sshfs" |
        "$server" >"$ablage/rohr$1" 2>>"$ablage/sshfs" &
    for _ in 1 2 3 4 5 6 7 8 9 10; do
        ! mountpoint -q "$ablage/sicht$1" || return 0
        sleep 0.3
    done
    return 1
}

if [ $# -eq 2 ]; then
    erster="$1" zweiter="$2"
elif [ $# -eq 0 ]; then
    for werkzeug in sshfs fusermount3 mountpoint; do
        command -v "$werkzeug" >/dev/null || uebersprungen "$werkzeug is not installed"
    done
    [ -c /dev/fuse ] || uebersprungen "there is no /dev/fuse"
    server="$(sftp_server)" || uebersprungen "sftp-server is not installed"
    mkdir "$ablage/platte"
    for n in 1 2; do
        einhaengen $n || uebersprungen "sshfs cannot mount here ($(head -n 1 "$ablage/sshfs"))"
    done
    erster="$ablage/sicht1" zweiter="$ablage/sicht2"
else
    echo "freigaben.sh: two folders, or none" >&2
    exit 2
fi
touch "$erster/gemeinsam"
[ -e "$zweiter/gemeinsam" ] || { echo "freigaben.sh: $erster and $zweiter are not one folder" >&2; exit 2; }
rm "$erster/gemeinsam"

tag=18 # of November 2026; today is the 16th
reihen=$((2 * sekunden + 2))
"$bin/kalvora-firma" --ziel "$erster/plan" --mitarbeiter $reihen --heute 161126 --benutzer Muster >/dev/null

konsole() {
    platz="$1" ordner="$2"
    mkdir -p "$ablage/$platz/temp"
    USERNAME=Muster KALVORA_SYSTEMPFAD="$ablage/$platz" TEMP="$ablage/$platz/temp" \
        "$bin/kalvora-konsole" --echtzeit /nowelcomescreen /d:161126 /path "$ordner/plan"
}
# One row a second, each time the next but one. Both have started before the first save of the day: a mount that
# remembers the folder's names would show a version that is gone by then.
arbeit() {
    n=0
    sleep 5
    while [ $n -lt "$sekunden" ]; do
        reihe=$((2 * n + $1))
        printf 'maus links msgFlexGrid %s %s\nklick cmdAuswahl(1)\nzelle msgFlexGrid %s %s\n' \
            $reihe $tag $reihe $tag
        n=$((n + 1))
        sleep 1
    done
}
nachschau() {
    n=0
    while [ $n -lt "$sekunden" ]; do
        echo "zelle msgFlexGrid $((2 * n + $1)) $tag"
        n=$((n + 1))
    done
}
zellen() {
    grep '&H' "$1" | sed 's/ &H.*//'
}

arbeit 1 | konsole p1 "$erster" >"$ablage/lauf1" &
kind=$!
arbeit 2 | konsole p2 "$zweiter" >"$ablage/lauf2" || true
wait $kind || true

status=0
for n in 1 2; do
    nachschau $n | konsole p3 "$erster" >"$ablage/soll$n" || true
    zellen "$ablage/lauf$n" >"$ablage/gezeigt$n"
    zellen "$ablage/soll$n" >"$ablage/da$n"
    gespeichert="$(grep -c '[^"]' "$ablage/gezeigt$n" || true)"
    fehlend="$(paste -d '\t' "$ablage/gezeigt$n" "$ablage/da$n" | awk -F '\t' '$1 != $2' | wc -l)"
    grep '^HINWEIS' "$ablage/lauf$n" | grep -v 'Überschriftzeile' >"$ablage/hinweise$n" || true
    gemeldet="$(wc -l <"$ablage/hinweise$n")"
    echo "Workstation $n: $gespeichert of $sekunden rows shown as saved, $fehlend of them missing, $gemeldet messages"
    sed 's/^/    /' "$ablage/hinweise$n"
    if [ "$gespeichert" -eq 0 ] || { [ "$fehlend" -gt 0 ] && [ "$gemeldet" -eq 0 ]; }; then
        status=1
    fi
done
if [ -n "$ergebnis" ]; then
    mkdir -p "$ergebnis"
    cp -r "$ablage"/lauf* "$ablage"/soll* "$erster/plan" "$ergebnis"
fi
[ $status -eq 0 ] && echo "Nothing was lost unreported." || echo "ROWS WERE LOST WITHOUT A WORD." >&2
exit $status
