// The month as a table: turns the shared data into the plan, the calendar-week row and the day sums. Rows of
// the plan: 0 is the heading, then employees and headings that pass the filters. Columns: 0 the name, 1 to 31
// the days, 32 (hidden) the BenId, empty in rows of nobody. A plan cell holds its day's code.
#pragma once

#include <unordered_map>

#include "calendar/tagesklassen.h"
#include "plan/frm_kalvora.h"
#include "plan/gemeinsame_daten.h"

namespace kalvora {

inline constexpr int SPALTE_BENID = 32;
inline constexpr int SPALTEN = 33;

class Monatsansicht {
public:
    Monatsansicht(frmKalvora& fenster, Gemeinsame_Daten& daten) : f_(fenster), d_(daten) {}

    // Steps around the tables that the window does itself.
    std::function<void()> Daten_geändert_behandeln; // shared files were read again: menu, arrangement
    std::function<void()> Tabellenfelder_anordnen;  // the number of rows has changed
    std::function<void()> Markierung_aufheben;
    std::function<void()> nach_dem_Anzeigen; // the month stands as read just now

    const Text& Anzeigemonat() const { return monat_; }
    void Anzeigemonat_setzen(Text yymm) { monat_ = std::move(yymm); }
    int Monatslänge() const { return Tage_im_Monat(monat_); }
    void Daten_anzeigen(bool ohne_Wartezeiger);
    void Tagessummen_initialisieren();

    // --- what the entry pipeline asks of the plan
    bool Überschriftzeile(int row) const { return f_.msgFlexGrid.row_kind(row) != RowKind::Plain; }
    const Text& BenId(int row) const { return f_.msgFlexGrid.cell(row, SPALTE_BENID).text; }
    int Zeile_zu_BenId(TextView BenId) const; // 0: not in the plan
    bool Wochenende(int tag) const { return klassen_.wochenende(tag); }
    bool Feiertag(int tag) const { return klassen_.feiertag(tag); }
    Farbe Tagesfarbe(int tag) const; // background of an empty cell of that day
    Text Zellkommentar(int row, int tag) const;
    void Zellkommentar_löschen(int row, int tag) { kommentare_.erase(row * SPALTEN + tag); }
    int Tagessumme(int b, int tag) const;
    bool Heute_im_Monat() const { return d_.platz.Heute_S.starts_with(monat_); }
    int Heute_Tag() const { return static_cast<int>(Val(rechts(d_.platz.Heute_S, 2))); }
    // Name of a holiday of the month, empty when the day is none or has no name.
    Text Feiertag_Name(int tag) const;

private:
    void Tabellen_aufbauen();
    void Kalenderwochen();
    void Überschriften_der_Tage();
    void Zeilen_filtern();
    std::vector<int> Zeilen_des_Monats() const; // staff rows that pass the filters
    void Daten_in_Tabellenfeld_ausgeben();
    void Zeile_ausgeben(int row);
    void Kommentare_ausgeben(int row);
    void Tage_einfärben();
    void Spalte_einfärben(int tag, Farbe farbe, bool auch_Arbeitsfrei);
    void Heute_einfärben();
    void Summen_ausgeben();
    bool Anzeige(int index) const { return d_.ini.wahl().Fensterdaten_(index) == 1; }
    Farbe Grundfarbe(int index) const { return d_.K().Grundfarben(index); }

    frmKalvora& f_;
    Gemeinsame_Daten& d_;
    Text monat_;
    Monatsklassen klassen_;
    std::unordered_map<int, Text> kommentare_; // row * SPALTEN + day
    std::vector<int> summen_;                  // (b - 1) * 31 + day - 1
    int zeilen_angeordnet_ = 0;
};

} // namespace kalvora
