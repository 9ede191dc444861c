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
        Stücke vorher, nachher; // codes, cells
        int von, bis, b;
        Text log; // empty: nothing is written
        int Setting12 = 0;
    } tafel[] = {
        {"a weekend's entry within",
         {{21, u"6"}},
         {{20, u"U"}, {23, u"U"}},
         20,
         23,
         U,
         u"Urlaub|201126|231126"},
        {"a weekend's entry at the end", {{21, u"6"}}, {{20, u"U"}}, 20, 21, U, u"Urlaub|201126|211126"},
        {"end on a Sunday", {}, {{19, u"UU"}}, 19, 22, U, u"Urlaub|191126|201126"},
        {"a holiday alone", {}, {}, 17, 17, U, u""},
        {"beyond the 30th", {}, {{30, u"U"}}, 30, 31, U, u"Urlaub|301126|301126"},
        {"the 31st alone", {}, {}, 31, 31, U, u""},
        {"over a free day, with weekends",
         {{19, u"8"}},
         {{18, u"UUU"}},
         18,
         20,
         U,
         u"Urlaub|181126|201126",
         1},
        {"in part the same", {{18, u"11"}}, {{18, u"UUU"}}, 18, 20, U, u"Urlaub|181126|201126"},
        {"the other reason", {{18, u"1"}}, {{18, u"½"}}, 18, 18, 2, u"½ Urlaub|181126|181126"},
        {"delete: empty ends fall away", {{19, u"6"}}, {}, 16, 27, LÖSCHEN, u"Löschen|191126|191126"},
        {"delete past a free day", {{18, u"68"}}, {{19, u"_"}}, 18, 19, LÖSCHEN, u"Löschen|181126|191126"},
        {"delete a free day", {{18, u"8"}}, {}, 18, 18, LÖSCHEN, u"Löschen|181126|181126", 1},
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
        if (fall.log.empty()) {
            EXPECT_TRUE(p.platte().abbild() == vorher) << "written";
            continue;
        }
        EXPECT_EQ(p.log(), std::vector<Text>{u"anna|" + fall.log});
        // What was written is what is shown, to others too, and the other row is as it was.
        Platzlauf& neu = p.platz(u"chef");
        EXPECT_EQ(neu.zellen(u"anna"), Tage(fall.nachher));
        EXPECT_EQ(neu.zellen(u"otto"), Tage({{18, u"Z"}}));
    }
    Plan p;
    Platzlauf& l = p.öffne(u"anna");
    l.fenster_().tabMonate.user_select(11);
    l.trage_ein(u"anna", 0, 3, U); // from the name column
    EXPECT_EQ(p.zeilen(u"2612").back(), Satz(u"anna", {{1, u"111"}}));
}

TEST(Eintragung, GelöschteZellenHabenDieFarbeIhresTages) {
    Plan p;
    p.feiertage.push_back(u"1:21.11.:Am Samstag");
    p.Setting(12, 1);
    Platzlauf& l = p.öffne(u"chef", {Satz(u"anna", {{16, u"11111111"}}), Satz(u"otto", {})});
    l.trage_ein(u"anna", 16, 23, LÖSCHEN);
    for (int tag = 1; tag <= 31; ++tag) {
        EXPECT_EQ(l.plan().cell(l.zeile(u"anna"), tag).back, l.plan().cell(l.zeile(u"otto"), tag).back)
            << tag;
        EXPECT_EQ(l.plan().cell(l.zeile(u"anna"), tag).code, u' ');
    }
    EXPECT_EQ(p.zeilen().back(), Satz(u"anna", {}));
}

