// Damage that comes at a bad time: right after the first run, and twice on one day. Each time a repair and a
// working start, with everything that was there.
#include "hilfen/speicher_dateisystem.h"
#include "unit/zuverlaessigkeit/bericht.h"
#include "unit/zuverlaessigkeit/vorgaenge.h"

namespace kalvora {
namespace {

const Text DATEN = u"/srv/Data/";

TEST(Schaden, Gleich_nach_dem_ersten_Lauf_und_zweimal_am_Tag) {
    const Text dateien[] = {u"Konfigdaten.dat", u"Mitarbeiterdaten.dat", u"Feiertage.dat",
                            u"2611 261116 Data.dat"};
    const Vorgang firma = vorgang::in_der_Firma(u"/")[0], reparieren = vorgang::Reparieren(u"/");
    int versucht = 0;
    for (const bool neu : {true, false})
        for (const Text& erste : dateien)
            for (const Text& zweite : dateien) {
                SCOPED_TRACE(zu_utf8(erste) + ", then " + zu_utf8(zweite) + (neu ? ", first run" : ""));
                Rechner fs;
                neu ? fs.platte().mache_ordner(u"/srv") : firma.vorbereiten(fs);
                const auto chef = reparieren.Platz(fs, u"chef", u"PLATZ1");
                const auto soll = Richter::Blick(reparieren, *chef);
                ASSERT_TRUE(soll && chef->fenster.fragen.empty());
                for (const Text& datei : {erste, zweite}) {
                    const std::string ganz = *fs.inhalt(DATEN + datei);
                    fs.schreibe(DATEN + datei, "Unsinn\r\n" + ganz.substr(0, ganz.size() / 2));
                    EXPECT_TRUE(Richter::Blick(reparieren, *chef) == soll) << zu_utf8(letzter_Hinweis(*chef));
                    const auto nächster = reparieren.Platz(fs, u"chef", u"PLATZ2");
                    EXPECT_TRUE(nächster->starten(reparieren.neustart));
                    EXPECT_TRUE(nächster->fenster.hinweise.empty()) << zu_utf8(letzter_Hinweis(*nächster));
                    ++versucht;
                }
            }
    berichten({"a shared file damaged right after the first run, and a second one on the same day",
               std::to_string(versucht), "repaired with all rows; every start behind it works"});
}

} // namespace
} // namespace kalvora
