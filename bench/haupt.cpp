// kalvora_bench: files, months, saving and backups, without windows.
#include "messungen.h"

int main(int argc, char** argv) {
    using namespace kalvora::bench;
    Umfeld umfeld;
    Zeilendatei_messen(umfeld);
    Alle_Monate_messen(umfeld);
    Monat_aufbauen_messen(umfeld);
    Speichern_messen(umfeld);
    Sicherung_messen(umfeld);
    return laufen(argc, argv, umfeld.tafel);
}
