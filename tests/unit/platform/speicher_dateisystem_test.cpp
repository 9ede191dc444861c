// The faults that the in-memory disk can make: a sweep over them is only worth what these are. That it is a
// file system like the real one is shown by the contract in dateisystem_test.cpp.
#include <gtest/gtest.h>

#include "hilfen/speicher_dateisystem.h"
#include "hilfen/test_uhr.h"

namespace kalvora {
namespace {

struct Speicher : testing::Test {
    SpeicherDateisystem fs;
    Speicher() { fs.schreibe(u"/d/a.dat", "alt"); }
    FileSystem::Handle anfügen() { return *fs.open(u"/d/a.dat", OpenMode::Append); }
};

TEST_F(Speicher, Wirkungen_beim_Schreiben) {
    const struct {
        Wirkung wirkung;
        std::string danach;
        int nummer; // -1: the program ends
    } fälle[] = {{Wirkung::Fehler, "alt", 61},
                 {Wirkung::Fehler_dahinter, "altneu", 61},
                 {Wirkung::Kurz, "altne", 0},
                 {Wirkung::Kurz_und_Fehler, "altne", 61},
                 {Wirkung::Ende, "alt", -1},
                 {Wirkung::Ende_mitten, "altne", -1},
                 {Wirkung::Ende_dahinter, "altneu", -1}};
    for (const auto& f : fälle) {
        SCOPED_TRACE(static_cast<int>(f.wirkung));
        fs.schreibe(u"/d/a.dat", "alt");
        fs.störe({.aufruf = "write", .wirkung = f.wirkung, .nummer = 61, .bytes = 2});
        int nummer = -1;
        try {
            nummer = fs.write(anfügen(), "neu").nummer();
        } catch (Programmende) {
        }
        EXPECT_EQ(fs.inhalt(u"/d/a.dat"), f.danach);
        EXPECT_EQ(nummer, f.nummer);
        fs.neu_starten();
    }
}

TEST_F(Speicher, Der_wievielte_Aufruf_welche_Datei_und_was_aendert) {
    fs.schreibe(u"/d/b.dat", "b");
    fs.störe({.aufruf = "open", .maske = u"a.*", .beim = 2, .nummer = 70});
    const int nummern[] = {0, 0, 0, 70, 0};
    for (int n = 0; n < 5; ++n)
        EXPECT_EQ(fs.open(n % 2 == 0 ? u"/d/b.dat" : u"/d/a.dat", OpenMode::Read).nummer(), nummern[n]) << n;
    EXPECT_EQ(fs.anzahl("open", u"a.dat"), 2);
    fs.neu_starten();
    fs.störe({.aufruf = "*", .beim = 2, .wirkung = Wirkung::Ende});
    const auto h = anfügen(); // no change: it found the file
    EXPECT_TRUE(fs.write(h, "1") && fs.list(u"/d/"));
    EXPECT_THROW(fs.sync(h), Programmende);
}

TEST_F(Speicher, Stromausfall_volle_Platte_und_Freigabe) {
    const auto h = anfügen();
    (void)fs.write(h, "1");
    (void)fs.sync(h);
    (void)fs.write(h, "2");
    const auto neu = *fs.open(u"/d/.neu", OpenMode::CreateNew);
    (void)fs.write(neu, "ganz");
    EXPECT_EQ(fs.rename(u"/d/.neu", u"/d/b.dat"), 0);
    fs.platte().verliere_ungesichertes();
    EXPECT_EQ(fs.inhalt(u"/d/a.dat"), "alt1");
    EXPECT_EQ(fs.inhalt(u"/d/b.dat"), "") << "the new name stands before its bytes";

    SpeicherDateisystem zweiter(fs.geteilte_platte());
    fs.platte().freigabe = true; // two workstations on a share write over each other
    const auto h1 = anfügen(), h2 = *zweiter.open(u"/d/a.dat", OpenMode::Append);
    EXPECT_TRUE(fs.write(h1, "eins") && zweiter.write(h2, "zwei"));
    EXPECT_EQ(fs.inhalt(u"/d/a.dat"), "alt1zwei");
    fs.platte().frei = 2;
    EXPECT_EQ(*fs.write(h1, "neu"), 2u) << "the rest of the disk first";
    EXPECT_EQ(fs.write(h1, "u").nummer(), 61);
}

TEST(Testuhr, Schlafen_geht_ueber_Mitternacht) {
    TestUhr uhr({{2026, 12, 31}, 23, 59, 50});
    uhr.sleep(20);
    EXPECT_EQ(uhr.now().tag, (Kalendertag{2027, 1, 1}));
    EXPECT_EQ(FormatZeit(uhr.now()), u"00:00:10");
    EXPECT_EQ(uhr.day_of(uhr.stempel()), Datum_aus(2027, 1, 1));
    EXPECT_EQ(TestUhr().day_of(SpeicherPlatte().zeit), 46342) << "disk and clock begin on one day";
}

} // namespace
} // namespace kalvora
