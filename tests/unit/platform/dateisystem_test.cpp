// The contract of FileSystem, held against the real one and the one in memory, so that what a test shows on
// the latter holds on the former.
#include <functional>
#include <gtest/gtest.h>

#include "hilfen/speicher_dateisystem.h"
#include "hilfen/temp_ordner.h"
#include "platform/posix/posix_filesystem.h"
#include "platform/waiting_filesystem.h"

namespace kalvora {
namespace {

// The real file system on file systems that know fewer ways to give a file a free name.
class Ohne_Umbenennen : public PosixFileSystem {
protected:
    int rename_exclusively(const std::string&, const std::string&) override { return EINVAL; }
};
class Nur_Anspruch : public Ohne_Umbenennen {
protected:
    int link_exclusively(const std::string&, const std::string&) override { return EOPNOTSUPP; }
    void claim_pause() override {
        if (++pausen == 3 && beim_Warten) beim_Warten();
    }

public:
    int pausen = 0;
    std::function<void()> beim_Warten;
};

struct Darunter {
    PosixFileSystem platte;
};
struct Wartend : Darunter, WaitingFileSystem {
    Wartend() : WaitingFileSystem(platte) {}
};

struct Art {
    const char* name;
    std::function<std::unique_ptr<FileSystem>()> neu;
};

class Dateisystem : public testing::TestWithParam<Art> {
protected:
    void SetUp() override {
        fs = GetParam().neu();
        basis = dynamic_cast<SpeicherDateisystem*>(fs.get()) ? Text(u"/disk/") : ordner.pfad() + u"disk/";
        ASSERT_EQ(fs->make_folder(basis), 0);
    }
    void schreibe(const Text& name, std::string_view bytes) {
        auto h = fs->open(basis + name, OpenMode::CreateNew);
        ASSERT_TRUE(h) << zu_utf8(name) << " " << h.nummer();
        auto n = fs->write(*h, bytes);
        ASSERT_TRUE(n && *n == bytes.size());
        ASSERT_EQ(fs->sync(*h), 0);
        ASSERT_EQ(fs->close(*h), 0);
    }
    // The bytes of a file, or its fault as "!53".
    std::string lies(const Text& name) {
        auto h = fs->open(basis + name, OpenMode::Read);
        if (!h) return "!" + std::to_string(h.nummer());
        std::string alles;
        std::array<char, 4> puffer{};
        for (auto n = fs->read(*h, puffer.data(), puffer.size()); n && *n > 0;
             n = fs->read(*h, puffer.data(), puffer.size()))
            alles.append(puffer.data(), *n);
        EXPECT_EQ(fs->close(*h), 0);
        return alles;
    }
    TempOrdner ordner;
    std::unique_ptr<FileSystem> fs;
    Text basis;
};

INSTANTIATE_TEST_SUITE_P(
    Alle, Dateisystem,
    testing::Values(Art{"Posix", [] { return std::make_unique<PosixFileSystem>(); }},
                    Art{"OhneUmbenennen", [] { return std::make_unique<Ohne_Umbenennen>(); }},
                    Art{"NurAnspruch", [] { return std::make_unique<Nur_Anspruch>(); }},
                    Art{"Wartend", [] { return std::make_unique<Wartend>(); }},
                    Art{"Speicher", [] { return std::make_unique<SpeicherDateisystem>(); }}),
    [](const auto& art) { return art.param.name; });

TEST_P(Dateisystem, Oeffnen_sagt_warum_nicht) {
    schreibe(u"da.dat", "x");
    ASSERT_EQ(fs->make_folder(basis + u"ordner"), 0);
    for (const auto& [name, modus, nummer] : {std::tuple{u"fehlt.dat", OpenMode::Read, 53},
                                              {u"fehlt/da.dat", OpenMode::Read, 76},
                                              {u"fehlt/da.dat", OpenMode::Append, 76},
                                              {u"da.dat/da.dat", OpenMode::Read, 76},
                                              {u"da.dat", OpenMode::CreateNew, 58},
                                              {u"ordner", OpenMode::CreateNew, 58},
                                              {u"ordner", OpenMode::Read, 75},
                                              {u"ordner", OpenMode::Overwrite, 75},
                                              {u"da.dat", OpenMode::Read, 0}}) {
        const auto h = fs->open(basis + name, modus);
        EXPECT_EQ(h.nummer(), nummer) << zu_utf8(name) << " mode " << static_cast<int>(modus);
        EXPECT_EQ(h ? fs->close(*h) : 0, 0);
    }
    EXPECT_EQ(*fs->list(basis), (std::vector<Text>{u"da.dat", u"ordner"})) << "a refused open leaves nothing";
}

TEST_P(Dateisystem, Anfuegen_geht_ans_Ende_und_kann_lesen) {
    schreibe(u"a.dat", "eins\n");
    auto h = fs->open(basis + u"a.dat", OpenMode::Append);
    ASSERT_TRUE(h);
    char letztes = 0;
    EXPECT_EQ(*fs->read_at(*h, 4, &letztes, 1), 1u);
    EXPECT_EQ(letztes, '\n');
    EXPECT_EQ(*fs->read_at(*h, 5, &letztes, 1), 0u);
    EXPECT_EQ(*fs->write(*h, "zwei\n"), 5u);
    auto zweiter = fs->open(basis + u"a.dat", OpenMode::Append);
    EXPECT_EQ(*fs->write(*zweiter, "drei\n"), 5u);
    EXPECT_EQ(*fs->write(*h, "vier\n"), 5u) << "behind what the other one wrote";
    EXPECT_EQ(fs->close(*h), 0);
    EXPECT_EQ(fs->close(*zweiter), 0);
    EXPECT_EQ(lies(u"a.dat"), "eins\nzwei\ndrei\nvier\n");
}

TEST_P(Dateisystem, Ueberschreiben_laesst_den_Rest_bis_truncate) {
    schreibe(u"a.dat", "0123456789");
    auto h = fs->open(basis + u"a.dat", OpenMode::Overwrite);
    EXPECT_EQ(*fs->write(*h, "abc"), 3u);
    EXPECT_EQ(lies(u"a.dat"), "abc3456789");
    EXPECT_EQ(fs->truncate(*h, 3), 0);
    EXPECT_EQ(fs->info(*h)->size, 3u);
    EXPECT_EQ(fs->close(*h), 0);
    EXPECT_EQ(lies(u"a.dat"), "abc");
    EXPECT_EQ(fs->info(basis + u"fehlt").nummer(), 53);
    EXPECT_TRUE(fs->info(basis)->folder && !fs->info(basis + u"a.dat")->folder);
}

TEST_P(Dateisystem, Umbenennen_ersetzt) {
    schreibe(u"alt", "alt");
    schreibe(u"neu", "neu");
    ASSERT_EQ(fs->make_folder(basis + u"ordner/"), 0);
    EXPECT_EQ(fs->rename(basis + u"neu", basis + u"alt"), 0);
    for (const auto& [von, nach, nummer] :
         {std::tuple{u"neu", u"alt", 53}, {u"alt", u"fehlt/alt", 76}, {u"alt", u"ordner", 75}})
        EXPECT_EQ(fs->rename(basis + von, basis + nach), nummer);
    EXPECT_EQ(lies(u"alt"), "neu");
}

TEST_P(Dateisystem, Neuer_Name_ersetzt_nie) {
    const std::string viel(200'000, 'v');
    schreibe(u"quelle", viel);
    schreibe(u"da", "da");
    EXPECT_EQ(fs->rename_new(basis + u"quelle", basis + u"da"), 58);
    EXPECT_EQ(lies(u"da"), "da");
    EXPECT_EQ(lies(u"quelle").size(), viel.size()) << "a refused one keeps its source";
    EXPECT_EQ(fs->rename_new(basis + u"quelle", basis + u"fehlt/ziel"), 76);
    EXPECT_EQ(fs->rename_new(basis + u"quelle", basis + u"ziel"), 0);
    EXPECT_EQ(lies(u"ziel"), viel);
    EXPECT_EQ(*fs->list(basis), (std::vector<Text>{u"da", u"ziel"}));
}

TEST_P(Dateisystem, Loeschen_und_Ordner) {
    schreibe(u"da", "x");
    EXPECT_EQ(fs->remove(basis + u"da"), 0);
    EXPECT_EQ(fs->remove(basis + u"da"), 53);
    EXPECT_EQ(fs->remove(basis + u"fehlt/da"), 76);
    EXPECT_EQ(fs->make_folder(basis + u"o/"), 0);
    EXPECT_EQ(fs->make_folder(basis + u"o"), 58);
    EXPECT_EQ(fs->make_folder(basis + u"fehlt/o"), 76);
    EXPECT_EQ(fs->remove(basis + u"o"), 75) << "a folder is no file";
    schreibe(u"o/x", "x");
    EXPECT_EQ(fs->remove_folder(basis + u"o/"), 75) << "not empty";
    EXPECT_EQ(fs->remove(basis + u"o/x"), 0);
    EXPECT_EQ(fs->remove_folder(basis + u"o/"), 0);
    EXPECT_EQ(fs->remove_folder(basis + u"o/"), 76);
    EXPECT_EQ(fs->list(basis + u"o/").nummer(), 76);
}

TEST_P(Dateisystem, Listen_sind_sortiert_und_Namen_behalten_Umlaute) {
    for (const Text& name : std::vector<Text>{u"b.dat", u"Übung Ž.dat", u"B.dat", u"a.dat", u".verborgen"})
        schreibe(name, "x");
    EXPECT_EQ(*fs->list(basis),
              (std::vector<Text>{u".verborgen", u"B.dat", u"a.dat", u"b.dat", u"Übung Ž.dat"}));
    EXPECT_EQ(lies(u"Übung Ž.dat"), "x");
    EXPECT_EQ(fs->list(basis + u"a.dat").nummer(), 76);
}

// Somebody else has claimed the name: he takes it, gives it up, or died over it.
TEST(Namensanspruch, Eines_anderen) {
    for (const std::string_view was : {"taken", "given up", "dead"}) {
        const TempOrdner ordner;
        Nur_Anspruch fs;
        ordner.schreibe(u".neu", "mein");
        ordner.schreibe(u".a.dat.0.claim", "");
        fs.beim_Warten = [&] {
            if (was == "taken") ordner.schreibe(u"a.dat", "sein");
            if (was != "dead") std::filesystem::remove(ordner.ordner() / ".a.dat.0.claim");
        };
        const bool gelingt = was != "taken";
        EXPECT_EQ(fs.rename_new(ordner.pfad(u".neu"), ordner.pfad(u"a.dat")), gelingt ? 0 : 58) << was;
        EXPECT_EQ(ordner.lies(u"a.dat"), gelingt ? "mein" : "sein") << was;
        EXPECT_EQ(fs.list(ordner.pfad())->size(), gelingt ? 1u : 2u) << was << ": no claim is left";
        EXPECT_EQ(fs.pausen > 100, was == "dead") << was;
    }
}

} // namespace
} // namespace kalvora
