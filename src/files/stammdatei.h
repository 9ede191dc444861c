// The shared base files (configuration, staff, holidays) and the delivered ones, read line by line; and the
// question whether such a file has changed.
#pragma once

#include "files/arbeitsplatz.h"
#include "files/dateikanal.h"

namespace kalvora {

// A file that is only ever rewritten whole, taken in at once and then read line by line. Whatever does not
// fit is a Dateischaden that names the file: missing, cut, too short, an empty line, a wrong head or line.
// While the object lives its lines are being judged, and Letzte_Datei names the file.
class Stammdatei {
public:
    // With `modul` the file belongs to the installation: its faults end the program under that name.
    Stammdatei(Dateikanal& kanal, const Text& ordner, const Text& name, TextView modul = {});
    ~Stammdatei();
    Stammdatei(const Stammdatei&) = delete;
    Stammdatei& operator=(const Stammdatei&) = delete;
    void Kopf(TextView kopf) { Kopf(u"[" + Text(kopf) + u"]", kopf); }
    void Kopf(TextView anfang,
              TextView wort); // the next line begins so (with "]": is so); `wort` for messages
    Text Zeile();
    bool Ende() const { return gelesen_ >= zeilen_.size() && !offen_; }
    TextView nächste() const; // without taking it; empty at the end
    Zeitstempel Zeit() const { return zeit_; }
    const Dateiwerk::Vorgefunden& Vorgefunden() const { return vorgefunden_; } // for Nur_ersetzen
    [[noreturn]] void fehlerhaft() const; // the line taken last is none of this file's
    [[noreturn]] void unvollständig() const;

private:
    void einlesen();
    [[noreturn]] void schaden(const Text& text) const;
    Dateikanal& kanal_;
    const int ausnahmen_; // under way when the object was made
    Text pfad_, modul_;
    std::vector<Text> zeilen_;
    bool offen_ = false; // a last line without its end: it is left out, and reaching it is damage
    std::size_t gelesen_ = 0;
    Zeitstempel zeit_ = 0;
    Dateiwerk::Vorgefunden vorgefunden_;
};

// Has the file another stamp than the one known? Watching looks only at a file that changed in the last three
// days, and one that cannot be opened has not changed; before writing it has.
bool Stand_geändert(const Dateikanal& kanal, const Arbeitsplatz& platz, const Text& pfad, Zeitstempel bekannt,
                    bool beobachten);

} // namespace kalvora
