// Processes on one folder of the real file system, all at once: none loses a row that it took for saved.
#include <algorithm>
#include <memory>
#include <random>
#include <set>

#include "hilfen/kindprozess.h"
#include "hilfen/programmlauf.h"
#include "hilfen/temp_ordner.h"
#include "unit/zuverlaessigkeit/bericht.h"

namespace kalvora {
namespace {

Text Kennung(int wer, int n) {
    return u"p" + ziffern(wer) + u"n" + ziffern(n);
}

// A folder of the company, and what stands in it.
struct Ordner {
    TempOrdner ordner;
    PosixFileSystem fs;
    Text daten = ordner.pfad(u"Data/");

    Ordner(int prozesse, int je) {
        Firma firma;
        firma.monate[u"2611"] = {A(u"otto", u"1")};
        for (int p = 0; p < prozesse; ++p)
            for (int n = 0; n < je; ++n)
                firma.personal.push_back(Firma::Person(Kennung(p, n)));
        firma.anlegen(fs, daten);
    }
    // Lines of the month's version of today; each must be one that somebody wrote.
    std::vector<Text> zeilen(const Text& yymm = u"2611") const {
        return als_Zeilen(ordner.lies(u"Data/" + yymm + u" 261116 Data.dat"));
    }
    bool startet() {
        Platzlauf lauf(fs, u"chef", ordner.pfad(), u"DRITTER");
        const bool da = lauf.starten({u"/path", daten, u"/nowelcomescreen"});
        EXPECT_TRUE(lauf.fenster.hinweise.empty()) << zu_utf8(lauf.fenster.hinweise.back());
        return da;
    }
};

std::set<Text> Verlorene(const std::vector<Text>& zeilen, const std::set<Text>& gesagt) {
    const std::set<Text> da(zeilen.begin(), zeilen.end());
    std::set<Text> fehlen;
    std::set_difference(gesagt.begin(), gesagt.end(), da.begin(), da.end(),
                        std::inserter(fehlen, fehlen.end()));
    return fehlen;
}

// A process that saves rows of a month; it says those that were taken, and whatever its user was told.
using Speichern = std::function<bool(const Text& zeile)>;
std::unique_ptr<Kindprozess> Platz(const Ordner& o, const Text& yymm,
                                   const std::function<void(const Speichern&)>& tat) {
    return std::make_unique<Kindprozess>([&](const auto& sagen) {
        EchterPlatz p(o.daten, yymm);
        tat([&](const Text& zeile) {
            const bool ok = p.erfassung.Datensatz_speichern(zeile);
            if (ok && !zeile.empty()) sagen(zu_utf8(zeile));
            return ok;
        });
        p.erfassung.Ausstehende_abschließen();
        for (const Text& hinweis : p.fenster.hinweise)
            sagen("failed: " + zu_utf8(hinweis));
    });
}
std::unique_ptr<Kindprozess> Schreiber(const Ordner& o, int wer, int je, const Text& yymm = u"2611") {
    return Platz(o, yymm, [=](const Speichern& speichern) {
        for (int n = 0; n < je; ++n)
            speichern(A(Kennung(wer, n), u"1"));
    });
}

using Kinder = std::vector<std::unique_ptr<Kindprozess>>;

Kinder Schreiber_starten(const Ordner& o, int prozesse, int je) {
    Kinder kinder;
    for (int p = 0; p < prozesse; ++p)
        kinder.push_back(Schreiber(o, p, je));
    return kinder;
}

// What they say until they end; one that failed is the test's failure.
std::set<Text> eingesammelt(const Kinder& kinder) {
    std::set<Text> gesagt;
    for (const auto& kind : kinder)
        for (const std::string& zeile : kind->zeilen()) {
            EXPECT_FALSE(zeile.starts_with("failed")) << zeile;
            gesagt.insert(aus_utf8(zeile));
        }
    return gesagt;
}

TEST(Prozesse, Viele_haengen_an_einen_Monat_an) {
    const int prozesse = voller_Lauf() ? 200 : 20, je = voller_Lauf() ? 50 : 20;
    const auto alle = static_cast<std::size_t>(prozesse * je);
    Ordner o(prozesse, je);
    EXPECT_EQ(eingesammelt(Schreiber_starten(o, prozesse, je)).size(), alle);
    std::vector<Text> zeilen = o.zeilen();
    EXPECT_EQ(zeilen.size(), alle + 4) << "three head lines, and otto's row from before";
    std::sort(zeilen.begin(), zeilen.end());
    const auto einmal = static_cast<std::size_t>(std::unique(zeilen.begin(), zeilen.end()) - zeilen.begin());
    EXPECT_EQ(einmal, alle + 4);
    EXPECT_TRUE(o.startet());
    berichten({std::to_string(prozesse) + " processes × " + std::to_string(je) + " rows into one month",
               std::to_string(alle), std::to_string(einmal - 4) + " of " + std::to_string(alle) + " lines"});
}

TEST(Prozesse, Neufassungen_neben_Anhaengen) {
    const int prozesse = 4, je = voller_Lauf() ? 250 : 25;
    const auto alle = static_cast<std::size_t>(prozesse * je);
    Ordner o(prozesse, je);
    Kinder kinder = Schreiber_starten(o, prozesse, je);
    kinder.push_back(Platz(o, u"2611", [=](const Speichern& speichern) {
        for (int n = 0; n < je / 2; ++n) {
            if (!speichern({})) throw std::runtime_error("compaction");
            usleep(20'000);
        }
    }));
    std::set<Text> gesagt = eingesammelt(kinder);
    EXPECT_EQ(gesagt.size(), alle);
    gesagt.insert(A(u"otto", u"1"));
    const auto verloren = Verlorene(o.zeilen(), gesagt);
    EXPECT_TRUE(verloren.empty()) << verloren.size() << ", such as " << zu_utf8(*verloren.begin());
    EXPECT_TRUE(o.startet());
    berichten({"the month rewritten " + std::to_string(je / 2) + " times while " + std::to_string(prozesse) +
                   " processes append " + std::to_string(je) + " rows each",
               std::to_string(alle), std::to_string(verloren.size()) + " acknowledged rows lost"});
}

// A writer is killed at a random moment, again and again, while a neighbour writes rows of his own. Each
// writer begins with the first save of a month that has none of today yet, as long as there are any.
TEST(Prozesse, Getoetet_waehrend_ein_anderer_schreibt) {
    const int tötungen = voller_Lauf() ? 240 : 36, je = 200;
    // Of 2026, without the one that every start shows and may compact: these rows are of nobody on the staff.
    const std::vector<int> monate{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 12};
    Ordner o(0, 0);
    std::minstd_rand zufall(7);
    std::map<Text, std::set<Text>> gesagt;
    Kinder nachbar, schreiber;
    nachbar.push_back(Platz(o, u"2612", [](const Speichern& speichern) {
        for (int n = 0; speichern(A(u"nachbar" + ziffern(n), u"2")); ++n)
            usleep(2000);
    }));
    for (int k = 0; k < tötungen; ++k) {
        const Text yymm = u"26" + ziffern(monate[static_cast<std::size_t>(k) % monate.size()], 2);
        schreiber.clear();
        schreiber.push_back(Schreiber(o, k, je, yymm));
        usleep(static_cast<useconds_t>(1000 + zufall() % 12000));
        schreiber[0]->töten();
        if (auto neue = eingesammelt(schreiber); !neue.empty()) gesagt[yymm].merge(neue);
        if (k % 12 == 11) {
            EXPECT_TRUE(o.startet());
        }
    }
    nachbar[0]->töten();
    gesagt[u"2612"] = eingesammelt(nachbar);
    std::size_t verloren = 0, alle = 0;
    for (const auto& [yymm, zeilen] : gesagt) {
        verloren += Verlorene(o.zeilen(yymm), zeilen).size();
        alle += zeilen.size();
    }
    EXPECT_EQ(verloren, 0u);
    EXPECT_GT(alle, static_cast<std::size_t>(tötungen)) << "hardly anything was written";
    EXPECT_TRUE(o.startet());
    berichten({"a writer killed (SIGKILL) at a random moment while another process writes other rows",
               std::to_string(tötungen),
               std::to_string(verloren) + " acknowledged rows lost, every start works"});
}

} // namespace
} // namespace kalvora
