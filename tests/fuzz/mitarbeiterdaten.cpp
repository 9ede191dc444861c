// Mitarbeiterdaten.dat: what is taken has at least one row, and comes back when it is written.
#include "fuzz/fuzzplatz.h"

namespace kalvora::fuzz {

void prüfe(const Eingabe& eingabe) {
    Prüfplatz p;
    p.platz.gebiet.Dezimaltrennzeichen = (eingabe.wahl & 2) != 0 ? u'.' : u',';
    p.konfig.ändern() = Konfiguration_Standard(p.platz.Benutzername);
    p.konfig.ableiten();
    const Text pfad = p.platz.Datenpfad + u"Mitarbeiterdaten.dat";
    p.fs.schreibe(pfad, eingabe.datei);
    const auto leser = [&] { p.personal.Mitarbeiterdaten_lesen(); };
    if (!lesen(p, leser)) return;
    fordere(!p.personal.MA().leer(), "at least one row");
    fordere(p.platz.Startjahr >= 2000 && p.platz.Startjahr <= 2079, "a year that two digits can say");
    const Feld<Mitarbeiter> vorher = p.personal.MA();
    for (const Mitarbeiter& m : vorher) {
        p.personal.Name_zu_BenutzerID(m.MA_BenId);
        fordere(m.Überschrift() || p.personal.Zeile_zu_BenId(m.MA_BenId) > 0, "a key that is not found");
    }
    hin_und_zurück(p, pfad, leser, [&] { p.personal.Mitarbeiterdaten_schreiben(); });
    fordere(p.personal.MA() == vorher, "rows that do not come back");
}

} // namespace kalvora::fuzz
