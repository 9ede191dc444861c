// The file system that lets the window answer: what happens while a call does not come back. That its calls
// are those beneath is shown by the contract in dateisystem_test.cpp.
#include <gtest/gtest.h>

#include <new>
#include <set>
#include <stdexcept>
#include <thread>

#include "hilfen/speicher_dateisystem.h"
#include "hilfen/tor.h"
#include "platform/waiting_filesystem.h"

namespace kalvora {
namespace {

struct HängendePlatte : SpeicherDateisystem {
    Tor* tor = nullptr; // in front of make_folder and wait
    Fehlercode make_folder(const Text& pfad) override {
        if (tor) tor->warten();
        return SpeicherDateisystem::make_folder(pfad);
    }
    void wait(double sekunden) override {
        if (tor) tor->warten();
        SpeicherDateisystem::wait(sekunden);
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

TEST_F(Wartend, reicht_weiter_was_geworfen_wird) {
    EXPECT_THROW(fs.carry_out([] { throw std::bad_alloc(); }), std::bad_alloc);
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
    // A server that refuses a rename is asked again after a while: the window answers through that, too.
    Tor pause;
    platte.tor = &pause;
    fs.while_waiting = [&](double) { pause.öffnen(); };
    fs.wait(0.2);
    EXPECT_EQ(vorbei, 2);
}

// What is done at once runs on the caller's own thread.
TEST_F(Wartend, gibt_nicht_ab_was_nur_hinsieht_wo_gleich_geantwortet_wird) {
    std::set<std::string> abgegeben;
    platte.platte().mache_ordner(u"/srv/x/");
    platte.schreibe(u"/srv/x/a.dat", "abc");
    platte.davor = [&, hier = std::this_thread::get_id()](const std::string& aufruf, const Text&) {
        if (std::this_thread::get_id() != hier) abgegeben.insert(aufruf);
    };
    const auto alles = [&] {
        abgegeben.clear();
        (void)fs.list(u"/srv/x/");
        const auto h = fs.open(u"/srv/x/a.dat", OpenMode::Append);
        char c = 0;
        (void)fs.read(*h, &c, 1);
        (void)fs.write(*h, "d");
        (void)fs.sync(*h);
        (void)fs.close(*h);
        (void)fs.rename(u"/srv/x/a.dat", u"/srv/x/a.dat");
        fs.carry_out([&] { platte.davor("lock", {}); });
        return abgegeben;
    };
    EXPECT_EQ(alles(),
              (std::set<std::string>{"list", "open", "read", "write", "sync", "close", "rename", "lock"}));
    std::vector<Text> gefragt;
    fs.prompt = [&](const Text& ordner) { return gefragt.push_back(ordner), ordner == u"/srv/x/"; };
    EXPECT_EQ(alles(), (std::set<std::string>{"write", "sync", "rename", "lock"}));
    EXPECT_EQ(gefragt, std::vector<Text>{u"/srv/x/"}) << "the answer holds for a while";
    (void)fs.info(u"/srv/y");
    EXPECT_TRUE(abgegeben.contains("info")) << "another folder";
}

} // namespace
} // namespace kalvora
