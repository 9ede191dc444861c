// The per-user ini file: window geometry and personal display choices. Plain text, kept in Inipfad, with
// Temppfad as the place of a user who may not write there. Damage costs only these choices.
#pragma once

#include <array>
#include <cstdint>

#include "files/konfigdaten.h"
#include "files/logbuch.h"

namespace kalvora {

// Elements 0 to 36.
using Fensterdaten = Feld<std::int32_t, 0>;
namespace fenster { // indexes that have a meaning of their own
inline constexpr int ZUSTAND = 0, LINKS = 1, OBEN = 2, BREITE = 3, HÖHE = 4;
inline constexpr int HERVORHEBUNG = 21, TAGESSUMMEN = 24, ÜBERSCHRIFTEN = 25, SCHULFERIEN_AUS = 26;
inline constexpr int KALENDERWOCHEN = 27, KALENDERWOCHEN_DRUCKEN = 28, LANGSAM = 30, NAMENSBREITE = 31;
inline constexpr int SF_BREITE_AN = 35, SF_BREITE = 36, ANZAHL = 37;
} // namespace fenster

// "" stands for "void".
struct Anzeigewahl {
    Fensterdaten Fensterdaten_ = Fensterdaten(fenster::ANZAHL);
    int Gruppenauswahl = 0;      // index from 0
    std::array<Text, 2> Ordner;  // last export folder, last print folder
    Text TaSum = Text(24, u'1'); // a digit a reason: "0" leaves its day sum out
    std::array<Text, 3> weitere_TaSum;
    Text Schrift, Drucker;
};

class Inidatei {
public:
    Inidatei(Dateikanal& kanal, Arbeitsplatz& platz, const Konfigdaten& konfig, Logbuch& log)
        : kanal_(kanal), platz_(platz), konfig_(konfig), log_(log) {}
    Anzeigewahl& wahl() { return wahl_; }
    const Anzeigewahl& wahl() const { return wahl_; }

    // `Gruppen`: number of display groups; a selection beyond it falls back to the first.
    void Inidatei_lesen(int Gruppen = 0);
    void Inidatei_schreiben();
    void Inidateien_löschen(); // and no writing any more in this run

private:
    Dateikanal& kanal_;
    Arbeitsplatz& platz_;
    const Konfigdaten& konfig_;
    Logbuch& log_;
    Text gültige_Datei() const;
    void begrenzen(int Gruppen);
    bool schreiben_nach(const Text& ordner);
    void Dateien_entfernen();
    Anzeigewahl wahl_;
    std::int64_t summe_ = 0; // of what was read, 0 without a file; negative blocks writing
};

} // namespace kalvora
