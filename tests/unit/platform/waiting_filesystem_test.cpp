// The file system that lets the window answer: the same calls with the same results as beneath, and what
// happens while one of them does not come back.
#include <gtest/gtest.h>

#include <set>
#include <stdexcept>
#include <thread>

#include "files/whole_file.h"
#include "hilfen/speicher_dateisystem.h"
#include "hilfen/test_uhr.h"
#include "hilfen/tor.h"
#include "platform/waiting_filesystem.h"

namespace kalvora {
namespace {

// Something of every call; the numbers of the faults and what was read.
std::string Durchlauf(FileSystem& fs) {
    TestUhr uhr;
    Dateiwerk werk(fs, uhr, u"PLATZ1-4711");
    std::string aus;
    const auto sage = [&](int nummer) { aus += std::to_string(nummer) + " "; };
    sage(fs.make_folder(u"/srv/x/"));
    sage(fs.make_folder(u"/srv/x/"));
    sage(fs.change_folder(u"/srv/x/"));
    sage(fs.real_folder(u"/srv/fehlt/").nummer());
    sage(werk.neu_anlegen(u"/srv/x/a.dat", "eins\r\n").nummer());
    sage(werk.neu_anlegen(u"/srv/x/a.dat", "anders").nummer());
    sage(werk.anhängen(u"/srv/x/a.dat", "zwei\r\n").nummer());
    sage(werk.ersetzen(u"/srv/x/b.dat", "drei").nummer());
    sage(fs.rename(u"/srv/x/b.dat", u"/srv/x/c.dat"));
    sage(fs.remove(u"/srv/x/b.dat"));
    const auto h = fs.open(u"/srv/x/a.dat", OpenMode::Overwrite);
    std::array<char, 4> puffer{};
    sage(static_cast<int>(*fs.read_at(*h, 6, puffer.data(), puffer.size())));
    sage(fs.truncate(*h, 3));
    sage(static_cast<int>(fs.info(*h)->size));
    sage(fs.close(*h));
    sage(fs.close(*h));
    const auto namen = fs.list(u"/srv/x/");
    for (const Text& name : *namen)
        aus += zu_utf8(name) + " ";
    sage(fs.remove_folder(u"/srv/x/"));
    return aus + std::string(puffer.data(), puffer.size()) + zu_utf8(fs.current_folder());
}

struct HängendePlatte : SpeicherDateisystem {
    Tor* tor = nullptr; // in front of make_folder
    Fehlercode make_folder(const Text& pfad) override {
        if (tor) tor->warten();
        return SpeicherDateisystem::make_folder(pfad);
    }
};

struct Wartend : testing::Test {
    HängendePlatte platte;
    WaitingFileSystem fs{platte};
    Tor tor;
    int male = 0, vorbei = 0;

    void SetUp() override {
        platte.platte().mache_ordner(u"/srv/");
        fs.wait_over = [this] { ++vorbei; };
    }
};

TEST_F(Wartend, tut_und_sagt_dasselbe_wie_das_Dateisystem_darunter) {
    SpeicherDateisystem ohne;
    ohne.platte().mache_ordner(u"/srv/");
    EXPECT_EQ(Durchlauf(fs), Durchlauf(ohne));
    EXPECT_EQ(platte.tagebuch(), ohne.tagebuch());
    platte.störe({.aufruf = "make_folder", .wirkung = Wirkung::Ende});
    EXPECT_THROW(fs.make_folder(u"/srv/y/"), Programmende) << "what is thrown arrives at the caller";
    platte.störe_nicht();
    EXPECT_EQ(fs.make_folder(u"/srv/y/"), 0);
}

TEST_F(Wartend, laesst_das_Fenster_zu_Wort_kommen_bis_der_Aufruf_zurueckkehrt) {
    platte.tor = &tor;
    double zuletzt = 0;
    fs.while_waiting = [&](double sekunden) {
        EXPECT_GT(sekunden, std::max(zuletzt, 0.079));
        zuletzt = sekunden;
        EXPECT_EQ(fs.info(u"/srv/y/").nummer(), 53) << "a nested call does not wait for the one that hangs";
        if (++male == 3) tor.öffnen();
        throw std::runtime_error("geht den Aufruf nichts an");
    };
    EXPECT_EQ(fs.make_folder(u"/srv/y/"), 0);
    EXPECT_EQ(vorbei, 1);
    EXPECT_EQ(male, 3);
    EXPECT_EQ(fs.make_folder(u"/srv/y/"), 58);
    EXPECT_EQ(vorbei, 1) << "the second call did not last";
}

// What is done at once runs on the caller's own thread.
TEST_F(Wartend, gibt_nicht_ab_was_nur_hinsieht_wo_gleich_geantwortet_wird) {
    std::set<std::string> abgegeben;
    platte.platte().mache_ordner(u"/srv/x/");
    platte.schreibe(u"/srv/x/a.dat", "abc");
    platte.davor = [&, hier = std::this_thread::get_id()](const std::string& aufruf, const Text&) {
        if (std::this_thread::get_id() != hier) abgegeben.insert(aufruf);
    };
    std::vector<Text> gefragt;
    const auto alles = [&] {
        abgegeben.clear();
        (void)fs.info(u"/srv/x/a.dat");
        (void)fs.list(u"/srv/x/");
        const auto h = fs.open(u"/srv/x/a.dat", OpenMode::Append);
        char c = 0;
        (void)fs.info(*h);
        (void)fs.read(*h, &c, 1);
        (void)fs.read_at(*h, 0, &c, 1);
        (void)fs.write(*h, "d");
        (void)fs.sync(*h);
        fs.close(*h);
        fs.rename(u"/srv/x/a.dat", u"/srv/x/b.dat");
        fs.rename(u"/srv/x/b.dat", u"/srv/x/a.dat");
        return abgegeben;
    };
    const std::set<std::string> ändernde{"write", "sync", "rename"};
    std::set<std::string> jeder{"info", "list", "open", "read", "read_at", "close"};
    jeder.insert(ändernde.begin(), ändernde.end());
    EXPECT_EQ(alles(), jeder);
    bool gleich = true;
    fs.prompt = [&](const Text& ordner) {
        gefragt.push_back(ordner);
        return gleich;
    };
    EXPECT_EQ(alles(), ändernde);
    EXPECT_EQ(gefragt, std::vector<Text>{u"/srv/x/"}) << "the answer holds for a while";
    gleich = false;
    const auto h = fs.open(u"/srv/x/a.dat", OpenMode::Read);
    (void)fs.info(u"/srv/y");
    EXPECT_EQ(gefragt, (std::vector<Text>{u"/srv/x/", u"/srv/"}));
    EXPECT_TRUE(abgegeben.contains("info"));
    fs.close(*h);
}

} // namespace
} // namespace kalvora
