// What the start settles about this workstation and this run: today, the user, the locale, the paths.
// Everything that reads or writes shared files is handed this by reference.
#pragma once

#include "platform/clock.h"
#include "platform/environment.h"

namespace kalvora {

inline constexpr TextView PROGRAMMVERSION = u"1.16.1";

struct Arbeitsplatz {
    Datum Heute = 0;
    Text Heute_S;         // yymmdd
    double Startzeit = 0; // steady seconds
    Locale gebiet;
    Text Benutzername;

    // Native, absolute, ending in "/"; Logpfad is empty until the data folder is known.
    Text Programmpfad, Systempfad, Datenpfad, Datenpfad_alt, Logpfad, Backuppfad, Inipfad, Temppfad;
    Text Inidateiname;

    bool Startphase = true; // until the first month was shown
    bool Ordner_neu = false;
    bool Pfad_als_Parameter = false;
    bool Datenrückblick_aktiv = false;
    bool Daten_veraltet = false;   // look-back: the backup's years lie behind the present one
    bool Langsame_Anzeige = false; // long actions show the wait pointer
    bool Langsames_Netz = false;   // reading all months took more than 0.2 s
    Text Startmeldung;             // keeps the program from running when it is not empty
    Text Erlaubte_Überschriften = u"AllGroups";

    // The three calendar years held begin with this one; normally last year.
    int Startjahr = 0;

    const Datumsformat& datum() const { return gebiet.datum; }
    // The month of "Heute" as yymm.
    Text Monat_heute() const { return Heute_S.substr(0, 4); }
};

} // namespace kalvora
