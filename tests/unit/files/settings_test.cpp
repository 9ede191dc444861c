#include "files/settings.h"

#include <gtest/gtest.h>

#include "base/fehler.h"

namespace kalvora {
namespace {

TEST(Settings, EinzelneStellen) {
    Settings s;
    EXPECT_EQ(s.Setting(14), 1);
    EXPECT_EQ(s.Setting(20), 0) << "a letter counts as 0";
    EXPECT_EQ(s.Setting(22), 0) << "# counts as 0";
    EXPECT_EQ(s.Setting(0), 0);
    EXPECT_EQ(s.Setting(51), 0);
    EXPECT_EQ(Settings(u"").Setting(1), 0);
    EXPECT_EQ(s.SettingStr(20, 4), u"U½##");
    EXPECT_EQ(s.SettingStr(49, 9), u"00");
    s.SetSetting(3, 7);
    EXPECT_EQ(s.werte(), u"0070000000000101110U½##K310030100####0000010000000");
    for (const auto& [n, wert] : {std::pair{0, 1}, {51, 1}, {3, 10}, {3, -1}}) {
        const Text vorher = s.werte();
        EXPECT_THROW(s.SetSetting(n, wert), Laufzeitfehler);
        EXPECT_EQ(s.werte(), vorher);
    }
}

TEST(Settings, Migration) {
    const std::pair<Text, Text> fälle[] = {
        // 29 characters: both lengths, letters of the country, 18 on, 28 as 10
        {u"00000000010000011000000000000", u"0000000001000001110U½##K000100100####0000000000000"},
        {u"20000000000000011000000000000", u"2000000000000001100U½##K000000100####0000000000000"},
        {u"00000000000000211000000000000", u"0000000000000021110C½##M000001601R½##0000000000000"},
        {u"00000000000000911000000000000", u"0000000000000091110U½##K000000100####0000000000000"},
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
