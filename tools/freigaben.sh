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
# shellcheck source=tools/freigaben_platz.sh
. tools/freigaben_platz.sh
for programm in kalvora-konsole kalvora-firma; do
    [ -x "$bin/$programm" ] || { echo "$bin/$programm is missing: run \"make build\" first." >&2; exit 1; }
done

ablage="$(mktemp -d)"
# shellcheck disable=SC2317 # called by the trap
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
    # shellcheck disable=SC2094 # a pipe of each direction, and a log that both write
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

# Both have started before the first save of the day: what a mount that remembers the folder's names does to a later
# start is a trial of its own in freigaben_gast.sh.
firma "$erster"
{ sleep 5 && arbeit 1; } | konsole p1 "$erster" >"$ablage/lauf1" &
kind=$!
{ sleep 5 && arbeit 2; } | konsole p2 "$zweiter" >"$ablage/lauf2" || true
wait $kind || true

status=0
for n in 1 2; do
    urteil $n "$erster" || status=1
done
if [ -n "$ergebnis" ]; then
    mkdir -p "$ergebnis"
    cp -r "$ablage"/lauf* "$ablage"/soll* "$erster/plan" "$ergebnis"
fi
[ $status -eq 0 ] && echo "Nothing was lost unreported." || echo "ROWS WERE LOST WITHOUT A WORD." >&2
exit $status
