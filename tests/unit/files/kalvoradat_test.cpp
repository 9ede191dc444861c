#include "files/kalvoradat.h"

#include "hilfen/schaden.h"

namespace kalvora {
namespace {

struct Pfadprobe : Prüfplatz {
    const Text pfad = platz.Systempfad + u"Kalvora.dat";
    Pfadprobe() { platz.Datenpfad = platz.Logpfad = u""; }
    Text lies() {
        return ausgang(*this, pfad, [&] { Kalvoradat_lesen(kanal, platz); });
    }
};

TEST(Kalvoradat, AltePlainFormUndProgrammordner) {
    Pfadprobe p;
    Kalvoradat_lesen(p.kanal, p.platz);
    EXPECT_EQ(p.platz.Datenpfad, u"") << "no file: the paths stay empty";
    p.fs.schreibe(u"/opt/kalvora/KALVORA.DAT", "[Kalvora]\r\ndata_pfad=/srv/y/Data\r\nlog_pfad=/l");
    Kalvoradat_lesen(p.kanal, p.platz);
    EXPECT_EQ(p.platz.Datenpfad, u"/srv/y/Data/");
    EXPECT_EQ(p.platz.Logpfad, u"/l/");
}

TEST(Kalvoradat, ZurückZumFrüherenOrdner) {
    const std::vector<Text> zeilen{u"[Kalvora]", u"data_pfad=", u"log_pfad=", u"data_pfad_alt=\\alt\\Data\\"};
    Pfadprobe p;
    p.lege(p.pfad, zeilen);
    p.fs.schreibe(u"/alt/Data/2611 261101 Data.dat", "x");
    Kalvoradat_lesen(p.kanal, p.platz);
    EXPECT_EQ(p.platz.Datenpfad, u"") << "without logs it is no data folder";
    EXPECT_EQ(p.platz.Datenpfad_alt, u"/alt/Data/");
    EXPECT_TRUE(
        p.fenster.hinweise.at(0).starts_with(u"Hinweis: Keine Daten im Ordner '/alt/Data' gefunden."));
    p.fs.schreibe(u"/alt/Data/Logs/2611 Kalvora.log", "x");
    Kalvoradat_lesen(p.kanal, p.platz);
    EXPECT_EQ(p.platz.Datenpfad, u"/alt/Data/");
    EXPECT_EQ(p.platz.Logpfad, u"/alt/Data/Logs/");
    EXPECT_EQ(p.platz.Datenpfad_alt, u"");
    EXPECT_EQ(p.zeilen(p.pfad),
              (std::vector<Text>{u"[Kalvora]", u"data_pfad=\\alt\\Data\\", u"log_pfad=\\alt\\Data\\Logs\\"}));
}

TEST(Kalvoradat, NichtSpeicherbar) {
    for (const TextView ordner : {u"/srv/x/Data/", u"/srv/\u0142/Data/", u"/srv/a\tb/Data/"}) {
        Pfadprobe p;
        p.lege(p.pfad, {u"alt"});
        p.platz.Datenpfad = ordner;
        if (ordner == u"/srv/x/Data/") p.fs.störe({.aufruf = "sync", .nummer = 61, .dauernd = true});
        try {
            Kalvoradat_schreiben(p.kanal, p.platz);
            ADD_FAILURE() << "nothing was told";
        } catch (const Programmabbruch& abbruch) {
            EXPECT_TRUE(abbruch.text().starts_with(u"Der Datenordner kann nicht in '" + p.pfad));
        }
        EXPECT_EQ(p.zeilen(p.pfad), std::vector<Text>{u"alt"});
    }
}

} // namespace
} // namespace kalvora
