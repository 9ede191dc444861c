// Mitarbeiterdaten.dat: employees and the heading rows between them, in the order of the plan. Rows count
// from 1. A heading has no BenId; "NoNames" alone is an empty staff list.
#pragma once

#include <optional>

#include "base/feld.h"
#include "files/konfigdaten.h"

namespace kalvora {

struct Mitarbeiter {
    Text MA_Name;
    Text MA_BenId;       // key of the person in all files; empty on a heading row
    Text MA_Von, MA_Bis; // yymmdd, "000000" and "999999" are open
    Text MA_Urlaub;      // "nnn,n" five times with ":": residual leave and four years; own decimal separator
    Text MA_Sonderurlaub;
    bool Überschrift() const { return MA_BenId.empty(); }
    friend bool operator==(const Mitarbeiter&, const Mitarbeiter&) = default;
};

class Mitarbeiterdaten {
public:
    Mitarbeiterdaten(Dateikanal& kanal, Arbeitsplatz& platz, Konfigdaten& konfig)
        : kanal_(kanal), platz_(platz), konfig_(konfig) {}

    const Feld<Mitarbeiter>& MA() const { return ma_; }
    Feld<Mitarbeiter>& ändern() { return ma_; } // followed by ableiten or Mitarbeiterdaten_schreiben
    bool Benutzer_eingetragen() const { return eingetragen_; }
    bool Keine_Urlaubsansprüche() const { return keine_ansprüche_; }
    bool leer() const { return ma_.anzahl() == 1 && ma_(1).MA_Name == u"NoNames"; }
    const Text& Reservezeile() const { return reserve_; }

    // Sets Startjahr of the workstation too, and Startmeldung for a user who is not listed.
    void Mitarbeiterdaten_lesen();
    // False only with IgnoreErrors; otherwise failures are thrown. A row that could not be read again as what
    // it is ends it before anything is written.
    bool Mitarbeiterdaten_schreiben(Fehlerweg weg = Fehlerweg::Melden);
    bool Datei_geändert(bool beobachten); // as with Konfigdaten

    // Who listed is and who has entitlements, from the rows; the reader does it itself.
    void ableiten();

    // Display name of a user: from the staff, else from the administrators and privileged users.
    Text Name_zu_BenutzerID(TextView id) const;
    // Row of a key, compared without case; 0 when there is none.
    int Zeile_zu_BenId(TextView id) const;
    static constexpr TextView KEINE_MITARBEITER = u"Es wurden noch keine Mitarbeiterdaten erfasst. Bitte "
                                                  u"rufen Sie den Menüpunkt 'Bearbeiten - Mitarbeiter' auf.";
    bool Mitarbeiter_vorhanden(); // false with one message

private:
    std::vector<Text> Zeilen() const;
    Dateikanal& kanal_;
    Arbeitsplatz& platz_;
    Konfigdaten& konfig_;
    Feld<Mitarbeiter> ma_;
    Text reserve_;
    bool eingetragen_ = false, keine_ansprüche_ = false;
    Zeitstempel zeit_ = 0;
};

// The file as it stands, past everything that is held in memory.
struct Mitarbeiterliste {
    Text Reservezeile;
    int Startjahr = 0;
    Feld<Mitarbeiter> MA; // at least one row
    Zeitstempel Zeit = 0;
};
Mitarbeiterliste Mitarbeiterdatei_lesen(Dateikanal& kanal, const Arbeitsplatz& platz);

// One row between its file form and memory; `trennzeichen` is the decimal separator in memory. Both forms of
// an employee's row are read; nothing when it is none of them.
std::optional<Mitarbeiter> Mitarbeiter_aus_Zeile(TextView zeile, char16_t trennzeichen);
Text Mitarbeiter_als_Zeile(const Mitarbeiter& m, bool lang, char16_t trennzeichen);

} // namespace kalvora
