#include <gtest/gtest.h>

#include "calendar/feiertage.h"

namespace kalvora {
namespace {

std::string S(TextView t) {
    return zu_utf8(t);
}

// The keys "yymmdd" that one rule gives in the three years from `jahr` on.
std::string Tage(TextView regel, int jahr = 2024) {
    return S(Feiertage_berechnen(jahr, Feld<Text>{Text(regel)}).Feiertagsschlüssel);
}

TEST(Osterdatum, Tabelle) {
    const std::tuple<int, int, int> tafel[] = {{1954, 4, 25}, {1981, 4, 26}, {2008, 3, 23}, {2026, 4, 5},
                                               {2038, 4, 25}, {2049, 4, 25}, {2076, 4, 26}, {2100, 3, 27}};
    for (const auto& [j, m, t] : tafel)
        EXPECT_EQ(Osterdatum(j), Datum_aus(j, m, t)) << j;
    for (int jahr = 1900; jahr < 2100; ++jahr)
        EXPECT_EQ(Wochentag(Osterdatum(jahr)), 7) << jahr;
}

TEST(Feiertagsregel, Tage_in_drei_Jahren) {
    for (const auto& [regel, jahr, tage] : {
             std::tuple{u"1:01.01.:Neujahr", 2024, "240101|250101|260101|"},
             {u"1:31.02.:Nie", 2024, "240231|250231|260231|"},
             {u"1:VO0200:Karfreitag", 2024, "240329|250418|260403|"},
             {u"1:NO6000:Fronleichnam", 2024, "240530|250619|260604|"},
             {u"1:BU0000:Bußtag", 2022, "221116|231122|241120|"}, // 25.12.2022 is a Sunday
             {u"1:W13100:Dritter Montag im Januar", 2024, "240115|250120|260119|"},
             {u"1:W51A00:Erster Freitag im Oktober", 2024, "241004|251003|261002|"},
             {u"1:L10500:Letzter Montag im Mai", 2024, "240527|250526|260525|"}, // 1.6.2026 is a Monday
             {u"1:NO0100:Über die Jahrhundertwende", 1999, "990405|000424|010416|"},
             {u"0:01.01.:Aus", 2024, "000000|"},
             {u"x:VO0X00:Aus, also ungelesen", 2024, "000000|"},
             {u"1:XX0000:Unbekannte Art", 2024, "000000|"},
         })
        EXPECT_EQ(Tage(regel, jahr), tage) << S(regel);
}

TEST(Feiertagsregel, Unlesbare_nennt_ihre_Zeile) {
    for (const Text& regel :
         std::vector<Text>{u"1:BUX000:Buchstabe", u"1:VO0X00:Kein Monat", u"1:25.(2.:Fest", u"1:VO", u"1"}) {
        Feld<Text> regeln(3, Text(LEERE_FEIERTAGSREGEL));
        regeln(2) = regel;
        EXPECT_FALSE(Feiertagsregel_lesbar(regel, 2)) << S(regel);
        try {
            Feiertage_berechnen(2024, regeln);
            ADD_FAILURE() << S(regel);
        } catch (const Laufzeitfehler& fehler) {
            EXPECT_EQ(std::pair(fehler.nummer, fehler.zeile), std::pair(13, 2));
        }
    }
    // What computes may be refused all the same; behind row 16 stand single days.
    for (const TextView regel : {u"1:XX0000:Unbekannte Art", u"1:W11000:Monat 0", u"1:W21500:Dienstag",
                                 u"1:ab.cd.:Fest", u"1;01.01.;Falsch getrennt", u"", u"24.12."})
        EXPECT_FALSE(Feiertagsregel_lesbar(regel, 16)) << S(regel);
    EXPECT_FALSE(Feiertagsregel_lesbar(u"1:24.12.:Name", 17));
    EXPECT_TRUE(Feiertagsregel_lesbar(u"24.12.", 17) && Feiertagsregel_lesbar(u"1:31.02.:Nie", 16));
}

TEST(Feiertage, Liste_nach_Jahren_und_Zeilen_mit_Namen) {
    Feld<Text> regeln(16, Text(LEERE_FEIERTAGSREGEL));
    regeln(1) = u"1:25.12.:1. Weihnachtstag";
    regeln(3) = u"1:06.01.:Heilige Drei Könige (BW, BY, ST)";
    regeln.anfügen(u"24.12.");
    regeln.anfügen(u"06.01.");
    const Feiertage f = Feiertage_berechnen(2025, regeln);
    EXPECT_EQ(f.Feiertagsliste,
              (Feld<Text>{u"251225:1. Weihnachtstag", u"250106:Heilige Drei Könige", u"251224", u"250106",
                          u"261225:1. Weihnachtstag", u"260106:Heilige Drei Könige", u"261224", u"260106",
                          u"271225:1. Weihnachtstag", u"270106:Heilige Drei Könige", u"271224", u"270106"}));
    EXPECT_EQ(Feiertagsname(f, u"260106"), u"Heilige Drei Könige") << "the first one of a day";
    EXPECT_EQ(Feiertagsname(f, u"261224"), u"") << "a further holiday has no name";
    EXPECT_EQ(Feiertagsname(f, u"281225"), std::nullopt);
}

} // namespace
} // namespace kalvora
