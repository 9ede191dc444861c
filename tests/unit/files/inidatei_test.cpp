#include "files/inidatei.h"

#include <limits>

#include "unit/files/pruefplatz.h"

namespace kalvora {
namespace {

struct Iniprobe : Prüfplatz {
    Konfigdaten konfig{kanal, platz};
    Logbuch log{kanal, platz, konfig};
    Inidatei ini{kanal, platz, konfig, log};
    const Text hier = platz.Inipfad + platz.Inidateiname, temp = platz.Temppfad + platz.Inidateiname;
    Iniprobe() {
        konfig.ändern() = Konfiguration_Standard(u"boss");
        konfig.ändern().Benutzerrolle = 2;
        ini.Inidatei_lesen();
    }
    Fensterdaten& f() { return ini.wahl().Fensterdaten_; }
    std::vector<Text> logtexte() const {
        std::vector<Text> texte;
        for (const Text& zeile : zeilen(platz.Logpfad + u"2611 Kalvora.log"))
            texte.push_back(zeile.substr(zeile.find(u"KalvoAdmin|") + 11));
        return texte;
    }
    static std::vector<std::string> zerlegt(const std::string& bytes) {
        std::vector<std::string> zeilen;
        for (size_t von = 0, bis; (bis = bytes.find("\r\n", von)) != std::string::npos; von = bis + 2)
            zeilen.push_back(bytes.substr(von, bis - von));
        return zeilen;
    }
    static std::string verbunden(const std::vector<std::string>& zeilen) {
        std::string bytes;
        for (const std::string& zeile : zeilen)
            bytes += zeile + "\r\n";
        return bytes;
    }
};

TEST(Inidatei, Vorgaben) {
    Iniprobe p;
    const std::map<int, int> erwartet{{21, 3}, {22, 1}, {23, 0}, {24, 0},
                                      {27, 0}, {28, 0}, {29, 1}, {31, 300}};
    for (int n = 0; n < fenster::ANZAHL; ++n)
        EXPECT_EQ(p.f()(n), erwartet.contains(n) ? erwartet.at(n) : 0) << n;
    EXPECT_EQ(p.ini.wahl().TaSum, Text(24, u'1'));
}

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
    const auto zeilen = Iniprobe::zerlegt(*p.fs.inhalt(p.hier));
    ASSERT_EQ(zeilen.size(), 65u);
    const std::pair<size_t, std::string> köpfe[] = {{1, "[Kalvora]"},
                                                    {22, "0"},
                                                    {23, "[Grundfarben]"},
                                                    {24, "&HFFFFFF"},
                                                    {33, "[Anzeigegruppe]"},
                                                    {35, "[Ordner]"},
                                                    {37, "void"},
                                                    {38, "[Settings]"},
                                                    {43, "[TaSum]"},
                                                    {45, "void"},
                                                    {48, "[ExtSettings]"},
                                                    {59, "[Font]"},
                                                    {61, "[Printer]"},
                                                    {63, "[SFBreite]"},
                                                    {65, "1830"},
                                                    {36, "\\home\\m\xFCller\\Export\\"}};
    for (const auto& [n, zeile] : köpfe)
        EXPECT_EQ(zeilen[n - 1], zeile) << n;

