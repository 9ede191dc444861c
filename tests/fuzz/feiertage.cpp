// Feiertage.dat, in its present and in its older form, with a sound template beside it.
#include "files/feiertagsdatei.h"
#include "fuzz/fuzzplatz.h"

namespace kalvora::fuzz {

void prüfe(const Eingabe& eingabe) {
    Prüfplatz p;
    std::vector<Text> vorlage{u"[KalvoraFeiertageDat]", u"[049:Deutschland]"};
    for (int r = 0; r < FEIERTAGSREGELN_LAND; ++r)
        vorlage.push_back(u"1:01.01.:Neujahr");
    p.fs.schreibe(p.platz.Programmpfad + u"KalvoraFtg.dat", als_Datei(vorlage));
    const Text pfad = p.platz.Datenpfad + u"Feiertage.dat";
    p.fs.schreibe(pfad, eingabe.datei);
    Feiertagsdatei datei(p.kanal, p.platz);
    const auto leser = [&] { datei.Feiertage_lesen(); };
    if (!lesen(p, leser)) return;
    const int zeilen = datei.Feiertagsregeln().anzahl();
    fordere(zeilen >= FEIERTAGSREGELN_LAND && zeilen <= FEIERTAGSREGELN_HÖCHSTENS, "number of rules");
    // A country that looks like a rule would be taken for the older form.
    if (zeichen(datei.Land(), 2) != u':')
        hin_und_zurück(p, pfad, leser, [&] { datei.Feiertage_schreiben(); });
}

} // namespace kalvora::fuzz
