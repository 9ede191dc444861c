// The road from a pressed reason button to the record in the capture file and the log. b is a reason number
// from 1: U is the delete button, U + 1 a person's free day. All checks come before the first change.
#pragma once

#include <optional>

#include "plan/markierung.h"
#include "plan/monatsansicht.h"

namespace kalvora {

class Eintragung {
public:
    Eintragung(frmKalvora& fenster, Gemeinsame_Daten& daten, Monatsansicht& ansicht)
        : f_(fenster), d_(daten), ansicht_(ansicht) {}

    void Schaltfläche_gedrückt(int b); // cmdAuswahl(b)
    void Arbeitsfrei_kennzeichnen(int row, int tag);

    Markierung Markierung_merken() const { return Markierung::aus(f_.msgFlexGrid.selection()); }
    void Markierung_wiederherstellen(const Markierung& m) { f_.msgFlexGrid.set_selection(m.als_Auswahl()); }
    void Markierung_aufheben();
    // The marking across a rebuild of the plan, by persons.
    struct Auswahl {
        Selection s;
        bool markiert = false;
        std::vector<Text> wer;
    };
    Auswahl Auswahl_merken() const;
    bool Auswahl_wiederherstellen(const Auswahl& auswahl); // false: the rows do not stand like that any more
    void Kopierpuffer_leeren() { kopierpuffer_ = u"NoEntry"; }
    // The codes last taken for pasting; a pressed button replaces them.
    const Text& Kopierpuffer() const { return kopierpuffer_; }
    // The row's record, "A:<BenId>:<31 codes>", built from the cells' codes.
    Text Tabellenzeilendaten(int row) const;

private:
    enum class Befund { Ok, Nichts, Abgelehnt }; // Nichts: no day is left, silently
    struct Spanne {
        int row = 0, von = 0, bis = 0;
    };
    struct Änderung {
        bool Daten_geändert = false;       // a cell really changed
        bool Arbeitsfrei_entfernt = false; // a person's free day went: the log says "Löschen"
    };

    void Tabellenzeile_ändern(int b);
    void Tabellenzeilen_ändern(int b);
    bool Eingabe_erlaubt(int b);
    Befund Plausibilitätsprüfung(int b, const Selection& auswahl, Spanne& spanne);
    bool Zeile_erlaubt(const Selection& auswahl);
    bool Spanne_trimmen(int b, int row, Spanne& spanne) const;
    bool Vergangenheit_erlaubt(const Spanne& spanne);
    bool nur_freie_Tage(const Spanne& spanne) const;

    Änderung Zellen_ändern(int b, const Spanne& spanne);
    bool Zelle_eintragen(int b, int row, int tag);
    bool Zelle_leeren(int row, int tag);
    bool Arbeitsfrei_umschalten(int row, int tag);
    bool Änderung_speichern(int b, const Spanne& spanne, bool Arbeitsfrei_entfernt);
    bool Kommentare_entfernen(const Spanne& spanne);
    void Nacharbeit(bool ohne_Wartezeiger);
    // Rereads what others have changed; false: the entry must be made again (told by a message).
    bool Stand_auffrischen(int b);
    void neu_laden();
    Text Zeilenname(int row) const;
    Text Logzeile(int b, const Spanne& spanne, bool Arbeitsfrei_entfernt) const;
    Text Datum_im_Log(int tag) const;

    frmKalvora& f_;
    Gemeinsame_Daten& d_;
    Monatsansicht& ansicht_;
    bool Vergangenheit_bestätigt_ = false;
    bool Hinweis_gezeigt_ = false;
    Text kopierpuffer_ = u"NoEntry";
};

// While it lives, records and log lines are collected; at its end nothing is left over, whatever happened.
class Sammlung {
public:
    explicit Sammlung(Gemeinsame_Daten& daten) : d_(daten) { d_.erfassung.Sammeln(true); }
    ~Sammlung();
    Sammlung(const Sammlung&) = delete;
    Sammlung& operator=(const Sammlung&) = delete;
    bool abschließen(); // writes what was collected; false: refused

private:
    Gemeinsame_Daten& d_;
};

} // namespace kalvora
