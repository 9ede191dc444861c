#include "files/monatsdaten.h"

#include "hilfen/schaden.h"

namespace kalvora {
namespace {

std::string_view tage_von(const Erfassungsplatz& p, int monat, int i) {
    return p.erfassung.Daten().tage(monat, i);
}
std::string voll(std::string tage) {
    tage.resize(31, ' ');
    return tage;
}

TEST(Monatsdaten, AlleErfassungsdatenEinlesen) {
    Erfassungsplatz p({u"anna", u"", u"otto", u"ANNA"});
    p.Monatsdatei(u"2501 260101", {A(u"anna", u"1"), A(u"Anna", u"2"), u"K:anna:01-01:x", A(u"weg", u"3")});
    p.Monatsdatei(u"2611 261101", {A(u"otto", u"9")}); // older version; only the newest counts
    p.Monatsdatei(u"2611 261115", {A(u"otto", Text(31, u'4')), A(u"anna", u"Z1"), u"Unsinn"});
    p.Monatsdatei(u"2712 261101", {A(u"otto", Text(31, u'5'))});
    p.Monatsdatei(u"2801 261101", {A(u"otto", u"6")}); // beyond the three years
    p.erfassung.Erfassungsdaten_lesen(u"2501");
    p.erfassung.Alle_Erfassungsdaten_einlesen(false);

    EXPECT_EQ(tage_von(p, 1, 1), voll("2")) << "the last row wins";
    EXPECT_EQ(tage_von(p, 1, 4), voll("2")) << "both rows of one key";
    EXPECT_EQ(tage_von(p, 1, 2), voll("")) << "a heading";
    EXPECT_EQ(tage_von(p, 23, 3), voll(std::string(30, '4'))) << "30 days";
    EXPECT_EQ(tage_von(p, 23, 1), voll(" 1")) << "unknown codes are blank";
    EXPECT_EQ(tage_von(p, 36, 3), std::string(31, '5'));
    EXPECT_TRUE(p.erfassung.Erfassungsdaten_vorhanden(2) && !p.erfassung.Erfassungsdaten_vorhanden(6));
    EXPECT_TRUE(p.erfassung.Erfassungsdaten_zu_Monaten_vorhanden(23, 23));
    EXPECT_FALSE(p.erfassung.Erfassungsdaten_zu_Monaten_vorhanden(2, 22));
    EXPECT_EQ(p.erfassung.monat().Erfassungsdaten.anzahl(), 3) << "the shown month is left alone";

    // Half a minute long it is not read again, unless it must be.
    p.Monatsdatei(u"2501 260101", {});
    p.erfassung.Alle_Erfassungsdaten_einlesen(true);
    EXPECT_EQ(tage_von(p, 1, 1), voll("2"));
    p.uhr.weiter(30);
    p.erfassung.Alle_Erfassungsdaten_einlesen(true);
    EXPECT_EQ(tage_von(p, 1, 1), voll("")) << "cleared before it is filled";
}

TEST(Monatsdaten, EinBlickMittenHineinZähltNicht) {
    // Gone behind a newer version; its head has not arrived; a torn row; an empty view.
    for (const auto& halb :
         {std::optional<std::string>(), std::optional(als_Datei({u"[2611]"})),
          std::optional(als_Datei(Monat({u"A:anna:11"}))), std::optional<std::string>("")}) {
        Erfassungsplatz p({u"anna"});
        const Text alt = p.Monatsdatei(u"2611 261115", {A(u"anna", u"1")});
        p.fs.davor = [&, einmal = true](const std::string& aufruf, const Text& pfad) mutable {
            if (aufruf != "open" || pfad != alt || !std::exchange(einmal, false)) return;
            p.fs.platte().entferne(alt);
            if (halb) p.fs.schreibe(alt, *halb);
        };
        p.fenster.beim_Warten = [&] { p.Monatsdatei(u"2611 261116", {A(u"anna", u"12")}); };
        p.erfassung.Alle_Erfassungsdaten_einlesen(false);
        EXPECT_EQ(tage_von(p, 23, 1), voll("12")) << halb.value_or("gone");
    }
}

} // namespace
} // namespace kalvora
