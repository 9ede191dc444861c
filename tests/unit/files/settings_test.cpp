#include "files/settings.h"

#include <gtest/gtest.h>

namespace kalvora {
namespace {

TEST(Settings, Migration) {
    const std::pair<Text, Text> fälle[] = {
        // 29 characters: both lengths, letters of the country, 18 on, 28 as 10
        {u"00000000010000011000000000000", u"0000000001000001110U½##K000100100####0000000000000"},
        {u"20000000000000011000000000000", u"2000000000000001100U½##K000000100####0000000000000"},
        {u"00000000000000211000000000000", u"0000000000000021110C½##M000001601R½##0000000000000"},
        {u"", u"0000000000000000010U½##K000000100####0000000000000"},
        // 30 characters: the letters stand already
        {u"0000000000000001110X####K31003", u"0000000000000001110X####K31000100####0000000000000"},
        // too long
        {Text(Settings::STANDARD) + u"999", Text(Settings::STANDARD)},
        {Text(Settings::STANDARD), Text(Settings::STANDARD)},
    };
    for (const auto& [alt, neu] : fälle) {
        Settings s(alt);
        s.migrieren();
        EXPECT_EQ(s.werte(), neu) << zu_utf8(alt);
        EXPECT_EQ(s.werte().size(), static_cast<size_t>(SETTINGS_LÄNGE));
        Settings nochmal(s.werte());
        nochmal.migrieren();
        EXPECT_EQ(nochmal.werte(), s.werte());
    }
}

} // namespace
} // namespace kalvora
