// The made-up company is read with the program's own readers: nothing in it may be a fault. That the same
// wish gives the same bytes is shown by the scripts.
#include "firma/firma.h"

#include <gtest/gtest.h>

#include "files/feiertagsdatei.h"
#include "hilfen/arbeitsplatz.h"

namespace kalvora {
namespace {

TEST(Firma, Alle_Leser_nehmen_alles) {
    Firmenwunsch wunsch;
    wunsch.Zielordner = u"/srv/x";
    wunsch.Mitarbeiter = 120;
    wunsch.Heute = Datum_aus(2026, 11, 16);
    wunsch.Benutzername = u"chef";
    wunsch.Feiertagsregeln = {u"1:01.01.:Neujahr", Text(LEERE_FEIERTAGSREGEL), u"1:03.10.:Einheit"};
    Prüfplatz p;
    const Firmenbericht bericht = Firma_erzeugen(p.fs, p.uhr, wunsch);
    const auto vorher = p.fs.platte().abbild();
    p.konfig.Konfigdaten_lesen();
    p.personal.Mitarbeiterdaten_lesen();
    Feiertagsdatei(p.kanal, p.platz).Feiertage_lesen();
    Erfassungsdateien erfassung(p.kanal, p.platz, p.konfig, p.personal, p.log);
    erfassung.Erfassungsdateien_checken();
    erfassung.Alle_Erfassungsdaten_einlesen(false);
    EXPECT_EQ(p.personal.MA().anzahl(), bericht.Mitarbeiter + bericht.Überschriften);
    EXPECT_TRUE(erfassung.Erfassungsdaten_vorhanden(8));
    EXPECT_TRUE(p.fenster.hinweise.empty());
    EXPECT_THROW(Firma_erzeugen(p.fs, p.uhr, wunsch), Laufzeitfehler) << "never over another one";
    EXPECT_EQ(p.fs.platte().abbild(), vorher);
}

} // namespace
} // namespace kalvora
