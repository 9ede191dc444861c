# Sourced by freigaben.sh and freigaben_gast.sh: what ONE workstation does on ONE mount, and the judgement of what
# it has shown. The caller sets bin (folder of the programs), ablage (a local folder) and sekunden.
# shellcheck shell=sh disable=SC2154
tag=18 # of November 2026: the column that gets the entries; today is the 16th
heute=161126

# A company whose first rows are enough for two workstations and a row a second.
firma() { # folder
    "$bin/kalvora-firma" --ziel "$1/plan" --mitarbeiter $((2 * sekunden + 2)) --heute $heute --benutzer Muster \
        >/dev/null
}
konsole() { # workstation, folder; commands come from standard input
    mkdir -p "$ablage/$1/temp"
    USERNAME=Muster KALVORA_SYSTEMPFAD="$ablage/$1" TEMP="$ablage/$1/temp" \
        "$bin/kalvora-konsole" --echtzeit /nowelcomescreen /d:$heute /path "$2/plan"
}
eintragen() { # row
    printf 'maus links msgFlexGrid %s %s\nklick cmdAuswahl(1)\nzelle msgFlexGrid %s %s\n' "$1" $tag "$1" $tag
}
# One row a second, each time the next but one.
arbeit() { # workstation, 1 or 2
    n=0
    while [ $n -lt "$sekunden" ]; do
        eintragen $((2 * n + $1))
        n=$((n + 1))
        sleep 1
    done
}
nachschau() { # workstation
    n=0
    while [ $n -lt "$sekunden" ]; do
        echo "zelle msgFlexGrid $((2 * n + $1)) $tag"
        n=$((n + 1))
    done
}
zellen() {
    grep '&H' "$1" | sed 's/ &H.*//'
}
# Compares what a workstation has shown (lauf<n>) with what a fresh one shows. False: a row is missing, and nobody
# was told.
urteil() { # workstation, folder
    nachschau "$1" | konsole p9 "$2" >"$ablage/soll$1" || true
    zellen "$ablage/lauf$1" >"$ablage/gezeigt$1"
    zellen "$ablage/soll$1" >"$ablage/da$1"
    gespeichert="$(grep -c '[^" ]' "$ablage/gezeigt$1" || true)"
    fehlend="$(paste -d '\t' "$ablage/gezeigt$1" "$ablage/da$1" | awk -F '\t' '$1 != $2' | wc -l)"
    grep -E '^(HINWEIS|FRAGE|FEHLER)' "$ablage/lauf$1" >"$ablage/alles$1" || true
    grep -v 'Überschriftzeile' "$ablage/alles$1" >"$ablage/hinweise$1" || true
    titel=$(($(wc -l <"$ablage/alles$1") - $(wc -l <"$ablage/hinweise$1")))
    gemeldet="$(wc -l <"$ablage/hinweise$1")"
    echo "Workstation $1: $gespeichert of $((sekunden - titel)) rows shown as saved, $fehlend of them missing," \
        "$gemeldet messages"
    sort "$ablage/hinweise$1" | uniq -c
    [ "$gespeichert" -gt 0 ] && { [ "$fehlend" -eq 0 ] || [ "$gemeldet" -gt 0 ]; }
}
