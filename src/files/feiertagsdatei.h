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

    void Feiertage_lesen();
    void Feiertage_schreiben(Dateimodus modus = Dateimodus::Output);
    void Feiertage_berechnen(); // again, when Startjahr has changed
    // Fills the 16 rows and Land from the template; a code that it lacks gives empty rows and no Land.
    void KalvoraFeiertageDat_lesen(TextView code);

private:
    void Feiertage_konvertieren(const Text& pfad);
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

    void Ferientage_lesen();
    void Ferienindex_setzen(TextView Anzeigemonat, bool Schulferien_aus);

private:
    Dateikanal& kanal_;
    Arbeitsplatz& platz_;
    Feld<Text> Ferientage_{u"NoData"};
    Farbe farbe_ = 0;
    int index_ = 0;
};

} // namespace kalvora
