#include "files/whole_file.h"

#include "hilfen/schaden.h"

namespace kalvora {
namespace {

const Text PFAD = u"/d/Datei.dat";
const std::string ALT = "alt\r\n", NEU = "ganz neu und viel länger\r\n";
struct Werkprobe {
    SpeicherDateisystem fs;
    TestUhr uhr;
    Dateiwerk werk{fs, uhr, u"PLATZ1-4711"};
    Werkprobe() { fs.schreibe(PFAD, ALT); }
    std::string inhalt() { return fs.inhalt(PFAD).value_or("<fehlt>"); }
    size_t dateien() { return fs.platte().abbild().size(); }
};

// What a fault at each single call leaves is shown by the sweep over all operations.
TEST(GanzeDatei, NichtsGehtHalb) {
    Werkprobe p;
    p.fs.platte().frei = 5;
    EXPECT_EQ(p.werk.anhängen(PFAD, NEU).nummer(), FEHLER_VOLL);
    EXPECT_EQ(p.inhalt(), ALT) << "what was appended of it is taken back";
    p.fs.platte().frei = 5;
    EXPECT_EQ(p.werk.ersetzen(PFAD, NEU).nummer(), FEHLER_VOLL);
    EXPECT_EQ(p.inhalt(), ALT);
    EXPECT_EQ(p.dateien(), 1u) << "a sibling was left";
}

// A share may carry a rename out and lose the answer.
TEST(GanzeDatei, VerloreneAntwort) {
    Werkprobe p;
    for (const char* aufruf : {"rename", "rename_new"})
        p.fs.störe({.aufruf = aufruf, .wirkung = Wirkung::Fehler_dahinter});
    EXPECT_TRUE(p.werk.ersetzen(PFAD, NEU));
    EXPECT_TRUE(p.werk.neu_anlegen(u"/d/neu.dat", NEU));
    EXPECT_EQ(p.dateien(), 2u);
}

TEST(GanzeDatei, AnhängenSchließtEineOffeneZeile) {
    const auto mit_NUL = std::string("a\0\r\nb\r\n", 7);
    for (const auto& [davor, danach] : {std::pair<std::string, std::string>{"a", mit_NUL},
                                        {"a\r", std::string("a\r\0\r\nb\r\n", 8)},
                                        {"", "b\r\n"}}) {
        Werkprobe p;
        p.fs.schreibe(PFAD, davor);
        const auto anhang = p.werk.anhängen(PFAD, "b\r\n");
        ASSERT_TRUE(anhang);
        EXPECT_EQ(p.inhalt(), danach);
        EXPECT_EQ(anhang->davor, davor.size());
        EXPECT_EQ(anhang->info.size, danach.size());
    }
}

// Another workstation puts a new file in the place of the one that is just being appended to.
TEST(GanzeDatei, AnhängenFolgtDerNeuenDatei) {
    for (const char* aufruf : {"write", "sync"}) {
        Werkprobe p;
        p.fs.davor = [&](const std::string& name, const Text&) {
            if (name == aufruf) p.fs.schreibe(PFAD, NEU);
            if (name == aufruf) p.fs.davor = {};
        };
        p.fs.störe({.aufruf = aufruf, .nummer = FEHLER_NETZ});
        EXPECT_TRUE(p.werk.anhängen(PFAD, "b\r\n"));
        EXPECT_EQ(p.inhalt(), NEU + "b\r\n") << aufruf;
        p.fs.störe({.aufruf = aufruf, .nummer = FEHLER_NETZ, .dauernd = true});
        EXPECT_EQ(p.werk.anhängen(PFAD, "c\r\n").nummer(), FEHLER_NETZ);
    }
}

TEST(GanzeDatei, RechteBleibenUndOhneUmbenennenGehtEsAuch) {
    Werkprobe p;
    p.fs.platte().finde(PFAD)->info.mode = 0664;
    p.fs.platte().finde(PFAD)->info.group = 1000;
    ASSERT_TRUE(p.werk.ersetzen(PFAD, ALT));
    EXPECT_EQ(p.fs.platte().finde(PFAD)->info.mode, 0664u);
    EXPECT_EQ(p.fs.platte().finde(PFAD)->info.group, 1000u);
    p.fs.störe({.aufruf = "rename", .nummer = 70, .dauernd = true});
    EXPECT_TRUE(p.werk.ersetzen(PFAD, NEU)) << "written in place behind the whole sibling";
    EXPECT_EQ(p.inhalt(), NEU);
    EXPECT_GT(p.fs.gewartet(), 0.5);
    EXPECT_TRUE(p.werk.ersetzen(PFAD, ALT));
    EXPECT_EQ(p.inhalt(), ALT) << "nothing of the longer one stands behind it";
    p.fs.störe({.aufruf = "open", .maske = u"Datei.dat", .nummer = 70, .dauernd = true});
    EXPECT_FALSE(p.werk.ersetzen(PFAD, NEU));
    EXPECT_EQ(p.dateien(), 1u) << "a sibling was left";

    // The disk fails in the middle of that: the sibling is the only whole copy and stays.
    Werkprobe q;
    q.fs.störe({.aufruf = "rename", .nummer = 70, .dauernd = true});
    q.fs.störe({.aufruf = "write", .maske = u"Datei.dat", .wirkung = Wirkung::Kurz_und_Fehler, .bytes = 4});
    EXPECT_FALSE(q.werk.ersetzen(PFAD, NEU));
    const Text kopie = u"/d/.Datei.dat.PLATZ1-4711-1.neu";
    EXPECT_EQ(q.fs.inhalt(kopie), NEU);
    // Nor does the next try, or a later process of the same number, touch it.
    q.fs.störe_nicht();
    q.fs.platte().frei = 5;
    EXPECT_FALSE(q.werk.ersetzen(PFAD, ALT + NEU));
    EXPECT_FALSE(Dateiwerk(q.fs, q.uhr, u"PLATZ1-4711").ersetzen(PFAD, ALT + NEU));
    EXPECT_EQ(q.fs.inhalt(kopie), NEU);
}

// The owner of before, whom the rename takes his file from, writes through the folder's rights.
TEST(GanzeDatei, EinFremderNimmtNiemandemDieRechte) {
    struct Fall {
        unsigned ordner, mode, group; // of the folder's group 50; of the file behind it, which was 0644
    };
    for (const Fall& f : {Fall{0775, 0664, 50}, Fall{0777, 0666, 50}, Fall{0757, 0646, 1000}}) {
        Werkprobe p;
        auto& ordner = p.fs.platte().finde(u"/d")->info;
        ordner.mode = f.ordner;
        ordner.group = 50;
        auto& alt = p.fs.platte().finde(PFAD)->info;
        alt.owner = alt.group = 1000;
        const auto neu = p.werk.ersetzen(PFAD, NEU);
        ASSERT_TRUE(neu);
        EXPECT_EQ(neu->mode, f.mode) << f.ordner;
        EXPECT_EQ(neu->group, f.group) << f.ordner;
        EXPECT_EQ(neu->time, p.fs.platte().finde(PFAD)->info.time);
        EXPECT_EQ(neu->size, NEU.size());
    }
}

} // namespace
} // namespace kalvora
