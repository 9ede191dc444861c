#include <gtest/gtest.h>

#include "base/zahl.h"

namespace kalvora {
namespace {

TEST(BenFormat, Tabelle) {
    struct Fall {
        const char* eingabe;
        const char* ergebnis;
    };
    // half away from zero, and what rounds to zero has no sign
    for (const Fall& f :
         {Fall{"", "000,0"}, Fall{"-0", "000,0"}, Fall{" 12,5 ", "012,5"}, Fall{"12.5", "012,5"},
          Fall{"-3", "-03,0"}, Fall{"0,25", "000,3"}, Fall{"-0,25", "-00,3"}, Fall{"-0,04", "000,0"},
          Fall{"1,04999999", "001,0"}, Fall{"99,95", "100,0"}, Fall{"1000,5", "999,5"},
          Fall{"-1000", "-99,0"}, Fall{"99999999999999999999999", "999,0"}, Fall{"12 Tage", "012,0"}})
        EXPECT_EQ(zu_utf8(BenFormat(aus_utf8(f.eingabe))), f.ergebnis) << "'" << f.eingabe << "'";
    EXPECT_EQ(BenFormat(u"12,5", u'.'), u"012.5") << "the separator of the workstation";
}

TEST(Code, Gruende_einer_Tabelle) {
    for (int n = 1; n <= 26; ++n)
        EXPECT_EQ(HexDec(DecHex(n)), n);
    for (char16_t c : {u'0', u' ', u'a', u'R', u'Ä', FESTES_LEERZEICHEN})
        EXPECT_EQ(HexDec(c), 0) << static_cast<int>(c);
    const int U = 12;
    struct Fall {
        int n;
        char16_t code;
    };
    for (const Fall& f : {Fall{1, u'1'}, Fall{9, u'9'}, Fall{11, u'B'}, Fall{12, u' '}, Fall{13, u'D'},
                          Fall{14, u' '}, Fall{0, u' '}, Fall{-1, u' '}})
        EXPECT_EQ(SFHex(f.n, U), f.code) << f.n;
    EXPECT_EQ(SFHex(26, 25), u'Q') << "the largest table's free day";
    EXPECT_EQ(SFDec(u' ', U), U);
    EXPECT_EQ(SFDec(u'B', U), 11);
    EXPECT_EQ(SFDec(u'D', U), 13);
    EXPECT_EQ(SFDec(u'ä', U), U);
}

} // namespace
} // namespace kalvora
