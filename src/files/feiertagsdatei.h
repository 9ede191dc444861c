// Feiertage.dat (the holiday rules in force), KalvoraFtg.dat (standard rows of each country, delivered) and
// Ferientage.dat (school holidays, optional, delivered by others).
#pragma once

#include "base/farbe.h"
#include "base/feld.h"
#include "calendar/feiertage.h"
#include "files/arbeitsplatz.h"
#include "files/dateikanal.h"

namespace kalvora {

class Feiertagsdatei {
public:
    Feiertagsdatei(Dateikanal& kanal, Arbeitsplatz& platz) : kanal_(kanal), platz_(platz) {}
    const Feld<Text>& Feiertagsregeln() const { return regeln_; } // 16 rule rows, then further holidays
    const Text& Land() const { return land_; }
    const Feiertage& berechnet() const { return berechnet_; }
    const Text& Reservezeile() const { return reserve_; }
    void Reservezeile_setzen(Text zeile) { reserve_ = std::move(zeile); }

    // An older file without its country becomes a German one; it is written anew with the next change only.
    void Feiertage_lesen();
    void Feiertage_schreiben(Dateimodus modus = Dateimodus::Output);
    void Feiertage_berechnen(); // again, when Startjahr has changed
    // Fills the 16 rows and Land from the template; a code that it lacks gives empty rows and no Land.
    void KalvoraFeiertageDat_lesen(TextView code);

private:
    Dateikanal& kanal_;
    Arbeitsplatz& platz_;
    Feld<Text> regeln_;
    Text land_, reserve_;
    Feiertage berechnet_;
};

class Ferientagedatei {
public:
    Ferientagedatei(Dateikanal& kanal, Arbeitsplatz& platz) : kanal_(kanal), platz_(platz) {}
    Farbe Ferienfarbe() const { return farbe_; }
    // True when the day of the month chosen last is a school holiday.
    bool Ferientag(int tag) const;
    int Ferienindex() const { return index_; }
    bool Daten_vorhanden() const { return Ferientage_(1) != OHNE_DATEN; }

    // A missing file, and every fault in it, means no school holidays. The month chosen last stays chosen.
    void Ferientage_lesen();
    void Ferienindex_setzen(TextView Anzeigemonat, bool Schulferien_aus);

private:
    Dateikanal& kanal_;
    Arbeitsplatz& platz_;
    static constexpr TextView OHNE_DATEN = u"NoData";
    Feld<Text> Ferientage_{Text(OHNE_DATEN)};
    Farbe farbe_ = 0;
    int index_ = 0;
    Text monat_;
    bool aus_ = false;
};

} // namespace kalvora
