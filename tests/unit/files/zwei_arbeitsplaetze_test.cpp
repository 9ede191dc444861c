// Two workstations on one data folder: neither loses what the other has saved. That the real file system
// keeps this promise is shown by processes.
#include "hilfen/programmlauf.h"

namespace kalvora {
namespace {

const Text DATEN = u"/srv/x/Data/";

struct Netz : Haus {
    Platzlauf p{*this, u"chef", u"/", u"P"}, q{*this, u"chef", u"/", u"Q"},
        dritter{*this, u"chef", u"/", u"D"};
    Netz() { EXPECT_TRUE(starten(p) && starten(q)); }
    static bool starten(Platzlauf& platz) { return platz.starten({u"/path", DATEN, u"/nowelcomescreen"}); }
    // The plan as a third one sees it.
    Text zellen(TextView BenId) { return starten(dritter) ? dritter.zellen(BenId) : u"no start"; }
};

Text ab(int tag, TextView text) {
    return Text(static_cast<size_t>(tag - 1), u'.') + Text(text) +
           Text(static_cast<size_t>(32 - tag) - text.size(), u'.');
}

// An own save behind somebody else's does not make the plan on show the current one.
TEST(ZweiArbeitsplätze, EigenesHinterFremdem) {
    for (const bool heutige_da : {false, true}) {
        Netz netz;
        if (heutige_da) {
            netz.q.trage_ein(u"eve", 18, 18, 1);
            netz.p.trage_ein(u"eve", 19, 19, 1);
            netz.q.fenster_().tmrTimer1.tick();
        }
        netz.p.trage_ein(u"anna", 18, 18, 1);
        netz.q.trage_ein(u"otto", 18, 18, 3);
        netz.q.trage_ein(u"anna", 20, 20, 3); // from a row that must show what p saved
        EXPECT_EQ(netz.zellen(u"anna"), ab(18, u"U.Z"));
        netz.p.trage_ein(u"otto", 19, 19, 1);
        EXPECT_EQ(netz.zellen(u"otto"), ab(18, u"ZU"));
        netz.q.fenster_().tmrTimer1.tick();
        EXPECT_EQ(netz.q.zellen(u"otto"), ab(18, u"ZU"));
    }
}

// Somebody saves a row, or adds a person above, while a row is marked.
TEST(ZweiArbeitsplätze, MarkierungBleibtBeiDerPerson) {
    Netz netz;
    netz.p.markiere(u"eve", 18, 20);
    netz.q.trage_ein(u"otto", 18, 18, 1);
    netz.p.fenster_().tmrTimer1.tick();
    EXPECT_EQ(netz.p.zellen(u"otto"), ab(18, u"U"));
    EXPECT_TRUE(netz.p.plan().HighLight());
    std::vector<Text> zeilen = netz.zeilen(DATEN + u"Mitarbeiterdaten.dat");
    zeilen.insert(zeilen.begin() + 4, Firma::Person(u"adam"));
    netz.schreibe(DATEN + u"Mitarbeiterdaten.dat", als_Datei(zeilen));
    netz.p.drücke(1);
    EXPECT_EQ(netz.zellen(u"eve"), ab(18, u"UUU"));
    EXPECT_EQ(netz.zellen(u"adam"), ab(1, u""));
}

} // namespace
} // namespace kalvora
