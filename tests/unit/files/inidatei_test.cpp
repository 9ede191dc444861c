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
    // Log records that tell of a fault in `was`.
    std::ptrdiff_t gemeldet(TextView was) const {
        const auto alle = zeilen(platz.Logpfad + u"2611 Kalvora.log");
        return std::count_if(alle.begin(), alle.end(), [&](const Text& z) {
            return z.ends_with(u"|KalvoAdmin|Fehler beim " + Text(was) + u" der Datei Kalvora_Muster.ini");
        });
    }
    std::vector<Text> inizeilen() const {
        return teilen(aus_cp1252(*fs.inhalt(hier)), u'\n');
    } // each with its CR
    void lege_Zeilen(const std::vector<Text>& zeilen) {
        Text alle;
        for (const Text& zeile : zeilen)
            alle += zeile + u"\n";
        fs.schreibe(hier, zu_cp1252(alle));
    }
};

TEST(Inidatei, HinUndZurück) {
    Iniprobe p;
    auto& wahl = p.ini.wahl();
    for (int n = 0; n < fenster::ANZAHL; ++n)
        p.f()(n) = n < 20 ? n * 7 - 100 : n % 10;
    p.f()(20) = 0;
    p.f()(fenster::NAMENSBREITE) = 444;
    p.f()(fenster::SF_BREITE) = 1830;
    wahl.Gruppenauswahl = 2;
    wahl.Ordner[0] = u"/home/müller/Export/";
    wahl.TaSum = u"010101010101010101010101";
    wahl.weitere_TaSum[1] = Text(24, u'0');
    wahl.Schrift = u"DejaVu Sans";
    wahl.Drucker = u"Büro 2";
    p.ini.Inidatei_schreiben();
    const auto zeilen = p.inizeilen();
    ASSERT_EQ(zeilen.size(), 66u);
    for (const auto& [n, zeile] : {std::pair<size_t, TextView>{1, u"[Kalvora]"},
                                   {22, u"0"},
                                   {23, u"[Grundfarben]"},
                                   {24, u"&HFFFFFF"},
                                   {33, u"[Anzeigegruppe]"},
                                   {35, u"[Ordner]"},
                                   {36, u"\\home\\müller\\Export\\"},
                                   {37, u"void"},
                                   {38, u"[Settings]"},
                                   {43, u"[TaSum]"},
                                   {48, u"[ExtSettings]"},
                                   {59, u"[Font]"},
                                   {61, u"[Printer]"},
                                   {63, u"[SFBreite]"},
                                   {65, u"1830"}})
        EXPECT_EQ(zeilen[n - 1], Text(zeile) + u"\r") << n;
    const auto alles = [](const Anzeigewahl& w) {
        return std::tuple(w.Fensterdaten_, w.Gruppenauswahl, w.Ordner, w.TaSum, w.weitere_TaSum, w.Schrift,
                          w.Drucker);
    };
    const Anzeigewahl vorher = wahl;
    Inidatei andere(p.kanal, p.platz, p.konfig, p.log);
    andere.Inidatei_lesen(3);
    EXPECT_TRUE(alles(andere.wahl()) == alles(vorher));
    andere.Inidatei_lesen(2);
    EXPECT_EQ(andere.wahl().Gruppenauswahl, 0) << "beyond the list";
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
    EXPECT_FALSE(schreibt());
    p.links() += 50; // the left edge was dragged: the two changes cancel out in a plain sum
    p.f()(fenster::BREITE) -= 50;
    EXPECT_TRUE(schreibt());
    EXPECT_FALSE(schreibt());
    p.ini.wahl().Schrift = u"Arial";
    p.f()(fenster::ZUSTAND) = 1;
    EXPECT_FALSE(schreibt()) << "minimised";
    p.f()(fenster::ZUSTAND) = 0;
    EXPECT_TRUE(schreibt());
    p.ini.Inidateien_löschen();
    p.links() = 1;
    p.ini.Inidatei_lesen();
    EXPECT_FALSE(schreibt()) << "blocked for this run, also behind another read";
    EXPECT_FALSE(p.fs.gibt_es(p.hier));
}

TEST(Inidatei, GrenzenBeimLesen) {
    Iniprobe p;
    p.f()(fenster::OBEN) = -120;
    p.f()(5) = std::numeric_limits<std::int32_t>::min();
    p.f()(6) = std::numeric_limits<std::int32_t>::max();
    p.f()(fenster::NAMENSBREITE) = 5000;
    p.f()(fenster::TAGESSUMMEN) = 1;
    p.f()(22) = 12; // no digit: only this value is lost, not the whole file
    p.schreibe_links(-121);
    p.konfig.ändern().Benutzerrolle = 0;
    EXPECT_EQ(p.gelesen(), 0);
    EXPECT_EQ(p.f()(fenster::OBEN), -120);
    EXPECT_EQ(p.f()(5), 0);
    EXPECT_EQ(p.f()(6), std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(p.f()(fenster::NAMENSBREITE), 1200);
    EXPECT_EQ(p.f()(22), 0);
    EXPECT_EQ(p.f()(fenster::TAGESSUMMEN), 0) << "not for everybody";
}

TEST(Inidatei, AusweichordnerUndSpätererStempel) {
    Iniprobe p;
    p.schreibe_links(1);
    p.fs.platte().setze_rechte(p.hier, 0444);
    p.schreibe_links(2);
    EXPECT_TRUE(p.fs.gibt_es(p.temp));
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
    p.schreibe_links(6);
    EXPECT_EQ(p.gelesen(), 6);
    EXPECT_EQ(p.gemeldet(u"Öffnen"), 2);
    EXPECT_TRUE(p.fs.gibt_es(p.hier)) << "what cannot be opened is not deleted";
}

TEST(Inidatei, SchadenKostetNurDieAnzeige) {
    Iniprobe p;
    p.schreibe_links(77);
    auto gut = p.inizeilen();
    gut.pop_back();
    for (const auto& [n, zeile] : {std::pair<size_t, Text>{1, u"[Anders]"},
                                   {2, u"x"},
                                   {2, u""},
                                   {5, u"123456789012"},
                                   {24, u"&HFFFFF"},
                                   {34, u"a"},
                                   {39, u"12"},
                                   {44, u"0101"},
                                   {49, u"10"},
                                   {44, Text(24, u'2')},
                                   {65, u"1-2"}}) {
        SCOPED_TRACE(n);
        Iniprobe q;
        auto zeilen = gut;
        zeilen[n - 1] = zeile + u"\r";
        q.lege_Zeilen(zeilen);
        q.fs.schreibe(q.temp, "älter");
        q.fs.platte().setze_stempel(q.temp, 1);
        EXPECT_EQ(q.gelesen(), 0);
        EXPECT_EQ(q.f()(fenster::NAMENSBREITE), 300);
        EXPECT_FALSE(q.fs.gibt_es(q.hier) || q.fs.gibt_es(q.temp));
        EXPECT_EQ(q.gemeldet(u"Lesen"), 1);
        q.schreibe_links(5);
        EXPECT_TRUE(q.fs.gibt_es(q.hier)) << "writing goes on";
    }
    for (size_t n = 0; n < gut.size(); ++n) { // too short: the same without a log record
        Iniprobe q;
        q.lege_Zeilen({gut.begin(), gut.begin() + static_cast<std::ptrdiff_t>(n)});
        EXPECT_EQ(q.gelesen(), 0) << n;
        EXPECT_FALSE(q.fs.gibt_es(q.hier) || q.gemeldet(u"Lesen") > 0) << n;
    }
}

} // namespace
} // namespace kalvora
