#include "sicherungsplatz.h"

namespace kalvora {
namespace {

Mitglieder gelesen(const std::string& bytes) {
    Mitglieder aus;
    if (const auto alle = Container_lesen(bytes))
        for (const Containermitglied& m : *alle)
            aus.emplace_back(m.name, m.bytes);
    return aus;
}

TEST(Container, gibt_Mitglieder_zurück_wie_sie_waren) {
    using namespace std::string_literals;
    struct Fall {
        Text name;
        std::string datei, mitglied;
    };
    const std::vector<Fall> fälle{
        {u"2611 261116 Data.dat", "Aeins\r\nBzwei\r\n", "Aeins\r\nBzwei\r\n"},
        {u"Leer.dat", "", ""},
        {u"Leere Zeile.dat", "A\r\n\r\nB\n", "A\r\n\r\nB\n"},
        {u"Loch.dat", "Aa\r\n\0\0\0Bb\r\n"s, "Aa\r\nBb\r\n"},
        {u"Nur Loch.dat", std::string(300, '\0'), ""},
        // Half of the last line: not yet there where others append, visible damage elsewhere.
        {u"2610 261116 Data.dat", "Aeins\r\nBzw", "Aeins\r\n"},
        {u"2611 Kalvora.log", "Aeins", ""},
        {u"Konfigdaten.dat", "Aeins\r\nBzw", "Aeins\r\nBzw\r\n\r\n"},
        {u"ÜStunden 2026.DAT", "\xFE\xFF\r\n", "\xFE\xFF\r\n"},
    };
    Mitglieder mitglieder, erwartet;
    for (const Fall& f : fälle) {
        mitglieder.emplace_back(f.name, f.datei);
        erwartet.emplace_back(f.name, f.mitglied);
    }
    const std::string container = Sicherungsplatz::Container(mitglieder);
    EXPECT_EQ(gelesen(container), erwartet);

    for (std::size_t n = 0; n < container.size(); ++n) { // cut: refused, or whole members
        const auto rest = gelesen(container.substr(0, n));
        ASSERT_LT(rest.size(), erwartet.size()) << n;
        ASSERT_TRUE(std::equal(rest.begin(), rest.end(), erwartet.begin())) << n;
    }
    EXPECT_TRUE(gelesen(container + "\r\n").empty()) << "something left over";
    EXPECT_TRUE(gelesen(std::string(200, '\0')).empty());
}

TEST(Container, weist_Namen_und_Anzahlen_ab_die_keine_sind) {
    const auto mit = [](const Text& name, const Text& anzahl, int zeilen = 2) {
        std::vector<Text> alle{u"[KalvoraBackup]", u"[gut.dat]", u"[1]", u"x", name, anzahl};
        alle.resize(alle.size() + static_cast<std::size_t>(zeilen), u"Zeile");
        return !gelesen(als_Datei(alle)).empty();
    };
    EXPECT_TRUE(mit(u"[a.dat]", u"[2]"));
    EXPECT_TRUE(mit(u"[a [1] b.LOG]", u"[2]"));
    const Text lang(116, u'n'), breit(116, u'€');
    EXPECT_TRUE(mit(u"[" + lang + u".dat]", u"[2]"));
    for (const Text& name :
         {Text(u""), Text(u"[]"), Text(u"[.dat]"), Text(u"[a.txt]"), Text(u"[a.dat"), Text(u"a.dat]"),
          Text(u"[a/b.dat]"), Text(u"[a\\b.dat]"), Text(u"[C:b.dat]"), Text(u"[../b.dat]"),
          Text(u"[/etc/b.dat]"), Text(u"[.b.dat]"), Text(u"[~b.dat]"), Text(u"[..dat]"), Text(u"[GUT.Dat]"),
          Text(u"[a.dat ]"), Text(u"[a.dat/]"), u"[n" + lang + u".dat]", u"[" + breit + u".dat]"})
        EXPECT_FALSE(mit(name, u"[2]")) << zu_utf8(name);
    for (const TextView anzahl :
         {u"", u"[]", u"2", u"[-2]", u"[+2]", u"[ 2]", u"[2 ]", u"[2.0]", u"[0x2]", u"[3]", u"[1]", u"[0]",
          u"[99999999999999999999]", u"[4294967298]", u"[999999999]"})
        EXPECT_FALSE(mit(u"[a.dat]", Text(anzahl))) << zu_utf8(anzahl);
    EXPECT_TRUE(mit(u"[a.dat]", u"[0]", 0));
    EXPECT_TRUE(mit(u"[a.dat]", u"[002]"));
    EXPECT_TRUE(gelesen(als_Datei({u"[KalvoraBackup]"})).empty()) << "would empty the folder";
    EXPECT_TRUE(gelesen(als_Datei({u"[kalvorabackup]", u"[a.dat]", u"[0]"})).empty());
    EXPECT_TRUE(gelesen("[KalvoraBackup]\r\n[a.dat]\r\n[0]\r\n").empty()) << "not scrambled";
}

} // namespace
} // namespace kalvora
