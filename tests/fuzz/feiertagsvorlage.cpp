// KalvoraFtg.dat: the rows of a country; the first bits of the choice say which.
#include "files/feiertagsdatei.h"
#include "fuzz/fuzzplatz.h"

using namespace kalvora;
using namespace kalvora::fuzz;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* daten, std::size_t größe) {
    const Eingabe eingabe(daten, größe);
    Fuzzplatz p;
    p.fs.schreibe(p.platz.Programmpfad + u"KalvoraFtg.dat", eingabe.datei);
    Feiertagsdatei datei(p.kanal, p.platz);
    const TextView code = (eingabe.wahl & 2) != 0 ? u"049" : u"033";
    if (!lesen(p, [&] { datei.KalvoraFeiertageDat_lesen(code); })) return 0;
    fordere(datei.Feiertagsregeln().anzahl() == FEIERTAGSREGELN_LAND, "sixteen rows");
    fordere(lesen(p, [&] { datei.Feiertage_berechnen(); }), "rows of a template that cannot be computed");
    return 0;
}
