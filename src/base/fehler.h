// What can go wrong, as types: a fault with a number, a damaged or missing data file, an ordered stop.
// Lower floors throw; the top of the program reports. Daily outcomes (a refused entry, a missing optional
// file) are return values and never stand here.
#pragma once

#include <exception>
#include <string>

#include "base/text.h"

namespace kalvora {

// Numbers of file faults, which all lie in 52 to 76, and of others that are told apart.
enum Fehlernummer : int {
    FEHLER_SPEICHER = 7, // accuses no file
    FEHLER_NETZ = 52,    // network gone, or the name is impossible
    FEHLER_NICHT_GEFUNDEN = 53,
    FEHLER_GERÄT = 57, // device input/output error
    FEHLER_EXISTIERT = 58,
    FEHLER_VOLL = 61,
    FEHLER_DATEIENDE = 62, // read past the end
    FEHLER_ZU_VIELE = 67,  // too many open files
    FEHLER_VERWEIGERT = 70,
    FEHLER_SCHREIBSCHUTZ = 75, // read-only, or a folder in place of a file
    FEHLER_ORDNER = 76,        // folder not found
    FEHLER_BAUTEIL = 339,      // no file fault: a part of the installation is missing
};
inline bool ist_Dateifehler(int nummer) {
    return nummer >= 52 && nummer <= 76;
}
// What the number means, as a sentence without its full stop; empty where it says no more than the message
// that it goes with.
TextView Fehlerursache(int nummer);

class Fehler : public std::exception {
public:
    explicit Fehler(Text text) : text_(std::move(text)), utf8_(zu_utf8(text_)) {}
    const Text& text() const { return text_; }
    const char* what() const noexcept override { return utf8_.c_str(); }

private:
    Text text_;
    std::string utf8_;
};

// A fault. `datei` and `zeile` (one-based, 0 unknown) say where; `prozedur` is the innermost procedure that
// named itself ("modKalvora - LineIn"), set once on the way up.
class Laufzeitfehler : public Fehler {
public:
    Laufzeitfehler(int nr, Text text, Text pfad = {}, int zeilennummer = 0)
        : Fehler(std::move(text)), nummer(nr), datei(std::move(pfad)), zeile(zeilennummer) {}
    int nummer;
    Text datei;
    int zeile;
    Text prozedur;
};

// A file that could not be opened. Its text is the one for the user, who need not know the number.
class Zugriffsabbruch : public Laufzeitfehler {
public:
    Zugriffsabbruch(int nr, Text text, Text pfad, Text log)
        : Laufzeitfehler(nr, std::move(text), std::move(pfad)), logtext(std::move(log)) {}
    Text logtext;
};

// A data file that is missing or damaged: the way to the repair. `monate` lists missing months. What
// `zweimal_gesehen` says of it has stood a second look already: nobody need read again to be sure.
class Dateischaden : public Fehler {
public:
    explicit Dateischaden(Text text, Text pfad = {}, Text fehlende_monate = {})
        : Fehler(std::move(text)), datei(std::move(pfad)), monate(std::move(fehlende_monate)) {}
    Text datei;
    Text monate;
    bool zweimal_gesehen = false;
    bool nur_Verdacht = false; // something else went wrong while its lines were being judged
};

// An ordered stop. `logtext`: what goes to the administration log; empty is a standard text, "NoLog" nothing.
class Programmabbruch : public Fehler {
public:
    Programmabbruch(Text wo, Text text, Text log = {})
        : Fehler(std::move(text)), modul(std::move(wo)), logtext(std::move(log)) {}
    Text modul;
    Text logtext;
};

// Runs `f` under a procedure's name, so that a fault that leaves it can name its innermost procedure.
template <class F>
decltype(auto) als_Prozedur(TextView name, F&& f) {
    try {
        return f();
    } catch (Laufzeitfehler& fehler) {
        if (fehler.prozedur.empty()) fehler.prozedur = name;
        throw;
    }
}

} // namespace kalvora