    const Anzeigewahl vorher = wahl;
    Inidatei andere(p.kanal, p.platz, p.konfig, p.log);
    andere.Inidatei_lesen(3);
    EXPECT_EQ(andere.wahl().Fensterdaten_, vorher.Fensterdaten_);
    EXPECT_EQ(andere.wahl().Gruppenauswahl, 2);
    EXPECT_EQ(andere.wahl().Ordner, vorher.Ordner);
    EXPECT_EQ(andere.wahl().TaSum, vorher.TaSum);
    EXPECT_EQ(andere.wahl().weitere_TaSum, vorher.weitere_TaSum);
    EXPECT_EQ(andere.wahl().Schrift, vorher.Schrift);
    EXPECT_EQ(andere.wahl().Drucker, vorher.Drucker);
    andere.Inidatei_lesen(2);
    EXPECT_EQ(andere.wahl().Gruppenauswahl, 0) << "beyond the list";
}

TEST(Inidatei, NurÄnderungenWerdenGeschrieben) {
    Iniprobe p;
    p.f()(fenster::LINKS) = 100;
    p.f()(fenster::BREITE) = 5000;
    p.ini.Inidatei_schreiben();
    p.ini.Inidatei_lesen();
    const auto schreibt = [&] {
        p.fs.tagebuch_leeren();
        p.ini.Inidatei_schreiben();
        return p.fs.anzahl("write") > 0;
    };
    EXPECT_FALSE(schreibt());
    p.f()(fenster::LINKS) += 50; // the left edge was dragged: the two changes cancel out in a plain sum
    p.f()(fenster::BREITE) -= 50;
    EXPECT_TRUE(schreibt());
    EXPECT_FALSE(schreibt());
    p.ini.wahl().Schrift = u"Arial";
    p.f()(fenster::ZUSTAND) = 1;
    EXPECT_FALSE(schreibt()) << "minimised";
    p.f()(fenster::ZUSTAND) = 0;
    p.konfig.ändern().Grundfarben(0) = 0;
    EXPECT_TRUE(schreibt());
    p.ini.Inidateien_löschen();
    EXPECT_FALSE(p.fs.gibt_es(p.hier));
    p.f()(fenster::LINKS) = 1;
    EXPECT_FALSE(schreibt()) << "blocked for this run";
    p.ini.Inidatei_lesen();
    EXPECT_FALSE(schreibt()) << "also behind another read";
}

TEST(Inidatei, GrenzenBeimLesen) {
    Iniprobe p;
    p.f()(fenster::LINKS) = -121;
    p.f()(fenster::OBEN) = -120;
    p.f()(5) = std::numeric_limits<std::int32_t>::min();
    p.f()(6) = std::numeric_limits<std::int32_t>::max();
    p.f()(fenster::NAMENSBREITE) = 5000;
    p.f()(fenster::TAGESSUMMEN) = 1;
    p.ini.Inidatei_schreiben();
    p.ini.Inidatei_lesen();
    EXPECT_EQ(p.f()(fenster::LINKS), 0);
    EXPECT_EQ(p.f()(fenster::OBEN), -120);
    EXPECT_EQ(p.f()(5), 0);
    EXPECT_EQ(p.f()(6), std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(p.f()(fenster::NAMENSBREITE), 1200);
    EXPECT_EQ(p.f()(fenster::TAGESSUMMEN), 1);
    p.f()(22) = 12; // no digit: only this value is lost, not the whole file
    p.f()(25) = -1;
    p.ini.wahl().TaSum = u"01";
    p.ini.Inidatei_schreiben();
    p.konfig.ändern().Benutzerrolle = 0;
    p.ini.Inidatei_lesen();
    EXPECT_EQ(p.f()(22), 0);
    EXPECT_EQ(p.f()(fenster::OBEN), -120);
    EXPECT_EQ(p.f()(fenster::TAGESSUMMEN), 0);
}

TEST(Inidatei, AusweichordnerUndSpätererStempel) {
    Iniprobe p;
    p.f()(fenster::LINKS) = 1;
    p.ini.Inidatei_schreiben();
    p.fs.platte().setze_rechte(p.hier, 0444);
    p.f()(fenster::LINKS) = 2;
    p.ini.Inidatei_schreiben();
    EXPECT_TRUE(p.fs.gibt_es(p.temp));
    p.ini.Inidatei_lesen();
    EXPECT_EQ(p.f()(fenster::LINKS), 2) << "the later copy wins";
    p.fs.platte().setze_stempel(p.hier, p.fs.platte().zeit + 1);
    p.ini.Inidatei_lesen();
    EXPECT_EQ(p.f()(fenster::LINKS), 1);
    p.fs.platte().setze_rechte(p.hier, 0644);
    p.f()(fenster::LINKS) = 3;
    p.ini.Inidatei_schreiben();
    EXPECT_FALSE(p.fs.gibt_es(p.temp)) << "one copy is enough again";
    p.fs.störe({.aufruf = "open", .maske = u"*.ini*", .nummer = 70, .dauernd = true});
    p.f()(fenster::LINKS) = 4;
    p.ini.Inidatei_schreiben();
    p.ini.Inidatei_lesen();
    EXPECT_EQ(p.f()(fenster::LINKS), 0) << "unreadable: defaults";
    p.fs.störe_nicht();
    p.f()(fenster::LINKS) = 5;
    p.ini.Inidatei_schreiben();
    p.ini.Inidatei_lesen();
    EXPECT_EQ(p.f()(fenster::LINKS), 3) << "they do not replace what could not be read";
    p.f()(fenster::LINKS) = 6;
    p.ini.Inidatei_schreiben();
    p.ini.Inidatei_lesen();
    EXPECT_EQ(p.f()(fenster::LINKS), 6);
    const Text text = u"Fehler beim Öffnen der Datei Kalvora_Muster.ini";
    EXPECT_EQ(p.logtexte(), (std::vector<Text>{text, text}));
    EXPECT_TRUE(p.fs.gibt_es(p.hier)) << "what cannot be opened is not deleted";
}

TEST(Inidatei, SchadenKostetNurDieAnzeige) {
    Iniprobe p;
    p.f()(fenster::LINKS) = 77;
    p.ini.Inidatei_schreiben();
    const auto gut = Iniprobe::zerlegt(*p.fs.inhalt(p.hier));
    const std::pair<size_t, std::string> fälle[] = {{1, "[Anders]"},
                                                    {2, "x"},
                                                    {2, ""},
                                                    {5, "123456789012"},
                                                    {24, "&HFFFFF"},
                                                    {26, "weiss"},
                                                    {34, "a"},
                                                    {39, "12"},
                                                    {39, "x"},
                                                    {44, "0101"},
                                                    {44, std::string(24, '2')},
                                                    {49, "10"},
                                                    {63, "[]"},
                                                    {65, "1-2"}};
    for (const auto& [n, zeile] : fälle) {
        SCOPED_TRACE(n);
        Iniprobe q;
        auto zeilen = gut;
        zeilen[n - 1] = zeile;
        q.fs.schreibe(q.hier, Iniprobe::verbunden(zeilen));
        q.fs.schreibe(q.temp, "älter");
        q.fs.platte().setze_stempel(q.temp, 1);
        q.ini.Inidatei_lesen();
        EXPECT_EQ(q.f()(fenster::LINKS), 0);
        EXPECT_EQ(q.f()(fenster::NAMENSBREITE), 300);
        EXPECT_FALSE(q.fs.gibt_es(q.hier) || q.fs.gibt_es(q.temp));
        EXPECT_EQ(q.logtexte(), std::vector<Text>{u"Fehler beim Lesen der Datei Kalvora_Muster.ini"});
        q.f()(fenster::LINKS) = 5;
        q.ini.Inidatei_schreiben();
        EXPECT_TRUE(q.fs.gibt_es(q.hier)) << "writing goes on";
    }
    for (size_t n = 0; n < gut.size(); ++n) { // too short: the same without a log record
        Iniprobe q;
        q.fs.schreibe(q.hier,
                      Iniprobe::verbunden({gut.begin(), gut.begin() + static_cast<std::ptrdiff_t>(n)}));
        q.ini.Inidatei_lesen();
        EXPECT_EQ(q.f()(fenster::LINKS), 0) << n;
        EXPECT_FALSE(q.fs.gibt_es(q.hier)) << n;
        EXPECT_TRUE(q.logtexte().empty()) << n;
    }
}

} // namespace
} // namespace kalvora
