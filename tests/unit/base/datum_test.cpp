#include <gtest/gtest.h>

#include "base/datum.h"

namespace kalvora {
namespace {

std::string S(TextView t) {
    return zu_utf8(t);
}

constexpr auto MTJ = Datumsreihenfolge::MonatTagJahr;
constexpr auto TMJ = Datumsreihenfolge::TagMonatJahr;
constexpr auto JMT = Datumsreihenfolge::JahrMonatTag;

TEST(Datum, Jeder_Tag_folgt_auf_den_vorigen) {
    EXPECT_EQ(Datum_aus(2026, -12, 1), Datum_aus(2024, 12, 1));
    EXPECT_EQ(Datum_aus(2026, 3, 0), Datum_aus(2026, 2, 28));
    Kalendertag vorher = Kalendertag_aus(Datum_aus(1899, 1, 1) - 1);
    int länge = 31;
    for (Datum d = Datum_aus(1899, 1, 1); d <= Datum_aus(2101, 1, 1); ++d) {
        const Kalendertag k = Kalendertag_aus(d);
        ASSERT_EQ(Datum_aus(k.jahr, k.monat, k.tag), d);
        const bool folgt = k.jahr == vorher.jahr && k.monat == vorher.monat
                               ? k.tag == vorher.tag + 1
                               : k.tag == 1 && vorher.tag == länge;
        ASSERT_TRUE(folgt) << d;
        ASSERT_EQ(Wochentag(d), Wochentag(d - 1) % 7 + 1) << d;
        länge = Tage_im_Monat(k.jahr, k.monat);
        vorher = k;
    }
}

TEST(Datum, Formen_der_Arbeitsplätze) {
    const Datum d = Datum_aus(2026, 3, 9);
    for (const auto& [kurz, lang] : {std::pair{0, 2000}, {79, 2079}, {80, 1980}})
        EXPECT_EQ(volles_Jahr(kurz), lang);
    const std::pair<Datumsformat, const char*> tafel[] = {
        {{MTJ, u'/'}, "03/09/26"}, {{TMJ, u'.'}, "09.03.26"}, {{JMT, u'-'}, "26-03-09"}};
    for (const auto& [format, a] : tafel) {
        EXPECT_EQ(S(format.FormatDatumDA(d)), a);
        EXPECT_EQ(format.FormatDatumAD(aus_utf8(a)), d) << a;
    }
}

TEST(CheckDatum, Eingaben) {
    struct Fall {
        const char* eingabe;
        Datumsreihenfolge reihenfolge;
        char16_t trenner;
        int länge;
        const char* text;
        const char* fehler;
    };
    const char* const KURZ = "Das eingegebene Datum ist zu kurz";
    const char* const UNSINN = "Datumseingabe nicht plausibel";
    for (const Fall& f : {
             Fall{"", TMJ, u'.', 8, "", ""},
             Fall{"3112", TMJ, u'.', 8, "31.12.26", ""},
             Fall{" 311227 ", TMJ, u'.', 8, "31.12.27", ""},
             Fall{"01.03.2027", TMJ, u'.', 8, "01.03.27", ""},
             Fall{"31.02.28", TMJ, u'.', 8, "29.02.28", ""},
             Fall{"3112", TMJ, u'.', 6, "31.12.", ""},
             Fall{"12/31", MTJ, u'/', 8, "12/31/26", ""},
             Fall{"271231", JMT, u'-', 6, "12-31", ""},
             Fall{"12-31", JMT, u'-', 6, "12-31", ""}, // what the field itself shows is read again
             Fall{"1.", TMJ, u'.', 8, "1.", KURZ},
             Fall{"12345", TMJ, u'.', 8, "12345", "Kein Datumstrennzeichen '.' gefunden"},
             Fall{"1a.3", TMJ, u'.', 8, "1a.3", "Unzulässiges Zeichen 'a' im Datum enthalten"},
             Fall{"1. 3.26", TMJ, u'.', 8, "1. 3.26", "Unzulässiges Zeichen ' ' im Datum enthalten"},
             Fall{"32.01.26", TMJ, u'.', 8, "32.01.26", UNSINN},
             Fall{"....", TMJ, u'.', 8, "....", UNSINN},
         }) {
        const Datumsformat format{f.reihenfolge, f.trenner};
        const Datumsprüfung p = CheckDatum(aus_utf8(f.eingabe), format, 46342, f.länge);
        EXPECT_EQ(S(p.text), f.text) << f.eingabe;
        EXPECT_EQ(S(p.fehler), f.fehler) << f.eingabe;
        EXPECT_EQ(p.gültig(), *f.fehler == 0) << f.eingabe;
    }
}

} // namespace
} // namespace kalvora
