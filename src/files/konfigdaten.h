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

// A file that is only ever rewritten whole, taken in at once and then read line by line. Whatever does not
// fit is a Dateischaden that names the file: missing, cut, too short, an empty line, a wrong head or line.
class Stammdatei {
public:
    // With `modul` the file belongs to the installation: its faults end the program under that name.
    Stammdatei(Dateikanal& kanal, const Text& ordner, const Text& name, TextView modul = {});
    void Kopf(TextView kopf) { Kopf(u"[" + Text(kopf) + u"]", kopf); }
    void Kopf(TextView anfang,
              TextView wort); // the next line begins so (with "]": is so); `wort` for messages
    Text Zeile();
    bool Ende() const { return gelesen_ >= zeilen_.size() && !offen_; }
    TextView nächste() const; // without taking it; empty at the end
    Zeitstempel Zeit() const { return zeit_; }
    const Text& Pfad() const { return pfad_; }
    [[noreturn]] void fehlerhaft() const; // the line taken last is none of this file's
    [[noreturn]] void unvollständig() const;

private:
    void einlesen(Dateikanal& kanal);
    [[noreturn]] void schaden(const Text& text) const;
    Text pfad_, modul_;
    std::vector<Text> zeilen_;
    bool offen_ = false; // a last line without its end: it is left out, and reaching it is damage
    std::size_t gelesen_ = 0;
    Zeitstempel zeit_ = 0;
};

// Has the file another stamp than the one known? Watching looks only at a file that changed in the last three
// days, and one that cannot be opened has not changed; before writing it has.
bool Stand_geändert(const Dateikanal& kanal, const Arbeitsplatz& platz, const Text& pfad, Zeitstempel bekannt,
                    bool beobachten);

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
    void Konfigdaten_schreiben(Dateimodus modus = Dateimodus::Output);
    void Setting_setzen(int n, int wert) { werte_.settings.SetSetting(n, wert); }
    void Dienstlauf(bool an) { dienstlauf_ = an; } // "/a:dienstlauf": role 2 after every read
    // The file's stamp differs from the one read. With `beobachten` the limits of watching hold: Setting(39),
    // and only a file that changed in the last three days. Before a write call it without.
    bool Datei_geändert(bool beobachten);
    // Puts the role and the derived values in order; the reader does it itself.
    void ableiten();

private:
    Dateikanal& kanal_;
    Arbeitsplatz& platz_;
    Konfiguration werte_;
    Zeitstempel zeit_ = 0;
    bool dienstlauf_ = false;
};

// Line forms of the file, for the first start, administration and tests.
Konfiguration Konfiguration_Standard(const Text& Benutzername); // this user is the first administrator
Text Schaltfläche_als_Zeile(const Schaltfläche& sf);
bool Schaltfläche_aus_Zeile(TextView zeile, Schaltfläche& sf); // false: no record
const Feld<Farbe, 0>& Grundfarben_Standard();
const Feld<Schaltfläche>& Schaltflächen_Standard();

} // namespace kalvora
