// Ferientage.dat: whatever it holds, the program goes on.
#include "files/feiertagsdatei.h"
#include "fuzz/fuzzplatz.h"

namespace kalvora::fuzz {

void prüfe(const Eingabe& eingabe) {
    Prüfplatz p;
    p.fs.schreibe(p.platz.Datenpfad + u"Ferientage.dat", eingabe.datei);
    Ferientagedatei datei(p.kanal, p.platz);
    fordere(lesen(p, [&] { datei.Ferientage_lesen(); }), "no fault in it stops anybody");
    fordere(datei.Ferienfarbe() <= 0xFFFFFF, "a colour");
    for (const TextView monat : {u"2611", u"2612", u""}) {
        datei.Ferienindex_setzen(monat, false);
        for (int tag = -1; tag <= 33; ++tag)
            fordere(!datei.Ferientag(tag) || (tag >= 1 && tag <= 31 && !monat.empty()), "a school holiday");
    }
}

} // namespace kalvora::fuzz
