// KalvoraFtg.dat: the rows of a country; the first bits of the choice say which.
#include "files/feiertagsdatei.h"
#include "fuzz/fuzzplatz.h"

namespace kalvora::fuzz {

void prüfe(const Eingabe& eingabe) {
    Prüfplatz p;
    p.fs.schreibe(p.platz.Programmpfad + u"KalvoraFtg.dat", eingabe.datei);
    Feiertagsdatei datei(p.kanal, p.platz);
    const TextView code = (eingabe.wahl & 2) != 0 ? u"049" : u"033";
    if (!lesen(p, [&] { datei.KalvoraFeiertageDat_lesen(code); })) return;
    fordere(datei.Feiertagsregeln().anzahl() == FEIERTAGSREGELN_LAND, "sixteen rows");
    fordere(lesen(p, [&] { datei.Feiertage_berechnen(); }), "rows of a template that cannot be computed");
}

} // namespace kalvora::fuzz