// What the scripts leave out; they show the texts.
TEST(Eintragung, Ablehnungen) {
    const struct {
        const char* was;
        int von, bis, b, Setting;
        size_t hinweise;
    } tafel[] = {
        {"administrators alone", 18, 18, U, 10, 1},
        {"the same by the other setting", 18, 18, U, 28, 1},
        {"the past although confirmed for all", 13, 13, U, 45, 1},
        {"free days alone", 24, 25, LÖSCHEN, 45, 1},
        {"the name alone", 0, 0, U, 45, 0},
    };
    for (const auto& fall : tafel) {
        SCOPED_TRACE(fall.was);
        Plan p;
        p.Setting(fall.Setting, 1);
        Platzlauf& l = p.öffne(u"anna", {Satz(u"anna", {{24, u"8"}})});
        const auto vorher = p.platte().abbild();
        const Text zellen = l.zellen(u"anna");
        l.trage_ein(u"anna", fall.von, fall.bis, fall.b);
        EXPECT_EQ(l.fenster.hinweise.size(), fall.hinweise);
        EXPECT_EQ(l.zellen(u"anna"), zellen);
        EXPECT_TRUE(p.platte().abbild() == vorher) << "written";
        EXPECT_TRUE(l.fenster.fragen.empty());
    }
}

TEST(Eintragung, Vergangenheit) {
    const struct {
        const char* was;
        Text benutzer;
        int Setting45, Setting46;
        Antwort antwort;
        size_t fragen; // in two entries
        bool eingetragen;
    } tafel[] = {
        {"an administrator says no", u"chef", 0, 0, Antwort::Nein, 2, false},
        {"an administrator says yes, once", u"chef", 0, 0, Antwort::Ja, 1, true},
        {"confirmed for all", u"chef", 1, 0, Antwort::Nein, 0, true},
        {"employees may", u"anna", 0, 1, Antwort::Ja, 1, true},
        {"employees may without being asked", u"anna", 1, 1, Antwort::Nein, 0, true},
    };
    for (const auto& fall : tafel) {
        SCOPED_TRACE(fall.was);
        Plan p;
        p.Setting(45, fall.Setting45);
        p.Setting(46, fall.Setting46);
        Platzlauf& l = p.öffne(fall.benutzer);
        l.fenster.antwort = fall.antwort;
        l.trage_ein(u"anna", 12, 13, U);
        l.trage_ein(u"anna", 10, 18, SONST);
        EXPECT_EQ(l.fenster.fragen.size(), fall.fragen);
        EXPECT_EQ(l.zellen(u"anna"), fall.eingetragen ? Tage({{10, u"SSSS"}, {16, u"S.S"}}) : Tage({}));
        EXPECT_EQ(p.zeilen().size(), fall.eingetragen ? 2U : 0U);
        EXPECT_TRUE(l.fenster.hinweise.empty());
    }
    // The first day that is left after trimming decides: the weekend before today is none of the past.
    Plan p;
    p.öffne(u"anna").trage_ein(u"anna", 14, 16, U);
    EXPECT_EQ(p.lauf->zellen(u"anna"), Tage({{16, u"U"}}));
    EXPECT_TRUE(p.lauf->fenster.hinweise.empty());
}

// Rows 1 Büro, 2 anna, 3 otto, 4 Werk, 5 eve, 6 chef.
TEST(Eintragung, MehrereZeilen) {
    Plan p;
    Platzlauf& l = p.öffne(u"chef", {Satz(u"otto", {{18, u"11"}}), u"K:otto:18-19:Kur"});
    l.markiere(6, 19, 18, 1); // from below and from the right, over both headings
    l.drücke(U);
    // otto's row was that already: nothing of it is written, and his comment stays.
    EXPECT_EQ(p.zeilen(), (std::vector<Text>{Satz(u"otto", {{18, u"11"}}), u"K:otto:18-19:Kur",
                                             Satz(u"anna", {{18, u"11"}}), Satz(u"eve", {{18, u"11"}}),
                                             Satz(u"chef", {{18, u"11"}})}));
    p.tagebuch_leeren();
    l.markiere(1, 18, 19, 6);
    l.drücke(LÖSCHEN);
    EXPECT_EQ(p.geschrieben(), 2) << "one write for the month, one for the log";
    EXPECT_EQ(p.zeilen().size(), 5U + 5U) << "four rows, and a row that takes otto's comment";
    EXPECT_EQ(l.zellen(u"eve"), Tage({}));
    EXPECT_TRUE(l.erfassung().Speicherpuffer().empty());
    EXPECT_FALSE(l.erfassung().Sammeln());
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
