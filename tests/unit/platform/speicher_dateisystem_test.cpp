// The faults that the in-memory disk can make: a sweep over them is only worth what these are.
#include <gtest/gtest.h>

#include "hilfen/speicher_dateisystem.h"
#include "hilfen/test_uhr.h"
#include "hilfen/test_umgebung.h"

namespace kalvora {
namespace {

class Speicher : public testing::Test {
protected:
    void SetUp() override { fs.schreibe(u"/d/a.dat", "alt"); }
    FileSystem::Handle anfügen() { return *fs.open(u"/d/a.dat", OpenMode::Append); }
    SpeicherDateisystem fs;
};

TEST_F(Speicher, Wirkungen_beim_Schreiben) {
    struct Fall {
        Wirkung wirkung;
        std::string danach;
        int nummer;
        bool ende;
    };
    for (const Fall& f : std::vector<Fall>{{Wirkung::Fehler, "alt", 61, false},
                                           {Wirkung::Fehler_dahinter, "altneu", 61, false},
                                           {Wirkung::Kurz, "altne", 0, false},
                                           {Wirkung::Kurz_und_Fehler, "altne", 61, false},
                                           {Wirkung::Ende, "alt", 0, true},
                                           {Wirkung::Ende_mitten, "altne", 0, true},
                                           {Wirkung::Ende_dahinter, "altneu", 0, true}}) {
        SpeicherDateisystem platz;
        platz.schreibe(u"/d/a.dat", "alt");
        platz.störe({.aufruf = "write", .wirkung = f.wirkung, .nummer = 61, .bytes = 2});
        const auto h = *platz.open(u"/d/a.dat", OpenMode::Append);
        bool ende = false;
        int nummer = 0;
        try {
            nummer = platz.write(h, "neu").nummer();
        } catch (Programmende) {
            ende = true;
        }
        EXPECT_EQ(platz.inhalt(u"/d/a.dat"), f.danach) << static_cast<int>(f.wirkung);
        EXPECT_EQ(nummer, f.nummer) << static_cast<int>(f.wirkung);
        EXPECT_EQ(ende, f.ende) << static_cast<int>(f.wirkung);
        platz.neu_starten();
        EXPECT_EQ(platz.offene(), 0);
    }
}

TEST_F(Speicher, Der_wievielte_Aufruf_und_welche_Datei) {
    fs.schreibe(u"/d/b.dat", "b");
    fs.störe({.aufruf = "open", .maske = u"a.*", .beim = 2, .nummer = 70});
    EXPECT_TRUE(fs.open(u"/d/b.dat", OpenMode::Read));
    EXPECT_TRUE(fs.open(u"/d/a.dat", OpenMode::Read));
    EXPECT_TRUE(fs.open(u"/d/b.dat", OpenMode::Read));
    EXPECT_EQ(fs.open(u"/d/a.dat", OpenMode::Read).nummer(), 70);
    EXPECT_TRUE(fs.open(u"/d/a.dat", OpenMode::Read));
    EXPECT_EQ(fs.anzahl("open", u"a.dat"), 3);
    EXPECT_EQ(fs.offene(), 4);
}

TEST_F(Speicher, Zaehlt_nur_was_aendert) {
    fs.störe({.aufruf = "*", .beim = 2, .wirkung = Wirkung::Ende});
    const auto h = anfügen();
    EXPECT_TRUE(fs.info(h));
    EXPECT_TRUE(fs.write(h, "1")); // the first change: the open found the file
    EXPECT_TRUE(fs.list(u"/d/"));
    EXPECT_THROW(fs.sync(h), Programmende);
}

TEST_F(Speicher, Stromausfall_behaelt_nur_Gesichertes) {
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
}

TEST_F(Speicher, Volle_Platte_nimmt_erst_den_Rest) {
    fs.platte().frei = 2;
    const auto h = anfügen();
    EXPECT_EQ(*fs.write(h, "neu"), 2u);
    EXPECT_EQ(fs.write(h, "u").nummer(), 61);
    EXPECT_EQ(fs.inhalt(u"/d/a.dat"), "altne");
}

TEST_F(Speicher, Zwei_Plaetze_auf_einer_Freigabe_ueberschreiben_sich) {
    SpeicherDateisystem zweiter(fs.geteilte_platte());
    fs.platte().freigabe = true;
    const auto h1 = anfügen();
    const auto h2 = *zweiter.open(u"/d/a.dat", OpenMode::Append);
    EXPECT_TRUE(fs.write(h1, "eins"));
    EXPECT_TRUE(zweiter.write(h2, "zwei"));
    EXPECT_EQ(fs.inhalt(u"/d/a.dat"), "altzwei");
}

TEST(Testuhr, Schlafen_geht_ueber_Mitternacht) {
    TestUhr uhr({{2026, 12, 31}, 23, 59, 50});
    const double vorher = uhr.steady();
    uhr.sleep(20);
    EXPECT_EQ(uhr.now().tag, (Kalendertag{2027, 1, 1}));
    EXPECT_EQ(FormatZeit(uhr.now()), u"00:00:10");
    EXPECT_DOUBLE_EQ(uhr.steady() - vorher, 20);
    EXPECT_EQ(uhr.day_of(uhr.stempel()), Datum_aus(2027, 1, 1));
    EXPECT_EQ(TestUhr().day_of(SpeicherPlatte().zeit), 46342) << "disk and clock begin on one day";
}

TEST(Testumgebung, Sperren_gelten_zwischen_Plaetzen_und_enden_mit_ihnen) {
    const auto sperren = std::make_shared<TestUmgebung::Sperren>();
    TestUmgebung zweiter(sperren);
    {
        TestUmgebung erster(sperren);
        EXPECT_TRUE(erster.lock_instance(u"/s"));
        EXPECT_TRUE(erster.lock_instance(u"/s")) << "its own lock";
        EXPECT_FALSE(zweiter.lock_instance(u"/s"));
    }
    EXPECT_TRUE(zweiter.lock_instance(u"/s"));
}

} // namespace
} // namespace kalvora
