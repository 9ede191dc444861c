// What the keys of the main window do. Left to the desktop: Alt+F4, which closes the window. Keys of windows
// and functions that are not there yet go to the control that has the focus.
#include <algorithm>

#include "plan/hauptfenster.h"
#include "plan/schreibtest.h"

namespace kalvora {

namespace {

constexpr TextView ANDERE_SCHRIFT = u"MS Sans Serif";

} // namespace

bool Hauptfenster::Taste(const Key& taste) {
    struct Befehl {
        TextView code;
        Modifiers mods;
        void (Hauptfenster::*tun)();
    };
    constexpr Modifiers ohne{}, strg{.ctrl = true}, alt{.alt = true}, strg_alt{.ctrl = true, .alt = true};
    constexpr std::array BEFEHLE{
        Befehl{u"F3", ohne, &Hauptfenster::Suche_neu},
        Befehl{u"F4", ohne, &Hauptfenster::Suche_weiter},
        Befehl{u"F", strg, &Hauptfenster::Suche_neu},
        Befehl{u"F5", ohne, &Hauptfenster::Monat_wechseln},
        Befehl{u"A", strg, &Hauptfenster::Zeilenhöhe_zurücksetzen},
        Befehl{u"A", strg_alt, &Hauptfenster::Schaltflächenbreite_zurücksetzen},
        Befehl{u"F4", strg, &Hauptfenster::Benutzer_zeigen},
        Befehl{u"F5", strg, &Hauptfenster::Datenordner_zeigen},
        Befehl{u"F6", strg, &Hauptfenster::Schreibtest},
        Befehl{u"F7", strg, &Hauptfenster::Defragmentieren},
        Befehl{u"F7", alt, &Hauptfenster::Sichern},
        Befehl{u"F9", strg, &Hauptfenster::Schrift_wechseln},
        Befehl{u"F10", ohne, &Hauptfenster::Langsam_an},
        Befehl{u"F11", ohne, &Hauptfenster::Langsam_aus},
        Befehl{u"Esc", ohne, &Hauptfenster::Markierung_und_Highlight_Off},
    };
    const auto* befehl = std::find_if(BEFEHLE.begin(), BEFEHLE.end(), [&](const Befehl& b) {
        return b.code == taste.code && b.mods == taste.mods;
    });
    if (befehl == BEFEHLE.end()) return false;
    (this->*befehl->tun)();
    return true;
}

void Hauptfenster::Suche_neu() {
    Markierung_und_Highlight_Off();
    suche_.suchen(false);
}

void Hauptfenster::Suche_weiter() {
    Markierung_und_Highlight_Off();
    suche_.suchen(true);
}

void Hauptfenster::Benutzer_zeigen() {
    d_.app.Hinweis(u"Windows-Benutzername: " + d_.platz.Benutzername + u"\n\nAdministratoren: " +
                   d_.K().Administratorenliste());
}

void Hauptfenster::Datenordner_zeigen() {
    d_.app.Hinweis(u"Datenordner: " + d_.platz.Datenpfad);
}

void Hauptfenster::Zeilenhöhe_zurücksetzen() {
    for (int row = 0; row < f_.msgFlexGrid.rows(); ++row)
        f_.msgFlexGrid.set_row_height(row, -1);
    Tabellenfelder_anordnen();
}

// Back to the width that the configuration gives all users.
void Hauptfenster::Schaltflächenbreite_zurücksetzen() {
    d_.ini.wahl().Fensterdaten_(fenster::SF_BREITE_AN) = 0;
    Schaltflächen_anordnen();
    if (f_.view()) f_.view()->arrange();
}

void Hauptfenster::Schreibtest() {
    if (!d_.platz.Startmeldung.empty()) return;
    if (d_.sperre.vorhanden()) // the test would take the lock away
        return d_.app.Hinweis(u"Der Schreibtest ist nicht möglich, solange der Programmaufruf gesperrt ist.");
    CheckSchreibberechtigung(d_.kanal, d_.platz.Datenpfad);
}

void Hauptfenster::Defragmentieren() {
    d_.sperre.Programmsperre_prüfen();
    if (d_.kanal.Reparatursperre)
        return d_.app.Hinweis(u"Solange die Sperre nach einer Reparatur besteht, wird nichts verdichtet.");
    if (d_.erfassung.Erfassungsdatei_defragmentieren()) Monat_wechseln();
}

void Hauptfenster::Sichern() {
    const Text hindernis = d_.Backup_erstellen(u"T");
    d_.app.Hinweis(hindernis.empty() ? Text(u"Backup wurde erstellt")
                                     : u"Backup konnte nicht erstellt werden.\n\nUrsache: " + hindernis);
}

// An empty name is the standard font.
void Hauptfenster::Schrift_wechseln() {
    Text& schrift = d_.ini.wahl().Schrift;
    schrift = schrift == ANDERE_SCHRIFT ? Text() : Text(ANDERE_SCHRIFT);
    f_.set_font(schrift);
}

} // namespace kalvora
