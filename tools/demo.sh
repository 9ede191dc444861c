#!/bin/sh
# Opens the built program on a made-up company: the window where there is a display, else the
# console. The company is made once; the workstation's own files stay in the build folder too, so
# that the user's own setting is not touched. Use: demo.sh [preset]
set -eu
cd "$(dirname "$0")/.."
ordner="$PWD/build/${1:-release}"

if [ ! -d "$ordner/demo/Data" ]; then
    echo "Making the demo company in $ordner/demo"
    if ! "$ordner/bin/kalvora-firma" --ziel "$ordner/demo" --mitarbeiter 40 --seed 7; then
        # Half a company must not be taken for a whole one the next time.
        rm -rf "$ordner/demo"
        exit 1
    fi
fi
mkdir -p "$ordner/demo-platz"
export KALVORA_SYSTEMPFAD="$ordner/demo-platz"

if [ ! -x "$ordner/bin/kalvora" ]; then
    echo "Built without Qt: opening the console."
elif [ -z "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    echo "No display: opening the console."
else
    exec "$ordner/bin/kalvora" /path "$ordner/demo"
fi
exec "$ordner/bin/kalvora-konsole" /path "$ordner/demo"
