#include "files/monatsdatei.h"

#include "hilfen/schaden.h"

namespace kalvora {
namespace {

using Art = Zeilenbefund::Art;

Monatsinhalt eingelesen(const std::vector<Text>& zeilen, const Text& yymm = u"2611") {
    Prüfplatz p;
    const Text pfad = p.daten(yymm + u" 261116 Data.dat");
    p.lege(pfad, zeilen);
    Monatsinhalt inhalt;
    inhalt.yymm = yymm;
    p.kanal.Datei_öffnen(pfad, Dateimodus::Input);
    Monat_einlesen(p.kanal, pfad, Codefilter(7), inhalt);
    return inhalt;
}

Monatsinhalt inhalt_aus(const std::vector<Text>& zeilen, const Text& yymm = u"2611") {
    return eingelesen(Monat(zeilen, yymm), yymm);
}

TEST(Monatsdatei, ZeileGeprüft) {
    const std::string voll(31, ' ');
    const struct {
        std::string zeile;
        Art art;
        std::string schlüssel, inhalt;
    } tafel[] = {
        {"A:meier:" + voll, Art::A, "meier", voll},
        {"A::" + voll, Art::A, "", voll},
        {"A:meier:" + voll.substr(1), Art::ZweiteArt, "meier", ""},
        {"K:meier:03-05:Kur: Bad", Art::K, "meier", "Kur: Bad"},
        {"K:meier:01-31:", Art::K, "meier", ""},
        {"K:meier:3-05:x ", Art::ZweiteArt, "meier", ""},
        {"K:meier:0x-05:x", Art::ZweiteArt, "meier", ""},
        {"K:meier:05-32:x", Art::ZweiteArt, "meier", ""},
        {"K:meier:06-05:x", Art::ZweiteArt, "meier", ""},
        {"A:meier", Art::ErsteArt, "", ""},
        {"Ameier:" + voll, Art::ErsteArt, "", ""},
    };
    for (const auto& fall : tafel) {
        const Zeilenbefund b = Zeile_prüfen(fall.zeile);
        EXPECT_TRUE(b.art == fall.art) << fall.zeile;
        EXPECT_EQ(b.schlüssel, fall.schlüssel) << fall.zeile;
        EXPECT_TRUE(fall.inhalt.empty() || b.inhalt == fall.inhalt) << fall.zeile;
    }
}

TEST(Monatsdatei, FremdeCodesUndTageHinterDemMonatSindLeer) {
    // U is 7: codes are 1 to 6 and 8.
    const auto november = inhalt_aus({A(u"meier", u"12345678Z?  " + Text(17, u' ') + u"111")});
    ASSERT_EQ(november.Erfassungsdaten.anzahl(), 1);
    EXPECT_EQ(november.Erfassungsdaten(1).tage, tage(u"123456 8" + Text(21, u' ') + u"1"));
    EXPECT_FALSE(november.fehlerhaft());
    for (const auto& [yymm, länge] : {std::pair{u"2602", 28}, {u"2802", 29}, {u"2611", 30}, {u"2612", 31}}) {
        const auto inhalt = inhalt_aus({A(u"meier", Text(31, u'1'))}, yymm);
        EXPECT_EQ(inhalt.Erfassungsdaten(1).tage, tage(Text(static_cast<size_t>(länge), u'1')));
    }
}

TEST(Monatsdatei, Kopf) {
    const auto schaden = [](const std::vector<Text>& zeilen) {
        try {
            eingelesen(zeilen);
        } catch (const Dateischaden& s) {
            EXPECT_EQ(s.datei, u"/srv/x/Data/2611 261116 Data.dat");
            return s.text();
        }
        return Text();
    };
    EXPECT_TRUE(enthält(schaden({u"[2612]", u"", u"NoEx:NoEx"}), u"aber Daten für '2612' gefunden."));
    for (const std::vector<Text>& kopf : {std::vector<Text>{u"[2611"}, {u"[2611] "}, {u"[2611]", u"R"}})
        EXPECT_FALSE(schaden(kopf).empty());
    const auto ohne = eingelesen({u"[2611]", u"R", u"SaSo", A(u"meier", u"1")});
    EXPECT_TRUE(ohne.Ausnahmezeile_ohne_Doppelpunkt);
    EXPECT_TRUE(ohne.fehlerhaft());
    EXPECT_EQ(ohne.Ausnahmedaten, u"NoEx:NoEx");
    EXPECT_EQ(ohne.Erfassungsdaten.anzahl(), 1) << "no reason to lose the month";
}

TEST(Monatsdatei, Verdichten) {
    const Text a1 = A(u"meier", u"  111"), leer = A(u"meier", u""), zwei = A(u"meier", u"11 11"),
               ALT = u"K:meier:03-05:alt";
    using Zeilen = std::vector<Text>;
    const Zeilen meier{u"meier"};
    const struct {
        const char* was;
        Zeilen BenIds, zeilen, ergebnis;
    } tafel[] = {
        {"the last row wins, equal neighbours become one run", meier,
         Zeilen{A(u"meier", u"2"), a1, u"K:meier:03-03:x", u"K:meier:04-05:x"},
         Zeilen{a1, u"K:meier:03-05:x"}},
        {"a blank day cuts a comment in two", meier, Zeilen{zwei, u"K:meier:01-05:Kur"},
         Zeilen{zwei, u"K:meier:01-02:Kur", u"K:meier:04-05:Kur"}},
        {"a later comment wins where they overlap, an empty one takes away", meier,
         Zeilen{a1, ALT, u"K:meier:04-04:neu", u"K:meier:05-05:"},
         Zeilen{a1, u"K:meier:03-03:alt", u"K:meier:04-04:neu"}},
        {"a row of blanks goes with its comments", meier, Zeilen{a1, leer, ALT}, Zeilen{}},
        {"case of keys; the staff list's spelling is written", Zeilen{u"Müller"},
         Zeilen{A(u"MÜLLER", u"1"), A(u"müller", u"2"), u"K:Müller:01-01:x"},
         Zeilen{A(u"Müller", u"2"), u"K:Müller:01-01:x"}},
        {"staff order; headings and foreign keys drop out", Zeilen{u"a", u"", u"b", u"c"},
         Zeilen{A(u"c", u"3"), A(u"fremd", u"1"), A(u"a", u"1"), A(u"", u"1"), u"K:fremd:01-01:x"},
         Zeilen{A(u"a", u"1"), A(u"c", u"3")}},
    };
    for (const auto& fall : tafel)
        for (const auto& zeilen : {fall.zeilen, fall.ergebnis}) // what was compacted once stays as it is
            EXPECT_EQ(Zeilen_verdichten(inhalt_aus(zeilen, u"2612"), fall.BenIds), fall.ergebnis) << fall.was;
}

} // namespace
} // namespace kalvora
