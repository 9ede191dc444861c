#include "files/feiertagsdatei.h"

#include <fstream>
#include <iterator>

#include "unit/files/pruefplatz.h"

namespace kalvora {
namespace {

const std::vector<Text> REGELN{u"1:01.01.:Neujahr",
                               u"0:06.01.:Heilige Drei Könige (BW)",
                               u"1:VO0200:Karfreitag",
                               u"1:NO0100:Ostermontag",
                               u"1:01.05.:Tag der Arbeit",
                               u"1:NO3900:Himmelfahrt",
                               u"1:NO5000:Pfingstmontag",
                               u"0:BU0000:Buß- und Bettag",
                               u"1:W44B00:Thanksgiving",
                               u"1:L10500:Memorial Day",
                               u"1:25.12.:Weihnachten",
                               u"0:000000:",
                               u"0:000000:",
                               u"0:000000:",
                               u"0:000000:",
                               u"0:000000:"};

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
    EXPECT_EQ(p.feiertage.Feiertagsregeln().anzahl(), 17);
    EXPECT_TRUE(enthält(p.feiertage.berechnet().Feiertagsschlüssel, u"271224|"));
    EXPECT_TRUE(enthält(p.feiertage.berechnet().Feiertagsschlüssel, u"260403|"));
    p.fs.platte().entferne(p.pfad);
    p.feiertage.Feiertage_schreiben();
    EXPECT_EQ(p.zeilen(p.pfad), datei);
}

TEST(Feiertagsdatei, ZuWenigeZuVieleUnlesbare) {
    const std::vector<Text> kopf{u"[Feiertage]", u"", u"Deutschland"};
    Feiertagsprobe p;
    p.lege(p.pfad, kopf + std::vector<Text>{u"1:01.01.:Neujahr"});
    ASSERT_EQ(p.lies(), u"");
    EXPECT_EQ(p.feiertage.Feiertagsregeln().anzahl(), 16);
    EXPECT_EQ(p.feiertage.Feiertagsregeln()(16), LEERE_FEIERTAGSREGEL);
    p.lege(p.pfad,
           kopf + REGELN + std::vector<Text>(16, u"24.12.") + std::vector<Text>{u"Unsinn", u"31.12."});
    ASSERT_EQ(p.lies(), u"");
    EXPECT_EQ(p.feiertage.Feiertagsregeln().anzahl(), 32);
    EXPECT_FALSE(enthält(p.feiertage.berechnet().Feiertagsschlüssel, u"261231|"));
    for (const auto& [n, zeile] :
         {std::pair<size_t, Text>{2, u"1:VOx200:Karfreitag"}, {0, u"Neujahr"}, {16, u"24.12"}}) {
        auto zeilen = kopf + REGELN + std::vector<Text>{u"24.12."};
        zeilen[3 + n] = zeile;
        p.lege(p.pfad, zeilen);
        EXPECT_EQ(p.lies(), u"Zeile " + ziffern(static_cast<long>(n) + 4) +
                                u" der Datei '/srv/x/Data/Feiertage.dat' ist fehlerhaft.");
        EXPECT_EQ(p.feiertage.Feiertagsregeln().anzahl(), 32) << "the old state stands";
    }
}

TEST(Feiertagsdatei, ÄltereForm) {
    Feiertagsprobe p;
    const auto alt = std::vector<Text>{u"[Feiertage]", u"Reserve"} + REGELN +
                     std::vector<Text>{u"1:26.12.:Zweiter", u"24.12."};
    p.lege(p.pfad, alt);
    ASSERT_EQ(p.lies(), u"") << "and the file was left as it is";
    EXPECT_EQ(p.feiertage.Land(), u"Deutschland");
    EXPECT_EQ(p.feiertage.Feiertagsregeln().anzahl(), 17);
    EXPECT_EQ(p.feiertage.Feiertagsregeln()(17), u"24.12.");
    EXPECT_EQ(p.feiertage.Reservezeile(), u"Reserve");
    p.lege(p.pfad, {u"[Feiertage]", u"", u"1:01.01.:Neujahr"});
    EXPECT_EQ(p.lies(), u"Die Datei '/srv/x/Data/Feiertage.dat' ist unvollständig.");
}

TEST(Feiertagsdatei, Verwüstet) {
    Feiertagsprobe p;
    EXPECT_EQ(p.lies(), u"Die Datei '/srv/x/Data/Feiertage.dat' wurde nicht gefunden.");
    p.lege(p.pfad, std::vector<Text>{u"[Feiertage]", u"", u"Deutschland"} + REGELN);
    verwüsten(
        p, p.pfad, [&] { p.feiertage.Feiertage_lesen(); },
        [&] { EXPECT_EQ(p.feiertage.Feiertagsregeln()(11), REGELN[10]); });
}

TEST(Feiertagsdatei, VorlageJeLand) {
    Feiertagsprobe p;
    p.feiertage.KalvoraFeiertageDat_lesen(u"049");
    EXPECT_EQ(p.feiertage.Land(), u"Deutschland");
    EXPECT_EQ(p.feiertage.Feiertagsregeln()(16), u"0:000000:");
    p.feiertage.KalvoraFeiertageDat_lesen(u"007");
    EXPECT_EQ(p.feiertage.Land(), u"");
    EXPECT_EQ(p.feiertage.Feiertagsregeln(), (Feld<Text>(16, Text(LEERE_FEIERTAGSREGEL))));
    p.feiertage.Feiertage_berechnen();
    EXPECT_EQ(p.feiertage.berechnet().Feiertagsschlüssel, u"000000|");

    // The delivered file serves where the workstation has no copy.
    p.fs.platte().entferne(p.platz.Systempfad + u"KalvoraFtg.dat");
    p.lege(u"/opt/kalvora/KalvoraFtg.dat",
           std::vector<Text>{u"[KalvoraFeiertageDat]", u"[033:France]"} + REGELN);
    p.feiertage.KalvoraFeiertageDat_lesen(u"033");
    EXPECT_EQ(p.feiertage.Land(), u"France");
}

TEST(Feiertagsdatei, BeschädigteVorlageBeendetDasProgramm) {
    const std::vector<Text> kopf{u"[KalvoraFeiertageDat]", u"[049:Deutschland]"};
    auto falsch = kopf + REGELN;
    falsch[5] = u"[050:Nirgends]";
    const std::vector<Text> kurz = kopf + std::vector<Text>{u"1:01.01.:Neujahr"};
    for (const std::string& bytes : {als_Datei({u"[Anders]"}), als_Datei(kurz), als_Datei(falsch),
                                     std::string(), als_Datei(kopf + REGELN).substr(0, 300)}) {
        Feiertagsprobe p;
        p.feiertage.KalvoraFeiertageDat_lesen(u"043");
        p.fs.schreibe(p.platz.Systempfad + u"KalvoraFtg.dat", bytes);
        try {
            p.feiertage.KalvoraFeiertageDat_lesen(u"049");
            ADD_FAILURE() << bytes.size();
        } catch (const Programmabbruch& abbruch) {
            EXPECT_TRUE(enthält(abbruch.text(), u"KalvoraFtg.dat"));
            EXPECT_TRUE(abbruch.text().ends_with(
                u"Installieren Sie das Programm erneut, um dieses Problem zu beheben"));
        }
        EXPECT_EQ(p.feiertage.Land(), u"Österreich");
    }
}

TEST(Feiertagsdatei, AusgelieferteVorlage) {
    std::ifstream strom(KALVORA_BIN_DIR "/KalvoraFtg.dat", std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(strom), {}};
    ASSERT_FALSE(bytes.empty()) << "it is made by the build";
    Feiertagsprobe p;
    p.fs.schreibe(p.platz.Systempfad + u"KalvoraFtg.dat", bytes);
    for (const auto& [code, land] : {std::pair<Text, Text>{u"049", u"Deutschland"},
                                     {u"043", u"Österreich"},
                                     {u"041", u"Schweiz"},
                                     {u"033", u"France"},
                                     {u"034", u"España"},
                                     {u"039", u"Italia"},
                                     {u"001", u"United States"},
                                     {u"002", u"Canada"},
                                     {u"044", u"United Kingdom"},
                                     {u"031", u"Nederland"},
                                     {u"032", u"Belgique"},
                                     {u"352", u"Luxembourg"},
                                     {u"045", u"Danmark"},
                                     {u"046", u"Sverige"},
                                     {u"048", u"Polska"},
                                     {u"351", u"Portugal"}}) {
        p.feiertage.KalvoraFeiertageDat_lesen(code);
        EXPECT_EQ(p.feiertage.Land(), land);
        p.feiertage.Feiertage_berechnen();
        EXPECT_GT(p.feiertage.berechnet().Feiertagsliste.anzahl(), 3) << zu_utf8(land);
    }
}

struct Ferienprobe : Prüfplatz {
    const Text pfad = daten(u"Ferientage.dat");
    Ferientagedatei ferien{kanal, platz};
    const Text november = u"2611:" + Text(5, u'1') + Text(26, u'0');
    std::vector<Text> datei() const {
        return {u"[Ferientage]", u"", u"12648447", u"", u"", u"2610:" + Text(31, u'0'), november};
    }
    void lies() {
        ferien.Ferienindex_setzen(u"2611", false);
        ferien.Ferientage_lesen();
    }
};

TEST(Ferientage, TageDesMonats) {
    Ferienprobe p;
    p.lies();
    EXPECT_FALSE(p.ferien.Daten_vorhanden()) << "a missing file is no error";
    p.lege(p.pfad, p.datei() + std::vector<Text>{u"2611:" + Text(30, u'0') + u"1"});
    p.lies();
    EXPECT_EQ(p.ferien.Ferienfarbe(), 0xC0FFFFu);
    EXPECT_EQ(p.ferien.Ferienindex(), 3) << "of several rows of a month the last";
    EXPECT_TRUE(p.ferien.Ferientag(31));
    EXPECT_FALSE(p.ferien.Ferientag(1) || p.ferien.Ferientag(0) || p.ferien.Ferientag(32));
    p.ferien.Ferienindex_setzen(u"2611", true);
    EXPECT_EQ(p.ferien.Ferienindex(), 0);
    p.ferien.Ferienindex_setzen(u"2701", false);
    EXPECT_FALSE(p.ferien.Ferientag(31));
    p.ferien.Ferienindex_setzen(u"", false);
    EXPECT_EQ(p.ferien.Ferienindex(), 0);
    for (const auto& [zahl, farbe] : std::vector<std::pair<Text, Farbe>>{{u"0", 0u},
                                                                         {u"16777215", 0xFFFFFFu},
                                                                         {u"16777216", 0xD8F0D8u},
                                                                         {u"-2147483633", 0xD8F0D8u},
                                                                         {Text(30, u'9'), 0xD8F0D8u}}) {
        auto zeilen = p.datei();
        zeilen[2] = zahl;
        p.lege(p.pfad, zeilen);
        p.lies();
        EXPECT_EQ(p.ferien.Ferienfarbe(), farbe) << zu_utf8(zahl);
        EXPECT_TRUE(p.ferien.Ferientag(1));
    }
}

TEST(Ferientage, JederFehlerHeißtKeineFerien) {
    Ferienprobe p;
    const std::string ganz = als_Datei(p.datei());
    std::vector<std::string> schäden{als_Datei({u"[Anders]"}),
                                     std::string(300, '\0'),
                                     ganz + "\r\n",
                                     als_Datei(p.datei() + std::vector<Text>{Text(links(p.november, 35))}),
                                     als_Datei(p.datei() + std::vector<Text>{u"26110" + Text(31, u'1')}),
                                     als_Datei({u"[Ferientage]", u"", u"gelb", u"", u"", p.november})};
    for (size_t n = 0; n + 2 < ganz.size(); n += 3)
        schäden.push_back(ganz.substr(0, n));
    for (const std::string& bytes : schäden) {
        p.fs.schreibe(p.pfad, ganz);
        p.lies();
        ASSERT_TRUE(p.ferien.Ferientag(1));
        p.fs.schreibe(p.pfad, bytes);
        p.lies();
        EXPECT_FALSE(p.ferien.Ferientag(1)) << bytes.size();
        EXPECT_EQ(p.kanal.Letzte_Datei(), u"");
    }
    p.fs.störe({.aufruf = "open", .nummer = 70, .dauernd = true});
    p.lies();
    EXPECT_FALSE(p.ferien.Daten_vorhanden());
}

} // namespace
} // namespace kalvora
