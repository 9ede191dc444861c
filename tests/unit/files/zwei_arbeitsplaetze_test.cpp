// Two workstations on one data folder of the real file system: neither loses what the other has saved.
#include "hilfen/programmlauf.h"
#include "hilfen/temp_ordner.h"
#include "platform/posix/posix_filesystem.h"

namespace kalvora {
namespace {

// The folder, and any number of workstations on it.
struct Netz {
    TempOrdner ordner;
    PosixFileSystem fs;
    std::shared_ptr<TestUmgebung::Sperren> sperren = std::make_shared<TestUmgebung::Sperren>();
    Text daten = ordner.pfad(u"Data/");

    explicit Netz(const Firma& firma = {}) { firma.anlegen(fs, daten); }
    std::unique_ptr<Platzlauf> platz(const Text& benutzer, const Text& rechner) {
        auto lauf = std::make_unique<Platzlauf>(fs, benutzer, ordner.pfad(), rechner, sperren);
        EXPECT_TRUE(lauf->starten({u"/path", daten, u"/nowelcomescreen"}));
        return lauf;
    }
    // The plan as a third one sees it.
    Text zellen(TextView BenId) { return platz(u"chef", u"DRITTER")->zellen(BenId); }
};

Text ab(int tag, TextView text) {
    return Text(static_cast<size_t>(tag - 1), u'.') + Text(text) +
           Text(static_cast<size_t>(32 - tag) - text.size(), u'.');
}

// An own save behind somebody else's does not make the plan on show the current one.
TEST(ZweiArbeitsplätze, EigenesHinterFremdem) {
    for (const bool heutige_da : {false, true}) {
        Netz netz;
        const auto p = netz.platz(u"chef", u"P"), q = netz.platz(u"chef", u"Q");
        if (heutige_da) {
            q->trage_ein(u"eve", 18, 18, 1);
            p->trage_ein(u"eve", 19, 19, 1);
            q->fenster_().tmrTimer1.tick();
        }
        p->trage_ein(u"anna", 18, 18, 1);
        q->trage_ein(u"otto", 18, 18, 3);
        q->trage_ein(u"anna", 20, 20, 3); // from a row that must show what p saved
        EXPECT_EQ(netz.zellen(u"anna"), ab(18, u"U.Z"));
        p->trage_ein(u"otto", 19, 19, 1);
        EXPECT_EQ(netz.zellen(u"otto"), ab(18, u"ZU"));
        q->fenster_().tmrTimer1.tick();
        EXPECT_EQ(q->zellen(u"otto"), ab(18, u"ZU"));
    }
}

TEST(ZweiArbeitsplätze, MarkierungBleibtBeiDerPerson) {
    Netz netz;
    const auto p = netz.platz(u"chef", u"P"), q = netz.platz(u"otto", u"Q");
    p->markiere(u"eve", 18, 20);
    q->trage_ein(u"otto", 18, 18, 1);
    p->fenster_().tmrTimer1.tick();
    EXPECT_EQ(p->zellen(u"otto"), ab(18, u"U"));
    EXPECT_TRUE(p->plan().HighLight());
    p->drücke(1);
    EXPECT_EQ(netz.zellen(u"eve"), ab(18, u"UUU"));
}

// Somebody adds a person above while the row is marked.
TEST(ZweiArbeitsplätze, PersonalÄndertSich) {
    Firma firma;
    Netz netz(firma);
    const auto p = netz.platz(u"chef", u"P");
    p->markiere(u"eve", 18, 18);
    firma.personal.insert(firma.personal.begin() + 1, Firma::Person(u"adam"));
    std::vector<Text> zeilen{u"[Mitarbeiterdaten]", u"", u"2025"};
    zeilen.insert(zeilen.end(), firma.personal.begin(), firma.personal.end());
    netz.ordner.schreibe(u"Data/Mitarbeiterdaten.dat", als_Datei(zeilen));
    p->drücke(1);
    EXPECT_EQ(netz.zellen(u"eve"), ab(18, u"U"));
    EXPECT_EQ(netz.zellen(u"adam"), ab(1, u""));
    EXPECT_GT(p->zeile(u"adam"), 0);
}

} // namespace
} // namespace kalvora
