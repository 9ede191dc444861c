#include "files/mitarbeiterdaten.h"

#include "hilfen/schaden.h"

namespace kalvora {
namespace {

const Text LANG = u"250101:991231:002,5:030,0:030,0:012,5:-03,0:001,0:000,0:000,0:000,0:Meier, Uwe:meier";
const Text KURZ = u"000000:999999:010,0:000:030:030:030:Schulz:SCHULZ";
const Text KURZ_ALS_LANG =
    u"000000:999999:010,0:000,0:030,0:030,0:030,0:000,0:000,0:000,0:000,0:Schulz:SCHULZ";

struct Personalprobe : Prüfplatz {
    const Text pfad = daten(u"Mitarbeiterdaten.dat");
    Personalprobe() { konfig.ändern() = Konfiguration_Standard(u"boss"); }
    void lege_Zeilen(std::vector<Text> zeilen) {
        zeilen.insert(zeilen.begin(), {u"[Mitarbeiterdaten]", u"Reserve", u"2025"});
        lege(pfad, zeilen);
    }
    Text lies() {
        return ausgang(*this, pfad, [&] { personal.Mitarbeiterdaten_lesen(); });
    }
    std::vector<Text> hin_und_zurück(const std::vector<Text>& zeilen) {
        lege_Zeilen(zeilen);
        EXPECT_EQ(lies(), u"");
        EXPECT_TRUE(personal.Mitarbeiterdaten_schreiben());
        auto neu = this->zeilen(pfad);
        neu.erase(neu.begin(), neu.begin() + 3);
        return neu;
    }
};

TEST(Mitarbeiterdaten, BeideFormenWerdenGelesen) {
    Personalprobe p;
    p.lege_Zeilen({u">Büro", LANG, KURZ, u""});
    ASSERT_EQ(p.lies(), u"");
    ASSERT_EQ(p.personal.MA().anzahl(), 4);
    EXPECT_EQ(p.personal.MA()(2), (Mitarbeiter{u"Meier, Uwe", u"meier", u"250101", u"991231",
                                               u"002,5:030,0:030,0:012,5:-03,0", u"001,0"}));
    EXPECT_TRUE(p.personal.MA()(1).Überschrift() && p.personal.MA()(4).Überschrift());
    p.platz.gebiet.Dezimaltrennzeichen = u'.';
    EXPECT_EQ(p.hin_und_zurück({LANG}), std::vector<Text>{LANG}) << "the file keeps the comma";
    EXPECT_EQ(p.personal.MA()(1).MA_Urlaub, u"002.5:030.0:030.0:012.5:-03.0");
}

TEST(Mitarbeiterdaten, DieFormGiltFürDieGanzeDatei) {
    const Text halber_Rest = u"000000:999999:002,5:000:030:030:-03:Schulz:SCHULZ";
    const Text sonder = u"000000:999999:000,0:000,0:000,0:000,0:000,0:000,5:000,0:000,0:000,0:A:a";
    Personalprobe p;
    for (const auto& zeilen : {std::vector<Text>{u">Büro", KURZ}, {halber_Rest}, {sonder}, {u"NoNames"}})
        EXPECT_EQ(p.hin_und_zurück(zeilen), zeilen);
    EXPECT_EQ(p.hin_und_zurück({KURZ, LANG}), (std::vector<Text>{KURZ_ALS_LANG, LANG}));
    EXPECT_EQ(p.zeilen(p.pfad)[1], u"Reserve");
}

TEST(Mitarbeiterdaten, FremdeZeilen) {
    for (const Text& zeile :
         {Text(u":"), Text(u"2501:991231:010,0:000:030:030:030:A:a"), Text(links(LANG, 68)),
          Text(u"000000:999999:010,0:000:030:030:030:Zu:viele:Felder"),
          Text(u"000000:999999:010,0:00x:030:030:030:A:a")}) {
        Personalprobe p;
        p.lege_Zeilen({KURZ, zeile});
        EXPECT_EQ(p.lies(), u"Zeile 5 der Datei '/srv/x/Data/Mitarbeiterdaten.dat' ist fehlerhaft.")
            << zu_utf8(zeile);
    }
    for (const TextView jahr : {u"1999", u"2080", u"25", u"abcd", u""}) {
        Personalprobe p;
        p.platz.Startjahr = 2024;
        p.lege(p.pfad, {u"[Mitarbeiterdaten]", u"", Text(jahr), KURZ});
        EXPECT_NE(p.lies(), u"");
        EXPECT_EQ(p.platz.Startjahr, 2024);
    }
}

TEST(Mitarbeiterdaten, Verwüstet) {
    Personalprobe p;
    EXPECT_EQ(p.lies(), u"Die Datei '/srv/x/Data/Mitarbeiterdaten.dat' wurde nicht gefunden.");
    p.lege_Zeilen({u">Büro", LANG, KURZ});
    verwüsten(
        p, p.pfad, [&] { p.personal.Mitarbeiterdaten_lesen(); },
        [&] {
            EXPECT_EQ(p.platz.Startjahr, 2025);
            EXPECT_EQ(p.personal.MA().anzahl(), 3);
        });
}

// The scripts show what becomes of somebody who is not in the list.
TEST(Mitarbeiterdaten, LeereListe) {
    Personalprobe p;
    p.konfig.Setting_setzen(1, 1);
    p.lege_Zeilen({});
    ASSERT_EQ(p.lies(), u"");
    EXPECT_TRUE(p.personal.leer() && !p.personal.Mitarbeiter_vorhanden());
    EXPECT_EQ(p.fenster.hinweise, std::vector<Text>{Text(Mitarbeiterdaten::KEINE_MITARBEITER)});
}

TEST(Mitarbeiterdaten, Namen) {
    Personalprobe p;
    p.konfig.ändern().Administratoren = {Text(u"A:<Name Vorname>:boss"), Text(u"A:Chef:CHEF")};
    p.konfig.ändern().Privilegierte = {Text(u"P:Adam, Eva:adam")};
    p.lege_Zeilen({u">Büro", KURZ});
    p.lies();
    for (const auto& [id, name] : {std::pair<Text, Text>{u"schulz", u"Schulz"},
                                   {u"chef", u"Chef"},
                                   {u"ADAM", u"Adam, Eva"},
                                   {u"boss", u""},
                                   {u"niemand", u""},
                                   {u"", u""}})
        EXPECT_EQ(p.personal.Name_zu_BenutzerID(id), name);
    EXPECT_EQ(p.personal.Zeile_zu_BenId(u"Schulz"), 2);
    EXPECT_EQ(p.personal.Zeile_zu_BenId(u""), 0) << "a heading is nobody";
    p.personal.ändern().anfügen({u"A:B", u"ab", u"000000", u"999999", u"", u""});
    EXPECT_THROW(p.personal.Mitarbeiterdaten_schreiben(), Laufzeitfehler) << "no line could hold it";
}

} // namespace
} // namespace kalvora
