#!/bin/sh
# Three damages and their repairs, as a user meets them: a damaged configuration, a damaged month, a deleted
# staff file. Each time the next start asks, the repair ends the program, and the start behind it works again,
# with everything that was there before. Ends with an error where it does not. Nothing outside a temporary
# folder is touched.
# Use: vorfuehrung_reparatur.sh [preset]
set -eu
cd "$(dirname "$0")/.."
bin="$PWD/build/${1:-release}/bin"
for programm in kalvora-konsole kalvora-firma kalvora-klartext; do
    [ -x "$bin/$programm" ] || { echo "$bin/$programm is missing: run \"make build\" first." >&2; exit 1; }
done

plan="$(mktemp -d)"
trap 'rm -rf "$plan"' EXIT
mkdir "$plan/platz" "$plan/temp" "$plan/vorher"
export USERNAME=Muster KALVORA_SYSTEMPFAD="$plan/platz" TEMP="$plan/temp" LC_ALL=C
daten="$plan/Data"

titel() {
    printf '\n=== %s\n\n' "$*"
}

# Times of day and the temporary folder are not the same twice.
gleichmachen() {
    sed -E -e "s|$plan|PLAN|g" -e 's/(Sicherung vom) [0-9.]{8}, [0-9:]{8} Uhr/\1 tt.mm.jj, hh:mm:ss Uhr/g' -e 's/[0-9]{2}:[0-9]{2}( Uhr)/hh:mm\1/g' -e 's/(defekt [0-9]{6} )[0-9]{6}/\1hhmmss/g'
}

# Runs the commands that stand on standard input on that day of November 2026.
konsole() {
    cat >"$plan/skript"
    sed 's/^/> /' "$plan/skript"
    "$bin/kalvora-konsole" --skript "$plan/skript" /nowelcomescreen "/d:${tag}1126" /path "$plan" >"$plan/ausgabe" || true
    gleichmachen <"$plan/ausgabe"
}

# What a file says. Of a month the last row of each person counts, and not the order of the persons.
klartext() {
    "$bin/kalvora-klartext" "$1" |
        awk -F : '/^A:/ { letzte[$2] = $0; next } { print } END { for (wer in letzte) print letzte[wer] }' |
        sort
}

# What the shared files say now must be what they said before the damage. The scrambled bytes may differ.
merken() {
    rm -f "$plan/vorher/"*
    for datei in "$daten"/*.dat; do
        klartext "$datei" >"$plan/vorher/$(basename "$datei")"
    done
}
vergleichen() {
    for datei in "$plan"/vorher/*.dat; do
        klartext "$daten/$(basename "$datei")" | cmp -s - "$datei" ||
            { echo "$(basename "$datei"): not what it was" >&2; exit 1; }
    done
    echo
    echo "Alle Dateien sagen wieder, was sie vor dem Schaden sagten. Im Datenordner liegt noch:"
    (cd "$daten" && find . -maxdepth 1 -name '* defekt *' -type f) | sort | gleichmachen
}
neuer_start() {
    printf '\n%s\n\n' "Der nächste Start: der Administrator erfährt, was war, und hebt die Sperre auf"
    konsole <<'ENDE'
antworte ja
maus links msgFlexGrid 2 24
klick cmdAuswahl(1)
zelle msgFlexGrid 2 24
maus links msgFlexGrid 2 24
klick cmdAuswahl(7)
ENDE
    grep -q '^ENDE$' "$plan/ausgabe" && grep -q '^"U" ' "$plan/ausgabe" ||
        { echo "the program does not work again" >&2; exit 1; }
}

titel "Eine erfundene Firma, ein Eintrag, und am nächsten Tag ein Start: er macht das Backup"
"$bin/kalvora-firma" --ziel "$plan" --mitarbeiter 12 --seed 3 --heute 161126 --benutzer Muster >/dev/null
tag=16
konsole <<'ENDE'
maus links msgFlexGrid 2 19 bis 2 20
klick cmdAuswahl(1)
ENDE
tag=17
konsole </dev/null
(cd "$daten/Backups" && ls | sed 's/ [0-9]* / hhmmss /')

titel "1. Konfigdaten.dat: ein Byte der ersten Zeile ist ein anderes"
merken
printf '\001' | dd of="$daten/Konfigdaten.dat" bs=1 seek=2 conv=notrunc 2>/dev/null
konsole <<'ENDE'
antworte ja
ENDE
vergleichen
neuer_start

titel "2. Der Monat: in der Mitte stehen Nullen, und die erste Zeile ist weg"
monat="$(ls "$daten" | grep '^2611 .* Data.dat$' | tail -1)"
merken
dd if=/dev/zero of="$daten/$monat" bs=1 count=9 conv=notrunc 2>/dev/null
konsole <<'ENDE'
antworte ja
ENDE
vergleichen
neuer_start

titel "3. Mitarbeiterdaten.dat: gelöscht"
merken
rm "$daten/Mitarbeiterdaten.dat"
konsole <<'ENDE'
antworte ja
ENDE
vergleichen
neuer_start
