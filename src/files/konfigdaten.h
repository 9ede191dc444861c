// Konfigdaten.dat: what all workstations share. Reason records, colours, the settings string, the weekend,
// administrators. Records count from 1; the last one, U, is always the delete button, U + 1 is the code of a
// person's free day.
#pragma once

#include "base/farbe.h"
#include "base/feld.h"
#include "base/zahl.h"
#include "files/arbeitsplatz.h"
#include "files/dateikanal.h"
#include "files/settings.h"

namespace kalvora {

// One absence reason and its button.
struct Schaltfläche {
    Farbe SF_Schriftfarbe = 0;
    Farbe SF_Hintergrundfarbe = 0xFFFFFF;
    int SF_Nur_Admin = 0;
    char16_t SF_Kennbuchstabe = u' ';
    Text SF_Text;
    int SF_Verbergen = 0; // 1: entries are hidden from other users; kept in the hide string, not in the line
    friend bool operator==(const Schaltfläche&, const Schaltfläche&) = default;
};

inline constexpr int GRUNDFARBEN = 9;       // index 0 to 8
inline constexpr int HÖCHSTZAHL_SÄTZE = 25; // the delete button included

// Everything the file holds and what follows from it.
struct Konfiguration {
    Text Reservezeile, Konfigversion, Firma, Firmenzusatz;
    Settings settings;
    Text Zeile_9; // three fields of the installation, kept as read
    Text SF_Verbergen_Zeile = u"void";
    Text Wochenendtage = u"SaSo";
    Feld<Farbe, 0> Grundfarben; // 0 Arbeitstage, 1 Wochenende, 2 Feiertage, 3 Namen, 4 Überschriften,
                                // 5 Rahmenlinien, 6 Aktueller Tag (Kopf), 7 Aktuelle Zeile/Spalte, 8 Beispiel
    Feld<Schaltfläche> SF;
    Feld<Text> Administratoren{u"NoAdmins"}; // whole lines "A:<name>:<Benutzername>"
    Feld<Text> Privilegierte{u"NoAdmins"};

    int Benutzerrolle = 0; // 0 employee, 1 privileged user, 2 administrator
    int SF_Urlaub = 0, SF_Halburlaub = 0, SF_Urlaub2 = 0, SF_Halburlaub2 = 0;
    int SF_Sonderurlaub = 0, SF_Halbsonderurlaub = 0, SF_Sonderurlaub2 = 0, SF_Halbsonderurlaub2 = 0;
    int SF_Krank = 0;
    int Urlaubsjahr_Monat = 1, Resturlaub_Monat = 0;
    int SF_Breite = 0; // twips, 0 as the screen likes it

    int U() const { return SF.oben(); }
    int Setting(int n) const { return settings.Setting(n); }
    char16_t SFHex(int n) const { return kalvora::SFHex(n, U()); }
    int SFDec(char16_t c) const { return kalvora::SFDec(c, U()); }
    // Record number of a Kennbuchstabe; `art` is "RTT" for special leave. 0: none.
    int Schaltflächen_Nummer(char16_t buchstabe, TextView art = {}) const;
    // Names for messages: "Meier (meier), Schulz (schulz)", cut with " ..." when long.
    Text Administratorenliste(bool auch_Privilegierte = false) const;
};

class Konfigdaten {
public:
    Konfigdaten(Dateikanal& kanal, Arbeitsplatz& platz) : kanal_(kanal), platz_(platz) {}

    const Konfiguration& werte() const { return werte_; }
    Konfiguration& ändern() { return werte_; } // for administration; followed by Konfigdaten_schreiben

    // Dateischaden when missing or damaged; then the values held before stay.
    void Konfigdaten_lesen();
    // False: somebody else has written the file since it was read, or, in mode Neu, made it.
    bool Konfigdaten_schreiben(Dateimodus modus = Dateimodus::Output);
    void Setting_setzen(int n, int wert) { werte_.settings.SetSetting(n, wert); }
    void Dienstlauf(bool an) { dienstlauf_ = an; } // "/a:dienstlauf": role 2 after every read
    // The file's stamp differs from the one read. With `beobachten` the limits of watching hold: Setting(39),
    // and only a file that changed in the last three days. Before a write call it without.
    bool Datei_geändert(bool beobachten);
    // It can be looked at and is another one than the one read: somebody has written it, or the whole folder
    // was put back to an earlier state.
    bool Datei_ersetzt() const;
    // Puts the role and the derived values in order; the reader does it itself.
    void ableiten();

private:
    Dateikanal& kanal_;
    Arbeitsplatz& platz_;
    Konfiguration werte_;
    Zeitstempel zeit_ = 0;
    std::optional<Dateiwerk::Vorgefunden> gelesen_; // the file that `werte_` rests on
    bool dienstlauf_ = false;
};

// Line forms of the file, for the first start, administration and tests.
Konfiguration Konfiguration_Standard(const Text& Benutzername); // this user is the first administrator
Text Schaltfläche_als_Zeile(const Schaltfläche& sf);
bool Schaltfläche_aus_Zeile(TextView zeile, Schaltfläche& sf); // false: no record
const Feld<Farbe, 0>& Grundfarben_Standard();
const Feld<Schaltfläche>& Schaltflächen_Standard();

} // namespace kalvora
