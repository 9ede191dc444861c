// The logic of the main window: what its controls do.
#pragma once

#include "plan/eintragung.h"
#include "plan/mitarbeitersuche.h"

namespace kalvora {

class Hauptfenster {
public:
    explicit Hauptfenster(Gemeinsame_Daten& daten);

    frmKalvora& form() { return f_; }
    Monatsansicht& ansicht() { return ansicht_; }
    Eintragung& eintragung() { return eintragung_; }

    // Builds tabs, menu and buttons and shows the month of today; without `mit_Monat` the window stays empty.
    void öffnen(bool mit_Monat);
    void Monat_wechseln(); // the month of the tabs, read anew: tab change, F5, reload
    void Menüpunkte_aktivieren();
    void Tabellenfelder_anordnen();
    void CheckErfassungsdaten(); // somebody else has written to the month: reload, the marking stays
    void Fenster_merken();       // state and geometry into the user's display choices

    // The first month was shown.
    std::function<void()> Startphase_beendet;
    std::function<bool()> schließen; // the shutdown order; false keeps the window
    // The window of restore points and what follows; true: the data folder holds another state now.
    std::function<bool()> Datenordner_wiederherstellen;

private:
    void Ereignisse_verbinden();
    void Tabellen_verbinden();
    void Maus_verbinden();
    void Jahr_gewechselt(int vorher);
    bool Jahrestaste(int schritt);
    void Poll();
    void Neu_aufbauen();

    // --- keys (hauptfenster_tasten.cpp)
    bool Taste(const Key& taste);
    void Suche_neu();
    void Suche_weiter();
    void Benutzer_zeigen();
    void Datenordner_zeigen();
    void Zeilenhöhe_zurücksetzen();
    void Schaltflächenbreite_zurücksetzen();
    void Schreibtest();
    void Defragmentieren();
    void Sichern();
    void Schrift_wechseln();
    void Langsam_an() { d_.platz.Langsame_Anzeige = true; }
    void Langsam_aus() { d_.platz.Langsame_Anzeige = false; }

    void Maus_gedrückt(const Table::Mouse& m);
    void Maus_bewegt(int row, int col);
    void Markierung_und_Highlight_Off();
    void Highlight_On(int row, int col);
    void Highlight_Off();
    void Schaltflächen_anordnen();
    void Statuszeile();
    void Gruppen_anbieten();
    void Jahre_anbieten();
    void Anzeigemonat_aus_Reitern();
    void Titel_setzen();
    Text Zelle_vorlesen(int row, int tag) const;
    Text Summe_vorlesen(int row, int tag) const;
    Text Zelle_erklären(int row, int tag) const;
    Text Tag_in_Worten(int tag) const;
    int Hervorhebung() const { return d_.ini.wahl().Fensterdaten_(fenster::HERVORHEBUNG); }

    Gemeinsame_Daten& d_;
    frmKalvora f_;
    Monatsansicht ansicht_;
    Eintragung eintragung_;
    Mitarbeitersuche suche_;
    int Abfragezähler_ = 0;
    bool maus_war_draußen_ = false;
};

} // namespace kalvora
