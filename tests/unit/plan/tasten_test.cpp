// The keys of the main window that change something.
#include "unit/plan/plan.h"

namespace kalvora::plantest {
namespace {

constexpr Modifiers STRG{.ctrl = true};

TEST(Tasten, Rückstellungen) {
    Plan p;
    Platzlauf& l = p.öffne(u"chef");
    l.plan().set_row_height(2, 600);
    EXPECT_TRUE(l.fenster_().user_key({u"A", STRG}));
    EXPECT_EQ(l.plan().row_height(2), -1);
    for (const Key& taste : {Key{u"A", {}}, Key{u"F3", STRG}, Key{u"F5", {.shift = true}}})
        EXPECT_FALSE(l.fenster_().user_key(taste)) << "goes to the control: " << zu_utf8(taste.code);
}

// What lies over the plan: the row under the pointer by the user's choice, the hit of a search.
TEST(Tasten, Hervorhebung) {
    for (int wahl = 0; wahl <= 3; ++wahl) {
        SCOPED_TRACE(wahl);
        Plan p;
        Platzlauf& l = p.öffne(u"chef");
        l.programm->daten().ini.wahl().Fensterdaten_(fenster::HERVORHEBUNG) = wahl;
        const int otto = l.zeile(u"otto");
        Table& plan = l.plan();
        plan.user_mouse_move(otto, 4);
        EXPECT_EQ(plan.highlight_row(), wahl >= 2 ? otto : -1);
        EXPECT_EQ(plan.highlight_col(), wahl == 3 ? 4 : -1);
        plan.user_mouse_move(otto - 2, 4); // a heading
        EXPECT_EQ(plan.highlight_row(), -1);
        plan.user_mouse_down({MouseButton::Left, {}, otto, 0});
        EXPECT_EQ(plan.highlight_row(), wahl == 1 ? otto : -1);
        plan.user_mouse_up({MouseButton::Left, {}, otto, 0});
        l.fenster.eingabe = u"OTTO";
        l.fenster_().user_key({u"F3", {}});
        EXPECT_EQ(plan.highlight_row(), otto);
        EXPECT_EQ(plan.selection().col_sel, 0) << "a hit marks no day";
        l.fenster_().user_key({u"F4", {}});
        EXPECT_EQ(l.fenster.hinweise, std::vector<Text>{u"Datenende erreicht"});
        l.fenster_().user_key({u"F4", {}});
        l.fenster_().user_key({u"Esc", {}});
        EXPECT_EQ(plan.highlight_row(), -1);
        EXPECT_FALSE(plan.HighLight());
    }
}

TEST(Tasten, Schreibtest) {
    const Text GELÖSCHT = u"Fehler: Testdatei im Ordner '/srv/x/Data' konnte nicht gelöscht werden";
    const Text ANGELEGT = u"Fehler: Testdatei im Ordner '/srv/x/Data' konnte nicht angelegt werden";
    const struct {
        std::vector<Störung> störungen;
        Text hinweis;
    } tafel[] = {
        {{{"write", u"*Lockfile*", 1, Wirkung::Fehler, 61, 0, true}}, ANGELEGT},
        {{{"remove", u"Lockfile.txt", 2, Wirkung::Fehler, 70}}, GELÖSCHT},
    };
    for (const auto& fall : tafel) {
        Plan p;
        Platzlauf& l = p.öffne(u"chef");
        for (const Störung& s : fall.störungen)
            p.störe(s);
        EXPECT_TRUE(l.fenster_().user_key({u"F6", STRG}));
        EXPECT_EQ(l.fenster.hinweise, std::vector<Text>{fall.hinweis});
        EXPECT_EQ(p.gibt_es(DATEN + u"Lockfile.txt"), fall.hinweis == GELÖSCHT);
    }
}

} // namespace
} // namespace kalvora::plantest
