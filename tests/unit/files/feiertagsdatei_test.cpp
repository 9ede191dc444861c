#include "files/feiertagsdatei.h"

#include "hilfen/schaden.h"

namespace kalvora {
namespace {

// Sixteen rows of a country.
const std::vector<Text> REGELN = [] {
    std::vector<Text> r{u"1:01.01.:Neujahr", u"0:06.01.:Heilige Drei Könige (BW)", u"1:VO0200:Karfreitag",
                        u"1:W44B00:Thanksgiving", u"1:25.12.:Weihnachten"};
    r.resize(16, Text(LEERE_FEIERTAGSREGEL));
    return r;
}();

std::vector<Text> operator+(std::vector<Text> a, const std::vector<Text>& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

struct Feiertagsprobe : Prüfplatz {
    const Text pfad = daten(u"Feiertage.dat");
    Feiertagsdatei feiertage{kanal, platz};
    Feiertagsprobe() {
        platz.Startjahr = 2025;
        lege(platz.Systempfad + u"KalvoraFtg.dat",
             std::vector<Text>{u"[KalvoraFeiertageDat]", u"[043:Österreich]"} + REGELN +
                 std::vector<Text>{u"dazwischen", u"[049:Deutschland]"} + REGELN);
    }
    Text lies() {
        return ausgang(*this, pfad, [&] { feiertage.Feiertage_lesen(); });
    }
};

TEST(Feiertagsdatei, LesenUndSchreiben) {
    Feiertagsprobe p;
    const auto datei =
        std::vector<Text>{u"[Feiertage]", u"Reserve", u"España"} + REGELN + std::vector<Text>{u"24.12."};
    p.lege(p.pfad, datei);
    ASSERT_EQ(p.lies(), u"");
    EXPECT_EQ(p.feiertage.Land(), u"España");
    EXPECT_TRUE(enthält(p.feiertage.berechnet().Feiertagsschlüssel, u"271224|"));
    p.fs.platte().entferne(p.pfad);
    p.feiertage.Feiertage_schreiben();
    EXPECT_EQ(p.zeilen(p.pfad), datei);
}

TEST(Feiertagsdatei, ZuWenigeZuVieleUnlesbare) {
    const std::vector<Text> kopf{u"[Feiertage]", u"", u"Deutschland"};
    Feiertagsprobe p;
    p.lege(p.pfad, kopf + std::vector<Text>{u"1:01.01.:Neujahr"});
    ASSERT_EQ(p.lies(), u"");
    EXPECT_EQ(p.feiertage.Feiertagsregeln()(16), LEERE_FEIERTAGSREGEL);
    p.lege(p.pfad,
           kopf + REGELN + std::vector<Text>(16, u"24.12.") + std::vector<Text>{u"Unsinn", u"31.12."});
    ASSERT_EQ(p.lies(), u"");
    EXPECT_FALSE(enthält(p.feiertage.berechnet().Feiertagsschlüssel, u"261231|"));
    for (const auto& [n, zeile] :
         {std::pair<size_t, Text>{2, u"1:VOx200:Karfreitag"}, {0, u"Neujahr"}, {16, u"24.12"}}) {
        auto zeilen = kopf + REGELN + std::vector<Text>{u"24.12."};
        zeilen[3 + n] = zeile;
        p.lege(p.pfad, zeilen);
        EXPECT_TRUE(p.lies().starts_with(u"Zeile " + ziffern(static_cast<long>(n) + 4) + u" der Datei"));
        EXPECT_EQ(p.feiertage.Feiertagsregeln().anzahl(), 32) << "the old state stands";
    }
}

TEST(Feiertagsdatei, ÄltereForm) {
    Feiertagsprobe p;
    p.lege(p.pfad, std::vector<Text>{u"[Feiertage]", u"Reserve"} + REGELN +
                       std::vector<Text>{u"1:26.12.:Zweiter", u"24.12."});
    ASSERT_EQ(p.lies(), u"") << "and the file was left as it is";
    EXPECT_EQ(p.feiertage.Land(), u"Deutschland");
    EXPECT_EQ(p.feiertage.Feiertagsregeln()(17), u"24.12.");
    p.lege(p.pfad, {u"[Feiertage]", u"", u"1:01.01.:Neujahr"});
    EXPECT_EQ(p.lies(), u"Die Datei '/srv/x/Data/Feiertage.dat' ist unvollständig.");
}

TEST(Feiertagsdatei, Verwüstet) {
    Feiertagsprobe p;
    EXPECT_EQ(p.lies(), u"Die Datei '/srv/x/Data/Feiertage.dat' wurde nicht gefunden.");
    p.lege(p.pfad, std::vector<Text>{u"[Feiertage]", u"", u"Deutschland"} + REGELN);
    verwüsten(
        p, p.pfad, [&] { p.feiertage.Feiertage_lesen(); },
        [&] { EXPECT_EQ(p.feiertage.Feiertagsregeln()(5), REGELN[4]); });
}

TEST(Feiertagsdatei, VorlageJeLand) {
    Feiertagsprobe p;
    p.feiertage.KalvoraFeiertageDat_lesen(u"049");
    EXPECT_EQ(p.feiertage.Land(), u"Deutschland");
    p.feiertage.KalvoraFeiertageDat_lesen(u"007");
    EXPECT_EQ(p.feiertage.Land(), u"");
    p.lege(p.platz.Systempfad + u"KalvoraFtg.dat", {u"[KalvoraFeiertageDat]", u"[049:Deutschland]"});
    EXPECT_THROW(p.feiertage.KalvoraFeiertageDat_lesen(u"049"), Programmabbruch) << "it is cut";
}

// The fuzz target makes every damage: none of it stops anybody.
TEST(Ferientage, TageDesMonats) {
    for (const auto& [zahl, farbe] : std::vector<std::pair<Text, Farbe>>{
             {u"12648447", 0xC0FFFFu}, {u"16777216", 0xD8F0D8u}, {Text(30, u'9'), 0xD8F0D8u}}) {
        Prüfplatz p;
        Ferientagedatei ferien(p.kanal, p.platz);
        p.lege(p.daten(u"Ferientage.dat"),
               {u"[Ferientage]", u"", zahl, u"", u"", u"2610:" + Text(31, u'0'),
                u"2611:" + Text(5, u'1') + Text(26, u'0'), u"2611:" + Text(30, u'0') + u"1"});
        ferien.Ferienindex_setzen(u"2611", false);
        ferien.Ferientage_lesen();
        EXPECT_EQ(ferien.Ferienfarbe(), farbe) << zu_utf8(zahl);
        EXPECT_TRUE(ferien.Ferientag(31)) << "of several rows of a month the last";
        EXPECT_FALSE(ferien.Ferientag(1) || ferien.Ferientag(0) || ferien.Ferientag(32));
        ferien.Ferienindex_setzen(u"2611", true);
        ferien.Ferientage_lesen();
        EXPECT_FALSE(ferien.Ferientag(31)) << "switched off";
    }
}

} // namespace
} // namespace kalvora
