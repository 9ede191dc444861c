// The script clock: time that passes without being waited for.
#include <gtest/gtest.h>

#include "hilfen/test_uhr.h"
#include "ui/konsole/skriptuhr.h"

namespace kalvora {
namespace {

std::string Stand(Clock& uhr) {
    const Zeitpunkt z = uhr.now();
    return zu_utf8(ziffern(z.tag.tag, 2) + u"." + ziffern(z.tag.monat, 2) + u"." + ziffern(z.tag.jahr) +
                   u" " + FormatZeit(z));
}

TEST(Skriptuhr, rückt_beim_Warten_vor_ohne_zu_warten) {
    TestUhr echte;
    Skriptuhr uhr(echte, Zeitpunkt{{2027, 12, 31}, 23, 59, 30});
    const struct {
        double warten;
        const char* stand;
    } FÄLLE[] = {
        {0.0, "31.12.2027 23:59:30"},
        {29.5, "31.12.2027 23:59:59"},
        {0.5, "01.01.2028 00:00:00"},
        {-5.0, "01.01.2028 00:00:00"},
        {59 * 86400.0 + 3661, "29.02.2028 01:01:01"},
    };
    for (const auto& fall : FÄLLE) {
        const double vorher = uhr.steady();
        uhr.sleep(fall.warten);
        EXPECT_EQ(Stand(uhr), fall.stand);
        EXPECT_DOUBLE_EQ(uhr.steady() - vorher, std::max(0.0, fall.warten));
    }
    EXPECT_EQ(echte.geschlafen(), 0);
}

TEST(Skriptuhr, verliert_bei_vielen_kurzen_Schritten_keine_Sekunde) {
    TestUhr echte({{2026, 11, 16}, 12, 0, 0});
    Skriptuhr uhr(echte);
    for (int i = 0; i < 10; ++i)
        uhr.sleep(0.1);
    EXPECT_EQ(Stand(uhr), "16.11.2026 12:00:01");
}

TEST(Skriptuhr, steht_still_während_die_echte_Zeit_läuft) {
    TestUhr echte({{2026, 11, 16}, 12, 0, 0});
    Skriptuhr uhr(echte);
    echte.weiter(100);
    EXPECT_EQ(Stand(uhr), "16.11.2026 12:00:00");
    EXPECT_EQ(uhr.steady(), 0);
}

TEST(Skriptuhr, wartet_in_Echtzeit_wirklich) {
    TestUhr echte({{2026, 11, 16}, 12, 0, 0});
    Skriptuhr uhr(echte, Zeitlauf::Echtzeit);
    uhr.sleep(2);
    uhr.warten_bis(uhr.steady() + 3);
    EXPECT_DOUBLE_EQ(echte.geschlafen(), 5);
    echte.weiter(60);
    EXPECT_EQ(Stand(uhr), "16.11.2026 12:01:05");
}

} // namespace
} // namespace kalvora
