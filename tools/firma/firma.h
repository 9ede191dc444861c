// A made-up company: a whole data folder of any size, the same for the same wish. For the demo, the tests and
// the measurements.
#pragma once

#include <cstdint>

#include "base/feld.h"
#include "platform/clock.h"
#include "platform/filesystem.h"

namespace kalvora {

struct Firmenwunsch {
    Text Zielordner; // absolute; the folder "Data" is made in it, and must not hold data files yet
    int Mitarbeiter = 50;
    std::uint64_t Saat = 1;
    Datum Heute = 0;   // 0: the clock's day
    int Startjahr = 0; // first of the three years; 0: the year before Heute
    Text Benutzername; // the administrator, and one of the staff; may be empty
    Text Programmpfad; // holds KalvoraFtg.dat; empty: the holidays are those of Feiertagsregeln
    Feld<Text> Feiertagsregeln;
    // The present month's version bears today's date, so that the next save appends to it. Otherwise every
    // version is older, as in the morning.
    bool Version_von_heute = false;
    bool Jeden_Monat_Einträge = false; // everybody has an entry in every month: as much as a size can hold
    bool mit_Logbuch = true;
};

struct Firmenbericht {
    Text Datenpfad; // ends in "/"
    int Mitarbeiter = 0, Überschriften = 0;
    int Datensätze = 0, Kommentare = 0, Logsätze = 0; // rows written
    Feld<Text> BenIds;                                // in the order of the plan
};

// Throws a Laufzeitfehler when something cannot be written or the folder holds data already.
Firmenbericht Firma_erzeugen(FileSystem& fs, Clock& uhr, const Firmenwunsch& wunsch);

} // namespace kalvora
