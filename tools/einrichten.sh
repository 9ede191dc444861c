#!/bin/sh
# Installs the Debian packages that are missing for the given purposes; does nothing when all are
# there. Use: einrichten.sh [bau|fenster|test|lint|bench|fuzz]...
# Without the packages of "fenster" the work goes on with core and console; all others are needed.
set -eu

pakete() {
    case "$1" in
    bau) echo "g++ cmake ninja-build make" ;;
    fenster) # the toolkit's own German words too; its part for Wayland only where nothing else is
        echo "qt6-base-dev qt6-translations-l10n fonts-dejavu-core"
        [ -z "${WAYLAND_DISPLAY:-}" ] || [ -n "${DISPLAY:-}" ] || echo "qt6-wayland"
        ;;
    test) echo "libgtest-dev libgmock-dev" ;;
    lint) echo "clang-format clang-tidy git" ;;
    bench) echo "libbenchmark-dev libsqlite3-dev" ;;
    fuzz) echo "clang libclang-rt-14-dev" ;;
    *) echo "einrichten.sh: unknown purpose \"$1\"" >&2; exit 2 ;;
    esac
}

vorhanden() {
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

# The packages of a purpose that are not installed.
fehlende() {
    for paket in $(pakete "$1"); do
        vorhanden "$paket" || printf '%s ' "$paket"
    done
}

als_root() {
    if [ "$(id -u)" -eq 0 ]; then
        "$@"
    elif command -v sudo >/dev/null 2>&1; then
        sudo "$@"
    else
        echo "Installing packages needs root, and there is no sudo." >&2
        return 1
    fi
}

aktualisiert=nein
apt() {
    als_root env DEBIAN_FRONTEND=noninteractive apt-get -q -o DPkg::Lock::Timeout=300 "$@" </dev/null
}

# A list that could not be fetched is no end: the packages may be known already.
installieren() {
    if [ $aktualisiert = nein ]; then
        aktualisiert=ja
        apt update || echo "The package lists could not be brought up to date; going on with the old ones."
    fi
    apt install -y --no-install-recommends "$@"
}

# Whether compiling works although packages are missing (compiler or cmake from elsewhere).
bau_moeglich() {
    command -v c++ >/dev/null 2>&1 && command -v cmake >/dev/null 2>&1 &&
        { command -v ninja >/dev/null 2>&1 || command -v make >/dev/null 2>&1; }
}

einrichten() {
    fehlt="$(fehlende "$1")"
    [ -n "$fehlt" ] || return 0
    echo "Installing for \"$1\": $fehlt"
    # shellcheck disable=SC2086 # a list of names
    installieren $fehlt && return 0
    case "$1" in
    fenster)
        echo "Qt 6 could not be installed: going on without the windows (core and console only)."
        ;;
    bau)
        bau_moeglich && return 0
        echo "No compiler or no cmake, and they could not be installed. Please run as root:" >&2
        echo "    apt-get install $fehlt" >&2
        return 1
        ;;
    *)
        echo "Missing for \"$1\", and they could not be installed. Please run as root:" >&2
        echo "    apt-get install $fehlt" >&2
        return 1
        ;;
    esac
}

[ $# -gt 0 ] || set -- bau fenster test
if ! command -v dpkg-query >/dev/null 2>&1 || ! command -v apt-get >/dev/null 2>&1; then
    echo "This is no Debian: no packages are installed; using what is there."
    exit 0
fi
for zweck in "$@"; do
    pakete "$zweck" >/dev/null
    einrichten "$zweck"
done
