#include "files/inidatei.h"

#include <limits>

#include "hilfen/schaden.h"

namespace kalvora {
namespace {

struct Iniprobe : Prüfplatz {
    Inidatei ini{kanal, platz, konfig, log};
    const Text hier = platz.Inipfad + platz.Inidateiname, temp = platz.Temppfad + platz.Inidateiname;
    Iniprobe() {
        konfig.ändern() = Konfiguration_Standard(u"boss");
        konfig.ändern().Benutzerrolle = 2;
        ini.Inidatei_lesen();
    }
    Fensterdaten& f() { return ini.wahl().Fensterdaten_; }
    int& links() { return f()(fenster::LINKS); }
    void schreibe_links(int wert) {
        links() = wert;
        ini.Inidatei_schreiben();
    }
    int gelesen() {
        ini.Inidatei_lesen();
        return links();
    }
};

TEST(Inidatei, HinUndZurück) {
    Iniprobe p;
    auto& wahl = p.ini.wahl();
    for (int n = 0; n < 20; ++n)
        p.f()(n) = n * 7 - 100;
    p.f()(fenster::SF_BREITE) = 1830;
    wahl.Gruppenauswahl = 2;
    wahl.Ordner[0] = u"/home/müller/Export/";
    wahl.weitere_TaSum[1] = Text(24, u'0');
    wahl.Drucker = u"Büro 2";
    p.ini.Inidatei_schreiben();
    const auto zeilen = teilen(aus_cp1252(*p.fs.inhalt(p.hier)), u'\n'); // each with its CR
    ASSERT_EQ(zeilen.size(), 66u);
    EXPECT_EQ(zeilen[35], u"\\home\\müller\\Export\\\r");
    EXPECT_EQ(zeilen[64], u"1830\r");
    Inidatei andere(p.kanal, p.platz, p.konfig, p.log);
    andere.Inidatei_lesen(3);
    const auto alles = [](const Anzeigewahl& w) {
        return std::tuple(w.Fensterdaten_, w.Gruppenauswahl, w.Ordner, w.weitere_TaSum, w.Drucker);
    };
    EXPECT_TRUE(alles(andere.wahl()) == alles(wahl));
}

TEST(Inidatei, NurÄnderungenWerdenGeschrieben) {
    Iniprobe p;
    p.f()(fenster::BREITE) = 5000;
    p.schreibe_links(100);
    p.ini.Inidatei_lesen();
    const auto schreibt = [&] {
        p.fs.tagebuch_leeren();
        p.ini.Inidatei_schreiben();
        return p.fs.anzahl("write") > 0;
    };
    p.links() += 50; // the left edge was dragged: the two changes cancel out in a plain sum
    p.f()(fenster::BREITE) -= 50;
    EXPECT_TRUE(schreibt());
    p.f()(fenster::ZUSTAND) = 1;
    EXPECT_FALSE(schreibt()) << "minimised";
    p.f()(fenster::ZUSTAND) = 0;
    EXPECT_FALSE(schreibt());
    p.ini.Inidateien_löschen();
    p.links() = 1;
    p.ini.Inidatei_lesen();
    EXPECT_FALSE(schreibt()) << "blocked for this run, also behind another read";
}

TEST(Inidatei, GrenzenBeimLesen) {
    Iniprobe p;
    p.f()(fenster::OBEN) = -120;
    p.f()(5) = std::numeric_limits<std::int32_t>::min();
    p.f()(fenster::NAMENSBREITE) = 5000;
    p.f()(fenster::TAGESSUMMEN) = 1;
    p.f()(22) = 12; // no digit: only this value is lost, not the whole file
    p.schreibe_links(-121);
    p.konfig.ändern().Benutzerrolle = 0;
    EXPECT_EQ(p.gelesen(), 0);
    for (const auto& [n, wert] : {std::pair{fenster::OBEN, -120},
                                  {5, 0},
                                  {fenster::NAMENSBREITE, 1200},
                                  {22, 0},
                                  {fenster::TAGESSUMMEN, 0}}) // these are not for everybody
        EXPECT_EQ(p.f()(n), wert) << n;
}

TEST(Inidatei, AusweichordnerUndSpätererStempel) {
    Iniprobe p;
    p.schreibe_links(1);
    p.fs.platte().setze_rechte(p.hier, 0444);
    p.schreibe_links(2);
    EXPECT_EQ(p.gelesen(), 2) << "the later copy wins";
    p.fs.platte().setze_stempel(p.hier, p.fs.platte().zeit + 1);
    EXPECT_EQ(p.gelesen(), 1);
    p.fs.platte().setze_rechte(p.hier, 0644);
    p.schreibe_links(3);
    EXPECT_FALSE(p.fs.gibt_es(p.temp)) << "one copy is enough again";
    p.fs.störe({.aufruf = "open", .maske = u"*.ini*", .nummer = 70, .dauernd = true});
    p.schreibe_links(4);
    EXPECT_EQ(p.gelesen(), 0) << "unreadable: defaults";
    p.fs.störe_nicht();
    p.schreibe_links(5);
    EXPECT_EQ(p.gelesen(), 3) << "they do not replace what could not be read";
    const auto log = p.zeilen(p.platz.Logpfad + u"2611 Kalvora.log");
    EXPECT_TRUE(log.at(0).ends_with(u"|KalvoAdmin|Fehler beim Öffnen der Datei Kalvora_Muster.ini"));
}

// The fuzz target makes every other damage.
TEST(Inidatei, SchadenKostetNurDieAnzeige) {
    Iniprobe p;
    p.schreibe_links(77);
    p.fs.schreibe(p.hier, "Schaden" + *p.fs.inhalt(p.hier));
    EXPECT_EQ(p.gelesen(), 0);
    EXPECT_FALSE(p.fs.gibt_es(p.hier));
}

} // namespace
} // namespace kalvora
