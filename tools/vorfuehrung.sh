#!/bin/sh
# Shows the program at work, from an empty folder to entries on the disk: the commands of the console, what it
# answered, and the files before and after in plain text. The day is 4 November 2026; times of day, which
# differ with each run, show as hh:mm:ss. Nothing outside a temporary folder is touched.
# Use: vorfuehrung.sh [preset]
set -eu
cd "$(dirname "$0")/.."
bin="$PWD/build/${1:-release}/bin"
for programm in kalvora-konsole kalvora-firma kalvora-klartext; do
    [ -x "$bin/$programm" ] || { echo "$bin/$programm is missing: run \"make build\" first." >&2; exit 1; }
done

plan="$(mktemp -d)"
trap 'rm -rf "$plan"' EXIT
mkdir "$plan/platz" "$plan/temp"
export USERNAME=Muster KALVORA_SYSTEMPFAD="$plan/platz" TEMP="$plan/temp" LC_ALL=C

titel() {
    printf '\n=== %s\n\n' "$*"
}

# Times of day and the temporary folder are not the same twice.
gleichmachen() {
    sed -e "s|$plan|PLAN|g" -e 's/[0-9][0-9]:[0-9][0-9]:[0-9][0-9]\([| ]\)/hh:mm:ss\1/g'
}

# The month's table with narrow columns: of the headings the weekdays' and the days' own line.
enger() {
    awk -F '\t' '
        function breite(text) { gsub(/[\200-\277]/, "", text); return length(text) }
        function zelle(text, n) { return sprintf("%s%*s", text, n - breite(text), "") }
        function reihe(teil, i, stueck, zeile) {
            zeile = zelle(teil == 1 ? $1 : "", 22)
            for (i = 2; i <= NF; ++i) {
                split($i, stueck, /\\n/)
                zeile = zeile zelle(stueck[teil], 3)
            }
            sub(/ +$/, "", zeile)
            print zeile
        }
        NF < 30 { print; next }
        { reihe(1) }
        index($0, "\\n") { reihe(2) }'
}

# Runs the commands that stand on standard input. They are shown first, behind ">".
konsole() {
    cat >"$plan/skript"
    sed 's/^/> /' "$plan/skript"
    "$bin/kalvora-konsole" --skript "$plan/skript" /nowelcomescreen /d:041126 /path "$plan" |
        enger | gleichmachen
}

klartext() {
    for datei in "$@"; do
        echo "-- ${datei#"$plan/"}"
        "$bin/kalvora-klartext" "$datei" | gleichmachen
    done
}

daten="$plan/Data"

titel "Erster Start in einem leeren Ordner"
konsole <<'ENDE'
zeige lblStatus(1)
zeige lblStatus(2)
zeige msgFlexGrid
klick cmdAuswahl(1)
ENDE
echo
echo "Angelegt: $(find "$daten" -type f -name '*Data.dat' | wc -l) Monate und"
(cd "$plan" && find Data -type f ! -name '*Data.dat' | sort)
klartext "$daten/Konfigdaten.dat" "$daten/Mitarbeiterdaten.dat" "$daten/Feiertage.dat" \
    "$daten/2611 261104 Data.dat" "$daten/Logs/2611 Kalvora.log"

cp "$daten/Konfigdaten.dat" "$daten/Feiertage.dat" "$plan/temp/"

titel "Eine Belegschaft (aus einer erfundenen Firma)"
"$bin/kalvora-firma" --ziel "$plan/firma" --mitarbeiter 18 --seed 3 --heute 041126 --benutzer Muster >"$plan/ausgabe"
cp "$plan/firma/Data/Mitarbeiterdaten.dat" "$daten/"
klartext "$daten/Mitarbeiterdaten.dat"

titel "Drei Tage Dienstreise; Urlaub über ein Wochenende: Samstag und Sonntag bleiben frei"
konsole <<'ENDE'
maus links msgFlexGrid "Graf Felix" 10 bis "Graf Felix" 12
klick cmdAuswahl(4)
maus links msgFlexGrid "Voigt Maria" 19 bis "Voigt Maria" 24
klick cmdAuswahl(1)
zeige msgFlexGrid
ENDE
klartext "$daten/2611 261104 Data.dat" "$daten/Logs/2611 Kalvora.log"

titel "Den Monat wechseln und über Weihnachten eintragen: die Feiertage bleiben frei"
konsole <<'ENDE'
wähle tabMonate Dez.
maus links msgFlexGrid "Voigt Maria" 23 bis "Voigt Maria" 30
klick cmdAuswahl(1)
zelle msgFlexGrid "Voigt Maria" 24
zelle msgFlexGrid "Voigt Maria" 25
zeige msgFlexGrid
wähle tabJahre 2027
zeige tabMonate
ENDE
klartext "$daten/2612 261104 Data.dat"

titel "Ein vergangener Tag: erst Nein, dann Ja; danach wird nicht mehr gefragt"
konsole <<'ENDE'
maus links msgFlexGrid "Behrens Niels" 2
antworte nein
klick cmdAuswahl(5)
zelle msgFlexGrid "Behrens Niels" 2
antworte ja
klick cmdAuswahl(5)
zelle msgFlexGrid "Behrens Niels" 2
maus links msgFlexGrid "Behrens Niels" 3
klick cmdAuswahl(5)
ENDE

titel "Mehrere Zeilen, mit einer Überschrift dazwischen"
konsole <<'ENDE'
maus links msgFlexGrid "Seidel Zoë" 26 bis "Müller Claudia" 27
klick cmdAuswahl(3)
zeige msgFlexGrid
ENDE

titel "Löschen, über das Wochenende hinweg; ein freier Tag durch Doppelklick"
konsole <<'ENDE'
maus links msgFlexGrid "Voigt Maria" 20 bis "Voigt Maria" 23
klick cmdAuswahl(7)
maus doppel msgFlexGrid "Graf Felix" 13
maus links msgFlexGrid "Graf Felix" 13
klick cmdAuswahl(7)
zeige msgFlexGrid
ENDE

titel "Die Dateien danach"
klartext "$daten/2611 261104 Data.dat" "$daten/2612 261104 Data.dat" "$daten/Logs/2611 Kalvora.log"
for name in Konfigdaten.dat Feiertage.dat; do
    cmp "$plan/temp/$name" "$daten/$name"
    echo "-- Data/$name: unverändert"
done
