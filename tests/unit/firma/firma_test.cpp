// The made-up company is read with the program's own readers: nothing in it may be a fault, and the same wish
// must give the same bytes.
#include "firma/firma.h"

#include <gtest/gtest.h>

#include <map>

#include "files/feiertagsdatei.h"
#include "hilfen/arbeitsplatz.h"

namespace kalvora {
namespace {

Firmenwunsch Wunsch(int mitarbeiter, std::uint64_t saat = 7) {
    Firmenwunsch w;
    w.Zielordner = u"/srv/firma";
    w.Mitarbeiter = mitarbeiter;
    w.Saat = saat;
    w.Heute = Datum_aus(2026, 11, 16);
    w.Benutzername = u"chef";
    w.Feiertagsregeln = {u"1:01.01.:Neujahr", Text(LEERE_FEIERTAGSREGEL), u"1:03.10.:Einheit"};
    return w;
}

// A workstation on the company.
struct Leser : Prüfplatz {
    Feiertagsdatei feiertage{kanal, platz};
    Erfassungsdateien erfassung{kanal, platz, konfig, personal, log};

    explicit Leser(const Firmenwunsch& wunsch) {
        bericht = Firma_erzeugen(fs, uhr, wunsch);
        platz.Benutzername = u"chef";
        platz.Datenpfad = u"/srv/firma/Data/";
        konfig.Konfigdaten_lesen();
        personal.Mitarbeiterdaten_lesen();
        feiertage.Feiertage_lesen();
    }
    Text yymm(int monat) const { // 1 to 36
        return ziffern(platz.Startjahr % 100 + (monat - 1) / 12, 2) + ziffern((monat - 1) % 12 + 1, 2);
    }
    Firmenbericht bericht;
};

TEST(Firma, Gleicher_Wunsch_gleiche_Bytes_und_nie_ein_zweites_Mal) {
    Leser eins(Wunsch(30)), zwei(Wunsch(30)), drei(Wunsch(30, 8));
    const auto vorher = eins.fs.platte().abbild();
    EXPECT_EQ(vorher, zwei.fs.platte().abbild());
    EXPECT_NE(vorher, drei.fs.platte().abbild());
    EXPECT_THROW(Firma_erzeugen(eins.fs, eins.uhr, Wunsch(6)), Laufzeitfehler);
    EXPECT_EQ(eins.fs.platte().abbild(), vorher);
}

TEST(Firma, Alle_Leser_nehmen_alles) {
    Leser l(Wunsch(120));
    Ferientagedatei ferien(l.kanal, l.platz);
    ferien.Ferientage_lesen();
    EXPECT_TRUE(ferien.Daten_vorhanden());
    EXPECT_EQ(l.platz.Startjahr, 2025);
    EXPECT_EQ(l.personal.MA().anzahl(), l.bericht.Mitarbeiter + l.bericht.Überschriften);
    EXPECT_TRUE(l.personal.Benutzer_eingetragen());
    EXPECT_NO_THROW(l.erfassung.Erfassungsdateien_checken());
    for (int monat = 1; monat <= MONATE; ++monat) {
        l.erfassung.Erfassungsdaten_lesen(l.yymm(monat));
        EXPECT_FALSE(l.erfassung.monat().fehlerhaft()) << monat;
        EXPECT_NE(l.erfassung.monat().stamm, l.yymm(monat) + u" 261116") << "nobody has saved today";
    }
    EXPECT_TRUE(l.fenster.hinweise.empty());
}

TEST(Firma, Einträge_nur_an_Arbeitstagen_der_Beschäftigten) {
    Leser l(Wunsch(300));
    l.erfassung.Alle_Erfassungsdaten_einlesen(false);
    std::map<char, int> codes;
    int befristet = 0, daneben = 0;
    for (int i = 1; i <= l.personal.MA().anzahl(); ++i) {
        const Mitarbeiter& m = l.personal.MA()(i);
        befristet += m.MA_Von != u"000000" || m.MA_Bis != u"999999";
        for (int monat = 1; monat <= MONATE; ++monat)
            for (int t = 1; t <= TAGE; ++t) {
                const char code = l.erfassung.Daten().tage(monat, i)[static_cast<std::size_t>(t - 1)];
                if (code == ' ') continue;
                ++codes[code];
                const Text tag = l.yymm(monat) + ziffern(t, 2);
                daneben += Wochentag(FormatDatumSD(tag)) > 5 || m.Überschrift() || tag < m.MA_Von ||
                           tag > m.MA_Bis || Feiertagsname(l.feiertage.berechnet(), tag).has_value();
            }
    }
    EXPECT_EQ(daneben, 0);
    EXPECT_GT(befristet, 10);
    for (const char code : {'1', '2', '3', '4', '5', '6', '8'})
        EXPECT_GT(codes[code], 100) << code;
    EXPECT_EQ(codes.size(), 7u);
}

} // namespace
} // namespace kalvora
