// The faults that the in-memory disk can make: a sweep over them is only worth what these are. That it is a
// file system like the real one is shown by the contract in dateisystem_test.cpp.
#include <gtest/gtest.h>

#include "hilfen/speicher_dateisystem.h"

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

TEST_F(Speicher, Stromausfall_und_volle_Platte) {
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
    fs.platte().frei = 2;
    EXPECT_EQ(*fs.write(anfügen(), "neu"), 2u) << "the rest of the disk first";
    EXPECT_EQ(fs.write(anfügen(), "u").nummer(), 61);
}

} // namespace
} // namespace kalvora
