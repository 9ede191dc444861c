#include <gtest/gtest.h>
#include <map>

#include "calendar/tagesklassen.h"

namespace kalvora {
namespace {

// The days of a month for which a question is answered with yes, as "1 2 31".
std::string Liste(const std::function<bool(int)>& frage, int bis) {
    std::string tage;
    for (int tag = 1; tag <= bis; ++tag)
        if (frage(tag)) tage += (tage.empty() ? "" : " ") + std::to_string(tag);
    return tage;
}

constexpr TextView SCHLÜSSEL = u"260101|260403|260406|270106|261225|260501|";

TEST(Tagesklassen, Ausnahmezeile_entscheidet) {
    struct Fall {
        const char* monat;
        const char16_t* ausnahmen;
        const char* wochenende;
        const char* feiertage;
    };
    for (const Fall& f : {
             Fall{"2604", u"NoEx:NoEx", "4 5 11 12 18 19 25 26", "3 6"},
             Fall{"2701", u"NoEx:NoEx", "2 3 9 10 16 17 23 24 30 31", "6"}, // not those of January 2026
             Fall{"2604", u"NoEx07|:NoEx", "4 5 7 11 12 18 19 25 26", "3 6"},
             Fall{"2604", u"Mo:NoEx", "6 13 20 27", "3 6"},
             Fall{"2604", u":NoEx", "", "3 6"},                                 // frozen without a weekend
             Fall{"2604", u"SaSo01|:01|02|", "1 4 5 11 12 18 19 25 26", "1 2"}, // Easter is none here
             Fall{"2604", u"NoEx", "4 5 11 12 18 19 25 26", "3 6"},             // the colon is missing
         }) {
        const Tagesregeln regeln{aus_utf8(f.monat), f.ausnahmen, u"SaSo", Text(SCHLÜSSEL)};
        const Monatsklassen klassen(regeln);
        const int tage = Tage_im_Monat(regeln.Anzeigemonat);
        const std::string wo = std::string(f.monat) + " " + zu_utf8(f.ausnahmen);
        EXPECT_EQ(Liste([&](int t) { return klassen.wochenende(t); }, tage), f.wochenende) << wo;
        EXPECT_EQ(Liste([&](int t) { return klassen.feiertag(t); }, tage), f.feiertage) << wo;
    }
}

// Equal neighbours drawn together: "1:4 KW 53 ..." as in the view.
std::string Wochen(const char* yymm) {
    const Feld<Text> zeile = Kalenderwochenzeile(aus_utf8(yymm));
    std::string aus;
    for (int von = 1, bis; von <= zeile.oben(); von = bis + 1) {
        for (bis = von; bis < zeile.oben() && zeile(bis + 1) == zeile(von);)
            ++bis;
        aus += std::to_string(von) + "-" + std::to_string(bis) + "=" + zu_utf8(zeile(von)) + "|";
    }
    return aus;
}

TEST(Kalenderwochenzeile, Raender_des_Monats) {
    struct Fall {
        const char* monat;
        const char* zeile;
    };
    for (const Fall& f : {
             // the 1st a Sunday, the 31st a Tuesday: the label goes on to column 32
             Fall{"2603", "1-1= |2-8=10. KW|9-15=11. KW|16-22=12. KW|23-29=13. KW|30-32=14. KW|"},
             // nothing special at the ends; a week 53 that is January's
             Fall{"2701", "1-3=53. KW|4-10=1. KW|11-17=2. KW|18-24=3. KW|25-31=4. KW|32-32= |"},
             // week 1 in December
             Fall{"2512", "1-7=49. KW|8-14=50. KW|15-21=51. KW|22-28=52. KW|29-31=1. KW|32-32= |"},
             // the 1st a Saturday in the week of the year before, the 31st a Monday
             Fall{"2201", "1-2= |3-9=1. KW|10-16=2. KW|17-23=3. KW|24-30=4. KW|31-32= |"},
             // February 2028 ends on a Tuesday
             Fall{"2802", "1-6=5. KW|7-13=6. KW|14-20=7. KW|21-27=8. KW|28-32=9. KW|"},
         })
        EXPECT_EQ(Wochen(f.monat), f.zeile) << f.monat;
}

// Three years of one employee from 2023 on: reason 1 from 20 January to 10 March 2024 but for two days.
TEST(Abwesenheit, Zaehlt_in_und_ueber_Monate) {
    std::map<int, Text> monate;
    for (int m = 1; m <= 36; ++m)
        monate[m] = Text(31, u' ');
    for (Datum d = Datum_aus(2024, 1, 20); d <= Datum_aus(2024, 3, 10); ++d)
        monate[Monatsindex(d, 2023)][static_cast<size_t>(Kalendertag_aus(d).tag - 1)] = u'1';
    monate[14].replace(11, 2, u"22");
    monate[1][0] = u'B';
    const struct {
        const char* was;
        int grund;
        Kalendertag von, bis;
        int tage;
    } tafel[] = {
        {"parts of months", 1, {2024, 1, 30}, {2024, 3, 2}, 2 + 27 + 2},
        {"end before begin in one month", 1, {2024, 1, 25}, {2024, 1, 22}, 0},
        {"all", 1, {2023, 1, 1}, {2025, 12, 31}, 12 + 27 + 10},
        {"months in the wrong order", 1, {2024, 3, 5}, {2024, 1, 21}, 6 + 2},
        {"the delete button's code is the blank", 10, {2023, 2, 1}, {2023, 2, 28}, 28},
        {"a person's free day", 11, {2023, 1, 1}, {2023, 1, 31}, 1},
        {"no reason", 0, {2024, 2, 1}, {2024, 2, 5}, 0},
        {"a year outside is read as the first one", 11, {2021, 1, 1}, {2021, 1, 31}, 1},
    };
    for (const auto& [was, grund, von, bis, tage] : tafel)
        EXPECT_EQ(AnAbwesenheitstage(grund, 10, Datum_aus(von.jahr, von.monat, von.tag),
                                     Datum_aus(bis.jahr, bis.monat, bis.tag), 2023,
                                     [&](int m) -> TextView { return monate.at(m); }),
                  tage)
            << was;
}

} // namespace
} // namespace kalvora
