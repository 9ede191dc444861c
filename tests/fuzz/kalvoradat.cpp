// Kalvora.dat. A change of folder that was not completed writes the file anew; nothing else may change.
#include "files/kalvoradat.h"
#include "fuzz/fuzzplatz.h"

namespace kalvora::fuzz {

void prüfe(const Eingabe& eingabe) {
    Prüfplatz p;
    const Text pfad = ((eingabe.wahl & 2) != 0 ? p.platz.Programmpfad : p.platz.Systempfad) + u"Kalvora.dat";
    p.fs.schreibe(pfad, eingabe.datei);
    p.fs.schreibe(u"/srv/x/Data/2611 261101 Data.dat", als_Datei({u"[2611]", u"", u"NoEx:NoEx"}));
    p.fs.schreibe(u"/srv/x/Data/Logs/2611 Kalvora.log", als_Datei({u"Zeile"}));
    p.platz.Datenpfad.clear();
    p.platz.Logpfad.clear();
    const auto leser = [&] { Kalvoradat_lesen(p.kanal, p.platz); };
    if (!lesen(p, leser, p.platz.Systempfad + u"Kalvora.dat")) return;
    for (const Text& ordner : {p.platz.Datenpfad, p.platz.Logpfad, p.platz.Datenpfad_alt})
        fordere(ordner.empty() || ordner.ends_with(u'/'), "a folder ends in its separator");
    if (p.platz.Datenpfad.empty()) return;
    const Text gelesen = p.platz.Datenpfad;
    try {
        Kalvoradat_schreiben(p.kanal, p.platz);
    } catch (const Programmabbruch&) { // a path that no line can hold
        return;
    }
    fordere(lesen(p, leser) && p.platz.Datenpfad == gelesen, "a path that does not come back");
}

} // namespace kalvora::fuzz
