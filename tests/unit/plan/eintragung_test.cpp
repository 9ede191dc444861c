// From the pressed button to the capture file and the log, through the main window's controls.
#include "unit/plan/plan.h"

namespace kalvora {
namespace {

using namespace plantest;

// Weekends, holidays, free days and what stands there already: the plain spans are in the scripts.
TEST(Eintragung, Spannen) {
    using Stücke = std::initializer_list<std::pair<int, TextView>>;
    const struct {
        const char* was;
        int von, bis, b;
        Stücke vorher, nachher;             // codes, cells
        int log_von = 0, log_bis = log_von; // 0: nothing is written
        int Setting12 = 0;
    } tafel[] = {
        {"a weekend's entry within", 20, 23, U, {{21, u"6"}}, {{20, u"U"}, {23, u"U"}}, 20, 23},
        {"a weekend's entry at the end", 20, 21, U, {{21, u"6"}}, {{20, u"U"}}, 20, 21},
        {"the 31st alone", 31, 31, U, {}, {}},
        {"over a free day and a weekend, when allowed", 18, 22, U, {{19, u"8"}}, {{18, u"UUUUU"}}, 18, 22, 1},
        {"in part the same", 18, 20, U, {{18, u"11"}}, {{18, u"UUU"}}, 18, 20},
        {"empty ends fall away", 16, 27, LÖSCHEN, {{19, u"6"}}, {}, 19, 19},
        {"delete past a free day", 18, 19, LÖSCHEN, {{18, u"68"}}, {{19, u"_"}}, 18, 19},
        {"delete a free day", 18, 18, LÖSCHEN, {{18, u"8"}}, {}, 18, 18, 1},
    };
    for (const auto& fall : tafel) {
        SCOPED_TRACE(fall.was);
        Plan p;
        p.Setting(12, fall.Setting12);
        Platzlauf& l = p.öffne(u"anna", {Satz(u"anna", fall.vorher), Satz(u"otto", {{18, u"3"}})});
        const auto vorher = p.platte().abbild();
        EXPECT_TRUE(l.trage_ein(u"anna", fall.von, fall.bis, fall.b));
        EXPECT_TRUE(l.fenster.hinweise.empty());
        EXPECT_FALSE(l.plan().HighLight());
        EXPECT_EQ(l.zellen(u"anna"), Tage(fall.nachher));
        if (fall.log_von == 0) {
            EXPECT_TRUE(p.platte().abbild() == vorher) << "written";
            continue;
        }
        const Text grund = fall.b == U ? u"Urlaub" : u"Löschen";
        EXPECT_EQ(p.log(), std::vector<Text>{u"anna|" + grund + u"|" + ziffern(fall.log_von) + u"1126|" +
                                             ziffern(fall.log_bis) + u"1126"});
        // What was written is what is shown, to others too, and the other row is as it was.
        Platzlauf& neu = p.platz(u"chef");
        EXPECT_EQ(neu.zellen(u"anna"), Tage(fall.nachher));
        EXPECT_EQ(neu.zellen(u"otto"), Tage({{18, u"Z"}}));
    }
}

// What the scripts leave out; they show the texts.
TEST(Eintragung, Ablehnungen) {
    const struct {
        const char* was;
        int von, bis, b, Setting;
    } tafel[] = {
        {"administrators alone, by the other setting", 18, 18, U, 28},
        {"the past although confirmed for all", 13, 13, U, 45},
        {"free days alone", 24, 25, LÖSCHEN, 45},
    };
    for (const auto& fall : tafel) {
        SCOPED_TRACE(fall.was);
        Plan p;
        p.Setting(fall.Setting, 1);
        Platzlauf& l = p.öffne(u"anna", {Satz(u"anna", {{24, u"8"}})});
        const auto vorher = p.platte().abbild();
        const Text zellen = l.zellen(u"anna");
        l.trage_ein(u"anna", fall.von, fall.bis, fall.b);
        EXPECT_EQ(l.fenster.hinweise.size(), 1U);
        EXPECT_EQ(l.zellen(u"anna"), zellen);
        EXPECT_TRUE(p.platte().abbild() == vorher) << "written";
        EXPECT_TRUE(l.fenster.fragen.empty());
    }
}

// The scripts show the questions; confirmed for all by Setting 45 there are none.
TEST(Eintragung, VergangenheitOhneFrage) {
    for (const Text& benutzer : {Text(u"chef"), Text(u"anna")}) {
        Plan p;
        p.Setting(45, 1);
        p.Setting(46, 1); // employees may
        Platzlauf& l = p.öffne(benutzer);
        l.trage_ein(u"anna", 10, 18, SONST);
        EXPECT_TRUE(l.fenster.fragen.empty() && l.fenster.hinweise.empty());
        EXPECT_EQ(l.zellen(u"anna"), Tage({{10, u"SSSS"}, {16, u"S.S"}}));
    }
    // The first day that is left after trimming decides: the weekend before today is none of the past.
    Plan p;
    p.öffne(u"anna").trage_ein(u"anna", 14, 16, U);
    EXPECT_EQ(p.lauf->zellen(u"anna"), Tage({{16, u"U"}}));
    EXPECT_TRUE(p.lauf->fenster.hinweise.empty());
}

// A refusal on the way leaves neither rows nor log lines behind, on the disk or in the buffers.
TEST(Eintragung, AbgelehntBeimSchreiben) {
    Plan p;
    Platzlauf& l = p.öffne(u"chef", {Satz(u"anna", {{18, u"3"}})});
    l.markiere(2, 18, 18, 6);
    l.erfassung().vor_dem_Schreiben = [] { return false; };
    l.drücke(U);
    EXPECT_EQ(l.fenster.hinweise.size(), 1U);
    EXPECT_EQ(p.geschrieben(), 0);
    EXPECT_EQ(l.zellen(u"anna"), Tage({{18, u"Z"}})) << "shown as it is stored";
    EXPECT_EQ(l.zellen(u"chef"), Tage({}));
    l.erfassung().vor_dem_Schreiben = {};
    l.trage_ein(u"otto", 19, 19, U);
    EXPECT_EQ(p.log(), std::vector<Text>{u"otto|Urlaub|191126|191126"});
}

} // namespace
} // namespace kalvora
