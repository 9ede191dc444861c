// The staff of the made-up company: the rows of the staff file, and of each person what decides on their
// absences.
#pragma once

#include <vector>

#include "files/mitarbeiterdaten.h"
#include "firma/firma.h"
#include "firma/zufall.h"

namespace kalvora::firma {

struct Person {
    Text BenId;
    Datum Eintritt = 0, Austritt = 0; // both within or around the three years; always Eintritt <= Austritt
    int Urlaubstage = 30;             // a year
    int freier_Wochentag = 0;         // 1 Monday to 5 Friday for part-time staff, 0 for the others
    bool reist = false;
    bool Schulkinder = false;
    Zufall zufall{0}; // of this person alone, so that another size of the company leaves the person as it is
};

struct Belegschaft {
    Feld<Mitarbeiter> Zeilen; // headings too
    std::vector<Person> Personen;
    int Überschriften = 0;
};

// `wunsch.Heute` and `wunsch.Startjahr` are set.
Belegschaft Belegschaft_bilden(const Firmenwunsch& wunsch);

} // namespace kalvora::firma
