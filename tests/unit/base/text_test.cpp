#include <gtest/gtest.h>

#include "base/cp1252.h"
#include "base/feld.h"
#include "base/text.h"

namespace kalvora {
namespace {

std::string S(TextView t) {
    return zu_utf8(t);
}

TEST(Text, Stuecke_laufen_nie_ueber_den_Rand) {
    const TextView t = u"Kürz";
    const std::tuple<int, TextView, TextView> tafel[] = {
        {-1, u"", u""},      {0, u"", u""},         {1, u"K", u"z"},
        {3, u"Kür", u"ürz"}, {4, u"Kürz", u"Kürz"}, {2'000'000'000, u"Kürz", u"Kürz"}};
    for (const auto& [n, vorn, hinten] : tafel) {
        EXPECT_EQ(S(links(t, n)), S(vorn)) << n;
        EXPECT_EQ(S(rechts(t, n)), S(hinten)) << n;
    }
    struct Mitte {
        int von, n;
        const char16_t* stück;
    };
    for (const Mitte& f :
         {Mitte{1, 2, u"Kü"}, Mitte{2, 1, u"ü"}, Mitte{2, -1, u"ürz"}, Mitte{4, 9, u"z"}, Mitte{5, 1, u""},
          Mitte{99, -1, u""}, Mitte{2, 0, u""}, Mitte{0, 2, u"K"}, Mitte{-3, 2, u""}, Mitte{-3, -1, u"Kürz"}})
        EXPECT_EQ(S(mitte(t, f.von, f.n)), S(f.stück)) << f.von << ", " << f.n;
    EXPECT_TRUE(zeichen(t, 0) == 0 && zeichen(t, 5) == 0);
    for (int index : {-1, 0, 4})
        EXPECT_THROW((void)Feld<int>(3, 7)(index), Laufzeitfehler) << index;
}

TEST(Text, Gross_und_klein_ueber_die_ganze_Codepage) {
    EXPECT_EQ(S(klein(u"AZ ÄÖÜ ŠŒŽŸ ÀÞ ß×÷ [@`{ 09")), "az äöü šœžÿ àþ ß×÷ [@`{ 09");
    EXPECT_TRUE(gleich_ohne_Fall(u"ÜSTUNDEN Ÿ", u"üstunden ÿ"));
    EXPECT_FALSE(gleich_ohne_Fall(u"Straße", u"STRASSE"));
    EXPECT_FALSE(gleich_ohne_Fall(u"×", u"÷")) << "16 apart as letters are, but none";
}

TEST(Text, Masken) {
    const std::pair<TextView, TextView> gute[] = {{u"2611 261116 DATA.DAT", u"2611*data.dat"},
                                                  {u"Data.datData.dat", u"*Data.dat"},
                                                  {u"", u"*"},
                                                  {u"ÜSt 2026.dat", u"üst ????.dat"},
                                                  {u"abcabd", u"*ab?"},
                                                  {u"ab", u"a**b"}};
    const std::pair<TextView, TextView> schlechte[] = {{u"2611 Data.dat.alt", u"*Data.dat"},
                                                       {u"ÜSt 26.dat", u"üst ????.dat"},
                                                       {u"", u"?"},
                                                       {u"a", u""},
                                                       {u"axb", u"a?"},
                                                       {u"a.b", u"a[.]b"}};
    for (const auto& [name, maske] : gute)
        EXPECT_TRUE(passt_auf_Maske(name, maske)) << S(name) << " ~ " << S(maske);
    for (const auto& [name, maske] : schlechte)
        EXPECT_FALSE(passt_auf_Maske(name, maske)) << S(name) << " ~ " << S(maske);
    // No mask may take a time that grows with a power of its stars.
    const Text viel(3000, u'a');
    EXPECT_FALSE(passt_auf_Maske(viel, u"*a*a*a*a*a*a*a*a*b"));
}

TEST(Text, Trimmen_und_Val) {
    const Text fest = Text(1, FESTES_LEERZEICHEN) + u" x\t" + Text(1, FESTES_LEERZEICHEN);
    EXPECT_EQ(trimmen(u"  " + fest), fest) << "160 and tab are data";
    EXPECT_EQ(trimmen(u"a "), u"a");
    const std::pair<TextView, long> tafel[] = {{u"2611 K", 2611}, {u"  12", 12}, {u"-7x", -7}, {u"x1", 0}};
    for (const auto& [text, wert] : tafel)
        EXPECT_EQ(Val(text), wert) << S(text);
    EXPECT_GT(Val(Text(400, u'9')), 0) << "no overflow";
}

TEST(Text, Utf8_hin_und_zurueck_und_verdorben) {
    const std::string gut = "Łódź – 1 €, ß, \xF0\x9F\x98\x80";
    EXPECT_EQ(zu_utf8(aus_utf8(gut)), gut);
    const std::pair<const char*, TextView> tafel[] = {
        {"a\xFC", u"a\uFFFD"},         {"\xFCx", u"\uFFFDx"},           {"\xC3", u"\uFFFD"},
        {"\xE2\x82", u"\uFFFD\uFFFD"}, {"\xC3(", u"\uFFFD("},           {"\xC0\x80", u"\uFFFD"},
        {"\xED\xA0\x80", u"\uFFFD"},   {"\xF4\x90\x80\x80", u"\uFFFD"}, {"\x80", u"\uFFFD"}};
    for (const auto& [bytes, text] : tafel)
        EXPECT_EQ(aus_utf8(bytes), text) << testing::PrintToString(bytes);
    EXPECT_EQ(zu_utf8(Text(1, u'\xD800') + u"x"), "\xEF\xBF\xBDx") << "half a pair";
}

TEST(Cp1252, Jedes_Byte_ueberlebt) {
    std::string alle;
    for (int b = 0; b < 256; ++b)
        alle += static_cast<char>(b);
    const Text text = aus_cp1252(alle);
    EXPECT_EQ(text.size(), 256u);
    EXPECT_EQ(zu_cp1252(text), alle);
    EXPECT_TRUE(cp1252_darstellbar(text));
    for (const char b : alle)
        EXPECT_EQ(cp1252_zeichen(cp1252_klein(static_cast<std::uint8_t>(b))),
                  klein(cp1252_zeichen(static_cast<std::uint8_t>(b))));
    EXPECT_EQ(aus_cp1252("\x80\x8A\x9F\xFF\x81"), u"€ŠŸÿ\u0081");
    EXPECT_EQ(zu_cp1252(u"Łuk 😀."), "?uk ??.");
    EXPECT_FALSE(cp1252_darstellbar(u"Łuk") || cp1252_darstellbar(u"\uFFFD"));
}

} // namespace
} // namespace kalvora
