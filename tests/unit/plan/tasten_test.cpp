// What lies over the plan by mouse and keys.
#include "unit/plan/plan.h"

namespace kalvora::plantest {
namespace {

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

} // namespace
} // namespace kalvora::plantest
